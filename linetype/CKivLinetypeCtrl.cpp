// CKivLinetypeCtrl: the linetype combo control. Portable.
#include "CKivLinetypeCtrl.h"

#include "CKivDpi.h"

CKivLinetypeCtrl::CKivLinetypeCtrl(IKivControlSite& site) : KivLinetypeModel(site, Placement::Sorted) {}

void CKivLinetypeCtrl::OnCreate(IKivChildList& child, int clientHeight) {
    comboBox.attach(&child);
    rows().setDefaultGuiFont();
    rows().setItemHeight(-1, clientHeight - CKivDpi::getOwnerDrawComboBoxHeightDiff());
    // The rows as Initialize builds them; the sorted names of linetypes loaded before the window
    // existed stay, so later loads keep their order.
    buildRows();
    rows().setCurSel(currentIndex);
}

void CKivLinetypeCtrl::OnDestroyChild() { comboBox.detach(); }

void CKivLinetypeCtrl::OnSize(int width) {
    if (!comboBox.exists()) return;
    rows().invalidate(true);
    rows().move(0, 0, width, CKivDpi::scale(140), true);
}

void CKivLinetypeCtrl::OnSetFocus() {
    if (comboBox.exists()) rows().setFocus();
}

void CKivLinetypeCtrl::OnEnabledChanged(bool enabled) { rows().enable(enabled); }

void CKivLinetypeCtrl::OnCommand(int notification) {
    switch (notification) {
    case kiv::kCbnSelChange:
        if (rows().getDroppedState()) changedWhileDropped = 1;
        fireChoice(eventSelChange);
        break;
    case kiv::kCbnDropDown:
        site().setFocus();
        break;
    case kiv::kCbnCloseUp:
        if (changedWhileDropped != 0) fireChoice(eventSelAndCloseUp);
        changedWhileDropped = 0;
        break;
    case kiv::kCbnSelEndOk:
        if (rows().getDroppedState()) {
            changedWhileDropped = 1;  // the close-up reports the choice
        } else {
            fireChoice(eventSelAndCloseUp);
            changedWhileDropped = 0;
        }
        break;
    default:
        break;
    }
}

void CKivLinetypeCtrl::fireChoice(int eventId) {
    currentIndex = static_cast<std::int32_t>(rows().getCurSel());
    site().fireEvent(eventId, {KivEventArg::ofString(eventName(currentIndex))});
}

void CKivLinetypeCtrl::SetAboutDisplay(bool /*display*/) {}  // does nothing, as in every control
