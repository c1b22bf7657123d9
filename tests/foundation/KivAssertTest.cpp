// KivAssert: reports and returns; reports can be captured.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include "AssertCapture.h"
#include "KivAssert.h"

TEST(KivAssert, ReportsExpressionFileAndLineOfEveryCallToTheInstalledReporter) {
    AssertCapture capture;
    KivAssert::kivAssert(L"len>=0", L"ORVRoots\\Exp\\KivArray", 606);
    KivAssert::kivAssert(L"isValid( index )", L"ORVRoots\\Exp\\KivArray", 536);
    ASSERT_EQ(capture.reports().size(), 2u);
    EXPECT_EQ(capture.reports()[0].expression, "len>=0");
    EXPECT_EQ(capture.reports()[0].file, "ORVRoots\\Exp\\KivArray");
    EXPECT_EQ(capture.reports()[0].line, 606u);
    EXPECT_EQ(capture.reports()[1].expression, "isValid( index )");
    EXPECT_EQ(capture.reports()[1].line, 536u);
}

TEST(KivAssert, NullTextsAreReportedAsEmpty) {
    AssertCapture capture;
    KivAssert::kivAssert(nullptr, nullptr, 1);
    ASSERT_EQ(capture.reports().size(), 1u);
    EXPECT_EQ(capture.reports()[0].expression, "");
}

// With no capture installed the platform's report runs (standard error here, the debugger on
// Windows) and the caller goes on: in a child process the check is reported, the code after it
// runs and the process ends normally. A report that aborted or threw would end it otherwise.
TEST(KivAssert, DefaultReporterReturnsAndTheCallerGoesOn) {
#if defined(_WIN32)
    const char* expected = "went on";
#else
    const char* expected = "KivAssert: default report \\(KivAssertTest, line 1\\)(.|\n)*went on";
#endif
    EXPECT_EXIT(
        {
            KivAssert::kivAssert(L"default report", L"KivAssertTest", 1);
            std::fputs("went on\n", stderr);
            std::fflush(stderr);
            std::exit(0);
        },
        ::testing::ExitedWithCode(0), expected);
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
