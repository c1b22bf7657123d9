// The colour control in a real container under Wine: hosted by ATL's
// AtlAxWin, driven through the real combo box with input messages, listened to through its
// connection point, plus design mode, persistence, property pages, pixels and unloading.
#include <gtest/gtest.h>
#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

#include <cstdlib>
#include <memory>

#include "ContainerHost.h"
#include "KivCom.h"
#include "ModulePath.h"
#include "PngWriter.h"

#include <commctrl.h>

namespace {

const CLSID kColorClsid = {0x134FFBAD, 0x0ECF, 0x4346, {0xBA, 0x9D, 0x1E, 0xDC, 0x50, 0x7A, 0x8A, 0x56}};
const IID kColorEvents = {0xE2A8D3CB, 0xCEDE, 0x42DA, {0x88, 0x83, 0x15, 0x54, 0xCD, 0x80, 0x30, 0xDD}};
const CLSID kColorPage = {0x13C03DB5, 0x8843, 0x4B08, {0xBC, 0xA1, 0xF4, 0x03, 0x25, 0x86, 0xC7, 0x67}};

// The colour control hosted through AtlAxWin, with its combo box (id 100).
class ColourHosted : public Hosted {
public:
    explicit ColourHosted(int width = 200, int height = 21)
        : Hosted(L"KIVLORQCONTROLS.KivColorCtrl.1", kColorEvents, 100, width, height), combo(child) {}
    HWND combo;
};

using Container = ComTest;

}  // namespace

TEST_F(Container, HostsTheControlWithItsOwnerDrawnComboBox) {
    ColourHosted h;
    ASSERT_NE(h.dispatch.get(), nullptr);
    ASSERT_NE(h.controlWindow, nullptr);
    ASSERT_NE(h.combo, nullptr);
    wchar_t cls[64];
    GetClassNameW(h.combo, cls, 64);
    EXPECT_EQ(_wcsicmp(cls, L"ComboBox"), 0);
    EXPECT_EQ(GetDlgCtrlID(h.combo), 100);
    // Created with 0x50200E13; the combo box hands WS_VSCROLL on to its dropped list.
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongW(h.combo, GWL_STYLE)) & 0x50000E13u, 0x50000E13u);
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    ASSERT_TRUE(GetComboBoxInfo(h.combo, &info));
    EXPECT_NE(GetWindowLongW(info.hwndList, GWL_STYLE) & WS_VSCROLL, 0);
    EXPECT_EQ(reinterpret_cast<HFONT>(SendMessageW(h.combo, WM_GETFONT, 0, 0)), static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)));
    ASSERT_EQ(h.count(), 11);
    EXPECT_EQ(h.text(0), "ByLayer");
    EXPECT_EQ(h.text(10), "Select..");
    EXPECT_EQ(h.selection(), -1);
    EXPECT_EQ(SendMessageW(h.combo, CB_GETITEMDATA, 3, 0), 0x000000FF);
    EXPECT_EQ(longResult(h.dispatch.get(), L"GetSelColorIndex"), -1);
    // The selection field is the control's height less CKivDpi::getOwnerDrawComboBoxHeightDiff()
    // (measured from this system's combo box as CKivDpi_win.cpp does). The platform may echo a set
    // height with its own padding (Wine adds 2), so a probe combo of the same style, given that
    // height, tells what ours must read back.
    HWND measure = CreateWindowExW(0, L"COMBOBOX", L"", WS_POPUP | CBS_DROPDOWNLIST | CBS_HASSTRINGS, 0, 0, 100, 200, nullptr,
                                   nullptr, GetModuleHandleW(nullptr), nullptr);
    SendMessageW(measure, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    RECT measureRect;
    GetWindowRect(measure, &measureRect);
    const int diff = (measureRect.bottom - measureRect.top) -
                     static_cast<int>(SendMessageW(measure, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
    DestroyWindow(measure);
    EXPECT_EQ(SendMessageW(h.combo, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0), comboFieldReadBack(h.frame, 21 - diff));
    // Focus given to the control goes on to its combo box.
    SetFocus(h.controlWindow);
    pumpMessages(20);
    EXPECT_EQ(GetFocus(), h.combo);
}

TEST_F(Container, SettingTheSelectionFromTheHostFiresNothing) {
    ColourHosted h;
    ASSERT_NE(h.combo, nullptr);
    ASSERT_EQ(call(h.dispatch.get(), L"SetSelColorIndex", DISPATCH_METHOD, {shortArg(5)}, nullptr), S_OK);
    EXPECT_EQ(h.selection(), 7);
    EXPECT_EQ(longResult(h.dispatch.get(), L"GetSelColorIndex"), 5);
    ASSERT_EQ(call(h.dispatch.get(), L"AddColorIndex", DISPATCH_METHOD, {shortArg(42)}, nullptr), S_OK);
    EXPECT_EQ(h.text(10), "Color 42");
    pumpMessages(50);
    EXPECT_TRUE(h.events().empty());
}

// Wine's combo box sends CBN_SELENDOK (and, when dropped, CBN_CLOSEUP) before CBN_SELCHANGE; the
// control treats each notification as it arrives, so here SelAndCloseUp comes first. Both carry
// the colour of the item stored before the change (the deliberate stale colorIdx).
TEST_F(Container, KeyboardChoiceWhileClosed) {
    ColourHosted h;
    ASSERT_NE(h.combo, nullptr);
    call(h.dispatch.get(), L"SetSelColorIndex", DISPATCH_METHOD, {shortArg(1)}, nullptr);  // "Red" at 3
    SetFocus(h.combo);
    h.key(VK_DOWN);
    EXPECT_EQ(h.selection(), 4);
    EXPECT_EQ(h.events(), (std::vector<std::string>{"SelAndCloseUp(4,1)", "SelChange(4,2)"}));
    EXPECT_EQ(longResult(h.dispatch.get(), L"GetSelColorIndex"), 2);
}

TEST_F(Container, MouseChoiceInTheDroppedList) {
    ColourHosted h;
    ASSERT_NE(h.combo, nullptr);
    h.mousePick(7);
    EXPECT_EQ(h.selection(), 7);
    EXPECT_EQ(SendMessageW(h.combo, CB_GETDROPPEDSTATE, 0, 0), 0);
    // Nothing was stored before: the stale colour is the item data of no item, read as white (7).
    EXPECT_EQ(h.events(), (std::vector<std::string>{"SelAndCloseUp(7,7)", "SelChange(7,5)"}));
    EXPECT_EQ(longResult(h.dispatch.get(), L"GetSelColorIndex"), 5);
}

TEST_F(Container, OpeningAndClosingWithoutAChoiceFiresNothing) {
    ColourHosted h;
    ASSERT_NE(h.combo, nullptr);
    SendMessageW(h.combo, CB_SHOWDROPDOWN, TRUE, 0);
    pumpMessages(30);
    SendMessageW(h.combo, CB_SHOWDROPDOWN, FALSE, 0);
    pumpMessages(30);
    EXPECT_TRUE(h.events().empty());
}

TEST_F(Container, KeyboardChoiceInTheDroppedList) {
    ColourHosted h;
    ASSERT_NE(h.combo, nullptr);
    SetFocus(h.combo);
    h.key(VK_F4);  // opens the list
    EXPECT_NE(SendMessageW(h.combo, CB_GETDROPPEDSTATE, 0, 0), 0);
    h.key(VK_DOWN);
    h.key(VK_DOWN);
    h.key(VK_RETURN);  // confirms and closes
    EXPECT_EQ(SendMessageW(h.combo, CB_GETDROPPEDSTATE, 0, 0), 0);
    EXPECT_EQ(h.selection(), 1);
    // SelChange per move while dropped, SelAndCloseUp on closing; "ByLayer" and "ByBlock"
    // are white, and each event carries the colour stored before it (7 before anything was stored).
    EXPECT_EQ(h.events(), (std::vector<std::string>{"SelChange(0,7)", "SelChange(1,7)", "SelAndCloseUp(1,7)"}));
    EXPECT_EQ(longResult(h.dispatch.get(), L"GetSelColorIndex"), 0);
}

TEST_F(Container, SitedThroughAtlAxCreateControl) {
    HMODULE atl = LoadLibraryW(L"atl.dll");
    auto create = KivProcAddress<HRESULT(WINAPI*)(LPCOLESTR, HWND, IStream*, IUnknown**)>(atl, "AtlAxCreateControl");
    ASSERT_NE(create, nullptr);
    HWND frame = CreateWindowExW(0, L"STATIC", L"AtlAxCreateControl", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 60, 60, 240, 60,
                                 nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    KivComPtr<IUnknown> container;
    ASSERT_EQ(create(L"KIVLORQCONTROLS.KivColorCtrl.1", frame, nullptr, container.put()), S_OK);
    pumpMessages(100);
    HWND window = FindWindowExW(frame, nullptr, L"KivLorqControlWindow", nullptr);
    ASSERT_NE(window, nullptr);
    HWND combo = GetDlgItem(window, 100);
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(SendMessageW(combo, CB_GETCOUNT, 0, 0), 11);
    container.reset();
    DestroyWindow(frame);
    pumpMessages(50);
}

// "Select..": the real colour dialog (no owner), answered by a helper thread.
void answerColourDialog(HWND dialog, int red, int green, int blue) {
    SetDlgItemTextW(dialog, 706, std::to_wstring(red).c_str());
    SetDlgItemTextW(dialog, 707, std::to_wstring(green).c_str());
    SetDlgItemTextW(dialog, 708, std::to_wstring(blue).c_str());
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
}

TEST_F(Container, SelectConfirmedInTheColourDialogAddsTheSnappedColour) {
    ColourHosted h;
    ASSERT_NE(h.combo, nullptr);
    call(h.dispatch.get(), L"SetSelColorIndex", DISPATCH_METHOD, {shortArg(7)}, nullptr);  // "White" at 9
    SetFocus(h.combo);
    DialogAnswerer answer(L"#32770", nullptr, [](HWND d) { answerColourDialog(d, 0x56, 0x34, 0x12); });  // 0x00123456
    h.key(VK_DOWN);  // onto "Select.."
    EXPECT_TRUE(answer.answered());
    ASSERT_EQ(h.count(), 12);
    const std::string added = h.text(10);
    EXPECT_EQ(added.rfind("Color ", 0), 0u) << added;
    EXPECT_EQ(h.text(11), "Select..");
    EXPECT_EQ(h.selection(), 10);
    const long index = std::atol(added.c_str() + 6);
    EXPECT_EQ(longResult(h.dispatch.get(), L"GetSelColorIndex"), index);
    // The snapped colour is the palette's entry for that index.
    EXPECT_EQ(static_cast<long>(SendMessageW(h.combo, CB_GETITEMDATA, 10, 0)),
              longResult(h.dispatch.get(), L"RGB_Equivalent", {shortArg(static_cast<short>(index))}));
    // SelAndCloseUp reports the former position of "Select.." and the colour before the dialog.
    ASSERT_EQ(h.events().size(), 2u);
    EXPECT_EQ(h.events()[0], "SelAndCloseUp(10,7)");
    EXPECT_EQ(h.events()[1], "SelChange(10," + std::to_string(index) + ")");
}

TEST_F(Container, SelectCancelledRestoresTheSelection) {
    ColourHosted h;
    ASSERT_NE(h.combo, nullptr);
    call(h.dispatch.get(), L"SetSelColorIndex", DISPATCH_METHOD, {shortArg(7)}, nullptr);
    SetFocus(h.combo);
    DialogAnswerer answer(L"#32770", nullptr, [](HWND d) { PostMessageW(d, WM_COMMAND, IDCANCEL, 0); });
    h.key(VK_DOWN);
    EXPECT_TRUE(answer.answered());
    EXPECT_EQ(h.count(), 11);
    EXPECT_EQ(h.selection(), 9);
    EXPECT_EQ(longResult(h.dispatch.get(), L"GetSelColorIndex"), 7);
    ASSERT_GE(h.events().size(), 1u);
    EXPECT_EQ(h.events()[0], "SelAndCloseUp(9,7)");
}

TEST_F(Container, EnabledDisablesTheComboBox) {
    ColourHosted h;
    ASSERT_NE(h.combo, nullptr);
    ASSERT_EQ(call(h.dispatch.get(), L"Enabled", DISPATCH_PROPERTYPUT, {boolArg(false)}, nullptr), S_OK);
    EXPECT_FALSE(IsWindowEnabled(h.combo));
    ASSERT_EQ(call(h.dispatch.get(), L"Enabled", DISPATCH_PROPERTYPUT, {boolArg(true)}, nullptr), S_OK);
    EXPECT_TRUE(IsWindowEnabled(h.combo));
}

TEST_F(Container, ResizingMovesTheComboToTheDroppedHeight) {
    ColourHosted h;
    ASSERT_NE(h.combo, nullptr);
    KivComPtr<IOleInPlaceObject> inPlace;
    ASSERT_EQ(h.control->QueryInterface(IID_IOleInPlaceObject, inPlace.putVoid()), S_OK);
    RECT r{10, 10, 260, 31};
    ASSERT_EQ(inPlace->SetObjectRects(&r, &r), S_OK);
    pumpMessages(30);
    RECT combo;
    GetWindowRect(h.combo, &combo);
    EXPECT_EQ(combo.right - combo.left, 250);
    // The combo was moved to a height of 140 pixels at 96 dpi, scaled to the screen's dpi (210 at
    // 144, 280 at 192); the platform keeps that height as its closed field plus its dropped list
    // (CB_GETDROPPEDCONTROLRECT).
    RECT dropped;
    SendMessageW(h.combo, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped));
    EXPECT_EQ((dropped.bottom - dropped.top) + (combo.bottom - combo.top), MulDiv(140, screenLogPixels(LOGPIXELSY), 96));
}

// ---- Design mode and user mode, through IViewObject::Draw into a memory bitmap.

TEST_F(Container, DesignModeDrawsTheNameOnWhiteAndUserModeTheAmbientColour) {
    KivComPtr<IOleObject> object;
    ASSERT_EQ(CoCreateInstance(kColorClsid, nullptr, CLSCTX_INPROC_SERVER, IID_IOleObject, object.putVoid()), S_OK);
    auto* site = new AmbientSite();
    site->userMode = false;
    ASSERT_EQ(object->SetClientSite(site), S_OK);
    KivComPtr<IViewObject> view;
    ASSERT_EQ(object->QueryInterface(IID_IViewObject, view.putVoid()), S_OK);
    Canvas canvas(200, 21);
    const RECTL bounds{0, 0, 200, 21};
    ASSERT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc, &bounds, nullptr, nullptr, 0), S_OK);
    EXPECT_EQ(canvas.pixel(1, 1), RGB(255, 255, 255));
    int dark = 0;  // the text "KivColorComboBox", centred
    for (int y = 0; y < 21; ++y)
        for (int x = 0; x < 200; ++x)
            if (GetRValue(canvas.pixel(x, y)) < 128) ++dark;
    EXPECT_GT(dark, 30);
    site->userMode = true;
    ASSERT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc, &bounds, nullptr, nullptr, 0), S_OK);
    EXPECT_EQ(canvas.pixel(1, 1), static_cast<COLORREF>(site->backColor));
    EXPECT_EQ(canvas.pixel(100, 10), static_cast<COLORREF>(site->backColor));
    object->SetClientSite(nullptr);
    site->Release();
}

// ---- Persistence in MFC's layout.

KivComPtr<IDispatch> newColourControl() { return newControl(kColorClsid); }

TEST_F(Container, StreamRoundTripInMfcLayout) {
    KivComPtr<IDispatch> control = newColourControl();
    ASSERT_TRUE(control);
    KivComPtr<IOleObject> object;
    control->QueryInterface(IID_IOleObject, object.putVoid());
    SIZEL extent{5292, 556};
    object->SetExtent(DVASPECT_CONTENT, &extent);
    call(control.get(), L"Enabled", DISPATCH_PROPERTYPUT, {boolArg(false)}, nullptr);
    const std::vector<BYTE> bytes = saveStream(control.get());
    const std::vector<BYTE> expected = {0x00, 0x00, 0x01, 0x00,   // version 1.0
                                        0xAC, 0x14, 0x00, 0x00,   // extent x 5292
                                        0x2C, 0x02, 0x00, 0x00,   // extent y 556
                                        0x40, 0x00, 0x00, 0x00,   // stock mask: Enabled only
                                        0x00};                    // Enabled = FALSE
    EXPECT_EQ(bytes, expected);
    KivComPtr<IPersistStreamInit> persist;
    control->QueryInterface(IID_IPersistStreamInit, persist.putVoid());
    ULARGE_INTEGER size{};
    persist->GetSizeMax(&size);
    EXPECT_EQ(size.QuadPart, 17u);
    KivComPtr<IDispatch> other = newColourControl();
    ASSERT_EQ(loadStream(other.get(), bytes), S_OK);
    EXPECT_FALSE(enabledOf(other.get()));
    KivComPtr<IOleObject> otherObject;
    other->QueryInterface(IID_IOleObject, otherObject.putVoid());
    SIZEL loaded{};
    otherObject->GetExtent(DVASPECT_CONTENT, &loaded);
    EXPECT_EQ(loaded.cx, 5292);
    EXPECT_EQ(loaded.cy, 556);
}

TEST_F(Container, HandBuiltMfcBlobsLoad) {
    KivComPtr<IDispatch> control = newColourControl();
    // As MFC saves a colour control: Enabled true.
    EXPECT_EQ(loadStream(control.get(), {0x00, 0x00, 0x01, 0x00, 0x10, 0x27, 0, 0, 0x20, 0x03, 0, 0, 0x40, 0, 0, 0, 0x01}), S_OK);
    EXPECT_TRUE(enabledOf(control.get()));
    // With ForeColor and BackColor present (mask 0x49): their values are read past, Enabled false taken.
    EXPECT_EQ(loadStream(control.get(), {0x00, 0x00, 0x01, 0x00, 0x10, 0x27, 0, 0, 0x20, 0x03, 0, 0, 0x49, 0, 0, 0,
                                         0x08, 0, 0, 0x80, 0x05, 0, 0, 0x80, 0x00}),
              S_OK);
    EXPECT_FALSE(enabledOf(control.get()));
    // A truncated blob is refused and changes nothing.
    EXPECT_NE(loadStream(control.get(), {0x00, 0x00, 0x01, 0x00, 0x10, 0x27}), S_OK);
    EXPECT_NE(loadStream(control.get(), {0x00, 0x00, 0x01, 0x00, 0x10, 0x27, 0, 0, 0x20, 0x03, 0, 0, 0x40, 0, 0, 0}), S_OK);
    EXPECT_FALSE(enabledOf(control.get()));
}

TEST_F(Container, PropertyBagRoundTrip) {
    KivComPtr<IDispatch> control = newColourControl();
    KivComPtr<IPersistPropertyBag> persist;
    ASSERT_EQ(control->QueryInterface(IID_IPersistPropertyBag, persist.putVoid()), S_OK);
    ASSERT_EQ(persist->InitNew(), S_OK);
    call(control.get(), L"Enabled", DISPATCH_PROPERTYPUT, {boolArg(false)}, nullptr);
    auto* bag = new MemoryPropertyBag();
    ASSERT_EQ(persist->Save(bag, TRUE, TRUE), S_OK);
    EXPECT_EQ(V_I4(&bag->values[L"_Version"]), 0x10000);
    EXPECT_EQ(V_I4(&bag->values[L"_StockProps"]), 0x40);
    EXPECT_EQ(bag->values.count(L"_ExtentX"), 1u);
    EXPECT_EQ(bag->values.count(L"_ExtentY"), 1u);
    EXPECT_EQ(bag->values.count(L"ForeColor"), 0u);  // the colour control has no ForeColor
    EXPECT_EQ(V_VT(&bag->values[L"Enabled"]), VT_BOOL);
    EXPECT_EQ(V_BOOL(&bag->values[L"Enabled"]), VARIANT_FALSE);
    KivComPtr<IDispatch> other = newColourControl();
    KivComPtr<IPersistPropertyBag> otherPersist;
    other->QueryInterface(IID_IPersistPropertyBag, otherPersist.putVoid());
    ASSERT_EQ(otherPersist->Load(bag, nullptr), S_OK);
    EXPECT_FALSE(enabledOf(other.get()));
    bag->Release();
}

TEST_F(Container, StorageAndMemoryRoundTrips) {
    KivComPtr<IDispatch> control = newColourControl();
    call(control.get(), L"Enabled", DISPATCH_PROPERTYPUT, {boolArg(false)}, nullptr);
    const std::vector<BYTE> streamBytes = saveStream(control.get());
    // IPersistStorage: a "Contents" stream with the same bytes.
    KivComPtr<ILockBytes> bytes;
    ASSERT_EQ(CreateILockBytesOnHGlobal(nullptr, TRUE, bytes.put()), S_OK);
    KivComPtr<IStorage> storage;
    ASSERT_EQ(StgCreateDocfileOnILockBytes(bytes.get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, storage.put()), S_OK);
    KivComPtr<IPersistStorage> persistStorage;
    ASSERT_EQ(control->QueryInterface(IID_IPersistStorage, persistStorage.putVoid()), S_OK);
    ASSERT_EQ(persistStorage->Save(storage.get(), FALSE), S_OK);
    persistStorage->SaveCompleted(nullptr);
    KivComPtr<IStream> contents;
    ASSERT_EQ(storage->OpenStream(L"Contents", nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, contents.put()), S_OK);
    std::vector<BYTE> read(64);
    ULONG got = 0;
    contents->Read(read.data(), 64, &got);
    read.resize(got);
    EXPECT_EQ(read, streamBytes);
    contents.reset();
    KivComPtr<IDispatch> fromStorage = newColourControl();
    KivComPtr<IPersistStorage> loader;
    fromStorage->QueryInterface(IID_IPersistStorage, loader.putVoid());
    ASSERT_EQ(loader->Load(storage.get()), S_OK);
    EXPECT_FALSE(enabledOf(fromStorage.get()));
    // IPersistMemory.
    KivComPtr<IPersistMemory> memory;
    ASSERT_EQ(control->QueryInterface(IID_IPersistMemory, memory.putVoid()), S_OK);
    ULONG size = 0;
    memory->GetSizeMax(&size);
    std::vector<BYTE> block(size);
    ASSERT_EQ(memory->Save(block.data(), TRUE, size), S_OK);
    EXPECT_EQ(block, streamBytes);
    EXPECT_NE(memory->Save(block.data(), TRUE, size - 1), S_OK);  // too small
    KivComPtr<IDispatch> fromMemory = newColourControl();
    KivComPtr<IPersistMemory> memoryLoader;
    fromMemory->QueryInterface(IID_IPersistMemory, memoryLoader.putVoid());
    ASSERT_EQ(memoryLoader->Load(block.data(), size), S_OK);
    EXPECT_FALSE(enabledOf(fromMemory.get()));
}

// ---- Property pages.

TEST_F(Container, PropertyFrameShowsOneGeneralPageWithThePlaceholder) {
    KivComPtr<IDispatch> control = newColourControl();
    KivComPtr<ISpecifyPropertyPages> specify;
    ASSERT_EQ(control->QueryInterface(IID_ISpecifyPropertyPages, specify.putVoid()), S_OK);
    CAUUID pages{};
    ASSERT_EQ(specify->GetPages(&pages), S_OK);
    ASSERT_EQ(pages.cElems, 1u);
    EXPECT_TRUE(IsEqualCLSID(pages.pElems[0], kColorPage));
    const PropertyFrameSeen seen = showPropertyFrame(nullptr, control.get(), pages, IDOK);
    CoTaskMemFree(pages.pElems);
    EXPECT_EQ(seen.result, S_OK);
    EXPECT_TRUE(seen.answered);
    EXPECT_EQ(seen.tabs, 1);
    EXPECT_EQ(narrow(seen.tab), "General");
    EXPECT_EQ(seen.page, expectedPlaceholderPage("KivColorControl"));
    EXPECT_TRUE(enabledOf(control.get()));  // OK changed nothing
}

TEST_F(Container, StockEnabledNotifiesPropertyNotifySinks) {
    KivComPtr<IDispatch> control = newColourControl();
    KivComPtr<IConnectionPointContainer> cpc;
    ASSERT_EQ(control->QueryInterface(IID_IConnectionPointContainer, cpc.putVoid()), S_OK);
    KivComPtr<IConnectionPoint> point;
    ASSERT_EQ(cpc->FindConnectionPoint(IID_IPropertyNotifySink, point.put()), S_OK);
    NotifySink sink;
    DWORD cookie = 0;
    ASSERT_EQ(point->Advise(&sink, &cookie), S_OK);
    call(control.get(), L"Enabled", DISPATCH_PROPERTYPUT, {boolArg(false)}, nullptr);
    call(control.get(), L"Enabled", DISPATCH_PROPERTYPUT, {boolArg(false)}, nullptr);  // unchanged: no notice
    call(control.get(), L"LayerColorIndex", DISPATCH_PROPERTYPUT, {shortArg(5)}, nullptr);  // not bindable
    EXPECT_EQ(sink.changed, (std::vector<DISPID>{DISPID_ENABLED}));
    EXPECT_EQ(point->Unadvise(cookie), S_OK);
    EXPECT_EQ(point->Unadvise(cookie), CONNECT_E_NOCONNECTION);
    // Both connection points are enumerated; other interfaces have none.
    KivComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(cpc->EnumConnectionPoints(points.put()), S_OK);
    IConnectionPoint* got[3] = {};
    ULONG fetched = 0;
    EXPECT_EQ(points->Next(3, got, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 2u);
    for (ULONG i = 0; i < fetched; ++i) got[i]->Release();
    KivComPtr<IConnectionPoint> none;
    EXPECT_EQ(cpc->FindConnectionPoint(IID_IDispatch, none.put()), CONNECT_E_NOCONNECTION);
}

// ---- Pixels: the closed and the dropped control, saved as PNG artifacts.

TEST_F(Container, PixelsOfTheClosedAndDroppedControl) {
    ColourHosted h(200, 21);
    ASSERT_NE(h.combo, nullptr);
    call(h.dispatch.get(), L"SetSelColorIndex", DISPATCH_METHOD, {shortArg(1)}, nullptr);  // "Red"
    SetFocus(h.frame);  // no focus on the combo: its field is drawn plain
    RedrawWindow(h.frame, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    pumpMessages(100);
    CreateDirectoryW(L"Z:" KIV_ARTIFACT_DIR_W, nullptr);
    int w = 0, hgt = 0;
    std::vector<std::uint8_t> closed = grab(h.combo, w, hgt);
    ASSERT_GT(w, 0);
    EXPECT_TRUE(KivWritePng("Z:" KIV_ARTIFACT_DIR "/colour-closed.png", w, hgt, closed));
    std::printf("screenshot: %s/colour-closed.png\n", KIV_ARTIFACT_DIR);
    // The selection field's swatch: right edge at the item height, shrunk by 2.
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(h.combo, &info);
    const int itemH = info.rcItem.bottom - info.rcItem.top;
    const int swatchX = itemH - (itemH - 4) / 2 - 1, swatchY = (info.rcItem.top + info.rcItem.bottom) / 2;
    EXPECT_EQ(at(closed, w, swatchX, swatchY), RGB(255, 0, 0)) << "swatch of Red";

    // Dropped: each swatch in its item's colour, the selected item highlighted.
    SendMessageW(h.combo, CB_SHOWDROPDOWN, TRUE, 0);
    pumpMessages(100);
    int lw = 0, lh = 0;
    std::vector<std::uint8_t> dropped = grab(info.hwndList, lw, lh);
    ASSERT_GT(lw, 0);
    EXPECT_TRUE(KivWritePng("Z:" KIV_ARTIFACT_DIR "/colour-dropped.png", lw, lh, dropped));
    std::printf("screenshot: %s/colour-dropped.png\n", KIV_ARTIFACT_DIR);
    const COLORREF expected[] = {RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 255, 255), RGB(255, 0, 0),
                                 RGB(255, 255, 0),   RGB(0, 255, 0),     RGB(0, 255, 255),   RGB(0, 0, 255)};
    for (int i = 3; i < 8; ++i) {
        RECT item{};
        SendMessageW(info.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
        if (item.top < 0 || item.bottom > lh) continue;  // scrolled out of view
        const int ih = item.bottom - item.top;
        EXPECT_EQ(at(dropped, lw, ih - (ih - 4) / 2 - 1, (item.top + item.bottom) / 2), expected[i]) << "swatch of item " << i;
    }
    RECT selected{};
    SendMessageW(info.hwndList, LB_GETITEMRECT, 3, reinterpret_cast<LPARAM>(&selected));
    EXPECT_EQ(at(dropped, lw, lw - 3, (selected.top + selected.bottom) / 2), GetSysColor(COLOR_HIGHLIGHT)) << "highlight";
    RECT plain{};
    SendMessageW(info.hwndList, LB_GETITEMRECT, 4, reinterpret_cast<LPARAM>(&plain));
    EXPECT_EQ(at(dropped, lw, lw - 3, (plain.top + plain.bottom) / 2), GetSysColor(COLOR_WINDOW)) << "plain background";
    SendMessageW(h.combo, CB_SHOWDROPDOWN, FALSE, 0);
    pumpMessages(30);
}

// ---- IDispatch::Invoke edge cases, called directly.

TEST_F(Container, InvokeAnswersTheDispatchErrorCodesAndNeverCrashes) {
    KivComPtr<IDispatch> d = newColourControl();
    ASSERT_TRUE(d);
    DISPPARAMS none{nullptr, nullptr, 0, 0};
    KivVariant r;
    UINT argErr = 99;
    EXPECT_EQ(d->Invoke(4, IID_NULL, 0, DISPATCH_METHOD, &none, &r.v, nullptr, &argErr), DISP_E_MEMBERNOTFOUND);  // 4 is unused
    EXPECT_EQ(d->Invoke(999, IID_NULL, 0, DISPATCH_METHOD, &none, &r.v, nullptr, &argErr), DISP_E_MEMBERNOTFOUND);
    // GetIDsOfNames: any case; unknown names; parameter names.
    LPOLESTR names[2] = {const_cast<LPOLESTR>(L"setselcolorindex"), const_cast<LPOLESTR>(L"idxTev")};
    DISPID ids[2] = {};
    EXPECT_EQ(d->GetIDsOfNames(IID_NULL, names, 2, 0, ids), S_OK);
    EXPECT_EQ(ids[0], 6);
    EXPECT_EQ(ids[1], 0);
    names[0] = const_cast<LPOLESTR>(L"NoSuchMember");
    EXPECT_EQ(d->GetIDsOfNames(IID_NULL, names, 1, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], DISPID_UNKNOWN);
    // Wrong counts, named arguments on a method, uncoercible arguments (with the argument's index).
    VARIANT two[2];
    two[0] = shortArg(1);
    two[1] = shortArg(2);
    DISPPARAMS twoArgs{two, nullptr, 2, 0};
    EXPECT_EQ(d->Invoke(6, IID_NULL, 0, DISPATCH_METHOD, &twoArgs, nullptr, nullptr, &argErr), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(d->Invoke(6, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, &argErr), DISP_E_BADPARAMCOUNT);
    DISPID named = 0;
    DISPPARAMS namedArgs{two, &named, 1, 1};
    EXPECT_EQ(d->Invoke(6, IID_NULL, 0, DISPATCH_METHOD, &namedArgs, nullptr, nullptr, &argErr), DISP_E_NONAMEDARGS);
    KivVariant text;
    V_VT(&text.v) = VT_BSTR;
    V_BSTR(&text.v) = SysAllocString(L"not a number");
    VARIANT comboText[2];
    comboText[0] = shortArg(0);  // colorText (last argument first) — a short converts to a string
    comboText[1] = text.v;       // color: a string that is no number
    DISPPARAMS mismatch{comboText, nullptr, 2, 0};
    argErr = 99;
    EXPECT_EQ(d->Invoke(8, IID_NULL, 0, DISPATCH_METHOD, &mismatch, nullptr, nullptr, &argErr), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(argErr, 1u);  // rgvarg index of the failing argument
    // Property put needs the named DISPID_PROPERTYPUT; get takes no argument; null parameters are refused.
    VARIANT value = shortArg(3);
    DISPPARAMS putWithoutName{&value, nullptr, 1, 0};
    EXPECT_EQ(d->Invoke(1, IID_NULL, 0, DISPATCH_PROPERTYPUT, &putWithoutName, nullptr, nullptr, &argErr), DISP_E_PARAMNOTFOUND);
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS putArgs{&value, &put, 1, 1};
    EXPECT_EQ(d->Invoke(1, IID_NULL, 0, DISPATCH_PROPERTYPUT, &putArgs, nullptr, nullptr, &argErr), S_OK);
    EXPECT_EQ(longResult(d.get(), L"ComboIndex"), 3);
    EXPECT_EQ(d->Invoke(1, IID_NULL, 0, DISPATCH_PROPERTYGET, &twoArgs, &r.v, nullptr, &argErr), DISP_E_BADPARAMCOUNT);
    DISPPARAMS broken{nullptr, nullptr, 1, 0};
    EXPECT_EQ(d->Invoke(6, IID_NULL, 0, DISPATCH_METHOD, &broken, nullptr, nullptr, &argErr), E_INVALIDARG);
    // A VT_BYREF argument, as scripting hosts pass variables.
    short byRef = 5;
    VARIANT ref;
    V_VT(&ref) = VT_I2 | VT_BYREF;
    V_I2REF(&ref) = &byRef;
    DISPPARAMS refArgs{&ref, nullptr, 1, 0};
    EXPECT_EQ(d->Invoke(6, IID_NULL, 0, DISPATCH_METHOD, &refArgs, nullptr, nullptr, &argErr), S_OK);
    // Type information.
    UINT count = 0;
    EXPECT_EQ(d->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1u);
    KivComPtr<ITypeInfo> info;
    EXPECT_EQ(d->GetTypeInfo(0, 0, info.put()), S_OK);
    KivComPtr<IProvideClassInfo2> classInfo;
    ASSERT_EQ(d->QueryInterface(IID_IProvideClassInfo2, classInfo.putVoid()), S_OK);
    GUID source{};
    EXPECT_EQ(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source), S_OK);
    EXPECT_TRUE(IsEqualGUID(source, kColorEvents));
    KivComPtr<ITypeInfo> coclass;
    EXPECT_EQ(classInfo->GetClassInfo(coclass.put()), S_OK);
}

TEST_F(Container, AllSixPagesShowGeneralAndTheirPlaceholder) {
    const std::pair<const wchar_t*, const char*> pages[] = {
        {L"{13C03DB5-8843-4B08-BCA1-F4032586C767}", "KivColorControl"},
        {L"{6DA7E9FD-46EE-4123-8CBB-9ADCACFB1ED4}", "KivLayerControl"},
        {L"{FC9C7841-BFED-489D-9DB9-49551B27B6EC}", "KivLinetypeControl"},
        {L"{6646D52E-EC7D-403B-874A-3AE343EE9A1C}", "KivLineweightControl"},
        {L"{632E700B-7FB5-4682-B2F2-BF1D5111058D}", "KivHatchControl"},
        {L"{4ED48E07-66E0-493E-A53B-1B8D8C6B80A3}", "KivLinetypeListControl"},
    };
    HWND parent = CreateWindowExW(0, L"STATIC", L"pages", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 500, 200, nullptr, nullptr,
                                  GetModuleHandleW(nullptr), nullptr);
    for (const auto& [clsidText, control] : pages) {
        SCOPED_TRACE(control);
        CLSID clsid{};
        CLSIDFromString(clsidText, &clsid);
        KivComPtr<IPropertyPage> page;
        ASSERT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IPropertyPage, page.putVoid()), S_OK);
        expectPlaceholderPageObject(page.get(), parent, control);
    }
    DestroyWindow(parent);
}

// Last: with every object released, the module may be unloaded.
TEST_F(Container, ZzModuleCanUnloadWhenEverythingIsReleased) {
    KivComPtr<IDispatch> alive = newColourControl();  // loads the module
    ASSERT_TRUE(moduleLoaded());
    EXPECT_EQ(canUnloadNow(), S_FALSE);
    alive.reset();
    EXPECT_EQ(canUnloadNow(), S_OK);
}
