' The lineweight control driven by VBScript through cscript: created by its ProgID, every member of
' _DKivLineweight by name, wrong argument types and counts give script errors, not crashes. Without
' a container the control has no window: its list is not built, the table and the stored selection
' still answer. Exits with the number of failed checks.
' Check, CheckCreated and Finish: tests/support/ScriptChecks.vbs, run in front of this script.
Dim c : Set c = CreateObject("KIVLORQCONTROLS.KivLineweightCtrl.1")
CheckCreated c, ""

' Properties.
Check c.TooltipText = "", "TooltipText starts empty"
c.TooltipText = "Lineweight"
Check c.TooltipText = "Lineweight", "TooltipText set"
Check c.Measurement = 0, "Measurement starts at 0 (inch labels)"

' Methods.
Check c.GetCurrentItemLineWeight() = -1, "no selection: GetCurrentItemLineWeight is -1"
c.SelectItemByLineWeight 25
Check c.GetCurrentItemLineWeight() = 25, "SelectItemByLineWeight(25)"
c.SelectItemByLineWeight 26
Check c.GetCurrentItemLineWeight() = 25, "SelectItemByLineWeight(26) changes nothing"
Check c.SelectItem("0.083 """) = "", "SelectItem returns an empty string"
Check c.GetCurrentItemLineWeight() = 211, "SelectItem finds an inch label while Measurement is 0"
Check c.SelectItem("0.05 mm") = "", "SelectItem of a label not shown returns an empty string"
Check c.GetCurrentItemLineWeight() = 211, "a millimetre label is not found among inch labels"
c.Measurement = 1
Check c.Measurement = 1, "Measurement set"
c.SelectItem "0.05 mm"
Check c.GetCurrentItemLineWeight() = 5, "SelectItem finds a millimetre label while Measurement is 1"
c.SetByLayerText "VonLayer"
c.SetByBlockText "VonBlock"
c.SetDefinitionText "Standard"
c.SelectItem "VonBlock"
Check c.GetCurrentItemLineWeight() = -2, "SetByBlockText: the new text selects ByBlock"
c.SelectItem "Standard"
Check c.GetCurrentItemLineWeight() = -3, "SetDefinitionText: the new text selects Default"
c.SelectItem "VonLayer"
Check c.GetCurrentItemLineWeight() = -1, "SetByLayerText: the new text selects ByLayer"
Check c.GetItemText(-1) = "", "GetItemText(-1) is empty"
Check c.GetItemText(0) = "", "GetItemText without a window is empty"
c.SetAboutDisplay True
Check True, "SetAboutDisplay runs"

' Wrong arguments: script errors, and the control goes on working.
On Error Resume Next
Err.Clear : c.SelectItemByLineWeight "abc"
Check Err.Number = 13, "a string that is no number: type mismatch (13), got " & Err.Number
Err.Clear : c.SelectItemByLineWeight 1, 2
Check Err.Number = 450, "two arguments for one: wrong number of arguments (450), got " & Err.Number
Err.Clear : Dim r : r = c.GetItemText()
Check Err.Number = 450, "no argument for one (450), got " & Err.Number
Err.Clear : c.Measurement = 100000
Check Err.Number <> 0, "a Measurement beyond 16 bits is refused, got " & Err.Number
Err.Clear : c.NoSuchMember 1
Check Err.Number = 438, "an unknown member (438), got " & Err.Number
On Error GoTo 0
Check c.Measurement = 1, "Measurement unchanged after the errors"
c.SelectItemByLineWeight 211
Check c.GetCurrentItemLineWeight() = 211, "the control still answers after the errors"

Set c = Nothing
Finish
