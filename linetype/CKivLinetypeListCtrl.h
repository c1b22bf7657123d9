// CKivLinetypeListCtrl: the always-open linetype list over the common frame. Portable: the model's
// rows in an owner-drawn list box (child id 105), in load order after the three fixed rows, and one
// event, SelChange, carrying the row's name. It has no SetAboutDisplay and no SelAndCloseUp.
#pragma once

#include "CKivLinetypeListBoxUtl.h"
#include "KivLinetypeModel.h"

class CKivLinetypeListCtrl : public KivLinetypeModel {
public:
    enum EventId : int { eventSelChange = 1 };

    // The child: a list box without LBS_SORT (the rows keep the model's order), identifier 105, with
    // the frame's font but no item height (its font's default) and the scaled dropped height.
    static constexpr KivChildTraits kChild{KivChildKind::ListBox,
                                           0x50200051,  // WS_CHILD|WS_VISIBLE|WS_VSCROLL|LBS_NOTIFY|
                                                        // LBS_OWNERDRAWFIXED|LBS_HASSTRINGS
                                           105, u"KivLinetypeListBox", true, false, true};

    explicit CKivLinetypeListCtrl(IKivControlSite& site) : KivLinetypeModel(site, kChild, Placement::Appended) {}

    void DrawItem(IKivDC& dc, const KivDrawItem& item) const override { listBox.DrawItem(dc, item); }
    // LBN_SELCHANGE fires SelChange for a row of the list and takes the focus; the code of
    // CBN_DROPDOWN takes the focus too.
    void OnCommand(int notification) override;

    CKivLinetypeListBoxUtl listBox{child(), *this};
};
