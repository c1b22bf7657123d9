// The controls from a script: created by their ProgIDs, set and asked by name. A script's control has
// no container and so no window: what needs the list (a palette colour, the rows' texts) is not there.
//   wine cscript //nologo docs/examples/controls.js     (Windows: %SystemRoot%\System32\cscript)
var colour = new ActiveXObject("KIVLORQCONTROLS.KivColorCtrl.1");
WScript.Echo("RGB_Equivalent(1): " + colour.RGB_Equivalent(1));          // 255, red as 0x00BBGGRR
colour.SetSelColorIndex(256);                                             // ByLayer: by position
WScript.Echo("GetSelColorIndex: " + colour.GetSelColorIndex());          // 256
colour.SetSelColorIndex(1);                                               // red: needs the list
WScript.Echo("after SetSelColorIndex(1): " + colour.GetSelColorIndex()); // still 256
WScript.Echo("AddColorIndex(30): " + colour.AddColorIndex(30) + ", FindColor(30): " + colour.FindColor(30));

var lineweight = new ActiveXObject("KIVLORQCONTROLS.KivLineweightCtrl.1");
lineweight.Measurement = 1;                                               // millimetres
lineweight.SelectItem("0.25 mm");
WScript.Echo("GetCurrentItemLineWeight: " + lineweight.GetCurrentItemLineWeight());  // 25
WScript.Echo("GetItemText(10): \"" + lineweight.GetItemText(10) + "\"");  // "": no rows

var hatch = new ActiveXObject("KIVLORQCONTROLS.KivHatchCtrl.1");
hatch.ZoomFactor = 0.01;                                                  // 0.05 or less is ignored
WScript.Echo("ZoomFactor: " + hatch.ZoomFactor + ", Metric: " + hatch.Metric);
try {
    colour.NoSuchMember();
} catch (e) {
    WScript.Echo("an unknown member is error " + (e.number & 0xFFFF));   // 438
}
