// DrawItem of the lineweight list: the bar thickness, exact call sequences for plain, selected,
// focused, disabled and -1 items, the absolute right edge of the bar, and the shared label buffer.
#include "LineweightFixture.h"
#include "RecordingDC.h"

namespace rc = recording_colors;


using LineweightDraw = LineweightFixture;

TEST_F(LineweightDraw, BarsAtItemHeight16Are14And6And1And1) {
    EXPECT_EQ(CKivLineweightComboBoxUtl::barThickness(16, 211), 14);  // 2.11 mm
    EXPECT_EQ(CKivLineweightComboBoxUtl::barThickness(16, 100), 6);   // 1.00 mm: (14 * 100) / 211
    EXPECT_EQ(CKivLineweightComboBoxUtl::barThickness(16, 5), 1);     // 0.05 mm: 0 made 1
    EXPECT_EQ(CKivLineweightComboBoxUtl::barThickness(16, -1), 1);    // ByLayer
    EXPECT_EQ(CKivLineweightComboBoxUtl::barThickness(16, 0), 1);     // 0.00 mm
    EXPECT_EQ(CKivLineweightComboBoxUtl::barThickness(16, 200), 13);  // truncated toward zero
}

TEST_F(LineweightDraw, ThickestItemDrawnInFullAtItemHeight16) {
    create();
    RecordingDC dc;
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(26, 0, KivRect{0, 0, 120, 16}));
    EXPECT_EQ(dc.calls, itemCalls(false, KivRect{0, 0, 120, 16}, {
        "SelectFont(DEFAULT_GUI_FONT)",
        "SetBkMode(1)",
        "TextOut(32,2,\"0.083 \"\")",  // 0 + 120/4 + 2
        "FillRect(2,1,30,15,solid 0x00000000)",  // top 8 - 14/2, 14 high, right 120/4
        "FrameRect(2,1,30,15,BLACK_BRUSH)",
        "RestoreFont",
    }));
}

TEST_F(LineweightDraw, SelectedFocusedItemWithASixPixelBar) {
    create();
    ctrl.SetMeasurement(1);
    RecordingDC dc;
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(20, kiv::kOdsSelected | kiv::kOdsFocus, KivRect{0, 32, 100, 48}));
    EXPECT_EQ(dc.calls, itemCalls(true, KivRect{0, 32, 100, 48}, {
        "DrawFocusRect(0,32,100,48)",
        "SelectFont(DEFAULT_GUI_FONT)",
        "SetBkMode(1)",
        "TextOut(27,34,\"1.00 mm\")",
        "FillRect(2,37,25,43,solid 0x00000000)",  // 40 - 3, 6 high
        "FrameRect(2,37,25,43,BLACK_BRUSH)",
        "RestoreFont",
    }));
}

TEST_F(LineweightDraw, DisabledItemUsesInactiveCaptionTextForLabelAndBar) {
    create();
    RecordingDC dc;
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(0, kiv::kOdsDisabled, KivRect{0, 0, 120, 16}));
    const std::string c19 = RecordingDC::hex(rc::kInactiveCaptionText);
    EXPECT_EQ(dc.calls, itemCalls(false, KivRect{0, 0, 120, 16}, {
        "GetSysColor(19)",
        "SetTextColor(" + c19 + ")",
        "SelectFont(DEFAULT_GUI_FONT)",
        "SetBkMode(1)",
        "TextOut(32,2,\"ByLayer\")",
        "FillRect(2,8,30,9,solid " + c19 + ")",  // ByLayer: 1 pixel
        "FrameRect(2,8,30,9,BLACK_BRUSH)",
        "RestoreFont",
    }));
}

TEST_F(LineweightDraw, EmptySelectionFieldDrawsOnlyBackgroundAndFocus) {
    create();
    RecordingDC dc;
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(-1, kiv::kOdsFocus | kiv::kOdsComboBoxEdit, KivRect{0, 0, 120, 18}));
    EXPECT_EQ(dc.calls, itemCalls(false, KivRect{0, 0, 120, 18}, {
        "DrawFocusRect(0,0,120,18)",
    }));
}

TEST_F(LineweightDraw, TheBarsRightEdgeIsAbsoluteWhileTheLabelFollowsTheItemsLeft) {
    create();
    RecordingDC dc;
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(3, 0, KivRect{40, 0, 160, 16}));
    EXPECT_EQ(dc.calls.at(8), "TextOut(72,2,\"0.000 \"\")");            // 40 + 120/4 + 2
    EXPECT_EQ(dc.calls.at(9), "FillRect(42,8,30,9,solid 0x00000000)");  // right edge 120/4 = 30, not 70
}

TEST_F(LineweightDraw, BarsFollowTheItemHeightNotTheDpi) {
    CKivDpi::setDpiForTesting(192);
    create();
    RecordingDC dc;
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(26, 0, KivRect{0, 0, 120, 16}));
    EXPECT_EQ(dc.calls.at(9), "FillRect(2,1,30,15,solid 0x00000000)");  // still 14 high
    dc.calls.clear();
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(26, 0, KivRect{0, 0, 240, 32}));
    EXPECT_EQ(dc.calls.at(9), "FillRect(2,1,60,31,solid 0x00000000)");  // 30 high in a 32-pixel item
}

TEST_F(LineweightDraw, TheLabelBufferIsOneStringSharedByEveryInstance) {
    create();
    FakeComboBox otherBox;
    RecordingSite otherSite;
    CKivLineweightCtrl other(otherSite);
    other.OnCreate(otherBox);
    other.SetMeasurement(1);
    RecordingDC dc;
    const KivRect r{0, 0, 120, 16};
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(10, 0, r));
    EXPECT_EQ(other.comboBox.textBuffer(), KivString(u"0.010 \""));
    other.comboBox.DrawItem(dc, ownerDrawItem(10, 0, r));
    EXPECT_EQ(ctrl.comboBox.textBuffer(), KivString(u"0.25 mm"));
    EXPECT_EQ(&ctrl.comboBox.textBuffer(), &other.comboBox.textBuffer());
}
