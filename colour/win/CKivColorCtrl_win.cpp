// The colour control in the ActiveX frame: CKivColorCtrl (portable) in the child shell, over the
// system colour dialog, with the _DKivColor dispatch table. Win32 side.
#include <windows.h>

#include <commdlg.h>  // after <windows.h>, which it needs

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
const KivParam kEventArgs[] = {{L"comboIdx", KivTlbType::I4, VT_I4}, {L"colorIdx", KivTlbType::I4, VT_I4}};

const KivMember kColorEvents[] = {KIV_EVENT(SelChange, 1, kEventArgs), KIV_EVENT(SelAndCloseUp, 2, kEventArgs)};

// _DKivColor: properties in the library's order, then the methods.
const KivMember kColor[] = {
    KIV_PROPERTY(ComboIndex, 1, I4, VT_I4, &C::GetComboIndex, &C::SetComboIndex),
    KIV_PROPERTY(BlockColorIndex, 2, UI4, VT_I4, &C::GetBlockColorIndex, &C::SetBlockColorIndex),
    KIV_PROPERTY(LayerColorIndex, 3, UI4, VT_I4, &C::GetLayerColorIndex, &C::SetLayerColorIndex),
    KIV_PROPERTY(DefaultColorIndex, 14, UI4, VT_I4, &C::GetDefaultColorIndex, &C::SetDefaultColorIndex),
    KIV_PROPERTY(ApprovalStatusColorIndex, 15, UI4, VT_I4, &C::GetApprovalStatusColorIndex,
                 &C::SetApprovalStatusColorIndex),
    KIV_PROPERTY(DisplayApprovalStatusColor, 16, I4, VT_BOOL, &C::GetDisplayApprovalStatusColor,
                 &C::SetDisplayApprovalStatusColor),
    KIV_STOCK_ENABLED,
    KIV_METHOD0(GetSelColorIndex, 5, I2, VT_I2, &C::GetSelColorIndex),
    KIV_SUB(SetSelColorIndex, 6, kIdxTev, &C::SetSelColorIndex),
    KIV_METHOD(AddColorIndex, 7, I4, VT_BOOL, kIdxTev, &C::AddColorIndex),
    KIV_SUB(SetComboText, 8, kComboText, &C::SetComboText),
    KIV_METHOD(RGB_Equivalent, 9, UI4, VT_I4, kIdxTev, &C::RGB_Equivalent),
    KIV_METHOD(Tev_Equivalent, 10, I2, VT_I2, kIdxRGB, &C::Tev_Equivalent),
    KIV_METHOD(FindColor, 11, I4, VT_I4, kIdxTev, &C::FindColor),
    KIV_SUB(SetTooltipText, 12, kivparams::kText, &C::SetTooltipText),
    KIV_SUB(AboutDisplay, 13, kivparams::kDisplay, &C::AboutDisplay),
};

}  // namespace

const KivDispInterface g_DKivColor =
    KivInterfaceOf(L"_DKivColor", DIID__DKivColor, L"Dispatch interface for KivColorControl", false, kColor);
const KivDispInterface g_DKivColorEvents = KivInterfaceOf(L"_DKivColorEvents", DIID__DKivColorEvents,
                                                          L"Event interface for KivColorControl", true, kColorEvents);

HRESULT KivCreateColorControl(REFIID riid, void** out) {
    static const KivControlClass colour = {&CLSID_KivColorCtrl,     &g_DKivColor, &g_DKivColorEvents,
                                           &CLSID_KivColorPropPage, IDS_KIVCOLOR, 0x00021191,
                                           kivstock::kEnabled};
    return KivCreateControl(
        colour,
        [](KivOleControl& frame) {
            static KivSystemColorDialog dialog;
            return KivMakeChildShell<CKivColorCtrl>(frame, dialog);
        },
        riid, out);
}
