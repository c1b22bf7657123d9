// CKivLineweightCtrl: the lineweight combo control's behaviour over the common frame. Portable:
// written once against the seams (its child list, the device context, the control site); the ActiveX
// frame forwards window messages and dispatch calls to it.
//
// Where it departs from the other framed controls, kept as the earlier module has it: child id 103;
// no WM_SETFONT and no selection-field height at creation (the combo keeps the platform's default
// font and item height; DrawItem selects the GUI font itself); sizing to a literal height of 140,
// not scaled for the dpi.
#pragma once

#include <cstdint>

#include "CKivLineweightComboBoxUtl.h"
#include "IKivControlSite.h"
#include "KivLineweightTable.h"
#include "KivString.h"

class CKivLineweightCtrl {
public:
    // DISPIDs of _DKivLineweight and _DKivLineweightEvents.
    enum DispId : int {
        dispidTooltipText = 1,
        dispidMeasurement = 2,
        dispidSelectItem = 3,
        dispidGetCurrentItemLineWeight = 4,
        dispidGetItemText = 5,
        dispidSelectItemByLineWeight = 6,
        dispidSetByLayerText = 7,
        dispidSetByBlockText = 8,
        dispidSetDefinitionText = 9,
        dispidSetAboutDisplay = 10,
    };
    enum EventId : int { eventSelChange = 1, eventSelAndCloseUp = 2 };

    static constexpr const char16_t* kDesignText = u"KivLineweightComboBox";
    static constexpr int kDroppedHeight = 140;  // pixels, not scaled
    // GetCurrentItemLineWeight with no selection. It is also ByLayer's code: a host that needs to
    // tell the two apart reads the selection's text with GetItemText.
    static constexpr long kNoSelection = -1;

    explicit CKivLineweightCtrl(IKivControlSite& site);
    CKivLineweightCtrl(const CKivLineweightCtrl&) = delete;
    CKivLineweightCtrl& operator=(const CKivLineweightCtrl&) = delete;

    // Frame. The child window has been created (styles CKivLineweightComboBoxUtl::kStyle, id 103)
    // over the control's rectangle: fill it and select the stored index.
    void OnCreate(IKivChildList& child);
    void OnDestroyChild();
    void OnSize(int width);
    void OnSetFocus();
    void OnEnabledChanged(bool enabled);
    // The child's notification codes; the frame passes each on to its base afterwards.
    void OnCommand(int notification);

    // _DKivLineweight.
    KivString GetTooltipText() const { return tooltipText; }
    void SetTooltipText(const KivString& text);
    short GetMeasurement() const { return measurement; }
    void SetMeasurement(short value);
    KivString SelectItem(const KivString& index);
    long GetCurrentItemLineWeight() const;
    KivString GetItemText(long index) const;
    void SelectItemByLineWeight(long lw);
    void SetByLayerText(const KivString& txt);
    void SetByBlockText(const KivString& txt);
    void SetDefinitionText(const KivString& txt);
    void SetAboutDisplay(bool display);

    // Refills the list from the active labels, each item's data its code, then redraws it.
    void FillList();

    // Fields, in order, readable by the frame and the tests.
    CKivLineweightComboBoxUtl comboBox;
    std::int32_t currentIndex = -1;
    std::int16_t measurement = 0;  // 0: inch labels; any other value: millimetre labels
    KivString tooltipText;
    KivLineweightTable lineweights;  // the millimetre and the inch list, 27 entries each
    std::uint8_t droppedSelection = 0;

private:
    IKivChildList& list() const { return comboBox.list(); }
    void select(int index);
    void replaceSpecialText(int index, const KivString& text);
    // currentIndex := the list's selection, then the event with that item's label.
    void fireChoice(int eventId);

    IKivControlSite& m_site;
};
