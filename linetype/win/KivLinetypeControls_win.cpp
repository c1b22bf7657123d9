// The two linetype controls in the ActiveX frame: CKivLinetypeCtrl over a real combo box and
// CKivLinetypeListCtrl over a real list box, each in the child shell, with their dispatch tables.
// Win32 side.
//
// _DKivLTypeList is _DKivLinetype without its last member, SetAboutDisplay: the two tables share
// their members, which act on the model both controls are.
#include <windows.h>

#include "CKivLinetypeCtrl.h"
#include "CKivLinetypeListCtrl.h"
#include "KivChildShell.h"
#include "KivGuids.h"
#include "KivLibrary.h"
#include "KivResources.h"

namespace {

using M = KivLinetypeModel;

const KivParam kName[] = {{L"name", KivTlbType::Bstr, VT_BSTR}};
const KivParam kNameDefinition[] = {{L"name", KivTlbType::Bstr, VT_BSTR}, {L"definition", KivTlbType::Bstr, VT_BSTR}};
const KivParam kIdx[] = {{L"idx", KivTlbType::I4, VT_I4}};
const KivParam kDisplay[] = {{L"display", KivTlbType::I1, VT_BOOL}};

// _DKivLinetype: properties, then methods; DISPID 4 is not used. SetAboutDisplay is last, so that
// the list's table is the same members without it.
const KivMember kLinetype[] = {
    KIV_PROPERTY(ComboIndex, 1, I4, VT_I4, &M::GetComboIndex, &M::SetComboIndex),
    KIV_PROPERTY(SupportPath, 2, Bstr, VT_BSTR, &M::GetSupportPath, &M::SetSupportPath),
    KIV_PROPERTY(LinetypeFile, 3, Bstr, VT_BSTR, &M::GetLinetypeFile, &M::SetLinetypeFile),
    KIV_PROPERTY(TooltipText, 5, Bstr, VT_BSTR, &M::GetTooltipText, &M::SetTooltipText),
    KIV_STOCK_ENABLED,
    KIV_METHOD0(Initialize, 6, Void, VT_EMPTY, &M::Initialize),
    KIV_METHOD0(RemoveAll, 7, Void, VT_EMPTY, &M::RemoveAll),
    KIV_METHOD(LoadLinetype, 8, Void, VT_EMPTY, kName, &M::LoadLinetype),
    KIV_METHOD(DefineLinetype, 9, Void, VT_EMPTY, kNameDefinition, &M::DefineLinetype),
    KIV_METHOD(SelectItemAt, 10, Bstr, VT_BSTR, kIdx, &M::SelectItemAt),
    KIV_METHOD(DefineLinetypeByLayer, 11, Void, VT_EMPTY, kNameDefinition, &M::DefineLinetypeByLayer),
    KIV_METHOD(DefineLinetypeByBlock, 12, Void, VT_EMPTY, kNameDefinition, &M::DefineLinetypeByBlock),
    KIV_METHOD(DefineLinetypeContinuous, 13, Void, VT_EMPTY, kNameDefinition, &M::DefineLinetypeContinuous),
    KIV_METHOD(SelectItem, 14, Bstr, VT_BSTR, kName, &M::SelectItem),
    KIV_METHOD0(GetCount, 15, I4, VT_I4, &M::GetCount),
    KIV_METHOD(UnloadLinetype, 16, Void, VT_EMPTY, kName, &M::UnloadLinetype),
    KIV_METHOD(SetAboutDisplay, 17, Void, VT_EMPTY, kDisplay, &CKivLinetypeCtrl::SetAboutDisplay),  // the combo only
};
constexpr int kLinetypeCount = static_cast<int>(sizeof kLinetype / sizeof kLinetype[0]);
const KivMember kLinetypeEvents[] = {
    KIV_EVENT(SelChange, 1, kName),
    KIV_EVENT(SelAndCloseUp, 2, kName),
};
const KivMember kLTypeListEvents[] = {
    KIV_EVENT(SelChange, 1, kName),
};

const KivControlClass kLinetypeClass = {
    &CLSID_KivLinetypeCtrl, &g_DKivLinetype, &g_DKivLinetypeEvents, &CLSID_KivLinetypePropPage, IDS_KIVLINETYPE,
    0x00020191, kivstock::kEnabled,
};
const KivControlClass kLinetypeListClass = {
    &CLSID_KivLinetypeListCtrl, &g_DKivLTypeList, &g_DKivLTypeListEvents, &CLSID_KivLTypeListPropPage,
    IDS_KIVLINETYPELIST, 0x00020191, kivstock::kEnabled,
};

}  // namespace

const KivDispInterface g_DKivLinetype = {L"_DKivLinetype", &DIID__DKivLinetype, L"Dispatch interface for KivLinetypeControl",
                                         false, kLinetype, kLinetypeCount};
const KivDispInterface g_DKivLinetypeEvents = {L"_DKivLinetypeEvents", &DIID__DKivLinetypeEvents,
                                               L"Event interface for KivLinetypeControl", true, kLinetypeEvents,
                                               static_cast<int>(sizeof kLinetypeEvents / sizeof kLinetypeEvents[0])};
const KivDispInterface g_DKivLTypeList = {L"_DKivLTypeList", &DIID__DKivLTypeList,
                                          L"Dispatch interface for KivLinetypeListControl", false, kLinetype,
                                          kLinetypeCount - 1};
const KivDispInterface g_DKivLTypeListEvents = {L"_DKivLTypeListEvents", &DIID__DKivLTypeListEvents,
                                                L"Event interface for KivLinetypeListControl", true, kLTypeListEvents,
                                                static_cast<int>(sizeof kLTypeListEvents / sizeof kLTypeListEvents[0])};

HRESULT KivCreateLinetypeControl(REFIID riid, void** out) {
    return KivCreateControl(kLinetypeClass, [](KivOleControl& frame) { return KivMakeChildShell<CKivLinetypeCtrl>(frame); },
                            riid, out);
}
HRESULT KivCreateLinetypeListControl(REFIID riid, void** out) {
    return KivCreateControl(kLinetypeListClass,
                            [](KivOleControl& frame) { return KivMakeChildShell<CKivLinetypeListCtrl>(frame); }, riid, out);
}
