// CKivLinetypeListCtrl: the linetype list control. Portable.
#include "CKivLinetypeListCtrl.h"

void CKivLinetypeListCtrl::OnCommand(int notification) {
    if (notification == kiv::kLbnSelChange) {
        const int row = takeSelection();
        // Only a row of the list is reported: a cleared selection (-1) fires nothing.
        if (row >= 0 && row < items().getLogicalLength()) {
            site().fireEvent(eventSelChange, {KivEventArg::ofString(eventName(row))});
            site().setFocus();
        }
    } else if (notification == kiv::kCbnDropDown) {
        site().setFocus();  // kept from the earlier module, which took the focus on this code too
    }
}
