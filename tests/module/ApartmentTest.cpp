// A host whose user-interface thread is a multithreaded apartment. The controls are registered
// apartment-threaded, so COM creates each one in a single-threaded apartment of its own and hands
// the host a proxy: creating it, asking it for IOleObject and IDispatch and calling its members all
// succeed. What fails is activating it in place in the host's
// window: the control's window, made on its own apartment's thread as a child of the host's
// window, sends that window a message while the host's thread waits in the call without pumping
// messages, so the call never returns. (A process can only end such a thread; this program ends.)
#include <gtest/gtest.h>
#include <windows.h>
#include <ole2.h>

#include "ContainerHost.h"
#include "KivContainer.h"

namespace {

const wchar_t* const kColour = L"KIVLORQCONTROLS.KivColorCtrl.1";

// What a thread of the given apartment kind gets, step by step; `activate` stays E_PENDING while
// in-place activation has not returned.
struct Steps {
    DWORD apartment = COINIT_APARTMENTTHREADED;
    HRESULT init = E_PENDING, create = E_PENDING, oleObject = E_PENDING, dispatch = E_PENDING, proxy = E_PENDING,
            invoke = E_PENDING, activate = E_PENDING;
    long selColorIndex = 0;
    HANDLE activating = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    HANDLE activated = CreateEventW(nullptr, TRUE, FALSE, nullptr);
};

DWORD WINAPI hostThread(void* parameter) {
    Steps& s = *static_cast<Steps*>(parameter);
    s.init = CoInitializeEx(nullptr, s.apartment);
    CLSID clsid{};
    CLSIDFromProgID(kColour, &clsid);
    {
        KivComPtr<IUnknown> control;
        KivComPtr<IOleObject> object;
        KivComPtr<IDispatch> d;
        KivComPtr<IClientSecurity> security;
        s.create = CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, control.putVoid());
        if (SUCCEEDED(s.create)) {
            s.oleObject = control->QueryInterface(IID_IOleObject, object.putVoid());
            s.dispatch = control->QueryInterface(IID_IDispatch, d.putVoid());
            // Only COM's proxies answer for IClientSecurity; the control itself does not.
            s.proxy = control->QueryInterface(IID_IClientSecurity, security.putVoid());
            if (d) s.selColorIndex = longResult(d.get(), L"GetSelColorIndex");
            s.invoke = d ? call(d.get(), L"SetSelColorIndex", DISPATCH_METHOD, {shortArg(256)}, nullptr) : E_FAIL;
        }
    }
    // The whole site, as a container's dialog gives it (client site first, a new state, in place).
    HWND frame = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr, nullptr,
                                 GetModuleHandleW(nullptr), nullptr);
    auto* host = new KivControlHost(frame, RECT{10, 10, 210, 31});
    SetEvent(s.activating);
    s.activate = host->create(kColour);
    SetEvent(s.activated);
    delete host;
    DestroyWindow(frame);
    CoUninitialize();
    return 0;
}

// Runs the steps on a new thread of that apartment kind; waits up to `patience` ms for activation.
Steps& run(Steps& s, DWORD apartment, DWORD patience) {
    s.apartment = apartment;
    HANDLE thread = CreateThread(nullptr, 0, hostThread, &s, 0, nullptr);
    EXPECT_EQ(WaitForSingleObject(s.activating, 30000), WAIT_OBJECT_0);
    WaitForSingleObject(s.activated, patience);
    if (WaitForSingleObject(thread, 0) == WAIT_TIMEOUT && s.activate != E_PENDING) WaitForSingleObject(thread, 10000);
    CloseHandle(thread);
    return s;
}

}  // namespace

TEST(Apartment, InAMultithreadedApartmentTheControlIsAProxyThatWorksUntilItIsActivatedInPlace) {
    // The apartment the controls are made for: the control itself, activated at once.
    static Steps sta;
    run(sta, COINIT_APARTMENTTHREADED, 10000);
    EXPECT_EQ(sta.create, S_OK);
    EXPECT_EQ(sta.proxy, E_NOINTERFACE);
    EXPECT_EQ(sta.activate, S_OK);

    static Steps mta;  // its thread stays blocked until the process ends
    run(mta, COINIT_MULTITHREADED, 5000);
    EXPECT_EQ(mta.init, S_OK);
    EXPECT_EQ(mta.create, S_OK);
    EXPECT_EQ(mta.oleObject, S_OK);
    EXPECT_EQ(mta.dispatch, S_OK);
    EXPECT_EQ(mta.proxy, S_OK);  // a proxy: the control lives in an apartment of its own
    EXPECT_EQ(mta.selColorIndex, -1);
    EXPECT_EQ(mta.invoke, S_OK);
    EXPECT_EQ(mta.activate, E_PENDING) << "in-place activation returned in a multithreaded apartment";
}
