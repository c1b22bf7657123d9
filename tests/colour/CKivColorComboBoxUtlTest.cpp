// MeasureItem and DrawItem: exact call sequences for plain, selected, focused, disabled and
// -1 items at 96 and 144 dpi, and the text buffer shared by all instances.
#include "ColourFixture.h"
#include "RecordingDC.h"

namespace rc = recording_colors;


using ColourDraw = ColourFixture;

TEST_F(ColourDraw, MeasureItemUsesTheDefaultGuiFontItemHeight) {
    KivMeasureItem m;
    ctrl.comboBox.MeasureItem(m);
    EXPECT_EQ(m.itemHeight, 13u);
    CKivDpi::setComboBoxMetricsForTesting(6, 20);
    ctrl.comboBox.MeasureItem(m);
    EXPECT_EQ(m.itemHeight, 20u);
}

TEST_F(ColourDraw, PlainItemAt96Dpi) {
    create();
    RecordingDC dc;
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(3, 0, KivRect{0, 0, 120, 13}, 0x000000FF));
    EXPECT_EQ(dc.calls, itemCalls(false, KivRect{0, 0, 120, 13}, {
        "SetBkMode(1)",
        "DrawText(\"Red\",15,0,120,13,36)",  // left 13 + scale(2)
        "FillRect(4,2,13,11,solid 0x000000FF)",  // square of side 9, right edge at h
        "FrameRect(4,2,13,11,BLACK_BRUSH)",
    }));
}

TEST_F(ColourDraw, SelectedFocusedItemAt96Dpi) {
    create();
    RecordingDC dc;
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(7, kiv::kOdsSelected | kiv::kOdsFocus, KivRect{0, 13, 120, 26}, 0x00FF0000));
    EXPECT_EQ(dc.calls, itemCalls(true, KivRect{0, 13, 120, 26}, {
        "DrawFocusRect(0,13,120,26)",
        "SetBkMode(1)",
        "DrawText(\"Blue\",15,13,120,26,36)",
        "FillRect(4,15,13,24,solid 0x00FF0000)",
        "FrameRect(4,15,13,24,BLACK_BRUSH)",
    }));
}

TEST_F(ColourDraw, DisabledItemUsesGrayTextForTextAndSwatch) {
    create();
    RecordingDC dc;
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(3, kiv::kOdsDisabled, KivRect{0, 0, 120, 13}, 0x000000FF));
    const std::string gray = RecordingDC::hex(rc::kGrayText);
    EXPECT_EQ(dc.calls, itemCalls(false, KivRect{0, 0, 120, 13}, {
        "GetSysColor(17)",
        "SetTextColor(" + gray + ")",
        "SetBkMode(1)",
        "DrawText(\"Red\",15,0,120,13,36)",
        "FillRect(4,2,13,11,solid " + gray + ")",
        "FrameRect(4,2,13,11,BLACK_BRUSH)",
    }));
}

TEST_F(ColourDraw, EmptySelectionFieldDrawsOnlyBackgroundAndFocus) {
    create();
    RecordingDC dc;
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(-1, kiv::kOdsFocus, KivRect{0, 0, 120, 17}, 0));
    EXPECT_EQ(dc.calls, itemCalls(false, KivRect{0, 0, 120, 17}, {
        "DrawFocusRect(0,0,120,17)",
    }));
}

TEST_F(ColourDraw, SelectedItemAt144Dpi) {
    CKivDpi::setDpiForTesting(144);
    create();
    RecordingDC dc;
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(4, kiv::kOdsSelected, KivRect{0, 0, 180, 20}, 0x0000FFFF));
    EXPECT_EQ(dc.calls, itemCalls(true, KivRect{0, 0, 180, 20}, {
        "SetBkMode(1)",
        "DrawText(\"Yellow\",23,0,180,20,36)",  // 20 + scale(2) = 23
        "FillRect(6,3,20,17,solid 0x0000FFFF)",  // inset scale(2,2) = 3: side 14
        "FrameRect(6,3,20,17,BLACK_BRUSH)",
    }));
}

TEST_F(ColourDraw, FocusedDisabledItemAt144Dpi) {
    CKivDpi::setDpiForTesting(144);
    create();
    RecordingDC dc;
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(0, kiv::kOdsFocus | kiv::kOdsDisabled, KivRect{0, 40, 180, 60}, 0x00FFFFFF));
    EXPECT_EQ(dc.calls.at(6), "DrawFocusRect(0,40,180,60)");
    EXPECT_EQ(dc.calls.at(10), "DrawText(\"ByLayer\",23,40,180,60,36)");
    EXPECT_EQ(dc.calls.at(11), "FillRect(6,43,20,57,solid " + RecordingDC::hex(rc::kGrayText) + ")");
}

TEST_F(ColourDraw, SwatchRightEdgeIsAtHPixelsWhateverTheLeftEdge) {
    create();
    RecordingDC dc;
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(3, 0, KivRect{5, 0, 125, 13}, 0x000000FF));
    EXPECT_EQ(dc.calls.at(7), "DrawText(\"Red\",20,0,125,13,36)");
    EXPECT_EQ(dc.calls.at(8), "FillRect(4,2,13,11,solid 0x000000FF)");
}

TEST_F(ColourDraw, TheTextBufferIsOneStringSharedByEveryInstance) {
    create();
    FakeComboBox otherBox;
    RecordingSite otherSite;
    CKivColorCtrl other(otherSite, dialog);
    other.OnCreate(otherBox, 21);
    other.SetComboText(CKivColorCtrl::kRed, KivString(u"Rot"));
    RecordingDC dc;
    const KivRect r{0, 0, 120, 13};
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(3, 0, r, 0xFF));
    // The other control's drawer sees the text this one fetched last, and the other way round.
    EXPECT_EQ(other.comboBox.textBuffer(), KivString(u"Red"));
    other.comboBox.DrawItem(dc, ownerDrawItem(3, 0, r, 0xFF));
    EXPECT_EQ(ctrl.comboBox.textBuffer(), KivString(u"Rot"));
    EXPECT_EQ(&ctrl.comboBox.textBuffer(), &other.comboBox.textBuffer());
    // Each draw still shows its own list's text: the buffer is filled and used at once.
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(3, 0, r, 0xFF));
    std::vector<std::string> texts;
    for (const std::string& call : dc.calls)
        if (call.rfind("DrawText", 0) == 0) texts.push_back(call.substr(10, call.find('"', 10) - 10));
    EXPECT_EQ(texts, (Texts{"Red", "Rot", "Red"}));
}

TEST_F(ColourDraw, DrawingBeforeTheWindowExistsDrawsAnEmptyText) {
    RecordingDC dc;
    ctrl.comboBox.DrawItem(dc, ownerDrawItem(3, 0, KivRect{0, 0, 120, 13}, 0xFF));
    EXPECT_EQ(dc.calls.at(7), "DrawText(\"\",15,0,120,13,36)");
}
