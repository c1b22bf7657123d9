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

const KivParam kNameDefinition[] = {{L"name", KivTlbType::Bstr, VT_BSTR}, {L"definition", KivTlbType::Bstr, VT_BSTR}};
const KivParam kIdx[] = {{L"idx", KivTlbType::I4, VT_I4}};

const KivMember kLinetypeEvents[] = {KIV_EVENT(SelChange, 1, kivparams::kName),
                                     KIV_EVENT(SelAndCloseUp, 2, kivparams::kName)};
const KivMember kLTypeListEvents[] = {KIV_EVENT(SelChange, 1, kivparams::kName)};

// _DKivLinetype: properties, then methods; DISPID 4 is not used. SetAboutDisplay is last, so that
// the list's table is the same members without it.
const KivMember kLinetype[] = {
    KIV_PROPERTY(ComboIndex, 1, I4, VT_I4, &M::GetComboIndex, &M::SetComboIndex),
    KIV_PROPERTY(SupportPath, 2, Bstr, VT_BSTR, &M::GetSupportPath, &M::SetSupportPath),
    KIV_PROPERTY(LinetypeFile, 3, Bstr, VT_BSTR, &M::GetLinetypeFile, &M::SetLinetypeFile),
    KIV_PROPERTY(TooltipText, 5, Bstr, VT_BSTR, &M::GetTooltipText, &M::SetTooltipText),
    KIV_STOCK_ENABLED,
    KIV_SUB0(Initialize, 6, &M::Initialize),
    KIV_SUB0(RemoveAll, 7, &M::RemoveAll),
    KIV_SUB(LoadLinetype, 8, kivparams::kName, &M::LoadLinetype),
    KIV_SUB(DefineLinetype, 9, kNameDefinition, &M::DefineLinetype),
    KIV_METHOD(SelectItemAt, 10, Bstr, VT_BSTR, kIdx, &M::SelectItemAt),
    KIV_SUB(DefineLinetypeByLayer, 11, kNameDefinition, &M::DefineLinetypeByLayer),
    KIV_SUB(DefineLinetypeByBlock, 12, kNameDefinition, &M::DefineLinetypeByBlock),
    KIV_SUB(DefineLinetypeContinuous, 13, kNameDefinition, &M::DefineLinetypeContinuous),
    KIV_METHOD(SelectItem, 14, Bstr, VT_BSTR, kivparams::kName, &M::SelectItem),
    KIV_METHOD0(GetCount, 15, I4, VT_I4, &M::GetCount),
    KIV_SUB(UnloadLinetype, 16, kivparams::kName, &M::UnloadLinetype),
    KIV_SUB(SetAboutDisplay, 17, kivparams::kDisplay, &CKivLinetypeCtrl::SetAboutDisplay),  // the combo only
};
constexpr int kLinetypeCount = static_cast<int>(sizeof kLinetype / sizeof kLinetype[0]);

}  // namespace

const KivDispInterface g_DKivLinetype = {
    L"_DKivLinetype", &DIID__DKivLinetype, L"Dispatch interface for KivLinetypeControl", false,
    kLinetype,        kLinetypeCount};
const KivDispInterface g_DKivLinetypeEvents = KivInterfaceOf(
    L"_DKivLinetypeEvents", DIID__DKivLinetypeEvents, L"Event interface for KivLinetypeControl", true, kLinetypeEvents);
const KivDispInterface g_DKivLTypeList = {
    L"_DKivLTypeList", &DIID__DKivLTypeList, L"Dispatch interface for KivLinetypeListControl", false,
    kLinetype,         kLinetypeCount - 1};
const KivDispInterface g_DKivLTypeListEvents =
    KivInterfaceOf(L"_DKivLTypeListEvents", DIID__DKivLTypeListEvents, L"Event interface for KivLinetypeListControl",
                   true, kLTypeListEvents);

HRESULT KivCreateLinetypeControl(REFIID riid, void** out) {
    static const KivControlClass combo = {&CLSID_KivLinetypeCtrl,     &g_DKivLinetype, &g_DKivLinetypeEvents,
                                          &CLSID_KivLinetypePropPage, IDS_KIVLINETYPE, 0x00020191,
                                          kivstock::kEnabled};
    return KivCreateChildControl<CKivLinetypeCtrl>(combo, riid, out);
}

HRESULT KivCreateLinetypeListControl(REFIID riid, void** out) {
    static const KivControlClass list = {&CLSID_KivLinetypeListCtrl,  &g_DKivLTypeList,    &g_DKivLTypeListEvents,
                                         &CLSID_KivLTypeListPropPage, IDS_KIVLINETYPELIST, 0x00020191,
                                         kivstock::kEnabled};
    return KivCreateChildControl<CKivLinetypeListCtrl>(list, riid, out);
}
