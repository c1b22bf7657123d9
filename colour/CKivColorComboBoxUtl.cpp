// Measuring and drawing the colour list's items. Portable.
#include "CKivColorComboBoxUtl.h"

#include "CKivDpi.h"

namespace {
// One text buffer shared by every instance, created on first use, as the earlier module had it.
// Every draw fills it and uses it at once on the one UI thread, so instances never see each other's text.
KivString& sharedTextBuffer() {
    static KivString buffer;  // created on first use, destroyed at module unload
    return buffer;
}
}  // namespace

const KivString& CKivColorComboBoxUtl::textBuffer() const { return sharedTextBuffer(); }

void CKivColorComboBoxUtl::MeasureItem(KivMeasureItem& item) const {
    item.itemHeight = static_cast<unsigned>(CKivDpi::getDefaultGuiFontComboBoxItemHeight());
}

void CKivColorComboBoxUtl::DrawItem(IKivDC& dc, const KivDrawItem& item) const {
    // 1. System colours and the frame brush.
    const KivColor windowColor = dc.getSysColor(kiv::kColorWindow);
    const KivColor highlightColor = dc.getSysColor(kiv::kColorHighlight);
    const KivColor windowTextColor = dc.getSysColor(kiv::kColorWindowText);
    const KivBrush frameBrush = KivBrush::stockBrush(KivStockObject::BlackBrush);

    // 2. Colours of a selected or plain item; the whole item is filled with the background.
    KivColor background;
    if ((item.itemState & kiv::kOdsSelected) != 0) {
        dc.setTextColor(~windowTextColor & 0x00FFFFFF);
        background = highlightColor;
    } else {
        dc.setTextColor(windowTextColor);
        background = windowColor;
    }
    dc.setBkColor(background);
    dc.fillRect(item.rcItem, KivBrush::solid(background));

    // 3. Focus.
    if ((item.itemState & kiv::kOdsFocus) != 0) dc.drawFocusRect(item.rcItem);

    // 4. Text rectangle: right of the swatch.
    const int h = item.rcItem.height();
    KivRect textRect = item.rcItem;
    textRect.left += h + CKivDpi::scale(2);

    // 5. Swatch: the item shrunk by the scaled (2, 2), then a square whose right edge is at h.
    KivSize inset{2, 2};
    CKivDpi::scale(&inset);
    KivRect swatch = item.rcItem;
    swatch.left += static_cast<int>(inset.cx);
    swatch.right -= static_cast<int>(inset.cx);
    swatch.top += static_cast<int>(inset.cy);
    swatch.bottom -= static_cast<int>(inset.cy);
    swatch.right = h;
    swatch.left = h - swatch.height();

    // 6. The empty selection field stops here.
    if (item.itemID == -1) return;
    KivString& text = sharedTextBuffer();
    list().getText(item.itemID, text);
    KivColor swatchColor = static_cast<KivColor>(item.itemData);
    if ((item.itemState & kiv::kOdsDisabled) != 0) {
        swatchColor = dc.getSysColor(kiv::kColorGrayText);
        dc.setTextColor(swatchColor);
    }

    // 7. Text, swatch, frame.
    dc.setBkMode(kiv::kBkTransparent);
    dc.drawText(text, textRect, kiv::kDtSingleLine | kiv::kDtVCenter);
    dc.fillRect(swatch, KivBrush::solid(swatchColor));
    dc.frameRect(swatch, frameBrush);
}
