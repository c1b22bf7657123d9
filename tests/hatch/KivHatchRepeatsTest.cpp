// The two finders of repeated strokes in a hatch drawing, and when each rests: the table of recent
// strokes (KivRecentStrokes) and the record of the previous walk's points (KivWalkRecord).
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

#include "KivHatchRepeats.h"

namespace {

// Strokes of their own, one per number: none is another's repeat.
bool fresh(KivRecentStrokes& table, int n) { return table.drawnBefore(n, 1, n, 2); }

// A walk of `steps` steps of which `matches` were at the previous walk's points.
void walk(KivWalkRecord& record, std::size_t steps, std::size_t matches) {
    record.startWalk();
    std::size_t places = 0;
    record.places(steps, places);
    record.recorded(std::min(steps + 1, places), steps, matches);
}

std::size_t placesOfTheNextWalk(KivWalkRecord& record) {
    std::size_t places = 0;
    record.places(0, places);
    return places;
}

}  // namespace

TEST(KivRecentStrokes, AStrokeIsNewOnceAndFoundWhenItComesBack) {
    KivRecentStrokes table;
    EXPECT_FALSE(table.drawnBefore(3, 4, 5, 6));
    EXPECT_TRUE(table.drawnBefore(3, 4, 5, 6));
    EXPECT_FALSE(table.drawnBefore(5, 6, 3, 4)) << "the other way round is another stroke";
    EXPECT_TRUE(table.drawnBefore(3, 4, 5, 6));
}

// A round of strokes in which fewer than one in four was found: the next eight rounds' strokes are
// taken as new without looking (a repeat among them too), then the table is looked in again, and
// what it held before the rest is still found.
TEST(KivRecentStrokes, AfterARoundThatFoundLittleTheTableRestsForEightRoundsThenLooksAgain) {
    KivRecentStrokes table;
    const int round = static_cast<int>(KivRecentStrokes::kRound);
    const int found = round / static_cast<int>(KivRecentStrokes::kWorthIt) - 1;  // one short of a quarter
    int n = 0;
    for (int i = 0; i < found; ++i) {
        fresh(table, n);
        EXPECT_TRUE(fresh(table, n)) << i;
        ++n;
    }
    for (int i = 2 * found; i < round; ++i) EXPECT_FALSE(fresh(table, n++));
    const int last = n - 1;  // in the table
    const long long resting = KivRecentStrokes::kRound * KivRecentStrokes::kRestingRounds;
    for (long long i = 0; i < resting; ++i) EXPECT_FALSE(fresh(table, last)) << "looked while resting, stroke " << i;
    EXPECT_TRUE(fresh(table, last)) << "not looked in again";
}

TEST(KivRecentStrokes, ARoundInWhichAQuarterWasFoundKeepsLooking) {
    KivRecentStrokes table;
    const int round = static_cast<int>(KivRecentStrokes::kRound);
    const int found = round / static_cast<int>(KivRecentStrokes::kWorthIt);
    int n = 0;
    for (int i = 0; i < found; ++i) {
        fresh(table, n);
        EXPECT_TRUE(fresh(table, n));
        ++n;
    }
    for (int i = 2 * found; i < round; ++i) fresh(table, n++);
    EXPECT_TRUE(fresh(table, n - 1));
}

TEST(KivWalkRecord, AWalkKeepsItsPointsForTheNext) {
    KivWalkRecord record;
    EXPECT_TRUE(record.keeping());
    record.startWalk();
    std::size_t places = 0;
    std::uint64_t* points = record.places(10, places);
    ASSERT_GE(places, 11u);
    for (int k = 0; k <= 10; ++k) points[k] = KivWalkRecord::pack(k, -k);
    record.recorded(11, 10, 0);
    record.startWalk();
    std::size_t length = 0;
    const std::uint64_t* previous = record.previous(length);
    ASSERT_EQ(length, 11u);
    EXPECT_EQ(previous[7], KivWalkRecord::pack(7, -7));
    EXPECT_NE(KivWalkRecord::pack(-1, 0), KivWalkRecord::pack(0, -1));
}

// Rounds of at least 4096 steps, counted over whole walks: after one in which fewer than one point
// in eight was the previous walk's, the walks of the next 8 x 4096 steps keep no points (they have
// no places), then the record is kept again.
TEST(KivWalkRecord, AfterARoundInWhichFewPointsMatchedTheRecordRestsForEightRounds) {
    KivWalkRecord record;
    const std::size_t steps = 1000;
    const std::size_t justTooFew = steps / KivWalkRecord::kWorthIt - 1;
    for (std::size_t done = 0; done < KivWalkRecord::kRound; done += steps) {
        EXPECT_GT(placesOfTheNextWalk(record), 0u);
        walk(record, steps, justTooFew);
    }
    EXPECT_FALSE(record.keeping());
    EXPECT_EQ(placesOfTheNextWalk(record), 0u);
    std::size_t rested = 0;
    while (!record.keeping()) {
        walk(record, steps, 0);
        rested += steps;
        ASSERT_LE(rested, 2 * KivWalkRecord::kRound * KivWalkRecord::kRestingRounds) << "never kept again";
    }
    EXPECT_GE(rested, KivWalkRecord::kRound * KivWalkRecord::kRestingRounds);
    EXPECT_LT(rested, KivWalkRecord::kRound * KivWalkRecord::kRestingRounds + steps);
    EXPECT_GT(placesOfTheNextWalk(record), 0u);
}

TEST(KivWalkRecord, ARoundInWhichOnePointInEightMatchedKeepsTheRecord) {
    KivWalkRecord record;
    const std::size_t steps = 1024;
    for (std::size_t done = 0; done < 3 * KivWalkRecord::kRound; done += steps) walk(record, steps, steps / KivWalkRecord::kWorthIt);
    EXPECT_TRUE(record.keeping());
    EXPECT_GT(placesOfTheNextWalk(record), 0u);
}
