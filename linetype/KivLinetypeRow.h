// One row of a linetype list: the sample in the left half, the name in the right half. Portable,
// on IKivDC. Both linetype drawers (combo and list box) draw their rows with it.
//
// With w the row's width and w/2 truncated toward zero:
// - the text half is the row from R.left + w/2;
// - the text box starts at (R.left + w/2) + R.left + 2 and 2 pixels below the top: R.left counts
//   twice, as in the earlier module (the same for the usual R.left of 0);
// - the sample box is the row shrunk by 2 on every side, its right edge then set to the absolute w/2.
#pragma once

#include "IKivDC.h"
#include "KivString.h"

class KivChildWindow;
class KivLinetypeModel;

struct KivLinetypeRowLayout {
    KivRect textHalf;
    KivRect textBox;
    KivRect sampleBox;
};
KivLinetypeRowLayout KivLayOutLinetypeRow(const KivRect& row);

struct KivLinetypeRowStyle {
    int penWidth = 1;              // the sample's pen, in pixels
    bool honourComboEdit = false;  // the list box: no selected look or focus on ODS_COMBOBOXEDIT
};

// Background (the text half highlighted when selected, the whole row otherwise), focus, then for a
// real item (itemID != -1) its text, the white sample box, the sample strokes and the 0 x 0 bitmap
// copy onto the sample box (kept: part of the earlier module's drawing sequence).
void KivDrawLinetypeRow(IKivDC& dc, const KivDrawItem& item, const KivString& text, const KivString& definition,
                        const KivLinetypeRowStyle& style);

// The drawer of both linetype children (CKivLinetypeComboBoxUtl, CKivLinetypeListBoxUtl): each row
// with its text as the child holds it and the definition the model draws it with, in its style.
class KivLinetypeRowDrawer {
public:
    // `penFollowsDpi`: the sample pen CKivDpi::getUnit() pixels wide (thicker on high-dpi screens),
    // else 1 pixel; `honourComboEdit` as in KivLinetypeRowStyle.
    KivLinetypeRowDrawer(const KivChildWindow& window, const KivLinetypeModel& model, bool penFollowsDpi,
                         bool honourComboEdit)
        : m_window(window), m_model(model), m_penFollowsDpi(penFollowsDpi), m_honourComboEdit(honourComboEdit) {}

    void DrawItem(IKivDC& dc, const KivDrawItem& item) const;

private:
    const KivChildWindow& m_window;
    const KivLinetypeModel& m_model;
    bool m_penFollowsDpi;
    bool m_honourComboEdit;
};
