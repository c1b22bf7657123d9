// The lineweight control in a real container under Wine: created by its ProgID in ATL's AtlAxWin,
// its real combo box (style, id 103, no font set, 27 items with their codes), keyboard and mouse
// choices with their events, Enabled, the literal dropped height, the design-mode face,
// persistence, dispatch error codes, and the bars read back from real pixels.
#include <gtest/gtest.h>
#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

#include <cstdio>

#include "ContainerHost.h"
#include "PngWriter.h"

namespace {

const CLSID kLineweightClsid = {0xFB47E4A7, 0x11D0, 0x4FFE, {0x9E, 0xC1, 0xEE, 0xF7, 0xC8, 0x04, 0x7D, 0x13}};
const IID kLineweightEvents = {0xB67DDBB9, 0xC50E, 0x4CE2, {0xA7, 0x0C, 0xF5, 0xA5, 0xD5, 0x9A, 0x92, 0xAF}};
const CLSID kLineweightPage = {0x6646D52E, 0xEC7D, 0x403B, {0x87, 0x4A, 0x3A, 0xE3, 0x43, 0xEE, 0x9A, 0x1C}};
const wchar_t kProgId[] = L"KIVLORQCONTROLS.KivLineweightCtrl.1";

class LineweightHosted : public Hosted {
public:
    explicit LineweightHosted(int width = 200, int height = 21) : Hosted(kProgId, kLineweightEvents, 103, width, height) {}
};

using Strings = std::vector<std::string>;
using LineweightContainer = ComTest;

}  // namespace

TEST_F(LineweightContainer, CreatedByProgIdWithItsOwnerDrawnComboBoxOfTwentySevenItems) {
    LineweightHosted h;
    ASSERT_NE(h.dispatch.get(), nullptr);
    ASSERT_NE(h.child, nullptr);
    wchar_t cls[64];
    GetClassNameW(h.child, cls, 64);
    EXPECT_EQ(_wcsicmp(cls, L"ComboBox"), 0);
    EXPECT_EQ(GetDlgCtrlID(h.child), 103);
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongW(h.child, GWL_STYLE)) & 0x50000E13u, 0x50000E13u);
    ASSERT_EQ(h.count(), 27);
    EXPECT_EQ(h.text(0), "ByLayer");
    EXPECT_EQ(h.text(3), "0.000 \"");
    EXPECT_EQ(h.text(10), "0.010 \"");
    EXPECT_EQ(h.text(26), "0.083 \"");
    EXPECT_EQ(h.itemData(0), -1);
    EXPECT_EQ(h.itemData(2), -3);
    EXPECT_EQ(h.itemData(10), 25);
    EXPECT_EQ(h.itemData(26), 211);
    EXPECT_EQ(h.selection(), -1);
    EXPECT_EQ(longResult(h.dispatch.get(), L"GetCurrentItemLineWeight"), -1);
    // No WM_SETFONT was sent: the combo box answers no font of its own (the system font).
    EXPECT_EQ(SendMessageW(h.child, WM_GETFONT, 0, 0), 0);
    // No CB_SETITEMHEIGHT: the selection field keeps the height a combo box of this style gets by
    // itself, as a probe combo shows.
    HWND probe = CreateWindowExW(0, L"COMBOBOX", L"", 0x50200E13 & ~WS_VISIBLE, 0, 0, 200, 21, h.frame, nullptr,
                                 GetModuleHandleW(nullptr), nullptr);
    const LRESULT defaultField = SendMessageW(probe, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0);
    DestroyWindow(probe);
    EXPECT_EQ(SendMessageW(h.child, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0), defaultField);
    // Focus given to the control goes on to its combo box.
    SetFocus(h.controlWindow);
    pumpMessages(20);
    EXPECT_EQ(GetFocus(), h.child);
}

TEST_F(LineweightContainer, SelectionsAndLabelsSetByTheHostFireNothing) {
    LineweightHosted h;
    ASSERT_NE(h.child, nullptr);
    IDispatch* d = h.dispatch.get();
    ASSERT_EQ(call(d, L"SelectItemByLineWeight", DISPATCH_METHOD, {longArg(25)}, nullptr), S_OK);
    EXPECT_EQ(h.selection(), 10);
    EXPECT_EQ(longResult(d, L"GetCurrentItemLineWeight"), 25);
    ASSERT_EQ(put(d, L"Measurement", shortArg(1)), S_OK);
    EXPECT_EQ(h.text(10), "0.25 mm");
    EXPECT_EQ(h.selection(), 10);
    EXPECT_EQ(longResult(d, L"Measurement"), 1);
    KivVariant label;
    label.v = textArg(L"2.11 mm");
    EXPECT_EQ(textResult(d, L"SelectItem", {label.v}), "");
    EXPECT_EQ(h.selection(), 26);
    KivVariant byBlock;
    byBlock.v = textArg(L"VonBlock");
    ASSERT_EQ(call(d, L"SetByBlockText", DISPATCH_METHOD, {byBlock.v}, nullptr), S_OK);
    EXPECT_EQ(h.text(1), "VonBlock");
    EXPECT_EQ(textResult(d, L"GetItemText", {longArg(1)}), "VonBlock");
    EXPECT_EQ(textResult(d, L"GetItemText", {longArg(27)}), "");
    EXPECT_EQ(textResult(d, L"GetItemText", {longArg(-1)}), "");
    ASSERT_EQ(put(d, L"Measurement", shortArg(0)), S_OK);
    EXPECT_EQ(h.text(1), "VonBlock");
    EXPECT_EQ(h.selection(), 26);
    pumpMessages(50);
    EXPECT_TRUE(h.events().empty());
}

// Wine's combo box sends CBN_SELENDOK before CBN_SELCHANGE for a key press on the closed list; the
// control treats each notification as it arrives, so SelAndCloseUp comes first. Both carry the label.
TEST_F(LineweightContainer, KeyboardChoiceWhileClosed) {
    LineweightHosted h;
    ASSERT_NE(h.child, nullptr);
    call(h.dispatch.get(), L"SelectItemByLineWeight", DISPATCH_METHOD, {longArg(25)}, nullptr);
    SetFocus(h.child);
    h.key(VK_DOWN);
    EXPECT_EQ(h.selection(), 11);
    EXPECT_EQ(h.events(), (Strings{"SelAndCloseUp(\"0.012 \"\")", "SelChange(\"0.012 \"\")"}));
    EXPECT_EQ(longResult(h.dispatch.get(), L"GetCurrentItemLineWeight"), 30);
}

TEST_F(LineweightContainer, MouseChoiceInTheDroppedList) {
    LineweightHosted h;
    ASSERT_NE(h.child, nullptr);
    put(h.dispatch.get(), L"Measurement", shortArg(1));
    h.mousePick(4);
    EXPECT_EQ(h.selection(), 4);
    EXPECT_EQ(SendMessageW(h.child, CB_GETDROPPEDSTATE, 0, 0), 0);
    EXPECT_EQ(h.events(), (Strings{"SelAndCloseUp(\"0.05 mm\")", "SelChange(\"0.05 mm\")"}));
    EXPECT_EQ(longResult(h.dispatch.get(), L"GetCurrentItemLineWeight"), 5);
}

TEST_F(LineweightContainer, OpeningAndClosingWithoutAChoiceFiresNothing) {
    LineweightHosted h;
    ASSERT_NE(h.child, nullptr);
    SendMessageW(h.child, CB_SHOWDROPDOWN, TRUE, 0);
    pumpMessages(30);
    SendMessageW(h.child, CB_SHOWDROPDOWN, FALSE, 0);
    pumpMessages(30);
    EXPECT_TRUE(h.events().empty());
}

TEST_F(LineweightContainer, KeyboardChoiceInTheDroppedList) {
    LineweightHosted h;
    ASSERT_NE(h.child, nullptr);
    SetFocus(h.child);
    h.key(VK_F4);  // opens the list
    EXPECT_NE(SendMessageW(h.child, CB_GETDROPPEDSTATE, 0, 0), 0);
    h.key(VK_DOWN);
    h.key(VK_DOWN);
    h.key(VK_RETURN);
    EXPECT_EQ(SendMessageW(h.child, CB_GETDROPPEDSTATE, 0, 0), 0);
    EXPECT_EQ(h.selection(), 1);
    // SelChange per move while dropped, SelAndCloseUp once on closing.
    EXPECT_EQ(h.events(), (Strings{"SelChange(\"ByLayer\")", "SelChange(\"ByBlock\")", "SelAndCloseUp(\"ByBlock\")"}));
    EXPECT_EQ(longResult(h.dispatch.get(), L"GetCurrentItemLineWeight"), -2);
}

TEST_F(LineweightContainer, EnabledDisablesTheComboBox) {
    LineweightHosted h;
    ASSERT_NE(h.child, nullptr);
    ASSERT_EQ(put(h.dispatch.get(), L"Enabled", boolArg(false)), S_OK);
    EXPECT_FALSE(IsWindowEnabled(h.child));
    EXPECT_FALSE(enabledOf(h.dispatch.get()));
    ASSERT_EQ(put(h.dispatch.get(), L"Enabled", boolArg(true)), S_OK);
    EXPECT_TRUE(IsWindowEnabled(h.child));
}

TEST_F(LineweightContainer, ResizingMovesTheComboToALiteral140Pixels) {
    LineweightHosted h;
    ASSERT_NE(h.child, nullptr);
    KivComPtr<IOleInPlaceObject> inPlace;
    ASSERT_EQ(h.control->QueryInterface(IID_IOleInPlaceObject, inPlace.putVoid()), S_OK);
    RECT r{10, 10, 240, 41};
    ASSERT_EQ(inPlace->SetObjectRects(&r, &r), S_OK);
    pumpMessages(30);
    RECT combo;
    GetWindowRect(h.child, &combo);
    EXPECT_EQ(combo.right - combo.left, 230);
    RECT dropped;
    SendMessageW(h.child, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped));
    EXPECT_EQ((dropped.bottom - dropped.top) + (combo.bottom - combo.top), 140);
}

TEST_F(LineweightContainer, DesignModeDrawsItsNameOnWhiteAndUserModeTheAmbientColour) {
    KivComPtr<IOleObject> object;
    ASSERT_EQ(CoCreateInstance(kLineweightClsid, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject, object.putVoid()), S_OK);
    auto* site = new AmbientSite();
    site->userMode = false;
    ASSERT_EQ(object->SetClientSite(site), S_OK);
    KivComPtr<IViewObject> view;
    ASSERT_EQ(object->QueryInterface(IID_IViewObject, view.putVoid()), S_OK);
    Canvas canvas(200, 21);
    const RECTL bounds{0, 0, 200, 21};
    ASSERT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc, &bounds, nullptr, nullptr, 0), S_OK);
    // Exactly the face drawn by GDI itself: its name on white, centred on the baseline.
    Canvas expected(200, 21);
    drawExpectedDesignFace(expected, L"KivLineweightComboBox");
    EXPECT_EQ(differingPixels(canvas, expected), 0);
    Canvas other(200, 21);
    drawExpectedDesignFace(other, L"KivColorComboBox");
    EXPECT_GT(differingPixels(canvas, other), 0);  // the comparison tells the names apart
    site->userMode = true;
    ASSERT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc, &bounds, nullptr, nullptr, 0), S_OK);
    EXPECT_EQ(canvas.pixel(100, 10), static_cast<COLORREF>(site->backColor));
    object->SetClientSite(nullptr);
    site->Release();
}

TEST_F(LineweightContainer, PersistsOnlyItsVersionAndEnabledInMfcLayout) {
    KivComPtr<IDispatch> control = newControl(kLineweightClsid);
    ASSERT_TRUE(control);
    KivComPtr<IOleObject> object;
    control->QueryInterface(IID_IOleObject, object.putVoid());
    SIZEL extent{5292, 556};
    object->SetExtent(DVASPECT_CONTENT, &extent);
    put(control.get(), L"Measurement", shortArg(1));  // not persisted
    call(control.get(), L"SelectItemByLineWeight", DISPATCH_METHOD, {longArg(25)}, nullptr);
    put(control.get(), L"Enabled", boolArg(false));
    const std::vector<BYTE> bytes = saveStream(control.get());
    const std::vector<BYTE> expected = {0x00, 0x00, 0x01, 0x00, 0xAC, 0x14, 0x00, 0x00, 0x2C, 0x02,
                                        0x00, 0x00, 0x40, 0x00, 0x00, 0x00, 0x00};
    EXPECT_EQ(bytes, expected);
    KivComPtr<IDispatch> other = newControl(kLineweightClsid);
    ASSERT_EQ(loadStream(other.get(), bytes), S_OK);
    EXPECT_FALSE(enabledOf(other.get()));
    EXPECT_EQ(longResult(other.get(), L"Measurement"), 0);
    EXPECT_EQ(longResult(other.get(), L"GetCurrentItemLineWeight"), -1);
    // A property bag holds the version, the extent, the stock mask and Enabled; nothing of its own.
    KivComPtr<IPersistPropertyBag> persist;
    ASSERT_EQ(control->QueryInterface(IID_IPersistPropertyBag, persist.putVoid()), S_OK);
    auto* bag = new MemoryPropertyBag();
    ASSERT_EQ(persist->Save(bag, TRUE, TRUE), S_OK);
    std::vector<std::wstring> names;
    for (const auto& [name, value] : bag->values) names.push_back(name);
    EXPECT_EQ(names, (std::vector<std::wstring>{L"Enabled", L"_ExtentX", L"_ExtentY", L"_StockProps", L"_Version"}));
    KivComPtr<IDispatch> fromBag = newControl(kLineweightClsid);
    KivComPtr<IPersistPropertyBag> loader;
    fromBag->QueryInterface(IID_IPersistPropertyBag, loader.putVoid());
    ASSERT_EQ(loader->Load(bag, nullptr), S_OK);
    EXPECT_FALSE(enabledOf(fromBag.get()));
    bag->Release();
}

TEST_F(LineweightContainer, ItsOnePropertyPage) {
    KivComPtr<IDispatch> control = newControl(kLineweightClsid);
    KivComPtr<ISpecifyPropertyPages> specify;
    ASSERT_EQ(control->QueryInterface(IID_ISpecifyPropertyPages, specify.putVoid()), S_OK);
    CAUUID pages{};
    ASSERT_EQ(specify->GetPages(&pages), S_OK);
    ASSERT_EQ(pages.cElems, 1u);
    EXPECT_TRUE(IsEqualCLSID(pages.pElems[0], kLineweightPage));
    CoTaskMemFree(pages.pElems);
}

TEST_F(LineweightContainer, BadArgumentsGetTheDispatchErrorCodesAndChangeNothing) {
    KivComPtr<IDispatch> d = newControl(kLineweightClsid);
    ASSERT_TRUE(d);
    DISPPARAMS none{nullptr, nullptr, 0, 0};
    KivVariant r;
    UINT argErr = 99;
    EXPECT_EQ(d->Invoke(11, IID_NULL, 0, DISPATCH_METHOD, &none, &r.v, nullptr, &argErr), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(d->Invoke(6, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, &argErr), DISP_E_BADPARAMCOUNT);
    KivVariant text;
    text.v = textArg(L"twenty-five");
    DISPPARAMS mismatch{&text.v, nullptr, 1, 0};
    EXPECT_EQ(d->Invoke(6, IID_NULL, 0, DISPATCH_METHOD, &mismatch, nullptr, nullptr, &argErr), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(argErr, 0u);
    EXPECT_EQ(put(d.get(), L"Measurement", longArg(100000)), DISP_E_TYPEMISMATCH);  // beyond 16 bits: refused
    EXPECT_EQ(longResult(d.get(), L"Measurement"), 0);
    DISPID named = 0;
    VARIANT one = longArg(25);
    DISPPARAMS namedArgs{&one, &named, 1, 1};
    EXPECT_EQ(d->Invoke(6, IID_NULL, 0, DISPATCH_METHOD, &namedArgs, nullptr, nullptr, &argErr), DISP_E_NONAMEDARGS);
    // A null BSTR is an empty text; a large one is simply not found.
    VARIANT nullText;
    V_VT(&nullText) = VT_BSTR;
    V_BSTR(&nullText) = nullptr;
    EXPECT_EQ(textResult(d.get(), L"SelectItem", {nullText}), "");
    std::wstring big(1 << 20, L'9');
    KivVariant huge;
    huge.v = textArg(big.c_str());
    EXPECT_EQ(textResult(d.get(), L"SelectItem", {huge.v}), "");
    EXPECT_EQ(longResult(d.get(), L"GetCurrentItemLineWeight"), -1);
    // The control still works.
    EXPECT_EQ(call(d.get(), L"SelectItemByLineWeight", DISPATCH_METHOD, {longArg(211)}, nullptr), S_OK);
    EXPECT_EQ(longResult(d.get(), L"GetCurrentItemLineWeight"), 211);
}

// The bars read back from the screen: in the dropped list each item's bar is as thick as its weight
// (ByLayer 1 pixel, 2.11 mm the thickest, two pixels less than the item), black, at the left quarter.
// The list's height is a fixed 140 pixels at every dpi (kept), so at higher scales fewer items show:
// each item is scrolled into view before its bar is read.
TEST_F(LineweightContainer, PixelsOfTheBars) {
    LineweightHosted h(200, 21);
    ASSERT_NE(h.child, nullptr);
    put(h.dispatch.get(), L"Measurement", shortArg(1));
    SendMessageW(h.child, CB_SHOWDROPDOWN, TRUE, 0);
    pumpMessages(100);
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    ASSERT_TRUE(GetComboBoxInfo(h.child, &info));
    const int itemHeight = static_cast<int>(SendMessageW(info.hwndList, LB_GETITEMHEIGHT, 0, 0));
    ASSERT_GT(itemHeight, 4);
    // The height of the black run in the bar's column inside one item, the item scrolled into view.
    auto barOf = [&](int index) {
        SendMessageW(info.hwndList, LB_SETTOPINDEX, static_cast<WPARAM>(index), 0);
        pumpMessages(50);
        int w = 0, hgt = 0;
        const std::vector<std::uint8_t> rgb = grab(info.hwndList, w, hgt);
        RECT item{};
        SendMessageW(info.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
        if (item.top < 0 || item.bottom > hgt) return -1;  // still out of view
        int run = 0;
        for (int y = item.top; y < item.bottom; ++y)
            if (at(rgb, w, 5, y) == RGB(0, 0, 0)) ++run;
        return run;
    };
    CreateDirectoryW(L"Z:" KIV_ARTIFACT_DIR_W, nullptr);
    int w = 0, hgt = 0;
    std::vector<std::uint8_t> top = grab(info.hwndList, w, hgt);
    ASSERT_GT(w, 0);
    EXPECT_TRUE(KivWritePng("Z:" KIV_ARTIFACT_DIR "/lineweight-dropped-top.png", w, hgt, top));
    std::printf("screenshot: %s/lineweight-dropped-top.png\n", KIV_ARTIFACT_DIR);
    // The right edge of the bar is at a quarter of the item's width.
    RECT first{};
    SendMessageW(info.hwndList, LB_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&first));
    const int quarter = (first.right - first.left) / 4;
    const int middle = (first.top + first.bottom) / 2;
    EXPECT_EQ(at(top, w, quarter - 2, middle), RGB(0, 0, 0));
    EXPECT_NE(at(top, w, quarter + 1, middle), RGB(0, 0, 0));

    EXPECT_EQ(barOf(0), 1) << "ByLayer";
    EXPECT_EQ(barOf(3), 1) << "0.00 mm";
    EXPECT_EQ(barOf(4), std::max(1, (itemHeight - 2) * 5 / 211)) << "0.05 mm";
    const int thickest = barOf(26);
    EXPECT_EQ(thickest, itemHeight - 2) << "2.11 mm";
    EXPECT_EQ(barOf(25), std::max(1, (itemHeight - 2) * 200 / 211)) << "2.00 mm";
    for (int i = 3; i < 26; ++i) EXPECT_LT(barOf(i), thickest) << i;
    int bw = 0, bh = 0;
    const std::vector<std::uint8_t> bottom = grab(info.hwndList, bw, bh);
    EXPECT_TRUE(KivWritePng("Z:" KIV_ARTIFACT_DIR "/lineweight-dropped-bottom.png", bw, bh, bottom));
    std::printf("screenshot: %s/lineweight-dropped-bottom.png\n", KIV_ARTIFACT_DIR);
    SendMessageW(h.child, CB_SHOWDROPDOWN, FALSE, 0);
    pumpMessages(30);
}
