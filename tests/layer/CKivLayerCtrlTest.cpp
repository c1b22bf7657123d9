// The layer placeholder's picture: white bounds, then the ellipse inscribed in them with whatever pen
// and brush the DC holds; nothing else is selected or drawn, and the picture follows the bounds.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CKivLayerCtrl.h"
#include "RecordingDC.h"

TEST(LayerCtrl, FillsTheBoundsWhiteThenDrawsTheInscribedEllipse) {
    RecordingDC dc;
    CKivLayerCtrl::OnDraw(dc, KivRect{0, 0, 120, 40});
    const std::vector<std::string> expected = {"FillRect(0,0,120,40,WHITE_BRUSH)", "Ellipse(0,0,120,40)"};
    EXPECT_EQ(dc.calls, expected);
}

TEST(LayerCtrl, TheEllipseFollowsNewBounds) {
    // Bounds offset in the container and resized: both calls take the new rectangle as they are.
    for (const KivRect& bounds : {KivRect{10, 20, 250, 68}, KivRect{3, 4, 5, 6}, KivRect{-8, -9, 400, 300}}) {
        RecordingDC dc;
        CKivLayerCtrl::OnDraw(dc, bounds);
        const std::string r = RecordingDC::rect(bounds);
        const std::vector<std::string> expected = {"FillRect(" + r + ",WHITE_BRUSH)", "Ellipse(" + r + ")"};
        EXPECT_EQ(dc.calls, expected) << r;
    }
}

TEST(LayerCtrl, EmptyBoundsAreDrawnWithoutComplaint) {
    // A control sized to nothing: the same two calls on the empty rectangle, nothing more.
    RecordingDC dc;
    CKivLayerCtrl::OnDraw(dc, KivRect{5, 5, 5, 5});
    ASSERT_EQ(dc.calls.size(), 2u);
    EXPECT_EQ(dc.calls[0], "FillRect(5,5,5,5,WHITE_BRUSH)");
    EXPECT_EQ(dc.calls[1], "Ellipse(5,5,5,5)");
}
