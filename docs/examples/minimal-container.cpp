// A complete minimal Win32 container for the colour control, written against the Windows SDK only.
// It creates the control by its ProgID, sites it (IOleClientSite, IOleInPlaceSite and the ambient
// IDispatch, on one object), activates it in place in a window, connects its events, selects Red
// and prints what the events carry and what GetSelColorIndex answers. With --choose it makes a
// choice itself (the Down key on the closed list, Red to Yellow) and closes. Built with mingw-w64:
//   x86_64-w64-mingw32-g++ -municode -static -o minimal-container.exe minimal-container.cpp -lole32 -loleaut32 -luuid
#include <windows.h>
#include <ole2.h>
#include <olectl.h>
#include <ocidl.h>

#include <cstdio>
#include <cwchar>

static IOleObject* g_object = nullptr;  // the control
static IDispatch* g_control = nullptr;  // its dispatch interface
static HWND g_frame = nullptr;

// Calls a member by name; the result in *result when given.
static HRESULT callByName(IDispatch* d, const wchar_t* name, WORD flags, VARIANT* args, UINT count, VARIANT* result) {
    DISPID id = 0;
    LPOLESTR names[1] = {const_cast<LPOLESTR>(name)};
    HRESULT hr = d->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(hr)) return hr;
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS params = {args, flags == DISPATCH_PROPERTYPUT ? &put : nullptr, count, flags == DISPATCH_PROPERTYPUT ? 1u : 0u};
    return d->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, result, nullptr, nullptr);
}

static short selColorIndex() {
    VARIANT result;
    VariantInit(&result);
    callByName(g_control, L"GetSelColorIndex", DISPATCH_METHOD, nullptr, 0, &result);
    VariantChangeType(&result, &result, 0, VT_I2);
    return V_I2(&result);
}

// The events: a dispatch interface whose Invoke receives SelChange (1) and SelAndCloseUp (2).
class Events : public IDispatch {
public:
    STDMETHODIMP QueryInterface(REFIID riid, void** out) override {
        *out = riid == IID_IUnknown || riid == IID_IDispatch || riid == m_iid ? static_cast<IDispatch*>(this) : nullptr;
        return *out != nullptr ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }  // lives as long as the program
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT* n) override { *n = 0; return S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* p, VARIANT*, EXCEPINFO*, UINT*) override {
        if ((id != 1 && id != 2) || p->cArgs != 2) return S_OK;
        // Arguments arrive last first: rgvarg[1] is comboIdx, rgvarg[0] colorIdx.
        std::printf("%s(comboIdx %ld, colorIdx %ld)\n", id == 1 ? "SelChange" : "SelAndCloseUp", V_I4(&p->rgvarg[1]),
                    V_I4(&p->rgvarg[0]));
        if (id == 1) std::printf("GetSelColorIndex: %d\n", selColorIndex());
        std::fflush(stdout);
        return S_OK;
    }
    IID m_iid = IID_NULL;  // the control's event interface
};

// The site: what the control asks its container for.
class Site : public IOleClientSite, public IOleInPlaceSite, public IDispatch {
public:
    STDMETHODIMP QueryInterface(REFIID riid, void** out) override {
        if (riid == IID_IUnknown || riid == IID_IOleClientSite) *out = static_cast<IOleClientSite*>(this);
        else if (riid == IID_IOleWindow || riid == IID_IOleInPlaceSite) *out = static_cast<IOleInPlaceSite*>(this);
        else if (riid == IID_IDispatch) *out = static_cast<IDispatch*>(this);  // the ambient properties
        else *out = nullptr;
        return *out != nullptr ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }  // lives as long as the program
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    // IOleClientSite
    STDMETHODIMP SaveObject() override { return S_OK; }
    STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker** mk) override { *mk = nullptr; return E_NOTIMPL; }
    STDMETHODIMP GetContainer(IOleContainer** c) override { *c = nullptr; return E_NOINTERFACE; }
    STDMETHODIMP ShowObject() override { return S_OK; }
    STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
    STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }
    // IOleInPlaceSite: the control's window goes into g_frame at m_rect; no frame or document
    // window of our own (the controls take none; a host with menus and toolbars gives them here).
    STDMETHODIMP GetWindow(HWND* hwnd) override { *hwnd = g_frame; return S_OK; }
    STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** doc, LPRECT pos, LPRECT clip,
                                  LPOLEINPLACEFRAMEINFO info) override {
        *frame = nullptr;
        *doc = nullptr;
        *pos = *clip = m_rect;
        *info = OLEINPLACEFRAMEINFO{sizeof(OLEINPLACEFRAMEINFO), FALSE, g_frame, nullptr, 0};
        return S_OK;
    }
    // The notifications the controls send, which this container needs no answer to.
    STDMETHODIMP OnInPlaceActivate() override { return S_OK; }
    STDMETHODIMP OnUIActivate() override { return S_OK; }
    STDMETHODIMP OnUIDeactivate(BOOL) override { return S_OK; }
    STDMETHODIMP OnInPlaceDeactivate() override { return S_OK; }
    // What the controls never call: no scrolling, no undo, no context help, a fixed rectangle.
    STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
    STDMETHODIMP DiscardUndoState() override { return E_NOTIMPL; }
    STDMETHODIMP DeactivateAndUndo() override { return E_NOTIMPL; }
    STDMETHODIMP OnPosRectChange(LPCRECT) override { return E_NOTIMPL; }
    // IDispatch: the ambient properties the controls read.
    STDMETHODIMP GetTypeInfoCount(UINT* n) override { *n = 0; return S_OK; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override {
        if (result == nullptr) return E_POINTER;
        VariantInit(result);
        switch (id) {
        case DISPID_AMBIENT_USERMODE: V_VT(result) = VT_BOOL; V_BOOL(result) = VARIANT_TRUE; return S_OK;
        case DISPID_AMBIENT_BACKCOLOR: V_VT(result) = VT_I4; V_I4(result) = static_cast<LONG>(0x80000000 | COLOR_BTNFACE); return S_OK;
        case DISPID_AMBIENT_FORECOLOR: V_VT(result) = VT_I4; V_I4(result) = static_cast<LONG>(0x80000000 | COLOR_BTNTEXT); return S_OK;
        default: return DISP_E_MEMBERNOTFOUND;
        }
    }
    RECT m_rect = {12, 12, 232, 33};  // the control's rectangle in g_frame
};

static LRESULT CALLBACK frameProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
    if (msg == WM_CLOSE) g_object->Close(OLECLOSE_NOSAVE);  // the control's window goes before ours
    if (msg == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(hwnd, msg, w, l);
}

int wmain(int argc, wchar_t** argv) {
    const bool choose = argc > 1 && std::wcscmp(argv[1], L"--choose") == 0;
    if (FAILED(OleInitialize(nullptr))) return 1;  // a single-threaded apartment, as the controls need
    WNDCLASSW wc = {};
    wc.lpfnWndProc = frameProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    wc.lpszClassName = L"MinimalContainer";
    RegisterClassW(&wc);
    g_frame = CreateWindowExW(0, L"MinimalContainer", L"Minimal container", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100,
                              260, 240, nullptr, nullptr, wc.hInstance, nullptr);

    // 1. Create the control; give it its client site first (it asks for that), then a new state.
    static Site site;
    static Events events;
    CLSID clsid;
    if (FAILED(CLSIDFromProgID(L"KIVLORQCONTROLS.KivColorCtrl.1", &clsid)) ||
        FAILED(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject, reinterpret_cast<void**>(&g_object)))) {
        std::printf("the colour control is not registered\n");
        return 1;
    }
    g_object->SetClientSite(&site);
    IPersistStreamInit* persist = nullptr;
    if (SUCCEEDED(g_object->QueryInterface(IID_IPersistStreamInit, reinterpret_cast<void**>(&persist)))) {
        persist->InitNew();
        persist->Release();
    }
    // 2. Activate it in place: it creates its window, and its list, in g_frame.
    g_object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, &site, 0, g_frame, &site.m_rect);
    // 3. Connect its events: the default source interface names them.
    IProvideClassInfo2* info = nullptr;
    IConnectionPointContainer* points = nullptr;
    IConnectionPoint* point = nullptr;
    DWORD cookie = 0;
    if (SUCCEEDED(g_object->QueryInterface(IID_IProvideClassInfo2, reinterpret_cast<void**>(&info))) &&
        SUCCEEDED(info->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events.m_iid)) &&
        SUCCEEDED(g_object->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&points))) &&
        SUCCEEDED(points->FindConnectionPoint(events.m_iid, &point)))
        point->Advise(static_cast<IDispatch*>(&events), &cookie);
    // 4. Select Red (Tev index 1) and read it back.
    g_object->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&g_control));
    VARIANT red;
    V_VT(&red) = VT_I2;
    V_I2(&red) = 1;
    callByName(g_control, L"SetSelColorIndex", DISPATCH_METHOD, &red, 1, nullptr);
    std::printf("GetSelColorIndex: %d\n", selColorIndex());
    std::fflush(stdout);

    if (choose) {
        // The user's choice: the Down key on the closed list (the control's only child window).
        HWND controlWindow = nullptr;
        IOleInPlaceObject* inPlace = nullptr;
        if (SUCCEEDED(g_object->QueryInterface(IID_IOleInPlaceObject, reinterpret_cast<void**>(&inPlace)))) {
            inPlace->GetWindow(&controlWindow);
            inPlace->Release();
        }
        HWND list = GetWindow(controlWindow, GW_CHILD);
        SetFocus(list);
        SendMessageW(list, WM_KEYDOWN, VK_DOWN, 0);
        SendMessageW(list, WM_KEYUP, VK_DOWN, 0xC0000000);
        PostMessageW(g_frame, WM_CLOSE, 0, 0);
    }
    MSG msg;
    while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
        TranslateMessage(&msg);
        DispatchMessageW(&msg);
    }

    // 5. Closed with the window (WM_CLOSE); disconnect and release.
    if (point != nullptr) {
        point->Unadvise(cookie);
        point->Release();
    }
    if (points != nullptr) points->Release();
    if (info != nullptr) info->Release();
    g_control->Release();
    g_object->SetClientSite(nullptr);
    g_object->Release();
    OleUninitialize();
    return 0;
}
