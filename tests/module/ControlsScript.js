// The controls driven by JScript through cscript, as a scripting host drives them: each created by
// its ProgID, a property set and read back, methods called by name, and a wrong call caught as a
// script error. Exits with the number of failed checks.
var failures = 0;
function check(ok, what) {
    WScript.Echo((ok ? "ok   " : "FAIL ") + what);
    if (!ok) failures++;
}

var colour = new ActiveXObject("KIVLORQCONTROLS.KivColorCtrl.1");
check(colour.RGB_Equivalent(1) == 255, "colour: RGB_Equivalent(1) is red");
colour.SetSelColorIndex(256);
check(colour.GetSelColorIndex() == 256, "colour: SetSelColorIndex then GetSelColorIndex");
colour.Enabled = false;
check(colour.Enabled == false, "colour: the stock Enabled property");

var lineweight = new ActiveXObject("KIVLORQCONTROLS.KivLineweightCtrl.1");
lineweight.Measurement = 1;
check(lineweight.Measurement == 1, "lineweight: Measurement");
check(lineweight.GetCurrentItemLineWeight() == -1, "lineweight: nothing chosen before the window exists");

var linetype = new ActiveXObject("KIVLORQCONTROLS.KivLinetypeCtrl.1");
linetype.SupportPath = "C:\\cad\\support";
check(linetype.SupportPath == "C:\\cad\\support", "linetype: SupportPath");

var hatch = new ActiveXObject("KIVLORQCONTROLS.KivHatchCtrl.1");
hatch.ZoomFactor = 2.5;
check(hatch.ZoomFactor == 2.5, "hatch: ZoomFactor");

var list = new ActiveXObject("KIVLORQCONTROLS.KivLinetypeListCtrl.1");
check(list.GetCount() == 0, "linetype list: no rows before the window exists");
var layer = new ActiveXObject("KIVLORQCONTROLS.KivLayerCtrl.1");
check(layer != null, "layer: created");

try {
    colour.NoSuchMember(1);
    check(false, "an unknown member is a script error");
} catch (e) {
    check(true, "an unknown member is a script error (" + (e.number & 0xFFFF) + ")");
}
check(colour.RGB_Equivalent(2) == 65535, "the control still answers after the error (yellow)");

WScript.Echo(failures + " failed");
WScript.Quit(failures);
