// CKivLinetypeCtrl: the linetype combo control over the common frame. Portable: the model's rows in
// an owner-drawn drop-down list (child id 102), sorted after the three fixed rows, and the events
// SelChange and SelAndCloseUp carrying the row's name.
#pragma once

#include "CKivLinetypeComboBoxUtl.h"
#include "KivLinetypeModel.h"

class CKivLinetypeCtrl : public KivLinetypeModel {
public:
    // The child: the colour control's drop-down style under identifier 102, with the frame's font,
    // selection-field height and scaled dropped height.
    static constexpr KivChildTraits kChild{KivChildKind::ComboBox, KivChildTraits::kDropDownList, 102,
                                           u"KivLinetypeComboBox", true, true, true};

    explicit CKivLinetypeCtrl(IKivControlSite& site) : KivLinetypeModel(site, kChild, Placement::Sorted) {}

    void DrawItem(IKivDC& dc, const KivDrawItem& item) const override { comboBox.DrawItem(dc, item); }
    void SetAboutDisplay(bool /*display*/) {}  // does nothing, as in every control

    CKivLinetypeComboBoxUtl comboBox{child(), *this};

private:
    // The current index := the list's selection, then the event with that row's name.
    void fireChoice(int event) override { site().fireEvent(event, {KivEventArg::ofString(eventName(takeSelection()))}); }
};
