// CKivLinetypeCtrl: the linetype combo control over the common frame. Portable: the model's rows in
// an owner-drawn drop-down list (child id 102), sorted after the three fixed rows, and the events
// SelChange and SelAndCloseUp carrying the row's name.
#pragma once

#include "CKivLinetypeComboBoxUtl.h"
#include "KivLinetypeModel.h"

class CKivLinetypeCtrl : public KivLinetypeModel {
public:
    // DISPIDs of _DKivLinetype (4 is not used).
    enum DispId : int {
        dispidComboIndex = 1,
        dispidSupportPath = 2,
        dispidLinetypeFile = 3,
        dispidTooltipText = 5,
        dispidInitialize = 6,
        dispidRemoveAll = 7,
        dispidLoadLinetype = 8,
        dispidDefineLinetype = 9,
        dispidSelectItemAt = 10,
        dispidDefineLinetypeByLayer = 11,
        dispidDefineLinetypeByBlock = 12,
        dispidDefineLinetypeContinuous = 13,
        dispidSelectItem = 14,
        dispidGetCount = 15,
        dispidUnloadLinetype = 16,
        dispidSetAboutDisplay = 17,
    };

    // The child: the colour control's drop-down style under identifier 102, with the frame's font,
    // selection-field height and scaled dropped height.
    static constexpr KivChildSpec kChild{KivChildKind::ComboBox,
                                         0x50200E13,  // WS_CHILD|WS_VISIBLE|WS_VSCROLL|CBS_DROPDOWNLIST|
                                                      // CBS_OWNERDRAWFIXED|CBS_HASSTRINGS|
                                                      // CBS_NOINTEGRALHEIGHT|CBS_DISABLENOSCROLL
                                         102, u"KivLinetypeComboBox", true, true, true};

    explicit CKivLinetypeCtrl(IKivControlSite& site) : KivLinetypeModel(site, kChild, Placement::Sorted) {}

    void DrawItem(IKivDC& dc, const KivDrawItem& item) const override { comboBox.DrawItem(dc, item); }
    void SetAboutDisplay(bool /*display*/) {}  // does nothing, as in every control

    CKivLinetypeComboBoxUtl comboBox{child(), *this};

private:
    // The current index := the list's selection, then the event with that row's name.
    void fireChoice(int event) override { site().fireEvent(event, {KivEventArg::ofString(eventName(takeSelection()))}); }
};
