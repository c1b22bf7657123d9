// The controls as a script makes them, with no container and so no window and no list rows: what
// still works and what answers as if the list were empty. Exits with the number of failed checks.
var failures = 0;
function check(ok, what) {
    WScript.Echo((ok ? "ok   " : "FAIL ") + what);
    if (!ok) failures++;
}

var colour = new ActiveXObject("KIVLORQCONTROLS.KivColorCtrl.1");
colour.SetSelColorIndex(1);
check(colour.GetSelColorIndex() == -1, "colour: a palette colour cannot be selected without rows (-1)");
check(colour.AddColorIndex(30) === true, "colour: AddColorIndex answers true all the same");
check(colour.FindColor(30) == -1, "colour: and the colour is not found");
check(colour.FindColor(257) == 3 && colour.FindColor(258) == 0, "colour: FindColor of 257 and 258 needs no rows");
colour.SetSelColorIndex(0);
check(colour.GetSelColorIndex() == 0 && colour.ComboIndex == 1, "colour: a logical colour is selected by position (ByBlock)");
colour.ComboIndex = 4;
check(colour.ComboIndex == 4, "colour: ComboIndex is stored");
check(colour.GetSelColorIndex() == -1, "colour: but no colour is read for it (-1)");
colour.DisplayApprovalStatusColor = true;
check(colour.DisplayApprovalStatusColor === true, "colour: DisplayApprovalStatusColor is stored");
check(colour.RGB_Equivalent(1) == 255 && colour.Tev_Equivalent(255) == 1, "colour: the conversions need no rows");

var lineweight = new ActiveXObject("KIVLORQCONTROLS.KivLineweightCtrl.1");
check(lineweight.GetItemText(0) == "" && lineweight.GetItemText(5) == "", "lineweight: GetItemText is empty without rows");
lineweight.SelectItemByLineWeight(25);
check(lineweight.GetCurrentItemLineWeight() == 25, "lineweight: SelectItemByLineWeight needs no rows");
lineweight.Measurement = 1;
lineweight.SelectItem("0.35 mm");
check(lineweight.GetCurrentItemLineWeight() == 35, "lineweight: SelectItem by a label needs no rows");

var linetype = new ActiveXObject("KIVLORQCONTROLS.KivLinetypeCtrl.1");
linetype.DefineLinetype("ZIGZAG", "A,1,-1");
check(linetype.GetCount() == 0, "linetype: a defined linetype is kept but no row is counted");
check(linetype.SelectItem("Zigzag") == "Zigzag" && linetype.ComboIndex == -1, "linetype: SelectItem answers the name and selects nothing");

WScript.Echo(failures + " failed");
WScript.Quit(failures);
