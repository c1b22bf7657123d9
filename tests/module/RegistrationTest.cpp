// Registration under Wine: DllRegisterServer writes exactly MFC's entries for every control and the
// six pages plus the type library; DllUnregisterServer removes all of them and nothing else; the
// error codes; DllGetClassObject and DllCanUnloadNow. The test ends with the module registered, for
// the script and container tests that follow it.
#include <gtest/gtest.h>
#include <windows.h>
#include <olectl.h>

#include <map>
#include <string>
#include <vector>

#include "KivCom.h"
#include "ModulePath.h"
#include "RegistrySnapshot.h"

namespace {

std::string narrow(const std::wstring& w) {
    std::string s;
    for (wchar_t c : w) s.push_back(c < 128 ? static_cast<char>(c) : '?');
    return s;
}

struct Module {
    Module() {
        CoInitialize(nullptr);
        handle = LoadLibraryW(kivModulePath().c_str());
        if (handle != nullptr) {
            reg = KivProcAddress<HRESULT(WINAPI*)()>(handle, "DllRegisterServer");
            unreg = KivProcAddress<HRESULT(WINAPI*)()>(handle, "DllUnregisterServer");
            canUnload = KivProcAddress<HRESULT(WINAPI*)()>(handle, "DllCanUnloadNow");
            getClassObject = KivProcAddress<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>(handle, "DllGetClassObject");
        }
    }
    ~Module() {
        if (handle != nullptr) FreeLibrary(handle);
        CoUninitialize();
    }
    HMODULE handle = nullptr;
    HRESULT(WINAPI* reg)() = nullptr;
    HRESULT(WINAPI* unreg)() = nullptr;
    HRESULT(WINAPI* canUnload)() = nullptr;
    HRESULT(WINAPI* getClassObject)(REFCLSID, REFIID, void**) = nullptr;
};

// The controls the module registers, with their registry values.
struct ControlEntry {
    const wchar_t* clsid;
    const wchar_t* progId;
    const wchar_t* typeName;
    int bitmap;
    const wchar_t* miscStatus;  // decimal
};
const ControlEntry kControls[] = {
    {L"{134FFBAD-0ECF-4346-BA9D-1EDC507A8A56}", L"KIVLORQCONTROLS.KivColorCtrl.1", L"KivColorControl", 1, L"135569"},
    {L"{FB47E4A7-11D0-4FFE-9EC1-EEF7C8047D13}", L"KIVLORQCONTROLS.KivLineweightCtrl.1", L"KivLineweightControl", 4,
     L"135569"},  // 0x00021191
    {L"{2EEDA6B2-2037-4824-8629-9EAA7758E9BF}", L"KIVLORQCONTROLS.KivLinetypeCtrl.1", L"KivLinetypeControl", 3,
     L"131473"},  // 0x00020191
    {L"{DABAFA9E-2B6F-40B0-95BB-373AB4B2FC18}", L"KIVLORQCONTROLS.KivLinetypeListCtrl.1", L"KivLinetypeListControl", 6,
     L"131473"},
    {L"{D15E93F0-B2C2-4728-8484-4E561229776F}", L"KIVLORQCONTROLS.KivHatchCtrl.1", L"KivHatchControl", 5, L"131473"},
    {L"{A7D6D7BA-DF9F-4E65-84F6-1239BE58B84A}", L"KIVLORQCONTROLS.KivLayerCtrl.1", L"KivLayerControl", 2, L"131473"},
};

std::map<std::wstring, std::wstring> controlEntries(const ControlEntry& c, const std::wstring& path) {
    const std::wstring key = std::wstring(L"CLSID\\") + c.clsid;
    const std::wstring progId = c.progId;
    return {
        {progId + L"\\", L""},
        {progId + L"\\[]", c.typeName},
        {progId + L"\\CLSID\\", L""},
        {progId + L"\\CLSID\\[]", c.clsid},
        {key + L"\\", L""},
        {key + L"\\[]", c.typeName},
        {key + L"\\ProgID\\", L""},
        {key + L"\\ProgID\\[]", progId},
        {key + L"\\InprocServer32\\", L""},
        {key + L"\\InprocServer32\\[]", path},
        {key + L"\\InprocServer32\\[ThreadingModel]", L"Apartment"},
        {key + L"\\ToolboxBitmap32\\", L""},
        {key + L"\\ToolboxBitmap32\\[]", path + L", " + std::to_wstring(c.bitmap)},
        {key + L"\\MiscStatus\\", L""},
        {key + L"\\MiscStatus\\[]", L"0"},
        {key + L"\\MiscStatus\\1\\", L""},
        {key + L"\\MiscStatus\\1\\[]", c.miscStatus},
        {key + L"\\Control\\", L""},
        {key + L"\\TypeLib\\", L""},
        {key + L"\\TypeLib\\[]", L"{64000C4D-B3B0-460E-85BC-05C90B5ADC21}"},
        {key + L"\\Version\\", L""},
        {key + L"\\Version\\[]", L"1.0"},
    };
}

}  // namespace

TEST(Registration, ExactEntriesAndNothingLeftBehind) {
    Module m;
    ASSERT_NE(m.handle, nullptr);
    ASSERT_NE(m.reg, nullptr);
    m.unreg();  // start from an unregistered module
    const RegistrySnapshot before = snapshotClassesRoot();
    ASSERT_EQ(m.reg(), S_OK);
    const RegistrySnapshot after = snapshotClassesRoot();

    RegistrySnapshot added = addedEntries(before, after);
    for (const auto& [k, v] : before) EXPECT_EQ(after.count(k), 1u) << narrow(k) << " disappeared";

    const std::wstring path = kivModulePath();
    // Each control, as AfxOleRegisterControlClass writes it.
    for (const ControlEntry& c : kControls) {
        SCOPED_TRACE(narrow(c.progId));
        for (const auto& [k, v] : controlEntries(c, path)) {
            const auto it = added.find(k);
            ASSERT_NE(it, added.end()) << narrow(k) << " missing";
            EXPECT_EQ(narrow(it->second), narrow(v)) << narrow(k);
            added.erase(it);
        }
    }
    // The six pages, as AfxOleRegisterPropertyPageClass writes them: no ProgID.
    const std::pair<const wchar_t*, const wchar_t*> pages[] = {
        {L"{13C03DB5-8843-4B08-BCA1-F4032586C767}", L"KivColor Property Page"},
        {L"{632E700B-7FB5-4682-B2F2-BF1D5111058D}", L"KivHatch Property Page"},
        {L"{6DA7E9FD-46EE-4123-8CBB-9ADCACFB1ED4}", L"KivLayer Property Page"},
        {L"{FC9C7841-BFED-489D-9DB9-49551B27B6EC}", L"KivLinetype Property Page"},
        {L"{6646D52E-EC7D-403B-874A-3AE343EE9A1C}", L"KivLineweight Property Page"},
        {L"{4ED48E07-66E0-493E-A53B-1B8D8C6B80A3}", L"KivLTypeList Property Page"},
    };
    for (const auto& [clsid, name] : pages) {
        const std::wstring key = std::wstring(L"CLSID\\") + clsid;
        const std::map<std::wstring, std::wstring> expected = {
            {key + L"\\", L""}, {key + L"\\[]", name}, {key + L"\\InprocServer32\\", L""},
            {key + L"\\InprocServer32\\[]", path}, {key + L"\\InprocServer32\\[ThreadingModel]", L"Apartment"}};
        for (const auto& [k, v] : expected) {
            const auto it = added.find(k);
            ASSERT_NE(it, added.end()) << narrow(k) << " missing";
            EXPECT_EQ(narrow(it->second), narrow(v)) << narrow(k);
            added.erase(it);
        }
    }
    // Everything else is the type library's registration (RegisterTypeLib: the library and its
    // interfaces, in the 64-bit and 32-bit registry views).
    for (const auto& [k, v] : added) {
        // Registry names are case-insensitive (Wine's classes root spells it "Typelib"); the 32-bit
        // view (Wow6432Node) mirrors the same entries.
        const wchar_t* p = k.c_str();
        if (_wcsnicmp(p, L"Wow6432Node\\", 12) == 0) p += 12;
        const bool typelib = _wcsnicmp(p, L"TypeLib\\{64000C4D-B3B0-460E-85BC-05C90B5ADC21}", 46) == 0 ||
                             _wcsnicmp(p, L"Interface\\", 10) == 0;
        EXPECT_TRUE(typelib) << "unexpected entry " << narrow(k);
    }
    bool libraryRegistered = false;
    for (const auto& [k, v] : added)
        libraryRegistered = libraryRegistered || (_wcsicmp(k.c_str(), L"TypeLib\\{64000C4D-B3B0-460E-85BC-05C90B5ADC21}\\1.0\\[]") == 0 &&
                                                  v == L"KivLorqControls ActiveX Control module");
    EXPECT_TRUE(libraryRegistered);

    ASSERT_EQ(m.unreg(), S_OK);
    EXPECT_EQ(snapshotDifferences(before, snapshotClassesRoot()), std::vector<std::string>{}) << "left behind or removed";

    EXPECT_EQ(m.unreg(), static_cast<HRESULT>(SELFREG_E_TYPELIB));  // the library is no longer registered
    ASSERT_EQ(m.reg(), S_OK);  // leave it registered for the next tests
    ASSERT_EQ(m.reg(), S_OK);  // registering twice is harmless
}

TEST(Registration, ClassObjectsAndUnloading) {
    Module m;
    ASSERT_NE(m.getClassObject, nullptr);
    EXPECT_EQ(m.canUnload(), S_OK);
    KivComPtr<IClassFactory> factory;
    const CLSID color = {0x134FFBAD, 0x0ECF, 0x4346, {0xBA, 0x9D, 0x1E, 0xDC, 0x50, 0x7A, 0x8A, 0x56}};
    ASSERT_EQ(m.getClassObject(color, IID_IClassFactory, factory.putVoid()), S_OK);
    EXPECT_EQ(m.canUnload(), S_FALSE);  // a factory reference is alive
    KivComPtr<IUnknown> control;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, control.putVoid()), S_OK);
    factory.reset();
    EXPECT_EQ(m.canUnload(), S_FALSE);  // the control is alive
    KivComPtr<IDispatch> dispatch;
    const IID dispatchIid = {0x5F9D0F49, 0x2079, 0x46BE, {0x92, 0x20, 0xC5, 0x1E, 0x2A, 0x02, 0x1D, 0x11}};
    EXPECT_EQ(control->QueryInterface(dispatchIid, dispatch.putVoid()), S_OK);  // its own dispinterface IID
    dispatch.reset();
    control.reset();
    EXPECT_EQ(m.canUnload(), S_OK);
    // Locks count too.
    ASSERT_EQ(m.getClassObject(color, IID_IClassFactory, factory.putVoid()), S_OK);
    factory->LockServer(TRUE);
    IClassFactory* raw = factory.detach();
    raw->Release();
    EXPECT_EQ(m.canUnload(), S_FALSE);
    raw->LockServer(FALSE);
    EXPECT_EQ(m.canUnload(), S_OK);
    // Unknown classes and aggregation.
    const CLSID unknown = {0x1, 0x2, 0x3, {4, 5, 6, 7, 8, 9, 10, 11}};
    EXPECT_EQ(m.getClassObject(unknown, IID_IClassFactory, factory.putVoid()), CLASS_E_CLASSNOTAVAILABLE);
    ASSERT_EQ(m.getClassObject(color, IID_IClassFactory, factory.putVoid()), S_OK);
    KivComPtr<IUnknown> aggregated;
    EXPECT_EQ(factory->CreateInstance(reinterpret_cast<IUnknown*>(factory.get()), IID_IUnknown, aggregated.putVoid()),
              CLASS_E_NOAGGREGATION);
    // Every one of the twelve classes has its factory, and each creates its object.
    const wchar_t* classes[] = {
        L"{134FFBAD-0ECF-4346-BA9D-1EDC507A8A56}", L"{13C03DB5-8843-4B08-BCA1-F4032586C767}",
        L"{D15E93F0-B2C2-4728-8484-4E561229776F}", L"{632E700B-7FB5-4682-B2F2-BF1D5111058D}",
        L"{A7D6D7BA-DF9F-4E65-84F6-1239BE58B84A}", L"{6DA7E9FD-46EE-4123-8CBB-9ADCACFB1ED4}",
        L"{2EEDA6B2-2037-4824-8629-9EAA7758E9BF}", L"{DABAFA9E-2B6F-40B0-95BB-373AB4B2FC18}",
        L"{FC9C7841-BFED-489D-9DB9-49551B27B6EC}", L"{FB47E4A7-11D0-4FFE-9EC1-EEF7C8047D13}",
        L"{6646D52E-EC7D-403B-874A-3AE343EE9A1C}", L"{4ED48E07-66E0-493E-A53B-1B8D8C6B80A3}"};
    for (const wchar_t* text : classes) {
        CLSID clsid{};
        CLSIDFromString(text, &clsid);
        KivComPtr<IClassFactory> each;
        ASSERT_EQ(m.getClassObject(clsid, IID_IClassFactory, each.putVoid()), S_OK) << narrow(text);
        KivComPtr<IUnknown> object;
        EXPECT_EQ(each->CreateInstance(nullptr, IID_IUnknown, object.putVoid()), S_OK) << narrow(text);
    }
    factory.reset();
    EXPECT_EQ(m.canUnload(), S_OK);
}
