// Both linetype controls in a real container under Wine: created by ProgID in ATL's AtlAxWin, filled
// from a real .lin file through SupportPath and LinetypeFile, their rows and samples drawn by the real
// combo and list box (a dashed sample has gaps, a Continuous one is solid), keyboard and mouse choices
// with their events and names, the list's SelChange only, unloading, RemoveAll, GetCount, the design
// faces and persistence.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>

#include "CKivDpi.h"
#include "ContainerHost.h"
#include "PngWriter.h"
#include "TestFiles.h"

namespace {

const CLSID kLinetypeClsid = {0x2EEDA6B2, 0x2037, 0x4824, {0x86, 0x29, 0x9E, 0xAA, 0x77, 0x58, 0xE9, 0xBF}};
const CLSID kListClsid = {0xDABAFA9E, 0x2B6F, 0x40B0, {0x95, 0xBB, 0x37, 0x3A, 0xB4, 0xB2, 0xFC, 0x18}};
const IID kLinetypeEvents = {0xB38FC9AE, 0x123A, 0x4217, {0x9E, 0x92, 0x7F, 0x2B, 0x3E, 0x58, 0xEA, 0x52}};
const IID kListEvents = {0x57D2AB1D, 0x50F4, 0x48D9, {0xA9, 0xFD, 0x62, 0x70, 0x2A, 0x55, 0x27, 0xD6}};

class ComboHosted : public Hosted {
public:
    explicit ComboHosted(int width = 240, int height = 21)
        : Hosted(L"KIVLORQCONTROLS.KivLinetypeCtrl.1", kLinetypeEvents, 102, width, height) {}
};
class ListHosted : public Hosted {
public:
    explicit ListHosted(int width = 240, int height = 140)
        : Hosted(L"KIVLORQCONTROLS.KivLinetypeListCtrl.1", kListEvents, 105, width, height) {}
};

using Strings = std::vector<std::string>;
using LinetypeContainer = ComTest;

// Points a control at the real metric QCAD file and loads three linetypes from it.
void fillFromRealFile(IDispatch* d) {
    const std::wstring folder(sharedDataPath("lin").getStringW());
    put(d, L"SupportPath", textArg(folder.c_str()));
    put(d, L"LinetypeFile", textArg(L"qcad__qcadiso.lin"));
    for (const wchar_t* name : {L"DOT", L"DASHED", L"CENTER"}) {
        KivVariant arg;
        arg.v = textArg(name);
        call(d, L"LoadLinetype", DISPATCH_METHOD, {arg.v}, nullptr);
    }
}

// The black runs along one row of pixels between x0 and x1: {start, length} pairs.
std::vector<std::pair<int, int>> blackRuns(const std::vector<std::uint8_t>& rgb, int w, int y, int x0, int x1) {
    std::vector<std::pair<int, int>> runs;
    for (int x = x0; x < x1; ++x) {
        if (at(rgb, w, x, y) != RGB(0, 0, 0)) continue;
        if (!runs.empty() && runs.back().first + runs.back().second == x) ++runs.back().second;
        else runs.push_back({x, 1});
    }
    return runs;
}

}  // namespace

TEST_F(LinetypeContainer, BothControlsAreCreatedByProgIdWithTheirOwnerDrawnChild) {
    ComboHosted combo;
    ASSERT_NE(combo.child, nullptr);
    wchar_t cls[64];
    GetClassNameW(combo.child, cls, 64);
    EXPECT_EQ(_wcsicmp(cls, L"ComboBox"), 0);
    EXPECT_EQ(GetDlgCtrlID(combo.child), 102);
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongW(combo.child, GWL_STYLE)) & 0x50000E13u, 0x50000E13u);
    EXPECT_EQ(reinterpret_cast<HFONT>(SendMessageW(combo.child, WM_GETFONT, 0, 0)), static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)));
    EXPECT_EQ(combo.count(), 3);
    EXPECT_EQ(longResult(combo.dispatch.get(), L"GetCount"), 3);
    EXPECT_EQ(combo.text(2), "Continuous");

    ListHosted list;
    ASSERT_NE(list.child, nullptr);
    ASSERT_TRUE(list.isListBox());
    EXPECT_EQ(GetDlgCtrlID(list.child), 105);
    const DWORD style = static_cast<DWORD>(GetWindowLongW(list.child, GWL_STYLE));
    EXPECT_EQ(style & 0x50000051u, 0x50000051u);
    EXPECT_EQ(style & LBS_SORT & ~LBS_NOTIFY, 0u);
    EXPECT_EQ(list.count(), 3);
    EXPECT_EQ(list.selection(), -1);
}

TEST_F(LinetypeContainer, TheComboFillsFromARealFileSortedAndUnloadsAndRemoves) {
    ComboHosted h;
    ASSERT_NE(h.child, nullptr);
    IDispatch* d = h.dispatch.get();
    fillFromRealFile(d);
    ASSERT_EQ(longResult(d, L"GetCount"), 6);
    EXPECT_EQ(h.text(3), "Center");
    EXPECT_EQ(h.text(4), "Dashed");
    EXPECT_EQ(h.text(5), "Dot");
    EXPECT_EQ(textResult(d, L"SelectItemAt", {longArg(4)}), "Dashed");
    EXPECT_EQ(textResult(d, L"SelectItemAt", {longArg(-1)}), "");
    EXPECT_EQ(h.selection(), -1);
    KivVariant dashed;
    dashed.v = textArg(L"dashed");
    EXPECT_EQ(textResult(d, L"SelectItem", {dashed.v}), "dashed");
    EXPECT_EQ(h.selection(), 4);
    call(d, L"UnloadLinetype", DISPATCH_METHOD, {dashed.v}, nullptr);
    EXPECT_EQ(longResult(d, L"GetCount"), 5);
    EXPECT_EQ(h.text(4), "Dot");
    KivVariant byLayer;
    byLayer.v = textArg(L"ByLayer");
    call(d, L"UnloadLinetype", DISPATCH_METHOD, {byLayer.v}, nullptr);
    EXPECT_EQ(longResult(d, L"GetCount"), 5);
    call(d, L"RemoveAll", DISPATCH_METHOD, {}, nullptr);
    EXPECT_EQ(longResult(d, L"GetCount"), 3);
    call(d, L"Initialize", DISPATCH_METHOD, {}, nullptr);
    EXPECT_EQ(longResult(d, L"GetCount"), 3);
    pumpMessages(30);
    EXPECT_TRUE(h.events().empty());
}

TEST_F(LinetypeContainer, TheListKeepsLoadOrder) {
    ListHosted h;
    ASSERT_NE(h.child, nullptr);
    fillFromRealFile(h.dispatch.get());
    ASSERT_EQ(h.count(), 6);
    EXPECT_EQ(h.text(3), "Dot");
    EXPECT_EQ(h.text(4), "Dashed");
    EXPECT_EQ(h.text(5), "Center");
}

// The list box is moved to the control's width and the scaled 140 pixels, whatever the control's
// height (kept): a shorter control cuts its last rows off. The list box keeps whole rows of that height.
TEST_F(LinetypeContainer, TheListBoxTakesTheScaledHeightWhateverTheControlsHeight) {
    for (int controlHeight : {60, CKivDpi::scale(140)}) {
        SCOPED_TRACE(controlHeight);
        ListHosted h(240, controlHeight);
        ASSERT_NE(h.child, nullptr);
        RECT control{}, list{};
        GetClientRect(h.controlWindow, &control);
        GetWindowRect(h.child, &list);
        EXPECT_EQ(control.bottom, controlHeight);
        const int rowHeight = static_cast<int>(SendMessageW(h.child, LB_GETITEMHEIGHT, 0, 0));
        EXPECT_EQ(list.right - list.left, 240);
        EXPECT_LE(list.bottom - list.top, CKivDpi::scale(140));
        EXPECT_GT(list.bottom - list.top, CKivDpi::scale(140) - rowHeight);
    }
}

// Wine's combo box sends CBN_SELENDOK before CBN_SELCHANGE for a key press on the closed list.
TEST_F(LinetypeContainer, ComboKeyboardAndMouseChoicesNameTheirRows) {
    ComboHosted h;
    ASSERT_NE(h.child, nullptr);
    fillFromRealFile(h.dispatch.get());
    KivVariant block, definition;
    block.v = textArg(L"Block");
    definition.v = textArg(L"A,2,-2");
    call(h.dispatch.get(), L"DefineLinetypeByBlock", DISPATCH_METHOD, {block.v, definition.v}, nullptr);
    put(h.dispatch.get(), L"ComboIndex", longArg(0));
    SetFocus(h.child);
    h.key(VK_DOWN);  // onto row 1, which shows "Block"
    EXPECT_EQ(h.selection(), 1);
    EXPECT_EQ(h.events(), (Strings{"SelAndCloseUp(\"ByBlock\")", "SelChange(\"ByBlock\")"}));
    h.events().clear();
    h.mousePick(4);
    EXPECT_EQ(h.selection(), 4);
    EXPECT_EQ(h.events(), (Strings{"SelAndCloseUp(\"Dashed\")", "SelChange(\"Dashed\")"}));
    EXPECT_EQ(longResult(h.dispatch.get(), L"ComboIndex"), 4);
}

TEST_F(LinetypeContainer, TheListFiresOnlySelChange) {
    ListHosted h;
    ASSERT_NE(h.child, nullptr);
    fillFromRealFile(h.dispatch.get());
    h.mousePick(0);
    EXPECT_EQ(h.selection(), 0);
    h.mousePick(4);
    EXPECT_EQ(h.selection(), 4);
    EXPECT_EQ(h.events(), (Strings{"SelChange(\"ByLayer\")", "SelChange(\"Dashed\")"}));
    SetFocus(h.child);
    h.key(VK_DOWN);
    ASSERT_FALSE(h.events().empty());
    EXPECT_EQ(h.events().back(), "SelChange(\"Center\")");
    EXPECT_EQ(longResult(h.dispatch.get(), L"ComboIndex"), 5);
    // A selection cleared by the host fires nothing.
    h.events().clear();
    SendMessageW(h.child, LB_SETCURSEL, static_cast<WPARAM>(-1), 0);
    pumpMessages(30);
    EXPECT_TRUE(h.events().empty());
}

// The samples read back from the screen: a dashed row has black dashes with white gaps between
// them along its middle line, a Continuous row one black line to the end of its sample.
TEST_F(LinetypeContainer, PixelsOfTheSamples) {
    ListHosted h(240, 140);
    ASSERT_NE(h.child, nullptr);
    fillFromRealFile(h.dispatch.get());
    RedrawWindow(h.frame, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    pumpMessages(100);
    int w = 0, hgt = 0;
    const std::vector<std::uint8_t> rgb = grab(h.child, w, hgt);
    ASSERT_GT(w, 0);
    CreateDirectoryW(L"Z:" KIV_ARTIFACT_DIR_W, nullptr);
    EXPECT_TRUE(KivWritePng("Z:" KIV_ARTIFACT_DIR "/linetype-list.png", w, hgt, rgb));
    std::printf("screenshot: %s/linetype-list.png\n", KIV_ARTIFACT_DIR);
    auto middle = [&](int index, RECT& item) {
        SendMessageW(h.child, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
        const int top = item.top + 2, bottom = item.bottom - 2;
        return top + (bottom - top) / 2;
    };
    RECT item{};
    // Continuous (row 2): one solid run. The strokes start at x 0 of the list and end at x = the
    // sample box's width (half - 2), measured from 0, so 2 pixels short of the box's right edge.
    const int yContinuous = middle(2, item);
    const int half = (item.right - item.left) / 2;
    const auto solid = blackRuns(rgb, w, yContinuous, 2, half);
    ASSERT_EQ(solid.size(), 1u);
    EXPECT_EQ(solid[0].first, 2);
    EXPECT_EQ(solid[0].first + solid[0].second, half - 2);
    EXPECT_EQ(at(rgb, w, 0, yContinuous), RGB(0, 0, 0));  // the margin left of the box is drawn over
    // Dashed (row 4): dashes of 12 pixels, gaps of 6 or 7, as 12.7 and -6.35 pixels truncated.
    const int yDashed = middle(4, item);
    const auto dashes = blackRuns(rgb, w, yDashed, 2, half);
    ASSERT_GE(dashes.size(), 3u);
    EXPECT_EQ(dashes[0].first, 2);  // the first dash runs from x 0, under the sample's margin
    EXPECT_EQ(dashes[0].second, 10);
    EXPECT_EQ(dashes[1].first, 19);
    EXPECT_EQ(dashes[1].second, 12);
    EXPECT_EQ(dashes[2].first, 38);
    // Dot (row 3): one-pixel dots, 6 pixels apart.
    const auto dots = blackRuns(rgb, w, middle(3, item), 2, half);
    ASSERT_GE(dots.size(), 3u);
    EXPECT_EQ(dots[1].second, 1);
}

TEST_F(LinetypeContainer, DesignFacesAndPersistence) {
    for (const auto& [clsid, face] : {std::pair<CLSID, const wchar_t*>{kLinetypeClsid, L"KivLinetypeComboBox"},
                                      std::pair<CLSID, const wchar_t*>{kListClsid, L"KivLinetypeListBox"}}) {
        SCOPED_TRACE(narrow(face));
        KivComPtr<IOleObject> object;
        ASSERT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject, object.putVoid()), S_OK);
        auto* site = new AmbientSite();
        site->userMode = false;
        object->SetClientSite(site);
        KivComPtr<IViewObject> view;
        ASSERT_EQ(object->QueryInterface(IID_IViewObject, view.putVoid()), S_OK);
        Canvas canvas(200, 40), expected(200, 40);
        const RECTL bounds{0, 0, 200, 40};
        ASSERT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc, &bounds, nullptr, nullptr, 0), S_OK);
        drawExpectedDesignFace(expected, face);
        EXPECT_EQ(differingPixels(canvas, expected), 0);
        object->SetClientSite(nullptr);
        site->Release();
        // Only the version and Enabled are saved; the linetypes are the host's to set again.
        KivComPtr<IDispatch> d;
        object->QueryInterface(IID_IDispatch, d.putVoid());
        fillFromRealFile(d.get());
        put(d.get(), L"Enabled", boolArg(false));
        const std::vector<BYTE> bytes = saveStream(d.get());
        EXPECT_EQ(bytes.size(), 17u);
        EXPECT_EQ(bytes[12], 0x40);  // stock mask: Enabled only
        EXPECT_EQ(bytes[16], 0x00);
        KivComPtr<IDispatch> other = newControl(clsid);
        ASSERT_EQ(loadStream(other.get(), bytes), S_OK);
        EXPECT_FALSE(enabledOf(other.get()));
    }
}

TEST_F(LinetypeContainer, BadFilesNamesAndArgumentsChangeNothingAndNeverCrash) {
    ComboHosted h;
    ASSERT_NE(h.child, nullptr);
    IDispatch* d = h.dispatch.get();
    put(d, L"SupportPath", textArg(std::wstring(sharedDataPath("lin").getStringW()).c_str()));
    for (const wchar_t* file : {L"", L"no-such-file.lin", L"..", L"NUL", L"CON"}) {
        put(d, L"LinetypeFile", textArg(file));
        KivVariant name;
        name.v = textArg(L"DASHED");
        EXPECT_EQ(call(d, L"LoadLinetype", DISPATCH_METHOD, {name.v}, nullptr), S_OK) << narrow(file);
    }
    EXPECT_EQ(longResult(d, L"GetCount"), 3);
    DISPPARAMS none{nullptr, nullptr, 0, 0};
    KivVariant r;
    UINT argErr = 0;
    EXPECT_EQ(d->Invoke(4, IID_NULL, 0, DISPATCH_METHOD, &none, &r.v, nullptr, &argErr), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(d->Invoke(9, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, &argErr), DISP_E_BADPARAMCOUNT);
    VARIANT nullText;
    V_VT(&nullText) = VT_BSTR;
    V_BSTR(&nullText) = nullptr;
    EXPECT_EQ(call(d, L"DefineLinetype", DISPATCH_METHOD, {nullText, nullText}, nullptr), S_OK);
    EXPECT_EQ(longResult(d, L"GetCount"), 4);  // a row with an empty name and definition
    EXPECT_EQ(textResult(d, L"SelectItemAt", {longArg(2147483647L)}), "");
    // SetAboutDisplay is the combo's only.
    ListHosted list;
    ASSERT_NE(list.child, nullptr);
    LPOLESTR about = const_cast<LPOLESTR>(L"SetAboutDisplay");
    DISPID id = 0;
    EXPECT_EQ(list.dispatch->GetIDsOfNames(IID_NULL, &about, 1, 0, &id), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(list.dispatch->Invoke(17, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, &argErr), DISP_E_MEMBERNOTFOUND);
}
