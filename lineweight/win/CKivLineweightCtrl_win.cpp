// The lineweight control in the ActiveX frame: CKivLineweightCtrl (portable) in the child shell, with
// the _DKivLineweight dispatch table. Win32 side.
#include <windows.h>

#include "CKivLineweightCtrl.h"
#include "KivChildShell.h"
#include "KivGuids.h"
#include "KivLibrary.h"
#include "KivResources.h"

namespace {

using C = CKivLineweightCtrl;

const KivParam kIndexText[] = {{L"index", KivTlbType::Bstr, VT_BSTR}};
const KivParam kIndexLong[] = {{L"index", KivTlbType::I4, VT_I4}};
const KivParam kLw[] = {{L"lw", KivTlbType::I4, VT_I4}};
const KivParam kValue[] = {{L"value", KivTlbType::Bstr, VT_BSTR}};

const KivMember kLineweightEvents[] = {KIV_EVENT(SelChange, 1, kValue), KIV_EVENT(SelAndCloseUp, 2, kivparams::kName)};

// _DKivLineweight: the properties Enabled, TooltipText, Measurement, then the methods.
const KivMember kLineweight[] = {
    KIV_STOCK_ENABLED,
    KIV_PROPERTY(TooltipText, 1, Bstr, VT_BSTR, &C::GetTooltipText, &C::SetTooltipText),
    KIV_PROPERTY(Measurement, 2, I2, VT_I2, &C::GetMeasurement, &C::SetMeasurement),
    KIV_METHOD(SelectItem, 3, Bstr, VT_BSTR, kIndexText, &C::SelectItem),
    KIV_METHOD0(GetCurrentItemLineWeight, 4, I4, VT_I4, &C::GetCurrentItemLineWeight),
    KIV_METHOD(GetItemText, 5, Bstr, VT_BSTR, kIndexLong, &C::GetItemText),
    KIV_SUB(SelectItemByLineWeight, 6, kLw, &C::SelectItemByLineWeight),
    // The three special texts, then the about box (which does nothing).
    KIV_SUB(SetByLayerText, 7, kivparams::kText, &C::SetByLayerText),
    KIV_SUB(SetByBlockText, 8, kivparams::kText, &C::SetByBlockText),
    KIV_SUB(SetDefinitionText, 9, kivparams::kText, &C::SetDefinitionText),
    KIV_SUB(SetAboutDisplay, 10, kivparams::kDisplay, &C::SetAboutDisplay),
};

}  // namespace

const KivDispInterface g_DKivLineweight = KivInterfaceOf(
    L"_DKivLineweight", DIID__DKivLineweight, L"Dispatch interface for KivLineweightControl", false, kLineweight);
const KivDispInterface g_DKivLineweightEvents =
    KivInterfaceOf(L"_DKivLineweightEvents", DIID__DKivLineweightEvents, L"Event interface for KivLineweightControl",
                   true, kLineweightEvents);

HRESULT KivCreateLineweightControl(REFIID riid, void** out) {
    static const KivControlClass lineweight = {
        &CLSID_KivLineweightCtrl, &g_DKivLineweight, &g_DKivLineweightEvents, &CLSID_KivLineweightPropPage,
        IDS_KIVLINEWEIGHT,        0x00021191,        kivstock::kEnabled};
    return KivCreateChildControl<CKivLineweightCtrl>(lineweight, riid, out);
}
