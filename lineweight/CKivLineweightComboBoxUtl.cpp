// Drawing the lineweight list's items. Portable.
#include "CKivLineweightComboBoxUtl.h"

#include "KivLineweightTable.h"

namespace {
// One label buffer shared by every instance, created on first use, as the earlier module had it.
// Every draw fills it and uses it at once on the one UI thread.
KivString& sharedLabelBuffer() {
    static KivString buffer;
    return buffer;
}
}  // namespace

const KivString& CKivLineweightComboBoxUtl::textBuffer() const { return sharedLabelBuffer(); }

int CKivLineweightComboBoxUtl::barThickness(int itemHeight, long code) {
    if (code <= 0) return 1;
    const long long thickness = (static_cast<long long>(itemHeight) - 2) * code / KivLineweightTable::kLargestCode;
    return thickness < 1 ? 1 : static_cast<int>(thickness);
}

void CKivLineweightComboBoxUtl::DrawItem(IKivDC& dc, const KivDrawItem& item) const {
    const KivRect& r = item.rcItem;
    const int w = r.width();
    const int h = r.height();

    // 1. System colours and the frame brush.
    const KivColor windowColor = dc.getSysColor(kiv::kColorWindow);
    const KivColor highlightColor = dc.getSysColor(kiv::kColorHighlight);
    const KivColor windowTextColor = dc.getSysColor(kiv::kColorWindowText);
    const KivBrush frameBrush = KivBrush::stockBrush(KivStockObject::BlackBrush);

    // 2. and 3. Colours of a selected or plain item; the whole item filled; the focus rectangle.
    const bool selected = (item.itemState & kiv::kOdsSelected) != 0;
    const KivColor background = selected ? highlightColor : windowColor;
    dc.setTextColor(selected ? (~windowTextColor & 0x00FFFFFF) : windowTextColor);
    dc.setBkColor(background);
    dc.fillRect(r, KivBrush::solid(background));
    if ((item.itemState & kiv::kOdsFocus) != 0) dc.drawFocusRect(r);

    // 4. The bar's thickness from the item's code.
    const int thickness = barThickness(h, static_cast<long>(list().getItemData(item.itemID)));

    // 5. The bar: the item shrunk by 2 left and right and by h/2 top and bottom, its right edge at
    //    w/4 (an absolute coordinate, kept as the earlier module drew it), centred on that middle.
    KivRect bar{r.left + 2, r.top + h / 2, w / 4, r.bottom - h / 2};
    bar.top -= thickness / 2;
    bar.bottom = bar.top + thickness;

    // 6. The empty selection field stops here.
    if (item.itemID == -1) return;
    KivString& label = sharedLabelBuffer();
    list().getText(item.itemID, label);
    KivColor barColor = 0x00000000;
    if ((item.itemState & kiv::kOdsDisabled) != 0) {
        barColor = dc.getSysColor(kiv::kColorInactiveCaptionText);  // 19, kept as the earlier module chose it
        dc.setTextColor(barColor);
    }

    // 7. and 8. The label in the stock GUI font, the bar and its frame.
    dc.selectStockFont(KivStockObject::DefaultGuiFont);
    dc.setBkMode(kiv::kBkTransparent);
    dc.textOut(r.left + w / 4 + 2, r.top + 2, label);
    dc.fillRect(bar, KivBrush::solid(barColor));
    dc.frameRect(bar, frameBrush);
    dc.restoreFont();
}
