// The colour control in the ActiveX frame: CKivColorCtrl (portable) over the real combo box, GDI and
// the system colour dialog, with the _DKivColor dispatch table. Win32 side.
#include <windows.h>

#include <commdlg.h>

#include <memory>

#include "CKivColorCtrl.h"
#include "KivGuids.h"
#include "KivLibrary.h"
#include "KivOleControl.h"
#include "KivResources.h"

namespace {

class KivColorControl;
const KivControlClass& colourClass();

class KivColorControl final : public KivOleControl, public IKivColorDialog {
public:
    KivColorControl() : KivOleControl(colourClass()), core(*this, *this) {}
    ~KivColorControl() override { destroyWindow(); }

    // CColorDialog with initial colour 0, no flags, no parent window.
    bool choose(KivColor initial, KivColor& chosen) override {
        static COLORREF custom[16] = {};
        CHOOSECOLORW cc{};
        cc.lStructSize = sizeof cc;
        cc.hwndOwner = nullptr;
        cc.rgbResult = initial;
        cc.lpCustColors = custom;
        cc.Flags = 0;
        if (!ChooseColorW(&cc)) return false;
        chosen = cc.rgbResult;
        return true;
    }

    CKivColorCtrl core;

protected:
    void onCreate(HWND window, const RECT& client) override {
        // The child over the control's rectangle, styles 0x50200E13, identifier 100.
        HWND combo = CreateWindowExW(0, L"COMBOBOX", L"", CKivColorComboBoxUtl::kStyle, client.left, client.top,
                                     client.right - client.left, client.bottom - client.top, window,
                                     reinterpret_cast<HMENU>(static_cast<INT_PTR>(CKivColorComboBoxUtl::kChildId)),
                                     kivmodule::instance(), nullptr);
        if (combo == nullptr) return;
        m_child = std::make_unique<KivWin32ChildList>(combo, KivWin32ChildList::Kind::ComboBox);
        core.OnCreate(*m_child, client.bottom - client.top);
    }
    void onDestroy() override {
        core.OnDestroyChild();  // the combo box is destroyed with the control's window
        m_child.reset();
    }
    void onSize(int width, int) override { core.OnSize(width); }
    void onSetFocus() override { core.OnSetFocus(); }
    void onEnabledChanged(bool enabled) override { core.OnEnabledChanged(enabled); }
    void onCommand(WPARAM wParam, LPARAM) override {
        if (LOWORD(wParam) == CKivColorComboBoxUtl::kChildId) core.OnCommand(HIWORD(wParam));
    }
    bool onDrawItem(const DRAWITEMSTRUCT& item) override {
        if (item.CtlID != CKivColorComboBoxUtl::kChildId) return false;
        KivGdiDC dc(item.hDC);
        core.comboBox.DrawItem(dc, KivFromDRAWITEMSTRUCT(item));
        return true;
    }
    bool onMeasureItem(MEASUREITEMSTRUCT& item) override {
        if (item.CtlID != CKivColorComboBoxUtl::kChildId) return false;
        KivMeasureItem measure;
        measure.itemID = static_cast<int>(item.itemID);
        measure.itemHeight = item.itemHeight;
        core.comboBox.MeasureItem(measure);
        item.itemHeight = measure.itemHeight;
        return true;
    }
    IKivChildList* childList() override { return m_child.get(); }

private:
    std::unique_ptr<KivWin32ChildList> m_child;
};

CKivColorCtrl& core(void* self) { return static_cast<KivColorControl*>(static_cast<KivOleControl*>(self))->core; }

// ---- Handlers: arguments arrive coerced to the dispatch map's types.
HRESULT getComboIndex(void* s, VARIANT*, VARIANT* r) { return KivReturnLong(r, core(s).GetComboIndex()); }
HRESULT putComboIndex(void* s, VARIANT* a, VARIANT*) { core(s).SetComboIndex(V_I4(&a[0])); return S_OK; }
HRESULT getBlock(void* s, VARIANT*, VARIANT* r) { return KivReturnLong(r, static_cast<long>(core(s).GetBlockColorIndex())); }
HRESULT putBlock(void* s, VARIANT* a, VARIANT*) { core(s).SetBlockColorIndex(static_cast<unsigned long>(V_I4(&a[0]))); return S_OK; }
HRESULT getLayer(void* s, VARIANT*, VARIANT* r) { return KivReturnLong(r, static_cast<long>(core(s).GetLayerColorIndex())); }
HRESULT putLayer(void* s, VARIANT* a, VARIANT*) { core(s).SetLayerColorIndex(static_cast<unsigned long>(V_I4(&a[0]))); return S_OK; }
HRESULT getDefault(void* s, VARIANT*, VARIANT* r) { return KivReturnLong(r, static_cast<long>(core(s).GetDefaultColorIndex())); }
HRESULT putDefault(void* s, VARIANT* a, VARIANT*) { core(s).SetDefaultColorIndex(static_cast<unsigned long>(V_I4(&a[0]))); return S_OK; }
HRESULT getApproval(void* s, VARIANT*, VARIANT* r) { return KivReturnLong(r, static_cast<long>(core(s).GetApprovalStatusColorIndex())); }
HRESULT putApproval(void* s, VARIANT* a, VARIANT*) { core(s).SetApprovalStatusColorIndex(static_cast<unsigned long>(V_I4(&a[0]))); return S_OK; }
HRESULT getDisplay(void* s, VARIANT*, VARIANT* r) { return KivReturnBool(r, core(s).GetDisplayApprovalStatusColor() != 0); }
HRESULT putDisplay(void* s, VARIANT* a, VARIANT*) { core(s).SetDisplayApprovalStatusColor(V_BOOL(&a[0]) != VARIANT_FALSE ? 1 : 0); return S_OK; }
HRESULT getSelColorIndex(void* s, VARIANT*, VARIANT* r) { return KivReturnShort(r, core(s).GetSelColorIndex()); }
HRESULT setSelColorIndex(void* s, VARIANT* a, VARIANT*) { core(s).SetSelColorIndex(V_I2(&a[0])); return S_OK; }
HRESULT addColorIndex(void* s, VARIANT* a, VARIANT* r) { return KivReturnBool(r, core(s).AddColorIndex(V_I2(&a[0]))); }
HRESULT setComboText(void* s, VARIANT* a, VARIANT*) { core(s).SetComboText(V_I4(&a[0]), KivTextArg(a[1])); return S_OK; }
HRESULT rgbEquivalent(void* s, VARIANT* a, VARIANT* r) { return KivReturnLong(r, static_cast<long>(core(s).RGB_Equivalent(V_I2(&a[0])))); }
HRESULT tevEquivalent(void* s, VARIANT* a, VARIANT* r) { return KivReturnShort(r, core(s).Tev_Equivalent(static_cast<unsigned long>(V_I4(&a[0])))); }
HRESULT findColor(void* s, VARIANT* a, VARIANT* r) { return KivReturnLong(r, core(s).FindColor(V_I2(&a[0]))); }
HRESULT setTooltipText(void* s, VARIANT* a, VARIANT*) { core(s).SetTooltipText(KivTextArg(a[0])); return S_OK; }
HRESULT aboutDisplay(void* s, VARIANT* a, VARIANT*) { core(s).AboutDisplay(V_BOOL(&a[0]) != VARIANT_FALSE); return S_OK; }

const KivParam kIdxTev[] = {{L"idxTev", KivTlbType::I2, VT_I2}};
const KivParam kComboText[] = {{L"color", KivTlbType::EColors, VT_I4}, {L"colorText", KivTlbType::Bstr, VT_BSTR}};
const KivParam kIdxRGB[] = {{L"idxRGB", KivTlbType::UI4, VT_I4}};
const KivParam kTxt[] = {{L"txt", KivTlbType::Bstr, VT_BSTR}};
const KivParam kDisplay[] = {{L"display", KivTlbType::I1, VT_BOOL}};
const KivParam kEventArgs[] = {{L"comboIdx", KivTlbType::I4, VT_I4}, {L"colorIdx", KivTlbType::I4, VT_I4}};

// _DKivColor: properties in the library's order, then the methods.
const KivMember kColor[] = {
    KIV_PROPERTY(ComboIndex, 1, I4, VT_I4, getComboIndex, putComboIndex),
    KIV_PROPERTY(BlockColorIndex, 2, UI4, VT_I4, getBlock, putBlock),
    KIV_PROPERTY(LayerColorIndex, 3, UI4, VT_I4, getLayer, putLayer),
    KIV_PROPERTY(DefaultColorIndex, 14, UI4, VT_I4, getDefault, putDefault),
    KIV_PROPERTY(ApprovalStatusColorIndex, 15, UI4, VT_I4, getApproval, putApproval),
    KIV_PROPERTY(DisplayApprovalStatusColor, 16, I4, VT_BOOL, getDisplay, putDisplay),
    KIV_STOCK_PROPERTY(Enabled, DISPID_ENABLED, I1, VT_BOOL, KivStockEnabledGet, KivStockEnabledPut),
    KIV_METHOD0(GetSelColorIndex, 5, I2, VT_I2, getSelColorIndex),
    KIV_METHOD(SetSelColorIndex, 6, Void, VT_EMPTY, kIdxTev, setSelColorIndex),
    KIV_METHOD(AddColorIndex, 7, I4, VT_BOOL, kIdxTev, addColorIndex),
    KIV_METHOD(SetComboText, 8, Void, VT_EMPTY, kComboText, setComboText),
    KIV_METHOD(RGB_Equivalent, 9, UI4, VT_I4, kIdxTev, rgbEquivalent),
    KIV_METHOD(Tev_Equivalent, 10, I2, VT_I2, kIdxRGB, tevEquivalent),
    KIV_METHOD(FindColor, 11, I4, VT_I4, kIdxTev, findColor),
    KIV_METHOD(SetTooltipText, 12, Void, VT_EMPTY, kTxt, setTooltipText),
    KIV_METHOD(AboutDisplay, 13, Void, VT_EMPTY, kDisplay, aboutDisplay),
};
const KivMember kColorEvents[] = {
    KIV_METHOD(SelChange, 1, Void, VT_EMPTY, kEventArgs, nullptr),
    KIV_METHOD(SelAndCloseUp, 2, Void, VT_EMPTY, kEventArgs, nullptr),
};

const KivControlClass& colourClass() {
    static const KivControlClass cls = {
        &CLSID_KivColorCtrl, &g_DKivColor, &g_DKivColorEvents, &CLSID_KivColorPropPage,
        IDS_KIVCOLOR, 0x00021191, kivstock::kEnabled, L"KivColorComboBox",
    };
    return cls;
}

}  // namespace

const KivDispInterface g_DKivColor = {L"_DKivColor", &DIID__DKivColor, L"Dispatch interface for KivColorControl", false,
                                      kColor, static_cast<int>(sizeof kColor / sizeof kColor[0])};
const KivDispInterface g_DKivColorEvents = {L"_DKivColorEvents", &DIID__DKivColorEvents, L"Event interface for KivColorControl",
                                            true, kColorEvents, static_cast<int>(sizeof kColorEvents / sizeof kColorEvents[0])};

HRESULT KivCreateColorControl(REFIID riid, void** out) { return KivCreateControl<KivColorControl>(riid, out); }
