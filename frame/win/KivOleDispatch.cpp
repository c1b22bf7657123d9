// KivOleControl, the interfaces of its properties: IDispatch over the control's dispatch table, the
// stock properties, the container's ambient properties, and ISpecifyPropertyPages. Win32 side.
#include "KivOleControl.h"

#include "KivOleControlInternal.h"

namespace {
HRESULT moduleTypeLib(ITypeLib** lib) {
    wchar_t path[MAX_PATH];
    const DWORD n = GetModuleFileNameW(kivmodule::instance(), path, MAX_PATH);
    if (n == 0 || n >= MAX_PATH) return E_FAIL;
    return LoadTypeLibEx(path, REGKIND_NONE, lib);
}

}  // namespace

HRESULT KivModuleTypeInfo(const GUID& guid, ITypeInfo** info) {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    KivComPtr<ITypeLib> lib;
    const HRESULT hr = moduleTypeLib(lib.put());
    if (FAILED(hr)) return hr;
    return lib->GetTypeInfoOfGuid(guid, info);
}

// ---- IDispatch

STDMETHODIMP KivOleControl::GetTypeInfoCount(UINT* count) {
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
}

STDMETHODIMP KivOleControl::GetTypeInfo(UINT index, LCID, ITypeInfo** info) {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    return KivModuleTypeInfo(*m_class.dispatch->iid, info);
}

STDMETHODIMP KivOleControl::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    return KivGetIDsOfNames(*m_class.dispatch, names, count, ids);
}

STDMETHODIMP KivOleControl::Invoke(DISPID dispid, REFIID riid, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                   EXCEPINFO*, UINT* argErr) {
    if (riid != IID_NULL) return DISP_E_UNKNOWNINTERFACE;  // reserved: IDispatch callers pass IID_NULL
    KivComPtr<IDispatch> keepAlive(this);  // a handler may release the container's last reference
    KivDispatchTarget target{*this, m_behaviour->core()};
    return KivNoThrow([&] { return KivInvoke(*m_class.dispatch, target, dispid, flags, params, result, argErr); });
}

// ---- Stock properties and ambients

void KivOleControl::setEnabled(bool enabled) {
    if (m_enabled == enabled) return;
    m_enabled = enabled;
    m_behaviour->onEnabledChanged(enabled);  // the child first, then the base
    if (m_hwnd != nullptr) InvalidateRect(m_hwnd, nullptr, TRUE);
    m_dirty = true;
    notifyPropertyChanged(DISPID_ENABLED);
}

HRESULT KivOleControl::ambient(DISPID dispid, VARIANT& value) {
    VariantInit(&value);
    if (!m_clientSite) return E_FAIL;
    KivComPtr<IDispatch> ambient;
    if (FAILED(m_clientSite->QueryInterface(IID_IDispatch, ambient.putVoid())) || !ambient) return E_FAIL;
    DISPPARAMS none{nullptr, nullptr, 0, 0};
    return ambient->Invoke(dispid, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value, nullptr, nullptr);
}

void KivOleControl::setForeColor(OLE_COLOR color) { setStockColor(m_foreColor, color, DISPID_FORECOLOR); }
void KivOleControl::setBackColor(OLE_COLOR color) { setStockColor(m_backColor, color, DISPID_BACKCOLOR); }

void KivOleControl::setStockColor(KivColor& stored, OLE_COLOR color, DISPID dispid) {
    stored = color;
    if (m_hwnd != nullptr) InvalidateRect(m_hwnd, nullptr, TRUE);
    viewChanged();
    m_dirty = true;
    notifyPropertyChanged(dispid);
}

KivColor KivOleControl::translateColor(OLE_COLOR color) {
    COLORREF translated = RGB(0, 0, 0);
    OleTranslateColor(color, nullptr, &translated);
    return translated;
}

OLE_COLOR KivOleControl::ambientColor(DISPID dispid, OLE_COLOR fallback) {
    KivVariant v;
    if (FAILED(ambient(dispid, v.v)) || FAILED(VariantChangeType(&v.v, &v.v, 0, VT_I4))) return fallback;
    return static_cast<OLE_COLOR>(V_I4(&v.v));
}

bool KivOleControl::ambientUserMode() {
    KivVariant v;
    if (FAILED(ambient(DISPID_AMBIENT_USERMODE, v.v))) return true;
    if (FAILED(VariantChangeType(&v.v, &v.v, 0, VT_BOOL))) return true;
    return V_BOOL(&v.v) != VARIANT_FALSE;
}

KivColor KivOleControl::ambientBackColor() {
    KivVariant v;
    OLE_COLOR color = 0x80000000 | COLOR_WINDOW;
    if (SUCCEEDED(ambient(DISPID_AMBIENT_BACKCOLOR, v.v)) && SUCCEEDED(VariantChangeType(&v.v, &v.v, 0, VT_I4)))
        color = static_cast<OLE_COLOR>(V_I4(&v.v));
    COLORREF translated = GetSysColor(COLOR_WINDOW);
    OleTranslateColor(color, nullptr, &translated);
    return translated;
}

// ---- ISpecifyPropertyPages

STDMETHODIMP KivOleControl::GetPages(CAUUID* pages) {
    if (pages == nullptr) return E_POINTER;
    pages->cElems = 0;
    pages->pElems = static_cast<GUID*>(CoTaskMemAlloc(sizeof(GUID)));  // ownership passes to the caller
    if (pages->pElems == nullptr) return E_OUTOFMEMORY;
    pages->pElems[0] = *m_class.propertyPage;
    pages->cElems = 1;
    return S_OK;
}
