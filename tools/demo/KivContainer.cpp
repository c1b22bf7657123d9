// A small OLE control container of our own. Win32 side.
#include "KivContainer.h"

#include "KivDispatch.h"

// The client site of one control: IOleClientSite, IOleInPlaceSite and the in-place frame the
// control asks for, IOleControlSite, and IDispatch for the ambient properties.
class KivControlSite final
    : public KivRefCounted<IOleClientSite, IOleInPlaceSite, IOleInPlaceFrame, IOleControlSite, KivDispatchWithoutTypes> {
public:
    KivControlSite(HWND parent, const RECT& rect, std::vector<IID>& asked) : m_parent(parent), m_rect(rect), m_asked(asked) {}

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID riid, void** out) override {
        m_asked.push_back(riid);
        if (out == nullptr) return E_POINTER;
        if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IOleClientSite)) *out = static_cast<IOleClientSite*>(this);
        else if (IsEqualIID(riid, IID_IOleWindow) || IsEqualIID(riid, IID_IOleInPlaceSite)) *out = static_cast<IOleInPlaceSite*>(this);
        else if (IsEqualIID(riid, IID_IOleInPlaceUIWindow) || IsEqualIID(riid, IID_IOleInPlaceFrame))
            *out = static_cast<IOleInPlaceFrame*>(this);
        else if (IsEqualIID(riid, IID_IOleControlSite)) *out = static_cast<IOleControlSite*>(this);
        else if (IsEqualIID(riid, IID_IDispatch)) *out = static_cast<IDispatch*>(this);
        else {
            *out = nullptr;
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    // IOleClientSite
    STDMETHODIMP SaveObject() override { return S_OK; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker** mk) override {
        if (mk != nullptr) *mk = nullptr;
        return E_NOTIMPL;  // no linking
    }
    STDMETHODIMP GetContainer(IOleContainer** c) override {
        m_asked.push_back(IID_IOleContainer);
        if (c != nullptr) *c = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP ShowObject() override { return S_OK; }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

    // IOleWindow (the site's and the frame's: the parent window)
    STDMETHODIMP GetWindow(HWND* hwnd) override {
        if (hwnd == nullptr) return E_POINTER;
        *hwnd = m_parent;
        return S_OK;
    }
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

    // IOleInPlaceSite
    STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnUIActivate() override { return S_OK; }
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** doc, LPRECT pos, LPRECT clip,
                                  LPOLEINPLACEFRAMEINFO info) override {
        if (frame != nullptr) {
            *frame = static_cast<IOleInPlaceFrame*>(this);
            AddRef();
        }
        if (doc != nullptr) *doc = nullptr;  // the frame is the document
        if (pos != nullptr) *pos = m_rect;
        if (clip != nullptr) *clip = m_rect;
        if (info != nullptr) {
            info->fMDIApp = FALSE;
            info->hwndFrame = m_parent;
            info->haccel = nullptr;
            info->cAccelEntries = 0;
        }
        return S_OK;
    }
    STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
    STDMETHODIMP OnUIDeactivate(BOOL) override { return S_OK; }
    STDMETHODIMP OnInPlaceDeactivate() override { return S_OK; }
    STDMETHODIMP DiscardUndoState() override { return S_OK; }
    STDMETHODIMP DeactivateAndUndo() override { return S_OK; }
    STDMETHODIMP OnPosRectChange(LPCRECT rect) override {
        if (rect != nullptr) m_rect = *rect;
        return S_OK;
    }

    // IOleInPlaceUIWindow, IOleInPlaceFrame: no tools, no menus.
    STDMETHODIMP GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject*, LPCOLESTR) override { return S_OK; }
    STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return S_OK; }
    STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
    STDMETHODIMP RemoveMenus(HMENU) override { return S_OK; }
    STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
    STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

    // IOleControlSite
    STDMETHODIMP OnControlInfoChanged() override { return S_OK; }
    STDMETHODIMP LockInPlaceActive(BOOL) override { return S_OK; }
    STDMETHODIMP GetExtendedControl(IDispatch** d) override {
        if (d != nullptr) *d = nullptr;
        return E_NOTIMPL;  // no extended control
    }
    STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
    STDMETHODIMP TranslateAccelerator(LPMSG, DWORD) override { return S_FALSE; }
    STDMETHODIMP OnFocus(BOOL) override { return S_OK; }
    STDMETHODIMP ShowPropertyFrame() override { return E_NOTIMPL; }

    // IDispatch: the ambient properties.
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override {
        if (result == nullptr) return E_POINTER;
        VariantInit(result);
        switch (id) {
        case DISPID_AMBIENT_USERMODE:
            V_VT(result) = VT_BOOL;
            V_BOOL(result) = userMode ? VARIANT_TRUE : VARIANT_FALSE;
            return S_OK;
        case DISPID_AMBIENT_BACKCOLOR:
            V_VT(result) = VT_I4;
            V_I4(result) = static_cast<LONG>(backColor);
            return S_OK;
        case DISPID_AMBIENT_FORECOLOR:
            V_VT(result) = VT_I4;
            V_I4(result) = static_cast<LONG>(foreColor);
            return S_OK;
        default:
            return DISP_E_MEMBERNOTFOUND;
        }
    }

    bool userMode = true;
    OLE_COLOR backColor = 0x80000000 | COLOR_BTNFACE;
    OLE_COLOR foreColor = 0x80000000 | COLOR_BTNTEXT;
    const RECT& rect() const { return m_rect; }
    void setRect(const RECT& r) { m_rect = r; }

private:
    HWND m_parent;
    RECT m_rect;
    std::vector<IID>& m_asked;  // the host's record, which outlives the site
};

// ---- KivControlHost

KivControlHost::KivControlHost(HWND parent, const RECT& rect) : m_parent(parent), m_rect(rect) {}

KivControlHost::~KivControlHost() { close(); }

HRESULT KivControlHost::create(const wchar_t* progId, const std::vector<BYTE>* saved) {
    CLSID clsid{};
    const HRESULT hr = CLSIDFromProgID(progId, &clsid);
    return FAILED(hr) ? hr : create(clsid, saved);
}

HRESULT KivControlHost::create(const CLSID& clsid, const std::vector<BYTE>* saved) {
    close();
    HRESULT hr = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject, m_object.putVoid());
    if (FAILED(hr)) return hr;
    m_asked.clear();
    m_site = new KivControlSite(m_parent, m_rect, m_asked);
    m_site->userMode = m_userMode;
    m_site->backColor = m_backColor;
    m_site->foreColor = m_foreColor;
    DWORD misc = 0;
    m_object->GetMiscStatus(DVASPECT_CONTENT, &misc);
    const bool siteFirst = (misc & OLEMISC_SETCLIENTSITEFIRST) != 0;
    if (siteFirst) m_object->SetClientSite(static_cast<IOleClientSite*>(m_site));
    // A new state, or the saved one.
    KivComPtr<IPersistStreamInit> persist;
    if (SUCCEEDED(m_object->QueryInterface(IID_IPersistStreamInit, persist.putVoid()))) {
        if (saved == nullptr) {
            persist->InitNew();
        } else {
            hr = persist->Load(KivStreamOfBytes(*saved).get());
            if (FAILED(hr)) return hr;
        }
    }
    if (!siteFirst) m_object->SetClientSite(static_cast<IOleClientSite*>(m_site));
    // The extent of the rectangle, in HIMETRIC at the screen's dpi.
    HDC screen = GetDC(nullptr);
    const int dpiX = GetDeviceCaps(screen, LOGPIXELSX), dpiY = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    SIZEL extent{MulDiv(m_rect.right - m_rect.left, 2540, dpiX), MulDiv(m_rect.bottom - m_rect.top, 2540, dpiY)};
    m_object->SetExtent(DVASPECT_CONTENT, &extent);
    m_object->QueryInterface(IID_IDispatch, m_dispatch.putVoid());
    return m_object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, static_cast<IOleClientSite*>(m_site), 0, m_parent, &m_rect);
}

HWND KivControlHost::window() const {
    KivComPtr<IOleInPlaceObject> inPlace;
    HWND hwnd = nullptr;
    if (m_object && SUCCEEDED(m_object->QueryInterface(IID_IOleInPlaceObject, inPlace.putVoid()))) inPlace->GetWindow(&hwnd);
    return hwnd;
}

void KivControlHost::move(const RECT& rect) {
    m_rect = rect;
    if (m_site != nullptr) m_site->setRect(rect);
    KivComPtr<IOleInPlaceObject> inPlace;
    if (m_object && SUCCEEDED(m_object->QueryInterface(IID_IOleInPlaceObject, inPlace.putVoid())))
        inPlace->SetObjectRects(&m_rect, &m_rect);
}

void KivControlHost::setUserMode(bool userMode) {
    m_userMode = userMode;
    if (m_site == nullptr) return;
    m_site->userMode = userMode;
    KivComPtr<IOleControl> control;
    if (m_object && SUCCEEDED(m_object->QueryInterface(IID_IOleControl, control.putVoid())))
        control->OnAmbientPropertyChange(DISPID_AMBIENT_USERMODE);
}

void KivControlHost::setAmbientColors(OLE_COLOR back, OLE_COLOR fore) {
    m_backColor = back;
    m_foreColor = fore;
    if (m_site == nullptr) return;
    m_site->backColor = back;
    m_site->foreColor = fore;
    KivComPtr<IOleControl> control;
    if (m_object && SUCCEEDED(m_object->QueryInterface(IID_IOleControl, control.putVoid())))
        control->OnAmbientPropertyChange(DISPID_UNKNOWN);
}

std::vector<BYTE> KivControlHost::save() { return m_object ? KivSaveToBytes(m_object.get()) : std::vector<BYTE>{}; }

void KivControlHost::close() {
    if (m_object) {
        KivComPtr<IOleInPlaceObject> inPlace;
        if (SUCCEEDED(m_object->QueryInterface(IID_IOleInPlaceObject, inPlace.putVoid()))) inPlace->InPlaceDeactivate();
        m_object->Close(OLECLOSE_NOSAVE);
        m_object->SetClientSite(nullptr);
    }
    m_dispatch.reset();
    m_object.reset();
    if (m_site != nullptr) m_site->Release();
    m_site = nullptr;
}

// ---- Saved state as bytes

std::vector<BYTE> KivSaveToBytes(IUnknown* control) {
    KivComPtr<IPersistStreamInit> persist;
    if (control == nullptr || FAILED(control->QueryInterface(IID_IPersistStreamInit, persist.putVoid()))) return {};
    KivComPtr<IStream> stream;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.put())) || FAILED(persist->Save(stream.get(), TRUE))) return {};
    STATSTG stat{};
    stream->Stat(&stat, STATFLAG_NONAME);
    std::vector<BYTE> bytes(static_cast<std::size_t>(stat.cbSize.QuadPart));
    const LARGE_INTEGER zero{};
    stream->Seek(zero, STREAM_SEEK_SET, nullptr);
    ULONG got = 0;
    stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &got);
    return bytes;
}

KivComPtr<IStream> KivStreamOfBytes(const std::vector<BYTE>& bytes) {
    KivComPtr<IStream> stream;
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream.put()))) return stream;
    ULONG written = 0;
    stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written);
    const LARGE_INTEGER zero{};
    stream->Seek(zero, STREAM_SEEK_SET, nullptr);
    return stream;
}

// ---- Calling members by name

HRESULT KivInvokeByName(IDispatch* d, const wchar_t* name, WORD flags, const std::vector<VARIANT>& args, VARIANT* result) {
    if (d == nullptr) return E_POINTER;
    DISPID id = 0;
    LPOLESTR n = const_cast<LPOLESTR>(name);
    const HRESULT hr = d->GetIDsOfNames(IID_NULL, &n, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(hr)) return hr;
    // DISPPARAMS holds the arguments last first; a property put names its one argument.
    std::vector<VARIANT> reversed(args.rbegin(), args.rend());
    DISPID putId = DISPID_PROPERTYPUT;
    const bool isPut = (flags & DISPATCH_PROPERTYPUT) != 0;
    DISPPARAMS params{reversed.empty() ? nullptr : reversed.data(), isPut ? &putId : nullptr,
                      static_cast<UINT>(reversed.size()), isPut ? 1u : 0u};
    KivVariant ignored;
    return d->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, result != nullptr ? result : &ignored.v, nullptr,
                     nullptr);
}

HRESULT KivCallByName(IDispatch* d, const wchar_t* name, WORD flags, std::vector<VARIANT> args, VARIANT* result) {
    const HRESULT hr = KivInvokeByName(d, name, flags, args, result);
    for (VARIANT& a : args) VariantClear(&a);
    return hr;
}

void KivPumpMessages(DWORD ms) {
    const DWORD until = GetTickCount() + ms;
    do {
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
        Sleep(5);
    } while (static_cast<LONG>(until - GetTickCount()) > 0);
}

namespace {
// A VARIANT set by one of the dispatch tables' result helpers (its type and value).
template <class T>
VARIANT variantOf(HRESULT (*set)(VARIANT*, T), T value) {
    VARIANT v;
    VariantInit(&v);
    set(&v, value);
    return v;
}
}  // namespace

VARIANT KivShort(short v) { return variantOf(KivReturnShort, v); }
VARIANT KivLong(long v) { return variantOf(KivReturnLong, v); }
VARIANT KivBool(bool v) { return variantOf(KivReturnBool, v); }
VARIANT KivDouble(double v) { return variantOf(KivReturnDouble, v); }

VARIANT KivText(const std::wstring& text) {
    VARIANT x;
    V_VT(&x) = VT_BSTR;
    V_BSTR(&x) = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return x;
}
