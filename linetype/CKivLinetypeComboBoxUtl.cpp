// Drawing the linetype combo's rows. Portable.
#include "CKivLinetypeComboBoxUtl.h"

#include "CKivDpi.h"
#include "KivLinetypeRow.h"

void CKivLinetypeComboBoxUtl::DrawItem(IKivDC& dc, const KivDrawItem& item) const {
    KivString text;
    if (item.itemID != -1) list().getText(item.itemID, text);
    KivLinetypeRowStyle style;
    style.penWidth = CKivDpi::getUnit();
    style.honourComboEdit = false;
    KivDrawLinetypeRow(dc, item, text, m_model.definitionOf(item.itemID), style);
}
