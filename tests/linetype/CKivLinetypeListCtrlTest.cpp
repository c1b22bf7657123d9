// The linetype list control: rows appended in load order, SelChange only for a row of the list (with
// the fixed names for rows 0 to 2), the focus, and everything else shared with the combo.
#include "LinetypeFixture.h"

namespace {
class LinetypeListCtrl : public LinetypeFixture {
protected:
    void create() { ctrl.OnCreate(box); }
    void click(int index) {
        box.selection = index;
        ctrl.OnCommand(kiv::kLbnSelChange);
    }
    CKivLinetypeListCtrl ctrl{site};
};
}  // namespace

TEST_F(LinetypeListCtrl, CreationSetsTheFontTheRowsAndTheStoredSelectionButNoItemHeight) {
    ctrl.SetComboIndex(2);
    create();
    EXPECT_EQ(box.log.at(0), "SetFont(DEFAULT_GUI_FONT)");
    for (const std::string& entry : box.log) EXPECT_EQ(entry.find("SetItemHeight"), std::string::npos) << entry;
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous"}));
    EXPECT_EQ(box.selection, 2);
    EXPECT_EQ(ctrl.traits().style, 0x50200051u);  // no LBS_SORT
    EXPECT_EQ(ctrl.traits().id, 105);
    EXPECT_EQ(KivString(ctrl.traits().designText), KivString(u"KivLinetypeListBox"));
}

TEST_F(LinetypeListCtrl, LoadedAndDefinedRowsKeepTheLoadOrderWithTheirDefinitions) {
    create();
    loadSample(ctrl, {u"DOT"});
    ctrl.DefineLinetype(KivString(u"ZIGZAG"), KivString(u"A,1,-1"));
    ctrl.LoadLinetype(KivString(u"CENTER"));
    ctrl.LoadLinetype(KivString(u"DASHED"));
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Dot", "Zigzag", "Center", "Dashed"}));
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "A, 12.7", "A, 12.7", "A,0,-6.35", "A,1,-1", "A,31.75,-6.35,6.35,-6.35",
                                          "A,12.7,-6.35"}));
    ctrl.UnloadLinetype(KivString(u"Zigzag"));
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Dot", "Center", "Dashed"}));
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "A, 12.7", "A, 12.7", "A,0,-6.35", "A,31.75,-6.35,6.35,-6.35", "A,12.7,-6.35"}));
    ctrl.RemoveAll();
    EXPECT_EQ(ctrl.GetCount(), 3);
}

TEST_F(LinetypeListCtrl, RowsFilledBeforeTheWindowExistsArriveWithTheirDefinitions) {
    ctrl.DefineLinetype(KivString(u"Zigzag"), KivString(u"A,1,-1"));
    ctrl.DefineLinetypeContinuous(KivString(u"Solid"), KivString(u"A,9"));
    ctrl.DefineLinetype(KivString(u"Border"), KivString(u"A,2,-2"));
    create();
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Solid", "Zigzag", "Border"}));
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "A, 12.7", "Solid", "A,1,-1", "A,2,-2"}));
}

TEST_F(LinetypeListCtrl, ARowTheListRefusesIsTakenBackAndTheRowsAfterItStayInStep) {
    create();
    box.failAddAfter(4);
    ctrl.DefineLinetype(KivString(u"Zigzag"), KivString(u"A,1,-1"));
    ctrl.DefineLinetype(KivString(u"Border"), KivString(u"A,2,-2"));  // no room in the list: refused
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Zigzag"}));
    EXPECT_EQ(namesOf(ctrl), box.texts());
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "A, 12.7", "A, 12.7", "A,1,-1"}));
    box.failAddAfter(-1);
    ctrl.DefineLinetype(KivString(u"Dot"), KivString(u"A,0,-1"));
    EXPECT_EQ(box.texts(), (Texts{"ByLayer", "ByBlock", "Continuous", "Zigzag", "Dot"}));
    EXPECT_EQ(definitionsOf(ctrl), (Texts{"A, 12.7", "A, 12.7", "A, 12.7", "A,1,-1", "A,0,-1"}));
    click(4);
    EXPECT_EQ(events(), (Texts{"SelChange(\"Dot\")"}));
}

TEST_F(LinetypeListCtrl, SelectingRowZeroFiresSelChangeWithByLayerAndTakesTheFocus) {
    create();
    ctrl.DefineLinetypeByLayer(KivString(u"Layer"), KivString(u"A,1"));
    click(0);
    EXPECT_EQ(events(), (Texts{"SelChange(\"ByLayer\")"}));
    EXPECT_EQ(ctrl.GetComboIndex(), 0);
    EXPECT_EQ(site.focusRequests, 1);
}

TEST_F(LinetypeListCtrl, ClearingTheSelectionFiresNothing) {
    create();
    click(-1);
    click(3);  // beyond the rows: nothing either
    EXPECT_TRUE(site.events.empty());
    EXPECT_EQ(site.focusRequests, 0);
    EXPECT_EQ(ctrl.GetComboIndex(), 3);  // the index is read all the same
}

TEST_F(LinetypeListCtrl, OnlySelChangeIsEverFired) {
    create();
    ctrl.DefineLinetype(KivString(u"dashed"), KivString(u"A,1,-1"));
    click(3);
    ctrl.OnCommand(kiv::kCbnCloseUp);
    ctrl.OnCommand(kiv::kCbnSelEndOk);
    ctrl.OnCommand(7);  // takes the focus
    EXPECT_EQ(events(), (Texts{"SelChange(\"Dashed\")"}));
    EXPECT_EQ(site.focusRequests, 2);
}

TEST_F(LinetypeListCtrl, SelectItemAndComboIndexWorkOnTheListBox) {
    create();
    ctrl.DefineLinetype(KivString(u"Dashed"), KivString(u"A,1,-1"));
    EXPECT_EQ(ctrl.SelectItem(KivString(u"DASHED")), KivString(u"DASHED"));
    EXPECT_EQ(box.selection, 3);
    ctrl.SetComboIndex(1);
    EXPECT_EQ(box.selection, 1);
    EXPECT_EQ(ctrl.GetComboIndex(), 1);
    EXPECT_EQ(ctrl.SelectItemAt(3), KivString(u"Dashed"));
    EXPECT_EQ(ctrl.GetCount(), 4);
    EXPECT_TRUE(site.events.empty());
}
