// Reading a type library back as text, for the tests that compare it with what they expect: a type's
// name ("I4", "BSTR", a user-defined type's own name) and whether a dispinterface's function is one
// of the 7 it inherits from IUnknown and IDispatch (member ids 0x6000xxxx and 0x6001xxxx).
#pragma once

#include <windows.h>
#include <oleauto.h>

#include <string>

#include "KivCom.h"

inline std::string narrow(const wchar_t* w) {
    std::string s;
    for (; w != nullptr && *w != 0; ++w) s.push_back(static_cast<char>(*w));
    return s;
}

inline std::string typeName(ITypeInfo* ti, const TYPEDESC& t) {
    switch (t.vt) {
    case VT_VOID: return "void";
    case VT_I1: return "I1";
    case VT_I2: return "I2";
    case VT_I4: return "I4";
    case VT_UI4: return "UI4";
    case VT_INT: return "INT";
    case VT_R8: return "R8";
    case VT_BSTR: return "BSTR";
    case VT_USERDEFINED: {
        KivComPtr<ITypeInfo> ref;
        if (FAILED(ti->GetRefTypeInfo(t.hreftype, ref.put()))) return "?ref";
        KivBstr name;
        ref->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
        return narrow(name.get());
    }
    default: return "vt" + std::to_string(t.vt);
    }
}

inline bool isInherited(const FUNCDESC* f) { return f->memid >= 0x60000000 && f->memid < 0x60020000; }
