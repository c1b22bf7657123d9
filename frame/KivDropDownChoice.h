// KivDropDownChoice: what a drop-down combo's notifications mean for the control that owns it.
// Portable; one rule for every drop-down combo of the module.
//
// A choice made in the dropped list fires SelChange with the change and SelAndCloseUp when the list
// closes up; a change made while the list is closed fires SelChange, and SelAndCloseUp when it is
// confirmed (CBN_SELENDOK). Opening and closing the list without a change fires nothing. The rule is
// applied to each notification as it comes, so the events follow the order the combo box sends:
// Win32's (SELCHANGE, then SELENDOK and CLOSEUP) or Wine's, which sends SELENDOK and CLOSEUP before
// SELCHANGE for a mouse click and for a closed keyboard choice (SelAndCloseUp then precedes
// SelChange). CBN_DROPDOWN gives the control the focus.
#pragma once

#include "IKivChildList.h"
#include "IKivControlSite.h"

class KivDropDownChoice {
public:
    // The events of every drop-down combo (their DISPIDs).
    enum Event : int { SelChange = 1, SelAndCloseUp = 2 };

    // Applies one notification of the combo `list`; `fire(event)` reports the current selection
    // with that event. Any other notification does nothing.
    template <class Fire>
    void notify(int notification, IKivChildList& list, IKivControlSite& site, Fire&& fire) {
        switch (notification) {
        case kiv::kCbnSelChange:
            if (list.getDroppedState()) m_droppedDuringChange = true;
            fire(SelChange);
            break;
        case kiv::kCbnDropDown:
            site.setFocus();
            break;
        case kiv::kCbnCloseUp:
            if (m_droppedDuringChange) fire(SelAndCloseUp);
            m_droppedDuringChange = false;
            break;
        case kiv::kCbnSelEndOk:
            if (list.getDroppedState()) {
                m_droppedDuringChange = true;  // the close-up reports the choice
            } else {
                fire(SelAndCloseUp);
                m_droppedDuringChange = false;
            }
            break;
        default:
            break;
        }
    }

    // Set while a change made with the list dropped waits for the close-up.
    bool droppedDuringChange() const { return m_droppedDuringChange; }

private:
    bool m_droppedDuringChange = false;
};
