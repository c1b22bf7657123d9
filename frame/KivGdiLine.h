// GDI's one-pixel lines as pixels, and a mask that gathers the pixels of many lines. Portable.
//
// A line from (x0, y0) to (x1, y1) drawn with a one-pixel solid pen sets the pixels of a Bresenham
// walk from its start, its end left out: the axis it moves further along (x when |dx| > |dy|, y
// otherwise, so a diagonal is y-major) steps every pixel, the other one when the error term says
// so. On an exact tie the walk steps on the minor axis in the octants 3, 5, 6 and 8 (numbered
// clockwise from +x with y growing downwards) and not in the others. A horizontal or vertical line
// follows the same rule: from its start up to, not including, its end. Tests draw the same lines
// with GDI under Wine and compare every pixel.
//
// KivPixelMask gathers the pixels of many such lines inside one rectangle, as one bit each, and
// gives them back as horizontal runs: a dense drawing that would cost GDI one call per line costs
// one call per run instead, with the same pixels.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "KivTypes.h"

// The octant of a step (dx, dy), 1 to 8, clockwise from +x with y growing downwards; a diagonal
// belongs to the octant nearer the y axis.
int KivGdiLineOctant(long long dx, long long dy);
// 1 when a line in the direction (dx, dy) steps on its minor axis at an exact tie, else 0.
int KivGdiLineBias(long long dx, long long dy);

// Visits the pixels of a one-pixel line in order, the last point excluded.
template <class Plot>
void KivWalkGdiLine(int x0, int y0, int x1, int y1, Plot plot) {
    const long long dx = static_cast<long long>(x1) - x0, dy = static_cast<long long>(y1) - y0;
    const long long adx = dx < 0 ? -dx : dx, ady = dy < 0 ? -dy : dy;
    if (adx == 0 && ady == 0) return;
    const int bias = KivGdiLineBias(dx, dy);
    const int sx = dx < 0 ? -1 : 1, sy = dy < 0 ? -1 : 1;
    const bool xMajor = adx > ady;
    const long long major = xMajor ? adx : ady, minor = xMajor ? ady : adx;
    int x = x0, y = y0;
    long long err = 2 * minor - major;
    for (long long n = 0; n < major; ++n) {
        plot(x, y);
        if (err + bias > 0) {
            if (xMajor) y += sy;
            else x += sx;
            err += 2 * minor - 2 * major;
        } else {
            err += 2 * minor;
        }
        if (xMajor) x += sx;
        else y += sy;
    }
}

class KivPixelMask {
public:
    // An empty mask over `box`; false (and an empty box) when the box is empty, larger than
    // kMostPixels or there is no memory for it.
    bool reset(const KivRect& box);
    const KivRect& box() const { return m_box; }

    // Sets the pixels of the line from (x0, y0) to (x1, y1) that lie in the box. The walk is taken
    // up only where it crosses the box, so a line of any length costs at most the box's size.
    // False, and nothing set, without a box or for a line with a coordinate of 2^28 or more either
    // way (GDI scales such lines down before it draws them).
    bool line(int x0, int y0, int x1, int y1) { return step(x0, y0, x1, y1) || walk(x0, y0, x1, y1); }
    // line() of the commonest lines of a dense drawing, steps of up to kStep pixels each way whose
    // pixels all lie in the box (which lies within the coordinates GDI takes as they are): such a
    // step sets its start and at most one pixel more, looked up. False, and nothing set, for any
    // other line.
    bool step(int x0, int y0, int x1, int y1) {
        const unsigned col = static_cast<unsigned>(x0) - static_cast<unsigned>(m_box.left);
        const unsigned row = static_cast<unsigned>(y0) - static_cast<unsigned>(m_box.top);
        const unsigned across = static_cast<unsigned>(x1) - static_cast<unsigned>(x0) + kStep;  // up to 2 kStep for a step
        const unsigned down = static_cast<unsigned>(y1) - static_cast<unsigned>(y0) + kStep;
        if (col >= m_stepWidth || row >= m_stepHeight || across > 2 * kStep || down > 2 * kStep) return false;
        if (across - (kStep - 1) <= 2u && down - (kStep - 1) <= 2u) {  // a step of one pixel or none: its start alone, or nothing
            if (x0 != x1 || y0 != y1) setAt(col, row);
            return true;
        }
        const ShortStep& pixels = s_shortSteps.of[across + (kShort - kStep)][down + (kShort - kStep)];
        const unsigned lastCol = col + static_cast<unsigned>(pixels.lastX), lastRow = row + static_cast<unsigned>(pixels.lastY);
        if (lastCol >= m_stepWidth || lastRow >= m_stepHeight) return false;
        if (pixels.count != 0) {
            setAt(col, row);
            setAt(lastCol, lastRow);
        }
        return true;
    }
    bool at(int x, int y) const;

    // Each row's runs of set pixels, left to right and top to bottom: f(y, from, to), the pixels
    // from `from` up to, not including, `to`. A bit that differs from its left neighbour (the bit
    // below it, or the top bit of the word before in the row) starts a run when it is set and ends
    // one when it is clear; only those bits are visited.
    template <class F>
    void forEachRun(F f) const {
        for (int row = 0; row < m_box.height(); ++row) {
            const std::uint64_t* words = &m_bits[static_cast<std::size_t>(row) * m_stride];
            std::uint64_t carry = 0;
            int from = 0;
            for (std::size_t w = 0; w < m_stride; ++w) {
                const std::uint64_t word = words[w];
                std::uint64_t edges = word ^ ((word << 1) | carry);
                carry = word >> 63;
                const int base = static_cast<int>(w * 64);
                while (edges != 0) {
                    const int bit = lowestBit(edges);
                    edges &= edges - 1;
                    if (((word >> bit) & 1u) != 0) from = base + bit;
                    else f(m_box.top + row, m_box.left + from, m_box.left + base + bit);
                }
            }
            if (carry != 0) f(m_box.top + row, m_box.left + from, m_box.right);  // up to the row's end
        }
    }
    long long runCount() const;

    static constexpr long long kMostPixels = 1LL << 22;
    static constexpr long long kCoordinateLimit = 1LL << 28;

private:
    bool walk(int x0, int y0, int x1, int y1);  // line() of any line
    // The index of the lowest set bit of a word that has one. The lowest bit alone times a de
    // Bruijn sequence has a different number in its top six bits for each index.
    static int lowestBit(std::uint64_t word) {
        struct Indexes {
            unsigned char of[64];
            constexpr Indexes() : of{} {
                for (int i = 0; i < 64; ++i) of[((std::uint64_t{1} << i) * kDeBruijn) >> 58] = static_cast<unsigned char>(i);
            }
        };
        static constexpr Indexes indexes{};
        return indexes.of[((word & (~word + 1)) * kDeBruijn) >> 58];
    }
    static constexpr std::uint64_t kDeBruijn = 0x03F79D71B4CB0A89u;
    void set(long long x, long long y) { setAt(static_cast<std::size_t>(x - m_box.left), static_cast<std::size_t>(y - m_box.top)); }
    void setAt(std::size_t col, std::size_t row) { m_bits[row * m_stride + col / 64] |= std::uint64_t{1} << (col % 64); }
    // The pixels of every short step (up to kShort pixels each way), by its move plus kShort each
    // way, as offsets from its start, worked out once by the walk itself: most strokes of a dense
    // drawing are such steps, and lie inside the box. The last pixel is kept apart (the start when
    // it is the only one) for step(), which takes the steps of up to kStep pixels.
    static constexpr int kShort = 4;
    static constexpr unsigned kStep = 2;
    struct ShortStep {
        int count = 0;
        int lastX = 0, lastY = 0;
        int dx[kShort] = {}, dy[kShort] = {};
    };
    struct ShortSteps {
        ShortStep of[2 * kShort + 1][2 * kShort + 1];
        ShortSteps();
    };
    static const ShortSteps s_shortSteps;
    KivRect m_box;
    std::size_t m_stride = 0;  // words a row; the bits past the box's right edge stay 0
    unsigned m_stepWidth = 0, m_stepHeight = 0;  // the box's, for step(); 0 without a box
    std::vector<std::uint64_t> m_bits;
};
