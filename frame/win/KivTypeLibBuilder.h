// Writes the module's type library with oleaut32's ICreateTypeLib2, from the same
// dispatch tables that drive Invoke. Run at build time (tools/mktypelib). Win32 side.
#pragma once

#include "KivDispatch.h"

struct KivEnumConstant {
    const wchar_t* name;
    int value;
};

struct KivTypeLibDesc {
    const wchar_t* name;
    const GUID* libid;
    WORD major, minor;
    LCID lcid;
    const wchar_t* help;
    const wchar_t* helpFile;
    // Types 0 and 1: the alias and its enumeration.
    const wchar_t* aliasName;
    const wchar_t* enumName;
    const KivEnumConstant* constants;
    int constantCount;
    // Then, per coclass: its dispinterface, its event interface, the coclass.
    const KivCoclass* coclasses;
    int coclassCount;
};

HRESULT KivBuildTypeLib(const wchar_t* path, const KivTypeLibDesc& desc);
