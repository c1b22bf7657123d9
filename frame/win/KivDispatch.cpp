// The dispatch-table engine. Win32 side.
#include "KivDispatch.h"

#include <cwchar>
#include <vector>

#include "KivCom.h"

namespace {
bool sameName(const wchar_t* a, const wchar_t* b) { return CompareStringOrdinal(a, -1, b, -1, TRUE) == CSTR_EQUAL; }
}  // namespace

const KivMember* KivFindMember(const KivDispInterface& itf, DISPID dispid) {
    for (int i = 0; i < itf.memberCount; ++i)
        if (itf.members[i].dispid == dispid) return &itf.members[i];
    return nullptr;
}

HRESULT KivGetIDsOfNames(const KivDispInterface& itf, LPOLESTR* names, UINT count, DISPID* ids) {
    if (names == nullptr || ids == nullptr) return E_POINTER;
    if (count == 0) return S_OK;
    for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;
    const KivMember* member = nullptr;
    for (int i = 0; i < itf.memberCount && names[0] != nullptr; ++i)
        if (sameName(itf.members[i].name, names[0])) member = &itf.members[i];
    if (member == nullptr) return DISP_E_UNKNOWNNAME;
    ids[0] = member->dispid;
    HRESULT hr = S_OK;
    for (UINT n = 1; n < count; ++n) {
        for (int p = 0; p < member->paramCount; ++p)
            if (names[n] != nullptr && sameName(member->params[p].name, names[n])) ids[n] = p;
        if (ids[n] == DISPID_UNKNOWN) hr = DISP_E_UNKNOWNNAME;
    }
    return hr;
}

namespace {
// A value returned by a handler, as the member's dispatch type has it (a long flag read as a boolean).
HRESULT asDeclared(const KivMember& member, VARIANT* out, HRESULT hr) {
    if (FAILED(hr) || member.disp == VT_EMPTY || V_VT(out) == VT_EMPTY || V_VT(out) == member.disp) return hr;
    return VariantChangeType(out, out, 0, member.disp);
}
}  // namespace

HRESULT KivInvoke(const KivDispInterface& itf, KivDispatchTarget& target, DISPID dispid, WORD flags, DISPPARAMS* params,
                  VARIANT* result, UINT* argErr) {
    const KivMember* member = KivFindMember(itf, dispid);
    if (member == nullptr) return DISP_E_MEMBERNOTFOUND;
    DISPPARAMS none{nullptr, nullptr, 0, 0};
    if (params == nullptr) params = &none;
    if (params->cArgs > 0 && params->rgvarg == nullptr) return E_INVALIDARG;
    if (params->cNamedArgs > 0 && params->rgdispidNamedArgs == nullptr) return E_INVALIDARG;
    if (params->cNamedArgs > params->cArgs) return E_INVALIDARG;  // each name names one of the arguments

    KivVariant scratchResult;
    VARIANT* out = result != nullptr ? result : &scratchResult.v;
    if (result != nullptr) VariantInit(result);

    if (member->isProperty) {
        if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
            if (member->put == nullptr) return DISP_E_MEMBERNOTFOUND;
            if (params->cArgs != 1) return DISP_E_BADPARAMCOUNT;
            if (params->cNamedArgs != 1 || params->rgdispidNamedArgs[0] != DISPID_PROPERTYPUT) return DISP_E_PARAMNOTFOUND;
            KivVariant value;
            if (FAILED(VariantChangeType(&value.v, &params->rgvarg[0], 0, member->disp))) {
                if (argErr != nullptr) *argErr = 0;
                return DISP_E_TYPEMISMATCH;
            }
            return member->put(target, &value.v, out);
        }
        if ((flags & (DISPATCH_PROPERTYGET | DISPATCH_METHOD)) != 0) {
            if (member->get == nullptr) return DISP_E_MEMBERNOTFOUND;
            if (params->cArgs != 0) return DISP_E_BADPARAMCOUNT;
            return asDeclared(*member, out, member->get(target, nullptr, out));
        }
        return DISP_E_MEMBERNOTFOUND;
    }

    if ((flags & (DISPATCH_METHOD | DISPATCH_PROPERTYGET)) == 0 || member->get == nullptr) return DISP_E_MEMBERNOTFOUND;
    if (params->cNamedArgs != 0) return DISP_E_NONAMEDARGS;
    if (params->cArgs != static_cast<UINT>(member->paramCount)) return DISP_E_BADPARAMCOUNT;
    std::vector<VARIANT> args(static_cast<std::size_t>(member->paramCount));
    for (VARIANT& a : args) VariantInit(&a);
    HRESULT hr = S_OK;
    for (int i = 0; i < member->paramCount; ++i) {
        // rgvarg holds the arguments last first.
        const UINT position = params->cArgs - 1 - static_cast<UINT>(i);
        if (FAILED(VariantChangeType(&args[static_cast<std::size_t>(i)], &params->rgvarg[position], 0, member->params[i].disp))) {
            if (argErr != nullptr) *argErr = position;
            hr = DISP_E_TYPEMISMATCH;
            break;
        }
    }
    if (SUCCEEDED(hr)) hr = asDeclared(*member, out, member->get(target, args.data(), out));
    for (VARIANT& a : args) VariantClear(&a);
    return hr;
}

HRESULT KivReturnLong(VARIANT* result, long value) {
    V_VT(result) = VT_I4;
    V_I4(result) = value;
    return S_OK;
}

HRESULT KivReturnShort(VARIANT* result, short value) {
    V_VT(result) = VT_I2;
    V_I2(result) = value;
    return S_OK;
}

HRESULT KivReturnBool(VARIANT* result, bool value) {
    V_VT(result) = VT_BOOL;
    V_BOOL(result) = value ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT KivReturnBstr(VARIANT* result, const wchar_t* text) {
    V_VT(result) = VT_BSTR;
    V_BSTR(result) = SysAllocString(text);  // ownership passes to the caller's VARIANT
    return V_BSTR(result) != nullptr || text == nullptr ? S_OK : E_OUTOFMEMORY;
}

HRESULT KivReturnDouble(VARIANT* result, double value) {
    V_VT(result) = VT_R8;
    V_R8(result) = value;
    return S_OK;
}

HRESULT KivReturnText(VARIANT* result, const KivString& text) {
    V_VT(result) = VT_BSTR;
    // SysAllocStringLen keeps the text whole even if it holds a null character.
    V_BSTR(result) = SysAllocStringLen(text.getStringW(), static_cast<UINT>(text.length()));
    return V_BSTR(result) != nullptr ? S_OK : E_OUTOFMEMORY;  // ownership passes to the caller's VARIANT
}

KivString KivTextArg(const VARIANT& arg) {
    if (V_VT(&arg) != VT_BSTR || V_BSTR(&arg) == nullptr) return KivString();
    const BSTR text = V_BSTR(&arg);
    const UINT length = SysStringLen(text);
    return KivString(std::u16string(reinterpret_cast<const char16_t*>(text), length));
}
