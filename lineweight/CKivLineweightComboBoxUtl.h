// CKivLineweightComboBoxUtl: the lineweight control's owner-drawn child list. Portable: it holds the
// seam of its window (IKivChildList; KivNullChildList before the window exists) and draws each item,
// a black bar as thick as the weight and its label, on the device-context seam.
#pragma once

#include "IKivChildList.h"
#include "IKivDC.h"

class CKivLineweightComboBoxUtl {
public:
    // The same drop-down owner-drawn style as the other combos, under its own identifier.
    static constexpr unsigned long kStyle = 0x50200E13;  // WS_CHILD|WS_VISIBLE|WS_VSCROLL|CBS_DROPDOWNLIST|
                                                         // CBS_OWNERDRAWFIXED|CBS_HASSTRINGS|
                                                         // CBS_NOINTEGRALHEIGHT|CBS_DISABLENOSCROLL
    static constexpr int kChildId = 103;

    void attach(IKivChildList* window) { m_window = window; }
    void detach() { m_window = nullptr; }
    bool exists() const { return m_window != nullptr; }
    IKivChildList& list() const { return m_window != nullptr ? *m_window : KivNullChildList::instance(); }

    // The bar of a code in an item `itemHeight` pixels high: ((itemHeight - 2) * code) / 211, at least
    // 1; codes of 0 and below (the special entries, 0.00 mm) are 1 pixel.
    static int barThickness(int itemHeight, long code);

    // Background, focus, bar and label of one item. Nothing is scaled for the display's dpi: the
    // geometry follows the item rectangle the combo box gives.
    void DrawItem(IKivDC& dc, const KivDrawItem& item) const;

    // The buffer DrawItem fetches labels into: one string shared by every instance, created on first
    // use; it holds the label of the last item drawn by any instance.
    const KivString& textBuffer() const;

private:
    IKivChildList* m_window = nullptr;
};
