// The colour control hosted by ATL's control window, AtlAxWin, for compilers without ATL's headers
// (mingw-w64): the functions come from the system's atl.dll through LoadLibrary and GetProcAddress.
// AtlAxWinInit registers the window class; a child window of class "AtlAxWin" whose text is the
// ProgID creates, sites and activates the control; AtlAxGetControl gives it. The members are called
// here by their DISPIDs (docs/reference.md); the events connect as in minimal-container.cpp. With
// --choose the Down key on the closed list makes a choice (Red to Yellow). Built with mingw-w64:
//   x86_64-w64-mingw32-g++ -municode -static -o atl-container.exe atl-container.cpp -lole32 -loleaut32 -luuid
#include <windows.h>
#include <ole2.h>

#include <cstdio>
#include <cwchar>

using AtlAxWinInitFn = BOOL(WINAPI*)();
using AtlAxGetControlFn = HRESULT(WINAPI*)(HWND, IUnknown**);

const DISPID kGetSelColorIndex = 5, kSetSelColorIndex = 6;  // _DKivColor

// The frame window: closing it ends the message loop.
LRESULT CALLBACK frameProc(HWND hwnd, UINT msg, WPARAM w, LPARAM l) {
    if (msg == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(hwnd, msg, w, l);
}

int wmain(int argc, wchar_t** argv) {
    const bool choose = argc > 1 && std::wcscmp(argv[1], L"--choose") == 0;
    if (FAILED(OleInitialize(nullptr))) return 1;
    HMODULE atl = LoadLibraryW(L"atl.dll");
    auto axWinInit = reinterpret_cast<AtlAxWinInitFn>(reinterpret_cast<void (*)()>(GetProcAddress(atl, "AtlAxWinInit")));
    auto axGetControl = reinterpret_cast<AtlAxGetControlFn>(reinterpret_cast<void (*)()>(GetProcAddress(atl, "AtlAxGetControl")));
    if (axWinInit == nullptr || axGetControl == nullptr || !axWinInit()) {  // once per process
        std::printf("atl.dll has no AtlAxWin\n");
        return 1;
    }
    WNDCLASSW wc = {};
    wc.lpfnWndProc = frameProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    wc.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    wc.lpszClassName = L"AtlContainer";
    RegisterClassW(&wc);
    HWND frame = CreateWindowExW(0, L"AtlContainer", L"ATL container", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 260, 240,
                                 nullptr, nullptr, wc.hInstance, nullptr);
    HWND host = CreateWindowExW(0, L"AtlAxWin", L"KIVLORQCONTROLS.KivColorCtrl.1", WS_CHILD | WS_VISIBLE, 12, 12, 220, 21,
                                frame, nullptr, GetModuleHandleW(nullptr), nullptr);
    IUnknown* control = nullptr;
    IDispatch* colour = nullptr;
    if (host == nullptr || FAILED(axGetControl(host, &control)) ||
        FAILED(control->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&colour)))) {
        std::printf("the colour control is not registered\n");
        return 1;
    }
    // SetSelColorIndex(1): Red. Arguments go in DISPPARAMS last first; here there is one.
    VARIANT red;
    V_VT(&red) = VT_I2;
    V_I2(&red) = 1;
    DISPPARAMS one = {&red, nullptr, 1, 0}, none = {nullptr, nullptr, 0, 0};
    colour->Invoke(kSetSelColorIndex, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &one, nullptr, nullptr, nullptr);
    VARIANT index;
    VariantInit(&index);
    colour->Invoke(kGetSelColorIndex, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, &index, nullptr, nullptr);
    std::printf("GetSelColorIndex: %d\n", V_I2(&index));

    if (choose) {
        // The control's window is the host's child; its list is the control's child.
        HWND list = GetWindow(GetWindow(host, GW_CHILD), GW_CHILD);
        SetFocus(list);
        SendMessageW(list, WM_KEYDOWN, VK_DOWN, 0);
        SendMessageW(list, WM_KEYUP, VK_DOWN, 0xC0000000);
        colour->Invoke(kGetSelColorIndex, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none, &index, nullptr, nullptr);
        std::printf("after the choice, GetSelColorIndex: %d\n", V_I2(&index));
    } else {
        MSG msg;  // until the window is closed: its WM_DESTROY posts WM_QUIT
        while (GetMessageW(&msg, nullptr, 0, 0) > 0) {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
    }
    colour->Release();
    control->Release();
    if (IsWindow(frame)) DestroyWindow(frame);  // AtlAxWin closes and releases the control with its window
    OleUninitialize();
    return 0;
}
