// CKivDpi. Natively the dpi is set by the tests; on Windows the system's own values are
// measured (the Wine tests run this program at 96 and at 144 dpi, see tests/CMakeLists.txt).
#include <gtest/gtest.h>

#include <cstdlib>

#include "CKivDpi.h"

namespace {
// The dpi that the Wine test run asked the prefix for, when it asked for one.
int expectedSystemDpi() {
    const char* v = std::getenv("KIV_EXPECT_DPI");
    return v != nullptr ? std::atoi(v) : 0;
}
}  // namespace

class CKivDpiTest : public ::testing::Test {
protected:
    void TearDown() override { CKivDpi::resetForTesting(); }
};

TEST_F(CKivDpiTest, At96ScaleIsIdentityAndUnitIsOne) {
    CKivDpi::setDpiForTesting(96);
    for (int n : {0, 1, 2, 140, -3, 1000}) EXPECT_EQ(CKivDpi::scale(n), n);
    EXPECT_EQ(CKivDpi::getUnit(), 1);
}

TEST_F(CKivDpiTest, At144ScaleIsOneAndAHalfRounded) {
    CKivDpi::setDpiForTesting(144);
    EXPECT_EQ(CKivDpi::scale(140), 210);
    EXPECT_EQ(CKivDpi::scale(2), 3);
    EXPECT_EQ(CKivDpi::scale(1), 2);  // 1.5 rounds half away from zero
    EXPECT_EQ(CKivDpi::scale(-1), -2);
    EXPECT_EQ(CKivDpi::getUnit(), 2);
}

TEST_F(CKivDpiTest, ScaleIsMonotonic) {
    for (int dpi : {72, 96, 120, 144, 192, 288}) {
        CKivDpi::setDpiForTesting(dpi);
        for (int n = -200; n < 200; ++n) EXPECT_LE(CKivDpi::scale(n), CKivDpi::scale(n + 1)) << dpi << " " << n;
        EXPECT_GE(CKivDpi::getUnit(), 1);
    }
}

TEST_F(CKivDpiTest, ScaleSizeInPlaceReturnsTheSamePointer) {
    CKivDpi::setDpiForTesting(144);
    KivSize size{2, 2};
    EXPECT_EQ(CKivDpi::scale(&size), &size);
    EXPECT_EQ(size.cx, 3);
    EXPECT_EQ(size.cy, 3);
    EXPECT_EQ(CKivDpi::scale(static_cast<KivSize*>(nullptr)), nullptr);
}

TEST_F(CKivDpiTest, ComboBoxMetricsCanBeSet) {
    CKivDpi::setComboBoxMetricsForTesting(6, 16);
    EXPECT_EQ(CKivDpi::getOwnerDrawComboBoxHeightDiff(), 6);
    EXPECT_EQ(CKivDpi::getDefaultGuiFontComboBoxItemHeight(), 16);
}

TEST_F(CKivDpiTest, SystemValuesArePlausible) {
    // Natively: 96 dpi. On Windows: the screen's dpi and metrics measured from a real combo box.
    const int dpi = CKivDpi::getDpi();
    EXPECT_GT(dpi, 0);
    if (expectedSystemDpi() > 0) {
        EXPECT_EQ(dpi, expectedSystemDpi());
    }
#if !defined(_WIN32)
    EXPECT_EQ(dpi, 96);
#endif
    const int diff = CKivDpi::getOwnerDrawComboBoxHeightDiff();
    const int item = CKivDpi::getDefaultGuiFontComboBoxItemHeight();
    EXPECT_GE(diff, 0);
    EXPECT_LT(diff, 4 * CKivDpi::scale(6) + 8);
    EXPECT_GE(item, CKivDpi::scale(10));
    EXPECT_LE(item, CKivDpi::scale(30));
    std::printf("dpi %d: unit %d, height diff %d, item height %d\n", dpi, CKivDpi::getUnit(), diff, item);
}

TEST_F(CKivDpiTest, SystemMetricsGrowWithTheDpi) {
    // The same measurement at a higher dpi is at least as large (natively: scaled defaults).
#if defined(_WIN32)
    GTEST_SKIP() << "the Windows dpi is the system's; the 96 and 144 dpi runs compare it";
#else
    CKivDpi::setDpiForTesting(96);
    const int item96 = CKivDpi::getDefaultGuiFontComboBoxItemHeight();
    CKivDpi::setDpiForTesting(144);
    EXPECT_GT(CKivDpi::getDefaultGuiFontComboBoxItemHeight(), item96);
#endif
}
