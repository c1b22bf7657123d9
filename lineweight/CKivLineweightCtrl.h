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
#include "KivChildControl.h"
#include "KivLineweightTable.h"
#include "KivString.h"

class CKivLineweightCtrl : public KivChildControl {
public:
    // The child: the same drop-down owner-drawn style as the other combos, under its own identifier,
    // with neither font nor selection-field height set and a dropped height not scaled.
    static constexpr KivChildTraits kChild{KivChildKind::ComboBox, KivChildTraits::kDropDownList, 103,
                                           u"KivLineweightComboBox", false, false, false};
    // GetCurrentItemLineWeight with no selection. It is also ByLayer's code: a host that needs to
    // tell the two apart reads the selection's text with GetItemText.
    static constexpr long kNoSelection = -1;

    explicit CKivLineweightCtrl(IKivControlSite& site);

    void DrawItem(IKivDC& dc, const KivDrawItem& item) const override { comboBox.DrawItem(dc, item); }

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
    CKivLineweightComboBoxUtl comboBox{child()};
    std::int32_t currentIndex = -1;
    std::int16_t measurement = 0;  // 0: inch labels; any other value: millimetre labels
    KivString tooltipText;
    KivLineweightTable lineweights;  // the millimetre and the inch list, 27 entries each

private:
    void fillChild() override { FillList(); }
    int storedSelection() const override { return currentIndex; }
    void select(int index);
    void replaceSpecialText(int index, const KivString& text);
    // currentIndex := the list's selection, then the event with that item's label.
    void fireChoice(int event) override;
};
