// The hatch preview control: its fields and defaults, the setters (modified, redrawn, the zoom floor),
// a stored zoom read back, Metric without a reload, Refresh, and OnDraw in design and user mode.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>

#include "CKivHatchCtrl.h"
#include "CountingDC.h"
#include "RecordingDC.h"
#include "RecordingSite.h"
#include "TestFiles.h"

namespace {
class HatchCtrl : public ::testing::Test {
protected:
    KivString patternIn(const TempFile& file, const char16_t* name) {
        return file.path() + KivString(u"(") + KivString(name) + KivString(u")");
    }
    RecordingSite site;
    CKivHatchCtrl ctrl{site};
};
constexpr const char* kPat = ";\n*LINES,horizontal\n0,0,0,0,2\n*CROSS,x\n0,0,0,0,2\n90,0,0,0,2\n";
}  // namespace

TEST_F(HatchCtrl, FieldsAfterConstruction) {
    EXPECT_EQ(ctrl.m_metric, 1);
    EXPECT_TRUE(ctrl.GetMetric());
    EXPECT_EQ(ctrl.m_zoomFactor, 1.0);
    EXPECT_EQ(ctrl.m_unitFactor, 1.0);
    EXPECT_EQ(ctrl.m_pattern, KivString());
    EXPECT_EQ(ctrl.m_unused, KivString());
    EXPECT_EQ(ctrl.m_lineFamilies.getLogicalLength(), 0);  // the empty Pattern loads nothing
    EXPECT_EQ(ctrl.m_dashes.getLogicalLength(), 0);
    EXPECT_EQ(KivString(CKivHatchCtrl::kDesignText), KivString(u"KivHatchCtrl"));
    EXPECT_EQ(site.modifiedCount, 0);
}

TEST_F(HatchCtrl, AFreshControlDrawsOnlyItsBackground) {
    RecordingDC dc;
    dc.bkColor = 0x00123456;
    ctrl.OnDraw(dc, KivRect{0, 0, 80, 40}, true, 0x00AABBCC, 0x00000080);
    EXPECT_EQ(dc.calls, (std::vector<std::string>{"GetBkColor", "FillRect(0,0,80,40,solid 0x00AABBCC)",
                                                  "SelectPen(0,1,0x00000080)", "RestorePen", "SetBkColor(0x00123456)"}));
}

TEST_F(HatchCtrl, DesignModeDrawsThePlaceholderWhateverThePattern) {
    TempFile file(kPat, "p.pat");
    ctrl.SetPattern(patternIn(file, u"CROSS"));
    ASSERT_EQ(ctrl.m_lineFamilies.getLogicalLength(), 2);
    RecordingDC dc;
    dc.bkColor = 0x00123456;
    ctrl.OnDraw(dc, KivRect{0, 0, 101, 21}, false, 0x00AABBCC, 0x00000080);
    EXPECT_EQ(dc.calls, (std::vector<std::string>{"GetBkColor", "FillRect(0,0,101,21,solid 0x00FFFFFF)", "SetTextAlign(30)",
                                                  "GetTextExtentPoint32(\"KivHatchCtrl\")", "TextOut(50,16,\"KivHatchCtrl\")",
                                                  "SetBkColor(0x00123456)"}));
}

TEST_F(HatchCtrl, UserModeDrawsThePatternInTheForeColourOverTheBackColour) {
    TempFile file(kPat, "p.pat");
    ctrl.SetPattern(patternIn(file, u"lines"));
    ctrl.SetZoomFactor(1.0 / 3.0);
    RecordingDC dc;
    ctrl.OnDraw(dc, KivRect{0, 0, 10, 3}, true, 0x00FFFFFF, 0x000000FF);
    // Lines 2 pixels apart from the bottom (y 3 and 1), one unbroken dash of 10 each way.
    EXPECT_EQ(dc.calls, (std::vector<std::string>{"GetBkColor", "FillRect(0,0,10,3,solid 0x00FFFFFF)",
                                                  "SelectPen(0,1,0x000000FF)", "MoveTo(0,3)", "LineTo(10,3)",
                                                  "LineTo(20,3)", "MoveTo(0,3)", "LineTo(-10,3)", "LineTo(-20,3)",
                                                  "MoveTo(0,1)", "LineTo(10,1)", "LineTo(20,1)", "MoveTo(0,1)",
                                                  "LineTo(-10,1)", "LineTo(-20,1)", "RestorePen", "SetBkColor(0x00FFFFFF)"}));
}

TEST_F(HatchCtrl, ZoomFactorOfPointZeroFiveOrLessIsIgnoredWithoutARedraw) {
    for (double zoom : {0.05, 0.0, -1.0, -0.06, std::numeric_limits<double>::quiet_NaN()}) ctrl.SetZoomFactor(zoom);
    EXPECT_EQ(ctrl.GetZoomFactor(), 1.0);
    EXPECT_EQ(site.modifiedCount, 0);
    EXPECT_EQ(site.redraws, 0);
    ctrl.SetZoomFactor(0.0501);
    EXPECT_EQ(ctrl.GetZoomFactor(), 0.0501);
    EXPECT_EQ(site.modifiedCount, 1);
    EXPECT_EQ(site.redraws, 1);
}

TEST_F(HatchCtrl, AStoredZoomBelowPointZeroFiveLoadsAsOne) {
    ctrl.LoadZoomFactor(0.01);
    EXPECT_EQ(ctrl.GetZoomFactor(), 1.0);
    ctrl.LoadZoomFactor(0.05);  // kept as it is
    EXPECT_EQ(ctrl.GetZoomFactor(), 0.05);
    ctrl.LoadZoomFactor(-3.0);
    EXPECT_EQ(ctrl.GetZoomFactor(), 1.0);
    ctrl.LoadZoomFactor(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(ctrl.GetZoomFactor(), 1.0);
    ctrl.LoadZoomFactor(2.5);
    EXPECT_EQ(ctrl.GetZoomFactor(), 2.5);
    EXPECT_EQ(site.modifiedCount, 0);
}

TEST_F(HatchCtrl, MetricFalseMultipliesEveryLengthByTwentyFivePointFourWithoutReloading) {
    TempFile file(";\n*WIDE,x\n0,0,0,0,100\n", "wide.pat");
    ctrl.SetPattern(patternIn(file, u"WIDE"));
    ctrl.SetZoomFactor(1.0 / 3.0);
    RecordingDC mm;
    ctrl.OnDraw(mm, KivRect{0, 0, 200, 300}, true, 0, 0);
    // The file goes; switching to inches must not read it again.
    {
        std::ofstream(file.nativePath(), std::ios::trunc) << "";
    }
    site.modifiedCount = 0;
    ctrl.SetMetric(false);
    EXPECT_FALSE(ctrl.GetMetric());
    EXPECT_EQ(ctrl.m_unitFactor, 25.4);
    EXPECT_EQ(site.modifiedCount, 1);
    EXPECT_EQ(site.redraws, 3);  // the pattern, the zoom, the metric
    ASSERT_EQ(ctrl.m_lineFamilies.getLogicalLength(), 1);
    RecordingDC inch;
    ctrl.OnDraw(inch, KivRect{0, 0, 200, 300}, true, 0, 0);
    // Millimetres: lines every 100 pixels, dashes of 10; inches: every 2540 pixels (one line in a
    // 300-pixel rectangle) and dashes of 254.
    EXPECT_EQ(mm.calls.at(4), "LineTo(10,300)");
    EXPECT_EQ(inch.calls.at(3), "MoveTo(0,300)");
    EXPECT_EQ(inch.calls.at(4), "LineTo(254,300)");
    EXPECT_EQ(std::count(inch.calls.begin(), inch.calls.end(), "MoveTo(0,200)"), 0);
    ctrl.SetMetric(true);
    EXPECT_EQ(ctrl.m_unitFactor, 1.0);
}

TEST_F(HatchCtrl, PatternAndRefreshLoadTheFileAgainAndAnEmptyPatternKeepsTheFamilies) {
    TempFile file(kPat, "p.pat");
    ctrl.SetPattern(patternIn(file, u"CROSS"));
    EXPECT_EQ(ctrl.GetPattern(), patternIn(file, u"CROSS"));
    EXPECT_EQ(ctrl.m_lineFamilies.getLogicalLength(), 2);
    EXPECT_EQ(site.modifiedCount, 1);
    EXPECT_EQ(site.redraws, 1);
    {
        std::ofstream(file.nativePath(), std::ios::trunc) << ";\n*CROSS,x\n0,0,0,0,2\n90,0,0,0,2\n45,0,0,0,2\n";
    }
    EXPECT_EQ(ctrl.m_lineFamilies.getLogicalLength(), 2);  // not read until asked
    ctrl.Refresh();
    EXPECT_EQ(ctrl.m_lineFamilies.getLogicalLength(), 3);
    EXPECT_EQ(site.modifiedCount, 2);
    EXPECT_EQ(site.redraws, 2);
    ctrl.SetPattern(KivString());
    EXPECT_EQ(ctrl.m_lineFamilies.getLogicalLength(), 3);
    ctrl.SetPattern(file.folder() + KivString(u"\\gone.pat(CROSS)"));
    EXPECT_EQ(ctrl.m_lineFamilies.getLogicalLength(), 0);
}

TEST_F(HatchCtrl, AResetStateGivesZoomOne) {
    ctrl.SetZoomFactor(3.0);
    ctrl.ResetZoomFactor();
    EXPECT_EQ(ctrl.GetZoomFactor(), 1.0);
}

TEST_F(HatchCtrl, APatternThatNeverEndsPaintsInBoundedStrokes) {
    TempFile file(";\n*FLAT,spacing zero\n30,0,0,0,0,1,-1\n*FLATTER,x\n0,0,0,1e308,1e-300,0\n", "flat.pat");
    for (const char16_t* name : {u"FLAT", u"FLATTER"}) {
        ctrl.SetPattern(patternIn(file, name));
        CountingDC dc;
        const KivHatchPaint paint = ctrl.OnDraw(dc, KivRect{0, 0, 200, 100}, true, 0, 0);
        EXPECT_LE(dc.strokes, KivHatchStrokeBudget(KivRect{0, 0, 200, 100}));
        EXPECT_TRUE(paint.guardStopped || paint.zeroSpacingSides > 0 || paint.walksSkipped > 0);
        EXPECT_EQ(dc.pens, 0);
    }
}
