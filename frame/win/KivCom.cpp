// The frame's COM helpers and module state. Win32 side.
#include "KivCom.h"

#include <cwchar>

namespace {
HINSTANCE g_instance = nullptr;
std::atomic<long> g_objects{0};
std::atomic<long> g_locks{0};
}  // namespace

namespace kivmodule {
HINSTANCE instance() { return g_instance != nullptr ? g_instance : GetModuleHandleW(nullptr); }
void setInstance(HINSTANCE instance) { g_instance = instance; }
void objectCreated() { ++g_objects; }
void objectDestroyed() { --g_objects; }
void lock(bool lock) {
    if (lock) ++g_locks;
    else --g_locks;
}
bool canUnload() { return g_objects.load() == 0 && g_locks.load() == 0; }
}  // namespace kivmodule

HRESULT KivQueryInterface(void* object, const KivInterfaceEntry* table, REFIID riid, void** out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    if (IsEqualIID(riid, IID_IUnknown)) {
        *out = table[0].cast(object);
    } else {
        for (const KivInterfaceEntry* e = table; e->iid != nullptr; ++e) {
            if (IsEqualIID(riid, *e->iid)) {
                *out = e->cast(object);
                break;
            }
        }
    }
    if (*out == nullptr) return E_NOINTERFACE;
    static_cast<IUnknown*>(*out)->AddRef();
    return S_OK;
}

LPOLESTR KivCoTaskString(const wchar_t* text) {
    const std::size_t n = std::wcslen(text) + 1;
    auto* copy = static_cast<LPOLESTR>(CoTaskMemAlloc(n * sizeof(wchar_t)));
    if (copy != nullptr) std::wmemcpy(copy, text, n);
    return copy;
}
