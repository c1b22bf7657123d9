' The checks the VBScript tests share. cscript has no include: the test command runs each script
' with this text in front of it, as one file (tests/CMakeLists.txt, kiv_add_script_test).
'   Check ok, what         prints "ok   what" or "FAIL what" and counts the failures
'   CheckCreated c, kind   the control exists and its stock Enabled goes false and back to true
'   Finish                 prints "N failed" and ends the script with N as its exit code
Option Explicit
Dim failures : failures = 0
Sub Check(ok, what)
    If ok Then
        WScript.Echo "ok   " & what
    Else
        WScript.Echo "FAIL " & what
        failures = failures + 1
    End If
End Sub

Sub CheckCreated(c, kind)
    Check IsObject(c), kind & "CreateObject by ProgID"
    Check c.Enabled = True, kind & "Enabled starts true"
    c.Enabled = False
    Check c.Enabled = False, kind & "Enabled set false"
    c.Enabled = True
End Sub

Sub Finish()
    WScript.Echo failures & " failed"
    WScript.Quit failures
End Sub

