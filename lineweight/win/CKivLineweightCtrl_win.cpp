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
const KivParam kTxt[] = {{L"txt", KivTlbType::Bstr, VT_BSTR}};
const KivParam kDisplay[] = {{L"display", KivTlbType::I1, VT_BOOL}};
const KivParam kValue[] = {{L"value", KivTlbType::Bstr, VT_BSTR}};
const KivParam kName[] = {{L"name", KivTlbType::Bstr, VT_BSTR}};

// _DKivLineweight: the properties Enabled, TooltipText, Measurement, then the methods.
const KivMember kLineweight[] = {
    KIV_STOCK_ENABLED,
    KIV_PROPERTY(TooltipText, 1, Bstr, VT_BSTR, &C::GetTooltipText, &C::SetTooltipText),
    KIV_PROPERTY(Measurement, 2, I2, VT_I2, &C::GetMeasurement, &C::SetMeasurement),
    KIV_METHOD(SelectItem, 3, Bstr, VT_BSTR, kIndexText, &C::SelectItem),
    KIV_METHOD0(GetCurrentItemLineWeight, 4, I4, VT_I4, &C::GetCurrentItemLineWeight),
    KIV_METHOD(GetItemText, 5, Bstr, VT_BSTR, kIndexLong, &C::GetItemText),
    KIV_METHOD(SelectItemByLineWeight, 6, Void, VT_EMPTY, kLw, &C::SelectItemByLineWeight),
    KIV_METHOD(SetByLayerText, 7, Void, VT_EMPTY, kTxt, &C::SetByLayerText),
    KIV_METHOD(SetByBlockText, 8, Void, VT_EMPTY, kTxt, &C::SetByBlockText),
    KIV_METHOD(SetDefinitionText, 9, Void, VT_EMPTY, kTxt, &C::SetDefinitionText),
    KIV_METHOD(SetAboutDisplay, 10, Void, VT_EMPTY, kDisplay, &C::SetAboutDisplay),
};
const KivMember kLineweightEvents[] = {
    KIV_EVENT(SelChange, 1, kValue),
    KIV_EVENT(SelAndCloseUp, 2, kName),
};

const KivControlClass kLineweightClass = {
    &CLSID_KivLineweightCtrl, &g_DKivLineweight, &g_DKivLineweightEvents, &CLSID_KivLineweightPropPage,
    IDS_KIVLINEWEIGHT, 0x00021191, kivstock::kEnabled,
};

}  // namespace

const KivDispInterface g_DKivLineweight = {L"_DKivLineweight", &DIID__DKivLineweight,
                                           L"Dispatch interface for KivLineweightControl", false, kLineweight,
                                           static_cast<int>(sizeof kLineweight / sizeof kLineweight[0])};
const KivDispInterface g_DKivLineweightEvents = {L"_DKivLineweightEvents", &DIID__DKivLineweightEvents,
                                                 L"Event interface for KivLineweightControl", true, kLineweightEvents,
                                                 static_cast<int>(sizeof kLineweightEvents / sizeof kLineweightEvents[0])};

HRESULT KivCreateLineweightControl(REFIID riid, void** out) {
    return KivCreateControl(kLineweightClass, [](KivOleControl& frame) { return KivMakeChildShell<CKivLineweightCtrl>(frame); },
                            riid, out);
}
