// What the files of the control frame share among themselves, and nothing else sees. Win32 side.
#pragma once

#include <oaidl.h>
#include <windows.h>

// The class of every control's window, registered by the module image that runs it.
extern const wchar_t kKivControlWindowClass[];
// Registers the control window's class for `proc` (replacing one left by an earlier image).
bool KivRegisterControlWindowClass(WNDPROC proc);
// A type of the module's own type library (loaded from the module's file).
HRESULT KivModuleTypeInfo(const GUID& guid, ITypeInfo** info);
