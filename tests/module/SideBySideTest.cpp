// Activation without registration under Wine. This program carries an application manifest that
// depends on the module's assembly; it runs in a folder holding the package's module and assembly
// manifest, in a prefix where nothing of the module is registered. Each control is created by its
// ProgID and by its class id, sited in our container and in ATL's AtlAxWin, drawn, heard from, and
// asked for its type information. The same program linked without its manifest finds no class, no
// ProgID and no library (tests/module/sxs_test.sh runs both).
#include <gtest/gtest.h>
#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "ContainerHost.h"
#include "ControlCases.h"
#include "KivCom.h"
#include "KivContainer.h"

namespace {

const GUID kLibrary = {0x64000C4D, 0xB3B0, 0x460E, {0x85, 0xBC, 0x05, 0xC9, 0x0B, 0x5A, 0xDC, 0x21}};

// What the tests expect of each control beyond its ControlCase: its dispatch interface and the misc
// status of its content aspect.
struct Expected {
    const char* name;
    const wchar_t* dispatch;
    DWORD miscStatus;
};
const Expected kExpected[] = {
    {"Colour", L"{5F9D0F49-2079-46BE-9220-C51E2A021D11}", 0x00021191},
    {"Lineweight", L"{9D8E3FCB-ADCF-4C49-9BAC-98A07C49738F}", 0x00021191},
    {"Linetype", L"{09603A20-95BF-4876-B23A-8494BA8F4A02}", 0x00020191},
    {"LinetypeList", L"{0C0BD408-CA81-404D-A161-A2952FAD32D4}", 0x00020191},
    {"Hatch", L"{69B2F882-0370-4645-8A35-517AA8E22A92}", 0x00020191},
    {"Layer", L"{DDDF607E-5288-418F-B18F-66E713B1A18A}", 0x00020191},
};
const Expected& expectedFor(const ControlCase& c) {
    return *std::find_if(std::begin(kExpected), std::end(kExpected),
                         [&](const Expected& e) { return std::string(e.name) == c.name; });
}

bool carriesManifest() { return FindResourceW(nullptr, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24)) != nullptr; }

std::wstring programFolder() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder = path;
    return folder.substr(0, folder.find_last_of(L'\\'));
}

bool keyExists(const std::wstring& key) {
    HKEY handle = nullptr;
    if (RegOpenKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, KEY_READ, &handle) != ERROR_SUCCESS) return false;
    RegCloseKey(handle);
    return true;
}

// A visible top-level window standing for a host's dialog.
struct Frame {
    Frame()
        : hwnd(CreateWindowExW(0, L"STATIC", L"side by side", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0, 520,
                               360, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr)) {}
    ~Frame() { DestroyWindow(hwnd); }
    HWND hwnd;
};

class SideBySide : public ComTest, public ::testing::WithParamInterface<ControlCase> {
protected:
    const ControlCase& c = GetParam();
    const CLSID clsid = guid(c.clsid);
};
using WithoutManifest = SideBySide;

}  // namespace

TEST(SideBySideProgram, CarriesItsManifestAndNothingOfTheModuleIsRegistered) {
    EXPECT_TRUE(carriesManifest());
    for (const ControlCase& c : kCases) {
        EXPECT_FALSE(keyExists(std::wstring(L"CLSID\\") + c.clsid)) << c.name;
        EXPECT_FALSE(keyExists(c.progId)) << c.name;
    }
    EXPECT_FALSE(keyExists(L"TypeLib\\{64000C4D-B3B0-460E-85BC-05C90B5ADC21}"));
}

TEST_P(SideBySide, CreatedByProgIdAndByClassIdFromTheProgramsFolder) {
    // The ProgID maps to an alias the activation context generates for the class (the platform's
    // rule for assemblies), which creates that class: the control reports its own class id.
    CLSID fromProgId{};
    ASSERT_EQ(CLSIDFromProgID(c.progId, &fromProgId), S_OK);
    for (const CLSID& id : {clsid, fromProgId}) {
        KivComPtr<IPersist> control;
        ASSERT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IPersist, control.putVoid()), S_OK);
        CLSID own{};
        EXPECT_EQ(control->GetClassID(&own), S_OK);
        EXPECT_TRUE(IsEqualCLSID(own, clsid));
    }
    wchar_t loaded[MAX_PATH] = {};
    GetModuleFileNameW(GetModuleHandleW(L"KivLorqControls8x64.ocx"), loaded, MAX_PATH);
    EXPECT_EQ(_wcsicmp(loaded, (programFolder() + L"\\KivLorqControls8x64.ocx").c_str()), 0) << narrow(loaded);
    // The misc status the assembly gives its content aspect, as registration would.
    DWORD status = 0;
    EXPECT_EQ(OleRegGetMiscStatus(clsid, DVASPECT_CONTENT, &status), S_OK);
    EXPECT_EQ(status, expectedFor(c).miscStatus);
}

TEST_P(SideBySide, SitedInOurContainerAndDrawn) {
    Frame frame;
    for (int byClassId = 0; byClassId < 2; ++byClassId) {
        SCOPED_TRACE(byClassId ? "by class id" : "by ProgID");
        KivControlHost host(frame.hwnd, RECT{10, 10, 170, 50});
        host.setUserMode(false);
        ASSERT_EQ(byClassId ? host.create(clsid) : host.create(c.progId), S_OK);
        pumpMessages(30);
        EXPECT_NE(host.window(), nullptr);
        Canvas canvas(160, 40), expected(160, 40);
        drawExpectedDesignModeFace(expected, c.designText);
        ASSERT_EQ(drawThroughViewObject(host.control(), canvas), S_OK);
        EXPECT_EQ(differingPixels(canvas, expected), 0);
        host.close();
    }
}

TEST_P(SideBySide, SitedInAtlAndItsEventsArrive) {
    for (const wchar_t* name : {c.progId, c.clsid}) {
        SCOPED_TRACE(narrow(name));
        Hosted h(name, guid(c.events), c.childId, 220, 120);
        ASSERT_TRUE(h.active());
        EXPECT_NE(h.connection.cookie, 0u);  // its events are connected
        if (c.childId == 0) continue;  // the hatch preview and the layer fire no event
        ASSERT_NE(h.child, nullptr);
        if (h.count() == 0) {  // the linetype controls: rows the host defines
            const std::pair<const wchar_t*, const wchar_t*> rows[] = {{L"DefineLinetypeByLayer", L"ByLayer"},
                                                                      {L"DefineLinetypeContinuous", L"Continuous"}};
            for (const auto& [member, row] : rows) {
                KivVariant name, definition;
                name.v = textArg(row);
                definition.v = textArg(L"A,2");
                EXPECT_EQ(call(h.dispatch.get(), member, DISPATCH_METHOD, {name.v, definition.v}, nullptr), S_OK);
            }
        }
        ASSERT_GT(h.count(), 1);
        SetFocus(h.child);
        h.key(VK_DOWN);
        const std::vector<std::string>& events = h.events();
        EXPECT_TRUE(std::any_of(events.begin(), events.end(), [](const std::string& e) { return e.rfind("SelChange(", 0) == 0; }))
            << "no SelChange among " << events.size() << " events";
    }
}

TEST_P(SideBySide, TypeInformationFromTheAssemblysLibrary) {
    KivComPtr<IDispatch> control = newControl(clsid);
    ASSERT_TRUE(control);
    UINT count = 0;
    EXPECT_EQ(control->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1u);
    KivComPtr<ITypeInfo> dispatchInfo;
    ASSERT_EQ(control->GetTypeInfo(0, LOCALE_USER_DEFAULT, dispatchInfo.put()), S_OK);
    TYPEATTR* attr = nullptr;
    ASSERT_EQ(dispatchInfo->GetTypeAttr(&attr), S_OK);
    EXPECT_TRUE(IsEqualGUID(attr->guid, guid(expectedFor(c).dispatch)));
    EXPECT_EQ(attr->typekind, TKIND_DISPATCH);
    dispatchInfo->ReleaseTypeAttr(attr);

    KivComPtr<IProvideClassInfo> provide;
    ASSERT_EQ(control->QueryInterface(IID_IProvideClassInfo, provide.putVoid()), S_OK);
    KivComPtr<ITypeInfo> classInfo;
    ASSERT_EQ(provide->GetClassInfo(classInfo.put()), S_OK);
    ASSERT_EQ(classInfo->GetTypeAttr(&attr), S_OK);
    EXPECT_TRUE(IsEqualGUID(attr->guid, clsid));
    EXPECT_EQ(attr->typekind, TKIND_COCLASS);
    classInfo->ReleaseTypeAttr(attr);
    KivComPtr<ITypeLib> containing;
    UINT index = 0;
    ASSERT_EQ(classInfo->GetContainingTypeLib(containing.put(), &index), S_OK);
    TLIBATTR* libAttr = nullptr;
    ASSERT_EQ(containing->GetLibAttr(&libAttr), S_OK);
    EXPECT_TRUE(IsEqualGUID(libAttr->guid, kLibrary));
    containing->ReleaseTLibAttr(libAttr);
    // The library by its id and version, as a host's tools look it up: the assembly names it.
    KivComPtr<ITypeLib> registered;
    EXPECT_EQ(LoadRegTypeLib(kLibrary, 1, 0, 0, registered.put()), S_OK);
}

INSTANTIATE_TEST_SUITE_P(EveryControl, SideBySide, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<ControlCase>& info) { return std::string(info.param.name); });

TEST(WithoutManifestProgram, CarriesNoManifest) { EXPECT_FALSE(carriesManifest()); }

TEST_P(WithoutManifest, NoClassNoProgIdNoLibrary) {
    KivComPtr<IUnknown> control;
    EXPECT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, control.putVoid()), REGDB_E_CLASSNOTREG);
    CLSID fromProgId{};
    EXPECT_EQ(CLSIDFromProgID(c.progId, &fromProgId), CO_E_CLASSSTRING);
    Frame frame;
    KivControlHost host(frame.hwnd, RECT{10, 10, 170, 50});
    EXPECT_EQ(host.create(clsid), REGDB_E_CLASSNOTREG);
    KivComPtr<ITypeLib> registered;
    EXPECT_EQ(LoadRegTypeLib(kLibrary, 1, 0, 0, registered.put()), TYPE_E_LIBNOTREGISTERED);
}

INSTANTIATE_TEST_SUITE_P(EveryControl, WithoutManifest, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<ControlCase>& info) { return std::string(info.param.name); });
