// CKivLinetypeListCtrl: the linetype list control. Portable.
#include "CKivLinetypeListCtrl.h"

#include <cstdint>

#include "CKivDpi.h"

CKivLinetypeListCtrl::CKivLinetypeListCtrl(IKivControlSite& site) : KivLinetypeModel(site, Placement::Appended) {}

void CKivLinetypeListCtrl::OnCreate(IKivChildList& child) {
    listBox.attach(&child);
    rows().setDefaultGuiFont();
    buildRows();
    rows().setCurSel(currentIndex);
}

void CKivLinetypeListCtrl::OnDestroyChild() { listBox.detach(); }

void CKivLinetypeListCtrl::OnSize(int width) {
    if (!listBox.exists()) return;
    rows().invalidate(true);
    rows().move(0, 0, width, CKivDpi::scale(140), true);
}

void CKivLinetypeListCtrl::OnSetFocus() {
    if (listBox.exists()) rows().setFocus();
}

void CKivLinetypeListCtrl::OnEnabledChanged(bool enabled) { rows().enable(enabled); }

void CKivLinetypeListCtrl::OnCommand(int notification) {
    if (notification == kiv::kLbnSelChange) {
        currentIndex = static_cast<std::int32_t>(rows().getCurSel());
        // Only a row of the list is reported: a cleared selection (-1) fires nothing.
        if (currentIndex >= 0 && currentIndex < items.getLogicalLength()) {
            site().fireEvent(eventSelChange, {KivEventArg::ofString(eventName(currentIndex))});
            site().setFocus();
        }
    } else if (notification == 7) {
        site().setFocus();  // kept from the earlier module, which took the focus on this code too
    }
}
