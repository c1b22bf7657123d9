// KivArray: growth, the three-quarter rule, element construction, the checks with their
// exact messages and line numbers, and qsort-based sorting of element types that own memory.
#include <gtest/gtest.h>

#include "AssertCapture.h"
#include "KivString.h"
#include "KivMemoryControllerController.h"
#include "ORVRoots/Exp/KivArray.h"

namespace {

// Counts constructions, destructions and assignments; fresh elements hold -7.
struct Probe {
    static int constructed, destroyed, assigned;
    int value = -7;
    Probe() { ++constructed; }
    Probe(const Probe& o) : value(o.value) { ++constructed; }
    Probe& operator=(const Probe& o) {
        value = o.value;
        ++assigned;
        return *this;
    }
    ~Probe() { ++destroyed; }
    static void reset() { constructed = destroyed = assigned = 0; }
};
int Probe::constructed = 0;
int Probe::destroyed = 0;
int Probe::assigned = 0;

Probe probe(int v) {
    Probe p;
    p.value = v;
    return p;
}

void expectSingleReport(const AssertCapture& capture, const char* message, unsigned line) {
    ASSERT_EQ(capture.reports().size(), 1u);
    EXPECT_EQ(capture.reports()[0].expression, message);
    EXPECT_EQ(capture.reports()[0].file, "ORVRoots\\Exp\\KivArray");
    EXPECT_EQ(capture.reports()[0].line, line);
}

int compareInts(const void* a, const void* b) {
    const int x = static_cast<const Probe*>(a)->value, y = static_cast<const Probe*>(b)->value;
    return x < y ? -1 : (x > y ? 1 : 0);
}

int compareStrings(const void* a, const void* b) {
    return KivString::compare(*static_cast<const KivString*>(a), *static_cast<const KivString*>(b));
}

}  // namespace

TEST(KivArray, ConstructorHasNoStorage) {
    KivArray<double> a;
    EXPECT_EQ(a.getLogicalLength(), 0);
    EXPECT_EQ(a.getPhysicalLength(), 0);
    EXPECT_EQ(a.getGrowLength(), 8);
    EXPECT_FALSE(a.isValid(0));
}

TEST(KivArray, FirstAppendAllocatesEightAndNinthAllocatesSixteenCopyingEight) {
    Probe::reset();
    KivArray<Probe> a;
    EXPECT_EQ(a.append(probe(0)), 0);
    EXPECT_EQ(a.getPhysicalLength(), 8);
    EXPECT_EQ(a.getLogicalLength(), 1);
    for (int i = 1; i < 8; ++i) EXPECT_EQ(a.append(probe(i)), i);
    EXPECT_EQ(a.getPhysicalLength(), 8);
    Probe::reset();
    EXPECT_EQ(a.append(probe(8)), 8);
    EXPECT_EQ(a.getPhysicalLength(), 16);
    // 16 fresh elements built, the 8 old ones copied by assignment, the 8 old ones destroyed.
    EXPECT_EQ(Probe::destroyed - 2, 8);  // minus the two temporaries of the call
    EXPECT_EQ(Probe::assigned, 8 + 1);   // eight copies plus the appended value
    for (int i = 0; i < 9; ++i) EXPECT_EQ(a[i].value, i);
}

TEST(KivArray, GrowthRoundsUpToMultiplesOfEight) {
    KivArray<double> a;
    a.setLogicalLength(9);
    EXPECT_EQ(a.getPhysicalLength(), 16);
    a.setLogicalLength(17);
    EXPECT_EQ(a.getPhysicalLength(), 24);
    a.setLogicalLength(24);
    EXPECT_EQ(a.getPhysicalLength(), 24);
}

TEST(KivArray, FreshElementsOfPlainNumbersAreZero) {
    KivArray<double> a;
    a.setLogicalLength(8);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(a[i], 0.0);
}

TEST(KivArray, ShrinkingTheLogicalLengthKeepsStorageAndStaleValues) {
    KivArray<double> a;
    for (int i = 0; i < 5; ++i) a.append(i + 0.5);
    const double* storage = &a[0];
    a.setLogicalLength(0);
    EXPECT_EQ(a.getPhysicalLength(), 8);
    a.setLogicalLength(5);
    EXPECT_EQ(&a[0], storage);
    EXPECT_EQ(a[4], 4.5);  // stale value still there
}

TEST(KivArray, ThreeQuarterRule) {
    KivArray<double> a;
    a.setLogicalLength(8);
    a[0] = 1.0;
    const double* storage = &a[0];
    a.setPhysicalLength(7);  // 7 > 6: storage kept
    EXPECT_EQ(a.getPhysicalLength(), 8);
    EXPECT_EQ(&a[0], storage);
    EXPECT_EQ(a.getLogicalLength(), 8);
    a.setPhysicalLength(6);  // reallocates to 6
    EXPECT_EQ(a.getPhysicalLength(), 6);
    EXPECT_EQ(a.getLogicalLength(), 6);
    EXPECT_EQ(a[0], 1.0);
}

TEST(KivArray, SetPhysicalLengthZeroReleasesEverything) {
    Probe::reset();
    {
        KivArray<Probe> a;
        a.setLogicalLength(3);
        a.setPhysicalLength(0);
        EXPECT_EQ(a.getPhysicalLength(), 0);
        EXPECT_EQ(a.getLogicalLength(), 0);
        EXPECT_FALSE(a.isValid(0));
        EXPECT_EQ(Probe::destroyed, 8);
        a.setPhysicalLength(0);  // nothing to release
    }
    EXPECT_EQ(Probe::constructed, Probe::destroyed);
}

TEST(KivArray, DestructorDestroysEveryPhysicalElement) {
    Probe::reset();
    {
        KivArray<Probe> a;
        a.setLogicalLength(1);
    }
    EXPECT_EQ(Probe::constructed, 8);
    EXPECT_EQ(Probe::destroyed, 8);
}

TEST(KivArray, RemoveAtLastOnlyLowersTheLogicalLength) {
    KivArray<double> a;
    for (int i = 0; i < 3; ++i) a.append(i);
    a.removeAt(2);
    EXPECT_EQ(a.getLogicalLength(), 2);
    EXPECT_EQ(a.getPhysicalLength(), 8);
    a.setLogicalLength(3);
    EXPECT_EQ(a[2], 2.0);  // the last slot keeps its old value
}

TEST(KivArray, RemoveAtMovesLaterElementsDown) {
    KivArray<double> a;
    for (int i = 0; i < 4; ++i) a.append(i);
    a.removeAt(1);
    ASSERT_EQ(a.getLogicalLength(), 3);
    EXPECT_EQ(a[0], 0.0);
    EXPECT_EQ(a[1], 2.0);
    EXPECT_EQ(a[2], 3.0);
}

TEST(KivArray, RemoveAtInvalidIndexReportsAndKeepsTheArray) {
    KivArray<double> a;
    a.append(1.0);
    AssertCapture capture;
    a.removeAt(1);
    expectSingleReport(capture, "isValid(index)", 853);
    EXPECT_EQ(a.getLogicalLength(), 1);
    capture.clear();
    a.removeAt(-1);
    expectSingleReport(capture, "isValid(index)", 853);
}

TEST(KivArray, InsertAtLogicalLengthBehavesAsAppend) {
    KivArray<double> a;
    a.append(1.0);
    AssertCapture capture;
    a.insertAt(1, 2.0);
    EXPECT_TRUE(capture.reports().empty());
    ASSERT_EQ(a.getLogicalLength(), 2);
    EXPECT_EQ(a[1], 2.0);
}

TEST(KivArray, InsertAtBeyondTheEndReports) {
    KivArray<double> a;
    a.append(1.0);
    AssertCapture capture;
    a.insertAt(2, 2.0);
    expectSingleReport(capture, "index <= m_logicalLength", 781);
    EXPECT_EQ(a.getLogicalLength(), 1);
}

TEST(KivArray, InsertAtShiftsFromTheTopDown) {
    KivArray<double> a;
    for (int i = 0; i < 3; ++i) a.append(i);
    a.insertAt(0, 9.0);
    ASSERT_EQ(a.getLogicalLength(), 4);
    EXPECT_EQ(a[0], 9.0);
    EXPECT_EQ(a[1], 0.0);
    EXPECT_EQ(a[3], 2.0);
}

TEST(KivArray, InsertOfAnElementOfTheSameArray) {
    KivArray<KivString> a;
    a.append(KivString(u"first"));
    a.append(KivString(u"second"));
    a.insertAt(0, a[1]);
    EXPECT_EQ(a[0], KivString(u"second"));
    a.setAtGrow(9, a[0]);
    EXPECT_EQ(a[9], KivString(u"second"));
    a.append(a[2]);
    EXPECT_EQ(a[10], KivString(u"second"));
}

TEST(KivArray, SetAtGrowOnEmptyArray) {
    KivArray<Probe> a;
    a.setAtGrow(10, probe(5));
    EXPECT_EQ(a.getLogicalLength(), 11);
    EXPECT_EQ(a.getPhysicalLength(), 16);
    for (int i = 0; i < 10; ++i) EXPECT_EQ(a[i].value, -7) << i;
    EXPECT_EQ(a[10].value, 5);
}

TEST(KivArray, SetAtGrowOnAValidIndexAssigns) {
    KivArray<double> a;
    a.append(1.0);
    a.setAtGrow(0, 4.0);
    EXPECT_EQ(a.getLogicalLength(), 1);
    EXPECT_EQ(a[0], 4.0);
}

TEST(KivArray, AccessOutsideTheLogicalLengthReports) {
    KivArray<double> a;
    a.append(1.0);
    AssertCapture capture;
    (void)a[1];
    expectSingleReport(capture, "isValid( index )", 536);
}

TEST(KivArray, AccessOutsideTheStorageReportsAndNeverTouchesIt) {
    KivArray<double> a;
    AssertCapture capture;
    a[-1] = 3.0;
    a[1000] = 3.0;
    EXPECT_EQ(capture.reports().size(), 2u);
    EXPECT_EQ(a[5], 0.0);  // a scratch element in its fresh state
}

TEST(KivArray, NegativeLengthsReportAndChangeNothing) {
    KivArray<double> a;
    a.append(1.0);
    AssertCapture capture;
    a.setLogicalLength(-1);
    expectSingleReport(capture, "len>=0", 606);
    capture.clear();
    a.setPhysicalLength(-1);
    expectSingleReport(capture, "newPhysicalLen >= 0", 657);
    EXPECT_EQ(a.getLogicalLength(), 1);
    EXPECT_EQ(a.getPhysicalLength(), 8);
}

TEST(KivArray, AllocationFailureReportsAndLeavesTheArrayUsable) {
    KivArray<double> a;
    a.append(1.0);
    for (int i = 1; i < 8; ++i) a.append(i);
    AssertCapture capture;
    KivMemoryControllerController::failNextAllocations(1);
    a.append(9.0);
    ASSERT_GE(capture.reports().size(), 1u);
    EXPECT_EQ(capture.reports()[0].expression, "pElements != NULL && numElements > 0");
    EXPECT_EQ(capture.reports()[0].line, 103u);
    EXPECT_EQ(a.getLogicalLength(), 8);
    EXPECT_EQ(a[0], 1.0);
    capture.clear();
    a.append(9.0);  // memory is back
    EXPECT_TRUE(capture.reports().empty());
    EXPECT_EQ(a.getLogicalLength(), 9);
}

TEST(KivArray, ImpossibleGrowthIsReportedAsAnAllocationFailure) {
    KivArray<double> a;
    AssertCapture capture;
    a.setLogicalLength(0x7FFFFFFF);
    ASSERT_EQ(capture.reports().size(), 1u);
    EXPECT_EQ(capture.reports()[0].line, 103u);
    EXPECT_EQ(a.getLogicalLength(), 0);
}

TEST(KivArray, SortsAPartWithQsortAndTheCallersComparison) {
    KivArray<Probe> a;
    for (int v : {5, 3, 9, 1, 7}) a.append(probe(v));
    a.sort(1, 3, compareInts);
    EXPECT_EQ(a[0].value, 5);
    EXPECT_EQ(a[1].value, 1);
    EXPECT_EQ(a[2].value, 3);
    EXPECT_EQ(a[3].value, 9);
    EXPECT_EQ(a[4].value, 7);
}

TEST(KivArray, SortsStringsThatOwnMemory) {
    KivArray<KivString> a;
    const char16_t* names[] = {u"ZIGZAG_WITH_A_NAME_LONGER_THAN_ANY_SMALL_BUFFER", u"DASHED", u"BORDER",
                               u"CENTER_ALSO_A_RATHER_LONG_NAME_FOR_THE_HEAP", u"DOT"};
    for (const char16_t* n : names) a.append(KivString(n));
    a.sort(0, a.getLogicalLength() - 1, compareStrings);
    EXPECT_EQ(a[0], KivString(u"BORDER"));
    EXPECT_EQ(a[1], KivString(u"CENTER_ALSO_A_RATHER_LONG_NAME_FOR_THE_HEAP"));
    EXPECT_EQ(a[2], KivString(u"DASHED"));
    EXPECT_EQ(a[3], KivString(u"DOT"));
    EXPECT_EQ(a[4], KivString(u"ZIGZAG_WITH_A_NAME_LONGER_THAN_ANY_SMALL_BUFFER"));
}

TEST(KivArray, SortWithInvalidIndicesReportsAndChangesNothing) {
    KivArray<Probe> a;
    a.append(probe(2));
    a.append(probe(1));
    AssertCapture capture;
    a.sort(0, 2, compareInts);
    expectSingleReport(capture, "isValid( i1 ) && isValid( i2 )", 1058);
    EXPECT_EQ(a[0].value, 2);
    capture.clear();
    KivArray<Probe> empty;
    empty.sort(0, 0, compareInts);
    EXPECT_EQ(capture.reports().size(), 1u);
}

TEST(KivArray, MoveTransfersStorage) {
    KivArray<KivString> a;
    a.append(KivString(u"x"));
    KivArray<KivString> b(std::move(a));
    EXPECT_EQ(b.getLogicalLength(), 1);
    EXPECT_EQ(a.getPhysicalLength(), 0);
    a = std::move(b);
    EXPECT_EQ(a[0], KivString(u"x"));
}
