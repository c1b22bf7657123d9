// Dispinterfaces of the controls whose behaviour has not arrived yet: the type library describes the
// whole module from the start. No handlers: until a control's table moves beside its behaviour,
// nothing can call these members.
#include "KivGuids.h"
#include "KivLibrary.h"

namespace {
const KivParam kName[] = {{L"name", KivTlbType::Bstr, VT_BSTR}};
const KivParam kNameDefinition[] = {{L"name", KivTlbType::Bstr, VT_BSTR}, {L"definition", KivTlbType::Bstr, VT_BSTR}};
const KivParam kIdx[] = {{L"idx", KivTlbType::I4, VT_I4}};
const KivParam kDisplay[] = {{L"display", KivTlbType::I1, VT_BOOL}};

const KivMember kLinetype[] = {
    KIV_PROPERTY(ComboIndex, 1, I4, VT_I4, nullptr, nullptr),
    KIV_PROPERTY(SupportPath, 2, Bstr, VT_BSTR, nullptr, nullptr),
    KIV_PROPERTY(LinetypeFile, 3, Bstr, VT_BSTR, nullptr, nullptr),
    KIV_PROPERTY(TooltipText, 5, Bstr, VT_BSTR, nullptr, nullptr),
    KIV_STOCK_PROPERTY(Enabled, DISPID_ENABLED, I1, VT_BOOL, KivStockEnabledGet, KivStockEnabledPut),
    KIV_METHOD0(Initialize, 6, Void, VT_EMPTY, nullptr),
    KIV_METHOD0(RemoveAll, 7, Void, VT_EMPTY, nullptr),
    KIV_METHOD(LoadLinetype, 8, Void, VT_EMPTY, kName, nullptr),
    KIV_METHOD(DefineLinetype, 9, Void, VT_EMPTY, kNameDefinition, nullptr),
    KIV_METHOD(SelectItemAt, 10, Bstr, VT_BSTR, kIdx, nullptr),
    KIV_METHOD(DefineLinetypeByLayer, 11, Void, VT_EMPTY, kNameDefinition, nullptr),
    KIV_METHOD(DefineLinetypeByBlock, 12, Void, VT_EMPTY, kNameDefinition, nullptr),
    KIV_METHOD(DefineLinetypeContinuous, 13, Void, VT_EMPTY, kNameDefinition, nullptr),
    KIV_METHOD(SelectItem, 14, Bstr, VT_BSTR, kName, nullptr),
    KIV_METHOD0(GetCount, 15, I4, VT_I4, nullptr),
    KIV_METHOD(UnloadLinetype, 16, Void, VT_EMPTY, kName, nullptr),
    KIV_METHOD(SetAboutDisplay, 17, Void, VT_EMPTY, kDisplay, nullptr),
};
const KivMember kNameEvents[] = {
    KIV_METHOD(SelChange, 1, Void, VT_EMPTY, kName, nullptr),
    KIV_METHOD(SelAndCloseUp, 2, Void, VT_EMPTY, kName, nullptr),
};
const KivMember kHatch[] = {
    KIV_STOCK_PROPERTY(Enabled, DISPID_ENABLED, I1, VT_BOOL, KivStockEnabledGet, KivStockEnabledPut),
    KIV_STOCK_PROPERTY(ForeColor, DISPID_FORECOLOR, OleColor, VT_I4, nullptr, nullptr),
    KIV_STOCK_PROPERTY(BackColor, DISPID_BACKCOLOR, OleColor, VT_I4, nullptr, nullptr),
    KIV_PROPERTY(Metric, 2, I1, VT_BOOL, nullptr, nullptr),
    KIV_PROPERTY(ZoomFactor, 3, R8, VT_R8, nullptr, nullptr),
    KIV_PROPERTY(Pattern, 4, Bstr, VT_BSTR, nullptr, nullptr),
    KIV_METHOD0(Refresh, 1, Void, VT_EMPTY, nullptr),
};
const KivMember kLTypeListEvents[] = {
    KIV_METHOD(SelChange, 1, Void, VT_EMPTY, kName, nullptr),
};
}  // namespace

#define KIV_ITF(var, name, iid, help, source, members) \
    const KivDispInterface var = {L## #name, &iid, help, source, members, static_cast<int>(sizeof members / sizeof members[0])}
#define KIV_EMPTY_ITF(var, name, iid, help, source) const KivDispInterface var = {L## #name, &iid, help, source, nullptr, 0}

KIV_EMPTY_ITF(g_DKivLayer, _DKivLayer, DIID__DKivLayer, L"Dispatch interface for KivLayerControl", false);
KIV_EMPTY_ITF(g_DKivLayerEvents, _DKivLayerEvents, DIID__DKivLayerEvents, L"Event interface for KivLayerControl", true);
KIV_ITF(g_DKivLinetype, _DKivLinetype, DIID__DKivLinetype, L"Dispatch interface for KivLinetypeControl", false, kLinetype);
KIV_ITF(g_DKivLinetypeEvents, _DKivLinetypeEvents, DIID__DKivLinetypeEvents, L"Event interface for KivLinetypeControl", true, kNameEvents);
KIV_ITF(g_DKivHatch, _DKivHatch, DIID__DKivHatch, L"Dispatch interface for KivHatchControl", false, kHatch);
KIV_EMPTY_ITF(g_DKivHatchEvents, _DKivHatchEvents, DIID__DKivHatchEvents, L"Event interface for KivHatchControl", true);
// _DKivLTypeList: the linetype members without SetAboutDisplay.
const KivDispInterface g_DKivLTypeList = {L"_DKivLTypeList", &DIID__DKivLTypeList, L"Dispatch interface for KivLinetypeListControl",
                                          false, kLinetype, static_cast<int>(sizeof kLinetype / sizeof kLinetype[0]) - 1};
KIV_ITF(g_DKivLTypeListEvents, _DKivLTypeListEvents, DIID__DKivLTypeListEvents, L"Event interface for KivLinetypeListControl", true, kLTypeListEvents);
