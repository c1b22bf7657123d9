// Dispinterfaces of the controls whose behaviour has not arrived yet: the type library describes the
// whole module from the start. No handlers: until a control's table moves beside its behaviour,
// nothing can call these members.
#include "KivGuids.h"
#include "KivLibrary.h"

namespace {

const KivMember kHatch[] = {
    KIV_STOCK_PROPERTY(Enabled, DISPID_ENABLED, I1, VT_BOOL, KivStockEnabledGet, KivStockEnabledPut),
    KIV_STOCK_PROPERTY(ForeColor, DISPID_FORECOLOR, OleColor, VT_I4, nullptr, nullptr),
    KIV_STOCK_PROPERTY(BackColor, DISPID_BACKCOLOR, OleColor, VT_I4, nullptr, nullptr),
    KIV_PROPERTY(Metric, 2, I1, VT_BOOL, nullptr, nullptr),
    KIV_PROPERTY(ZoomFactor, 3, R8, VT_R8, nullptr, nullptr),
    KIV_PROPERTY(Pattern, 4, Bstr, VT_BSTR, nullptr, nullptr),
    KIV_METHOD0(Refresh, 1, Void, VT_EMPTY, nullptr),
};
}  // namespace

#define KIV_ITF(var, name, iid, help, source, members) \
    const KivDispInterface var = {L## #name, &iid, help, source, members, static_cast<int>(sizeof members / sizeof members[0])}
#define KIV_EMPTY_ITF(var, name, iid, help, source) const KivDispInterface var = {L## #name, &iid, help, source, nullptr, 0}

KIV_EMPTY_ITF(g_DKivLayer, _DKivLayer, DIID__DKivLayer, L"Dispatch interface for KivLayerControl", false);
KIV_EMPTY_ITF(g_DKivLayerEvents, _DKivLayerEvents, DIID__DKivLayerEvents, L"Event interface for KivLayerControl", true);
KIV_ITF(g_DKivHatch, _DKivHatch, DIID__DKivHatch, L"Dispatch interface for KivHatchControl", false, kHatch);
KIV_EMPTY_ITF(g_DKivHatchEvents, _DKivHatchEvents, DIID__DKivHatchEvents, L"Event interface for KivHatchControl", true);
