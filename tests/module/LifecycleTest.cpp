// Control lifecycles under Wine: each of the six controls created, sited, activated in place, used
// (properties, a selection in its child, a paint through the window and through IViewObject::Draw),
// deactivated, closed and released, many times over; the process's GDI objects, its windows and the
// bytes in use in its heaps are the same before and after, and then the module unloads.
//
// Counting under Wine, where GetGuiResources answers 0: GDI objects as gdiObjects() counts them
// (ContainerSupport); windows are counted by enumerating the process's
// top-level, child and message-only windows; memory is the sum of the busy blocks of every heap of
// the process (HeapWalk), which unlike the working set does not move with fragmentation or caching
// of free pages. A test of the test leaks a pen, a window and a block on purpose and sees each.
//
// The number of cycles per control comes from KIV_LIFECYCLES (default 100); tools/lifecycle.sh runs
// 10 000 and prints the figures.
#include <gtest/gtest.h>
#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "ContainerHost.h"
#include "ControlCases.h"
#include "KivCom.h"
#include "KivContainer.h"

namespace {

// ---- Counting

BOOL CALLBACK countWindow(HWND window, LPARAM count) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process != GetCurrentProcessId()) return TRUE;
    ++*reinterpret_cast<long*>(count);
    EnumChildWindows(window, [](HWND, LPARAM c) -> BOOL {
        ++*reinterpret_cast<long*>(c);
        return TRUE;
    }, count);
    return TRUE;
}

long userObjects() {
    const DWORD reported = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    if (reported != 0) return static_cast<long>(reported);
    long n = 0;
    EnumWindows(countWindow, reinterpret_cast<LPARAM>(&n));
    for (HWND w = nullptr; (w = FindWindowExW(HWND_MESSAGE, w, nullptr, nullptr)) != nullptr;) countWindow(w, reinterpret_cast<LPARAM>(&n));
    return n;
}

long long heapBytesInUse() {
    std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr) + 16);
    heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
    long long bytes = 0;
    for (HANDLE heap : heaps) {
        if (!HeapLock(heap)) continue;
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heap, &entry))
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) bytes += entry.cbData;
        HeapUnlock(heap);
    }
    return bytes;
}

struct Counts {
    long gdi, user;
    long long heap;
};
Counts countNow() {
    pumpMessages(20);
    return Counts{gdiObjects(), userObjects(), heapBytesInUse()};
}

// Growth of the heaps allowed over a whole run: what the system's own caches (COM, the type library
// cache, fonts) settle at is not the module's. A leak of even 16 bytes a cycle exceeds it over
// 10 000 cycles; the test of the test leaks far less in all than a short run's tolerance would hide.
constexpr long long kHeapTolerance = 96 * 1024;

int cyclesPerControl() {
    const char* text = std::getenv("KIV_LIFECYCLES");
    const int n = text != nullptr ? std::atoi(text) : 0;
    return n > 0 ? n : 100;
}

// ---- One lifecycle

void use(const ControlCase& c, KivControlHost& host) {
    IDispatch* d = host.dispatch();
    if (c.hasEnabled) {
        put(d, L"Enabled", boolArg(false));
        put(d, L"Enabled", boolArg(true));
    }
    const std::string name = c.name;
    if (name == "Colour") {
        call(d, L"SetSelColorIndex", DISPATCH_METHOD, {shortArg(3)}, nullptr);
    } else if (name == "Lineweight") {
        call(d, L"SelectItemByLineWeight", DISPATCH_METHOD, {longArg(35)}, nullptr);
    } else if (name == "Linetype" || name == "LinetypeList") {
        KivVariant lineName, definition;
        lineName.v = textArg(L"CYCLE");
        definition.v = textArg(L"A,2,-1,0,-1");
        call(d, L"DefineLinetype", DISPATCH_METHOD, {lineName.v, definition.v}, nullptr);
        call(d, L"SelectItem", DISPATCH_METHOD, {lineName.v}, nullptr);
    } else if (name == "Hatch") {
        put(d, L"ZoomFactor", doubleArg(0.5));
    }
    // A selection in the child, as a user's click makes it, and a paint of everything on screen.
    if (c.childId != 0) {
        HWND child = GetDlgItem(host.window(), c.childId);
        wchar_t cls[16] = {};
        GetClassNameW(child, cls, 16);
        const bool list = _wcsicmp(cls, L"ListBox") == 0;
        SendMessageW(child, list ? LB_SETCURSEL : CB_SETCURSEL, 1, 0);
        SendMessageW(host.window(), WM_COMMAND, MAKEWPARAM(c.childId, list ? LBN_SELCHANGE : CBN_SELCHANGE),
                     reinterpret_cast<LPARAM>(child));
    }
    RedrawWindow(host.window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    KivComPtr<IViewObject> view;
    if (SUCCEEDED(host.control()->QueryInterface(IID_IViewObject, view.putVoid()))) {
        Canvas canvas(220, 21);
        RECTL bounds{0, 0, 220, 21};
        view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc, &bounds, nullptr, nullptr, 0);
    }
}

// Create, site, activate (KivControlHost::create), use, then deactivate, close and release.
bool oneLifecycle(const ControlCase& c, HWND dialog) {
    KivControlHost host(dialog, RECT{10, 10, 230, 31});
    if (FAILED(host.create(guid(c.clsid))) || host.window() == nullptr) return false;
    use(c, host);
    host.close();
    return true;
}

// `cycles` lifecycles with `extra` run in each (a deliberate leak in the test of the test); the
// counts after a warm-up and at the end.
struct Measured {
    Counts before, after;
    int failed = 0;
};
Measured measure(const ControlCase& c, int cycles, const std::function<void()>& extra = {}) {
    HWND dialog = CreateWindowExW(0, L"STATIC", L"lifecycles", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0,
                                  400, 200, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    Measured m;
    // The warm-up: the module, the system's classes and caches loaded once.
    for (int i = 0; i < 5; ++i) oneLifecycle(c, dialog);
    m.before = countNow();
    for (int i = 0; i < cycles; ++i) {
        if (!oneLifecycle(c, dialog)) ++m.failed;
        if (extra) extra();
        if (i % 50 == 49) pumpMessages(0);
    }
    m.after = countNow();
    DestroyWindow(dialog);
    return m;
}

void report(const char* what, int cycles, const Measured& m, DWORD ms) {
    std::printf("%-13s %6d cycles in %6lu ms: GDI %ld -> %ld, USER %ld -> %ld, heap bytes in use %lld -> %lld (%+lld)\n",
                what, cycles, static_cast<unsigned long>(ms), m.before.gdi, m.after.gdi, m.before.user, m.after.user,
                m.before.heap, m.after.heap, m.after.heap - m.before.heap);
    std::fflush(stdout);
}

class Lifecycles : public ComTest, public ::testing::WithParamInterface<ControlCase> {};

// The module is unloaded by COM once it answers that it can be.
void freeUnusedLibraries() {
    // Wine frees a library on the second call after it became unused, once the delay has passed.
    for (int i = 0; i < 3 && moduleLoaded(); ++i) {
        CoFreeUnusedLibrariesEx(0, 0);
        Sleep(10);
    }
}

}  // namespace

TEST_P(Lifecycles, ManyLeaveNoGdiObjectWindowOrMemoryBehindAndTheModuleUnloads) {
    const ControlCase& c = GetParam();
    const int cycles = cyclesPerControl();
    const DWORD start = GetTickCount();
    const Measured m = measure(c, cycles);
    report(c.name, cycles, m, GetTickCount() - start);
    EXPECT_EQ(m.failed, 0);
    EXPECT_EQ(m.after.gdi, m.before.gdi);
    EXPECT_EQ(m.after.user, m.before.user);
    EXPECT_LE(m.after.heap - m.before.heap, kHeapTolerance);

    ASSERT_TRUE(moduleLoaded());
    EXPECT_EQ(canUnloadNow(), S_OK);
    freeUnusedLibraries();
    EXPECT_FALSE(moduleLoaded());
}

INSTANTIATE_TEST_SUITE_P(EveryControl, Lifecycles, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<ControlCase>& info) { return std::string(info.param.name); });

// The test of the test: the counting sees one pen, one window or 64 bytes left behind per cycle.
using LifecycleCounting = ComTest;

TEST_F(LifecycleCounting, SeesALeakedPenAWindowAndABlockInEachCycle) {
    const ControlCase& colour = kCases[0];
    const int cycles = 20;
    std::vector<HPEN> pens;
    std::vector<HWND> windows;
    std::vector<void*> blocks;
    const Measured m = measure(colour, cycles, [&] {
        pens.push_back(CreatePen(PS_SOLID, 1, RGB(1, 2, 3)));
        windows.push_back(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr,
                                          GetModuleHandleW(nullptr), nullptr));
        blocks.push_back(HeapAlloc(GetProcessHeap(), 0, 64 * 1024 / cycles * 3));
    });
    report("leaking", cycles, m, 0);
    EXPECT_EQ(m.after.gdi - m.before.gdi, cycles);
    EXPECT_EQ(m.after.user - m.before.user, cycles);
    EXPECT_GT(m.after.heap - m.before.heap, kHeapTolerance);
    // And with them gone, the counts drop by as many.
    const Counts leaking = countNow();
    for (HPEN p : pens) DeleteObject(p);
    for (HWND w : windows) DestroyWindow(w);
    for (void* b : blocks) HeapFree(GetProcessHeap(), 0, b);
    const Counts freed = countNow();
    EXPECT_EQ(leaking.gdi - freed.gdi, cycles);
    EXPECT_EQ(leaking.user - freed.user, cycles);
    EXPECT_GT(leaking.heap - freed.heap, kHeapTolerance);
}

// Loading and unloading the module itself, again and again, leaves nothing behind either.
TEST_F(LifecycleCounting, TheModuleLoadedAndUnloadedAgainAndAgainLeavesNothingBehind) {
    HWND dialog = CreateWindowExW(0, L"STATIC", L"loads", WS_OVERLAPPEDWINDOW, 0, 0, 400, 200, nullptr, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    Counts before{};
    for (int i = 0; i < 23; ++i) {
        if (i == 3) before = countNow();  // after a warm-up
        ASSERT_TRUE(oneLifecycle(kCases[i % 6], dialog));
        freeUnusedLibraries();
        ASSERT_FALSE(moduleLoaded());
    }
    const Counts after = countNow();
    std::printf("loads: GDI %ld -> %ld, USER %ld -> %ld, heap %lld -> %lld\n", before.gdi, after.gdi, before.user,
                after.user, before.heap, after.heap);
    EXPECT_EQ(after.gdi, before.gdi);
    EXPECT_EQ(after.user, before.user);
    EXPECT_LE(after.heap - before.heap, kHeapTolerance);
    DestroyWindow(dialog);
}
