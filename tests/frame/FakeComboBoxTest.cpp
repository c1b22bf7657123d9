// The in-memory combo box must answer as a Win32 combo box does, or the control tests prove
// nothing; these tests pin its rules (the same rules the Win32 shell tests check on the real one).
// Also: KivNullChildList answers 0 to everything, as SendMessage to no window.
#include <gtest/gtest.h>

#include "FakeComboBox.h"

TEST(FakeComboBox, AddAppendsAndInsertMinusOneAppends) {
    FakeComboBox box;
    EXPECT_EQ(box.addString(KivString(u"a")), 0);
    EXPECT_EQ(box.addString(KivString(u"b")), 1);
    EXPECT_EQ(box.insertString(-1, KivString(u"c")), 2);
    EXPECT_EQ(box.insertString(0, KivString(u"z")), 0);
    EXPECT_EQ(box.texts(), (std::vector<std::string>{"z", "a", "b", "c"}));
    EXPECT_EQ(box.insertString(5, KivString(u"x")), kiv::kCbErr);
    EXPECT_EQ(box.insertString(-2, KivString(u"x")), kiv::kCbErr);
    EXPECT_EQ(box.insertString(4, KivString(u"end")), 4);
}

TEST(FakeComboBox, OutOfRangeIndicesFailWithCbErr) {
    FakeComboBox box;
    box.addString(KivString(u"a"));
    KivString text;
    EXPECT_EQ(box.getItemData(1), kiv::kCbErr);
    EXPECT_EQ(box.getItemData(-1), kiv::kCbErr);
    EXPECT_EQ(box.setItemData(-1, 5), kiv::kCbErr);
    EXPECT_EQ(box.getItemData(0), 0);  // never set: 0
    EXPECT_EQ(box.deleteString(1), kiv::kCbErr);
    EXPECT_EQ(box.deleteString(-1), kiv::kCbErr);
    EXPECT_EQ(box.getText(3, text), kiv::kCbErr);
    EXPECT_EQ(box.deleteString(0), 0);  // the remaining count
}

TEST(FakeComboBox, SelectionFollowsInsertionsAndDeletions) {
    FakeComboBox box;
    for (const char16_t* t : {u"a", u"b", u"c"}) box.addString(KivString(t));
    EXPECT_EQ(box.setCurSel(1), 1);
    box.insertString(0, KivString(u"z"));
    EXPECT_EQ(box.getCurSel(), 2);
    box.deleteString(0);
    EXPECT_EQ(box.getCurSel(), 1);
    box.deleteString(1);
    EXPECT_EQ(box.getCurSel(), -1);
    box.setCurSel(0);
    EXPECT_EQ(box.setCurSel(7), kiv::kCbErr);
    EXPECT_EQ(box.getCurSel(), -1);
}

TEST(FakeComboBox, RunsOutOfSpaceWhenTold) {
    FakeComboBox box;
    box.failAddAfter(1);
    EXPECT_EQ(box.addString(KivString(u"a")), 0);
    EXPECT_EQ(box.addString(KivString(u"b")), kiv::kCbErrSpace);
}

TEST(KivNullChildList, EveryMessageYieldsZeroAndChangesNothing) {
    IKivChildList& none = KivNullChildList::instance();
    EXPECT_EQ(none.addString(KivString(u"a")), 0);
    EXPECT_EQ(none.getCount(), 0);
    EXPECT_EQ(none.getCurSel(), 0);
    EXPECT_EQ(none.getItemData(3), 0);
    KivString text(u"x");
    EXPECT_EQ(none.getText(0, text), 0);
    EXPECT_EQ(text.length(), 0);
    EXPECT_FALSE(none.getDroppedState());
}
