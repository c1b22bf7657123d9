' Both linetype controls driven by VBScript through cscript: created by their ProgIDs, every member of
' _DKivLinetype and _DKivLTypeList by name, linetypes loaded from a real .lin file (its folder is the
' script's argument), wrong arguments give script errors, not crashes. Without a container a control
' has no window: its rows are not shown, so GetCount and SelectItemAt answer for no rows, while loading,
' defining and the properties still work. Exits with the number of failed checks.
' Check, CheckCreated and Finish: tests/support/ScriptChecks.vbs, run in front of this script.
Dim folder : folder = WScript.Arguments(0)

Sub Exercise(c, kind)
    CheckCreated c, kind & ": "
    Check c.ComboIndex = -1, kind & ": ComboIndex starts at -1"
    c.ComboIndex = 2
    Check c.ComboIndex = 2, kind & ": ComboIndex set"
    Check c.SupportPath = "", kind & ": SupportPath starts empty"
    c.SupportPath = folder
    Check c.SupportPath = folder, kind & ": SupportPath set"
    c.LinetypeFile = "qcad__qcadiso.lin"
    Check c.LinetypeFile = "qcad__qcadiso.lin", kind & ": LinetypeFile set"
    c.TooltipText = "Linetype"
    Check c.TooltipText = "Linetype", kind & ": TooltipText set"
    c.Initialize
    c.LoadLinetype "DASHED"
    c.LoadLinetype "dashed"
    c.DefineLinetype "ZIGZAG", "A,1,-1"
    c.DefineLinetype "Continuous", "A,5,-5"
    c.DefineLinetypeByLayer "Layer", "A,2"
    c.DefineLinetypeByBlock "Block", "A,3"
    c.DefineLinetypeContinuous "Solid", "A,4"
    c.UnloadLinetype "ZIGZAG"
    c.UnloadLinetype "ByLayer"
    Check c.GetCount() = 0, kind & ": no window, no rows to count"
    Check c.SelectItemAt(-1) = "", kind & ": SelectItemAt(-1) is empty"
    Check c.SelectItemAt(0) = "", kind & ": SelectItemAt without rows is empty"
    Check c.SelectItem("Dashed") = "Dashed", kind & ": SelectItem returns the name passed"
    c.RemoveAll
    Check True, kind & ": Initialize, LoadLinetype, Define*, UnloadLinetype, RemoveAll run"

    On Error Resume Next
    Err.Clear : c.LoadLinetype
    Check Err.Number = 450, kind & ": LoadLinetype without a name (450), got " & Err.Number
    Err.Clear : c.DefineLinetype "X"
    Check Err.Number = 450, kind & ": DefineLinetype with one argument (450), got " & Err.Number
    Err.Clear : c.ComboIndex = "first"
    Check Err.Number = 13, kind & ": ComboIndex set to a word (13), got " & Err.Number
    Err.Clear : Dim r : r = c.SelectItemAt("x")
    Check Err.Number = 13, kind & ": SelectItemAt of a word (13), got " & Err.Number
    Err.Clear : c.NoSuchMember
    Check Err.Number = 438, kind & ": an unknown member (438), got " & Err.Number
    On Error GoTo 0
    Check c.ComboIndex = 2, kind & ": ComboIndex unchanged after the errors"
End Sub

Dim combo : Set combo = CreateObject("KIVLORQCONTROLS.KivLinetypeCtrl.1")
Exercise combo, "combo"
combo.SetAboutDisplay True
Check True, "combo: SetAboutDisplay runs"

Dim list : Set list = CreateObject("KIVLORQCONTROLS.KivLinetypeListCtrl.1")
Exercise list, "list"
On Error Resume Next
Err.Clear : list.SetAboutDisplay True
Check Err.Number = 438, "list: has no SetAboutDisplay (438), got " & Err.Number
On Error GoTo 0

Set combo = Nothing
Set list = Nothing
Finish
