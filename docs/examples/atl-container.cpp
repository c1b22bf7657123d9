// The colour control hosted by ATL's control window, AtlAxWin, for compilers without ATL's headers
// (mingw-w64): the functions come from the system's atl.dll through LoadLibrary and GetProcAddress.
// AtlAxWinInit registers the window class; a child window of class "AtlAxWin" whose text is the
// ProgID creates, sites and activates the control; AtlAxGetControl gives it. Then the events are
// connected, Red selected, and with --choose the Down key makes a choice. Built with mingw-w64:
//   x86_64-w64-mingw32-g++ -municode -static -o atl-container.exe atl-container.cpp -lole32 -loleaut32 -luuid
#include <windows.h>
#include <ole2.h>
#include <olectl.h>
#include <ocidl.h>

#include <cstdio>
#include <cwchar>

using AtlAxWinInitFn = BOOL(WINAPI*)();
using AtlAxGetControlFn = HRESULT(WINAPI*)(HWND, IUnknown**);

static IDispatch* g_control = nullptr;

static HRESULT callByName(const wchar_t* name, VARIANT* args, UINT count, VARIANT* result) {
    DISPID id = 0;
    LPOLESTR names[1] = {const_cast<LPOLESTR>(name)};
    HRESULT hr = g_control->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(hr)) return hr;
    DISPPARAMS params = {args, nullptr, count, 0};
    return g_control->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &params, result, nullptr, nullptr);
}

// SelChange (1) and SelAndCloseUp (2), each with comboIdx and colorIdx.
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
        std::printf("%s(comboIdx %ld, colorIdx %ld)\n", id == 1 ? "SelChange" : "SelAndCloseUp", V_I4(&p->rgvarg[1]),
                    V_I4(&p->rgvarg[0]));
        if (id == 1) {
            VARIANT result;
            VariantInit(&result);
            callByName(L"GetSelColorIndex", nullptr, 0, &result);
            std::printf("GetSelColorIndex: %d\n", V_I2(&result));
        }
        std::fflush(stdout);
        return S_OK;
    }
    IID m_iid = IID_NULL;
};

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
    HWND frame = CreateWindowExW(0, L"STATIC", L"ATL container", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 260, 240,
                                 nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    HWND host = CreateWindowExW(0, L"AtlAxWin", L"KIVLORQCONTROLS.KivColorCtrl.1", WS_CHILD | WS_VISIBLE, 12, 12, 220, 21,
                                frame, nullptr, GetModuleHandleW(nullptr), nullptr);
    IUnknown* control = nullptr;
    if (host == nullptr || FAILED(axGetControl(host, &control))) {
        std::printf("the colour control is not registered\n");
        return 1;
    }
    static Events events;
    IProvideClassInfo2* info = nullptr;
    IConnectionPointContainer* points = nullptr;
    IConnectionPoint* point = nullptr;
    DWORD cookie = 0;
    if (SUCCEEDED(control->QueryInterface(IID_IProvideClassInfo2, reinterpret_cast<void**>(&info))) &&
        SUCCEEDED(info->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events.m_iid)) &&
        SUCCEEDED(control->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&points))) &&
        SUCCEEDED(points->FindConnectionPoint(events.m_iid, &point)))
        point->Advise(static_cast<IDispatch*>(&events), &cookie);
    control->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&g_control));
    VARIANT red;
    V_VT(&red) = VT_I2;
    V_I2(&red) = 1;
    callByName(L"SetSelColorIndex", &red, 1, nullptr);

    if (choose) {
        // The control's window is the host's child; its list is the control's child.
        HWND list = GetWindow(GetWindow(host, GW_CHILD), GW_CHILD);
        SetFocus(list);
        SendMessageW(list, WM_KEYDOWN, VK_DOWN, 0);
        SendMessageW(list, WM_KEYUP, VK_DOWN, 0xC0000000);
    } else {
        MSG msg;  // until the window is closed: a STATIC frame ends the loop when it is gone
        while (IsWindow(frame) && GetMessageW(&msg, nullptr, 0, 0) > 0) {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
    }
    if (point != nullptr) {
        point->Unadvise(cookie);
        point->Release();
    }
    if (points != nullptr) points->Release();
    if (info != nullptr) info->Release();
    g_control->Release();
    control->Release();
    if (IsWindow(frame)) DestroyWindow(frame);  // AtlAxWin closes and releases the control with its window
    OleUninitialize();
    return 0;
}
