// The linetype combo: the three fixed rows, loading from a file (found, not found, at most once,
// sorted), defining, unloading, selecting, the events and their names, the deliberate quirks, rows
// and definitions in step also for a control filled before its window exists, and bad input.
#include <string>

#include "AssertCapture.h"
#include "KivLinetypeFile.h"
#include "LinetypeFixture.h"

namespace {
class LinetypeCtrl : public LinetypeFixture {
protected:
    void create(int height = 21) { ctrl.OnCreate(box, height); }
    void mousePick(int index) { ControlFixture::mousePick(ctrl, index); }
    void keyPick(int index) { ControlFixture::keyPick(ctrl, index); }
    // Points the control at `file` under `fileName` and loads `name` from it.
    void loadFrom(const TempFile& file, const char16_t* fileName, const KivString& name) {
        useFile(ctrl, file, fileName);
        ctrl.LoadLinetype(name);
    }
    CKivLinetypeCtrl ctrl{site};
};
const Texts kFixed{"ByLayer", "ByBlock", "Continuous"};
}  // namespace

// ---- Construction and creation ----

TEST_F(LinetypeCtrl, ConstructionHoldsTheThreeFixedItemsAndNoDefinitionsYet) {
    EXPECT_EQ(namesOf(ctrl), kFixed);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(ctrl.items()[i].definition, KivString(u"A, 12.7")) << i;
    EXPECT_EQ(ctrl.definitions().getLogicalLength(), 0);
    EXPECT_EQ(ctrl.sortedNames().getLogicalLength(), 0);
    EXPECT_EQ(ctrl.GetComboIndex(), -1);
    EXPECT_EQ(ctrl.GetSupportPath(), KivString());
    EXPECT_EQ(ctrl.GetLinetypeFile(), KivString());
    EXPECT_FALSE(ctrl.droppedDuringChange());
    EXPECT_EQ(ctrl.GetCount(), 0);  // no window, no rows
    EXPECT_EQ(ctrl.traits().style, 0x50200E13u);
    EXPECT_EQ(ctrl.traits().id, 102);
    EXPECT_EQ(KivString(ctrl.traits().designText), KivString(u"KivLinetypeComboBox"));
}

TEST_F(LinetypeCtrl, CreationSetsFontFieldHeightRowsDefinitionsAndTheStoredSelection) {
    ctrl.SetComboIndex(1);
    create(25);
    EXPECT_EQ(box.log.at(0), "SetFont(DEFAULT_GUI_FONT)");
    EXPECT_EQ(box.log.at(1), "SetItemHeight(-1,21)");
    EXPECT_EQ(box.texts(), kFixed);
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "A, 12.7", "A, 12.7"}));
    EXPECT_EQ(box.selection, 1);
}

TEST_F(LinetypeCtrl, GetCountAfterConstructionAndInitializeIsThree) {
    create();
    ctrl.Initialize();
    EXPECT_EQ(ctrl.GetCount(), 3);
    EXPECT_EQ(box.texts(), kFixed);
}

// ---- Loading ----

TEST_F(LinetypeCtrl, LoadingDashedAddsTheRowDashedWithTheFilesDefinition) {
    create();
    loadSample(ctrl, {u"dashed"});
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Dashed"}));
    EXPECT_EQ(namesOf(ctrl).back(), "Dashed");
    EXPECT_EQ(ctrl.items()[3].definition, KivString(u"A,12.7,-6.35"));
    EXPECT_EQ(ctrl.definitionOf(3), KivString(u"A,12.7,-6.35"));
    EXPECT_EQ(sortedNamesOf(ctrl), (Texts{"dashed"}));  // the name as given
    EXPECT_EQ(site.modifiedCount, 0);                   // loading does not mark the control modified
}

TEST_F(LinetypeCtrl, LoadingDashedASecondTimeAddsNothingNorDoesAFixedName) {
    // The file defines CONTINUOUS too: only the row already showing that name keeps it out.
    TempFile file(std::string(kSampleLin) + "*CONTINUOUS,Solid line\nA,9\n", "fixed.lin");
    create();
    loadFrom(file, u"fixed.lin", u"Dashed");
    ctrl.LoadLinetype(KivString(u"Dashed"));
    ctrl.LoadLinetype(KivString(u"DASHED"));
    ctrl.LoadLinetype(KivString(u"continuous"));
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Dashed"}));
    EXPECT_EQ(namesOf(ctrl), box.texts());
    EXPECT_EQ(sortedNamesOf(ctrl), (Texts{"Dashed"}));
    // Once row 2 shows another name, the file's CONTINUOUS loads like any other linetype (sorted as
    // passed: "continuous" after "Dashed").
    ctrl.DefineLinetypeContinuous(KivString(u"Solid"), KivString(u"A,1"));
    ctrl.LoadLinetype(KivString(u"continuous"));
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Solid", "Dashed", "Continuous"}));
    EXPECT_EQ(ctrl.definitionOf(4), KivString(u"A,9"));
}

TEST_F(LinetypeCtrl, AHeaderAtTheFirstByteIsNotFound) {
    TempFile file("*DASHED,Dashed\nA,12.7,-6.35\n", "first.lin");
    create();
    loadFrom(file, u"first.lin", u"DASHED");
    EXPECT_EQ(ctrl.GetCount(), 3);
    // The first match decides: a header at the first byte that stands again later is not found
    // there either (kept: the lookup never searches past its first match).
    TempFile again("*DASHED,Dashed\nA,12.7,-6.35\n;; again\n*DASHED,later\nA,2,-2\n", "again.lin");
    loadFrom(again, u"again.lin", u"DASHED");
    EXPECT_EQ(ctrl.GetCount(), 3);
    EXPECT_EQ(namesOf(ctrl), kFixed);
}

TEST_F(LinetypeCtrl, ALowerCaseHeaderIsNotFound) {
    create();
    loadSample(ctrl, {u"dashdot", u"DASHDOT"});
    EXPECT_EQ(ctrl.GetCount(), 3);
}

TEST_F(LinetypeCtrl, DashFindsTheDashedHeaderAndLoadsItsDefinitionUnderItsOwnName) {
    TempFile file(";;\n*DASHED,Dashed __ __ __\nA,12.7,-6.35\n", "only.lin");
    create();
    loadFrom(file, u"only.lin", u"DASH");
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Dash"}));
    EXPECT_EQ(ctrl.definitionOf(3), KivString(u"A,12.7,-6.35"));
}

TEST_F(LinetypeCtrl, LoadedRowsAreSortedByTheirNamesAsPassedWhateverTheLoadOrder) {
    create();
    loadSample(ctrl, {u"DOT", u"CENTER", u"DASHED"});
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Center", "Dashed", "Dot"}));
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "A, 12.7", "A, 12.7", "A,31.75,-6.35,6.35,-6.35", "A,12.7,-6.35",
                                          "A,0,-6.35"}));
    EXPECT_EQ(sortedNamesOf(ctrl), (Texts{"CENTER", "DASHED", "DOT"}));
    // The order is KivString::compare's (by code unit): names as passed, so "center" sorts after "DOT".
    FakeComboBox other;
    RecordingSite otherSite;
    CKivLinetypeCtrl second(otherSite);
    second.OnCreate(other, 21);
    loadSample(second, {u"center", u"DOT"});
    EXPECT_EQ(other.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Dot", "Center"}));
}

TEST_F(LinetypeCtrl, TheFileIsTheSupportPathAndTheNameJoinedByOneBackslash) {
    EXPECT_EQ(KivLinetypeFilePath(KivString(u"C:\\Lin"), KivString(u"a.lin")), KivString(u"C:\\Lin\\a.lin"));
    EXPECT_EQ(KivLinetypeFilePath(KivString(u"C:\\Lin\\"), KivString(u"a.lin")), KivString(u"C:\\Lin\\\\a.lin"));
    EXPECT_EQ(KivLinetypeFilePath(KivString(), KivString(u"a.lin")), KivString(u"\\a.lin"));
    ctrl.SetSupportPath(KivString(u"C:\\Lin"));
    ctrl.SetLinetypeFile(KivString(u"a.lin"));
    EXPECT_EQ(ctrl.linetypePath(), KivString(u"C:\\Lin\\a.lin"));
    EXPECT_EQ(site.modifiedCount, 0);  // neither setter marks the control modified
}

TEST_F(LinetypeCtrl, MissingEmptyFolderAndWrongFilesLoadNothing) {
    TempFile empty("", "empty.lin");
    create();
    loadFrom(empty, u"empty.lin", u"DASHED");
    loadFrom(empty, u"missing.lin", u"DASHED");
    loadFrom(empty, u"", u"DASHED");  // the folder itself
    ctrl.SetSupportPath(KivString());
    ctrl.SetLinetypeFile(KivString());
    ctrl.LoadLinetype(KivString(u"DASHED"));
    EXPECT_EQ(ctrl.GetCount(), 3);
    EXPECT_EQ(ctrl.items().getLogicalLength(), 3);
}

TEST_F(LinetypeCtrl, WindowsLineEndsKeepTheCarriageReturnInTheDefinition) {
    TempFile file(";; crlf\r\n*DASHED,Dashed\r\nA,12.7,-6.35\r\n", "crlf.lin");
    create();
    loadFrom(file, u"crlf.lin", u"DASHED");
    EXPECT_EQ(ctrl.definitionOf(3), KivString(u"A,12.7,-6.35\r"));
}

TEST_F(LinetypeCtrl, MalformedEntriesLoadADefiniteDefinition) {
    // No "A," after the header: the row comes with an empty definition. No line feed after it: the
    // definition runs to the end of the file.
    TempFile noDefinition(";;\n*BROKEN,no definition line\n", "broken.lin");
    TempFile noLineFeed(";;\n*LAST,last line\nA,2,-1", "last.lin");
    create();
    loadFrom(noDefinition, u"broken.lin", u"BROKEN");
    loadFrom(noLineFeed, u"last.lin", u"LAST");
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Broken", "Last"}));
    EXPECT_EQ(ctrl.definitionOf(3), KivString());
    EXPECT_EQ(ctrl.definitionOf(4), KivString(u"A,2,-1"));
}

TEST_F(LinetypeCtrl, NamesWithStarsCommasAndTenThousandCharactersAreLookedUpAsText) {
    const std::string longName(10000, 'L');
    TempFile file(";;\n*A*B,star\nA,1,-1\n*C,D,comma\nA,2,-2\n*" + longName + ",long\nA,3,-3\n", "odd.lin");
    create();
    loadFrom(file, u"odd.lin", u"a*b");
    ctrl.LoadLinetype(KivString(u"c,d"));
    ctrl.LoadLinetype(KivString(longName.c_str()));
    ctrl.LoadLinetype(KivString(u"*"));  // key "**": not in the file
    ASSERT_EQ(ctrl.GetCount(), 6);
    // Sorted by code unit: "LLL..." before "a*b" before "c,d".
    EXPECT_EQ(box.items[3].text.length(), 10000);
    EXPECT_EQ(ctrl.definitionOf(3), KivString(u"A,3,-3"));
    EXPECT_EQ(box.textAt(4), "A*b");
    EXPECT_EQ(ctrl.definitionOf(4), KivString(u"A,1,-1"));
    EXPECT_EQ(box.textAt(5), "C,d");
    EXPECT_EQ(ctrl.definitionOf(5), KivString(u"A,2,-2"));
}

TEST_F(LinetypeCtrl, ABinaryFileIsReadAsBytesAndHoldsNoLinetype) {
    std::string bytes;
    for (int i = 0; i < 4096; ++i) bytes.push_back(static_cast<char>((i * 131 + 7) & 0xFF));
    bytes[100] = '\0';
    TempFile file(bytes, "binary.lin");
    create();
    loadFrom(file, u"binary.lin", u"DASHED");
    EXPECT_EQ(ctrl.GetCount(), 3);
}

TEST_F(LinetypeCtrl, AFiftyMegabyteFileIsReadWhole) {
    std::string big = ";; big\n";
    big.append(50u * 1024 * 1024, 'x');
    big += "\n*FAR,at the end\nA,7,-7\n";
    TempFile file(big, "big.lin");
    create();
    loadFrom(file, u"big.lin", u"FAR");
    ASSERT_EQ(ctrl.GetCount(), 4);
    EXPECT_EQ(ctrl.definitionOf(3), KivString(u"A,7,-7"));
}

// ---- Defining ----

TEST_F(LinetypeCtrl, DefiningAFixedNameChangesNothing) {
    create();
    ctrl.DefineLinetype(KivString(u"Dashed"), KivString(u"A,1,-1"));
    site.modifiedCount = 0;
    ctrl.DefineLinetype(KivString(u"CONTINUOUS"), KivString(u"A,5,-5"));
    ctrl.DefineLinetype(KivString(u"bylayer"), KivString(u"A,5,-5"));
    ctrl.DefineLinetype(KivString(u"ByBlock"), KivString(u"A,5,-5"));
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Dashed"}));
    EXPECT_EQ(namesOf(ctrl), box.texts());
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "A, 12.7", "A, 12.7", "A,1,-1"}));
    EXPECT_EQ(sortedNamesOf(ctrl), (Texts{"Dashed"}));  // no sorted name either
    EXPECT_EQ(site.modifiedCount, 0);
}

TEST_F(LinetypeCtrl, DefineLinetypeInsertsAtTheSortedPlaceWithItsDefinition) {
    create();
    ctrl.DefineLinetype(KivString(u"zigzag"), KivString(u"A,1,-1"));
    ctrl.DefineLinetype(KivString(u"BORDER"), KivString(u"A,2,-2"));
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Border", "Zigzag"}));
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "A, 12.7", "A, 12.7", "A,2,-2", "A,1,-1"}));
    EXPECT_EQ(site.modifiedCount, 2);
}

TEST_F(LinetypeCtrl, DefineLinetypeByLayerStoresTheNameAsTheRowsDefinition) {
    create();
    ctrl.DefineLinetypeByLayer(KivString(u"Layer"), KivString(u"A,5,-5"));
    EXPECT_EQ(box.texts(), (Texts{"Layer", "ByBlock", "Continuous"}));
    EXPECT_EQ(ctrl.items()[0].name, KivString(u"Layer"));
    EXPECT_EQ(ctrl.items()[0].definition, KivString(u"A,5,-5"));
    EXPECT_EQ(ctrl.definitionOf(0), KivString(u"Layer"));  // kept: the name, not the definition
    ctrl.DefineLinetypeByBlock(KivString(u"Block"), KivString(u"A,1"));
    ctrl.DefineLinetypeContinuous(KivString(u"Solid"), KivString(u"A,9"));
    EXPECT_EQ(box.texts(), (Texts{"Layer", "Block", "Solid"}));
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"Layer", "Block", "Solid"}));
    EXPECT_EQ(site.modifiedCount, 3);
}

TEST_F(LinetypeCtrl, ARowTheComboRefusesIsTakenBackAndTheRowsAfterItStayInStep) {
    create();
    box.failAddAfter(5);
    ctrl.DefineLinetype(KivString(u"Dot"), KivString(u"A,0,-1"));
    ctrl.DefineLinetype(KivString(u"Dashed"), KivString(u"A,1,-1"));
    ctrl.DefineLinetype(KivString(u"Border"), KivString(u"A,2,-2"));  // no room in the list: refused
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Dashed", "Dot"}));
    EXPECT_EQ(namesOf(ctrl), box.texts());
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "A, 12.7", "A, 12.7", "A,1,-1", "A,0,-1"}));
    EXPECT_EQ(sortedNamesOf(ctrl), (Texts{"Dashed", "Dot"}));
    keyPick(4);
    EXPECT_EQ(events(), (Texts{"SelChange(\"Dot\")", "SelAndCloseUp(\"Dot\")"}));
    // With room again the same definition arrives at its sorted place.
    box.failAddAfter(-1);
    ctrl.DefineLinetype(KivString(u"Border"), KivString(u"A,2,-2"));
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Border", "Dashed", "Dot"}));
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "A, 12.7", "A, 12.7", "A,2,-2", "A,1,-1", "A,0,-1"}));
}

// A fixed row is renamed by taking it out of the child and putting it back: when the child refuses
// it back, the row is taken out of the model too, and every later row keeps its name and definition.
TEST_F(LinetypeCtrl, AFixedRowTheComboRefusesBackIsTakenOutOfTheModelToo) {
    create();
    ctrl.DefineLinetype(KivString(u"Dashed"), KivString(u"A,1,-1"));
    ctrl.DefineLinetype(KivString(u"Dot"), KivString(u"A,0,-1"));
    box.failAddAfter(4);  // once ByBlock is out, there is no room to put it back
    ctrl.DefineLinetypeByBlock(KivString(u"Block"), KivString(u"A,1"));
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "Continuous", "Dashed", "Dot"}));
    EXPECT_EQ(namesOf(ctrl), box.texts());
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "A, 12.7", "A,1,-1", "A,0,-1"}));
    keyPick(3);
    EXPECT_EQ(events(), (Texts{"SelChange(\"Dot\")", "SelAndCloseUp(\"Dot\")"}));
}

// ---- Unloading ----

TEST_F(LinetypeCtrl, UnloadingTakesTheRowItsDefinitionItemAndSortedName) {
    create();
    loadSample(ctrl, {u"DOT", u"CENTER", u"DASHED"});
    ctrl.UnloadLinetype(KivString(u"dashed"));
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Center", "Dot"}));
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "A, 12.7", "A, 12.7", "A,31.75,-6.35,6.35,-6.35", "A,0,-6.35"}));
    EXPECT_EQ(namesOf(ctrl), (Texts{"ByLayer", "ByBlock", "Continuous", "Center", "Dot"}));
    EXPECT_EQ(sortedNamesOf(ctrl), (Texts{"CENTER", "DOT"}));
    EXPECT_EQ(site.modifiedCount, 1);
}

TEST_F(LinetypeCtrl, UnloadingAFixedRowOrAnUnknownNameDoesNothing) {
    create();
    ctrl.DefineLinetype(KivString(u"Dashed"), KivString(u"A,1,-1"));
    site.modifiedCount = 0;
    ctrl.UnloadLinetype(KivString(u"ByLayer"));
    ctrl.UnloadLinetype(KivString(u"continuous"));
    ctrl.UnloadLinetype(KivString(u"NoSuchLinetype"));
    ctrl.UnloadLinetype(KivString());
    EXPECT_EQ(ctrl.GetCount(), 4);
    EXPECT_EQ(site.modifiedCount, 0);
}

TEST_F(LinetypeCtrl, RemoveAllKeepsOnlyTheThreeFixedRows) {
    create();
    ctrl.DefineLinetypeByBlock(KivString(u"Block"), KivString(u"A,1"));
    ctrl.DefineLinetype(KivString(u"Dashed"), KivString(u"A,1,-1"));
    ctrl.DefineLinetype(KivString(u"Dot"), KivString(u"A,0,-1"));
    site.modifiedCount = 0;
    ctrl.RemoveAll();
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "Block", "Continuous"}));
    EXPECT_EQ(ctrl.items().getLogicalLength(), 3);
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "Block", "A, 12.7"}));
    EXPECT_EQ(ctrl.sortedNames().getLogicalLength(), 0);
    EXPECT_EQ(site.modifiedCount, 1);
    ctrl.DefineLinetype(KivString(u"Dot"), KivString(u"A,0,-1"));  // sorted anew
    EXPECT_EQ(box.textAt(3), "Dot");
}

// ---- Selecting ----

TEST_F(LinetypeCtrl, SelectItemAtGivesARowsTextAndLeavesTheSelection) {
    create();
    ctrl.SetComboIndex(0);
    EXPECT_EQ(ctrl.SelectItemAt(-1), KivString());
    EXPECT_EQ(ctrl.SelectItemAt(-5), KivString());
    EXPECT_EQ(ctrl.SelectItemAt(2), KivString(u"Continuous"));
    EXPECT_EQ(ctrl.SelectItemAt(3), KivString());  // past the last row
    EXPECT_EQ(box.selection, 0);
    EXPECT_EQ(ctrl.GetComboIndex(), 0);  // the control's index stays too
}

TEST_F(LinetypeCtrl, SelectItemFindsRowsIgnoringCaseAndTheFixedNamesByPosition) {
    create();
    ctrl.DefineLinetypeByLayer(KivString(u"Layer"), KivString(u"A,1"));
    ctrl.DefineLinetype(KivString(u"Dashed"), KivString(u"A,1,-1"));
    site.modifiedCount = 0;
    EXPECT_EQ(ctrl.SelectItem(KivString(u"DASHED")), KivString(u"DASHED"));
    EXPECT_EQ(box.selection, 3);
    EXPECT_EQ(ctrl.GetComboIndex(), 3);
    EXPECT_EQ(ctrl.SelectItem(KivString(u"bylayer")), KivString(u"bylayer"));  // row 0, whatever it shows
    EXPECT_EQ(box.selection, 0);
    EXPECT_EQ(ctrl.SelectItem(KivString(u"layer")), KivString(u"layer"));      // its display name too
    EXPECT_EQ(box.selection, 0);
    EXPECT_EQ(ctrl.SelectItem(KivString(u"Continuous")), KivString(u"Continuous"));
    EXPECT_EQ(box.selection, 2);
    EXPECT_EQ(site.modifiedCount, 0);
    EXPECT_TRUE(site.events.empty());
}

TEST_F(LinetypeCtrl, SelectItemWithNoMatchingRowLeavesTheSelection) {
    ctrl.SelectItem(KivString(u"ByBlock"));  // no window, no rows: nothing to select
    EXPECT_EQ(ctrl.GetComboIndex(), -1);
    create();
    ctrl.SelectItem(KivString(u"ByBlock"));
    ctrl.SelectItem(KivString(u"NoSuchLinetype"));
    EXPECT_EQ(box.selection, 1);
    EXPECT_EQ(ctrl.GetComboIndex(), 1);
}

TEST_F(LinetypeCtrl, ComboIndexSelectsAndMarksModified) {
    create();
    ctrl.SetComboIndex(2);
    EXPECT_EQ(ctrl.GetComboIndex(), 2);
    EXPECT_EQ(box.selection, 2);
    EXPECT_EQ(site.modifiedCount, 1);
    ctrl.SetComboIndex(99);  // no such row: the list clears its selection, the index is stored
    EXPECT_EQ(ctrl.GetComboIndex(), 99);
    EXPECT_EQ(box.selection, -1);
}

// ---- Events ----

TEST_F(LinetypeCtrl, ChoosingRowOneFiresByBlockEvenWhenItShowsAnotherName) {
    create();
    ctrl.DefineLinetypeByBlock(KivString(u"Block"), KivString(u"A,1"));
    mousePick(1);
    EXPECT_EQ(events(), (Texts{"SelChange(\"ByBlock\")", "SelAndCloseUp(\"ByBlock\")"}));
    EXPECT_EQ(ctrl.GetComboIndex(), 1);
}

TEST_F(LinetypeCtrl, EventsNameLoadedRowsByTheirDisplayName) {
    create();
    ctrl.DefineLinetype(KivString(u"DASHED"), KivString(u"A,1,-1"));
    keyPick(3);
    EXPECT_EQ(events(), (Texts{"SelChange(\"Dashed\")", "SelAndCloseUp(\"Dashed\")"}));
}

TEST_F(LinetypeCtrl, ANotificationWithoutSelectionReportsAnEmptyName) {
    create();
    AssertCapture capture;
    ctrl.OnCommand(kiv::kCbnSelChange);
    EXPECT_EQ(events(), (Texts{"SelChange(\"\")"}));
    EXPECT_TRUE(capture.reports().empty());  // looked up safely, not through an invalid index
}

// ---- Filled before the window exists ----

TEST_F(LinetypeCtrl, LinetypesLoadedBeforeTheWindowExistsAreDrawnWithTheirOwnDefinitions) {
    loadSample(ctrl, {u"DOT"});
    ctrl.DefineLinetypeByBlock(KivString(u"Block"), KivString(u"A,1"));
    ctrl.LoadLinetype(KivString(u"DASHED"));
    ctrl.DefineLinetype(KivString(u"Center"), KivString(u"A,9,-1"));
    create();
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "Block", "Continuous", "Center", "Dashed", "Dot"}));
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "Block", "A, 12.7", "A,9,-1", "A,12.7,-6.35", "A,0,-6.35"}));
    // Later loads keep their sorted place among those loaded before ("DASHDOT" sorts between the
    // names given as "DASHED" and "DOT").
    ctrl.LoadLinetype(KivString(u"CENTER"));  // "Center" is there already: nothing
    ctrl.DefineLinetype(KivString(u"DASHDOT"), KivString(u"A,5,-1,0,-1"));
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "Block", "Continuous", "Center", "Dashdot", "Dashed", "Dot"}));
    EXPECT_EQ(ctrl.definitionOf(4), KivString(u"A,5,-1,0,-1"));
    EXPECT_EQ(ctrl.definitionOf(6), KivString(u"A,0,-6.35"));
}

TEST_F(LinetypeCtrl, InitializeRebuildsTheRowsKeepsTheDefinitionsAndForgetsTheSortedNames) {
    create();
    ctrl.DefineLinetype(KivString(u"Dot"), KivString(u"A,0,-1"));
    ctrl.DefineLinetype(KivString(u"Dashed"), KivString(u"A,1,-1"));
    ctrl.Initialize();
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Dashed", "Dot"}));
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "A, 12.7", "A, 12.7", "A,1,-1", "A,0,-1"}));
    EXPECT_EQ(ctrl.sortedNames().getLogicalLength(), 0);
    // With the sorted names forgotten, the next definition goes to row 3, in step everywhere.
    ctrl.DefineLinetype(KivString(u"Zigzag"), KivString(u"A,2,-2"));
    EXPECT_EQ(box.textAt(3), "Zigzag");
    EXPECT_EQ(ctrl.definitionOf(3), KivString(u"A,2,-2"));
    EXPECT_EQ(ctrl.definitionOf(4), KivString(u"A,1,-1"));
    // Unloading a row the sorted names no longer cover takes the row and keeps the arrays in step.
    ctrl.UnloadLinetype(KivString(u"Dot"));
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Zigzag", "Dashed"}));
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "A, 12.7", "A, 12.7", "A,2,-2", "A,1,-1"}));
}

TEST_F(LinetypeCtrl, AReCreatedWindowShowsTheSameRows) {
    create();
    ctrl.DefineLinetype(KivString(u"Dashed"), KivString(u"A,1,-1"));
    ctrl.OnDestroyChild();
    FakeComboBox second;
    ctrl.OnCreate(second, 21);
    EXPECT_EQ(second.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Dashed"}));
    EXPECT_EQ(ctrl.definitionOf(3), KivString(u"A,1,-1"));
}

TEST_F(LinetypeCtrl, SetAboutDisplayDoesNothing) {
    create();
    box.log.clear();
    ctrl.SetAboutDisplay(true);
    ctrl.SetTooltipText(KivString(u"tip"));
    EXPECT_EQ(ctrl.GetTooltipText(), KivString(u"tip"));
    EXPECT_TRUE(box.log.empty());
    EXPECT_EQ(site.modifiedCount, 0);
}
