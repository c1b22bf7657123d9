// Row drawing of both linetype drawers: exact call sequences for a plain, a selected, a focused and a
// -1 row; the text box that counts R.left twice; the combo's dpi-wide pen and the list's 1-pixel
// pen; the list's ODS_COMBOBOXEDIT rule.
#include "LinetypeFixture.h"
#include "KivLinetypeRow.h"
#include "RecordingDC.h"

namespace rc = recording_colors;

namespace {

class LinetypeRow : public LinetypeFixture {
protected:
    void SetUp() override {
        LinetypeFixture::SetUp();
        combo.OnCreate(box, 21);
        list.OnCreate(listBox);
        combo.DefineLinetype(KivString(u"Dashed"), KivString(u"A,12.7,-6.35"));
        list.DefineLinetype(KivString(u"Dashed"), KivString(u"A,12.7,-6.35"));
    }
    CKivLinetypeCtrl combo{site};
    FakeComboBox listBox;
    RecordingSite listSite;
    CKivLinetypeListCtrl list{listSite};
};
}  // namespace

TEST_F(LinetypeRow, LayoutCountsTheLeftEdgeTwiceForTheTextBox) {
    const KivLinetypeRowLayout at0 = KivLayOutLinetypeRow(KivRect{0, 0, 100, 16});
    EXPECT_EQ(at0.textHalf, (KivRect{50, 0, 100, 16}));
    EXPECT_EQ(at0.textBox, (KivRect{52, 2, 100, 16}));  // w/2 + 2
    EXPECT_EQ(at0.sampleBox, (KivRect{2, 2, 50, 14}));
    const KivLinetypeRowLayout at10 = KivLayOutLinetypeRow(KivRect{10, 32, 111, 48});
    EXPECT_EQ(at10.textHalf, (KivRect{60, 32, 111, 48}));        // w = 101, w/2 = 50
    EXPECT_EQ(at10.textBox, (KivRect{72, 34, 111, 48}));         // (10 + 50) + 10 + 2
    EXPECT_EQ(at10.sampleBox, (KivRect{12, 34, 50, 46}));        // right edge: the absolute w/2
}

TEST_F(LinetypeRow, APlainComboRowDrawsTextWhiteSampleStrokesAndTheBitmapCopy) {
    RecordingDC dc;
    const KivRect r{0, 0, 100, 16};
    combo.comboBox.DrawItem(dc, ownerDrawItem(3, 0, r));
    EXPECT_EQ(dc.calls, itemCalls(false, r, {
        "SetBkMode(1)",
        "DrawText(\"Dashed\",52,2,100,16,36)",
        "SelectPen(0,1,0x00000000)",
        "SelectBrush(solid 0x00FFFFFF)",
        "FillRect(2,2,50,14,solid 0x00FFFFFF)",
        "SetTextColor(0x00000000)",
        "MoveTo(0,8)",  // y = 2 + 12/2; x from 0 of the device
        "LineTo(12,8)",
        "MoveTo(19,8)",
        "LineTo(31,8)",
        "MoveTo(38,8)",
        "LineTo(48,8)",  // the width of the box: 48
        "BitBltFromCompatibleBitmap(0x0,2,2,50,14,0x00CC0020)",
        "RestoreBrush",
        "RestorePen",
    }));
}

TEST_F(LinetypeRow, ASelectedFocusedRowHighlightsOnlyItsTextHalf) {
    RecordingDC dc;
    const KivRect r{0, 16, 100, 32};
    combo.comboBox.DrawItem(dc, ownerDrawItem(2, kiv::kOdsSelected | kiv::kOdsFocus, r));
    const Texts head = itemCalls(true, KivRect{50, 16, 100, 32}, {"DrawFocusRect(0,16,100,32)", "SetBkMode(1)",
                                                                            "DrawText(\"Continuous\",52,18,100,32,36)"});
    EXPECT_EQ(Texts(dc.calls.begin(), dc.calls.begin() + static_cast<long>(head.size())), head);
    EXPECT_EQ(dc.calls.at(head.size() + 4), "MoveTo(0,24)");
    EXPECT_EQ(dc.calls.at(head.size() + 5), "LineTo(12,24)");  // "A, 12.7": one dash repeated
}

TEST_F(LinetypeRow, AMinusOneRowDrawsOnlyItsBackgroundAndFocus) {
    RecordingDC dc;
    const KivRect r{0, 0, 100, 17};
    combo.comboBox.DrawItem(dc, ownerDrawItem(-1, kiv::kOdsFocus | kiv::kOdsComboBoxEdit, r));
    EXPECT_EQ(dc.calls, itemCalls(false, r, {"DrawFocusRect(0,0,100,17)"}));
    RecordingDC listDc;
    list.listBox.DrawItem(listDc, ownerDrawItem(-1, kiv::kOdsFocus, r));
    EXPECT_EQ(listDc.calls, itemCalls(false, r, {"DrawFocusRect(0,0,100,17)"}));
}

TEST_F(LinetypeRow, TheCombosPenFollowsTheDpiAndTheListsStaysOnePixel) {
    CKivDpi::setDpiForTesting(144);
    RecordingDC comboDc, listDc;
    combo.comboBox.DrawItem(comboDc, ownerDrawItem(3, 0, KivRect{0, 0, 100, 16}));
    list.listBox.DrawItem(listDc, ownerDrawItem(3, 0, KivRect{0, 0, 100, 16}));
    EXPECT_EQ(comboDc.calls.at(8), "SelectPen(0,2,0x00000000)");  // getUnit() at 144 dpi
    EXPECT_EQ(listDc.calls.at(8), "SelectPen(0,1,0x00000000)");
    CKivDpi::setDpiForTesting(192);
    RecordingDC wide;
    combo.comboBox.DrawItem(wide, ownerDrawItem(3, 0, KivRect{0, 0, 100, 16}));
    EXPECT_EQ(wide.calls.at(8), "SelectPen(0,2,0x00000000)");
}

TEST_F(LinetypeRow, TheListIgnoresSelectionAndFocusInAComboBoxEditState) {
    RecordingDC dc;
    const KivRect r{0, 0, 100, 16};
    list.listBox.DrawItem(dc, ownerDrawItem(3, kiv::kOdsSelected | kiv::kOdsFocus | kiv::kOdsComboBoxEdit, r));
    EXPECT_EQ(Texts(dc.calls.begin(), dc.calls.begin() + 8),
              itemCalls(false, r, {"SetBkMode(1)", "DrawText(\"Dashed\",52,2,100,16,36)"}));
    RecordingDC selected;
    list.listBox.DrawItem(selected, ownerDrawItem(3, kiv::kOdsSelected | kiv::kOdsFocus, r));
    EXPECT_EQ(Texts(selected.calls.begin(), selected.calls.begin() + 7),
              itemCalls(true, KivRect{50, 0, 100, 16}, {"DrawFocusRect(0,0,100,16)"}));
    // The combo draws the selected look whatever the edit state.
    RecordingDC comboDc;
    combo.comboBox.DrawItem(comboDc, ownerDrawItem(3, kiv::kOdsSelected | kiv::kOdsComboBoxEdit, r));
    EXPECT_EQ(comboDc.calls.at(5), "FillRect(50,0,100,16,solid " + RecordingDC::hex(rc::kHighlight) + ")");
}

TEST_F(LinetypeRow, ARowWithoutADefinitionDrawsItsNameAndNoLine) {
    RecordingDC dc;
    combo.comboBox.DrawItem(dc, ownerDrawItem(9, 0, KivRect{0, 0, 100, 16}));  // no such row
    EXPECT_EQ(dc.calls.at(7), "DrawText(\"\",52,2,100,16,36)");
    EXPECT_EQ(dc.calls.at(12), "MoveTo(0,8)");
    EXPECT_EQ(dc.calls.at(13), "BitBltFromCompatibleBitmap(0x0,2,2,50,14,0x00CC0020)");
}
