// The lineweight control in the ActiveX frame: CKivLineweightCtrl (portable) over the real combo box
// and GDI, with the _DKivLineweight dispatch table. Win32 side.
#include <windows.h>

#include <memory>

#include "CKivLineweightCtrl.h"
#include "KivGuids.h"
#include "KivLibrary.h"
#include "KivOleControl.h"
#include "KivResources.h"

namespace {

const KivControlClass& lineweightClass();

class KivLineweightControl final : public KivOleControl {
public:
    KivLineweightControl() : KivOleControl(lineweightClass()), core(*this) {}
    ~KivLineweightControl() override { destroyWindow(); }

    CKivLineweightCtrl core;

protected:
    void onCreate(HWND window, const RECT& client) override {
        // The child over the control's rectangle, identifier 103. No WM_SETFONT and no selection
        // field height: the combo keeps the platform's font and item height (kept as it was).
        HWND combo = CreateWindowExW(0, L"COMBOBOX", L"", CKivLineweightComboBoxUtl::kStyle, client.left, client.top,
                                     client.right - client.left, client.bottom - client.top, window,
                                     reinterpret_cast<HMENU>(static_cast<INT_PTR>(CKivLineweightComboBoxUtl::kChildId)),
                                     kivmodule::instance(), nullptr);
        if (combo == nullptr) return;
        m_child = std::make_unique<KivWin32ChildList>(combo, KivWin32ChildList::Kind::ComboBox);
        core.OnCreate(*m_child);
    }
    void onDestroy() override {
        core.OnDestroyChild();
        m_child.reset();
    }
    void onSize(int width, int) override { core.OnSize(width); }
    void onSetFocus() override { core.OnSetFocus(); }
    void onEnabledChanged(bool enabled) override { core.OnEnabledChanged(enabled); }
    void onCommand(WPARAM wParam, LPARAM) override {
        if (LOWORD(wParam) == CKivLineweightComboBoxUtl::kChildId) core.OnCommand(HIWORD(wParam));
    }
    bool onDrawItem(const DRAWITEMSTRUCT& item) override {
        if (item.CtlID != CKivLineweightComboBoxUtl::kChildId) return false;
        KivGdiDC dc(item.hDC);
        core.comboBox.DrawItem(dc, KivFromDRAWITEMSTRUCT(item));
        return true;
    }
    // No onMeasureItem: the combo's default item height for its font stays.
    IKivChildList* childList() override { return m_child.get(); }

private:
    std::unique_ptr<KivWin32ChildList> m_child;
};

CKivLineweightCtrl& core(void* self) {
    return static_cast<KivLineweightControl*>(static_cast<KivOleControl*>(self))->core;
}

// ---- Handlers: arguments arrive coerced to the dispatch map's types.
HRESULT getTooltip(void* s, VARIANT*, VARIANT* r) { return KivReturnText(r, core(s).GetTooltipText()); }
HRESULT putTooltip(void* s, VARIANT* a, VARIANT*) { core(s).SetTooltipText(KivTextArg(a[0])); return S_OK; }
HRESULT getMeasurement(void* s, VARIANT*, VARIANT* r) { return KivReturnShort(r, core(s).GetMeasurement()); }
HRESULT putMeasurement(void* s, VARIANT* a, VARIANT*) { core(s).SetMeasurement(V_I2(&a[0])); return S_OK; }
HRESULT selectItem(void* s, VARIANT* a, VARIANT* r) { return KivReturnText(r, core(s).SelectItem(KivTextArg(a[0]))); }
HRESULT currentLineWeight(void* s, VARIANT*, VARIANT* r) { return KivReturnLong(r, core(s).GetCurrentItemLineWeight()); }
HRESULT itemText(void* s, VARIANT* a, VARIANT* r) { return KivReturnText(r, core(s).GetItemText(V_I4(&a[0]))); }
HRESULT selectByLineWeight(void* s, VARIANT* a, VARIANT*) { core(s).SelectItemByLineWeight(V_I4(&a[0])); return S_OK; }
HRESULT byLayerText(void* s, VARIANT* a, VARIANT*) { core(s).SetByLayerText(KivTextArg(a[0])); return S_OK; }
HRESULT byBlockText(void* s, VARIANT* a, VARIANT*) { core(s).SetByBlockText(KivTextArg(a[0])); return S_OK; }
HRESULT definitionText(void* s, VARIANT* a, VARIANT*) { core(s).SetDefinitionText(KivTextArg(a[0])); return S_OK; }
HRESULT aboutDisplay(void* s, VARIANT* a, VARIANT*) { core(s).SetAboutDisplay(V_BOOL(&a[0]) != VARIANT_FALSE); return S_OK; }

const KivParam kIndexText[] = {{L"index", KivTlbType::Bstr, VT_BSTR}};
const KivParam kIndexLong[] = {{L"index", KivTlbType::I4, VT_I4}};
const KivParam kLw[] = {{L"lw", KivTlbType::I4, VT_I4}};
const KivParam kTxt[] = {{L"txt", KivTlbType::Bstr, VT_BSTR}};
const KivParam kDisplay[] = {{L"display", KivTlbType::I1, VT_BOOL}};
const KivParam kValue[] = {{L"value", KivTlbType::Bstr, VT_BSTR}};
const KivParam kName[] = {{L"name", KivTlbType::Bstr, VT_BSTR}};

// _DKivLineweight: the properties Enabled, TooltipText, Measurement, then the methods.
const KivMember kLineweight[] = {
    KIV_STOCK_PROPERTY(Enabled, DISPID_ENABLED, I1, VT_BOOL, KivStockEnabledGet, KivStockEnabledPut),
    KIV_PROPERTY(TooltipText, 1, Bstr, VT_BSTR, getTooltip, putTooltip),
    KIV_PROPERTY(Measurement, 2, I2, VT_I2, getMeasurement, putMeasurement),
    KIV_METHOD(SelectItem, 3, Bstr, VT_BSTR, kIndexText, selectItem),
    KIV_METHOD0(GetCurrentItemLineWeight, 4, I4, VT_I4, currentLineWeight),
    KIV_METHOD(GetItemText, 5, Bstr, VT_BSTR, kIndexLong, itemText),
    KIV_METHOD(SelectItemByLineWeight, 6, Void, VT_EMPTY, kLw, selectByLineWeight),
    KIV_METHOD(SetByLayerText, 7, Void, VT_EMPTY, kTxt, byLayerText),
    KIV_METHOD(SetByBlockText, 8, Void, VT_EMPTY, kTxt, byBlockText),
    KIV_METHOD(SetDefinitionText, 9, Void, VT_EMPTY, kTxt, definitionText),
    KIV_METHOD(SetAboutDisplay, 10, Void, VT_EMPTY, kDisplay, aboutDisplay),
};
const KivMember kLineweightEvents[] = {
    KIV_METHOD(SelChange, 1, Void, VT_EMPTY, kValue, nullptr),
    KIV_METHOD(SelAndCloseUp, 2, Void, VT_EMPTY, kName, nullptr),
};

const KivControlClass& lineweightClass() {
    static const KivControlClass cls = {
        &CLSID_KivLineweightCtrl, &g_DKivLineweight, &g_DKivLineweightEvents, &CLSID_KivLineweightPropPage,
        IDS_KIVLINEWEIGHT, 0x00021191, kivstock::kEnabled, L"KivLineweightComboBox",
    };
    return cls;
}

}  // namespace

const KivDispInterface g_DKivLineweight = {L"_DKivLineweight", &DIID__DKivLineweight,
                                           L"Dispatch interface for KivLineweightControl", false, kLineweight,
                                           static_cast<int>(sizeof kLineweight / sizeof kLineweight[0])};
const KivDispInterface g_DKivLineweightEvents = {L"_DKivLineweightEvents", &DIID__DKivLineweightEvents,
                                                 L"Event interface for KivLineweightControl", true, kLineweightEvents,
                                                 static_cast<int>(sizeof kLineweightEvents / sizeof kLineweightEvents[0])};

HRESULT KivCreateLineweightControl(REFIID riid, void** out) { return KivCreateControl<KivLineweightControl>(riid, out); }
