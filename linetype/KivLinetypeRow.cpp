// One row of a linetype list. Portable.
#include "KivLinetypeRow.h"

#include "CKivDpi.h"
#include "KivChildControl.h"
#include "KivLinetypeModel.h"
#include "KivLinetypeSample.h"

KivLinetypeRowLayout KivLayOutLinetypeRow(const KivRect& r) {
    const int half = r.width() / 2;
    KivLinetypeRowLayout layout;
    layout.textHalf = KivRect{r.left + half, r.top, r.right, r.bottom};
    layout.textBox = KivRect{(r.left + half) + r.left + 2, r.top + 2, r.right, r.bottom};
    layout.sampleBox = KivRect{r.left + 2, r.top + 2, half, r.bottom - 2};
    return layout;
}

void KivDrawLinetypeRow(IKivDC& dc, const KivDrawItem& item, const KivString& text, const KivString& definition,
                        const KivLinetypeRowStyle& style) {
    const KivLinetypeRowLayout layout = KivLayOutLinetypeRow(item.rcItem);
    const bool comboEdit = style.honourComboEdit && (item.itemState & kiv::kOdsComboBoxEdit) != 0;

    // 1. System colours.
    const KivColor windowColor = dc.getSysColor(kiv::kColorWindow);
    const KivColor highlightColor = dc.getSysColor(kiv::kColorHighlight);
    const KivColor windowTextColor = dc.getSysColor(kiv::kColorWindowText);

    // 2. A selected row highlights its text half only; the sample half is never highlighted.
    if ((item.itemState & kiv::kOdsSelected) != 0 && !comboEdit) {
        dc.setTextColor(~windowTextColor & 0x00FFFFFF);
        dc.setBkColor(highlightColor);
        dc.fillRect(layout.textHalf, KivBrush::solid(highlightColor));
    } else {
        dc.setTextColor(windowTextColor);
        dc.setBkColor(windowColor);
        dc.fillRect(item.rcItem, KivBrush::solid(windowColor));
    }

    // 3. Focus.
    if ((item.itemState & kiv::kOdsFocus) != 0 && !comboEdit) dc.drawFocusRect(item.rcItem);

    // 4. The empty selection field stops here.
    if (item.itemID == -1) return;

    // 5. The name.
    dc.setBkMode(kiv::kBkTransparent);
    dc.drawText(text, layout.textBox, kiv::kDtSingleLine | kiv::kDtVCenter);

    // 6. A black pen, a white brush, the white sample box.
    dc.selectPen(KivPen{kiv::kPsSolid, style.penWidth, 0x00000000});
    dc.selectBrush(KivBrush::solid(0x00FFFFFF));
    dc.fillRect(layout.sampleBox, KivBrush::solid(0x00FFFFFF));
    dc.setTextColor(0x00000000);

    // 7. The strokes, along the middle of the sample box, over its width.
    const KivRect& sample = layout.sampleBox;
    KivStrokeLinetypeSample(dc, definition, sample.top + (sample.bottom - sample.top) / 2,
                            static_cast<double>(sample.right - sample.left));

    // 8. The copy from a 0 x 0 bitmap onto the sample box, then the pen and brush put back.
    dc.bitBltFromCompatibleBitmap(0, 0, sample, kiv::kSrcCopy);
    dc.restoreBrush();
    dc.restorePen();
}

void KivLinetypeRowDrawer::DrawItem(IKivDC& dc, const KivDrawItem& item) const {
    KivString text;
    if (item.itemID != -1) m_window.list().getText(item.itemID, text);
    KivLinetypeRowStyle style;
    style.penWidth = m_penFollowsDpi ? CKivDpi::getUnit() : 1;
    style.honourComboEdit = m_honourComboEdit;
    KivDrawLinetypeRow(dc, item, text, m_model.definitionOf(item.itemID), style);
}
