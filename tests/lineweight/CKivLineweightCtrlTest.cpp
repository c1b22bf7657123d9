// The lineweight control over the common frame: its fields, every _DKivLineweight member, the list
// it fills, its notifications and events, and where it departs from the other framed controls.
#include <climits>
#include <string>

#include "LineweightFixture.h"

using LineweightCtrl = LineweightFixture;

namespace {
const char* const kInchLabels[27] = {"ByLayer",  "ByBlock",  "Default",  "0.000 \"", "0.002 \"", "0.004 \"", "0.005 \"",
                                     "0.006 \"", "0.007 \"", "0.008 \"", "0.010 \"", "0.012 \"", "0.014 \"", "0.016 \"",
                                     "0.020 \"", "0.021 \"", "0.024 \"", "0.028 \"", "0.031 \"", "0.035 \"", "0.039 \"",
                                     "0.042 \"", "0.047 \"", "0.055 \"", "0.062 \"", "0.079 \"", "0.083 \""};
const int kCodes[27] = {-1, -2, -3, 0, 5, 9, 13, 15, 18, 20, 25, 30, 35, 40, 50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
}  // namespace

// ---- Construction and creation ----

TEST_F(LineweightCtrl, FieldsAfterConstruction) {
    EXPECT_FALSE(ctrl.child().exists());
    EXPECT_EQ(ctrl.currentIndex, -1);
    EXPECT_EQ(ctrl.measurement, 0);
    EXPECT_EQ(ctrl.tooltipText, KivString());
    EXPECT_EQ(ctrl.droppedDuringChange(), false);
    EXPECT_EQ(ctrl.lineweights.metric().size(), 27u);
    EXPECT_EQ(ctrl.lineweights.inch().size(), 27u);
    EXPECT_EQ(ctrl.traits().style, 0x50200E13u);
    EXPECT_EQ(ctrl.traits().id, 103);
    EXPECT_EQ(KivString(ctrl.traits().designText), KivString(u"KivLineweightComboBox"));
}

TEST_F(LineweightCtrl, ANewControlShowsTheInchLabelsWithTheirCodesAndNoSelection) {
    create();
    ASSERT_EQ(box.count(), 27);
    for (int i = 0; i < 27; ++i) {
        EXPECT_EQ(box.textAt(i), kInchLabels[i]) << i;
        EXPECT_EQ(box.items[static_cast<std::size_t>(i)].data, kCodes[i]) << i;
    }
    EXPECT_EQ(box.selection, -1);
    EXPECT_EQ(ctrl.GetCurrentItemLineWeight(), -1);
}

TEST_F(LineweightCtrl, CreationSetsNoFontAndNoSelectionFieldHeightAndRedrawsTheFilledList) {
    create();
    // Kept as the earlier module did it: the combo keeps the platform's font and item height.
    for (const std::string& entry : box.log) {
        EXPECT_EQ(entry.find("SetFont"), std::string::npos) << entry;
        EXPECT_EQ(entry.find("SetItemHeight"), std::string::npos) << entry;
    }
    EXPECT_EQ(box.log, (Texts{"ResetContent", "RedrawWindow(261)"}));
    EXPECT_EQ(box.selectionFieldHeight, 0);
}

TEST_F(LineweightCtrl, ValuesSetBeforeCreationAreAppliedWhenTheListIsBuilt) {
    ctrl.SetMeasurement(1);
    ctrl.SelectItemByLineWeight(25);  // no window: the index is stored, the selection goes nowhere
    ctrl.SetByLayerText(KivString(u"Layer"));
    EXPECT_EQ(ctrl.currentIndex, 10);
    EXPECT_EQ(ctrl.GetItemText(0), KivString());  // no list yet
    create();
    EXPECT_EQ(box.textAt(0), "Layer");
    EXPECT_EQ(box.textAt(10), "0.25 mm");
    EXPECT_EQ(box.selection, 10);
}

// ---- Measurement ----

TEST_F(LineweightCtrl, MeasurementSwitchesTheLabelsAndKeepsTheSelectedIndex) {
    create();
    ctrl.SelectItemByLineWeight(25);
    site.modifiedCount = 0;
    box.log.clear();
    ctrl.SetMeasurement(1);
    EXPECT_EQ(ctrl.GetMeasurement(), 1);
    EXPECT_EQ(box.textAt(10), "0.25 mm");
    EXPECT_EQ(box.textAt(26), "2.11 mm");
    EXPECT_EQ(box.selection, 10);
    EXPECT_EQ(ctrl.currentIndex, 10);
    EXPECT_EQ(site.modifiedCount, 1);
    EXPECT_EQ(box.log, (Texts{"ResetContent", "RedrawWindow(261)"}));
    ctrl.SetMeasurement(0);
    EXPECT_EQ(box.textAt(10), "0.010 \"");
    EXPECT_EQ(box.selection, 10);
    EXPECT_EQ(ctrl.GetCurrentItemLineWeight(), 25);
    EXPECT_TRUE(site.events.empty());
}

// ---- Selection ----

TEST_F(LineweightCtrl, SelectItemByLineWeightOf25SelectsIndex10AndOf26ChangesNothing) {
    create();
    ctrl.SelectItemByLineWeight(25);
    EXPECT_EQ(box.selection, 10);
    EXPECT_EQ(box.textAt(10), "0.010 \"");
    EXPECT_EQ(ctrl.GetCurrentItemLineWeight(), 25);
    EXPECT_EQ(site.modifiedCount, 1);
    for (long absent : {26L, 212L, -4L, 10L, LONG_MAX, LONG_MIN}) ctrl.SelectItemByLineWeight(absent);
    EXPECT_EQ(box.selection, 10);
    EXPECT_EQ(ctrl.GetCurrentItemLineWeight(), 25);
    EXPECT_EQ(site.modifiedCount, 1);
    ctrl.SelectItemByLineWeight(-3);
    EXPECT_EQ(box.selection, 2);
    EXPECT_EQ(ctrl.GetCurrentItemLineWeight(), -3);
    EXPECT_TRUE(site.events.empty());  // programmatic selection fires nothing
}

TEST_F(LineweightCtrl, SelectItemTakesALabelOfTheActiveListAndAlwaysReturnsAnEmptyString) {
    create();
    EXPECT_EQ(ctrl.SelectItem(KivString(u"0.25 mm")), KivString());  // inch labels shown: not found
    EXPECT_EQ(box.selection, -1);
    EXPECT_EQ(site.modifiedCount, 0);
    EXPECT_EQ(ctrl.SelectItem(KivString(u"0.010 \"")), KivString());
    EXPECT_EQ(box.selection, 10);
    EXPECT_EQ(site.modifiedCount, 1);
    ctrl.SetMeasurement(1);
    EXPECT_EQ(ctrl.SelectItem(KivString(u"2.11 mm")), KivString());
    EXPECT_EQ(box.selection, 26);
    EXPECT_EQ(ctrl.GetCurrentItemLineWeight(), 211);
    EXPECT_TRUE(site.events.empty());
}

TEST_F(LineweightCtrl, UnknownHugeAndEmptyTextsChangeNothing) {
    create();
    ctrl.SelectItemByLineWeight(50);
    site.modifiedCount = 0;
    const KivString huge(std::u16string(1 << 20, u'7'));
    EXPECT_EQ(ctrl.SelectItem(huge), KivString());
    EXPECT_EQ(ctrl.SelectItem(KivString()), KivString());
    EXPECT_EQ(ctrl.SelectItem(KivString(u"bylayer")), KivString());
    EXPECT_EQ(box.selection, 14);
    EXPECT_EQ(site.modifiedCount, 0);
    // A huge special text is stored and shown as given.
    ctrl.SetByLayerText(huge);
    EXPECT_EQ(box.items[0].text.length(), 1 << 20);
    EXPECT_EQ(box.selection, 14);
}

TEST_F(LineweightCtrl, GetCurrentItemLineWeightWithNoSelectionIsMinusOne) {
    EXPECT_EQ(ctrl.GetCurrentItemLineWeight(), -1);
    create();
    EXPECT_EQ(ctrl.GetCurrentItemLineWeight(), -1);
    ctrl.currentIndex = 27;  // cannot happen through the interface; still no table code is read past the end
    EXPECT_EQ(ctrl.GetCurrentItemLineWeight(), -1);
}

TEST_F(LineweightCtrl, GetItemTextOfMinusOneIsEmptyOfZeroByLayerAndPastTheLastItemEmpty) {
    create();
    EXPECT_EQ(ctrl.GetItemText(-1), KivString());
    EXPECT_EQ(ctrl.GetItemText(-100), KivString());
    EXPECT_EQ(ctrl.GetItemText(0), KivString(u"ByLayer"));
    EXPECT_EQ(ctrl.GetItemText(26), KivString(u"0.083 \""));
    EXPECT_EQ(ctrl.GetItemText(27), KivString());
    EXPECT_EQ(ctrl.GetItemText(2147483647L), KivString());
    ctrl.SetByLayerText(KivString(u"Layer"));
    EXPECT_EQ(ctrl.GetItemText(0), KivString(u"Layer"));
}

// ---- Special texts ----

TEST_F(LineweightCtrl, SetByBlockTextReplacesItemOneInBothLabelSetsAndSurvivesASwitch) {
    create();
    ctrl.SelectItemByLineWeight(-2);
    site.modifiedCount = 0;
    ctrl.SetByBlockText(KivString(u"VonBlock"));
    EXPECT_EQ(box.textAt(1), "VonBlock");
    EXPECT_EQ(box.selection, 1);
    EXPECT_EQ(site.modifiedCount, 1);
    ctrl.SetMeasurement(1);
    EXPECT_EQ(box.textAt(1), "VonBlock");
    EXPECT_EQ(ctrl.SelectItem(KivString(u"VonBlock")), KivString());
    EXPECT_EQ(ctrl.GetCurrentItemLineWeight(), -2);
    ctrl.SetMeasurement(0);
    EXPECT_EQ(box.textAt(1), "VonBlock");
}

TEST_F(LineweightCtrl, EachSpecialTextSetterWritesItsOwnEntry) {
    create();
    ctrl.SetByLayerText(KivString(u"L"));
    ctrl.SetByBlockText(KivString(u"B"));
    ctrl.SetDefinitionText(KivString(u"D"));
    EXPECT_EQ(box.textAt(0), "L");
    EXPECT_EQ(box.textAt(1), "B");
    EXPECT_EQ(box.textAt(2), "D");
    EXPECT_EQ(box.textAt(3), "0.000 \"");
    EXPECT_EQ(box.count(), 27);
    EXPECT_EQ(site.modifiedCount, 3);
}

// ---- Other members ----

TEST_F(LineweightCtrl, TooltipTextIsStoredWithoutMarkingModifiedAndAboutDoesNothing) {
    create();
    box.log.clear();
    ctrl.SetTooltipText(KivString(u"Lineweight"));
    EXPECT_EQ(ctrl.GetTooltipText(), KivString(u"Lineweight"));
    ctrl.SetAboutDisplay(true);
    ctrl.SetAboutDisplay(false);
    EXPECT_EQ(site.modifiedCount, 0);
    EXPECT_TRUE(box.log.empty());
    EXPECT_TRUE(site.events.empty());
}

// ---- Notifications and events ----

TEST_F(LineweightCtrl, MouseChoiceFiresSelChangeThenOnCloseUpSelAndCloseUpWithTheLabel) {
    create();
    mousePick(10);
    EXPECT_EQ(events(), (Texts{"SelChange(\"0.010 \"\")", "SelAndCloseUp(\"0.010 \"\")"}));
    EXPECT_EQ(ctrl.currentIndex, 10);
    EXPECT_EQ(ctrl.GetCurrentItemLineWeight(), 25);
    EXPECT_EQ(ctrl.droppedDuringChange(), false);
    EXPECT_EQ(site.focusRequests, 1);  // CBN_DROPDOWN gives the control the focus
}

TEST_F(LineweightCtrl, SelEndOkWhileClosedFiresSelAndCloseUpAtOnce) {
    create();
    ctrl.SetMeasurement(1);
    box.selection = 26;
    ctrl.OnCommand(kiv::kCbnSelEndOk);
    EXPECT_EQ(events(), (Texts{"SelAndCloseUp(\"2.11 mm\")"}));
    EXPECT_EQ(ctrl.GetCurrentItemLineWeight(), 211);
    keyPick(25);
    EXPECT_EQ(events(), (Texts{"SelAndCloseUp(\"2.11 mm\")", "SelChange(\"2.00 mm\")", "SelAndCloseUp(\"2.00 mm\")"}));
}

TEST_F(LineweightCtrl, EventsCarryTheReplacedSpecialText) {
    create();
    ctrl.SetByLayerText(KivString(u"Layer"));
    keyPick(0);
    EXPECT_EQ(events(), (Texts{"SelChange(\"Layer\")", "SelAndCloseUp(\"Layer\")"}));
    EXPECT_EQ(ctrl.GetCurrentItemLineWeight(), -1);
}

TEST_F(LineweightCtrl, ANotificationWithNoSelectionReportsAnEmptyLabel) {
    create();
    ctrl.OnCommand(kiv::kCbnSelChange);
    EXPECT_EQ(events(), (Texts{"SelChange(\"\")"}));
    EXPECT_EQ(ctrl.currentIndex, -1);
    ctrl.OnCommand(12345);  // unknown notifications are ignored
    EXPECT_EQ(site.events.size(), 1u);
}
