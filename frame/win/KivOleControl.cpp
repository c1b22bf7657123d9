// KivOleControl: the frame's ActiveX control object. Win32 side. No exception crosses a
// COM method; every method answers an HRESULT, a method the frame does not support answers the
// documented "not implemented" code.
#include "KivOleControl.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "KivControlFace.h"

namespace {

const wchar_t kWindowClass[] = L"KivLorqControlWindow";

HRESULT moduleTypeLib(ITypeLib** lib) {
    wchar_t path[MAX_PATH];
    const DWORD n = GetModuleFileNameW(kivmodule::instance(), path, MAX_PATH);
    if (n == 0 || n >= MAX_PATH) return E_FAIL;
    return LoadTypeLibEx(path, REGKIND_NONE, lib);
}

HRESULT moduleTypeInfo(const GUID& guid, ITypeInfo** info) {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    KivComPtr<ITypeLib> lib;
    const HRESULT hr = moduleTypeLib(lib.put());
    if (FAILED(hr)) return hr;
    return lib->GetTypeInfoOfGuid(guid, info);
}

// The control window's class belongs to this module image: registered on first use, unregistered
// when the module is freed (KivUnregisterControlWindowClass). A class left over from an earlier image
// of the module (same name, another procedure) is replaced.
bool registerWindowClass(WNDPROC proc) {
    WNDCLASSEXW existing{};
    existing.cbSize = sizeof existing;
    if (GetClassInfoExW(kivmodule::instance(), kWindowClass, &existing)) {
        if (existing.lpfnWndProc == proc) return true;
        UnregisterClassW(kWindowClass, kivmodule::instance());
    }
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    wc.style = CS_DBLCLKS;
    wc.lpfnWndProc = proc;
    wc.hInstance = kivmodule::instance();
    wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    wc.lpszClassName = kWindowClass;
    return RegisterClassExW(&wc) != 0;
}

// A fixed list of connection points, enumerated.
class KivEnumConnectionPoints final : public IEnumConnectionPoints {
public:
    KivEnumConnectionPoints(IUnknown* owner, std::vector<IConnectionPoint*> points, ULONG position = 0)
        : m_owner(owner), m_points(std::move(points)), m_position(position) {}
    STDMETHODIMP QueryInterface(REFIID riid, void** out) override {
        static const KivInterfaceEntry table[] = {
            {&IID_IEnumConnectionPoints, &kivCast<IEnumConnectionPoints, KivEnumConnectionPoints>}, {nullptr, nullptr}};
        return KivQueryInterface(this, table, riid, out);
    }
    STDMETHODIMP_(ULONG) AddRef() override { return m_refs.addRef(); }
    STDMETHODIMP_(ULONG) Release() override {
        const ULONG n = m_refs.release();
        if (n == 0) delete this;
        return n;
    }
    STDMETHODIMP Next(ULONG count, IConnectionPoint** out, ULONG* fetched) override {
        if (out == nullptr) return E_POINTER;
        ULONG n = 0;
        while (n < count && m_position < m_points.size()) {
            out[n] = m_points[m_position++];
            out[n]->AddRef();
            ++n;
        }
        if (fetched != nullptr) *fetched = n;
        return n == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Skip(ULONG count) override {
        m_position = std::min<ULONG>(static_cast<ULONG>(m_points.size()), m_position + count);
        return m_position < m_points.size() ? S_OK : S_FALSE;
    }
    STDMETHODIMP Reset() override {
        m_position = 0;
        return S_OK;
    }
    STDMETHODIMP Clone(IEnumConnectionPoints** out) override {
        if (out == nullptr) return E_POINTER;
        *out = new KivEnumConnectionPoints(m_owner.get(), m_points, m_position);
        return S_OK;
    }

private:
    KivRefCount m_refs;
    KivComPtr<IUnknown> m_owner;  // keeps the control, and so its points, alive
    std::vector<IConnectionPoint*> m_points;
    ULONG m_position;
};

}  // namespace

void KivUnregisterControlWindowClass() { UnregisterClassW(kWindowClass, kivmodule::instance()); }

RECT KivToRECT(const KivRect& r) { return RECT{r.left, r.top, r.right, r.bottom}; }
KivRect KivFromRECT(const RECT& r) { return KivRect{r.left, r.top, r.right, r.bottom}; }

KivDrawItem KivFromDRAWITEMSTRUCT(const DRAWITEMSTRUCT& item) {
    KivDrawItem draw;
    draw.itemID = static_cast<int>(item.itemID);  // (UINT)-1 for the empty selection field
    draw.itemState = item.itemState;
    draw.rcItem = KivFromRECT(item.rcItem);
    draw.itemData = static_cast<KivItemData>(item.itemData);
    return draw;
}

// ---------------------------------------------------------------- connection points

KivConnectionPoint::~KivConnectionPoint() { clear(); }

STDMETHODIMP KivConnectionPoint::QueryInterface(REFIID riid, void** out) {
    static const KivInterfaceEntry table[] = {{&IID_IConnectionPoint, &kivCast<IConnectionPoint, KivConnectionPoint>},
                                              {nullptr, nullptr}};
    return KivQueryInterface(this, table, riid, out);
}
STDMETHODIMP_(ULONG) KivConnectionPoint::AddRef() { return m_owner.AddRef(); }
STDMETHODIMP_(ULONG) KivConnectionPoint::Release() { return m_owner.Release(); }

STDMETHODIMP KivConnectionPoint::GetConnectionInterface(IID* iid) {
    if (iid == nullptr) return E_POINTER;
    *iid = m_iid;
    return S_OK;
}

STDMETHODIMP KivConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (container == nullptr) return E_POINTER;
    *container = &m_owner;
    m_owner.AddRef();
    return S_OK;
}

STDMETHODIMP KivConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
    if (sink == nullptr || cookie == nullptr) return E_POINTER;
    *cookie = 0;
    IUnknown* itf = nullptr;
    if (FAILED(sink->QueryInterface(m_iid, reinterpret_cast<void**>(&itf))) || itf == nullptr) {
        // An event sink that only answers IDispatch still receives the events.
        if (IsEqualIID(m_iid, IID_IPropertyNotifySink) ||
            FAILED(sink->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&itf))) || itf == nullptr)
            return CONNECT_E_CANNOTCONNECT;
    }
    *cookie = m_nextCookie++;
    m_connections.push_back(Connection{*cookie, itf});  // holds the reference QueryInterface gave
    return S_OK;
}

STDMETHODIMP KivConnectionPoint::Unadvise(DWORD cookie) {
    for (auto it = m_connections.begin(); it != m_connections.end(); ++it) {
        if (it->cookie == cookie) {
            IUnknown* sink = it->sink;
            m_connections.erase(it);
            sink->Release();
            return S_OK;
        }
    }
    return CONNECT_E_NOCONNECTION;
}

// Not implemented: no container this module serves enumerates connections.
STDMETHODIMP KivConnectionPoint::EnumConnections(IEnumConnections** e) {
    if (e != nullptr) *e = nullptr;
    return E_NOTIMPL;
}

std::vector<IUnknown*> KivConnectionPoint::sinks() const {
    std::vector<IUnknown*> out;
    for (const Connection& c : m_connections) out.push_back(c.sink);
    return out;
}

void KivConnectionPoint::clear() {
    std::vector<Connection> connections;
    connections.swap(m_connections);
    for (const Connection& c : connections) c.sink->Release();
}

// ---------------------------------------------------------------- object

KivOleControl::KivOleControl(const KivControlClass& cls)
    : m_class(cls), m_eventsPoint(*this, *cls.events->iid), m_propertyNotifyPoint(*this, IID_IPropertyNotifySink) {}

KivOleControl::~KivOleControl() {
    destroyWindow();
    m_eventsPoint.clear();
    m_propertyNotifyPoint.clear();
}

STDMETHODIMP KivOleControl::QueryInterface(REFIID riid, void** out) {
    using T = KivOleControl;
    static const KivInterfaceEntry table[] = {
        {&IID_IDispatch, &kivCast<IDispatch, T>},
        {&IID_IOleObject, &kivCast<IOleObject, T>},
        {&IID_IOleWindow, &kivCast<IOleInPlaceObject, T>},
        {&IID_IOleInPlaceObject, &kivCast<IOleInPlaceObject, T>},
        {&IID_IOleInPlaceActiveObject, &kivCast<IOleInPlaceActiveObject, T>},
        {&IID_IOleControl, &kivCast<IOleControl, T>},
        {&IID_IProvideClassInfo, &kivCast<IProvideClassInfo2, T>},
        {&IID_IProvideClassInfo2, &kivCast<IProvideClassInfo2, T>},
        {&IID_IConnectionPointContainer, &kivCast<IConnectionPointContainer, T>},
        {&IID_IPersist, &kivCast<IPersistStreamInit, T>},
        {&IID_IPersistStreamInit, &kivCast<IPersistStreamInit, T>},
        {&IID_IPersistStorage, &kivCast<IPersistStorage, T>},
        {&IID_IPersistMemory, &kivCast<IPersistMemory, T>},
        {&IID_IPersistPropertyBag, &kivCast<IPersistPropertyBag, T>},
        {&IID_ISpecifyPropertyPages, &kivCast<ISpecifyPropertyPages, T>},
        {&IID_IViewObject, &kivCast<IViewObjectEx, T>},
        {&IID_IViewObject2, &kivCast<IViewObjectEx, T>},
        {&IID_IViewObjectEx, &kivCast<IViewObjectEx, T>},
        {nullptr, nullptr},
    };
    if (out != nullptr && IsEqualIID(riid, *m_class.dispatch->iid)) {  // the control's own dispinterface
        *out = static_cast<IDispatch*>(this);
        AddRef();
        return S_OK;
    }
    return KivQueryInterface(this, table, riid, out);
}

STDMETHODIMP_(ULONG) KivOleControl::AddRef() { return m_refs.addRef(); }

STDMETHODIMP_(ULONG) KivOleControl::Release() {
    const ULONG n = m_refs.release();
    if (n == 0) delete this;
    return n;
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
    return moduleTypeInfo(*m_class.dispatch->iid, info);
}

STDMETHODIMP KivOleControl::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    return KivGetIDsOfNames(*m_class.dispatch, names, count, ids);
}

STDMETHODIMP KivOleControl::Invoke(DISPID dispid, REFIID, LCID, WORD flags, DISPPARAMS* params, VARIANT* result,
                                   EXCEPINFO*, UINT* argErr) {
    KivComPtr<IDispatch> keepAlive(this);  // a handler may release the container's last reference
    return KivInvoke(*m_class.dispatch, this, dispid, flags, params, result, argErr);
}

// ---- Stock properties, ambients, events

HRESULT KivStockEnabledGet(void* self, VARIANT*, VARIANT* result) {
    return KivReturnBool(result, static_cast<KivOleControl*>(self)->enabled());
}

HRESULT KivStockEnabledPut(void* self, VARIANT* args, VARIANT*) {
    static_cast<KivOleControl*>(self)->setEnabled(V_BOOL(&args[0]) != VARIANT_FALSE);
    return S_OK;
}

void KivOleControl::setEnabled(bool enabled) {
    if (m_enabled == enabled) return;
    m_enabled = enabled;
    onEnabledChanged(enabled);  // the child first, then the base
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

void KivOleControl::fireEvent(int dispid, const std::vector<KivEventArg>& args) {
    if (m_freezeEvents > 0) return;  // the container froze events: they are dropped, as MFC does
    KivComPtr<IDispatch> keepAlive(this);
    std::vector<VARIANT> rgvarg(args.size());
    for (std::size_t i = 0; i < args.size(); ++i) {
        VARIANT& v = rgvarg[args.size() - 1 - i];  // last argument first
        VariantInit(&v);
        if (args[i].kind == KivEventArg::Kind::Long) {
            V_VT(&v) = VT_I4;
            V_I4(&v) = args[i].longValue;
        } else {
            V_VT(&v) = VT_BSTR;
            V_BSTR(&v) = SysAllocString(args[i].stringValue.getStringW());
        }
    }
    DISPPARAMS params{rgvarg.empty() ? nullptr : rgvarg.data(), nullptr, static_cast<UINT>(rgvarg.size()), 0};
    for (IUnknown* sink : m_eventsPoint.sinks()) {
        KivComPtr<IUnknown> hold(sink);
        static_cast<IDispatch*>(sink)->Invoke(dispid, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr,
                                              nullptr, nullptr);
    }
    for (VARIANT& v : rgvarg) VariantClear(&v);
}

void KivOleControl::notifyPropertyChanged(DISPID dispid) {
    for (IUnknown* sink : m_propertyNotifyPoint.sinks()) static_cast<IPropertyNotifySink*>(sink)->OnChanged(dispid);
}

void KivOleControl::viewChanged() {
    if (m_viewSink) m_viewSink->OnViewChange(DVASPECT_CONTENT, -1);
}

void KivOleControl::setFocus() {
    // COleControl::SetFocus: the control's window takes the focus (its OnSetFocus passes it on).
    if (m_hwnd != nullptr) ::SetFocus(m_hwnd);
}

// The one paint path: WM_PAINT, WM_PRINTCLIENT and IViewObject::Draw all come here.
void KivOleControl::paint(HDC dc, const KivRect& bounds) {
    KivGdiDC kdc(dc);  // restores what it selected before the caller ends the paint
    onDraw(kdc, bounds, ambientUserMode());
}

KivRect KivOleControl::clientRect() const {
    RECT client{};
    if (m_hwnd != nullptr) GetClientRect(m_hwnd, &client);
    return KivFromRECT(client);
}

void KivOleControl::onDraw(IKivDC& dc, const KivRect& bounds, bool userMode) {
    KivDrawControlFace(dc, bounds, userMode, KivString(m_class.designText), ambientBackColor(), childList());
}

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
        if (!registerWindowClass(&KivOleControl::windowProc)) return E_FAIL;
        CreateWindowExW(0, kWindowClass, L"", WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | (m_enabled ? 0 : WS_DISABLED),
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

// ---- IProvideClassInfo2

STDMETHODIMP KivOleControl::GetClassInfo(ITypeInfo** info) { return moduleTypeInfo(*m_class.clsid, info); }

STDMETHODIMP KivOleControl::GetGUID(DWORD kind, GUID* guid) {
    if (guid == nullptr) return E_POINTER;
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
    *guid = *m_class.events->iid;
    return S_OK;
}

// ---- IConnectionPointContainer

STDMETHODIMP KivOleControl::EnumConnectionPoints(IEnumConnectionPoints** e) {
    if (e == nullptr) return E_POINTER;
    *e = new KivEnumConnectionPoints(static_cast<IDispatch*>(this), {&m_eventsPoint, &m_propertyNotifyPoint});
    return S_OK;
}

STDMETHODIMP KivOleControl::FindConnectionPoint(REFIID riid, IConnectionPoint** cp) {
    if (cp == nullptr) return E_POINTER;
    *cp = nullptr;
    if (IsEqualIID(riid, *m_class.events->iid)) *cp = &m_eventsPoint;
    else if (IsEqualIID(riid, IID_IPropertyNotifySink)) *cp = &m_propertyNotifyPoint;
    else return CONNECT_E_NOCONNECTION;
    (*cp)->AddRef();
    return S_OK;
}

// ---- Persistence: MFC's property exchange layout (version, extent, stock mask, stock values).

STDMETHODIMP KivOleControl::GetClassID(CLSID* clsid) {
    if (clsid == nullptr) return E_POINTER;
    *clsid = *m_class.clsid;
    return S_OK;
}

STDMETHODIMP KivOleControl::IsDirty() { return m_dirty ? S_OK : S_FALSE; }

STDMETHODIMP KivOleControl::InitNew() {
    m_enabled = true;  // OnResetState: only the base behaviour (stock defaults)
    m_foreColor = 0x80000000 | COLOR_WINDOWTEXT;
    m_backColor = 0x80000000 | COLOR_WINDOW;
    m_dirty = false;
    return S_OK;
}

ULONG KivOleControl::persistedSize() const {
    ULONG size = 4 + 8 + 4;
    if ((m_class.stockMask & kivstock::kForeColor) != 0) size += 4;
    if ((m_class.stockMask & kivstock::kBackColor) != 0) size += 4;
    if ((m_class.stockMask & kivstock::kEnabled) != 0) size += 1;
    return size;
}

HRESULT KivOleControl::saveToStream(IStream* stream) {
    if (stream == nullptr) return E_POINTER;
    unsigned char buffer[32];
    ULONG n = 0;
    auto put = [&](const void* data, ULONG size) {
        std::memcpy(buffer + n, data, size);
        n += size;
    };
    const DWORD version = 0x00010000;
    const DWORD mask = m_class.stockMask;
    put(&version, 4);
    put(&m_extent.cx, 4);
    put(&m_extent.cy, 4);
    put(&mask, 4);
    if ((mask & kivstock::kForeColor) != 0) put(&m_foreColor, 4);
    if ((mask & kivstock::kBackColor) != 0) put(&m_backColor, 4);
    if ((mask & kivstock::kEnabled) != 0) {
        const unsigned char enabled = m_enabled ? 1 : 0;
        put(&enabled, 1);
    }
    ULONG written = 0;
    const HRESULT hr = stream->Write(buffer, n, &written);
    if (FAILED(hr)) return hr;
    return written == n ? S_OK : STG_E_MEDIUMFULL;
}

HRESULT KivOleControl::loadFromStream(IStream* stream) {
    if (stream == nullptr) return E_POINTER;
    auto read = [stream](void* data, ULONG size) {
        ULONG got = 0;
        return SUCCEEDED(stream->Read(data, size, &got)) && got == size;
    };
    DWORD version = 0, mask = 0;
    SIZEL extent{};
    DWORD fore = m_foreColor, back = m_backColor;
    unsigned char enabled = m_enabled ? 1 : 0;
    if (!read(&version, 4) || !read(&extent.cx, 4) || !read(&extent.cy, 4) || !read(&mask, 4)) return STG_E_READFAULT;
    // Values of the stream's mask are read in MFC's order; the control takes those it has.
    if ((mask & kivstock::kForeColor) != 0 && !read(&fore, 4)) return STG_E_READFAULT;
    if ((mask & kivstock::kBackColor) != 0 && !read(&back, 4)) return STG_E_READFAULT;
    if ((mask & kivstock::kEnabled) != 0 && !read(&enabled, 1)) return STG_E_READFAULT;
    m_extent = extent;
    if ((m_class.stockMask & kivstock::kForeColor) != 0) m_foreColor = fore;
    if ((m_class.stockMask & kivstock::kBackColor) != 0) m_backColor = back;
    if ((m_class.stockMask & kivstock::kEnabled) != 0) setEnabled(enabled != 0);
    m_dirty = false;
    return S_OK;
}

STDMETHODIMP KivOleControl::Load(LPSTREAM stream) { return loadFromStream(stream); }

STDMETHODIMP KivOleControl::Save(LPSTREAM stream, BOOL clearDirty) {
    const HRESULT hr = saveToStream(stream);
    if (SUCCEEDED(hr) && clearDirty) m_dirty = false;
    return hr;
}

STDMETHODIMP KivOleControl::GetSizeMax(ULARGE_INTEGER* size) {
    if (size == nullptr) return E_POINTER;
    size->QuadPart = persistedSize();
    return S_OK;
}

STDMETHODIMP KivOleControl::InitNew(IStorage*) { return InitNew(); }

STDMETHODIMP KivOleControl::Load(IStorage* storage) {
    if (storage == nullptr) return E_POINTER;
    KivComPtr<IStream> stream;
    const HRESULT hr = storage->OpenStream(L"Contents", nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, stream.put());
    if (FAILED(hr)) return hr;
    return loadFromStream(stream.get());
}

STDMETHODIMP KivOleControl::Save(IStorage* storage, BOOL) {
    if (storage == nullptr) return E_POINTER;
    KivComPtr<IStream> stream;
    const HRESULT hr = storage->CreateStream(L"Contents", STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, 0, stream.put());
    if (FAILED(hr)) return hr;
    return saveToStream(stream.get());
}

STDMETHODIMP KivOleControl::SaveCompleted(IStorage*) { return S_OK; }
STDMETHODIMP KivOleControl::HandsOffStorage() { return S_OK; }

STDMETHODIMP KivOleControl::Load(LPVOID memory, ULONG size) {
    if (memory == nullptr) return E_POINTER;
    KivComPtr<IStream> stream;
    HRESULT hr = CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
    if (FAILED(hr)) return hr;
    ULONG written = 0;
    hr = stream->Write(memory, size, &written);
    if (FAILED(hr)) return hr;
    const LARGE_INTEGER zero{};
    stream->Seek(zero, STREAM_SEEK_SET, nullptr);
    return loadFromStream(stream.get());
}

STDMETHODIMP KivOleControl::Save(LPVOID memory, BOOL clearDirty, ULONG size) {
    if (memory == nullptr) return E_POINTER;
    if (size < persistedSize()) return STG_E_MEDIUMFULL;
    KivComPtr<IStream> stream;
    HRESULT hr = CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
    if (FAILED(hr)) return hr;
    hr = Save(stream.get(), clearDirty);
    if (FAILED(hr)) return hr;
    const LARGE_INTEGER zero{};
    stream->Seek(zero, STREAM_SEEK_SET, nullptr);
    ULONG got = 0;
    return stream->Read(memory, persistedSize(), &got);
}

STDMETHODIMP KivOleControl::GetSizeMax(ULONG* size) {
    if (size == nullptr) return E_POINTER;
    *size = persistedSize();
    return S_OK;
}

STDMETHODIMP KivOleControl::Load(IPropertyBag* bag, IErrorLog* log) {
    if (bag == nullptr) return E_POINTER;
    auto readLong = [&](const wchar_t* name, LONG& value) {
        KivVariant v;
        if (FAILED(bag->Read(name, &v.v, log)) || FAILED(VariantChangeType(&v.v, &v.v, 0, VT_I4))) return false;
        value = V_I4(&v.v);
        return true;
    };
    LONG cx = m_extent.cx, cy = m_extent.cy, fore = static_cast<LONG>(m_foreColor), back = static_cast<LONG>(m_backColor);
    readLong(L"_ExtentX", cx);
    readLong(L"_ExtentY", cy);
    m_extent = SIZEL{cx, cy};
    if ((m_class.stockMask & kivstock::kForeColor) != 0 && readLong(L"ForeColor", fore)) m_foreColor = static_cast<KivColor>(fore);
    if ((m_class.stockMask & kivstock::kBackColor) != 0 && readLong(L"BackColor", back)) m_backColor = static_cast<KivColor>(back);
    if ((m_class.stockMask & kivstock::kEnabled) != 0) {
        KivVariant v;
        if (SUCCEEDED(bag->Read(L"Enabled", &v.v, log)) && SUCCEEDED(VariantChangeType(&v.v, &v.v, 0, VT_BOOL)))
            setEnabled(V_BOOL(&v.v) != VARIANT_FALSE);
    }
    m_dirty = false;
    return S_OK;
}

STDMETHODIMP KivOleControl::Save(IPropertyBag* bag, BOOL clearDirty, BOOL) {
    if (bag == nullptr) return E_POINTER;
    auto writeLong = [&](const wchar_t* name, LONG value) {
        VARIANT v;
        V_VT(&v) = VT_I4;
        V_I4(&v) = value;
        return bag->Write(name, &v);
    };
    HRESULT hr = writeLong(L"_Version", 0x00010000);
    if (SUCCEEDED(hr)) hr = writeLong(L"_ExtentX", m_extent.cx);
    if (SUCCEEDED(hr)) hr = writeLong(L"_ExtentY", m_extent.cy);
    if (SUCCEEDED(hr)) hr = writeLong(L"_StockProps", static_cast<LONG>(m_class.stockMask));
    if (SUCCEEDED(hr) && (m_class.stockMask & kivstock::kForeColor) != 0) hr = writeLong(L"ForeColor", static_cast<LONG>(m_foreColor));
    if (SUCCEEDED(hr) && (m_class.stockMask & kivstock::kBackColor) != 0) hr = writeLong(L"BackColor", static_cast<LONG>(m_backColor));
    if (SUCCEEDED(hr) && (m_class.stockMask & kivstock::kEnabled) != 0) {
        VARIANT v;
        V_VT(&v) = VT_BOOL;
        V_BOOL(&v) = m_enabled ? VARIANT_TRUE : VARIANT_FALSE;
        hr = bag->Write(L"Enabled", &v);
    }
    if (SUCCEEDED(hr) && clearDirty) m_dirty = false;
    return hr;
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

// ---- IViewObject, IViewObject2, IViewObjectEx

STDMETHODIMP KivOleControl::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC draw, LPCRECTL bounds, LPCRECTL,
                                 BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) {
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    if (draw == nullptr) return E_INVALIDARG;
    if (bounds == nullptr && m_hwnd == nullptr) return E_INVALIDARG;
    paint(draw, bounds != nullptr ? KivRect{bounds->left, bounds->top, bounds->right, bounds->bottom} : clientRect());
    return S_OK;
}

// Not implemented: no palette.
STDMETHODIMP KivOleControl::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE** colors) {
    if (colors != nullptr) *colors = nullptr;
    return E_NOTIMPL;
}
// Not implemented: the drawing cannot be frozen.
STDMETHODIMP KivOleControl::Freeze(DWORD, LONG, void*, DWORD*) { return E_NOTIMPL; }
STDMETHODIMP KivOleControl::Unfreeze(DWORD) { return E_NOTIMPL; }

STDMETHODIMP KivOleControl::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    m_viewAspects = aspects;
    m_viewFlags = flags;
    m_viewSink = KivComPtr<IAdviseSink>(sink);
    return S_OK;
}

STDMETHODIMP KivOleControl::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
    if (aspects != nullptr) *aspects = m_viewAspects;
    if (flags != nullptr) *flags = m_viewFlags;
    if (sink != nullptr) {
        *sink = m_viewSink.get();
        if (*sink != nullptr) (*sink)->AddRef();
    }
    return S_OK;
}

STDMETHODIMP KivOleControl::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL size) { return GetExtent(aspect, size); }

STDMETHODIMP KivOleControl::GetRect(DWORD aspect, LPRECTL rect) {
    if (rect == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *rect = RECTL{0, 0, m_extent.cx, m_extent.cy};
    return S_OK;
}

STDMETHODIMP KivOleControl::GetViewStatus(DWORD* status) {
    if (status == nullptr) return E_POINTER;
    *status = VIEWSTATUS_OPAQUE | VIEWSTATUS_SOLIDBKGND;
    return S_OK;
}

STDMETHODIMP KivOleControl::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT loc, LONG, DWORD* hit) {
    if (bounds == nullptr || hit == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    *hit = PtInRect(bounds, loc) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

STDMETHODIMP KivOleControl::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT loc, LONG, DWORD* hit) {
    if (bounds == nullptr || loc == nullptr || hit == nullptr) return E_POINTER;
    if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
    RECT overlap;
    *hit = IntersectRect(&overlap, bounds, loc) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return S_OK;
}

// Not implemented: the natural extent is the container's.
STDMETHODIMP KivOleControl::GetNaturalExtent(DWORD, LONG, DVTARGETDEVICE*, HDC, DVEXTENTINFO*, LPSIZEL) { return E_NOTIMPL; }

// ---- The control window: a flat window procedure over typed hooks.

LRESULT CALLBACK KivOleControl::windowProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == WM_NCCREATE) {
        auto* self = static_cast<KivOleControl*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        self->m_hwnd = hwnd;
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<KivOleControl*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
    if (self == nullptr) return DefWindowProcW(hwnd, msg, wParam, lParam);
    if (msg == WM_NCDESTROY) {
        SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
        self->m_hwnd = nullptr;
        return DefWindowProcW(hwnd, msg, wParam, lParam);
    }
    return self->onMessage(msg, wParam, lParam);
}

LRESULT KivOleControl::onMessage(UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
    case WM_CREATE: {
        RECT client;
        GetClientRect(m_hwnd, &client);
        onCreate(m_hwnd, client);
        return 0;
    }
    case WM_DESTROY:
        onDestroy();
        return 0;
    case WM_SIZE:
        onSize(LOWORD(lParam), HIWORD(lParam));
        return 0;
    case WM_ERASEBKGND:
        return 1;  // OnDraw fills the whole face
    case WM_PAINT: {
        PAINTSTRUCT ps;
        HDC dc = BeginPaint(m_hwnd, &ps);
        paint(dc, clientRect());
        EndPaint(m_hwnd, &ps);
        return 0;
    }
    case WM_PRINTCLIENT:
        paint(reinterpret_cast<HDC>(wParam), clientRect());
        return 0;
    case WM_MOUSEACTIVATE:
        if (!m_uiActive) inPlaceActivate(OLEIVERB_UIACTIVATE);
        return MA_ACTIVATE;
    case WM_SETFOCUS:
        if (!m_uiActive && m_inPlaceSite) inPlaceActivate(OLEIVERB_UIACTIVATE);
        onSetFocus();
        return 0;
    case WM_COMMAND:
        if (lParam != 0) onCommand(wParam, lParam);
        return DefWindowProcW(m_hwnd, msg, wParam, lParam);
    case WM_DRAWITEM:
        if (onDrawItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam))) return TRUE;
        break;
    case WM_MEASUREITEM:
        if (onMeasureItem(*reinterpret_cast<MEASUREITEMSTRUCT*>(lParam))) return TRUE;
        break;
    default:
        break;
    }
    return DefWindowProcW(m_hwnd, msg, wParam, lParam);
}
