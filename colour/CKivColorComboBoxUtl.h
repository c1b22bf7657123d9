// CKivColorComboBoxUtl: the colour control's owner-drawn child list. Portable: it reads its items
// through the seam of the control's child window (KivNullChildList before the window exists) and
// draws them on the device-context seam.
#pragma once

#include "IKivDC.h"
#include "KivChildControl.h"

class CKivColorComboBoxUtl {
public:
    explicit CKivColorComboBoxUtl(const KivChildWindow& window) : m_window(window) {}

    // MeasureItem: every item is getDefaultGuiFontComboBoxItemHeight() high.
    void MeasureItem(KivMeasureItem& item) const;
    // DrawItem: background, focus, swatch and text of one item.
    void DrawItem(IKivDC& dc, const KivDrawItem& item) const;
    // The buffer DrawItem fetches item texts into: one string shared by every instance, created on
    // first use; it holds the text of the last item drawn by any instance.
    const KivString& textBuffer() const;

private:
    IKivChildList& list() const { return m_window.list(); }
    const KivChildWindow& m_window;
};
