// KivOleControl, the interfaces of the embedded object: IOleObject, in-place activation
// (IOleInPlaceObject, IOleInPlaceActiveObject, the control's window created in the container's) and
// IOleControl. Win32 side.
#include "KivOleControl.h"

#include "KivOleControlInternal.h"

// ---- IOleObject

STDMETHODIMP KivOleControl::SetClientSite(IOleClientSite* site) {
    m_clientSite = KivComPtr<IOleClientSite>(site);
    return S_OK;
}

STDMETHODIMP KivOleControl::GetClientSite(IOleClientSite** site) {
    if (site == nullptr) return E_POINTER;
    *site = m_clientSite.get();
    if (*site != nullptr) (*site)->AddRef();
    return S_OK;
}

STDMETHODIMP KivOleControl::SetHostNames(LPCOLESTR, LPCOLESTR) { return S_OK; }

STDMETHODIMP KivOleControl::Close(DWORD saveOption) {
    if (m_dirty && m_clientSite && (saveOption == OLECLOSE_SAVEIFDIRTY || saveOption == OLECLOSE_PROMPTSAVE))
        m_clientSite->SaveObject();
    InPlaceDeactivate();
    if (m_adviseHolder) m_adviseHolder->SendOnClose();
    return S_OK;
}

// Not implemented: controls are not linked or moniker-bound.
STDMETHODIMP KivOleControl::SetMoniker(DWORD, IMoniker*) { return E_NOTIMPL; }
STDMETHODIMP KivOleControl::GetMoniker(DWORD, DWORD, IMoniker** mk) {
    if (mk != nullptr) *mk = nullptr;
    return E_NOTIMPL;
}
// Not implemented: no data transfer (the controls carry no clipboard format).
STDMETHODIMP KivOleControl::InitFromData(IDataObject*, BOOL, DWORD) { return E_NOTIMPL; }
STDMETHODIMP KivOleControl::GetClipboardData(DWORD, IDataObject** data) {
    if (data != nullptr) *data = nullptr;
    return E_NOTIMPL;
}

STDMETHODIMP KivOleControl::DoVerb(LONG verb, LPMSG, IOleClientSite* site, LONG, HWND parent, LPCRECT rect) {
    if (site != nullptr && !m_clientSite) SetClientSite(site);
    switch (verb) {
    case OLEIVERB_PRIMARY:
    case OLEIVERB_SHOW:
    case OLEIVERB_INPLACEACTIVATE:
    case OLEIVERB_UIACTIVATE: {
        const HRESULT hr = inPlaceActivate(verb);
        if (SUCCEEDED(hr) && rect != nullptr && m_hwnd != nullptr) SetObjectRects(rect, rect);
        return hr;
    }
    case OLEIVERB_HIDE:
        UIDeactivate();
        if (m_hwnd != nullptr) ShowWindow(m_hwnd, SW_HIDE);
        return S_OK;
    case OLEIVERB_PROPERTIES: {
        IUnknown* self = static_cast<IDispatch*>(this);
        CLSID page = *m_class.propertyPage;
        return OleCreatePropertyFrame(parent, 0, 0, nullptr, 1, &self, 1, &page, LOCALE_USER_DEFAULT, 0, nullptr);
    }
    default:
        return verb < 0 ? E_NOTIMPL : OLEOBJ_S_INVALIDVERB;
    }
}

STDMETHODIMP KivOleControl::EnumVerbs(IEnumOLEVERB** e) { return OleRegEnumVerbs(*m_class.clsid, e); }
STDMETHODIMP KivOleControl::Update() { return S_OK; }
STDMETHODIMP KivOleControl::IsUpToDate() { return S_OK; }

STDMETHODIMP KivOleControl::GetUserClassID(CLSID* clsid) { return GetClassID(clsid); }

STDMETHODIMP KivOleControl::GetUserType(DWORD, LPOLESTR* name) {
    if (name == nullptr) return E_POINTER;
    wchar_t text[256];
    if (LoadStringW(kivmodule::instance(), m_class.userTypeNameId, text, 256) <= 0) return OleRegGetUserType(*m_class.clsid, USERCLASSTYPE_FULL, name);
    *name = KivCoTaskString(text);
    return *name != nullptr ? S_OK : E_OUTOFMEMORY;
}

STDMETHODIMP KivOleControl::SetExtent(DWORD aspect, SIZEL* size) {
    if (size == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    m_extent = *size;
    m_dirty = true;
    return S_OK;
}

STDMETHODIMP KivOleControl::GetExtent(DWORD aspect, SIZEL* size) {
    if (size == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *size = m_extent;
    return S_OK;
}

STDMETHODIMP KivOleControl::Advise(IAdviseSink* sink, DWORD* cookie) {
    if (!m_adviseHolder) {
        const HRESULT hr = CreateOleAdviseHolder(m_adviseHolder.put());
        if (FAILED(hr)) return hr;
    }
    return m_adviseHolder->Advise(sink, cookie);
}

STDMETHODIMP KivOleControl::Unadvise(DWORD cookie) {
    return m_adviseHolder ? m_adviseHolder->Unadvise(cookie) : OLE_E_NOCONNECTION;
}

STDMETHODIMP KivOleControl::EnumAdvise(IEnumSTATDATA** e) {
    if (e == nullptr) return E_POINTER;
    *e = nullptr;
    return m_adviseHolder ? m_adviseHolder->EnumAdvise(e) : S_OK;
}

STDMETHODIMP KivOleControl::GetMiscStatus(DWORD, DWORD* status) {
    if (status == nullptr) return E_POINTER;
    *status = m_class.miscStatus;
    return S_OK;
}

// Not implemented: the controls use system colours only.
STDMETHODIMP KivOleControl::SetColorScheme(LOGPALETTE*) { return E_NOTIMPL; }

// ---- In-place activation

HRESULT KivOleControl::windowContext(KivComPtr<IOleInPlaceFrame>& frame, KivComPtr<IOleInPlaceUIWindow>& document,
                                     RECT* pos) {
    if (!m_inPlaceSite) return E_UNEXPECTED;
    RECT position{}, clip{};
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof info;
    const HRESULT hr = m_inPlaceSite->GetWindowContext(frame.put(), document.put(), &position, &clip, &info);
    if (pos != nullptr) *pos = position;
    return hr;
}

HRESULT KivOleControl::inPlaceActivate(LONG verb) {
    if (!m_clientSite) return E_UNEXPECTED;
    if (!m_inPlaceSite) {
        KivComPtr<IOleInPlaceSite> site;
        if (FAILED(m_clientSite->QueryInterface(IID_IOleInPlaceSite, site.putVoid())) || !site) return E_FAIL;
        if (site->CanInPlaceActivate() != S_OK) return E_FAIL;
        m_inPlaceSite = site;
        m_inPlaceSite->OnInPlaceActivate();
    }
    if (m_hwnd == nullptr) {
        KivComPtr<IOleInPlaceFrame> frame;
        KivComPtr<IOleInPlaceUIWindow> document;
        RECT pos{};
        windowContext(frame, document, &pos);
        HWND parent = nullptr;
        if (FAILED(m_inPlaceSite->GetWindow(&parent)) || parent == nullptr) return E_FAIL;
        if (!KivRegisterControlWindowClass(&KivOleControl::windowProc)) return E_FAIL;
        CreateWindowExW(0, kKivControlWindowClass, L"", WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | (m_enabled ? 0 : WS_DISABLED),
                        pos.left, pos.top, pos.right - pos.left, pos.bottom - pos.top, parent, nullptr,
                        kivmodule::instance(), this);
        if (m_hwnd == nullptr) return E_FAIL;
    }
    ShowWindow(m_hwnd, SW_SHOW);
    if ((verb == OLEIVERB_UIACTIVATE || verb == OLEIVERB_PRIMARY) && !m_uiActive) {
        m_uiActive = true;
        m_inPlaceSite->OnUIActivate();
        KivComPtr<IOleInPlaceFrame> frame;
        KivComPtr<IOleInPlaceUIWindow> document;
        if (SUCCEEDED(windowContext(frame, document))) {
            if (frame) frame->SetActiveObject(this, nullptr);
            if (document) document->SetActiveObject(this, nullptr);
        }
        if (!IsChild(m_hwnd, GetFocus()) && GetFocus() != m_hwnd) ::SetFocus(m_hwnd);
    }
    return S_OK;
}

void KivOleControl::destroyWindow() {
    if (m_hwnd != nullptr) DestroyWindow(m_hwnd);  // WM_DESTROY: onDestroy; WM_NCDESTROY unbinds
    m_hwnd = nullptr;
}

STDMETHODIMP KivOleControl::GetWindow(HWND* hwnd) {
    if (hwnd == nullptr) return E_POINTER;
    *hwnd = m_hwnd;
    return m_hwnd != nullptr ? S_OK : E_FAIL;
}

// Not implemented: no context help.
STDMETHODIMP KivOleControl::ContextSensitiveHelp(BOOL) { return E_NOTIMPL; }

STDMETHODIMP KivOleControl::InPlaceDeactivate() {
    UIDeactivate();
    destroyWindow();
    if (m_inPlaceSite) {
        KivComPtr<IOleInPlaceSite> site = m_inPlaceSite;
        m_inPlaceSite.reset();
        site->OnInPlaceDeactivate();
    }
    return S_OK;
}

STDMETHODIMP KivOleControl::UIDeactivate() {
    if (!m_uiActive) return S_OK;
    m_uiActive = false;
    if (m_inPlaceSite) {
        KivComPtr<IOleInPlaceFrame> frame;
        KivComPtr<IOleInPlaceUIWindow> document;
        if (SUCCEEDED(windowContext(frame, document))) {
            if (document) document->SetActiveObject(nullptr, nullptr);
            if (frame) frame->SetActiveObject(nullptr, nullptr);
        }
        m_inPlaceSite->OnUIDeactivate(FALSE);
    }
    return S_OK;
}

STDMETHODIMP KivOleControl::SetObjectRects(LPCRECT pos, LPCRECT) {
    if (pos == nullptr) return E_POINTER;
    if (m_hwnd != nullptr) MoveWindow(m_hwnd, pos->left, pos->top, pos->right - pos->left, pos->bottom - pos->top, TRUE);
    return S_OK;
}

// Not implemented: no undo.
STDMETHODIMP KivOleControl::ReactivateAndUndo() { return E_NOTIMPL; }
STDMETHODIMP KivOleControl::TranslateAccelerator(LPMSG) { return S_FALSE; }
STDMETHODIMP KivOleControl::OnFrameWindowActivate(BOOL) { return S_OK; }
STDMETHODIMP KivOleControl::OnDocWindowActivate(BOOL) { return S_OK; }
STDMETHODIMP KivOleControl::ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) { return S_OK; }
STDMETHODIMP KivOleControl::EnableModeless(BOOL) { return S_OK; }

// ---- IOleControl

STDMETHODIMP KivOleControl::GetControlInfo(CONTROLINFO* info) {
    if (info == nullptr) return E_POINTER;
    info->cb = sizeof *info;
    info->hAccel = nullptr;
    info->cAccel = 0;
    info->dwFlags = 0;
    return S_OK;
}
STDMETHODIMP KivOleControl::OnMnemonic(MSG*) { return S_OK; }
STDMETHODIMP KivOleControl::OnAmbientPropertyChange(DISPID) {
    if (m_hwnd != nullptr) InvalidateRect(m_hwnd, nullptr, TRUE);
    viewChanged();
    return S_OK;
}
STDMETHODIMP KivOleControl::FreezeEvents(BOOL freeze) {
    m_freezeEvents += freeze ? 1 : (m_freezeEvents > 0 ? -1 : 0);
    return S_OK;
}
