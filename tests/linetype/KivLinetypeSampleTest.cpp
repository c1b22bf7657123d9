// The definition grammar and the sample strokes: exact MoveTo/LineTo sequences of the worked example,
// of empty, gap-only, dot, text and bracketed definitions, the width limit and the stroke guard.
#include <gtest/gtest.h>

#include "KivLinetypeSample.h"
#include "RecordingDC.h"

using Calls = std::vector<std::string>;

namespace {
Calls strokes(const char16_t* definition, int y, double width) {
    RecordingDC dc;
    KivStrokeLinetypeSample(dc, KivString(definition), y, width);
    return dc.calls;
}
}  // namespace

TEST(KivLinetypeSample, PatternDropsTheLeadingAAndAppendsASeparator) {
    EXPECT_EQ(KivLinetypePattern(KivString(u"A,12.7,-6.35")), KivString(u"12.7,-6.35,"));
    EXPECT_EQ(KivLinetypePattern(KivString(u"A, 12.7")), KivString(u" 12.7,"));
    EXPECT_EQ(KivLinetypePattern(KivString()), KivString(u","));
    EXPECT_EQ(KivLinetypePattern(KivString(u"5,-5")), KivString(u"5,-5,"));  // no "A,": nothing dropped
    // "A," anywhere drops the first two characters, wherever it stands (the A, is expected first).
    EXPECT_EQ(KivLinetypePattern(KivString(u"5,A,-5")), KivString(u"A,-5,"));
}

TEST(KivLinetypeSample, TheFirstBracketedSpanBecomesOneDot) {
    EXPECT_EQ(KivLinetypePattern(KivString(u"A,.5,-.2,[\"HW\",STANDARD,S=.1],-.2")), KivString(u".5,-.2,0,-.2,"));
    EXPECT_EQ(KivLinetypePattern(KivString(u"A,1,[X,s=1],-1,[Y],2")), KivString(u"1,0,-1,[Y],2,"));  // only the first
    EXPECT_EQ(KivLinetypePattern(KivString(u"A,1,[X,s=1,-1")), KivString(u"1,[X,s=1,-1,"));     // "[" without "]"
    EXPECT_EQ(KivLinetypePattern(KivString(u"A,1,]X[,-1")), KivString(u"1,]X[,-1,"));            // "]" before "["
}

TEST(KivLinetypeSample, WorkedExampleDrawsDashesOfTruncatedPixels) {
    // A,12.7,-6.35: 0 to 12 (12.7), move to 19 (19.05), 19 to 31 (31.75), move to 38 (38.1), then
    // the dash that passes the width ends at it.
    EXPECT_EQ(strokes(u"A,12.7,-6.35", 8, 45.0), (Calls{"MoveTo(0,8)", "LineTo(12,8)", "MoveTo(19,8)", "LineTo(31,8)",
                                                        "MoveTo(38,8)", "LineTo(45,8)"}));
}

TEST(KivLinetypeSample, ContinuousRepeatsItsOneDashToTheRightEdge) {
    EXPECT_EQ(strokes(u"A, 12.7", 5, 40.0),
              (Calls{"MoveTo(0,5)", "LineTo(12,5)", "LineTo(25,5)", "LineTo(38,5)", "LineTo(40,5)"}));
}

TEST(KivLinetypeSample, AnEmptyDefinitionOnlyMovesToTheStart) {
    EXPECT_EQ(strokes(u"", 7, 100.0), (Calls{"MoveTo(0,7)"}));
    EXPECT_EQ(strokes(u"A,", 7, 100.0), (Calls{"MoveTo(0,7)"}));
    EXPECT_EQ(strokes(u"A,,5", 7, 100.0), (Calls{"MoveTo(0,7)"}));  // an empty first element
}

TEST(KivLinetypeSample, OnlyGapsNeverDrawAndStopPastTheWidth) {
    EXPECT_EQ(strokes(u"A,-5", 3, 12.0), (Calls{"MoveTo(0,3)", "MoveTo(5,3)", "MoveTo(10,3)", "MoveTo(12,3)"}));
}

TEST(KivLinetypeSample, ZeroAndTextWithoutANumberDrawOnePixelDots) {
    const Calls dots{"MoveTo(0,2)", "LineTo(1,2)", "LineTo(2,2)", "LineTo(3,2)", "LineTo(3,2)"};
    EXPECT_EQ(strokes(u"A,0", 2, 3.0), dots);
    EXPECT_EQ(strokes(u"A,abc", 2, 3.0), dots);
    EXPECT_EQ(strokes(u"A,0.00005", 2, 3.0), dots);  // between -0.0001 and 0.0001: a dot
    EXPECT_EQ(strokes(u"A,-0.0001", 2, 3.0), dots);
}

TEST(KivLinetypeSample, AnEmbeddedShapeDrawsAsOneDotInItsPlace) {
    EXPECT_EQ(strokes(u"A,2.5,[TRACK1,ltypeshp.shx,S=.25],-2", 0, 12.0),
              (Calls{"MoveTo(0,0)", "LineTo(2,0)", "LineTo(3,0)", "MoveTo(5,0)", "LineTo(8,0)", "LineTo(9,0)",
                     "MoveTo(11,0)", "LineTo(12,0)"}));
}

TEST(KivLinetypeSample, DotsAndDashesMixedWithACarriageReturnAtTheEnd) {
    // A definition line of a CR-LF file keeps its carriage return; the last element still converts.
    EXPECT_EQ(strokes(u"A,4,-2,0,-2\r", 1, 20.0),
              (Calls{"MoveTo(0,1)", "LineTo(4,1)", "MoveTo(6,1)", "LineTo(7,1)", "MoveTo(9,1)", "LineTo(13,1)",
                     "MoveTo(15,1)", "LineTo(16,1)", "MoveTo(18,1)", "LineTo(20,1)"}));
}

TEST(KivLinetypeSample, HugeNumbersEndAtTheWidth) {
    EXPECT_EQ(strokes(u"A,1e300", 4, 30.0), (Calls{"MoveTo(0,4)", "LineTo(30,4)"}));
    EXPECT_EQ(strokes(u"A,-1e300,5", 4, 30.0), (Calls{"MoveTo(0,4)", "MoveTo(30,4)"}));
    EXPECT_EQ(strokes(u"A,1e999", 4, 30.0), (Calls{"MoveTo(0,4)", "LineTo(30,4)"}));  // infinite
    EXPECT_EQ(strokes(u"A,nan,inf", 4, 2.0), (Calls{"MoveTo(0,4)", "LineTo(1,4)", "LineTo(2,4)", "LineTo(2,4)"}));
}

TEST(KivLinetypeSample, ThePatternStartsAtZeroOfTheDeviceAndEndsAtTheWidth) {
    // A width of 0 (an empty sample box) ends with the first stroke; a negative one ends at it too.
    EXPECT_EQ(strokes(u"A,5,-5", 9, 0.0), (Calls{"MoveTo(0,9)", "LineTo(0,9)"}));
    EXPECT_EQ(strokes(u"A,5,-5", 9, -3.0), (Calls{"MoveTo(0,9)", "LineTo(-3,9)"}));
}

TEST(KivLinetypeSample, ATinyDashStopsAtTheStrokeGuardNotAtTheEnd) {
    RecordingDC dc;
    const int drawn = KivStrokeLinetypeSample(dc, KivString(u"A,0.00011"), 0, 10.0);
    EXPECT_EQ(drawn, kMaxStrokesPerPixel * 11 + 16);
    EXPECT_EQ(dc.calls.size(), static_cast<std::size_t>(drawn) + 1);
    // A realistic small dash finishes well inside the guard, exactly.
    RecordingDC fine;
    EXPECT_EQ(KivStrokeLinetypeSample(fine, KivString(u"A,.0625,-.0625"), 0, 10.0), 161);
    EXPECT_EQ(fine.calls.back(), "LineTo(10,0)");
}

TEST(KivLinetypeSample, ALongDefinitionDrawsItsElementsInTurnLikeItsShortForm) {
    // Four thousand repeats of one dash and one gap: the same strokes as the dash and gap alone (the
    // walk moves along the line element by element and starts it again at its end).
    std::u16string longForm = u"A,";
    for (int i = 0; i < 4000; ++i) longForm += u"1.5,-0.5,";
    longForm.pop_back();
    RecordingDC shortDc, longDc;
    KivStrokeLinetypeSample(shortDc, KivString(u"A,1.5,-0.5"), 4, 300.0);
    KivStrokeLinetypeSample(longDc, KivString(longForm), 4, 300.0);
    EXPECT_EQ(longDc.calls, shortDc.calls);
    EXPECT_EQ(longDc.calls.back(), "LineTo(300,4)");  // the dash after the 150th gap ends at the width
    // A line that ends in an empty element ends the sample there, wherever the element lies.
    EXPECT_EQ(strokes(u"A,3,,-2", 0, 50.0), (Calls{"MoveTo(0,0)", "LineTo(3,0)"}));
}
