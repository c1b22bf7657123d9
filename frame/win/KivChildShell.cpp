// KivChildShell: the Win32 shell of a control with one owner-drawn child window. Win32 side.
#include "KivChildShell.h"

void KivChildShell::onCreate(HWND window, const RECT& client) {
    const KivChildTraits& traits = m_core->traits();
    HWND child = CreateWindowExW(0, traits.kind == KivChildKind::ComboBox ? L"COMBOBOX" : L"LISTBOX", L"", traits.style,
                                 client.left, client.top, client.right - client.left, client.bottom - client.top,
                                 window, reinterpret_cast<HMENU>(static_cast<INT_PTR>(traits.id)),
                                 kivmodule::instance(), nullptr);
    if (child == nullptr) return;  // refused by the system: the control stays without its list
    m_child = std::make_unique<KivWin32ChildList>(child, traits.kind);
    m_core->OnCreate(*m_child, client.bottom - client.top);
}

void KivChildShell::onDestroy() {
    m_core->OnDestroyChild();  // the child window is destroyed with the control's window
    m_child.reset();
}

void KivChildShell::onCommand(WPARAM wParam, LPARAM) {
    if (LOWORD(wParam) == m_core->traits().id) m_core->OnCommand(HIWORD(wParam));
}

bool KivChildShell::onDrawItem(const DRAWITEMSTRUCT& item) {
    if (static_cast<int>(item.CtlID) != m_core->traits().id) return false;
    KivGdiDC dc(item.hDC);
    m_core->DrawItem(dc, KivFromDRAWITEMSTRUCT(item));
    return true;
}

bool KivChildShell::onMeasureItem(MEASUREITEMSTRUCT& item) {
    if (static_cast<int>(item.CtlID) != m_core->traits().id) return false;
    KivMeasureItem measure;
    measure.itemID = static_cast<int>(item.itemID);
    measure.itemHeight = item.itemHeight;
    if (!m_core->MeasureItem(measure)) return false;  // the child keeps its font's item height
    item.itemHeight = measure.itemHeight;
    return true;
}
