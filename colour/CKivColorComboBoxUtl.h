// CKivColorComboBoxUtl: the colour control's owner-drawn child list. Portable: it holds
// the seam of its window (IKivChildList; KivNullChildList before the window exists) and draws items
// on the device-context seam.
#pragma once

#include "IKivChildList.h"
#include "IKivDC.h"

class CKivColorComboBoxUtl {
public:
    // Window styles and child identifier of the list.
    static constexpr unsigned long kStyle = 0x50200E13;  // WS_CHILD|WS_VISIBLE|WS_VSCROLL|CBS_DROPDOWNLIST|
                                                         // CBS_OWNERDRAWFIXED|CBS_HASSTRINGS|
                                                         // CBS_NOINTEGRALHEIGHT|CBS_DISABLENOSCROLL
    static constexpr int kChildId = 100;

    // The child's window: attached when created, detached when destroyed.
    void attach(IKivChildList* window) { m_window = window; }
    void detach() { m_window = nullptr; }
    bool exists() const { return m_window != nullptr; }
    IKivChildList& list() const { return m_window != nullptr ? *m_window : KivNullChildList::instance(); }

    // MeasureItem: every item is getDefaultGuiFontComboBoxItemHeight() high.
    void MeasureItem(KivMeasureItem& item) const;
    // DrawItem: background, focus, swatch and text of one item.
    void DrawItem(IKivDC& dc, const KivDrawItem& item) const;
    // The buffer DrawItem fetches item texts into: one string shared by every instance, created on
    // first use; it holds the text of the last item drawn by any instance.
    const KivString& textBuffer() const;

private:
    IKivChildList* m_window = nullptr;
};
