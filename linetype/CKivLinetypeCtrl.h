// CKivLinetypeCtrl: the linetype combo control over the common frame. Portable: the model's rows in
// an owner-drawn drop-down list (child id 102), sorted after the three fixed rows, and the events
// SelChange and SelAndCloseUp carrying the row's name.
#pragma once

#include <cstdint>

#include "CKivLinetypeComboBoxUtl.h"
#include "KivLinetypeModel.h"

class CKivLinetypeCtrl : public KivLinetypeModel {
public:
    // DISPIDs of _DKivLinetype (4 is not used) and _DKivLinetypeEvents.
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
    enum EventId : int { eventSelChange = 1, eventSelAndCloseUp = 2 };

    static constexpr const char16_t* kDesignText = u"KivLinetypeComboBox";

    explicit CKivLinetypeCtrl(IKivControlSite& site);

    // Frame. The child has been created (styles CKivLinetypeComboBoxUtl::kStyle, id 102) over a
    // client rectangle `clientHeight` pixels high: font, selection-field height, the rows, the
    // stored selection.
    void OnCreate(IKivChildList& child, int clientHeight);
    void OnDestroyChild();
    void OnSize(int width);
    void OnSetFocus();
    void OnEnabledChanged(bool enabled);
    void OnCommand(int notification);

    void SetAboutDisplay(bool display);

    CKivLinetypeComboBoxUtl comboBox{*this};
    std::uint32_t changedWhileDropped = 0;

protected:
    IKivChildList& rows() const override { return comboBox.list(); }

private:
    // The current index := the list's selection, then the event with that row's name.
    void fireChoice(int eventId);
};
