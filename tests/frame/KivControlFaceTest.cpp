// OnDraw: the design-mode face and the user-mode fill.
#include <gtest/gtest.h>

#include "FakeComboBox.h"
#include "KivControlFace.h"
#include "RecordingDC.h"

using Calls = std::vector<std::string>;

TEST(KivControlFace, DesignModeDrawsTheCentredNameOnWhite) {
    RecordingDC dc;
    dc.bkColor = 0x00123456;
    KivDrawControlFace(dc, KivRect{0, 0, 121, 21}, false, KivString(u"KivColorComboBox"), 0x00ABCDEF, nullptr);
    EXPECT_EQ(dc.calls, (Calls{
                            "GetBkColor",
                            "FillRect(0,0,121,21,solid 0x00FFFFFF)",
                            "SetTextAlign(30)",
                            "GetTextExtentPoint32(\"KivColorComboBox\")",
                            "TextOut(60,16,\"KivColorComboBox\")",  // (0+121)/2, (0+21)/2 + 13/2
                            "SetBkColor(0x00123456)",
                        }));
}

TEST(KivControlFace, DesignModeUsesIntegerHalvesOfOffsetBounds) {
    RecordingDC dc;
    KivDrawControlFace(dc, KivRect{10, 5, 31, 40}, false, KivString(u"X"), 0, nullptr);
    EXPECT_EQ(dc.calls.at(4), "TextOut(20,28,\"X\")");  // 41/2 = 20, 45/2 + 13/2 = 22 + 6
}

TEST(KivControlFace, UserModeFillsWithTheAmbientColourAndRepaintsTheChild) {
    RecordingDC dc;
    dc.bkColor = 0x00010101;
    FakeComboBox child;
    KivDrawControlFace(dc, KivRect{0, 0, 50, 20}, true, KivString(u"KivColorComboBox"), 0x00ABCDEF, &child);
    EXPECT_EQ(dc.calls, (Calls{"GetBkColor", "FillRect(0,0,50,20,solid 0x00ABCDEF)", "SetBkColor(0x00010101)"}));
    EXPECT_EQ(child.log, (Calls{"Invalidate(erase)", "UpdateWindow"}));
}

TEST(KivControlFace, UserModeWithoutChildOnlyFills) {
    RecordingDC dc;
    KivDrawControlFace(dc, KivRect{0, 0, 5, 5}, true, KivString(u"x"), 0x00000000, nullptr);
    EXPECT_EQ(dc.calls.size(), 3u);
}
