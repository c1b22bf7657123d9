// The colour control in the ActiveX frame: CKivColorCtrl (portable) in the child shell, over the
// system colour dialog, with the _DKivColor dispatch table. Win32 side.
#include <windows.h>

#include <commdlg.h>

#include "CKivColorCtrl.h"
#include "KivChildShell.h"
#include "KivGuids.h"
#include "KivLibrary.h"
#include "KivResources.h"

namespace {

// CColorDialog with initial colour 0, no flags, no parent window; the custom colours are the
// process's, as the common dialog keeps them.
class KivSystemColorDialog final : public IKivColorDialog {
public:
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
};

using C = CKivColorCtrl;

const KivParam kIdxTev[] = {{L"idxTev", KivTlbType::I2, VT_I2}};
const KivParam kComboText[] = {{L"color", KivTlbType::EColors, VT_I4}, {L"colorText", KivTlbType::Bstr, VT_BSTR}};
const KivParam kIdxRGB[] = {{L"idxRGB", KivTlbType::UI4, VT_I4}};
const KivParam kTxt[] = {{L"txt", KivTlbType::Bstr, VT_BSTR}};
const KivParam kDisplay[] = {{L"display", KivTlbType::I1, VT_BOOL}};
const KivParam kEventArgs[] = {{L"comboIdx", KivTlbType::I4, VT_I4}, {L"colorIdx", KivTlbType::I4, VT_I4}};

// _DKivColor: properties in the library's order, then the methods.
const KivMember kColor[] = {
    KIV_PROPERTY(ComboIndex, 1, I4, VT_I4, &C::GetComboIndex, &C::SetComboIndex),
    KIV_PROPERTY(BlockColorIndex, 2, UI4, VT_I4, &C::GetBlockColorIndex, &C::SetBlockColorIndex),
    KIV_PROPERTY(LayerColorIndex, 3, UI4, VT_I4, &C::GetLayerColorIndex, &C::SetLayerColorIndex),
    KIV_PROPERTY(DefaultColorIndex, 14, UI4, VT_I4, &C::GetDefaultColorIndex, &C::SetDefaultColorIndex),
    KIV_PROPERTY(ApprovalStatusColorIndex, 15, UI4, VT_I4, &C::GetApprovalStatusColorIndex, &C::SetApprovalStatusColorIndex),
    KIV_PROPERTY(DisplayApprovalStatusColor, 16, I4, VT_BOOL, &C::GetDisplayApprovalStatusColor,
                 &C::SetDisplayApprovalStatusColor),
    KIV_STOCK_ENABLED,
    KIV_METHOD0(GetSelColorIndex, 5, I2, VT_I2, &C::GetSelColorIndex),
    KIV_METHOD(SetSelColorIndex, 6, Void, VT_EMPTY, kIdxTev, &C::SetSelColorIndex),
    KIV_METHOD(AddColorIndex, 7, I4, VT_BOOL, kIdxTev, &C::AddColorIndex),
    KIV_METHOD(SetComboText, 8, Void, VT_EMPTY, kComboText, &C::SetComboText),
    KIV_METHOD(RGB_Equivalent, 9, UI4, VT_I4, kIdxTev, &C::RGB_Equivalent),
    KIV_METHOD(Tev_Equivalent, 10, I2, VT_I2, kIdxRGB, &C::Tev_Equivalent),
    KIV_METHOD(FindColor, 11, I4, VT_I4, kIdxTev, &C::FindColor),
    KIV_METHOD(SetTooltipText, 12, Void, VT_EMPTY, kTxt, &C::SetTooltipText),
    KIV_METHOD(AboutDisplay, 13, Void, VT_EMPTY, kDisplay, &C::AboutDisplay),
};
const KivMember kColorEvents[] = {
    KIV_EVENT(SelChange, 1, kEventArgs),
    KIV_EVENT(SelAndCloseUp, 2, kEventArgs),
};

const KivControlClass kColourClass = {
    &CLSID_KivColorCtrl, &g_DKivColor, &g_DKivColorEvents, &CLSID_KivColorPropPage, IDS_KIVCOLOR, 0x00021191,
    kivstock::kEnabled,
};

}  // namespace

const KivDispInterface g_DKivColor = {L"_DKivColor", &DIID__DKivColor, L"Dispatch interface for KivColorControl", false,
                                      kColor, static_cast<int>(sizeof kColor / sizeof kColor[0])};
const KivDispInterface g_DKivColorEvents = {L"_DKivColorEvents", &DIID__DKivColorEvents, L"Event interface for KivColorControl",
                                            true, kColorEvents, static_cast<int>(sizeof kColorEvents / sizeof kColorEvents[0])};

HRESULT KivCreateColorControl(REFIID riid, void** out) {
    return KivCreateControl(kColourClass, [](KivOleControl& frame) {
        static KivSystemColorDialog dialog;
        return KivMakeChildShell<CKivColorCtrl>(frame, dialog);
    }, riid, out);
}
