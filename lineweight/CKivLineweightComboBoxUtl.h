// CKivLineweightComboBoxUtl: the lineweight control's owner-drawn child list. Portable: it reads its
// items through the seam of the control's child window (KivNullChildList before the window exists)
// and draws each item, a black bar as thick as the weight and its label, on the device-context seam.
#pragma once

#include "IKivDC.h"
#include "KivChildControl.h"

class CKivLineweightComboBoxUtl {
public:
    explicit CKivLineweightComboBoxUtl(const KivChildWindow& window) : m_window(window) {}

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
    IKivChildList& list() const { return m_window.list(); }
    const KivChildWindow& m_window;
};
