// The raster device context: GDI's one-pixel lines (the last point left out, the same pixels as
// GDI's own MoveTo/LineTo, compared under Wine on every direction and on random segments),
// rectangles as FillRect fills them, and a linetype row drawn through it.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include "KivLinetypeRow.h"
#include "KivRasterDC.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

// Segments from a centre to every point of a square around it (every octant, both diagonals and
// the axes), then random ones, some far longer than wide.
std::vector<std::vector<int>> segments() {
    std::vector<std::vector<int>> out;
    const int c = 64;
    for (int d = -24; d <= 24; ++d) {
        out.push_back({c, c, c + d, c - 24});
        out.push_back({c, c, c + d, c + 24});
        out.push_back({c, c, c - 24, c + d});
        out.push_back({c, c, c + 24, c + d});
    }
    std::mt19937 random(1234);
    std::uniform_int_distribution<int> coordinate(0, 127);
    for (int i = 0; i < 400; ++i) out.push_back({coordinate(random), coordinate(random), coordinate(random), coordinate(random)});
    return out;
}

}  // namespace

TEST(KivRasterDC, ALineLeavesOutItsLastPointAndStepsOnePixelAtATime) {
    EXPECT_EQ(KivGdiLinePixels(2, 3, 6, 3), (std::vector<KivPixel>{{2, 3}, {3, 3}, {4, 3}, {5, 3}}));
    EXPECT_EQ(KivGdiLinePixels(5, 5, 5, 2), (std::vector<KivPixel>{{5, 5}, {5, 4}, {5, 3}}));
    EXPECT_TRUE(KivGdiLinePixels(4, 4, 4, 4).empty());
    const std::vector<KivPixel> diagonal = KivGdiLinePixels(0, 0, 3, 3);
    EXPECT_EQ(diagonal, (std::vector<KivPixel>{{0, 0}, {1, 1}, {2, 2}}));
    for (const auto& s : segments()) {
        const std::vector<KivPixel> line = KivGdiLinePixels(s[0], s[1], s[2], s[3]);
        ASSERT_EQ(static_cast<int>(line.size()), std::max(std::abs(s[2] - s[0]), std::abs(s[3] - s[1])));
        for (std::size_t i = 1; i < line.size(); ++i) {
            EXPECT_LE(std::abs(line[i].x - line[i - 1].x), 1);
            EXPECT_LE(std::abs(line[i].y - line[i - 1].y), 1);
        }
    }
}

TEST(KivRasterDC, FillsUpToButNotIncludingTheRightAndBottomEdges) {
    KivRasterDC dc(10, 10);
    dc.fillRect(KivRect{2, 3, 5, 6}, KivBrush::solid(0x000000FF));  // red, COLORREF layout
    EXPECT_EQ(dc.pixel(2, 3), 0x00FF0000u);
    EXPECT_EQ(dc.pixel(4, 5), 0x00FF0000u);
    EXPECT_EQ(dc.pixel(5, 5), 0x00FFFFFFu);
    EXPECT_EQ(dc.pixel(4, 6), 0x00FFFFFFu);
    dc.setOrigin(5, 0);
    dc.fillRect(KivRect{0, 0, 1, 1}, KivBrush::solid(0));
    EXPECT_EQ(dc.pixel(5, 0), 0u);
}

TEST(KivRasterDC, ALinetypeRowDrawsItsSampleAlongTheMiddleOfTheLeftHalf) {
    KivRasterDC dc(200, 16);
    KivDrawItem item;
    item.itemID = 3;
    item.rcItem = KivRect{0, 0, 200, 16};
    KivDrawLinetypeRow(dc, item, KivString(u"Dashed"), KivString(u"A,12.7,-6.35"), KivLinetypeRowStyle{});
    // The sample box is 2..100 by 2..14: the strokes run along y = 8, dashes of 12 pixels and gaps.
    int black = 0;
    for (int x = 0; x < 100; ++x)
        if (dc.pixel(x, 8) == 0) ++black;
    EXPECT_GT(black, 40);
    EXPECT_LT(black, 90);
    EXPECT_EQ(dc.pixel(0, 8), 0u);         // the first dash starts at 0
    EXPECT_EQ(dc.pixel(15, 8), 0x00FFFFFFu);  // a gap after the first dash
    EXPECT_EQ(dc.pixel(50, 3), 0x00FFFFFFu);  // nothing above the line
}

#ifdef _WIN32
namespace {
std::set<std::pair<int, int>> asSet(const std::vector<KivPixel>& pixels) {
    std::set<std::pair<int, int>> out;
    for (const KivPixel& p : pixels) out.insert({p.x, p.y});
    return out;
}
}  // namespace

// The same segments drawn by GDI itself (a one-pixel black pen on a white 32-bit DIB): the same pixels.
TEST(KivRasterDC, EveryLineHasExactlyThePixelsOfGdisOwnLine) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = 128;
    info.bmiHeader.biHeight = -128;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HDC dc = CreateCompatibleDC(nullptr);
    HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    ASSERT_NE(bitmap, nullptr);
    HGDIOBJ oldBitmap = SelectObject(dc, bitmap);
    HPEN pen = CreatePen(PS_SOLID, 1, RGB(0, 0, 0));
    HGDIOBJ oldPen = SelectObject(dc, pen);
    int differing = 0;
    for (const auto& s : segments()) {
        RECT all{0, 0, 128, 128};
        FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        MoveToEx(dc, s[0], s[1], nullptr);
        LineTo(dc, s[2], s[3]);
        GdiFlush();
        std::set<std::pair<int, int>> gdi;
        const auto* p = static_cast<const std::uint32_t*>(bits);
        for (int y = 0; y < 128; ++y)
            for (int x = 0; x < 128; ++x)
                if ((p[y * 128 + x] & 0x00FFFFFF) == 0) gdi.insert({x, y});
        if (gdi != asSet(KivGdiLinePixels(s[0], s[1], s[2], s[3]))) {
            ++differing;
            ADD_FAILURE() << "(" << s[0] << "," << s[1] << ") to (" << s[2] << "," << s[3] << ")";
            if (differing > 10) break;
        }
    }
    EXPECT_EQ(differing, 0);
    SelectObject(dc, oldPen);
    DeleteObject(pen);
    SelectObject(dc, oldBitmap);
    DeleteObject(bitmap);
    DeleteDC(dc);
}
#endif
