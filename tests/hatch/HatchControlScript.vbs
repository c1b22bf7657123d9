' The hatch preview driven by VBScript through cscript: created by its ProgID, every member of
' _DKivHatch by name (the pattern from a real .pat file, named by the script's argument), wrong
' arguments give script errors, not crashes. Exits with the number of failed checks.
' Check, CheckCreated and Finish: tests/support/ScriptChecks.vbs, run in front of this script.
Dim c : Set c = CreateObject("KIVLORQCONTROLS.KivHatchCtrl.1")
CheckCreated c, ""
Check c.Metric = True, "Metric starts true"
c.Metric = False
Check c.Metric = False, "Metric set false"
c.Metric = True
Check c.ZoomFactor = 1, "ZoomFactor starts at 1"
c.ZoomFactor = 2.5
Check c.ZoomFactor = 2.5, "ZoomFactor set"
c.ZoomFactor = 0.05
Check c.ZoomFactor = 2.5, "ZoomFactor 0.05 is ignored"
c.ZoomFactor = -1
Check c.ZoomFactor = 2.5, "a negative ZoomFactor is ignored"
Check c.Pattern = "", "Pattern starts empty"
c.Pattern = WScript.Arguments(0) & "(HSHP21E0)"
Check c.Pattern = WScript.Arguments(0) & "(HSHP21E0)", "Pattern set"
c.Refresh
Check True, "Refresh runs"
c.ForeColor = &HFF
Check c.ForeColor = &HFF, "ForeColor set"
c.BackColor = &H80000005
Check c.BackColor = &H80000005, "BackColor takes a system colour"

On Error Resume Next
Err.Clear : c.ZoomFactor = "large"
Check Err.Number = 13, "ZoomFactor set to a word (13), got " & Err.Number
Err.Clear : c.Refresh 1
Check Err.Number = 450, "Refresh with an argument (450), got " & Err.Number
Err.Clear : c.SelChange
Check Err.Number = 438, "no such member (438), got " & Err.Number
On Error GoTo 0
Check c.ZoomFactor = 2.5, "ZoomFactor unchanged after the errors"

Set c = Nothing
Finish
