// Activation without registration under Wine. This program carries an application manifest that
// depends on the module's assembly; it runs in a folder holding the package's module and assembly
// manifest, in a prefix where nothing of the module is registered. Each control is created by its
// ProgID and by its class id, sited in our container and in ATL's AtlAxWin and, in each, drawn and
// heard from; its property page is created by class id and by ProgID, and the control asked for its
// type information. The assembly manifest names the twelve classes. The same program linked without
// its manifest finds no class, no ProgID and no library (tests/module/sxs_test.sh runs both).
#include <gtest/gtest.h>
#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include "ContainerHost.h"
#include "ControlCases.h"
#include "KivCom.h"
#include "KivContainer.h"

namespace {

const wchar_t kLibraryId[] = L"{64000C4D-B3B0-460E-85BC-05C90B5ADC21}";
const GUID kLibrary = guid(kLibraryId);

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

// The attributes of each element `tag` of an XML text written as the assembly manifest is (every
// attribute in double quotes), in order.
using Attributes = std::map<std::string, std::string>;
std::vector<Attributes> elements(const std::string& xml, const std::string& tag) {
    std::vector<Attributes> found;
    const std::regex attribute("([A-Za-z]+)=\"([^\"]*)\"");
    for (std::size_t at = xml.find("<" + tag + " "); at != std::string::npos; at = xml.find("<" + tag + " ", at + 1)) {
        const std::string element = xml.substr(at, xml.find('>', at) - at);
        Attributes attributes;
        for (std::sregex_iterator a(element.begin(), element.end(), attribute), end; a != end; ++a)
            attributes[(*a)[1]] = (*a)[2];
        found.push_back(attributes);
    }
    return found;
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

// A user's choice with the Down key on the control's child, heard through the events the host
// connected: a SelChange among them. The linetype controls first get two rows the host defines; the
// hatch preview and the layer, without a child, fire no event (their events are only connected).
void expectAChoiceIsHeard(const ControlCase& c, IDispatch* control, ControlChild& list, EventConnection& connection) {
    EXPECT_NE(connection.cookie, 0u);
    if (c.childId == 0) return;
    ASSERT_NE(list.child, nullptr);
    if (list.count() == 0) {
        const std::pair<const wchar_t*, const wchar_t*> rows[] = {{L"DefineLinetypeByLayer", L"ByLayer"},
                                                                  {L"DefineLinetypeContinuous", L"Continuous"}};
        for (const auto& [member, row] : rows) {
            KivVariant name, definition;
            name.v = textArg(row);
            definition.v = textArg(L"A,2");
            EXPECT_EQ(call(control, member, DISPATCH_METHOD, {name.v, definition.v}, nullptr), S_OK);
        }
    }
    ASSERT_GT(list.count(), 1);
    SetFocus(list.child);
    list.key(VK_DOWN);
    const std::vector<std::string>& events = connection.events();
    EXPECT_TRUE(std::any_of(events.begin(), events.end(), [](const std::string& e) { return e.rfind("SelChange(", 0) == 0; }))
        << "no SelChange among " << events.size() << " events";
}

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
    EXPECT_FALSE(keyExists(std::wstring(L"TypeLib\\") + kLibraryId));
}

TEST(SideBySideProgram, TheAssemblyManifestBesideTheModuleListsTheTwelveClassesInTheLibrary) {
    std::ifstream file(narrow(programFolder() + L"\\KivLorqControls8x64.manifest"), std::ios::binary);
    const std::string manifest((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const std::vector<Attributes> libraries = elements(manifest, "typelib");
    ASSERT_EQ(libraries.size(), 1u);
    Attributes library = libraries[0];
    EXPECT_EQ(library["tlbid"], narrow(kLibraryId));
    EXPECT_EQ(library["version"], "1.0");
    // Each control and each page: its class id with its ProgID, apartment-threaded, in the library.
    std::map<std::string, std::string> progIds, expected;
    for (const ControlCase& c : kCases) {
        expected[narrow(c.clsid)] = narrow(c.progId);
        expected[narrow(c.page)] = narrow(c.pageProgId);
    }
    const std::vector<Attributes> classes = elements(manifest, "comClass");
    EXPECT_EQ(classes.size(), 12u);
    for (Attributes a : classes) {
        SCOPED_TRACE(a["clsid"]);
        EXPECT_EQ(a["threadingModel"], "Apartment");
        EXPECT_EQ(a["tlbid"], narrow(kLibraryId));
        progIds[a["clsid"]] = a["progid"];
    }
    EXPECT_EQ(progIds, expected);
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

TEST_P(SideBySide, SitedInOurContainerDrawnAndItsEventsArrive) {
    Frame frame;
    const OLE_COLOR back = 0x00E0D0C0;
    for (int byClassId = 0; byClassId < 2; ++byClassId) {
        SCOPED_TRACE(byClassId ? "by class id" : "by ProgID");
        KivControlHost host(frame.hwnd, RECT{10, 10, 170, 50});
        host.setAmbientColors(back, 0x00203040);
        host.setUserMode(false);
        ASSERT_EQ(byClassId ? host.create(clsid) : host.create(c.progId), S_OK);
        pumpMessages(30);
        ASSERT_NE(host.window(), nullptr);
        Canvas expected(160, 40);
        drawExpectedDesignModeFace(expected, c.designText);
        EXPECT_EQ(viewDiffersFrom(host.control(), expected), 0) << "design mode";
        host.setUserMode(true);
        drawExpectedUserModeFace(expected, c.designText, back);
        EXPECT_EQ(viewDiffersFrom(host.control(), expected), 0) << "user mode";
        EventConnection connection;
        ASSERT_TRUE(connection.connect(host.control(), guid(c.events)));
        ControlChild list;
        list.find(host.window(), c.childId);
        expectAChoiceIsHeard(c, host.dispatch(), list, connection);
        connection.disconnect();
        host.close();
    }
}

TEST_P(SideBySide, SitedInAtlDrawnAndItsEventsArrive) {
    for (const wchar_t* name : {c.progId, c.clsid}) {
        SCOPED_TRACE(narrow(name));
        Hosted h(name, guid(c.events), c.childId, 220, 120);
        ASSERT_TRUE(h.active());
        // Wine's AtlAxWin gives its controls no ambient properties (its site has no IDispatch): a
        // control is in user mode with the window's colours.
        Canvas expected(160, 40);
        drawExpectedUserModeFace(expected, c.designText, GetSysColor(COLOR_WINDOW));
        EXPECT_EQ(viewDiffersFrom(h.control.get(), expected), 0);
        expectAChoiceIsHeard(c, h.dispatch.get(), h, h.connection);
    }
}

TEST_P(SideBySide, ItsPropertyPageByClassIdAndByProgId) {
    // The page's ProgID, as a control's, maps to an alias the activation context makes for it.
    CLSID fromProgId{};
    ASSERT_EQ(CLSIDFromProgID(c.pageProgId, &fromProgId), S_OK);
    Frame frame;
    for (const CLSID& id : {guid(c.page), fromProgId}) {
        KivComPtr<IPropertyPage> page;
        ASSERT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IPropertyPage, page.putVoid()), S_OK);
        expectPlaceholderPageObject(page.get(), frame.hwnd, c.pageControl);
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
