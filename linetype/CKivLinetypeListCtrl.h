// CKivLinetypeListCtrl: the always-open linetype list over the common frame. Portable: the model's
// rows in an owner-drawn list box (child id 105), in load order after the three fixed rows, and one
// event, SelChange, carrying the row's name. It has no SetAboutDisplay and no SelAndCloseUp.
#pragma once

#include "CKivLinetypeListBoxUtl.h"
#include "KivLinetypeModel.h"

class CKivLinetypeListCtrl : public KivLinetypeModel {
public:
    enum EventId : int { eventSelChange = 1 };

    static constexpr const char16_t* kDesignText = u"KivLinetypeListBox";

    explicit CKivLinetypeListCtrl(IKivControlSite& site);

    // Frame. The list box has been created (styles CKivLinetypeListBoxUtl::kStyle, id 105): font, the
    // rows, the stored selection. No item height is set: the list keeps its font's default.
    void OnCreate(IKivChildList& child);
    void OnDestroyChild();
    void OnSize(int width);
    void OnSetFocus();
    void OnEnabledChanged(bool enabled);
    void OnCommand(int notification);

    CKivLinetypeListBoxUtl listBox{*this};

protected:
    IKivChildList& rows() const override { return listBox.list(); }
};
