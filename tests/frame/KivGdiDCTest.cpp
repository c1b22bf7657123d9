// The Win32 device context in this process: a pen or a brush that cannot be recorded (no memory) is
// neither left selected nor left alive, and what was recorded is put back; what it tells a drawing
// of many strokes (only on a DC drawn into pixels), and that its strokes give the pixels and the
// position of one GDI call each, batched or not, while a metafile records every one of them in
// order. Under them, the two rules of GDI it relies on, checked here against GDI itself.
#include <gtest/gtest.h>
#include <windows.h>

#include <new>
#include <random>
#include <vector>

#include "ContainerHost.h"
#include "ContainerSupport.h"
#include "FailingNew.h"
#include "KivWin32Seams.h"

namespace {

// Random strokes about a canvas of 100 x 80: every direction, lengths from 0 to 60 pixels, ends
// inside it and up to 40 pixels beyond its edges.
std::vector<POINT> randomPoints(int count, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<POINT> points;
    POINT at{50, 40};
    for (int i = 0; i < count; ++i) {
        const int reach = i % 4 == 0 ? 60 : 3;
        at = POINT{static_cast<LONG>(at.x + static_cast<int>(random() % (2 * reach + 1)) - reach),
                   static_cast<LONG>(at.y + static_cast<int>(random() % (2 * reach + 1)) - reach)};
        if (at.x < -40 || at.x > 140 || at.y < -40 || at.y > 120) at = POINT{static_cast<LONG>(random() % 100), static_cast<LONG>(random() % 80)};
        points.push_back(at);
    }
    return points;
}

// `points` drawn with a solid pen of `width` and `color` (every seventh a MoveTo) through the
// device context on `viaDC`, and with one MoveToEx or LineTo call each on `direct`: the same pixels,
// and GDI's position left where the last stroke ends. Returns the calls the device context spent.
long long expectOneCallEachFrom(Canvas& viaDC, Canvas& direct, const std::vector<POINT>& points, int width, COLORREF color) {
    long long calls = 0;
    {
        KivGdiDC dc(viaDC.dc);
        dc.selectPen(KivPen{kiv::kPsSolid, width, color});
        for (std::size_t i = 0; i < points.size(); ++i) {
            if (i % 7 == 0) dc.moveTo(points[i].x, points[i].y);
            else dc.lineTo(points[i].x, points[i].y);
        }
        dc.restorePen();
        calls = dc.strokeCalls();
    }
    KivGdiObject<HPEN> pen(CreatePen(PS_SOLID, width, color));
    {
        KivSelectObject selected(direct.dc, pen.get());
        for (std::size_t i = 0; i < points.size(); ++i) {
            if (i % 7 == 0) MoveToEx(direct.dc, points[i].x, points[i].y, nullptr);
            else LineTo(direct.dc, points[i].x, points[i].y);
        }
    }
    GdiFlush();
    EXPECT_EQ(differingPixels(viaDC, direct), 0);
    POINT position{};
    GetCurrentPositionEx(viaDC.dc, &position);
    EXPECT_EQ(position.x, points.back().x);
    EXPECT_EQ(position.y, points.back().y);
    return calls;
}

}  // namespace

// GDI: a polyline of two points draws exactly the pixels of a MoveToEx and a LineTo between them,
// its end left out; a LineTo to where the pen stands draws nothing. (The batches of KivGdiStrokes
// and the empty strokes a drawing leaves out rest on these.)
TEST(KivGdiDC, ATwoPointPolylineIsAMoveToAndALineToAndALineToItsOwnStartIsNothing) {
    Canvas byLineTo(100, 80), byPolyline(100, 80);
    KivGdiObject<HPEN> pen(CreatePen(PS_SOLID, 1, RGB(0, 0, 128)));
    KivSelectObject selectedA(byLineTo.dc, pen.get()), selectedB(byPolyline.dc, pen.get());
    const std::vector<POINT> points = randomPoints(3000, 11);
    int compared = 0;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        byLineTo.fill(RGB(255, 255, 255));
        byPolyline.fill(RGB(255, 255, 255));
        MoveToEx(byLineTo.dc, points[i].x, points[i].y, nullptr);
        LineTo(byLineTo.dc, points[i + 1].x, points[i + 1].y);
        const POINT two[2] = {points[i], points[i + 1]};
        const DWORD counts[1] = {2};
        PolyPolyline(byPolyline.dc, two, counts, 1);
        GdiFlush();
        ASSERT_EQ(differingPixels(byLineTo, byPolyline), 0) << points[i].x << "," << points[i].y << " to " << points[i + 1].x << ","
                                                      << points[i + 1].y;
        ++compared;
    }
    EXPECT_EQ(compared, 2999);
    for (int rop : {R2_COPYPEN, R2_XORPEN}) {
        byLineTo.fill(RGB(255, 255, 255));
        SetROP2(byLineTo.dc, rop);
        for (const POINT& p : points) {
            MoveToEx(byLineTo.dc, p.x, p.y, nullptr);
            LineTo(byLineTo.dc, p.x, p.y);
        }
        GdiFlush();
        byPolyline.fill(RGB(255, 255, 255));
        EXPECT_EQ(differingPixels(byLineTo, byPolyline), 0) << "a LineTo to its own start drew, mix " << rop;
    }
}

// Only a DC that GDI draws into pixels as they come answers stroke rules: its clip box widened by
// the pen; repeats change nothing only for a solid pen in the copy mode, empty strokes only for a
// one-pixel pen. A metafile, a mapping mode other than the text one or a world transform: none.
TEST(KivGdiDC, OnlyADCDrawnIntoPixelsTellsWhatItsStrokesMayLeaveOut) {
    Canvas canvas(100, 80);
    KivStrokeRules rules;
    {
        KivGdiDC dc(canvas.dc);
        dc.selectPen(KivPen{kiv::kPsSolid, 1, 0});
        ASSERT_TRUE(dc.strokeRules(rules));
        EXPECT_TRUE(rules.box == (KivRect{-2, -2, 102, 82}));
        EXPECT_TRUE(rules.repeatsChangeNothing);
        EXPECT_TRUE(rules.emptyStrokesChangeNothing);
        dc.restorePen();
    }
    {
        const int saved = SaveDC(canvas.dc);
        IntersectClipRect(canvas.dc, 10, 20, 30, 40);
        KivGdiDC dc(canvas.dc);
        dc.selectPen(KivPen{kiv::kPsSolid, 3, 0});
        ASSERT_TRUE(dc.strokeRules(rules));
        EXPECT_TRUE(rules.box == (KivRect{6, 16, 34, 44}));
        EXPECT_TRUE(rules.repeatsChangeNothing);
        EXPECT_FALSE(rules.emptyStrokesChangeNothing);  // a wide pen draws its ends
        dc.restorePen();
        RestoreDC(canvas.dc, saved);
    }
    {
        KivGdiDC dc(canvas.dc);
        dc.selectPen(KivPen{2, 1, 0});  // PS_DOT: the dots carry on from stroke to stroke
        ASSERT_TRUE(dc.strokeRules(rules));
        EXPECT_FALSE(rules.repeatsChangeNothing);
        dc.restorePen();
    }
    {
        const int saved = SaveDC(canvas.dc);
        SetROP2(canvas.dc, R2_XORPEN);
        KivGdiDC dc(canvas.dc);
        dc.selectPen(KivPen{kiv::kPsSolid, 1, 0});
        ASSERT_TRUE(dc.strokeRules(rules));
        EXPECT_FALSE(rules.repeatsChangeNothing);  // a second stroke changes the pixels back
        EXPECT_TRUE(rules.emptyStrokesChangeNothing);
        dc.restorePen();
        RestoreDC(canvas.dc, saved);
    }
    {
        const int saved = SaveDC(canvas.dc);
        SetMapMode(canvas.dc, MM_LOMETRIC);
        KivGdiDC dc(canvas.dc);
        EXPECT_FALSE(dc.strokeRules(rules));
        RestoreDC(canvas.dc, saved);
    }
    {
        const int saved = SaveDC(canvas.dc);
        SetGraphicsMode(canvas.dc, GM_ADVANCED);
        const XFORM twice{2.0f, 0.0f, 0.0f, 2.0f, 0.0f, 0.0f};
        SetWorldTransform(canvas.dc, &twice);
        KivGdiDC dc(canvas.dc);
        EXPECT_FALSE(dc.strokeRules(rules));
        RestoreDC(canvas.dc, saved);
    }
    {
        KivGdiDC dc(canvas.dc);  // no pen selected through it: the DC's own, which it does not know
        EXPECT_FALSE(dc.strokeRules(rules));
        dc.selectPen(KivPen{kiv::kPsSolid, 1, 0});
        EXPECT_TRUE(dc.strokeRules(rules));
        dc.restorePen();
        EXPECT_FALSE(dc.strokeRules(rules));
    }
    HDC metafile = CreateEnhMetaFileW(canvas.dc, nullptr, nullptr, nullptr);
    {
        KivGdiDC dc(metafile);
        dc.selectPen(KivPen{kiv::kPsSolid, 1, 0});
        EXPECT_FALSE(dc.strokeRules(rules));
        dc.restorePen();
    }
    DeleteEnhMetaFile(CloseEnhMetaFile(metafile));
}

// The strokes through the device context, batched as two-point polylines with a one-pixel solid pen
// in the copy mode, one call each otherwise (XOR, a wider pen): the pixels of one MoveToEx or LineTo
// call per stroke, and GDI's position left where the last stroke ends.
TEST(KivGdiDC, ItsStrokesGiveThePixelsAndThePositionOfOneCallEach) {
    const std::vector<POINT> points = randomPoints(4000, 5);
    for (int rop : {R2_COPYPEN, R2_XORPEN}) {
        for (int width : {1, 3}) {
            SCOPED_TRACE(std::to_string(rop) + " " + std::to_string(width));
            Canvas viaDC(100, 80), direct(100, 80);
            viaDC.fill(RGB(255, 255, 255));
            direct.fill(RGB(255, 255, 255));
            SetROP2(viaDC.dc, rop);
            SetROP2(direct.dc, rop);
            expectOneCallEachFrom(viaDC, direct, points, width, 0x00800000);
        }
    }
}

// A drawing of many short strokes gathers their pixels and sends the rows' runs when they are
// fewer: the same pixels and position as one call per stroke, on a DC moved by its window origin,
// on one with a clip region, with long strokes and strokes whose coordinates GDI scales down among
// them, and on a mirrored DC; where the mask is used, far fewer calls.
TEST(KivGdiDC, ADenseDrawingSendsTheRunsOfItsPixelsWithThePixelsOfOneCallEach) {
    // The strokes of a partly covered canvas, drawn over and over, then new ones (their pixels come
    // when only the mask takes short strokes); a quarter of them long.
    const std::vector<POINT> once = randomPoints(3000, 11), last = randomPoints(3000, 12);
    std::vector<POINT> points;
    for (int round = 0; round < 20; ++round) points.insert(points.end(), once.begin(), once.end());
    points.insert(points.end(), last.begin(), last.end());
    points[20000] = POINT{1 << 29, 40};  // GDI scales these down before drawing: sent as they are
    points[20001] = POINT{30, -(1 << 28)};
    enum Case { Plain, Origin, Region, Mirrored };
    long long calls[4] = {};
    for (Case c : {Plain, Origin, Region, Mirrored}) {
        SCOPED_TRACE(c);
        Canvas viaDC(100, 80), direct(100, 80);
        for (Canvas* canvas : {&viaDC, &direct}) {
            canvas->fill(RGB(255, 255, 255));
            if (c == Origin) SetWindowOrgEx(canvas->dc, -7, 5, nullptr);
            if (c == Region) {
                KivGdiObject<HRGN> region(CreateEllipticRgn(10, 5, 90, 70));
                SelectClipRgn(canvas->dc, region.get());
            }
            if (c == Mirrored) SetLayout(canvas->dc, LAYOUT_RTL);
        }
        calls[c] = expectOneCallEachFrom(viaDC, direct, points, 1, 0x00204080);
    }
    // Batched as they are, the strokes that can show would take about 100 calls (512 a call);
    // masked, the long ones take about 30 and the runs of the short ones a few. (Wine gives a
    // mirrored DC no stroke rules: each of its strokes is one call.)
    for (Case c : {Plain, Origin, Region}) EXPECT_LT(calls[c], 50) << c;
    EXPECT_GT(calls[Mirrored], 50);
}

// A metafile is a record of the drawing: every MoveTo and LineTo is recorded as it came, in order,
// the strokes far beyond the bounds, the repeated and the empty ones included.
TEST(KivGdiDC, AMetafileRecordsEveryStrokeInOrder) {
    Canvas reference(100, 80);
    const std::vector<POINT> points = randomPoints(500, 9);
    std::vector<RecordedStroke> sent;
    HDC recording = CreateEnhMetaFileW(reference.dc, nullptr, nullptr, nullptr);
    {
        KivGdiDC dc(recording);
        dc.selectPen(KivPen{kiv::kPsSolid, 1, 0});
        for (std::size_t i = 0; i < points.size(); ++i) {
            const POINT p = i % 50 == 49 ? points[i - 1] : points[i];  // now and then a stroke to where the pen stands
            const char kind = i % 5 == 0 ? 'M' : 'L';
            if (kind == 'M') dc.moveTo(p.x, p.y);
            else dc.lineTo(p.x, p.y);
            sent.push_back(RecordedStroke{kind, static_cast<int>(p.x), static_cast<int>(p.y)});
        }
        for (int again = 0; again < 3; ++again) {  // the same stroke three times
            dc.moveTo(1000, -500);
            dc.lineTo(1010, -490);
            sent.push_back(RecordedStroke{'M', 1000, -500});
            sent.push_back(RecordedStroke{'L', 1010, -490});
        }
        dc.restorePen();
    }
    HENHMETAFILE metafile = CloseEnhMetaFile(recording);
    EXPECT_TRUE(metafileStrokes(metafile) == sent);
    DeleteEnhMetaFile(metafile);
}

TEST(KivGdiDC, APenOrBrushThatCannotBeRecordedIsNeitherSelectedNorLeftAlive) {
    HDC screen = GetDC(nullptr);
    KivMemoryDC memory(screen);
    ReleaseDC(nullptr, screen);
    HDC hdc = memory.get();
    const HGDIOBJ pen = GetCurrentObject(hdc, OBJ_PEN), brush = GetCurrentObject(hdc, OBJ_BRUSH);
    const long objects = gdiObjects();
    {
        KivGdiDC dc(hdc);
        {
            failingnew::FailingAllocation failing(1);
            EXPECT_THROW(dc.selectPen(KivPen{kiv::kPsSolid, 3, 0x000000FF}), std::bad_alloc);
        }
        {
            failingnew::FailingAllocation failing(1);
            EXPECT_THROW(dc.selectBrush(KivBrush::solid(0x0000FF00)), std::bad_alloc);
        }
        EXPECT_EQ(GetCurrentObject(hdc, OBJ_PEN), pen);
        EXPECT_EQ(GetCurrentObject(hdc, OBJ_BRUSH), brush);
        EXPECT_EQ(gdiObjects(), objects);
        // With memory, each selection is made and put back, last first.
        dc.selectPen(KivPen{kiv::kPsSolid, 3, 0x000000FF});
        dc.selectBrush(KivBrush::solid(0x0000FF00));
        EXPECT_NE(GetCurrentObject(hdc, OBJ_PEN), pen);
        EXPECT_NE(GetCurrentObject(hdc, OBJ_BRUSH), brush);
        dc.restoreBrush();
        EXPECT_EQ(GetCurrentObject(hdc, OBJ_BRUSH), brush);
        dc.restorePen();
        EXPECT_EQ(GetCurrentObject(hdc, OBJ_PEN), pen);
        dc.selectPen(KivPen{kiv::kPsSolid, 1, 0});  // left for the destructor
    }
    EXPECT_EQ(GetCurrentObject(hdc, OBJ_PEN), pen);
    EXPECT_EQ(gdiObjects(), objects);
}
