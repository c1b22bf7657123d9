// The whole module under Wine, control by control: each of the six controls created by its ProgID
// and by its class id, sited and activated in our own container and in ATL's AtlAxWin, drawn in
// design and in user mode, resized, saved and reloaded, reached through its property page in the
// property frame a container opens, released; and the module free to unload after each.
#include <gtest/gtest.h>
#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

#include <algorithm>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "ContainerHost.h"
#include "ControlCases.h"
#include "KivCom.h"
#include "KivContainer.h"

namespace {

std::wstring className(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return name;
}

// Pixels in which a window's client area on screen differs from a canvas of its size.
int differingFromScreen(HWND window, const Canvas& expected) {
    int w = 0, h = 0;
    const std::vector<std::uint8_t> rgb = grab(window, w, h);
    if (w != expected.width || h != expected.height) return -1;
    int n = 0;
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            if (at(rgb, w, x, y) != expected.pixel(x, y)) ++n;
    return n;
}

// A visible top-level window standing for a host's dialog.
class Dialog {
public:
    Dialog() {
        hwnd = CreateWindowExW(0, L"STATIC", L"module", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0, 520, 360,
                               nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    }
    ~Dialog() { DestroyWindow(hwnd); }
    HWND hwnd;
};

bool isDirty(IUnknown* control) {
    KivComPtr<IPersistStreamInit> persist;
    control->QueryInterface(IID_IPersistStreamInit, persist.putVoid());
    return persist && persist->IsDirty() == S_OK;
}

// ---- What a control asks of its container

// An interface's name, for the interfaces a control could ask a container's objects for; others by
// their IID.
std::string interfaceName(REFIID riid) {
    static const std::pair<const IID*, const char*> known[] = {
        {&IID_IUnknown, "IUnknown"},
        {&IID_IOleClientSite, "IOleClientSite"},
        {&IID_IOleWindow, "IOleWindow"},
        {&IID_IOleInPlaceSite, "IOleInPlaceSite"},
        {&IID_IOleInPlaceSiteEx, "IOleInPlaceSiteEx"},
        {&IID_IOleInPlaceSiteWindowless, "IOleInPlaceSiteWindowless"},
        {&IID_IOleControlSite, "IOleControlSite"},
        {&IID_IOleInPlaceUIWindow, "IOleInPlaceUIWindow"},
        {&IID_IOleInPlaceFrame, "IOleInPlaceFrame"},
        {&IID_IOleContainer, "IOleContainer"},
        {&IID_IDispatch, "IDispatch"},
        {&IID_IServiceProvider, "IServiceProvider"},
        {&IID_IAdviseSink, "IAdviseSink"},
        {&IID_ISimpleFrameSite, "ISimpleFrameSite"},
        {&IID_IPropertyNotifySink, "IPropertyNotifySink"},
        {&IID_IMarshal, "IMarshal"},
    };
    for (const auto& [iid, name] : known)
        if (IsEqualIID(riid, *iid)) return name;
    wchar_t text[40] = {};
    StringFromGUID2(riid, text, 40);
    return narrow(text);
}

class Module : public ComTest, public ::testing::WithParamInterface<ControlCase> {
protected:
    void TearDown() override {
        // Everything the test made is released: the module has nothing alive.
        pumpMessages(20);
        EXPECT_EQ(canUnloadNow(), S_OK) << GetParam().name << " left an object or a lock behind";
        ComTest::TearDown();
    }
    const ControlCase& c = GetParam();
    const CLSID clsid = guid(c.clsid);
};

}  // namespace

TEST_P(Module, TheProgIdNamesTheClassId) {
    CLSID fromProgId{};
    ASSERT_EQ(CLSIDFromProgID(c.progId, &fromProgId), S_OK);
    EXPECT_TRUE(IsEqualCLSID(fromProgId, clsid));
}

TEST_P(Module, CreatedByProgIdAndByClassIdInOurContainer) {
    Dialog dialog;
    for (int byClassId = 0; byClassId < 2; ++byClassId) {
        SCOPED_TRACE(byClassId ? "by class id" : "by ProgID");
        KivControlHost host(dialog.hwnd, RECT{10, 10, 230, 31});
        ASSERT_EQ(byClassId ? host.create(clsid) : host.create(c.progId), S_OK);
        pumpMessages(30);
        HWND window = host.window();
        ASSERT_NE(window, nullptr);
        EXPECT_TRUE(IsWindowVisible(window));
        EXPECT_EQ(GetParent(window), dialog.hwnd);
        RECT client;
        GetClientRect(window, &client);
        EXPECT_EQ(client.right, 220);
        EXPECT_EQ(client.bottom, 21);
        HWND child = c.childId != 0 ? GetDlgItem(window, c.childId) : GetWindow(window, GW_CHILD);
        if (c.childId != 0) {
            ASSERT_NE(child, nullptr);
            EXPECT_EQ(className(child), c.childClass);
        } else {
            EXPECT_EQ(child, nullptr);  // it draws itself, no child window
        }
        // The class it says it is, and the events a container connects to.
        KivComPtr<IPersist> persist;
        ASSERT_EQ(host.control()->QueryInterface(IID_IPersist, persist.putVoid()), S_OK);
        CLSID own{};
        EXPECT_EQ(persist->GetClassID(&own), S_OK);
        EXPECT_TRUE(IsEqualCLSID(own, clsid));
        KivComPtr<IConnectionPointContainer> points;
        ASSERT_EQ(host.control()->QueryInterface(IID_IConnectionPointContainer, points.putVoid()), S_OK);
        KivComPtr<IConnectionPoint> point;
        EXPECT_EQ(points->FindConnectionPoint(guid(c.events), point.put()), S_OK);
        point.reset();
        points.reset();
        persist.reset();
        host.close();
        EXPECT_FALSE(IsWindow(window));
    }
}

TEST_P(Module, CreatedByProgIdAndByClassIdInAtl) {
    for (const wchar_t* name : {c.progId, c.clsid}) {
        SCOPED_TRACE(narrow(name));
        Hosted h(name, guid(c.events), c.childId, 220, 21);
        ASSERT_TRUE(h.active());
        EXPECT_TRUE(IsWindowVisible(h.controlWindow));
        if (c.childId != 0) {
            ASSERT_NE(h.child, nullptr);
            EXPECT_EQ(className(h.child), c.childClass);
        }
        KivComPtr<IPersist> persist;
        ASSERT_EQ(h.control->QueryInterface(IID_IPersist, persist.putVoid()), S_OK);
        CLSID own{};
        EXPECT_EQ(persist->GetClassID(&own), S_OK);
        EXPECT_TRUE(IsEqualCLSID(own, clsid));
    }
}

TEST_P(Module, DesignModeAndUserModeInOurContainer) {
    Dialog dialog;
    KivControlHost host(dialog.hwnd, RECT{10, 10, 170, 50});
    const OLE_COLOR back = 0x00E0D0C0, fore = 0x00203040;
    host.setAmbientColors(back, fore);
    host.setUserMode(false);
    ASSERT_EQ(host.create(clsid), S_OK);
    Canvas expected(160, 40);
    drawExpectedDesignModeFace(expected, c.designText);
    EXPECT_EQ(viewDiffersFrom(host.control(), expected), 0) << "design mode";

    // User mode: the combo boxes and the list paint over a face of the container's colour, the hatch
    // preview (no pattern named) is its BackColor, taken from the container when it started; the
    // layer's picture does not change.
    host.setUserMode(true);
    drawExpectedUserModeFace(expected, c.designText, back);
    EXPECT_EQ(viewDiffersFrom(host.control(), expected), 0) << "user mode";
    host.close();
}

TEST_P(Module, ResizedItFollowsTheNewBounds) {
    Dialog dialog;
    KivControlHost host(dialog.hwnd, RECT{10, 10, 130, 50});
    host.setAmbientColors(0x00E0D0C0, 0x00203040);
    ASSERT_EQ(host.create(c.progId), S_OK);
    pumpMessages(50);
    HWND window = host.window();
    ASSERT_NE(window, nullptr);
    // Larger and elsewhere, then smaller than at first.
    const RECT sizes[] = {RECT{40, 60, 340, 170}, RECT{20, 30, 100, 60}};
    for (const RECT& r : sizes) {
        const int w = r.right - r.left, h = r.bottom - r.top;
        SCOPED_TRACE(std::to_string(w) + " x " + std::to_string(h));
        host.move(r);
        pumpMessages(80);
        RECT client;
        GetClientRect(window, &client);
        EXPECT_EQ(client.right, w);
        EXPECT_EQ(client.bottom, h);
        POINT origin{0, 0};
        MapWindowPoints(window, dialog.hwnd, &origin, 1);
        EXPECT_EQ(origin.x, r.left);
        EXPECT_EQ(origin.y, r.top);
        if (c.childId != 0) {
            RECT childRect;
            GetWindowRect(GetDlgItem(window, c.childId), &childRect);
            EXPECT_EQ(childRect.right - childRect.left, w);  // the child spans the new width
        } else if (c.designText == nullptr) {
            // The layer: the whole picture redrawn for the new bounds, the ellipse inscribed in them.
            Canvas expected(w, h);
            drawExpectedEllipse(expected);
            EXPECT_EQ(differingFromScreen(window, expected), 0);
        } else {
            // The hatch preview without a pattern: its back colour over all the new bounds.
            Canvas expected(w, h);
            expected.fill(RGB(0xC0, 0xD0, 0xE0));
            EXPECT_EQ(differingFromScreen(window, expected), 0);
        }
    }
    host.close();
}

TEST_P(Module, SavedInOneContainerReloadedInAnother) {
    Dialog dialog;
    std::vector<BYTE> saved;
    {
        // Changed and saved in ATL's container...
        Hosted h(c.progId, guid(c.events), c.childId, 220, 21);
        ASSERT_TRUE(h.dispatch);
        if (c.hasEnabled) {
            EXPECT_EQ(put(h.dispatch.get(), L"Enabled", boolArg(false)), S_OK);
        }
        if (c.isHatch()) {
            EXPECT_EQ(put(h.dispatch.get(), L"ZoomFactor", doubleArg(0.25)), S_OK);
        }
        saved = saveStream(h.control.get());
        ASSERT_FALSE(saved.empty());
    }
    // ...reloaded in ours, where it saves the same bytes again but for the extent (bytes 4 to 11
    // after the version), which is the new container's: 220 x 21 pixels in HIMETRIC at the screen's
    // dpi (5821 x 556 at 96).
    KivControlHost host(dialog.hwnd, RECT{10, 10, 230, 31});
    ASSERT_EQ(host.create(clsid, &saved), S_OK);
    std::vector<BYTE> expected = saved;
    ASSERT_GE(expected.size(), 12u);
    const LONG cx = MulDiv(220, 2540, screenLogPixels(LOGPIXELSX)), cy = MulDiv(21, 2540, screenLogPixels(LOGPIXELSY));
    for (int i = 0; i < 4; ++i) {
        expected[4 + static_cast<std::size_t>(i)] = static_cast<BYTE>((cx >> (8 * i)) & 0xFF);
        expected[8 + static_cast<std::size_t>(i)] = static_cast<BYTE>((cy >> (8 * i)) & 0xFF);
    }
    EXPECT_EQ(host.save(), expected);
    if (c.hasEnabled) {
        EXPECT_FALSE(enabledOf(host.dispatch()));
    }
    if (c.isHatch()) {
        VARIANT zoom;
        VariantInit(&zoom);
        ASSERT_EQ(call(host.dispatch(), L"ZoomFactor", DISPATCH_PROPERTYGET, {}, &zoom), S_OK);
        EXPECT_EQ(V_R8(&zoom), 0.25);
    }
    if (c.designText == nullptr) {
        // The layer keeps only the version, its extent and an empty stock mask: 16 bytes.
        ASSERT_EQ(saved.size(), 16u);
        EXPECT_EQ(std::vector<BYTE>(saved.begin(), saved.begin() + 4), (std::vector<BYTE>{0x00, 0x00, 0x01, 0x00}));
        EXPECT_EQ(std::vector<BYTE>(saved.begin() + 12, saved.end()), (std::vector<BYTE>{0, 0, 0, 0}));
    }
    host.close();
}

TEST_P(Module, ItsPageInThePropertyFrameChangesNothingOnOkOrCancel) {
    Dialog dialog;
    KivControlHost host(dialog.hwnd, RECT{10, 10, 230, 31});
    ASSERT_EQ(host.create(clsid), S_OK);
    const std::vector<BYTE> before = host.save();  // also clears the modified flag
    ASSERT_FALSE(isDirty(host.control()));
    KivComPtr<ISpecifyPropertyPages> specify;
    ASSERT_EQ(host.control()->QueryInterface(IID_ISpecifyPropertyPages, specify.putVoid()), S_OK);
    CAUUID pages{};
    ASSERT_EQ(specify->GetPages(&pages), S_OK);
    ASSERT_EQ(pages.cElems, 1u);
    EXPECT_TRUE(IsEqualCLSID(pages.pElems[0], guid(c.page)));
    for (const int button : {IDOK, IDCANCEL}) {
        SCOPED_TRACE(button == IDOK ? "OK" : "Cancel");
        const PropertyFrameSeen seen = showPropertyFrame(dialog.hwnd, host.control(), pages, button);
        EXPECT_EQ(seen.result, S_OK);
        EXPECT_TRUE(seen.answered);
        EXPECT_EQ(seen.tabs, 1);
        EXPECT_EQ(narrow(seen.tab), "General");
        EXPECT_EQ(seen.page, expectedPlaceholderPage(c.pageControl));
        EXPECT_FALSE(isDirty(host.control()));
        EXPECT_EQ(host.save(), before);
    }
    CoTaskMemFree(pages.pElems);
    specify.reset();
    host.close();
}

// Every interface a control asks its site for (the client site, which is also the in-place frame it
// is given, and offers IOleControlSite too), through its whole life in our container: created,
// sited, initialised, activated in place and for the user, used (its events connected, a key on its
// list, Enabled, an ambient change, drawn, moved, saved, changed again), deactivated, closed with
// OLECLOSE_SAVEIFDIRTY and unsited. Only the in-place site and the ambient properties' IDispatch:
// never IOleControlSite, IOleInPlaceFrame, IOleInPlaceUIWindow or IOleContainer (GetContainer).
TEST_P(Module, AsksItsSiteOnlyForTheInPlaceSiteAndTheAmbientDispatch) {
    Dialog dialog;
    const bool list = c.childClass != nullptr && std::wstring(c.childClass) == L"ListBox";
    RECT rect{10, 10, 230, list ? 150 : 31};
    KivControlHost host(dialog.hwnd, rect);
    ASSERT_EQ(host.create(clsid), S_OK);
    KivComPtr<IOleObject> object;
    ASSERT_EQ(host.control()->QueryInterface(IID_IOleObject, object.putVoid()), S_OK);
    ASSERT_EQ(object->DoVerb(OLEIVERB_UIACTIVATE, nullptr, nullptr, 0, dialog.hwnd, &rect), S_OK);
    pumpMessages(50);
    HWND window = host.window();
    ASSERT_NE(window, nullptr);

    EventConnection events;
    events.connect(host.control(), guid(c.events));
    ControlChild child;
    child.find(window, c.childId);
    const auto userKey = [&] {
        if (c.childId == 0) return;
        ASSERT_NE(child.child, nullptr);
        SetFocus(child.child);
        child.key(VK_DOWN);
    };
    userKey();
    if (c.childId != 0) {
        EXPECT_FALSE(events.events().empty()) << "the key made no choice";
    }
    if (c.hasEnabled) {
        EXPECT_EQ(put(host.dispatch(), L"Enabled", boolArg(false)), S_OK);
        EXPECT_EQ(put(host.dispatch(), L"Enabled", boolArg(true)), S_OK);
    }
    host.setAmbientColors(0x00E0D0C0, 0x00203040);  // the control is told they changed
    pumpMessages(30);
    Canvas canvas(220, 21);
    EXPECT_EQ(drawThroughViewObject(host.control(), canvas), S_OK);
    rect = RECT{20, 20, 240, rect.bottom + 10};
    host.move(rect);
    pumpMessages(30);
    EXPECT_FALSE(host.save().empty());
    userKey();  // modified again: closing asks the site to save

    KivComPtr<IOleInPlaceObject> inPlace;
    ASSERT_EQ(host.control()->QueryInterface(IID_IOleInPlaceObject, inPlace.putVoid()), S_OK);
    EXPECT_EQ(inPlace->UIDeactivate(), S_OK);
    EXPECT_EQ(inPlace->InPlaceDeactivate(), S_OK);
    EXPECT_EQ(object->Close(OLECLOSE_SAVEIFDIRTY), S_OK);
    inPlace.reset();
    object.reset();
    events.disconnect();
    host.close();  // unsited and released
    std::set<std::string> asked;
    for (const IID& iid : host.askedOfItsSite()) asked.insert(interfaceName(iid));
    EXPECT_EQ(asked, (std::set<std::string>{"IOleInPlaceSite", "IDispatch"}));
}

INSTANTIATE_TEST_SUITE_P(EveryControl, Module, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<ControlCase>& info) { return std::string(info.param.name); });

// The layer placeholder, created by its ProgID: nothing of its own to call, read or listen to.
using LayerControl = ComTest;
TEST_F(LayerControl, HasNoPropertyMethodOrEventOfItsOwn) {
    CLSID clsid{};
    ASSERT_EQ(CLSIDFromProgID(L"KIVLORQCONTROLS.KivLayerCtrl.1", &clsid), S_OK);
    KivComPtr<IDispatch> d = newControl(clsid);
    ASSERT_TRUE(d);
    // No name is known, not even the stock ones the other controls have.
    for (const wchar_t* name : {L"Enabled", L"BackColor", L"ForeColor", L"Refresh", L"AboutBox", L"SelectItem"}) {
        DISPID id = 0;
        LPOLESTR n = const_cast<LPOLESTR>(name);
        EXPECT_EQ(d->GetIDsOfNames(IID_NULL, &n, 1, LOCALE_USER_DEFAULT, &id), DISP_E_UNKNOWNNAME) << narrow(name);
    }
    for (const DISPID id : {1, 2, -514, DISPID_ABOUTBOX}) {
        DISPPARAMS none{};
        VARIANT result;
        VariantInit(&result);
        EXPECT_EQ(d->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none, &result,
                            nullptr, nullptr),
                  DISP_E_MEMBERNOTFOUND)
            << id;
    }
    // Its dispatch and event interfaces describe no member beyond those every dispinterface inherits
    // (the seven of IUnknown and IDispatch).
    auto ownMembers = [](ITypeInfo* info) {
        TYPEATTR* attr = nullptr;
        if (info == nullptr || FAILED(info->GetTypeAttr(&attr))) return -1;
        int own = attr->cVars;
        for (UINT i = 0; i < attr->cFuncs; ++i) {
            FUNCDESC* f = nullptr;
            if (FAILED(info->GetFuncDesc(i, &f))) continue;
            if (f->memid < 0x60000000 || f->memid > 0x60010003) ++own;  // not IUnknown's or IDispatch's
            info->ReleaseFuncDesc(f);
        }
        info->ReleaseTypeAttr(attr);
        return own;
    };
    KivComPtr<ITypeInfo> dispatchInfo;
    ASSERT_EQ(d->GetTypeInfo(0, LOCALE_USER_DEFAULT, dispatchInfo.put()), S_OK);
    EXPECT_EQ(ownMembers(dispatchInfo.get()), 0);
    KivComPtr<IProvideClassInfo2> classInfo;
    ASSERT_EQ(d->QueryInterface(IID_IProvideClassInfo2, classInfo.putVoid()), S_OK);
    GUID events{};
    ASSERT_EQ(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), S_OK);
    EXPECT_TRUE(IsEqualGUID(events, guid(L"{41FF97A2-4D74-4374-8D7C-E458F28AEA0F}")));
    KivComPtr<ITypeInfo> coclass, eventsInfo;
    ASSERT_EQ(classInfo->GetClassInfo(coclass.put()), S_OK);
    KivComPtr<ITypeLib> library;
    UINT index = 0;
    ASSERT_EQ(coclass->GetContainingTypeLib(library.put(), &index), S_OK);
    ASSERT_EQ(library->GetTypeInfoOfGuid(events, eventsInfo.put()), S_OK);
    EXPECT_EQ(ownMembers(eventsInfo.get()), 0);
}
