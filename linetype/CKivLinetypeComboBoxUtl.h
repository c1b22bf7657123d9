// CKivLinetypeComboBoxUtl: the linetype combo's owner-drawn child. Portable: it holds the seam of its
// window and draws each row (sample and name) with the control's definition for that row.
#pragma once

#include "IKivChildList.h"
#include "IKivDC.h"
#include "KivLinetypeModel.h"

class CKivLinetypeComboBoxUtl {
public:
    static constexpr unsigned long kStyle = 0x50200E13;  // WS_CHILD|WS_VISIBLE|WS_VSCROLL|CBS_DROPDOWNLIST|
                                                         // CBS_OWNERDRAWFIXED|CBS_HASSTRINGS|
                                                         // CBS_NOINTEGRALHEIGHT|CBS_DISABLENOSCROLL
    static constexpr int kChildId = 102;

    explicit CKivLinetypeComboBoxUtl(const KivLinetypeModel& model) : m_model(model) {}

    void attach(IKivChildList* window) { m_window = window; }
    void detach() { m_window = nullptr; }
    bool exists() const { return m_window != nullptr; }
    IKivChildList& list() const { return m_window != nullptr ? *m_window : KivNullChildList::instance(); }

    // One row: its sample drawn with a pen CKivDpi::getUnit() pixels wide (thicker on high-dpi
    // screens), its text the list's own.
    void DrawItem(IKivDC& dc, const KivDrawItem& item) const;

private:
    const KivLinetypeModel& m_model;
    IKivChildList* m_window = nullptr;
};
