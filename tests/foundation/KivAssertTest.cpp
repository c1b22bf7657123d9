// KivAssert (Part 2.1): reports and returns; reports can be captured.
#include <gtest/gtest.h>

#include "AssertCapture.h"
#include "KivAssert.h"

TEST(KivAssert, ReportsExpressionFileAndLineAndReturns) {
    AssertCapture capture;
    bool wentOn = false;
    KivAssert::kivAssert(L"len>=0", L"ORVRoots\\Exp\\KivArray", 606);
    wentOn = true;
    EXPECT_TRUE(wentOn);
    ASSERT_EQ(capture.reports().size(), 1u);
    EXPECT_EQ(capture.reports()[0].expression, "len>=0");
    EXPECT_EQ(capture.reports()[0].file, "ORVRoots\\Exp\\KivArray");
    EXPECT_EQ(capture.reports()[0].line, 606u);
}

TEST(KivAssert, NullTextsAreReportedAsEmpty) {
    AssertCapture capture;
    KivAssert::kivAssert(nullptr, nullptr, 1);
    ASSERT_EQ(capture.reports().size(), 1u);
    EXPECT_EQ(capture.reports()[0].expression, "");
}

TEST(KivAssert, DefaultReporterReturnsToo) {
    // With no capture installed the platform's report (stderr or the debugger) runs and returns.
    KivAssert::kivAssert(L"default report", L"KivAssertTest", 1);
    SUCCEED();
}

TEST(KivAssert, CaptureRestoresThePreviousReporter) {
    AssertCapture outer;
    {
        // An explicit reporter, then removed again.
        auto previous = KivAssert::setReporter(nullptr);
        KivAssert::setReporter(previous);
    }
    KivAssert::kivAssert(L"x", L"f", 2);
    EXPECT_EQ(outer.reports().size(), 1u);
}
