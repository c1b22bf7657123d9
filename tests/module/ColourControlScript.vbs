' The colour control driven by VBScript through cscript: created by ProgID,
' properties and methods by name, wrong argument types and counts give script errors, not crashes.
' Exits with the number of failed checks.
' Check, CheckCreated and Finish: tests/support/ScriptChecks.vbs, run in front of this script.
Dim c : Set c = CreateObject("KIVLORQCONTROLS.KivColorCtrl.1")
CheckCreated c, ""

' Conversions.
Check c.RGB_Equivalent(1) = 255, "RGB_Equivalent(1) is red"
Check c.RGB_Equivalent(5) = &HFF0000, "RGB_Equivalent(5) is blue"
Check c.RGB_Equivalent(256) = &HFFFFFF, "RGB_Equivalent(256) is white whatever LayerColorIndex holds"
Check c.Tev_Equivalent(&HFFFFFF) = 7, "Tev_Equivalent(white) is 7"
Check c.Tev_Equivalent(&H123456) = -1, "Tev_Equivalent of a colour outside the palette is -1"
Check c.FindColor(257) = 3, "FindColor(257) is 3"
Check c.FindColor(258) = 0, "FindColor(258) is 0"
Check c.FindColor(1) = -1, "FindColor before the window exists finds nothing"

' Properties, read back.
c.LayerColorIndex = &H112233
Check c.LayerColorIndex = &H112233, "LayerColorIndex"
c.BlockColorIndex = 4
Check c.BlockColorIndex = 4, "BlockColorIndex"
c.DefaultColorIndex = &H00ABCDEF
Check c.DefaultColorIndex = &H00ABCDEF, "DefaultColorIndex"
Check c.RGB_Equivalent(257) = &H00ABCDEF, "RGB_Equivalent(257) is DefaultColorIndex"
c.ApprovalStatusColorIndex = 9
Check c.RGB_Equivalent(258) = 9, "RGB_Equivalent(258) is ApprovalStatusColorIndex"
Check c.DisplayApprovalStatusColor = False, "DisplayApprovalStatusColor starts false"
c.DisplayApprovalStatusColor = True
Check c.DisplayApprovalStatusColor = True, "DisplayApprovalStatusColor set"
c.DisplayApprovalStatusColor = False
Check c.ComboIndex = -1, "ComboIndex starts at -1"
c.ComboIndex = 4
Check c.ComboIndex = 4, "ComboIndex set"

' Methods.
c.SetSelColorIndex 256
Check c.GetSelColorIndex() = 256, "SetSelColorIndex(256) then GetSelColorIndex"
Dim idx : idx = 0
c.SetSelColorIndex idx
Check c.GetSelColorIndex = 0, "a variable passed by reference; a method called without parentheses"
Check c.AddColorIndex(42) = True, "AddColorIndex returns true"
c.SetComboText 12, "Farbe"
c.SetComboText 1, "Layer"
c.SetTooltipText "tip"
c.AboutDisplay True
Check True, "SetComboText, SetTooltipText, AboutDisplay run"

' Wrong arguments: script errors, and the control goes on working.
On Error Resume Next
Err.Clear : c.SetSelColorIndex "abc"
Check Err.Number = 13, "a string that is no number: type mismatch (13), got " & Err.Number
Err.Clear : c.SetSelColorIndex 1, 2
Check Err.Number = 450, "two arguments for one: wrong number of arguments (450), got " & Err.Number
Err.Clear : Dim r : r = c.FindColor()
Check Err.Number = 450, "no argument for one: wrong number of arguments (450), got " & Err.Number
Err.Clear : c.SetSelColorIndex 100000
Check Err.Number <> 0, "a value beyond 16 bits is refused, got " & Err.Number
Err.Clear : c.NoSuchMember 1
Check Err.Number = 438, "an unknown member (438), got " & Err.Number
Err.Clear : c.LayerColorIndex = "red"
Check Err.Number = 13, "a property set with a string that is no number (13), got " & Err.Number
Err.Clear : c.SetComboText "x", "y"
Check Err.Number = 13, "an enumeration argument that is no number (13), got " & Err.Number
On Error GoTo 0
Check c.RGB_Equivalent(2) = 65535, "the control still answers after the errors (yellow)"

Set c = Nothing
Finish
