// The two linetype controls in the ActiveX frame: CKivLinetypeCtrl over a real combo box and
// CKivLinetypeListCtrl over a real list box, with their dispatch tables. Win32 side.
//
// _DKivLTypeList is _DKivLinetype without SetAboutDisplay: the two tables share their members and
// handlers, which reach the shared model of either control.
#include <windows.h>

#include <memory>

#include "CKivLinetypeCtrl.h"
#include "CKivLinetypeListCtrl.h"
#include "KivGuids.h"
#include "KivLibrary.h"
#include "KivOleControl.h"
#include "KivResources.h"

namespace {

const KivControlClass& linetypeClass();
const KivControlClass& linetypeListClass();

// What the shared handlers reach: the model of either control.
class KivLinetypeControlBase : public KivOleControl {
public:
    using KivOleControl::KivOleControl;
    virtual KivLinetypeModel& model() = 0;

protected:
    // Creates the child window over the control's rectangle; null when the system refuses it.
    HWND createChild(HWND parent, const RECT& client, const wchar_t* windowClass, unsigned long style, int id) {
        return CreateWindowExW(0, windowClass, L"", style, client.left, client.top, client.right - client.left,
                               client.bottom - client.top, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                               kivmodule::instance(), nullptr);
    }
};

class KivLinetypeControl final : public KivLinetypeControlBase {
public:
    KivLinetypeControl() : KivLinetypeControlBase(linetypeClass()), core(*this) {}
    ~KivLinetypeControl() override { destroyWindow(); }
    KivLinetypeModel& model() override { return core; }

    CKivLinetypeCtrl core;

protected:
    void onCreate(HWND window, const RECT& client) override {
        HWND combo = createChild(window, client, L"COMBOBOX", CKivLinetypeComboBoxUtl::kStyle, CKivLinetypeComboBoxUtl::kChildId);
        if (combo == nullptr) return;
        m_child = std::make_unique<KivWin32ChildList>(combo, KivWin32ChildList::Kind::ComboBox);
        core.OnCreate(*m_child, client.bottom - client.top);
    }
    void onDestroy() override {
        core.OnDestroyChild();
        m_child.reset();
    }
    void onSize(int width, int) override { core.OnSize(width); }
    void onSetFocus() override { core.OnSetFocus(); }
    void onEnabledChanged(bool enabled) override { core.OnEnabledChanged(enabled); }
    void onCommand(WPARAM wParam, LPARAM) override {
        if (LOWORD(wParam) == CKivLinetypeComboBoxUtl::kChildId) core.OnCommand(HIWORD(wParam));
    }
    bool onDrawItem(const DRAWITEMSTRUCT& item) override {
        if (item.CtlID != CKivLinetypeComboBoxUtl::kChildId) return false;
        KivGdiDC dc(item.hDC);
        core.comboBox.DrawItem(dc, KivFromDRAWITEMSTRUCT(item));
        return true;
    }
    IKivChildList* childList() override { return m_child.get(); }

private:
    std::unique_ptr<KivWin32ChildList> m_child;
};

class KivLinetypeListControl final : public KivLinetypeControlBase {
public:
    KivLinetypeListControl() : KivLinetypeControlBase(linetypeListClass()), core(*this) {}
    ~KivLinetypeListControl() override { destroyWindow(); }
    KivLinetypeModel& model() override { return core; }

    CKivLinetypeListCtrl core;

protected:
    void onCreate(HWND window, const RECT& client) override {
        HWND list = createChild(window, client, L"LISTBOX", CKivLinetypeListBoxUtl::kStyle, CKivLinetypeListBoxUtl::kChildId);
        if (list == nullptr) return;
        m_child = std::make_unique<KivWin32ChildList>(list, KivWin32ChildList::Kind::ListBox);
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
        if (LOWORD(wParam) == CKivLinetypeListBoxUtl::kChildId) core.OnCommand(HIWORD(wParam));
    }
    bool onDrawItem(const DRAWITEMSTRUCT& item) override {
        if (item.CtlID != CKivLinetypeListBoxUtl::kChildId) return false;
        KivGdiDC dc(item.hDC);
        core.listBox.DrawItem(dc, KivFromDRAWITEMSTRUCT(item));
        return true;
    }
    IKivChildList* childList() override { return m_child.get(); }

private:
    std::unique_ptr<KivWin32ChildList> m_child;
};

KivLinetypeModel& model(void* self) {
    return static_cast<KivLinetypeControlBase*>(static_cast<KivOleControl*>(self))->model();
}

// ---- Handlers: arguments arrive coerced to the dispatch map's types.
HRESULT getComboIndex(void* s, VARIANT*, VARIANT* r) { return KivReturnLong(r, model(s).GetComboIndex()); }
HRESULT putComboIndex(void* s, VARIANT* a, VARIANT*) { model(s).SetComboIndex(V_I4(&a[0])); return S_OK; }
HRESULT getSupportPath(void* s, VARIANT*, VARIANT* r) { return KivReturnText(r, model(s).GetSupportPath()); }
HRESULT putSupportPath(void* s, VARIANT* a, VARIANT*) { model(s).SetSupportPath(KivTextArg(a[0])); return S_OK; }
HRESULT getLinetypeFile(void* s, VARIANT*, VARIANT* r) { return KivReturnText(r, model(s).GetLinetypeFile()); }
HRESULT putLinetypeFile(void* s, VARIANT* a, VARIANT*) { model(s).SetLinetypeFile(KivTextArg(a[0])); return S_OK; }
HRESULT getTooltip(void* s, VARIANT*, VARIANT* r) { return KivReturnText(r, model(s).GetTooltipText()); }
HRESULT putTooltip(void* s, VARIANT* a, VARIANT*) { model(s).SetTooltipText(KivTextArg(a[0])); return S_OK; }
HRESULT initialize(void* s, VARIANT*, VARIANT*) { model(s).Initialize(); return S_OK; }
HRESULT removeAll(void* s, VARIANT*, VARIANT*) { model(s).RemoveAll(); return S_OK; }
HRESULT loadLinetype(void* s, VARIANT* a, VARIANT*) { model(s).LoadLinetype(KivTextArg(a[0])); return S_OK; }
HRESULT defineLinetype(void* s, VARIANT* a, VARIANT*) { model(s).DefineLinetype(KivTextArg(a[0]), KivTextArg(a[1])); return S_OK; }
HRESULT selectItemAt(void* s, VARIANT* a, VARIANT* r) { return KivReturnText(r, model(s).SelectItemAt(V_I4(&a[0]))); }
HRESULT defineByLayer(void* s, VARIANT* a, VARIANT*) { model(s).DefineLinetypeByLayer(KivTextArg(a[0]), KivTextArg(a[1])); return S_OK; }
HRESULT defineByBlock(void* s, VARIANT* a, VARIANT*) { model(s).DefineLinetypeByBlock(KivTextArg(a[0]), KivTextArg(a[1])); return S_OK; }
HRESULT defineContinuous(void* s, VARIANT* a, VARIANT*) { model(s).DefineLinetypeContinuous(KivTextArg(a[0]), KivTextArg(a[1])); return S_OK; }
HRESULT selectItem(void* s, VARIANT* a, VARIANT* r) { return KivReturnText(r, model(s).SelectItem(KivTextArg(a[0]))); }
HRESULT getCount(void* s, VARIANT*, VARIANT* r) { return KivReturnLong(r, model(s).GetCount()); }
HRESULT unloadLinetype(void* s, VARIANT* a, VARIANT*) { model(s).UnloadLinetype(KivTextArg(a[0])); return S_OK; }
HRESULT aboutDisplay(void* s, VARIANT* a, VARIANT*) {
    // Only in the combo's table.
    static_cast<KivLinetypeControl*>(static_cast<KivOleControl*>(s))->core.SetAboutDisplay(V_BOOL(&a[0]) != VARIANT_FALSE);
    return S_OK;
}

const KivParam kName[] = {{L"name", KivTlbType::Bstr, VT_BSTR}};
const KivParam kNameDefinition[] = {{L"name", KivTlbType::Bstr, VT_BSTR}, {L"definition", KivTlbType::Bstr, VT_BSTR}};
const KivParam kIdx[] = {{L"idx", KivTlbType::I4, VT_I4}};
const KivParam kDisplay[] = {{L"display", KivTlbType::I1, VT_BOOL}};

// _DKivLinetype: properties, then methods; DISPID 4 is not used. SetAboutDisplay is last, so that
// the list's table is the same members without it.
const KivMember kLinetype[] = {
    KIV_PROPERTY(ComboIndex, 1, I4, VT_I4, getComboIndex, putComboIndex),
    KIV_PROPERTY(SupportPath, 2, Bstr, VT_BSTR, getSupportPath, putSupportPath),
    KIV_PROPERTY(LinetypeFile, 3, Bstr, VT_BSTR, getLinetypeFile, putLinetypeFile),
    KIV_PROPERTY(TooltipText, 5, Bstr, VT_BSTR, getTooltip, putTooltip),
    KIV_STOCK_PROPERTY(Enabled, DISPID_ENABLED, I1, VT_BOOL, KivStockEnabledGet, KivStockEnabledPut),
    KIV_METHOD0(Initialize, 6, Void, VT_EMPTY, initialize),
    KIV_METHOD0(RemoveAll, 7, Void, VT_EMPTY, removeAll),
    KIV_METHOD(LoadLinetype, 8, Void, VT_EMPTY, kName, loadLinetype),
    KIV_METHOD(DefineLinetype, 9, Void, VT_EMPTY, kNameDefinition, defineLinetype),
    KIV_METHOD(SelectItemAt, 10, Bstr, VT_BSTR, kIdx, selectItemAt),
    KIV_METHOD(DefineLinetypeByLayer, 11, Void, VT_EMPTY, kNameDefinition, defineByLayer),
    KIV_METHOD(DefineLinetypeByBlock, 12, Void, VT_EMPTY, kNameDefinition, defineByBlock),
    KIV_METHOD(DefineLinetypeContinuous, 13, Void, VT_EMPTY, kNameDefinition, defineContinuous),
    KIV_METHOD(SelectItem, 14, Bstr, VT_BSTR, kName, selectItem),
    KIV_METHOD0(GetCount, 15, I4, VT_I4, getCount),
    KIV_METHOD(UnloadLinetype, 16, Void, VT_EMPTY, kName, unloadLinetype),
    KIV_METHOD(SetAboutDisplay, 17, Void, VT_EMPTY, kDisplay, aboutDisplay),
};
constexpr int kLinetypeCount = static_cast<int>(sizeof kLinetype / sizeof kLinetype[0]);
const KivMember kLinetypeEvents[] = {
    KIV_METHOD(SelChange, 1, Void, VT_EMPTY, kName, nullptr),
    KIV_METHOD(SelAndCloseUp, 2, Void, VT_EMPTY, kName, nullptr),
};
const KivMember kLTypeListEvents[] = {
    KIV_METHOD(SelChange, 1, Void, VT_EMPTY, kName, nullptr),
};

const KivControlClass& linetypeClass() {
    static const KivControlClass cls = {
        &CLSID_KivLinetypeCtrl, &g_DKivLinetype, &g_DKivLinetypeEvents, &CLSID_KivLinetypePropPage,
        IDS_KIVLINETYPE, 0x00020191, kivstock::kEnabled, L"KivLinetypeComboBox",
    };
    return cls;
}

const KivControlClass& linetypeListClass() {
    static const KivControlClass cls = {
        &CLSID_KivLinetypeListCtrl, &g_DKivLTypeList, &g_DKivLTypeListEvents, &CLSID_KivLTypeListPropPage,
        IDS_KIVLINETYPELIST, 0x00020191, kivstock::kEnabled, L"KivLinetypeListBox",
    };
    return cls;
}

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

HRESULT KivCreateLinetypeControl(REFIID riid, void** out) { return KivCreateControl<KivLinetypeControl>(riid, out); }
HRESULT KivCreateLinetypeListControl(REFIID riid, void** out) { return KivCreateControl<KivLinetypeListControl>(riid, out); }
