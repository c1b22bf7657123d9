// The demo container: a window hosting the colour control through ATL's AtlAxWin, showing the last
// event it received. Usage: kivdemo [--screenshot FILE.png] [--seconds N]
//   --screenshot: after showing the control (closed, then dropped) save the window and its dropped
//                 list as one PNG and exit.
//   --seconds N:  close after N seconds (default: stay until the window is closed).
#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

#include <cstdio>
#include <string>
#include <vector>

#include "KivCom.h"
#include "PngWriter.h"

namespace {

const IID kColorEvents = {0xE2A8D3CB, 0xCEDE, 0x42DA, {0x88, 0x83, 0x15, 0x54, 0xCD, 0x80, 0x30, 0xDD}};
HWND g_status = nullptr;

// Shows each event in the status line.
class StatusSink final : public IDispatch {
public:
    STDMETHODIMP QueryInterface(REFIID riid, void** out) override {
        if (IsEqualIID(riid, IID_IUnknown) || IsEqualIID(riid, IID_IDispatch) || IsEqualIID(riid, kColorEvents)) {
            *out = static_cast<IDispatch*>(this);
            return S_OK;
        }
        *out = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }   // lives on main's stack
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT* n) override {
        *n = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* p, VARIANT*, EXCEPINFO*, UINT*) override {
        if (p == nullptr || p->cArgs != 2) return S_OK;
        wchar_t text[128];
        swprintf(text, 128, L"%ls(comboIdx %ld, colorIdx %ld)", id == 1 ? L"SelChange" : L"SelAndCloseUp",
                 static_cast<long>(V_I4(&p->rgvarg[1])), static_cast<long>(V_I4(&p->rgvarg[0])));
        SetWindowTextW(g_status, text);
        return S_OK;
    }
};

void pump(DWORD ms) {
    const DWORD until = GetTickCount() + ms;
    do {
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
        Sleep(10);
    } while (static_cast<LONG>(until - GetTickCount()) > 0);
}

LRESULT CALLBACK frameProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
    if (msg == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(hwnd, msg, w, l);
}

// Copies a window's client area into `rgb` at (x, y) of a canvas `width` wide.
void copyWindow(HWND window, std::vector<std::uint8_t>& rgb, int width, int height, int x0, int y0) {
    RECT r;
    GetClientRect(window, &r);
    HDC dc = GetDC(window);
    for (int y = 0; y < r.bottom && y0 + y < height; ++y)
        for (int x = 0; x < r.right && x0 + x < width; ++x) {
            const COLORREF c = GetPixel(dc, x, y);
            const std::size_t i = (static_cast<std::size_t>(y0 + y) * width + (x0 + x)) * 3;
            rgb[i] = GetRValue(c);
            rgb[i + 1] = GetGValue(c);
            rgb[i + 2] = GetBValue(c);
        }
    ReleaseDC(window, dc);
}

VARIANT shortArg(short v) {
    VARIANT x;
    V_VT(&x) = VT_I2;
    V_I2(&x) = v;
    return x;
}

void callMethod(IDispatch* d, const wchar_t* name, VARIANT arg) {
    DISPID id = 0;
    LPOLESTR n = const_cast<LPOLESTR>(name);
    if (FAILED(d->GetIDsOfNames(IID_NULL, &n, 1, LOCALE_USER_DEFAULT, &id))) return;
    DISPPARAMS params{&arg, nullptr, 1, 0};
    d->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    std::wstring screenshot;
    int seconds = 0;
    for (int i = 1; i < argc; ++i) {
        if (std::wstring(argv[i]) == L"--screenshot" && i + 1 < argc) screenshot = argv[++i];
        else if (std::wstring(argv[i]) == L"--seconds" && i + 1 < argc) seconds = _wtoi(argv[++i]);
    }
    CoInitialize(nullptr);
    HMODULE atl = LoadLibraryW(L"atl.dll");
    auto init = KivProcAddress<BOOL(WINAPI*)()>(atl, "AtlAxWinInit");
    auto getControl = KivProcAddress<HRESULT(WINAPI*)(HWND, IUnknown**)>(atl, "AtlAxGetControl");
    if (init == nullptr || getControl == nullptr || !init()) {
        std::fprintf(stderr, "kivdemo: ATL hosting is not available\n");
        return 1;
    }
    WNDCLASSW wc{};
    wc.lpfnWndProc = frameProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    wc.lpszClassName = L"KivDemoFrame";
    RegisterClassW(&wc);
    HWND frame = CreateWindowExW(0, L"KivDemoFrame", L"KivLorqControls - colour control", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                 40, 40, 300, 240, nullptr, nullptr, wc.hInstance, nullptr);
    HFONT font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    HWND label = CreateWindowExW(0, L"STATIC", L"Colour:", WS_CHILD | WS_VISIBLE, 12, 16, 60, 16, frame, nullptr, wc.hInstance, nullptr);
    SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    HWND host = CreateWindowExW(0, L"AtlAxWin", L"KIVLORQCONTROLS.KivColorCtrl.1", WS_CHILD | WS_VISIBLE, 70, 12, 200, 21,
                                frame, nullptr, wc.hInstance, nullptr);
    g_status = CreateWindowExW(0, L"STATIC", L"Pick a colour.", WS_CHILD | WS_VISIBLE, 12, 180, 270, 16, frame, nullptr,
                               wc.hInstance, nullptr);
    SendMessageW(g_status, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    KivComPtr<IUnknown> control;
    if (host == nullptr || FAILED(getControl(host, control.put()))) {
        std::fprintf(stderr, "kivdemo: the colour control could not be created (is the module registered?)\n");
        return 1;
    }
    KivComPtr<IDispatch> dispatch;
    control->QueryInterface(IID_IDispatch, dispatch.putVoid());
    callMethod(dispatch.get(), L"AddColorIndex", shortArg(42));
    callMethod(dispatch.get(), L"AddColorIndex", shortArg(150));
    callMethod(dispatch.get(), L"SetSelColorIndex", shortArg(1));
    StatusSink sink;
    KivComPtr<IConnectionPointContainer> cpc;
    KivComPtr<IConnectionPoint> point;
    DWORD cookie = 0;
    if (SUCCEEDED(control->QueryInterface(IID_IConnectionPointContainer, cpc.putVoid())) &&
        SUCCEEDED(cpc->FindConnectionPoint(kColorEvents, point.put())))
        point->Advise(&sink, &cookie);

    HWND window = FindWindowExW(host, nullptr, L"KivLorqControlWindow", nullptr);
    HWND combo = window != nullptr ? GetDlgItem(window, 100) : nullptr;
    int rc = 0;
    if (!screenshot.empty()) {
        pump(500);
        SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
        pump(500);
        COMBOBOXINFO info{};
        info.cbSize = sizeof info;
        GetComboBoxInfo(combo, &info);
        RECT frameClient, list;
        GetClientRect(frame, &frameClient);
        GetWindowRect(info.hwndList, &list);
        POINT origin{0, 0};
        ClientToScreen(frame, &origin);
        const int width = frameClient.right, height = frameClient.bottom;
        std::vector<std::uint8_t> rgb(static_cast<std::size_t>(width) * height * 3, 0);
        copyWindow(frame, rgb, width, height, 0, 0);
        copyWindow(combo, rgb, width, height, 70, 12);
        RECT listClient;
        GetClientRect(info.hwndList, &listClient);
        POINT listOrigin{0, 0};
        ClientToScreen(info.hwndList, &listOrigin);
        copyWindow(info.hwndList, rgb, width, height, listOrigin.x - origin.x, listOrigin.y - origin.y);
        std::string path;
        for (wchar_t c : screenshot) path.push_back(static_cast<char>(c));
        rc = KivWritePng(path, width, height, rgb) ? 0 : 1;
        SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0);
        DestroyWindow(frame);
    } else {
        if (seconds > 0) SetTimer(frame, 1, static_cast<UINT>(seconds) * 1000, [](HWND h, UINT, UINT_PTR, DWORD) { DestroyWindow(h); });
        MSG msg;
        while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
    }
    if (point) point->Unadvise(cookie);
    point.reset();
    cpc.reset();
    dispatch.reset();
    control.reset();
    CoUninitialize();
    return rc;
}
