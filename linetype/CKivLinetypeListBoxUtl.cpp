// Drawing the linetype list box's rows. Portable.
#include "CKivLinetypeListBoxUtl.h"

#include "KivLinetypeRow.h"

void CKivLinetypeListBoxUtl::DrawItem(IKivDC& dc, const KivDrawItem& item) const {
    KivString text;
    if (item.itemID != -1) list().getText(item.itemID, text);
    KivLinetypeRowStyle style;
    style.penWidth = kPenWidth;
    style.honourComboEdit = true;
    KivDrawLinetypeRow(dc, item, text, m_model.definitionOf(item.itemID), style);
}
