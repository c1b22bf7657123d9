// The type-library writer. Win32 side.
#include "KivTypeLibBuilder.h"

#include <oaidl.h>
#include <oleauto.h>

#include <string>
#include <vector>

#include "KivCom.h"

namespace {

#define KIV_CHECK(expr)                  \
    do {                                 \
        const HRESULT hr_ = (expr);      \
        if (FAILED(hr_)) return hr_;     \
    } while (0)

// The type descriptions of one dispinterface. A reference to a user-defined type (stdole's
// OLE_COLOR, the library's eColors) is added to the type info when a member first uses it.
class TypeDescs {
public:
    TypeDescs(ICreateTypeInfo* ti, ITypeInfo* oleColorInfo, ITypeInfo* eColorsInfo)
        : m_ti(ti), m_oleColor{oleColorInfo, false, 0}, m_eColors{eColorsInfo, false, 0} {}

    HRESULT describe(KivTlbType type, TYPEDESC& desc) {
        desc = TYPEDESC{};
        switch (type) {
        case KivTlbType::Void: desc.vt = VT_VOID; return S_OK;
        case KivTlbType::I1: desc.vt = VT_I1; return S_OK;
        case KivTlbType::I2: desc.vt = VT_I2; return S_OK;
        case KivTlbType::I4: desc.vt = VT_I4; return S_OK;
        case KivTlbType::UI4: desc.vt = VT_UI4; return S_OK;
        case KivTlbType::R8: desc.vt = VT_R8; return S_OK;
        case KivTlbType::Bstr: desc.vt = VT_BSTR; return S_OK;
        case KivTlbType::OleColor: desc.vt = VT_USERDEFINED; return reference(m_oleColor, desc.hreftype);
        case KivTlbType::EColors: desc.vt = VT_USERDEFINED; return reference(m_eColors, desc.hreftype);
        }
        return E_INVALIDARG;
    }

private:
    struct Reference {
        ITypeInfo* info;
        bool added;
        HREFTYPE href;  // any value, 0 included, is a valid reference
    };

    HRESULT reference(Reference& r, HREFTYPE& out) {
        if (!r.added) {
            const HRESULT hr = m_ti->AddRefTypeInfo(r.info, &r.href);
            if (FAILED(hr)) return hr;
            r.added = true;
        }
        out = r.href;
        return S_OK;
    }

    ICreateTypeInfo* m_ti;
    Reference m_oleColor;
    Reference m_eColors;
};

HRESULT findType(ITypeLib* lib, const wchar_t* name, ITypeInfo** out) {
    const UINT count = lib->GetTypeInfoCount();
    for (UINT i = 0; i < count; ++i) {
        KivBstr typeName;
        if (SUCCEEDED(lib->GetDocumentation(static_cast<INT>(i), typeName.put(), nullptr, nullptr, nullptr)) &&
            typeName.get() != nullptr && wcscmp(typeName.get(), name) == 0)
            return lib->GetTypeInfo(i, out);
    }
    return TYPE_E_ELEMENTNOTFOUND;
}

HRESULT addDispinterface(ICreateTypeLib2* lib, const KivDispInterface& itf, ITypeInfo* dispatchInfo,
                         ITypeInfo* oleColorInfo, ITypeInfo* eColorsInfo, KivComPtr<ICreateTypeInfo>& out) {
    KIV_CHECK(lib->CreateTypeInfo(const_cast<LPOLESTR>(itf.name), TKIND_DISPATCH, out.put()));
    ICreateTypeInfo* ti = out.get();
    KIV_CHECK(ti->SetGuid(*itf.iid));
    KIV_CHECK(ti->SetDocString(const_cast<LPOLESTR>(itf.help)));
    KIV_CHECK(ti->SetVersion(0, 0));
    KIV_CHECK(ti->SetHelpContext(0));
    KIV_CHECK(ti->SetTypeFlags(itf.isSource ? TYPEFLAG_FDISPATCHABLE : (TYPEFLAG_FHIDDEN | TYPEFLAG_FDISPATCHABLE)));
    HREFTYPE hrefDispatch = 0;
    KIV_CHECK(ti->AddRefTypeInfo(dispatchInfo, &hrefDispatch));
    KIV_CHECK(ti->AddImplType(0, hrefDispatch));
    TypeDescs types(ti, oleColorInfo, eColorsInfo);

    UINT varIndex = 0, funcIndex = 0;
    for (int m = 0; m < itf.memberCount; ++m) {
        const KivMember& member = itf.members[m];
        if (!member.isProperty) continue;
        VARDESC var{};
        var.memid = member.dispid;
        var.varkind = VAR_DISPATCH;
        var.wVarFlags = member.isStock ? static_cast<WORD>(VARFLAG_FBINDABLE | VARFLAG_FREQUESTEDIT) : 0;
        KIV_CHECK(types.describe(member.tlb, var.elemdescVar.tdesc));
        KIV_CHECK(ti->AddVarDesc(varIndex, &var));
        KIV_CHECK(ti->SetVarName(varIndex, const_cast<LPOLESTR>(member.name)));
        if (!member.isStock) {
            const std::wstring help = std::wstring(L"property ") + member.name;
            KIV_CHECK(ti->SetVarDocString(varIndex, const_cast<LPOLESTR>(help.c_str())));
        }
        ++varIndex;
    }
    for (int m = 0; m < itf.memberCount; ++m) {
        const KivMember& member = itf.members[m];
        if (member.isProperty) continue;
        std::vector<ELEMDESC> params(static_cast<std::size_t>(member.paramCount));
        for (int p = 0; p < member.paramCount; ++p) {
            params[static_cast<std::size_t>(p)] = ELEMDESC{};
            KIV_CHECK(types.describe(member.params[p].tlb, params[static_cast<std::size_t>(p)].tdesc));
            params[static_cast<std::size_t>(p)].paramdesc.wParamFlags = PARAMFLAG_NONE;
        }
        FUNCDESC func{};
        func.memid = member.dispid;
        func.funckind = FUNC_DISPATCH;
        func.invkind = INVOKE_FUNC;
        func.callconv = CC_STDCALL;
        func.cParams = static_cast<SHORT>(member.paramCount);
        func.lprgelemdescParam = params.empty() ? nullptr : params.data();
        KIV_CHECK(types.describe(member.tlb, func.elemdescFunc.tdesc));
        KIV_CHECK(ti->AddFuncDesc(funcIndex, &func));
        std::vector<LPOLESTR> names{const_cast<LPOLESTR>(member.name)};
        for (int p = 0; p < member.paramCount; ++p) names.push_back(const_cast<LPOLESTR>(member.params[p].name));
        KIV_CHECK(ti->SetFuncAndParamNames(funcIndex, names.data(), static_cast<UINT>(names.size())));
        if (!itf.isSource) {
            const std::wstring help = std::wstring(L"method ") + member.name;
            KIV_CHECK(ti->SetFuncDocString(funcIndex, const_cast<LPOLESTR>(help.c_str())));
        }
        ++funcIndex;
    }
    return S_OK;
}

}  // namespace

HRESULT KivBuildTypeLib(const wchar_t* path, const KivTypeLibDesc& desc) {
    KivComPtr<ICreateTypeLib2> lib;
    KIV_CHECK(CreateTypeLib2(SYS_WIN64, path, lib.put()));
    KIV_CHECK(lib->SetName(const_cast<LPOLESTR>(desc.name)));
    KIV_CHECK(lib->SetGuid(*desc.libid));
    KIV_CHECK(lib->SetVersion(desc.major, desc.minor));
    KIV_CHECK(lib->SetLcid(desc.lcid));
    KIV_CHECK(lib->SetLibFlags(LIBFLAG_FCONTROL));
    KIV_CHECK(lib->SetDocString(const_cast<LPOLESTR>(desc.help)));
    KIV_CHECK(lib->SetHelpFileName(const_cast<LPOLESTR>(desc.helpFile)));
    KIV_CHECK(lib->SetHelpContext(0));

    // stdole2 provides IDispatch and OLE_COLOR.
    KivComPtr<ITypeLib> stdole;
    KIV_CHECK(LoadRegTypeLib(IID_StdOle, 2, 0, 0, stdole.put()));
    KivComPtr<ITypeInfo> dispatchInfo, oleColorInfo;
    KIV_CHECK(stdole->GetTypeInfoOfGuid(IID_IDispatch, dispatchInfo.put()));
    KIV_CHECK(findType(stdole.get(), L"OLE_COLOR", oleColorInfo.put()));

    // 0: the alias, 1: its enumeration.
    KivComPtr<ICreateTypeInfo> alias, enumeration;
    KIV_CHECK(lib->CreateTypeInfo(const_cast<LPOLESTR>(desc.aliasName), TKIND_ALIAS, alias.put()));
    KIV_CHECK(lib->CreateTypeInfo(const_cast<LPOLESTR>(desc.enumName), TKIND_ENUM, enumeration.put()));
    for (int i = 0; i < desc.constantCount; ++i) {
        VARIANT value;
        V_VT(&value) = VT_I4;
        V_I4(&value) = desc.constants[i].value;
        VARDESC var{};
        var.memid = 0x40000000 + i;
        var.lpvarValue = &value;
        var.varkind = VAR_CONST;
        var.elemdescVar.tdesc.vt = VT_INT;
        KIV_CHECK(enumeration->AddVarDesc(static_cast<UINT>(i), &var));
        KIV_CHECK(enumeration->SetVarName(static_cast<UINT>(i), const_cast<LPOLESTR>(desc.constants[i].name)));
    }
    KIV_CHECK(enumeration->SetVersion(0, 0));
    KivComPtr<ITypeInfo> enumInfo;
    KIV_CHECK(enumeration->QueryInterface(IID_ITypeInfo, enumInfo.putVoid()));
    HREFTYPE hrefEnum = 0;
    KIV_CHECK(alias->AddRefTypeInfo(enumInfo.get(), &hrefEnum));
    TYPEDESC aliasDesc{};
    aliasDesc.vt = VT_USERDEFINED;
    aliasDesc.hreftype = hrefEnum;
    KIV_CHECK(alias->SetTypeDescAlias(&aliasDesc));
    KIV_CHECK(alias->SetVersion(0, 0));
    KivComPtr<ITypeInfo> aliasInfo;
    KIV_CHECK(alias->QueryInterface(IID_ITypeInfo, aliasInfo.putVoid()));

    std::vector<KivComPtr<ICreateTypeInfo>> created{alias, enumeration};
    for (int c = 0; c < desc.coclassCount; ++c) {
        const KivCoclass& coclass = desc.coclasses[c];
        KivComPtr<ICreateTypeInfo> dispatch, events, cls;
        KIV_CHECK(addDispinterface(lib.get(), *coclass.dispatch, dispatchInfo.get(), oleColorInfo.get(), aliasInfo.get(), dispatch));
        KIV_CHECK(addDispinterface(lib.get(), *coclass.events, dispatchInfo.get(), oleColorInfo.get(), aliasInfo.get(), events));
        KIV_CHECK(lib->CreateTypeInfo(const_cast<LPOLESTR>(coclass.name), TKIND_COCLASS, cls.put()));
        KIV_CHECK(cls->SetGuid(*coclass.clsid));
        KIV_CHECK(cls->SetDocString(const_cast<LPOLESTR>(coclass.help)));
        KIV_CHECK(cls->SetVersion(0, 0));
        KIV_CHECK(cls->SetHelpContext(0));
        KIV_CHECK(cls->SetTypeFlags(TYPEFLAG_FCANCREATE | TYPEFLAG_FCONTROL));
        KivComPtr<ITypeInfo> dispatchTi, eventsTi;
        KIV_CHECK(dispatch->QueryInterface(IID_ITypeInfo, dispatchTi.putVoid()));
        KIV_CHECK(events->QueryInterface(IID_ITypeInfo, eventsTi.putVoid()));
        HREFTYPE hrefDispatch = 0, hrefEvents = 0;
        KIV_CHECK(cls->AddRefTypeInfo(dispatchTi.get(), &hrefDispatch));
        KIV_CHECK(cls->AddRefTypeInfo(eventsTi.get(), &hrefEvents));
        KIV_CHECK(cls->AddImplType(0, hrefDispatch));
        KIV_CHECK(cls->SetImplTypeFlags(0, IMPLTYPEFLAG_FDEFAULT));
        KIV_CHECK(cls->AddImplType(1, hrefEvents));
        KIV_CHECK(cls->SetImplTypeFlags(1, IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE));
        created.push_back(dispatch);
        created.push_back(events);
        created.push_back(cls);
    }
    for (auto& ti : created) KIV_CHECK(ti->LayOut());
    return lib->SaveAllChanges();
}
