// GDI's one-pixel lines as pixels, and the pixel mask. Portable.
#include "KivGdiLine.h"

#include <algorithm>
#include <new>

namespace {

// In these octants a pixel exactly half-way steps on the minor axis (bit k for octant k + 1).
constexpr unsigned kBiasedOctants = 0xB4;  // octants 3, 5, 6 and 8

// The smallest whole number not below a / b, for b > 0.
long long ceilDiv(long long a, long long b) { return a >= 0 ? (a + b - 1) / b : -((-a) / b); }

// The set bits of a word.
int bitCount(std::uint64_t w) {
    w = w - ((w >> 1) & 0x5555555555555555u);
    w = (w & 0x3333333333333333u) + ((w >> 2) & 0x3333333333333333u);
    w = (w + (w >> 4)) & 0x0F0F0F0F0F0F0F0Fu;
    return static_cast<int>((w * 0x0101010101010101u) >> 56);
}

}  // namespace

KivPixelMask::ShortSteps::ShortSteps() {
    for (int dx = -kShort; dx <= kShort; ++dx) {
        for (int dy = -kShort; dy <= kShort; ++dy) {
            ShortStep& step = of[dx + kShort][dy + kShort];
            KivWalkGdiLine(0, 0, dx, dy, [&step](int x, int y) {
                step.dx[step.count] = x;
                step.dy[step.count] = y;
                ++step.count;
            });
            if (step.count > 0) {
                step.lastX = step.dx[step.count - 1];
                step.lastY = step.dy[step.count - 1];
            }
        }
    }
}

const KivPixelMask::ShortSteps KivPixelMask::s_shortSteps;

int KivGdiLineOctant(long long dx, long long dy) {
    if (dy > 0) {
        if (dx > 0) return dx > dy ? 1 : 2;
        return -dx > dy ? 4 : 3;
    }
    if (dx < 0) return -dx > -dy ? 5 : 6;
    return dx > -dy ? 8 : 7;
}

int KivGdiLineBias(long long dx, long long dy) { return ((kBiasedOctants >> (KivGdiLineOctant(dx, dy) - 1)) & 1u) != 0 ? 1 : 0; }

bool KivPixelMask::reset(const KivRect& box) {
    const long long width = static_cast<long long>(box.right) - box.left, height = static_cast<long long>(box.bottom) - box.top;
    m_box = KivRect{};
    m_stride = 0;
    m_stepWidth = m_stepHeight = 0;
    if (width <= 0 || height <= 0 || width * height > kMostPixels) return false;
    const std::size_t stride = static_cast<std::size_t>((width + 63) / 64);
    try {
        m_bits.assign(stride * static_cast<std::size_t>(height), 0);
    } catch (const std::bad_alloc&) {
        return false;
    }
    m_box = box;
    m_stride = stride;
    // A box that lies within the coordinates GDI takes as they are, kStep pixels of margin around
    // it: a step of up to kStep pixels from inside it needs no other check.
    const auto inside = [](long long v) { return v > -kCoordinateLimit + kStep && v < kCoordinateLimit - kStep; };
    if (inside(box.left) && inside(box.right) && inside(box.top) && inside(box.bottom)) {
        m_stepWidth = static_cast<unsigned>(width);
        m_stepHeight = static_cast<unsigned>(height);
    }
    return true;
}

bool KivPixelMask::at(int x, int y) const {
    if (x < m_box.left || x >= m_box.right || y < m_box.top || y >= m_box.bottom) return false;
    const std::size_t col = static_cast<std::size_t>(static_cast<long long>(x) - m_box.left);
    return ((m_bits[static_cast<std::size_t>(static_cast<long long>(y) - m_box.top) * m_stride + col / 64] >> (col % 64)) & 1u) != 0;
}

// The walk of KivWalkGdiLine, entered at the first pixel whose major coordinate lies in the box.
// After i steps on the major axis the walk has stepped n(i) = ceil((2 i minor + bias - major) /
// (2 major)) times on the minor one (the error term stays within its bounds only for that n), and
// its error term is 2 minor - major + 2 i minor - 2 n(i) major.
bool KivPixelMask::walk(int x0, int y0, int x1, int y1) {
    if (m_stride == 0) return false;
    const auto inRange = [](int v) { return v > -kCoordinateLimit && v < kCoordinateLimit; };
    if (!inRange(x0) || !inRange(y0) || !inRange(x1) || !inRange(y1)) return false;
    const long long dx = static_cast<long long>(x1) - x0, dy = static_cast<long long>(y1) - y0;
    const long long adx = dx < 0 ? -dx : dx, ady = dy < 0 ? -dy : dy;
    if (adx == 0 && ady == 0) return true;
    if (adx <= 1 && ady <= 1) {  // one step: its start alone
        if (x0 >= m_box.left && x0 < m_box.right && y0 >= m_box.top && y0 < m_box.bottom) set(x0, y0);
        return true;
    }
    if (adx <= kShort && ady <= kShort && x0 >= m_box.left && x0 < m_box.right && y0 >= m_box.top && y0 < m_box.bottom &&
        x1 >= m_box.left && x1 < m_box.right && y1 >= m_box.top && y1 < m_box.bottom) {  // all its pixels lie between its ends
        const ShortStep& step = s_shortSteps.of[dx + kShort][dy + kShort];
        for (int i = 0; i < step.count; ++i) set(x0 + step.dx[i], y0 + step.dy[i]);
        return true;
    }
    const int bias = KivGdiLineBias(dx, dy);
    const bool xMajor = adx > ady;
    const long long major = xMajor ? adx : ady, minor = xMajor ? ady : adx;
    const long long stepMajor = (xMajor ? dx : dy) < 0 ? -1 : 1, stepMinor = (xMajor ? dy : dx) < 0 ? -1 : 1;
    const long long majorStart = xMajor ? x0 : y0, minorStart = xMajor ? y0 : x0;
    const long long majorLow = xMajor ? m_box.left : m_box.top, majorHigh = (xMajor ? m_box.right : m_box.bottom) - 1LL;
    const long long minorLow = xMajor ? m_box.top : m_box.left, minorHigh = (xMajor ? m_box.bottom : m_box.right) - 1LL;
    // The steps i in [first, end) whose major coordinate majorStart + stepMajor i is in the box.
    long long first = 0, end = major;
    if (stepMajor > 0) {
        first = std::max(first, majorLow - majorStart);
        end = std::min(end, majorHigh - majorStart + 1);
    } else {
        first = std::max(first, majorStart - majorHigh);
        end = std::min(end, majorStart - majorLow + 1);
    }
    if (first >= end) return true;
    const long long n = first == 0 ? 0 : ceilDiv(2 * first * minor + bias - major, 2 * major);  // n(0) is 0
    long long err = 2 * minor - major + 2 * first * minor - 2 * n * major;
    long long along = majorStart + stepMajor * first, across = minorStart + stepMinor * n;
    for (long long i = first; i < end; ++i) {
        if (across >= minorLow && across <= minorHigh) {
            if (xMajor) set(along, across);
            else set(across, along);
        } else if (stepMinor > 0 ? across > minorHigh : across < minorLow) {
            return true;  // beyond the box on the side it moves to: it never comes back
        } else if (minor == 0) {
            return true;  // a straight line beside the box
        }
        if (err + bias > 0) {
            across += stepMinor;
            err += 2 * minor - 2 * major;
        } else {
            err += 2 * minor;
        }
        along += stepMajor;
    }
    return true;
}

// A run starts at each set bit whose left neighbour (the bit below it, or the top bit of the word
// before in the row) is clear.
long long KivPixelMask::runCount() const {
    long long runs = 0;
    for (int row = 0; row < m_box.height(); ++row) {
        const std::uint64_t* words = &m_bits[static_cast<std::size_t>(row) * m_stride];
        std::uint64_t carry = 0;
        for (std::size_t w = 0; w < m_stride; ++w) {
            runs += bitCount(words[w] & ~((words[w] << 1) | carry));
            carry = words[w] >> 63;
        }
    }
    return runs;
}
