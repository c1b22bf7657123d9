#include "ContainerHost.h"

#include "KivContainer.h"

#include <commctrl.h>

#include <cstdio>

namespace {
using AtlAxWinInitFn = BOOL(WINAPI*)();
using AtlAxGetControlFn = HRESULT(WINAPI*)(HWND, IUnknown**);
}  // namespace

HRESULT call(IDispatch* d, const wchar_t* name, WORD flags, std::vector<VARIANT> args, VARIANT* result) {
    return KivInvokeByName(d, name, flags, args, result);
}

VARIANT shortArg(short v) { return KivShort(v); }
VARIANT longArg(long v) { return KivLong(v); }
VARIANT boolArg(bool v) { return KivBool(v); }
VARIANT doubleArg(double v) { return KivDouble(v); }
VARIANT textArg(const wchar_t* text) { return KivText(text); }

long longResult(IDispatch* d, const wchar_t* name, std::vector<VARIANT> args) {
    KivVariant r;
    if (FAILED(call(d, name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, std::move(args), &r.v))) return -99999;
    VariantChangeType(&r.v, &r.v, 0, VT_I4);
    return V_I4(&r.v);
}

std::string textResult(IDispatch* d, const wchar_t* name, std::vector<VARIANT> args) {
    KivVariant r;
    if (FAILED(call(d, name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, std::move(args), &r.v))) return "<error>";
    if (V_VT(&r.v) != VT_BSTR) return "<not text>";
    return narrow(V_BSTR(&r.v) != nullptr ? V_BSTR(&r.v) : L"");
}

HRESULT put(IDispatch* d, const wchar_t* name, VARIANT value) {
    const HRESULT hr = call(d, name, DISPATCH_PROPERTYPUT, {value}, nullptr);
    VariantClear(&value);
    return hr;
}

std::vector<std::string> placeholderPage(HWND window) {
    struct Search {
        HWND page = nullptr;
    } search;
    EnumChildWindows(window, [](HWND child, LPARAM found) -> BOOL {
        if (windowText(child).rfind(L"TODO:", 0) != 0) return TRUE;
        reinterpret_cast<Search*>(found)->page = GetParent(child);
        return FALSE;
    }, reinterpret_cast<LPARAM>(&search));
    std::vector<std::string> windows;
    if (search.page == nullptr) return windows;
    for (HWND child = GetWindow(search.page, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        wchar_t cls[64] = {};
        GetClassNameW(child, cls, 64);
        windows.push_back(narrow(cls) + ": " + narrow(windowText(child)));
    }
    return windows;
}

std::vector<std::string> expectedPlaceholderPage(const std::string& control) {
    return {"Static: TODO: Place controls to manipulate properties of " + control + " on this dialog."};
}

void expectPlaceholderPageObject(IPropertyPage* page, HWND parent, const std::string& control) {
    PROPPAGEINFO info{};
    info.cb = sizeof info;
    ASSERT_EQ(page->GetPageInfo(&info), S_OK);
    EXPECT_EQ(narrow(info.pszTitle), "General");
    EXPECT_GT(info.size.cx, info.size.cy);  // 250 x 62 dialog units
    CoTaskMemFree(info.pszTitle);
    RECT r{0, 0, info.size.cx, info.size.cy};
    ASSERT_EQ(page->Activate(parent, &r, TRUE), S_OK);
    EXPECT_EQ(placeholderPage(parent), expectedPlaceholderPage(control));
    EXPECT_EQ(page->IsPageDirty(), S_FALSE);
    EXPECT_EQ(page->Apply(), S_OK);
    EXPECT_EQ(page->Deactivate(), S_OK);
}

PropertyFrameSeen showPropertyFrame(HWND owner, IUnknown* object, const CAUUID& pages, int button) {
    PropertyFrameSeen seen;
    {
        DialogAnswerer answer(L"#32770", nullptr, [&](HWND sheet) {
            HWND tabControl = FindWindowExW(sheet, nullptr, L"SysTabControl32", nullptr);
            seen.tabs = static_cast<int>(SendMessageW(tabControl, TCM_GETITEMCOUNT, 0, 0));
            wchar_t buffer[64] = {};
            TCITEMW item{};
            item.mask = TCIF_TEXT;
            item.pszText = buffer;
            item.cchTextMax = 64;
            SendMessageW(tabControl, TCM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
            seen.tab = buffer;
            seen.page = placeholderPage(sheet);
            // The button, pressed again while the frame stays open: under load Wine's frame can miss
            // a press that arrives while it is still settling.
            for (int attempt = 0; attempt < 10 && IsWindow(sheet); ++attempt) {
                if (attempt > 0) std::fprintf(stderr, "the property frame is still open: button %d again\n", button);
                PostMessageW(sheet, WM_COMMAND, button, 0);
                for (int wait = 0; wait < 50 && IsWindow(sheet); ++wait) Sleep(20);
            }
            seen.answered = !IsWindow(sheet);
        });
        seen.result = OleCreatePropertyFrame(owner, 0, 0, L"control", 1, &object, pages.cElems, pages.pElems,
                                             LOCALE_USER_DEFAULT, 0, nullptr);
    }  // the answer has finished here
    return seen;
}

// ---- Hosted

Hosted::Hosted(const wchar_t* progId, const IID& events, int childId, int width, int height) {
    atl = LoadLibraryW(L"atl.dll");
    auto init = KivProcAddress<AtlAxWinInitFn>(atl, "AtlAxWinInit");
    auto getControl = KivProcAddress<AtlAxGetControlFn>(atl, "AtlAxGetControl");
    if (init == nullptr || getControl == nullptr) return;
    static const BOOL initialised = init();  // once per process: a second call fails in Wine's atl
    if (!initialised) return;
    frame = CreateWindowExW(0, L"STATIC", L"KivLorqControls test container", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50,
                            width + 120, height + 220, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    host = CreateWindowExW(0, L"AtlAxWin", progId, WS_CHILD | WS_VISIBLE, 10, 10, width, height, frame, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
    pumpMessages(100);
    if (host == nullptr || FAILED(getControl(host, control.put()))) return;
    control->QueryInterface(IID_IDispatch, dispatch.putVoid());
    controlWindow = FindWindowExW(host, nullptr, L"KivLorqControlWindow", nullptr);
    find(controlWindow, childId);
    if (child == nullptr && childId != 0) {  // diagnostics for a failed hosting
        HWND first = GetWindow(host, GW_CHILD);
        wchar_t cls[64] = {};
        if (first != nullptr) GetClassNameW(first, cls, 64);
        std::printf("hosting: frame %p host %p control %p window %p first child %p class %ls\n", (void*)frame, (void*)host,
                    (void*)control.get(), (void*)controlWindow, (void*)first, cls);
    }
    EXPECT_TRUE(connection.connect(control.get(), events)) << "the control's events could not be connected";
}

Hosted::~Hosted() {
    connection.disconnect();
    dispatch.reset();
    control.reset();
    if (frame != nullptr) DestroyWindow(frame);
    pumpMessages(50);
}

// ---- EventConnection

bool EventConnection::connect(IUnknown* control, const IID& events) {
    disconnect();
    sink = new EventSink(events);
    KivComPtr<IConnectionPointContainer> cpc;
    if (SUCCEEDED(control->QueryInterface(IID_IConnectionPointContainer, cpc.putVoid())) &&
        SUCCEEDED(cpc->FindConnectionPoint(events, point.put())))
        point->Advise(static_cast<IDispatch*>(sink), &cookie);
    return cookie != 0;
}

void EventConnection::disconnect() {
    if (point) point->Unadvise(cookie);
    point.reset();
    cookie = 0;
    if (sink != nullptr) sink->Release();
    sink = nullptr;
}

// ---- ControlChild

void ControlChild::find(HWND controlWindow, int childId) {
    child = controlWindow != nullptr && childId != 0 ? GetDlgItem(controlWindow, childId) : nullptr;
    m_listBox = false;
    if (child != nullptr) {
        wchar_t cls[64] = {};
        GetClassNameW(child, cls, 64);
        m_listBox = _wcsicmp(cls, L"ListBox") == 0;
    }
}

int ControlChild::selection() const {
    return static_cast<int>(SendMessageW(child, m_listBox ? LB_GETCURSEL : CB_GETCURSEL, 0, 0));
}

int ControlChild::count() const { return static_cast<int>(SendMessageW(child, m_listBox ? LB_GETCOUNT : CB_GETCOUNT, 0, 0)); }

std::string ControlChild::text(int i) const {
    const LRESULT length = SendMessageW(child, m_listBox ? LB_GETTEXTLEN : CB_GETLBTEXTLEN, static_cast<WPARAM>(i), 0);
    if (length < 0) return "<none>";
    std::wstring t(static_cast<std::size_t>(length) + 1, L'\0');
    SendMessageW(child, m_listBox ? LB_GETTEXT : CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&t[0]));
    return narrow(t.c_str());
}

LRESULT ControlChild::itemData(int i) const {
    return SendMessageW(child, m_listBox ? LB_GETITEMDATA : CB_GETITEMDATA, static_cast<WPARAM>(i), 0);
}

void ControlChild::key(UINT vk) {
    SendMessageW(child, WM_KEYDOWN, vk, 0);
    SendMessageW(child, WM_KEYUP, vk, 0xC0000000);
    pumpMessages(30);
}

void ControlChild::mousePick(int index) {
    HWND list = child;
    if (!m_listBox) {
        SendMessageW(child, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
        SendMessageW(child, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
        pumpMessages(30);
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        GetComboBoxInfo(child, &info);
        list = info.hwndList;
    }
    // An item below the visible part (fewer show at higher scales) is scrolled into view first, as a
    // user would.
    RECT item{}, client{};
    SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    GetClientRect(list, &client);
    if (item.top < 0 || item.bottom > client.bottom) {
        SendMessageW(list, LB_SETTOPINDEX, static_cast<WPARAM>(index), 0);
        pumpMessages(30);
        SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    }
    const LPARAM point = MAKELPARAM(item.left + 5, (item.top + item.bottom) / 2);
    SendMessageW(list, WM_MOUSEMOVE, 0, point);
    SendMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, point);
    SendMessageW(list, WM_LBUTTONUP, 0, point);
    pumpMessages(50);
}

// ---- Canvas

Canvas::Canvas(int w, int h) : width(w), height(h) {
    HDC screen = GetDC(nullptr);
    dc = CreateCompatibleDC(screen);
    BITMAPINFO bi{};
    bi.bmiHeader.biSize = sizeof bi.bmiHeader;
    bi.bmiHeader.biWidth = w;
    bi.bmiHeader.biHeight = -h;
    bi.bmiHeader.biPlanes = 1;
    bi.bmiHeader.biBitCount = 32;
    bitmap = CreateDIBSection(screen, &bi, DIB_RGB_COLORS, reinterpret_cast<void**>(&bits), nullptr, 0);
    ReleaseDC(nullptr, screen);
    old = SelectObject(dc, bitmap);
}

Canvas::~Canvas() {
    SelectObject(dc, old);
    DeleteObject(bitmap);
    DeleteDC(dc);
}

COLORREF Canvas::pixel(int x, int y) const {
    const DWORD p = bits[y * width + x];  // 0x00RRGGBB in a 32-bit DIB
    return RGB((p >> 16) & 0xFF, (p >> 8) & 0xFF, p & 0xFF);
}

void Canvas::fill(COLORREF color) {
    const DWORD p = (static_cast<DWORD>(GetRValue(color)) << 16) | (static_cast<DWORD>(GetGValue(color)) << 8) | GetBValue(color);
    GdiFlush();
    for (int i = 0; i < width * height; ++i) bits[i] = p;
}

void drawExpectedDesignFace(Canvas& canvas, const wchar_t* text) {
    RECT r{0, 0, canvas.width, canvas.height};
    HBRUSH white = CreateSolidBrush(RGB(255, 255, 255));
    FillRect(canvas.dc, &r, white);
    DeleteObject(white);
    SetTextAlign(canvas.dc, TA_CENTER | TA_BASELINE);
    SIZE size{};
    const int length = static_cast<int>(wcslen(text));
    GetTextExtentPoint32W(canvas.dc, text, length, &size);
    TextOutW(canvas.dc, canvas.width / 2, canvas.height / 2 + size.cy / 2, text, length);
    GdiFlush();
}

void drawExpectedEllipse(Canvas& canvas) {
    RECT r{0, 0, canvas.width, canvas.height};
    FillRect(canvas.dc, &r, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    Ellipse(canvas.dc, 0, 0, canvas.width, canvas.height);
}

void drawExpectedDesignModeFace(Canvas& canvas, const wchar_t* designText) {
    if (designText != nullptr) drawExpectedDesignFace(canvas, designText);
    else drawExpectedEllipse(canvas);
}

void drawExpectedUserModeFace(Canvas& canvas, const wchar_t* designText, COLORREF back) {
    if (designText == nullptr) {
        drawExpectedEllipse(canvas);
        return;
    }
    RECT all{0, 0, canvas.width, canvas.height};
    HBRUSH brush = CreateSolidBrush(back);
    FillRect(canvas.dc, &all, brush);
    DeleteObject(brush);
    GdiFlush();
}

HRESULT drawThroughViewObject(IUnknown* control, Canvas& canvas) {
    KivComPtr<IViewObject> view;
    const HRESULT hr = control->QueryInterface(IID_IViewObject, view.putVoid());
    if (FAILED(hr)) return hr;
    const RECTL bounds{0, 0, canvas.width, canvas.height};
    return view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc, &bounds, nullptr, nullptr, 0);
}

int differingPixels(const Canvas& a, const Canvas& b) {
    GdiFlush();
    int n = 0;
    for (int y = 0; y < a.height && y < b.height; ++y)
        for (int x = 0; x < a.width && x < b.width; ++x)
            if (a.pixel(x, y) != b.pixel(x, y)) ++n;
    return n;
}

int viewDiffersFrom(IUnknown* control, const Canvas& expected) {
    Canvas canvas(expected.width, expected.height);
    canvas.fill(RGB(1, 2, 3));
    if (FAILED(drawThroughViewObject(control, canvas))) return -1;
    return differingPixels(canvas, expected);
}

// ---- Persistence

std::vector<BYTE> saveStream(IUnknown* control) { return KivSaveToBytes(control); }

HRESULT loadStream(IUnknown* control, const std::vector<BYTE>& bytes) {
    KivComPtr<IPersistStreamInit> persist;
    control->QueryInterface(IID_IPersistStreamInit, persist.putVoid());
    if (!persist) return E_NOINTERFACE;
    return persist->Load(KivStreamOfBytes(bytes).get());
}

bool enabledOf(IDispatch* d) {
    KivVariant r;
    call(d, L"Enabled", DISPATCH_PROPERTYGET, {}, &r.v);
    return V_VT(&r.v) == VT_BOOL && V_BOOL(&r.v) != VARIANT_FALSE;
}

KivComPtr<IDispatch> newControl(const CLSID& clsid) {
    KivComPtr<IDispatch> d;
    CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, d.putVoid());
    return d;
}

bool moduleLoaded() { return GetModuleHandleW(L"KivLorqControls8x64.ocx") != nullptr; }

HRESULT canUnloadNow() {
    HMODULE module = GetModuleHandleW(L"KivLorqControls8x64.ocx");
    if (module == nullptr) return S_OK;  // not even loaded
    auto canUnload = KivProcAddress<HRESULT(WINAPI*)()>(module, "DllCanUnloadNow");
    return canUnload != nullptr ? canUnload() : E_FAIL;
}

int screenLogPixels(int index) {
    HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, index);
    ReleaseDC(nullptr, screen);
    return dpi;
}

LRESULT comboFieldReadBack(HWND parent, int field) {
    HWND probe = CreateWindowExW(0, L"COMBOBOX", L"", 0x50200E13 & ~WS_VISIBLE, 0, 0, 200, 21, parent, nullptr,
                                 GetModuleHandleW(nullptr), nullptr);
    SendMessageW(probe, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    SendMessageW(probe, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), field);
    const LRESULT readBack = SendMessageW(probe, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0);
    DestroyWindow(probe);
    return readBack;
}

// ---- Pixels

std::vector<std::uint8_t> grab(HWND window, int& w, int& h) {
    RECT r;
    GetClientRect(window, &r);
    w = r.right;
    h = r.bottom;
    Canvas canvas(w, h);
    HDC dc = GetDC(window);
    BitBlt(canvas.dc, 0, 0, w, h, dc, 0, 0, SRCCOPY);
    ReleaseDC(window, dc);
    std::vector<std::uint8_t> rgb;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
            const COLORREF c = canvas.pixel(x, y);
            rgb.insert(rgb.end(), {GetRValue(c), GetGValue(c), GetBValue(c)});
        }
    return rgb;
}

COLORREF at(const std::vector<std::uint8_t>& rgb, int w, int x, int y) {
    const std::size_t i = (static_cast<std::size_t>(y) * w + x) * 3;
    return RGB(rgb[i], rgb[i + 1], rgb[i + 2]);
}

STDMETHODIMP NotifySink::QueryInterface(REFIID riid, void** out) {
    if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IPropertyNotifySink)) {
        *out = static_cast<IPropertyNotifySink*>(this);
        return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
}
