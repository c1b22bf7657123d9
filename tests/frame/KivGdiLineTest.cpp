// GDI's one-pixel lines and the pixel mask: GDI's choice on an exact tie, a line's pixels in a mask
// are those of its whole walk that lie in the box (however far away the line starts or ends), the
// runs give back every set pixel once, and what the mask refuses. (Under Wine the walk itself is
// compared with GDI's own lines by the raster tests.)
#include <gtest/gtest.h>

#include <random>
#include <set>
#include <utility>
#include <vector>

#include "KivGdiLine.h"

namespace {

using Pixels = std::set<std::pair<int, int>>;

Pixels walk(int x0, int y0, int x1, int y1) {
    Pixels out;
    KivWalkGdiLine(x0, y0, x1, y1, [&](int x, int y) { out.insert({x, y}); });
    return out;
}

// The pixels of a whole walk that lie in the box.
Pixels walkInBox(int x0, int y0, int x1, int y1, const KivRect& box) {
    Pixels out;
    KivWalkGdiLine(x0, y0, x1, y1, [&](int x, int y) {
        if (x >= box.left && x < box.right && y >= box.top && y < box.bottom) out.insert({x, y});
    });
    return out;
}

// The set pixels, read one by one.
Pixels setIn(const KivPixelMask& mask) {
    Pixels out;
    const KivRect& box = mask.box();
    for (int y = box.top; y < box.bottom; ++y)
        for (int x = box.left; x < box.right; ++x)
            if (mask.at(x, y)) out.insert({x, y});
    return out;
}

// The set pixels, as the runs give them.
Pixels fromRuns(const KivPixelMask& mask) {
    Pixels out;
    mask.forEachRun([&](int y, int from, int to) {
        for (int x = from; x < to; ++x) out.insert({x, y});
    });
    return out;
}

// Lines into a fresh mask over `box`, each compared with its whole walk cut to the box.
int differingLines(const KivRect& box, int count, int spread, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> coordinate(-spread, spread);
    KivPixelMask mask;
    int differing = 0;
    for (int i = 0; i < count; ++i) {
        const int x0 = box.left + coordinate(random), y0 = box.top + coordinate(random);
        const int x1 = box.left + coordinate(random), y1 = box.top + coordinate(random);
        EXPECT_TRUE(mask.reset(box));
        EXPECT_TRUE(mask.line(x0, y0, x1, y1));
        if (fromRuns(mask) != walkInBox(x0, y0, x1, y1, box)) {
            ADD_FAILURE() << "(" << x0 << "," << y0 << ") to (" << x1 << "," << y1 << ")";
            if (++differing > 5) break;
        }
    }
    return differing;
}

}  // namespace

// (0,0) to (4,2) passes exactly half-way between two rows twice: going right and down (octant 1)
// the walk stays on its row at a tie, going back left and up (octant 5) it steps.
TEST(KivGdiLine, AnExactTieStepsOnlyInTheOctantsThatTakeIt) {
    EXPECT_EQ(walk(0, 0, 4, 2), (Pixels{{0, 0}, {1, 0}, {2, 1}, {3, 1}}));
    EXPECT_EQ(walk(4, 2, 0, 0), (Pixels{{4, 2}, {3, 1}, {2, 1}, {1, 0}}));
    EXPECT_EQ(KivGdiLineBias(4, 2), 0);
    EXPECT_EQ(KivGdiLineBias(-4, -2), 1);
    const int biased[] = {0, 0, 1, 0, 1, 1, 0, 1};  // octants 1 to 8
    const int steps[8][2] = {{4, 1}, {1, 4}, {-1, 4}, {-4, 1}, {-4, -1}, {-1, -4}, {1, -4}, {4, -1}};
    for (int octant = 1; octant <= 8; ++octant) {
        EXPECT_EQ(KivGdiLineOctant(steps[octant - 1][0], steps[octant - 1][1]), octant);
        EXPECT_EQ(KivGdiLineBias(steps[octant - 1][0], steps[octant - 1][1]), biased[octant - 1]) << octant;
    }
    EXPECT_EQ(KivGdiLineOctant(3, 3), 2);  // a diagonal belongs to the octant nearer the y axis
}

TEST(KivGdiLine, AStraightLineSetsItsStartUpToNotIncludingItsEnd) {
    EXPECT_EQ(walk(5, 3, 2, 3), (Pixels{{5, 3}, {4, 3}, {3, 3}}));
    EXPECT_EQ(walk(2, 3, 2, 6), (Pixels{{2, 3}, {2, 4}, {2, 5}}));
    EXPECT_TRUE(walk(7, 7, 7, 7).empty());
}

TEST(KivPixelMask, ALineSetsThePixelsOfItsWalkThatLieInTheBox) {
    // Short lines in and about a box that starts away from (0,0); a box exactly one word wide and
    // one a little wider.
    EXPECT_EQ(differingLines(KivRect{-3, 5, 61, 47}, 20000, 90, 1), 0);
    EXPECT_EQ(differingLines(KivRect{10, -20, 80, 30}, 20000, 90, 2), 0);
    // Lines from far away that cross it, or pass it.
    EXPECT_EQ(differingLines(KivRect{-3, 5, 61, 47}, 300, 30000, 3), 0);
}

TEST(KivPixelMask, EveryDirectionThroughACornerGivesTheWalksPixels) {
    const KivRect box{0, 0, 40, 30};
    KivPixelMask mask;
    for (int dx = -60; dx <= 60; ++dx) {
        for (int dy = -60; dy <= 60; dy += 7) {
            ASSERT_TRUE(mask.reset(box));
            mask.line(20, 15, 20 + dx, 15 + dy);
            mask.line(-5 - dx / 2, -4, -5 + dx, -4 + dy);
            Pixels expected = walkInBox(20, 15, 20 + dx, 15 + dy, box);
            for (const auto& p : walkInBox(-5 - dx / 2, -4, -5 + dx, -4 + dy, box)) expected.insert(p);
            ASSERT_EQ(setIn(mask), expected) << dx << " " << dy;
        }
    }
}

// Every short step (up to 6 pixels each way), from a point well inside the box and from one on
// its edge, so that it ends inside the box or beyond it.
TEST(KivPixelMask, EveryShortStepGivesTheWalksPixels) {
    const KivRect box{3, 2, 30, 20};
    KivPixelMask mask;
    for (int dx = -6; dx <= 6; ++dx) {
        for (int dy = -6; dy <= 6; ++dy) {
            for (const std::pair<int, int>& start : {std::make_pair(15, 10), std::make_pair(3, 19)}) {
                const int x = start.first, y = start.second;
                ASSERT_TRUE(mask.reset(box));
                mask.line(x, y, x + dx, y + dy);
                ASSERT_EQ(fromRuns(mask), walkInBox(x, y, x + dx, y + dy, box)) << x << "," << y << " by " << dx << "," << dy;
            }
        }
    }
}

// Every step of up to three pixels each way from every point near each edge of the box, inside it
// or just beyond it: those that end beyond an edge, or start there, set only their pixels in the box.
TEST(KivPixelMask, EveryStepFromNearAnEdgeGivesTheWalksPixelsInTheBox) {
    const KivRect box{3, 2, 30, 20};
    std::vector<int> xs, ys;
    for (int d = -3; d <= 3; ++d) {
        xs.push_back(box.left + d);
        xs.push_back(box.right - 1 + d);
        ys.push_back(box.top + d);
        ys.push_back(box.bottom - 1 + d);
    }
    KivPixelMask mask;
    for (int x : xs) {
        for (int y : ys) {
            for (int dx = -3; dx <= 3; ++dx) {
                for (int dy = -3; dy <= 3; ++dy) {
                    ASSERT_TRUE(mask.reset(box));
                    mask.line(x, y, x + dx, y + dy);
                    ASSERT_EQ(setIn(mask), walkInBox(x, y, x + dx, y + dy, box)) << x << "," << y << " by " << dx << "," << dy;
                }
            }
        }
    }
}

// Rows of random pixels, in boxes of every width from 1 to 200 pixels (whole words, and words
// partly used): the runs are those read pixel by pixel, each as long as it can be.
TEST(KivPixelMask, ItsRunsAreThoseOfItsPixelsReadOneByOne) {
    std::mt19937 random(7);
    for (int width = 1; width <= 200; ++width) {
        const KivRect box{-width / 3, 4, width - width / 3, 10};
        KivPixelMask mask;
        ASSERT_TRUE(mask.reset(box));
        std::bernoulli_distribution set(width % 3 == 0 ? 0.9 : 0.4);
        for (int y = box.top; y < box.bottom; ++y)
            for (int x = box.left; x < box.right; ++x)
                if (set(random)) mask.line(x, y, x + 1, y);
        std::vector<std::vector<int>> expected;
        for (int y = box.top; y < box.bottom; ++y) {
            for (int x = box.left; x < box.right;) {
                if (!mask.at(x, y)) {
                    ++x;
                    continue;
                }
                const int from = x;
                while (x < box.right && mask.at(x, y)) ++x;
                expected.push_back({y, from, x});
            }
        }
        std::vector<std::vector<int>> runs;
        mask.forEachRun([&](int y, int from, int to) { runs.push_back({y, from, to}); });
        ASSERT_EQ(runs, expected) << "width " << width;
        EXPECT_EQ(mask.runCount(), static_cast<long long>(expected.size()));
    }
}

TEST(KivPixelMask, ItsRunsGiveBackEverySetPixelOnceEachRunAsLongAsItCanBe) {
    const KivRect box{-10, 3, 120, 9};  // 130 pixels a row: three words, the last one partly used
    KivPixelMask mask;
    ASSERT_TRUE(mask.reset(box));
    mask.line(-10, 3, 120, 3);   // a whole row
    mask.line(50, 4, 60, 4);     // with the next one, a run across the end of the first word
    mask.line(64 - 10, 4, 70, 4);
    mask.line(100, 5, 130, 5);   // up to the right edge and beyond it
    mask.line(-10, 6, -9, 6);    // a single pixel at the left edge
    mask.line(20, 7, 23, 8);     // a slanted one: (20,7) (21,7) (22,8)
    std::vector<std::vector<int>> runs;
    mask.forEachRun([&](int y, int from, int to) { runs.push_back({y, from, to}); });
    EXPECT_EQ(runs, (std::vector<std::vector<int>>{{3, -10, 120}, {4, 50, 70}, {5, 100, 120}, {6, -10, -9}, {7, 20, 22}, {8, 22, 23}}));
    EXPECT_EQ(mask.runCount(), 6);
    EXPECT_EQ(fromRuns(mask), setIn(mask));
    EXPECT_EQ(setIn(mask).size(), 130u + 20u + 20u + 1u + 3u);
}

TEST(KivPixelMask, ItRefusesAnEmptyOrHugeBoxAndCoordinatesGdiScalesDown) {
    KivPixelMask mask;
    EXPECT_FALSE(mask.reset(KivRect{5, 5, 5, 10}));
    EXPECT_FALSE(mask.line(0, 0, 3, 3));  // no box: nothing taken
    EXPECT_FALSE(mask.reset(KivRect{0, 0, 4096, 2049}));  // over 2^22 pixels
    ASSERT_TRUE(mask.reset(KivRect{0, 0, 4096, 1024}));
    EXPECT_FALSE(mask.line(-(1 << 28), 10, 100, 10));
    EXPECT_FALSE(mask.line(10, 10, 100, 1 << 28));
    EXPECT_TRUE(mask.line(-(1 << 28) + 1, 10, 100, 10));
    EXPECT_TRUE(mask.at(0, 10) && mask.at(99, 10) && !mask.at(100, 10));
    EXPECT_EQ(mask.runCount(), 1);
    // A one-pixel step from a pixel of a box that reaches 2^28: refused when its end gets there.
    const int edge = 1 << 28;
    ASSERT_TRUE(mask.reset(KivRect{edge - 4, -edge - 4, edge + 4, -edge + 4}));
    EXPECT_TRUE(mask.line(edge - 2, -edge + 2, edge - 1, -edge + 1));
    EXPECT_FALSE(mask.line(edge - 1, -edge + 2, edge, -edge + 2));
    EXPECT_FALSE(mask.line(edge - 2, -edge + 1, edge - 2, -edge));
    EXPECT_TRUE(mask.at(edge - 2, -edge + 2));
    EXPECT_FALSE(mask.at(edge - 1, -edge + 2));
    EXPECT_FALSE(mask.at(edge - 2, -edge + 1));
    EXPECT_EQ(mask.runCount(), 1);
}
