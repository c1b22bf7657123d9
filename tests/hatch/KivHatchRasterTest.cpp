// The hatch drawing on a device that draws pixels. Spacings far below a pixel that still finish are
// drawn exactly: the whole rectangle hatched, with the pixels of the literal drawing (LiteralHatch.h)
// and its very strokes. On a device that answers stroke rules the drawing leaves out what cannot
// change a pixel (strokes beyond the device's box, strokes from a point to itself, repeats) and
// only that: the pixels, the stroke count, the budget and the final position are those of every
// stroke sent. Pixels are KivRasterDC's, whose lines are GDI's.
#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "CountingDC.h"
#include "EveryStrokeRasterDC.h"
#include "KivHatchDrawing.h"
#include "KivRasterDC.h"
#include "LiteralHatch.h"
#include "RecordingDC.h"
#include "StrokeLog.h"

namespace {

constexpr KivColor kPen = 0x00000080;  // COLORREF: dark red
constexpr std::uint32_t kPenPixel = 0x00800000;  // the same as a raster pixel (0x00RRGGBB)

// The strokes a device is sent, kept as their number and a digest of their kinds and points in
// order: for drawings of millions of strokes.
class StrokeDigest : public CountingDC {
public:
    void moveTo(int x, int y) override { mix('M', x, y); }
    void lineTo(int x, int y) override { mix('L', x, y); }
    bool operator==(const StrokeDigest& o) const { return count == o.count && digest == o.digest; }
    long long count = 0;
    std::uint64_t digest = 14695981039346656037u;

private:
    void mix(char kind, int x, int y) {
        ++count;
        for (std::uint32_t v : {static_cast<std::uint32_t>(kind), static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y)})
            digest = (digest ^ v) * 1099511628211u;
    }
};

// The LineTos of a sequence as segments (from where the position stood), in order.
using Segment = std::tuple<int, int, int, int>;
std::vector<Segment> segments(const std::vector<RecordedStroke>& strokes) {
    std::vector<Segment> out;
    int x = 0, y = 0;
    for (const RecordedStroke& s : strokes) {
        if (s.kind == 'L') out.emplace_back(x, y, s.x, s.y);
        x = s.x;
        y = s.y;
    }
    return out;
}

bool beyondOneEdge(const Segment& s, const KivRect& box) {
    const auto [ax, ay, bx, by] = s;
    return (ax < box.left && bx < box.left) || (ax >= box.right && bx >= box.right) || (ay < box.top && by < box.top) ||
           (ay >= box.bottom && by >= box.bottom);
}

HatchLineFamily family(double angle, double dx, double dy, const char16_t* dashes = u"10,") {
    HatchLineFamily f;
    f.angle = angle;
    f.deltaX = dx;
    f.deltaY = dy;
    f.dashes = KivString(dashes);
    return f;
}

KivArray<HatchLineFamily> listOf(std::initializer_list<HatchLineFamily> list) {
    KivArray<HatchLineFamily> families;
    for (const HatchLineFamily& f : list) families.append(f);
    return families;
}

KivHatchPaint draw(IKivDC& dc, const KivRect& rect, const KivArray<HatchLineFamily>& families, double zoom,
                   double unit = 1.0, long long budget = -1) {
    KivArray<double> dashes;
    KivHatchStyle style;
    style.zoomFactor = zoom;
    style.unitFactor = unit;
    style.foreColor = kPen;
    return DrawHatch(dc, rect, families, dashes, style, budget);
}

long long penPixels(const KivRasterDC& dc, const KivRect& rect) {
    long long n = 0;
    for (int y = rect.top; y < rect.bottom; ++y)
        for (int x = rect.left; x < rect.right; ++x)
            if (dc.pixel(x, y) == kPenPixel) ++n;
    return n;
}

}  // namespace

// A 200 x 150 metric preview, one family whose lines lie far closer than a pixel: every line is
// drawn, so the rectangle is hatched whole, with the literal drawing's strokes and pixels.
TEST(KivHatchRaster, TinySpacingsThatCanFinishHatchTheWholeRectangleWithTheLiteralPixels) {
    struct Case {
        const char* name;
        double angle, deltaY, zoom;
    } cases[] = {
        {"0 degrees, spacing 0.05 at zoom 0.0501 (0.0075 pixel)", 0.0, 0.05, 0.0501},
        {"0 degrees, spacing 0.001 at zoom 1 (0.003 pixel)", 0.0, 0.001, 1.0},
        {"30 degrees, spacing 0.05 at zoom 0.0501 (0.0075 pixel)", 30.0, 0.05, 0.0501},
    };
    const KivRect rect{0, 0, 200, 150};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_LT(c.deltaY * c.zoom * 3.0, 1.0 / 64.0);
        const KivArray<HatchLineFamily> families = listOf({family(c.angle, 0.0, c.deltaY)});

        EveryStrokeRasterDC literalPixels(200, 150);
        const literal::Result literalDrawing = literal::Hatch(literalPixels, c.zoom, 1.0, -1).draw(rect, families, kPen);
        StrokeDigest literalStrokes;
        literal::Hatch(literalStrokes, c.zoom, 1.0, -1).draw(rect, families, kPen);

        StrokeDigest everyStroke;
        const KivHatchPaint paint = draw(everyStroke, rect, families, c.zoom);
        EXPECT_FALSE(paint.guardStopped);
        EXPECT_EQ(paint.zeroSpacingSides, 0);
        EXPECT_EQ(paint.strokes, literalDrawing.strokes);
        EXPECT_TRUE(everyStroke == literalStrokes) << "the strokes differ from the literal drawing's";

        KivRasterDC raster(200, 150);  // answers its rules: left-out strokes
        EXPECT_EQ(draw(raster, rect, families, c.zoom).strokes, literalDrawing.strokes);
        EXPECT_EQ(penPixels(raster, rect), 200LL * 150LL) << "the rectangle is not hatched whole";
        EXPECT_TRUE(raster.pixels() == literalPixels.pixels()) << "the pixels differ from the literal drawing's";
    }
}

// What a device with rules is sent: only LineTos that can show, are not empty and were not sent
// before; each preceded by a MoveTo to where it starts whenever the strokes left out moved the
// position; and every stroke of the drawing that can change a pixel is among them.
TEST(KivHatchRaster, ARasterDeviceIsSentEveryStrokeThatCanChangeAPixelAndNothingElse) {
    const KivRect rect{0, 0, 60, 40};
    const KivRect box{5, 3, 50, 30};  // smaller than the rectangle: strokes cross its edges
    const KivArray<HatchLineFamily> families =
        listOf({family(30, 0.3, 0.7, u"2,-1,0,"), family(0, 0, 0.1), family(135, 1.5, 0.2, u".5,-.2,"), family(300, -2, 0.9)});
    StrokeLog all;
    const KivHatchPaint literal = draw(all, rect, families, 1.0);
    KivStrokeRules rules;
    rules.box = box;
    rules.repeatsChangeNothing = true;
    rules.emptyStrokesChangeNothing = true;
    StrokeLog ruled(rules);
    const KivHatchPaint paint = draw(ruled, rect, families, 1.0);
    EXPECT_EQ(paint.strokes, literal.strokes);
    ASSERT_LT(ruled.sent.size(), all.sent.size() / 4) << "little was left out";

    std::set<Segment> canShow;
    for (const Segment& s : segments(all.sent)) {
        const auto [ax, ay, bx, by] = s;
        if (!beyondOneEdge(s, box) && !(ax == bx && ay == by)) canShow.insert(s);
    }
    std::set<Segment> sent;
    for (const Segment& s : segments(ruled.sent)) {
        const auto [ax, ay, bx, by] = s;
        EXPECT_FALSE(beyondOneEdge(s, box));
        EXPECT_FALSE(ax == bx && ay == by);
        EXPECT_TRUE(sent.insert(s).second) << "a repeat was sent";
    }
    EXPECT_TRUE(sent == canShow);
    // A LineTo starts where the literal drawing's stroke starts: the MoveTo before it is sent
    // whenever the position moved unseen (segments() reads each from the position the calls left).
    EXPECT_EQ(ruled.pens, 0);
}

// Without the repeat rule (a device whose pixels change again when drawn again, such as one in the
// XOR mode), every stroke that can show is sent, repeats included, in the drawing's order; without
// the empty-stroke rule, the empty ones too.
TEST(KivHatchRaster, RepeatsAndEmptyStrokesAreSentUnlessTheDeviceSaysTheyChangeNothing) {
    const KivRect rect{0, 0, 60, 40};
    const KivArray<HatchLineFamily> families = listOf({family(45, 0, 0.05), family(0, 0.2, 0.3, u".1,-.3,")});
    StrokeLog all;
    draw(all, rect, families, 0.3);
    for (bool empties : {false, true}) {
        SCOPED_TRACE(empties ? "empty strokes change nothing" : "nothing said of empty strokes");
        KivStrokeRules rules;
        rules.box = KivRect{0, 0, 60, 40};
        rules.emptyStrokesChangeNothing = empties;
        StrokeLog ruled(rules);
        draw(ruled, rect, families, 0.3);
        std::vector<Segment> expected;
        for (const Segment& s : segments(all.sent)) {
            const auto [ax, ay, bx, by] = s;
            if (!beyondOneEdge(s, rules.box) && !(empties && ax == bx && ay == by)) expected.push_back(s);
        }
        const std::vector<Segment> got = segments(ruled.sent);
        EXPECT_EQ(got.size(), expected.size());
        EXPECT_TRUE(got == expected);
        EXPECT_LT(std::set<Segment>(got.begin(), got.end()).size(), got.size()) << "no repeat was drawn";
    }
}

// A repeat that the previous walk does not show (here a family drawn twice: each family's walks
// start afresh) is found in the table of recent strokes, as long as looking there finds something.
// After 4096 strokes looked for and hardly any found, the table rests for the next 8 x 4096: a
// repeat among those is sent again, which changes no pixel. Then it is looked in again.
TEST(KivHatchRaster, TheTableOfRecentStrokesRestsAfterARoundInWhichItFoundLittle) {
    const KivRect rect{0, 0, 200, 150};
    const double zoom = 1.0 / 3.0;                        // one pattern unit a pixel
    const HatchLineFamily twice = family(30, 0, 10, u"3,-2,");  // lines 10 pixels apart
    const HatchLineFamily distinct = family(0, 0, 1.3, u"2,-1,");  // rows apart: hardly a stroke repeats
    KivStrokeRules rules;
    rules.box = rect;
    rules.repeatsChangeNothing = true;
    rules.emptyStrokesChangeNothing = true;
    const auto lineTos = [&](const KivArray<HatchLineFamily>& families) {
        StrokeLog log(rules);
        draw(log, rect, families, zoom);
        return segments(log.sent);
    };
    const std::vector<Segment> once = lineTos(listOf({twice}));
    const std::vector<Segment> alone = lineTos(listOf({distinct}));
    ASSERT_GT(once.size(), 500u);
    ASSERT_LT(once.size(), 2000u) << "the table would not hold a whole copy";
    ASSERT_GT(alone.size(), 4096u + 500u) << "a round that finds nothing";
    ASSERT_LT(alone.size(), 4096u + 8u * 4096u - 2u * 2000u) << "the copies would come after the rest";
    ASSERT_LT(alone.size() + 50u * once.size(), 60u * 2000u);
    EXPECT_LT(alone.size() - std::set<Segment>(alone.begin(), alone.end()).size(), alone.size() / 100);

    // Found: the second copy sends next to nothing (a stroke pushed out of the table by others is
    // sent again).
    const std::size_t few = once.size() / 10;
    EXPECT_LE(lineTos(listOf({twice, twice})).size(), once.size() + few);

    // While the table rests, the second copy is sent again, and the pixels stay the literal drawing's.
    const auto copiesAfterDistinct = [&](int copies) {
        KivArray<HatchLineFamily> families = listOf({distinct});
        for (int i = 0; i < copies; ++i) families.append(twice);
        return families;
    };
    EXPECT_GE(lineTos(copiesAfterDistinct(2)).size() - lineTos(copiesAfterDistinct(1)).size(), once.size());
    EveryStrokeRasterDC literalPixels(200, 150);
    literal::Hatch(literalPixels, zoom, 1.0, -1).draw(rect, copiesAfterDistinct(2), kPen);
    KivRasterDC raster(200, 150);
    draw(raster, rect, copiesAfterDistinct(2), zoom);
    EXPECT_TRUE(raster.pixels() == literalPixels.pixels());

    // Looked in again after the rest (8 x 4096 strokes, some 50 copies): a further copy sends next to
    // nothing.
    EXPECT_LE(lineTos(copiesAfterDistinct(61)).size(), lineTos(copiesAfterDistinct(60)).size() + few)
        << "the table never looked again";
}

// The steps a walk takes beyond the box are counted, not walked: the stroke count, the budget and
// where the device's position is left are those of every stroke sent, whatever the budget.
TEST(KivHatchRaster, CountedStepsSpendTheBudgetAndLeaveThePositionAsEveryStrokeWould) {
    const KivRect rect{0, 0, 150, 100};
    const KivArray<HatchLineFamily> families = listOf({family(45, 0, 0.125), family(210, 0.4, 0.5, u"3,-1,"), family(300, 0, 0.7)});
    for (long long budget : {50LL, 1000LL, 12345LL, 100000LL, 400000LL, -1LL}) {
        SCOPED_TRACE(budget);
        EveryStrokeRasterDC every(150, 100);
        StrokeLog everyLog;
        const KivHatchPaint a = draw(every, rect, families, 0.2, 1.0, budget);
        draw(everyLog, rect, families, 0.2, 1.0, budget);
        KivRasterDC raster(150, 100);
        KivStrokeRules rules;
        raster.strokeRules(rules);
        StrokeLog ruledLog(rules);
        const KivHatchPaint b = draw(raster, rect, families, 0.2, 1.0, budget);
        draw(ruledLog, rect, families, 0.2, 1.0, budget);
        EXPECT_EQ(a.strokes, b.strokes);
        EXPECT_EQ(a.guardStopped, b.guardStopped);
        EXPECT_TRUE(every.pixels() == raster.pixels());
        ASSERT_FALSE(everyLog.sent.empty());
        ASSERT_FALSE(ruledLog.sent.empty());
        EXPECT_EQ(everyLog.sent.back().x, ruledLog.sent.back().x);  // the last position the device is given
        EXPECT_EQ(everyLog.sent.back().y, ruledLog.sent.back().y);
        if (budget > 0 && budget < 400000) {
            EXPECT_TRUE(a.guardStopped);
        }
    }
}

// A walk that comes towards the box from beyond one of its edges takes those steps without looking
// at each stroke, whether the previous walk's points rest (lines a pixel or more apart, dashes
// elsewhere on each) or are kept (plain lines a fraction of a pixel apart). Still, every stroke
// that can show is sent, the first one inside an edge included, whichever edges the walks come
// from and wherever a walk or the budget ends; the count and the last position are those of every
// stroke.
TEST(KivHatchRaster, WalksComingTowardsTheBoxFromBeyondItsEdgesSendEveryStrokeThatCanShow) {
    const KivRect rect{0, 0, 240, 180};
    const KivRect box{37, 23, 201, 150};  // inside the rectangle: walks come from beyond every edge
    struct Case {
        const char* name;
        double zoom;
        KivArray<HatchLineFamily> families;
        std::size_t budgets;  // that run out while a walk comes in
    };
    const Case cases[] = {
        {"lines a pixel or more apart: the record rests", 1.0 / 3.0,  // one pattern unit a pixel
         listOf({family(20, 0.7, 1.3, u"3.5,-4,"), family(110, -0.4, 1.6, u"4,-2.5,"), family(200, 0.3, 1.2, u"2.4,-3,"),
                 family(290, 1.1, 1.7, u"5,-3,"), family(0, 0.6, 2.1, u"2.7,-4.3,"), family(90, 0.2, 1.9, u"3.2,-2,")}),
         8},
        {"plain lines and dots half a pixel apart: the record is kept", 0.1,  // 0.3 pixel a pattern unit
         listOf({family(20, 0.4, 1.7, u"12,"), family(110, -0.3, 1.6, u"0,"), family(200, 0.2, 1.8, u"14,"),
                 family(290, 0.5, 1.5, u"10,")}),
         3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const double zoom = c.zoom;
        const KivArray<HatchLineFamily>& families = c.families;
        KivStrokeRules rules;
        rules.box = box;
        rules.repeatsChangeNothing = true;
        rules.emptyStrokesChangeNothing = true;
        StrokeLog whole;
        const long long steps = draw(whole, rect, families, zoom).strokes;
        ASSERT_GT(steps, 20LL * 4096LL) << "too few steps for the record to rest";
        // Budgets that run out while a walk comes towards the left edge from beyond it alone, two steps
        // before it is passed (each step is one call to a device sent every stroke), spread over the
        // drawing.
        const auto besideTheBox = [&](const RecordedStroke& p) { return p.x < box.left && p.y >= box.top && p.y < box.bottom; };
        std::vector<long long> comingIn;
        for (std::size_t k = 1; k + 2 < whole.sent.size(); ++k) {
            const RecordedStroke &a = whole.sent[k - 1], &b = whole.sent[k], &c = whole.sent[k + 1];
            if (besideTheBox(a) && besideTheBox(b) && besideTheBox(c) && a.x < b.x && b.x < c.x)
                comingIn.push_back(static_cast<long long>(k));
        }
        ASSERT_GE(comingIn.size(), c.budgets);
        std::vector<long long> budgets{-1, steps / 2 + 7};
        for (std::size_t j = 0; j < c.budgets; ++j) budgets.push_back(comingIn[j * (comingIn.size() - 1) / (c.budgets - 1)]);
        for (long long budget : budgets) {
            SCOPED_TRACE(budget);
            StrokeLog all;
            const KivHatchPaint literal = draw(all, rect, families, zoom, 1.0, budget);
            StrokeLog ruled(rules);
            const KivHatchPaint paint = draw(ruled, rect, families, zoom, 1.0, budget);
            EXPECT_EQ(paint.strokes, literal.strokes);
            EXPECT_EQ(paint.guardStopped, literal.guardStopped);
            std::set<Segment> canShow, intoTheBox;
            for (const Segment& s : segments(all.sent)) {
                const auto [ax, ay, bx, by] = s;
                if (beyondOneEdge(s, box) || (ax == bx && ay == by)) continue;
                canShow.insert(s);
                const bool aInside = ax >= box.left && ax < box.right && ay >= box.top && ay < box.bottom;
                const bool bInside = bx >= box.left && bx < box.right && by >= box.top && by < box.bottom;
                if (!aInside && bInside) intoTheBox.insert(s);
            }
            if (budget < 0) {
                ASSERT_GT(intoTheBox.size(), 200u) << "few strokes come into the box";
            }
            const std::vector<Segment> sentSegments = segments(ruled.sent);
            const std::set<Segment> sent(sentSegments.begin(), sentSegments.end());
            EXPECT_TRUE(sent == canShow);
            for (const Segment& s : intoTheBox) EXPECT_EQ(sent.count(s), 1u) << "a stroke into the box was not sent";
            ASSERT_FALSE(all.sent.empty());
            ASSERT_FALSE(ruled.sent.empty());
            EXPECT_EQ(all.sent.back().x, ruled.sent.back().x);  // the last position the device is given
            EXPECT_EQ(all.sent.back().y, ruled.sent.back().y);
        }
    }
}
