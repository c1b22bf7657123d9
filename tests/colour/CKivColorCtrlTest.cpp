// The colour control over the common frame: every field, dispatch member, algorithm step and deliberate
// quirk of the colour control, on the in-memory seams.
#include "ColourFixture.h"
#include "TevColorTable.h"

namespace {
const Texts kElevenItems{"ByLayer", "ByBlock", "Default", "Red",   "Yellow",  "Green",
                         "Cyan",    "Blue",    "Magenta", "White", "Select.."};
}

class ColourCtrl : public ColourFixture {
protected:
    // SetSelColorIndex(idxTev) selects the item at `position`, and GetSelColorIndex then answers
    // `answer`.
    void expectSelects(short idxTev, int position, short answer) {
        ctrl.SetSelColorIndex(idxTev);
        EXPECT_EQ(box.selection, position) << "SetSelColorIndex(" << idxTev << ")";
        EXPECT_EQ(ctrl.GetSelColorIndex(), answer) << "SetSelColorIndex(" << idxTev << ")";
    }
};

// ---- Construction and creation ----

TEST_F(ColourCtrl, FieldsAfterConstruction) {
    EXPECT_FALSE(ctrl.child().exists());
    EXPECT_EQ(ctrl.listFilled, 0);
    EXPECT_EQ(ctrl.comboIndex, -1);
    EXPECT_EQ(ctrl.selectedColor, 0u);
    EXPECT_EQ(ctrl.blockColor, 0x00FFFFFFu);
    EXPECT_EQ(ctrl.layerColor, 0x00FFFFFFu);
    EXPECT_EQ(ctrl.defaultColor, 0x00FFFFFFu);
    EXPECT_EQ(ctrl.customPrefix, KivString(u"Color"));
    EXPECT_EQ(ctrl.droppedDuringChange(), false);
    EXPECT_EQ(ctrl.approvalStatusColor, 0x00FFFFFFu);
    EXPECT_EQ(ctrl.displayApprovalStatusColor, 0);
    EXPECT_EQ(ctrl.traits().style, 0x50200E13u);
    EXPECT_EQ(ctrl.traits().id, 100);
    EXPECT_EQ(KivString(ctrl.traits().designText), KivString(u"KivColorComboBox"));
}

TEST_F(ColourCtrl, AfterCreationElevenItemsNoSelectionAndNoColour) {
    create();
    EXPECT_EQ(box.texts(), kElevenItems);
    const std::uint32_t colours[] = {0xFFFFFF, 0xFFFFFF, 0xFFFFFF, 0x0000FF, 0x00FFFF, 0x00FF00,
                                     0xFFFF00, 0xFF0000, 0xFF00FF, 0xFFFFFF, 0xFFFFFF};
    for (int i = 0; i < 11; ++i) EXPECT_EQ(box.colorAt(i), colours[i]) << i;
    EXPECT_EQ(ctrl.comboIndex, -1);
    EXPECT_EQ(box.selection, -1);
    EXPECT_EQ(ctrl.GetSelColorIndex(), -1);  // the stored colour 0 (black) is not in the palette
    EXPECT_EQ(ctrl.listFilled, 1);
}

TEST_F(ColourCtrl, CreationSetsFontAndSelectionFieldHeightFromCKivDpi) {
    create(25);
    EXPECT_EQ(box.log.at(0), "SetFont(DEFAULT_GUI_FONT)");
    EXPECT_EQ(box.log.at(1), "SetItemHeight(-1,21)");  // 25 - getOwnerDrawComboBoxHeightDiff() (4)
}

TEST_F(ColourCtrl, CreationAppliesTheStoredSelection) {
    ctrl.comboIndex = 4;
    create();
    EXPECT_EQ(box.selection, 4);
}

TEST_F(ColourCtrl, PropertiesSetBeforeCreationAreKeptAndUsedByTheFill) {
    ctrl.SetLayerColorIndex(0x111111);
    ctrl.SetBlockColorIndex(0x222222);
    ctrl.SetDefaultColorIndex(0x333333);
    ctrl.AddColorIndex(42);     // no window: no effect
    ctrl.SetSelColorIndex(5);   // FindColor finds nothing without a window: no change
    EXPECT_EQ(ctrl.comboIndex, -1);
    create();
    EXPECT_EQ(box.texts(), kElevenItems);
    EXPECT_EQ(box.colorAt(0), 0x111111u);
    EXPECT_EQ(box.colorAt(1), 0x222222u);
    EXPECT_EQ(box.colorAt(2), 0x333333u);
}

TEST_F(ColourCtrl, DisplayApprovalStatusSetBeforeCreationStoresTheFlagOnly) {
    // The insertion goes to no window; FillColorList never adds the item.
    ctrl.SetDisplayApprovalStatusColor(1);
    create();
    EXPECT_EQ(ctrl.displayApprovalStatusColor, 1);
    EXPECT_EQ(box.texts(), kElevenItems);
}

TEST_F(ColourCtrl, FillStopsAtErrSpaceAndLeavesListFilledZero) {
    box.failAddAfter(4);
    create();
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Default", "Red"}));
    EXPECT_EQ(ctrl.listFilled, 0);
}

TEST_F(ColourCtrl, FillRunsOnlyWhileListFilledIsZero) {
    create();
    ctrl.FillColorList();
    EXPECT_EQ(box.count(), 11);
}

TEST_F(ColourCtrl, ARecreatedChildIsFilledAgain) {
    create();
    ctrl.OnDestroyChild();
    EXPECT_FALSE(ctrl.child().exists());
    FakeComboBox second;
    ctrl.OnCreate(second, 21);
    EXPECT_EQ(second.texts(), kElevenItems);
}

// ---- SetSelColorIndex / GetSelColorIndex ----

TEST_F(ColourCtrl, SetSelColorIndexOfTheLogicalColoursWithoutApprovalStatus) {
    create();
    expectSelects(256, 0, 256);
    expectSelects(0, 1, 0);
    expectSelects(257, 2, 257);
}

TEST_F(ColourCtrl, SetSelColorIndexMinusOneSelectsByBlockWithoutApprovalStatus) {
    create();
    expectSelects(-1, 1, 0);  // "ByBlock": -1 is not lowered (kept)
    EXPECT_EQ(box.textAt(1), "ByBlock");
}

TEST_F(ColourCtrl, SetSelColorIndexMinusOneSelectsByLayerWithApprovalStatus) {
    create();
    ctrl.SetDisplayApprovalStatusColor(1);
    expectSelects(-1, 1, 256);
    EXPECT_EQ(box.textAt(1), "ByLayer");
    expectSelects(258, 0, 258);
    ctrl.SetSelColorIndex(0);
    EXPECT_EQ(box.selection, 2);
    expectSelects(257, 3, 257);
}

TEST_F(ColourCtrl, SetSelColorIndexReadsTheColourBeforeTheShift) {
    ctrl.SetLayerColorIndex(0x111111);
    ctrl.SetBlockColorIndex(0x222222);
    ctrl.SetDefaultColorIndex(0x333333);
    create();
    ctrl.SetSelColorIndex(0);  // selects "ByBlock" (1) but stores the colour of position 2
    EXPECT_EQ(box.selection, 1);
    EXPECT_EQ(ctrl.selectedColor, 0x333333u);
    ctrl.SetSelColorIndex(256);  // selects "ByLayer" (0), colour of position 1
    EXPECT_EQ(ctrl.selectedColor, 0x222222u);
    ctrl.SetSelColorIndex(-1);  // position 1 and the colour of position 1
    EXPECT_EQ(ctrl.selectedColor, 0x222222u);
}

TEST_F(ColourCtrl, SetSelColorIndexOfAPaletteColour) {
    create();
    expectSelects(5, 7, 5);
    EXPECT_EQ(box.textAt(7), "Blue");
    ctrl.SetDisplayApprovalStatusColor(1);
    ctrl.SetSelColorIndex(5);
    EXPECT_EQ(box.selection, 8);
}

TEST_F(ColourCtrl, SetSelColorIndexOfAnAbsentColourDoesNothingUntilAdded) {
    create();
    ctrl.SetSelColorIndex(3);
    site.modifiedCount = 0;
    ctrl.SetSelColorIndex(42);
    EXPECT_EQ(box.selection, 5);
    EXPECT_EQ(ctrl.comboIndex, 5);
    EXPECT_EQ(site.modifiedCount, 0);
    ctrl.AddColorIndex(42);
    EXPECT_EQ(box.textAt(10), "Color 42");
    expectSelects(42, 10, 42);
}

TEST_F(ColourCtrl, SetSelColorIndexMarksModifiedAndFiresNothing) {
    create();
    ctrl.SetSelColorIndex(1);
    EXPECT_EQ(site.modifiedCount, 1);
    EXPECT_TRUE(site.events.empty());
}

TEST_F(ColourCtrl, GetSelColorIndexReadsTheStoredSelectionNotTheLiveOne) {
    create();
    ctrl.SetSelColorIndex(1);
    box.selection = 0;  // the list moved without a notification
    EXPECT_EQ(ctrl.GetSelColorIndex(), 1);
}

TEST_F(ColourCtrl, GetSelColorIndexOfAColourOutsideThePalette) {
    create();
    ctrl.comboIndex = 5;
    ctrl.selectedColor = 0x00123456;
    EXPECT_EQ(ctrl.GetSelColorIndex(), -1);
}

// ---- AddColorIndex / FindColor ----

TEST_F(ColourCtrl, AddColorIndexOfShownColoursAddsNothing) {
    create();
    EXPECT_TRUE(ctrl.AddColorIndex(7));   // white is found at "White"
    EXPECT_TRUE(ctrl.AddColorIndex(10));  // entry 10 equals "Red"
    EXPECT_TRUE(ctrl.AddColorIndex(0));   // looks for white
    EXPECT_TRUE(ctrl.AddColorIndex(257)); // FindColor(257) is 3
    EXPECT_EQ(box.count(), 11);
    EXPECT_EQ(site.modifiedCount, 0);
}

TEST_F(ColourCtrl, AddColorIndexInsertsBeforeSelectInOrderWithoutChangingTheSelection) {
    create();
    ctrl.SetSelColorIndex(3);
    site.modifiedCount = 0;
    EXPECT_TRUE(ctrl.AddColorIndex(42));
    EXPECT_TRUE(ctrl.AddColorIndex(120));
    EXPECT_EQ(box.textAt(10), "Color 42");
    EXPECT_EQ(box.textAt(11), "Color 120");
    EXPECT_EQ(box.textAt(12), "Select..");
    EXPECT_EQ(box.colorAt(10), TevToRGB(42));
    EXPECT_EQ(box.colorAt(11), TevToRGB(120));
    EXPECT_EQ(box.selection, 5);
    EXPECT_EQ(site.modifiedCount, 2);
}

TEST_F(ColourCtrl, AddColorIndexUsesTheCustomPrefix) {
    create();
    ctrl.SetComboText(CKivColorCtrl::kCustomColor, KivString(u"Farbe"));
    ctrl.AddColorIndex(200);
    EXPECT_EQ(box.textAt(10), "Farbe 200");
}

TEST_F(ColourCtrl, FindColorOf257Is3InBothLayouts) {
    create();
    EXPECT_EQ(ctrl.FindColor(257), 3);
    ctrl.SetDisplayApprovalStatusColor(1);
    EXPECT_EQ(ctrl.FindColor(257), 3);
    EXPECT_EQ(ctrl.FindColor(258), 0);
}

TEST_F(ColourCtrl, FindColorWalksFromTheFirstNamedColour) {
    ctrl.SetLayerColorIndex(0x000000FF);  // "ByLayer" shows red too
    create();
    EXPECT_EQ(ctrl.FindColor(1), 3);   // found at "Red", not at "ByLayer"
    EXPECT_EQ(ctrl.FindColor(7), 9);   // white at "White", before "Select.."
    EXPECT_EQ(ctrl.FindColor(256), 9); // out-of-range values look for white
    EXPECT_EQ(ctrl.FindColor(42), -1);
    ctrl.SetDisplayApprovalStatusColor(1);
    EXPECT_EQ(ctrl.FindColor(1), 4);
}

TEST_F(ColourCtrl, FindColorWithoutAWindowIsMinusOne) {
    EXPECT_EQ(ctrl.FindColor(1), -1);
    EXPECT_EQ(ctrl.FindColor(257), 3);
}

// ---- Conversions ----

TEST_F(ColourCtrl, RgbEquivalent) {
    ctrl.SetLayerColorIndex(0x00123456);
    ctrl.SetDefaultColorIndex(0x00ABCDEF);
    ctrl.SetApprovalStatusColorIndex(0x00010203);
    EXPECT_EQ(ctrl.RGB_Equivalent(256), 0x00FFFFFFu);  // whatever layerColor holds
    EXPECT_EQ(ctrl.RGB_Equivalent(0), 0x00FFFFFFu);
    EXPECT_EQ(ctrl.RGB_Equivalent(257), 0x00ABCDEFu);
    EXPECT_EQ(ctrl.RGB_Equivalent(258), 0x00010203u);
    EXPECT_EQ(ctrl.RGB_Equivalent(1), 0x000000FFu);
}

TEST_F(ColourCtrl, TevEquivalentIsAnExactMatch) {
    EXPECT_EQ(ctrl.Tev_Equivalent(0x000000FF), 1);
    EXPECT_EQ(ctrl.Tev_Equivalent(0x00123456), -1);
    EXPECT_EQ(ctrl.Tev_Equivalent(0x00FFFFFF), 7);
}

// ---- Properties ----

TEST_F(ColourCtrl, ComboIndexSelectsStoresTheColourAndMarksModifiedWithoutEvent) {
    create();
    ctrl.SetComboIndex(7);
    EXPECT_EQ(ctrl.GetComboIndex(), 7);
    EXPECT_EQ(box.selection, 7);
    EXPECT_EQ(ctrl.selectedColor, 0x00FF0000u);
    EXPECT_EQ(site.modifiedCount, 1);
    EXPECT_TRUE(site.events.empty());
    ctrl.SetComboIndex(-1);
    EXPECT_EQ(box.selection, -1);
    EXPECT_EQ(ctrl.selectedColor, 0xFFFFFFFFu);  // CB_ERR read as the item data
}

TEST_F(ColourCtrl, BlockLayerAndApprovalSettersWriteFixedPositionsWhateverTheLayout) {
    create();
    box.log.clear();
    ctrl.SetBlockColorIndex(0x000B0B0B);  // position 2: "Default" in this layout (kept)
    ctrl.SetLayerColorIndex(0x000C0C0C);  // position 1: "ByBlock"
    ctrl.SetApprovalStatusColorIndex(0x000D0D0D);  // position 0: "ByLayer"
    EXPECT_EQ(box.colorAt(2), 0x000B0B0Bu);
    EXPECT_EQ(box.colorAt(1), 0x000C0C0Cu);
    EXPECT_EQ(box.colorAt(0), 0x000D0D0Du);
    EXPECT_EQ(ctrl.GetBlockColorIndex(), 0x000B0B0Bu);
    EXPECT_EQ(ctrl.GetLayerColorIndex(), 0x000C0C0Cu);
    EXPECT_EQ(ctrl.GetApprovalStatusColorIndex(), 0x000D0D0Du);
    EXPECT_EQ(box.log, (Texts{"RedrawWindow(261)", "RedrawWindow(261)", "RedrawWindow(261)"}));
    EXPECT_EQ(site.modifiedCount, 3);
}

TEST_F(ColourCtrl, DefaultColorIndexFollowsTheLayout) {
    create();
    ctrl.SetDefaultColorIndex(0x00000A0A);
    EXPECT_EQ(box.colorAt(2), 0x00000A0Au);
    ctrl.SetDisplayApprovalStatusColor(1);
    ctrl.SetDefaultColorIndex(0x00000B0B);
    EXPECT_EQ(box.colorAt(3), 0x00000B0Bu);
    EXPECT_EQ(ctrl.GetDefaultColorIndex(), 0x00000B0Bu);
}

TEST_F(ColourCtrl, DisplayApprovalStatusInsertsOnceAndNeverRemoves) {
    ctrl.SetApprovalStatusColorIndex(0x00ABCDEF);
    create();
    site.modifiedCount = 0;
    ctrl.SetDisplayApprovalStatusColor(1);
    EXPECT_EQ(box.count(), 12);
    EXPECT_EQ(box.textAt(0), "ByApprovalStatus");
    EXPECT_EQ(box.colorAt(0), 0x00ABCDEFu);
    ctrl.SetDisplayApprovalStatusColor(1);
    ctrl.SetDisplayApprovalStatusColor(-1);  // VARIANT_TRUE is the same boolean
    EXPECT_EQ(box.count(), 12);
    ctrl.SetDisplayApprovalStatusColor(0);
    EXPECT_EQ(ctrl.GetDisplayApprovalStatusColor(), 0);
    EXPECT_EQ(box.count(), 12);
    EXPECT_EQ(box.textAt(0), "ByApprovalStatus");
    EXPECT_EQ(site.modifiedCount, 0);
    // The members switch back to the layout without it while the item stays.
    expectSelects(256, 0, 256);
    EXPECT_EQ(box.textAt(0), "ByApprovalStatus");
}

// ---- SetComboText ----

TEST_F(ColourCtrl, SetComboTextCustomWithFewerThanThirteenItemsOnlyStoresThePrefix) {
    create();
    ctrl.AddColorIndex(42);  // 12 items
    ctrl.SetComboText(CKivColorCtrl::kCustomColor, KivString(u"T"));
    EXPECT_EQ(ctrl.customPrefix, KivString(u"T"));
    EXPECT_EQ(box.textAt(10), "Color 42");
}

TEST_F(ColourCtrl, SetComboTextCustomRenamesFromPositionElevenWithoutApprovalStatus) {
    create();
    ctrl.AddColorIndex(42);
    ctrl.AddColorIndex(120);
    ctrl.AddColorIndex(200);  // positions 10, 11, 12; "Select.." at 13
    ctrl.SetComboText(CKivColorCtrl::kCustomColor, KivString(u"T"));
    EXPECT_EQ(box.textAt(10), "Color 42");  // the first added colour keeps its old text (kept)
    EXPECT_EQ(box.textAt(11), "T 120");
    EXPECT_EQ(box.textAt(12), "T 200");
    EXPECT_EQ(box.textAt(13), "Select..");
    EXPECT_EQ(box.colorAt(11), TevToRGB(120));
    EXPECT_EQ(box.colorAt(12), TevToRGB(200));
}

TEST_F(ColourCtrl, SetComboTextCustomRenamesFromPositionElevenWithApprovalStatus) {
    create();
    ctrl.SetDisplayApprovalStatusColor(1);
    ctrl.AddColorIndex(42);  // position 11; "Select.." at 12; 13 items
    ctrl.SetComboText(CKivColorCtrl::kCustomColor, KivString(u"T"));
    EXPECT_EQ(box.textAt(11), "T 42");
    EXPECT_EQ(box.textAt(12), "Select..");
}

TEST_F(ColourCtrl, SetComboTextCustomNamesByTheIndexOfTheItemColour) {
    create();
    ctrl.AddColorIndex(42);
    ctrl.AddColorIndex(255);  // white at 255 equals "White": FindColor finds it, nothing added
    ctrl.AddColorIndex(250);
    ASSERT_EQ(box.count(), 13);
    ctrl.SetComboText(CKivColorCtrl::kCustomColor, KivString(u"N"));
    EXPECT_EQ(box.textAt(11), "N 250");
}

TEST_F(ColourCtrl, SetComboTextOfAFixedItemKeepsItsColourAndClearsTheSelection) {
    ctrl.SetLayerColorIndex(0x00111111);
    create();
    ctrl.SetSelColorIndex(256);
    site.modifiedCount = 0;
    ctrl.SetComboText(CKivColorCtrl::kByLayer, KivString(u"Layer!"));
    EXPECT_EQ(box.textAt(0), "Layer!");
    EXPECT_EQ(box.colorAt(0), 0x00111111u);
    EXPECT_EQ(box.selection, -1);  // the selection is not restored
    EXPECT_EQ(site.modifiedCount, 0);
    ctrl.SetComboText(CKivColorCtrl::kSelectColor, KivString(u"More..."));
    EXPECT_EQ(box.textAt(10), "More...");
    EXPECT_EQ(box.colorAt(10), 0x00FFFFFFu);
    ctrl.SetComboText(CKivColorCtrl::kRed, KivString(u"Rot"));
    EXPECT_EQ(box.textAt(3), "Rot");
    EXPECT_EQ(box.colorAt(3), 0x000000FFu);
}

TEST_F(ColourCtrl, SetComboTextFollowsTheApprovalLayout) {
    create();
    ctrl.SetDisplayApprovalStatusColor(1);
    ctrl.SetComboText(CKivColorCtrl::kByLayer, KivString(u"L"));
    ctrl.SetComboText(CKivColorCtrl::kByApprovalStatus, KivString(u"A"));
    EXPECT_EQ(box.textAt(0), "A");
    EXPECT_EQ(box.textAt(1), "L");
}

TEST_F(ColourCtrl, SetComboTextZeroWithoutApprovalStatusAppendsAfterSelect) {
    create();
    ctrl.SetComboText(CKivColorCtrl::kByApprovalStatus, KivString(u"Approval"));
    ASSERT_EQ(box.count(), 12);
    EXPECT_EQ(box.textAt(10), "Select..");
    EXPECT_EQ(box.textAt(11), "Approval");
    EXPECT_EQ(box.items[11].data, 0);  // its item data is never set
}

TEST_F(ColourCtrl, SetComboTextOutOfRangeChangesNothing) {
    create();
    ctrl.SetComboText(50, KivString(u"x"));
    ctrl.SetComboText(-5, KivString(u"x"));
    EXPECT_EQ(box.texts(), kElevenItems);
}

// ---- Events ----

TEST_F(ColourCtrl, MouseChoiceFiresSelChangeThenSelAndCloseUpWithTheStaleColour) {
    create();
    mousePick(3);  // "Red"
    // colorIdx is the Tev of the item stored before the change: none yet, CB_ERR reads as white (7).
    EXPECT_EQ(events(), (Texts{"SelChange(3,7)", "SelAndCloseUp(3,1)"}));
    EXPECT_EQ(site.focusRequests, 1);  // CBN_DROPDOWN gives the control the focus
    EXPECT_EQ(ctrl.comboIndex, 3);
    EXPECT_EQ(ctrl.GetSelColorIndex(), 1);
    mousePick(7);  // "Blue": SelChange still reports the colour of "Red"
    EXPECT_EQ(events().at(2), "SelChange(7,1)");
    EXPECT_EQ(events().at(3), "SelAndCloseUp(7,5)");
    EXPECT_EQ(ctrl.droppedDuringChange(), false);
}

TEST_F(ColourCtrl, KeyboardChoiceWhileClosedFiresBothAtOnce) {
    create();
    ctrl.SetSelColorIndex(1);
    keyPick(4);
    EXPECT_EQ(events(), (Texts{"SelChange(4,1)", "SelAndCloseUp(4,2)"}));
    EXPECT_EQ(ctrl.GetSelColorIndex(), 2);
    EXPECT_EQ(site.focusRequests, 0);
}

TEST_F(ColourCtrl, EventDispidsAndArgumentTypes) {
    create();
    keyPick(3);
    ASSERT_EQ(site.events.size(), 2u);
    EXPECT_EQ(site.events[0].dispid, 1);
    EXPECT_EQ(site.events[1].dispid, 2);
    for (const auto& e : site.events) {
        ASSERT_EQ(e.args.size(), 2u);
        EXPECT_EQ(e.args[0].kind, KivEventArg::Kind::Long);
        EXPECT_EQ(e.args[1].kind, KivEventArg::Kind::Long);
    }
}

// ---- "Select.." ----

TEST_F(ColourCtrl, SelectConfirmedWithANewColourInsertsTheSnappedItem) {
    create();
    ctrl.SetSelColorIndex(1);
    // 0x00123456 is red 0x56, green 0x34, blue 0x12. Its nearest palette entry, worked out by hand, is
    // 46 (0x4C3900: 10² + 5² + 18² = 449); no other entry comes closer.
    dialog.willConfirm(0x00123456);
    mousePick(10);  // "Select.."
    EXPECT_EQ(dialog.shown, 1);
    EXPECT_EQ(dialog.initialColors.at(0), 0u);
    EXPECT_EQ(box.textAt(10), "Color 46");
    EXPECT_EQ(box.textAt(11), "Select..");
    EXPECT_EQ(box.colorAt(10), 0x0000394Cu);
    EXPECT_EQ(box.selection, 10);
    EXPECT_EQ(ctrl.comboIndex, 10);
    EXPECT_EQ(ctrl.selectedColor, 0x0000394Cu);
    // The event reports the former position of "Select.." and the colour computed before the dialog.
    EXPECT_EQ(events().at(0), "SelChange(10,1)");
    EXPECT_EQ(events().at(1), "SelAndCloseUp(10,46)");
    EXPECT_EQ(ctrl.GetSelColorIndex(), 46);
}

TEST_F(ColourCtrl, SelectConfirmedWithAShownColourSelectsIt) {
    create();
    ctrl.SetSelColorIndex(5);
    dialog.willConfirm(0x000000FE);  // snaps to red (1), shown at "Red"
    keyPick(10);
    EXPECT_EQ(box.count(), 11);
    EXPECT_EQ(box.selection, 3);
    EXPECT_EQ(ctrl.comboIndex, 3);
    EXPECT_EQ(ctrl.selectedColor, 0x000000FFu);
    EXPECT_EQ(events(), (Texts{"SelChange(10,5)", "SelAndCloseUp(3,1)"}));
    EXPECT_EQ(dialog.shown, 1);  // the confirmation no longer concerns "Select.."
}

TEST_F(ColourCtrl, SelectCancelledRestoresTheStoredSelection) {
    create();
    ctrl.SetSelColorIndex(3);
    dialog.willCancel();
    keyPick(10);
    EXPECT_EQ(box.count(), 11);
    EXPECT_EQ(box.selection, 5);
    EXPECT_EQ(ctrl.comboIndex, 5);
    EXPECT_EQ(events(), (Texts{"SelChange(5,3)", "SelAndCloseUp(5,3)"}));
}

TEST_F(ColourCtrl, SelectFromTheDroppedListOpensTheDialogOnceOnSelChange) {
    create();
    dialog.willConfirm(0x00123456);
    mousePick(10);
    EXPECT_EQ(dialog.shown, 1);  // the close-up finds the new item, not "Select.."
}

TEST_F(ColourCtrl, SelectWithApprovalStatusShown) {
    create();
    ctrl.SetDisplayApprovalStatusColor(1);
    dialog.willConfirm(0x00123456);  // snaps to 46, as above
    keyPick(11);
    EXPECT_EQ(box.textAt(11), "Color 46");
    EXPECT_EQ(box.textAt(12), "Select..");
    EXPECT_EQ(events().at(0).rfind("SelChange(11,", 0), 0u);
}

// ---- Do-nothing members ----

TEST_F(ColourCtrl, TooltipAndAboutDoNothing) {
    create();
    box.log.clear();
    ctrl.SetTooltipText(KivString(u"tip"));
    ctrl.AboutDisplay(true);
    EXPECT_TRUE(box.log.empty());
    EXPECT_EQ(site.modifiedCount, 0);
    EXPECT_EQ(box.texts(), kElevenItems);
}
