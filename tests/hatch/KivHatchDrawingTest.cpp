// Drawing line families: exact MoveTo/LineTo sequences for one family in each of the eight bands
// (and -90 normalised to 270, -0.04 staying in the 0 band), nothing on the band bounds or at 360
// and beyond, a dotted family, the 0.5/-0.25 walk pair, inch spacing (9.525 pixels at zoom 1),
// truncation of a base point, the pen, and the guard that keeps any family from hanging the
// preview, counted in strokes.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

#include "CountingDC.h"
#include "KivHatchDrawing.h"
#include "RecordingDC.h"

namespace {
constexpr double kThird = 1.0 / 3.0;  // zoom 1/3 in millimetres: one pattern unit is one pixel

struct Case {
    const char* name;
    HatchLineFamily family;
    int width, height;
    double zoom, unit;
    const char* strokes;  // "M x,y" for MoveTo, "L x,y" for LineTo, in order
};

// The expected strokes of each case, worked out step by step from the band table: pattern units
// times zoom x 3 x unit give pixels, the origin is the lower-left corner with y up, each line is a
// forward and a backward dash walk from its base point, coordinates truncated toward zero.
const Case kCases[] = {
    {"Band0", {0, 0, 0, 0, 4, u"5,-3,"}, 20, 10, kThird, 1.0,
         "M0,10 L5,10 M8,10 L13,10 M16,10 L21,10 M0,10 M-3,10 L-8,10 M-11,10 L-16,10 M-19,10 L-24,10 M0,6 "
         "L5,6 M8,6 L13,6 M16,6 L21,6 M0,6 M-2,6 L-8,6 M-11,6 L-16,6 M-19,6 L-24,6 M0,2 L5,2 M8,2 L13,2 "
         "M16,2 L21,2 M0,2 M-2,2 L-8,2 M-11,2 L-16,2 M-19,2 L-24,2"},
    {"Band180", {180, 10, 5, 2, 4, u"5,-3,"}, 20, 10, kThird, 1.0,
         "M10,5 L5,5 M2,5 L-3,5 M-6,5 L-11,5 M10,5 M13,5 L18,5 M21,5 L26,5 M29,5 L34,5 M12,1 L7,1 M4,1 "
         "L-1,1 M-4,1 L-9,1 M-12,1 M12,1 M15,1 L20,1 M23,1 L28,1 M31,1 L36,1 M14,-3 L9,-2 M6,-2 L1,-2 "
         "M-2,-2 L-7,-2 M-10,-2 L-15,-2 M14,-3 M17,-3 L22,-3 M25,-3 L30,-3 M33,-3 L38,-3 M41,-3"},
    {"Band90", {90, 5, 0, 2, 6, u"4,-2,"}, 20, 10, kThird, 1.0,
         "M5,10 L5,6 M5,4 L5,0 M5,-2 M5,10 M5,12 L5,16 M5,18 L5,22 M11,12 L11,8 M11,6 L11,2 M11,0 L11,-4 "
         "M11,12 M11,14 L11,18 M11,20 L11,24 M11,26 M17,14 L17,10 M17,8 L17,4 M17,2 L17,-2 M17,14 M17,16 "
         "L17,20 M17,22 L17,26 M17,28 L17,32 M23,16 L23,12 M23,10 L23,6 M23,4 L23,0 M23,-2 M23,16 M23,18 "
         "L23,22 M23,24 L23,28 M23,30 L23,34"},
    {"Band270", {270, 5, 0, 2, 6, u"4,-2,"}, 20, 10, kThird, 1.0,
         "M5,10 L4,14 M4,16 L4,20 M4,22 M5,10 M5,8 L4,4 M4,2 L4,-2 M11,8 L11,12 M11,14 L11,18 M11,20 "
         "L11,24 M11,8 M11,6 L11,2 M11,0 L11,-4 M11,-6 M17,6 L17,10 M17,12 L17,16 M17,18 L17,22 M17,6 "
         "M17,4 L17,0 M17,-2 L17,-6 M17,-8 L17,-12 M23,4 L23,8 M23,10 L23,14 M23,16 L23,20 M23,22 M23,4 "
         "M23,2 L23,-2 M23,-4 L23,-8 M23,-10 L23,-14"},
    {"Band0To90", {30, 1, 2, 2, 6, u"4,-2,"}, 16, 8, kThird, 1.0,
         "M1,6 L4,4 M6,3 L9,1 M11,0 L14,-1 M16,-2 M1,6 M0,7 L-4,9 M-5,10 L-9,12 M-11,13 L-14,15 M0,0 L3,-2 "
         "M4,-3 L8,-5 M10,-6 L13,-8 M15,-9 L18,-11 M0,0 M-1,0 L-5,2 M-7,3 L-10,5 M-12,6 L-15,8 M-17,9 M1,6 "
         "L4,4 M6,3 L9,1 M11,0 L14,-1 M16,-2 M1,6 M0,7 L-4,9 M-5,10 L-9,12 M-11,13 L-14,15 M2,12 L5,10 "
         "M7,9 L10,7 M12,6 L16,4 M17,3 L21,1 M2,12 M0,13 L-2,15 M-4,16 L-8,18 M-9,19 L-13,21 M-15,22"},
    {"Band180To270", {210, 8, 4, 2, 6, u"4,-2,"}, 16, 8, kThird, 1.0,
         "M8,4 L4,6 M2,7 L0,9 M-2,10 L-5,12 M-7,13 M8,4 M9,3 L13,1 M14,0 L18,-1 M20,-2 L23,-4 M6,-2 L3,0 "
         "M1,0 L-1,2 M-3,3 L-7,5 M-8,6 L-12,8 M6,-2 M8,-3 L11,-5 M13,-6 L17,-8 M18,-9 L22,-11 M24,-12 M8,4 "
         "L4,6 M2,7 L0,9 M-2,10 L-5,12 M-7,13 M8,4 M9,3 L13,1 M14,0 L18,-1 M20,-2 L23,-4 M9,10 L5,12 M4,13 "
         "L0,15 M-1,16 L-4,18 M-6,19 L-9,21 M9,10 M11,9 L14,7 M16,6 L19,4 M21,3 L24,1 M26,0"},
    {"Band90To180", {120, 8, 4, 2, 6, u"4,-2,"}, 16, 8, kThird, 1.0,
         "M8,4 L6,0 M5,-1 L3,-4 M2,-6 L0,-9 M0,-11 M8,4 M9,5 L11,9 M12,10 L14,14 M15,16 L17,19 M14,2 L12,0 "
         "M11,-2 L9,-5 M8,-7 L6,-11 M5,-12 L3,-16 M14,2 M15,4 L17,7 M18,9 L20,13 M21,14 L23,18 M24,20 "
         "M20,1 L18,-1 M17,-3 L15,-7 M14,-8 L12,-12 M11,-14 L9,-17 M20,1 M21,3 L23,6 M24,8 L26,11 M27,13 "
         "L29,17 M30,18 L32,22 M26,0 L24,-3 M23,-4 L21,-8 M20,-10 L18,-13 M17,-15 L15,-18 M14,-20 M26,0 "
         "M27,1 L29,5 M30,7 L32,10 M33,12 L35,15 M36,17 L38,20"},
    {"Band270To360", {300, 8, 4, 2, 6, u"4,-2,"}, 16, 8, kThird, 1.0,
         "M8,4 M7,2 L5,-1 M4,-2 L2,-6 M1,-8 L0,-11 M8,4 L10,7 M11,9 L13,12 M14,14 L16,17 M17,19 M14,2 "
         "M13,0 L11,-2 M10,-4 L8,-7 M7,-9 L5,-12 M4,-14 M14,2 L16,6 M17,7 L19,11 M20,13 L22,16 M23,18 "
         "L25,21 M20,1 M19,0 L17,-3 M16,-5 L14,-8 M13,-10 L11,-14 M10,-15 L8,-19 M20,1 L22,4 M23,6 L25,10 "
         "M26,11 L28,15 M29,17 L31,20 M26,0 M25,-1 L23,-5 M22,-6 L20,-10 M19,-11 L17,-15 M16,-17 L14,-20 "
         "M26,0 L28,3 M29,5 L31,8 M32,10 L34,14 M35,15 L37,19 M38,20"},
    {"MinusNinetyIsBand270", {-90, 5, 0, 2, 6, u"4,-2,"}, 20, 10, kThird, 1.0,
         "M5,10 L4,14 M4,16 L4,20 M4,22 M5,10 M5,8 L4,4 M4,2 L4,-2 M11,8 L11,12 M11,14 L11,18 M11,20 "
         "L11,24 M11,8 M11,6 L11,2 M11,0 L11,-4 M11,-6 M17,6 L17,10 M17,12 L17,16 M17,18 L17,22 M17,6 "
         "M17,4 L17,0 M17,-2 L17,-6 M17,-8 L17,-12 M23,4 L23,8 M23,10 L23,14 M23,16 L23,20 M23,22 M23,4 "
         "M23,2 L23,-2 M23,-4 L23,-8 M23,-10 L23,-14"},
    {"MinusPoint04StaysInBand0", {-0.04, 0, 0, 0, 4, u"5,-3,"}, 20, 10, kThird, 1.0,
         "M0,10 L5,10 M8,10 L13,10 M16,10 L21,10 M0,10 M-3,10 L-8,10 M-11,10 L-16,10 M-19,10 L-24,10 M0,6 "
         "L5,6 M8,6 L13,6 M16,6 L21,6 M0,6 M-2,6 L-8,6 M-11,6 L-16,6 M-19,6 L-24,6 M0,2 L5,2 M8,2 L13,2 "
         "M16,2 L21,2 M0,2 M-2,2 L-8,2 M-11,2 L-16,2 M-19,2 L-24,2"},
    {"Dots", {0, 0, 0, 0, 6, u"0,"}, 6, 4, kThird, 1.0,
         "M0,4 L1,4 L2,4 L3,4 L4,4 L5,4 L6,4 L7,4 M0,4 L-1,4 L-2,4 L-3,4 L-4,4 L-5,4 L-6,4 L-7,4"},
    {"HalfAndQuarter", {0, 0, 0, 0, 8, u".5,-.25,"}, 8, 4, 1.0, 1.0,
         "M0,4 L1,4 M2,4 L3,4 M4,4 L6,4 M6,4 L8,4 M0,4 M0,4 L-2,4 M-3,4 L-4,4 M-5,4 L-6,4 M-7,4 L-9,4"},
    {"InchSpacing", {0, 0, 0, 0, 0.125, u"10,"}, 30, 25, 1.0, 25.4,
         "M0,25 L761,25 M0,25 L-761,25 M0,15 L761,15 M0,15 L-761,15 M0,5 L761,5 M0,5 L-761,5"},
    {"TruncatedBasePoint", {0, 2.9, 1, 0, 20, u"3,"}, 10, 6, kThird, 1.0,
         "M2,5 L5,5 L8,5 L11,5 L14,5 M2,5 L0,5 L-3,5 L-6,5 L-9,5"},

};

std::string compact(const std::vector<std::string>& calls) {
    std::string out;
    for (const std::string& c : calls) {
        if (c.rfind("MoveTo(", 0) == 0) out += (out.empty() ? "M" : " M") + c.substr(7, c.size() - 8);
        else if (c.rfind("LineTo(", 0) == 0) out += (out.empty() ? "L" : " L") + c.substr(7, c.size() - 8);
    }
    return out;
}

KivArray<HatchLineFamily> one(const HatchLineFamily& f) {
    KivArray<HatchLineFamily> families;
    families.append(f);
    return families;
}

KivHatchPaint draw(IKivDC& dc, const HatchLineFamily& family, int w, int h, double zoom = kThird, double unit = 1.0) {
    KivArray<HatchLineFamily> families = one(family);
    KivArray<double> dashes;
    KivHatchStyle style;
    style.zoomFactor = zoom;
    style.unitFactor = unit;
    style.foreColor = 0x000000FF;
    return DrawHatch(dc, KivRect{0, 0, w, h}, families, dashes, style);
}

HatchLineFamily family(double angle, double ox, double oy, double dx, double dy, const char16_t* dashes = u"10,") {
    HatchLineFamily f;
    f.angle = angle;
    f.originX = ox;
    f.originY = oy;
    f.deltaX = dx;
    f.deltaY = dy;
    f.dashes = KivString(dashes);
    return f;
}
}  // namespace

TEST(KivHatchDrawing, ExactStrokesOfEachBandAndCase) {
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.name);
        RecordingDC dc;
        draw(dc, c.family, c.width, c.height, c.zoom, c.unit);
        ASSERT_GE(dc.calls.size(), 2u);
        EXPECT_EQ(dc.calls.front(), "SelectPen(0,1,0x000000FF)");
        EXPECT_EQ(dc.calls.back(), "RestorePen");
        EXPECT_EQ(compact(dc.calls), c.strokes);
    }
}

TEST(KivHatchDrawing, AnglesAreNormalisedByAddingWholeTurnsOnly) {
    EXPECT_EQ(KivHatchNormalisedAngle(-90.0), 270.0);
    EXPECT_EQ(KivHatchNormalisedAngle(-0.04), -0.04);
    EXPECT_EQ(KivHatchNormalisedAngle(-360.5), 359.5);
    EXPECT_EQ(KivHatchNormalisedAngle(360.0), 360.0);  // 360 and more are not reduced
    EXPECT_EQ(KivHatchNormalisedAngle(450.0), 450.0);
    EXPECT_NEAR(KivHatchNormalisedAngle(-720.03), -0.03, 1e-9);  // two turns: into the 0 band
    EXPECT_GE(KivHatchNormalisedAngle(-1e300), -0.05);  // far below zero: still normalised, in bounded time
    EXPECT_LT(KivHatchNormalisedAngle(-1e300), 360.0);
}

// Found by fuzzing: for -6e28, adding the turns in one step left -8.8e12 (the sum is rounded at
// that magnitude), and the loop of single turns after it ran for hours. Every huge negative angle
// now comes out inside one turn, and a family at such an angle is drawn in bounded time.
TEST(KivHatchDrawing, HugeNegativeAnglesComeOutInsideOneTurn) {
    for (int exponent = 7; exponent < 300; ++exponent) {
        for (double mantissa : {1.0, 1.3, 2.5, 6.0, 7.77, 9.99}) {
            const double angle = -mantissa * std::pow(10.0, exponent);
            const double theta = KivHatchNormalisedAngle(angle);
            EXPECT_GE(theta, -0.05) << angle;
            EXPECT_LT(theta, 360.0) << angle;
        }
    }
    KivArray<HatchLineFamily> families;
    HatchLineFamily family;
    family.angle = -6e28;
    family.deltaY = 1.0;
    families.append(family);
    KivArray<double> dashes;
    CountingDC dc;
    const KivHatchPaint paint = DrawHatch(dc, KivRect{0, 0, 200, 150}, families, dashes, KivHatchStyle{});
    EXPECT_FALSE(paint.guardStopped);
}

TEST(KivHatchDrawing, TheBandBoundsAndAnglesOf360AndMoreDrawNothing) {
    for (double angle : {0.05, 89.95, 90.05, 179.95, 180.05, 269.95, 270.05, 359.95, 359.99, 360.0, 450.0, 1e6}) {
        SCOPED_TRACE(angle);
        EXPECT_EQ(KivHatchBandOf(KivHatchNormalisedAngle(angle)), KivHatchBand::None);
        RecordingDC dc;
        draw(dc, family(angle, 0, 0, 0, 1), 20, 10);
        EXPECT_EQ(dc.calls, (std::vector<std::string>{"SelectPen(0,1,0x000000FF)", "RestorePen"}));
    }
    // Just inside each bound, something is drawn.
    for (double angle : {0.049, 0.051, 89.949, 89.951, 90.049, 90.051, 179.949, 179.951, 180.049, 180.051, 269.949,
                         269.951, 270.049, 270.051, 359.949}) {
        CountingDC dc;
        draw(dc, family(angle, 5, 5, 0, 3), 20, 10);
        EXPECT_GT(dc.strokes, 0) << angle;
    }
}

TEST(KivHatchDrawing, AnEmptyListStillSelectsAndPutsBackThePen) {
    RecordingDC dc;
    KivArray<HatchLineFamily> none;
    KivArray<double> dashes;
    DrawHatch(dc, KivRect{0, 0, 20, 10}, none, dashes, KivHatchStyle{});
    EXPECT_EQ(dc.calls, (std::vector<std::string>{"SelectPen(0,1,0x00000000)", "RestorePen"}));
}

TEST(KivHatchDrawing, ASingleZeroDashDrawsOnePixelStrokesAllAlongTheLine) {
    RecordingDC dc;
    draw(dc, family(0, 0, 0, 0, 6, u"0,"), 40, 4);
    int ones = 0;
    for (std::size_t i = 2; i + 1 < dc.calls.size(); ++i)
        if (dc.calls[i].rfind("LineTo", 0) == 0) ++ones;
    EXPECT_EQ(ones, 2 * 41);  // 41 one-pixel steps pass 40, forward and backward
}

TEST(KivHatchDrawing, InchSpacingOfAnEighthIsNinePointFiveTwoFivePixelsAtZoomOne) {
    // 0.125 x 25.4 x 3 = 9.525: the lines lie at y 25, 15.475 and 5.95, truncated to 25, 15 and 5.
    RecordingDC dc;
    draw(dc, family(0, 0, 0, 0, 0.125), 30, 25, 1.0, 25.4);
    EXPECT_EQ(compact(dc.calls), "M0,25 L761,25 M0,25 L-761,25 M0,15 L761,15 M0,15 L-761,15 M0,5 L761,5 M0,5 L-761,5");
}

TEST(KivHatchDrawing, CoordinatesAreTruncatedNotRounded) {
    RecordingDC dc;
    draw(dc, family(0, 2.9, 1, 0, 20, u"3,"), 10, 6);
    EXPECT_EQ(dc.calls.at(1), "MoveTo(2,5)");  // x 2.9 starts at pixel 2
    EXPECT_EQ(dc.calls.at(2), "LineTo(5,5)");  // 5.9
}

TEST(KivHatchDrawing, TheWalksOfTheHalfAndQuarterPairStartWithTheDashForwardAndTheGapBackward) {
    RecordingDC dc;
    draw(dc, family(0, 0, 0, 0, 8, u".5,-.25,"), 8, 4, 1.0);
    // Forward: the 0.5 dash (1.5 pixels) first; backward: the -0.25 gap (0.75 pixel) first.
    EXPECT_EQ(dc.calls.at(1), "MoveTo(0,4)");
    EXPECT_EQ(dc.calls.at(2), "LineTo(1,4)");
    const auto backward = std::find(dc.calls.begin() + 2, dc.calls.end(), "MoveTo(0,4)");
    ASSERT_NE(backward, dc.calls.end());
    EXPECT_EQ(*(backward + 1), "MoveTo(0,4)");  // -0.75 truncates to 0: a move, no line
    EXPECT_EQ(*(backward + 2), "LineTo(-2,4)");
}

// ---- Rules each of which the cases above would let pass broken.

// The 0 band takes cos and sin of the degree value itself: at 0.04 the length term of a 100 x 100
// rectangle is 100 cos 0.04 + 100 sin 0.04 = 103.92 pixels (in radians it would be 100.07), so a
// walk of one-pixel dashes takes 104 steps, not 101.
TEST(KivHatchDrawing, TheZeroBandTakesCosAndSinOfTheDegreeValue) {
    RecordingDC dc;
    draw(dc, family(0.04, 0, 0, 0, 1000, u"1,"), 100, 100);  // one line: the next stands beyond the extent
    const std::string strokes = compact(dc.calls);
    EXPECT_EQ(strokes.rfind("M0,100 L1,100 L2,100", 0), 0u) << strokes.substr(0, 40);
    EXPECT_NE(strokes.find("L103,100 L104,100 M0,100 L-1,100"), std::string::npos);  // the forward walk ends at 104
    EXPECT_EQ(strokes.substr(strokes.size() - 9), "L-104,100");  // and so does the backward one
}

// The two-sided bands: the first side reaches H cos + 1 from line 0 and the second W sin + 1. With
// W != H, swapping the two extents changes how many lines each side draws.
TEST(KivHatchDrawing, TheTwoSidedBandsTakeEachSidesOwnExtent) {
    struct Case {
        double angle;
        int linesAbove, linesBelow;  // walk starts above and below line 0's (not counting line 0)
    } cases[] = {
        // 30: side one above, extent 10 cos 30 + 1 = 9.66 (lines 1 to 3, 3 pixels apart); side two
        // below, 41 sin 30 + 1 = 21.5 (lines 1 to 7).
        {30, 3, 7},
        // 210: side one (the R1 form) also lies above line 0 with the extent H cos + 1, side two
        // (L1) below with W sin + 1.
        {210, 3, 7},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.angle);
        RecordingDC dc;
        draw(dc, family(c.angle, 0, 0, 0, 3, u"100,"), 41, 10);
        int above = 0, below = 0, onLineZero = 0;
        for (const std::string& call : dc.calls) {
            if (call.rfind("MoveTo(", 0) != 0) continue;  // each walk starts with one MoveTo: no gaps here
            const int y = std::stoi(call.substr(call.find(',') + 1));
            if (y < 10) ++above;
            else if (y > 10) ++below;
            else ++onLineZero;
        }
        EXPECT_EQ(above, 2 * c.linesAbove);
        EXPECT_EQ(below, 2 * c.linesBelow);
        EXPECT_EQ(onLineZero, 4);  // line 0 once a side, two walks each
    }
}

// The extent is a strict bound: in a rectangle 8 pixels high (extent 9) with lines 3 pixels apart,
// line 3 stands exactly on the extent and is not drawn.
TEST(KivHatchDrawing, ALineExactlyOnTheExtentIsNotDrawn) {
    RecordingDC dc;
    draw(dc, family(0, 0, 0, 0, 1, u"100,"), 20, 8, 1.0);  // zoom 1: 3 pixels a unit
    EXPECT_EQ(compact(dc.calls), "M0,8 L300,8 M0,8 L-300,8 M0,5 L300,5 M0,5 L-300,5 M0,2 L300,2 M0,2 L-300,2");
}

// The origin is the rectangle's lower-left corner measured from 0,0: the rectangle's own left and
// top are not added, so a rectangle of the same size elsewhere gets the very same strokes.
TEST(KivHatchDrawing, ARectangleAwayFromTheOriginGetsTheStrokesOfOneAtTheOrigin) {
    for (double angle : {0.0, 30.0, 90.0, 135.0, 210.0, 300.0}) {
        SCOPED_TRACE(angle);
        RecordingDC atOrigin, away;
        const HatchLineFamily f = family(angle, 1, 2, 0.5, 4, u"5,-2,");
        KivArray<HatchLineFamily> families = one(f);
        KivArray<double> dashes;
        KivHatchStyle style;
        style.zoomFactor = kThird;
        DrawHatch(atOrigin, KivRect{0, 0, 20, 10}, families, dashes, style);
        DrawHatch(away, KivRect{5, 7, 25, 17}, families, dashes, style);
        EXPECT_GT(atOrigin.calls.size(), 4u);
        EXPECT_EQ(away.calls, atOrigin.calls);
    }
}

// A family that draws nothing (its angle on a band bound) does not end the drawing: the families
// after it are drawn as if it were not there.
TEST(KivHatchDrawing, AFamilyOutsideEveryBandDoesNotStopTheFamiliesAfterIt) {
    KivArray<HatchLineFamily> withIt = one(family(0.05, 0, 0, 0, 4));
    withIt.append(family(45, 0, 0, 0, 4, u"3,-1,"));
    withIt.append(family(359.95, 0, 0, 0, 4));
    withIt.append(family(0, 0, 0, 0, 5));
    KivArray<HatchLineFamily> without = one(family(45, 0, 0, 0, 4, u"3,-1,"));
    without.append(family(0, 0, 0, 0, 5));
    KivArray<double> dashes;
    RecordingDC a, b;
    DrawHatch(a, KivRect{0, 0, 20, 10}, withIt, dashes, KivHatchStyle{});
    DrawHatch(b, KivRect{0, 0, 20, 10}, without, dashes, KivHatchStyle{});
    EXPECT_GT(b.calls.size(), 10u);
    EXPECT_EQ(a.calls, b.calls);
}

// ---- The guard: counted in strokes.

TEST(KivHatchDrawing, ASpacingOfZeroDrawsLineZeroOnceASide) {
    RecordingDC dc;
    const KivHatchPaint paint = draw(dc, family(0, 0, 0, 0, 0), 20, 10);
    // Every further line would stand on line 0 for ever: one line, its two walks of a MoveTo and the
    // three 10-pixel dashes that pass the length term of 20.
    EXPECT_EQ(paint.zeroSpacingSides, 1);
    EXPECT_FALSE(paint.guardStopped);
    EXPECT_EQ(compact(dc.calls), "M0,10 L10,10 L20,10 L30,10 M0,10 L-10,10 L-20,10 L-30,10");
    // A band of two sides draws line 0 on each, as it does at any spacing.
    CountingDC twoSides;
    EXPECT_EQ(draw(twoSides, family(30, 0, 0, 3, 0), 20, 10).zeroSpacingSides, 2);
    EXPECT_EQ(twoSides.pens, 0);
}

TEST(KivHatchDrawing, TinyDenormalNegativeNotANumberAndInfiniteSpacingsAllEnd) {
    const double spacings[] = {1e-300, 4.9e-324, -1e-300, -0.5, std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
    const long long budget = 200000;  // a tiny spacing draws until the budget is spent
    for (double dy : spacings) {
        for (double angle : {0.0, 30.0, 90.0, 135.0, 180.0, 225.0, 270.0, 315.0}) {
            SCOPED_TRACE(std::to_string(dy) + " at " + std::to_string(angle));
            CountingDC dc;
            KivArray<HatchLineFamily> families = one(family(angle, 3, 3, 1, dy, u"2,-1,"));
            KivArray<double> dashes;
            const KivHatchPaint paint = DrawHatch(dc, KivRect{0, 0, 40, 30}, families, dashes, KivHatchStyle{}, budget);
            EXPECT_LE(dc.strokes, budget);
            EXPECT_EQ(dc.pens, 0);
            EXPECT_EQ(paint.strokes, dc.strokes);
            // Not a number or infinite: the test before line 0 fails, nothing is drawn.
            if (!std::isfinite(dy)) {
                EXPECT_EQ(dc.strokes, 0);
            }
        }
    }
    CountingDC negative;
    draw(negative, family(0, 0, 0, 0, -4, u"5,-3,"), 20, 10);  // a negative spacing draws as its size
    CountingDC positive;
    draw(positive, family(0, 0, 0, 0, 4, u"5,-3,"), 20, 10);
    EXPECT_EQ(negative.strokes, positive.strokes);
}

TEST(KivHatchDrawing, AnInfiniteStaggerEndsTheSideAtItsFirstWalkThatWouldNeverEnd) {
    CountingDC dc;
    const KivHatchPaint paint = draw(dc, family(0, 0, 0, std::numeric_limits<double>::infinity(), 4), 20, 10);
    // Line 0's limit is 0 x infinity, not a number: neither of its walks would end, nor would any
    // later line's. The side ends at once and nothing is drawn.
    EXPECT_EQ(paint.walksSkipped, 2);
    EXPECT_EQ(dc.strokes, 0);
    // A finite stagger that overflows at line 1 (1e308 x 3 pixels a unit at zoom 1): line 0 is drawn,
    // and the side ends at line 1 however many lines its tiny spacing would still hold.
    CountingDC overflow;
    const KivHatchPaint later = draw(overflow, family(0, 0, 0, 1e308, 1e-300), 20, 10, 1.0);
    EXPECT_EQ(later.walksSkipped, 2);
    EXPECT_EQ(overflow.strokes, 2 * (1 + 1));  // line 0: two walks of a MoveTo and one 30-pixel dash
    EXPECT_FALSE(later.guardStopped);
}

TEST(KivHatchDrawing, AHugeFiniteStaggerSpendsTheBudgetAndStops) {
    CountingDC dc;
    KivArray<HatchLineFamily> families = one(family(0, 0, 0, 1e15, 1, u"1,-1,"));  // line 1 walks 3e15 pixels
    families.append(family(45, 0, 0, 0, 4));
    KivArray<double> dashes;
    const KivHatchPaint paint = DrawHatch(dc, KivRect{0, 0, 20, 10}, families, dashes, KivHatchStyle{}, 100000);
    EXPECT_TRUE(paint.guardStopped);
    EXPECT_EQ(dc.strokes, 100000);
    EXPECT_EQ(dc.pens, 0);
}

TEST(KivHatchDrawing, EveryDeviceCoordinateIsClampedAndNoNumberReachesTheDevice) {
    const double inf = std::numeric_limits<double>::infinity();
    const HatchLineFamily wild[] = {family(30, 1e300, -1e300, 3, 2, u"1e300,-1e300,"), family(0, inf, inf, 0, 4),
                                    family(60, std::numeric_limits<double>::quiet_NaN(), 0, 0, 4),
                                    family(200, 0, 0, 0, 1e300, u"-1e300,")};
    for (const HatchLineFamily& f : wild) {
        for (double zoom : {0.051, 1.0, 1e300, inf}) {
            CountingDC dc;
            draw(dc, f, 50, 50, zoom);
            EXPECT_LE(dc.strokes, KivHatchStrokeBudget(KivRect{0, 0, 50, 50}));
            if (dc.strokes > 0) {
                EXPECT_GE(dc.minCoordinate, -static_cast<long long>(kHatchDeviceLimit));
                EXPECT_LE(dc.maxCoordinate, static_cast<long long>(kHatchDeviceLimit));
            }
        }
    }
}

TEST(KivHatchDrawing, TheBudgetGrowsWithTheRectangle) {
    EXPECT_EQ(KivHatchStrokeBudget(KivRect{0, 0, 10, 10}), kMinHatchStrokeBudget);
    EXPECT_EQ(KivHatchStrokeBudget(KivRect{0, 0, 400, 300}), kMaxHatchStrokesPerPixel * 120000);
    EXPECT_EQ(KivHatchStrokeBudget(KivRect{0, 0, 0, 0}), kMinHatchStrokeBudget);
    EXPECT_EQ(KivHatchStrokeBudget(KivRect{-2147483647, -2147483647, 2147483647, 2147483647}), 1000000000000000LL);
}
