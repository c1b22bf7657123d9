// The module: DllMain, the class factories in the table's order, the four exports and
// registration exactly as MFC's registration functions write it. Win32 side.
#include <olectl.h>

#include <string>
#include <vector>

#include "KivCom.h"
#include "KivGuids.h"
#include "KivModule.h"
#include "KivOleControl.h"
#include "KivRegistration.h"

namespace {

// One static class factory per class. Its references hold the server lock, so a container that
// keeps a factory keeps the module loaded.
class KivClassFactory final : public IClassFactory {
public:
    explicit KivClassFactory(const KivFactoryEntry& entry) : m_entry(entry) {}
    STDMETHODIMP QueryInterface(REFIID riid, void** out) override {
        static const KivInterfaceEntry table[] = {{&IID_IClassFactory, &kivCast<IClassFactory, KivClassFactory>},
                                                  {nullptr, nullptr}};
        return KivQueryInterface(this, table, riid, out);
    }
    STDMETHODIMP_(ULONG) AddRef() override {
        kivmodule::lock(true);
        return 2;
    }
    STDMETHODIMP_(ULONG) Release() override {
        kivmodule::lock(false);
        return 1;
    }
    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID riid, void** out) override {
        if (out == nullptr) return E_POINTER;
        *out = nullptr;
        if (outer != nullptr) return CLASS_E_NOAGGREGATION;
        return m_entry.create(riid, out);
    }
    STDMETHODIMP LockServer(BOOL lock) override {
        kivmodule::lock(lock != FALSE);
        return S_OK;
    }

private:
    const KivFactoryEntry& m_entry;
};

bool setValue(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
    HKEY handle = nullptr;
    if (RegCreateKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &handle, nullptr) != ERROR_SUCCESS)
        return false;
    const LONG result = RegSetValueExW(handle, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                                       static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(handle);
    return result == ERROR_SUCCESS;
}

bool createKey(const std::wstring& key) {
    HKEY handle = nullptr;
    if (RegCreateKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &handle, nullptr) != ERROR_SUCCESS)
        return false;
    RegCloseKey(handle);
    return true;
}

bool deleteTree(const std::wstring& key) {
    const LONG result = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
    return result == ERROR_SUCCESS || result == ERROR_FILE_NOT_FOUND;
}

std::wstring modulePath() {
    wchar_t path[MAX_PATH];
    const DWORD n = GetModuleFileNameW(kivmodule::instance(), path, MAX_PATH);
    return n > 0 && n < MAX_PATH ? std::wstring(path, n) : std::wstring();
}

// AfxOleRegisterControlClass / AfxOleRegisterPropertyPageClass: the class's entries, in order. Memory
// that runs out while the list is made is a failure of the class's registration, never an exception.
bool registerEntry(const KivFactoryEntry& e, const std::wstring& path) {
    return SUCCEEDED(KivNoThrow([&]() -> HRESULT {
        for (const KivRegistryEntry& r : KivClassRegistration(e, path)) {
            const bool ok = r.hasValue ? setValue(r.key, r.name.empty() ? nullptr : r.name.c_str(), r.value) : createKey(r.key);
            if (!ok) return E_FAIL;
        }
        return S_OK;
    }));
}

// AfxOleUnregisterClass: the class id's key, and the ProgID's for a control.
bool unregisterEntry(const KivFactoryEntry& e) {
    bool ok = deleteTree(L"CLSID\\" + KivGuidText(*e.clsid));
    if (e.isControl) ok = deleteTree(e.progId) && ok;
    return ok;
}

HRESULT unregisterTypeLib() {
    KivComPtr<ITypeLib> library;
    HRESULT hr = LoadRegTypeLib(LIBID_KIVLORQCONTROLSLib, 1, 0, 0, library.put());
    if (FAILED(hr)) hr = LoadRegTypeLib(LIBID_KIVLORQCONTROLSLib, 1, 0, MAKELCID(0x409, SORT_DEFAULT), library.put());
    if (FAILED(hr)) return hr;
    TLIBATTR* attr = nullptr;
    hr = library->GetLibAttr(&attr);
    if (FAILED(hr)) return hr;
    hr = UnRegisterTypeLib(attr->guid, attr->wMajorVerNum, attr->wMinorVerNum, attr->lcid, attr->syskind);
    library->ReleaseTLibAttr(attr);
    return hr;
}

}  // namespace

const KivFactoryEntry* KivFindFactory(const CLSID& clsid) {
    for (const KivFactoryEntry& e : KivFactories())
        if (IsEqualCLSID(*e.clsid, clsid)) return &e;
    return nullptr;
}

#if defined(__GLIBCXX__)
// GCC's C++ runtime, linked into the module, sets aside a block at load for exceptions thrown when
// memory is out, and keeps it for the process's life; it offers this function to give it back.
namespace __gnu_cxx {
void __freeres() noexcept;
}
#endif

namespace {
// What the C++ runtime linked into the module holds for its own use, given back when the module is
// unloaded: a host that loads and frees the module again and again must not lose that much memory
// each time. (The MSVC runtime needs nothing of the kind.)
void KivReleaseRuntimeReserves() {
#if defined(__GLIBCXX__)
    __gnu_cxx::__freeres();
#endif
}
}  // namespace

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    if (reason == DLL_PROCESS_ATTACH) {
        kivmodule::setInstance(instance);
        DisableThreadLibraryCalls(instance);
    } else if (reason == DLL_PROCESS_DETACH && reserved == nullptr) {
        // FreeLibrary (not process exit): the window class must not outlive its procedure.
        KivUnregisterControlWindowClass();
        KivReleaseRuntimeReserves();
    }
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID riid, LPVOID* out) {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    const KivFactoryEntry* entry = KivFindFactory(clsid);
    if (entry == nullptr) return CLASS_E_CLASSNOTAVAILABLE;
    // One static factory per entry of the table, in its order, living as long as the module.
    static std::vector<KivClassFactory> factories(KivFactories().begin(), KivFactories().end());
    return factories[static_cast<std::size_t>(entry - KivFactories().data())].QueryInterface(riid, out);
}

STDAPI DllCanUnloadNow() { return kivmodule::canUnload() ? S_OK : S_FALSE; }

STDAPI DllRegisterServer() {
    const std::wstring path = modulePath();
    // 1. The type library from the module's own file.
    KivComPtr<ITypeLib> library;
    if (path.empty() || FAILED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.put())) ||
        FAILED(RegisterTypeLib(library.get(), const_cast<wchar_t*>(path.c_str()), nullptr)))
        return SELFREG_E_TYPELIB;
    // 2. Every factory.
    for (const KivFactoryEntry& e : KivFactories())
        if (!registerEntry(e, path)) return SELFREG_E_CLASS;
    return S_OK;
}

STDAPI DllUnregisterServer() {
    // 1. The type library (AfxOleUnregisterTypeLib with version 1.0, locale 0: like MFC, find the
    //    registered library and remove it whatever locale it was registered under), 2. every factory.
    if (FAILED(unregisterTypeLib())) return SELFREG_E_TYPELIB;
    bool ok = true;
    for (const KivFactoryEntry& e : KivFactories()) ok = unregisterEntry(e) && ok;
    return ok ? S_OK : SELFREG_E_CLASS;
}
