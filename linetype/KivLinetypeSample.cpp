// The definition-string grammar and the strokes of a linetype sample. Portable.
#include "KivLinetypeSample.h"


namespace {
// x as a device coordinate, truncated toward zero. The walk keeps x between 0 and the width (or at
// the width when that is negative), both of which are whole numbers of pixels.
int device(double x) {
    if (x >= 2147483647.0) return 2147483647;  // only for widths beyond any screen
    if (x <= -2147483648.0) return -2147483647 - 1;
    return static_cast<int>(x);
}
}  // namespace

KivString KivLinetypePattern(const KivString& definition) {
    // 1. A trailing separator, so that the last element is followed by one too.
    KivString pattern = definition + KivString(u",");
    // 2. "A," anywhere means the definition starts with it: its first two characters go.
    if (pattern.find(KivString(u"A,"), 0) > -1) pattern = pattern.right(pattern.length() - 2);
    // 3. The first "[" ... "]" span, brackets included, becomes one dot.
    const int open = pattern.find(KivString(u"["), 0);
    const int close = pattern.find(KivString(u"]"), 0);
    if (open > -1 && close > -1 && open < close) pattern.replace(open, close - open + 1, KivString(u"0"));
    return pattern;
}

int KivStrokeLinetypeSample(IKivDC& dc, const KivString& definition, int y, double width) {
    // 4. The pattern, and a cursor over it: the rest of the pattern from `start` on. (The cursor is a
    // position, not a copy of the rest: a long definition costs each stroke its element, not the
    // whole rest of the line.)
    const KivString pattern = KivLinetypePattern(definition);
    const KivString comma(u",");
    int start = 0;
    double x = 0.0;
    dc.moveTo(0, y);
    // 5. Nothing to draw without a first element.
    int next = pattern.find(comma, 0);
    if (next <= 0) return 0;
    const double limit = width > 0.0 ? width : 0.0;
    const long long budget = static_cast<long long>(kMaxStrokesPerPixel) * (static_cast<long long>(limit) + 1) + 16;
    long long strokes = 0;
    KivString element;
    // 6. One element per stroke, repeating the pattern, until x passes the width.
    for (;;) {
        const double v = element.copy(pattern, start, next - start).toDouble(false);
        start = next + 1;
        next = pattern.find(comma, start);
        if (next < 0) {  // the pattern repeats
            start = 0;
            next = pattern.find(comma, 0);
        }
        bool last = false;
        const bool pen = !(v < -0.0001);
        if (v > 0.0001) x = x + v;        // a dash
        else if (v < -0.0001) x = x - v;  // a gap
        else x = x + 1.0;                 // a dot: one pixel
        if (!(x <= width)) {  // past the width (or an infinite element): the last stroke ends there
            x = width;
            last = true;
        }
        if (pen) dc.lineTo(device(x), y);
        else dc.moveTo(device(x), y);
        ++strokes;
        if (last || strokes >= budget) break;
        if (next - start <= 0) break;  // an empty element ends the sample
    }
    return static_cast<int>(strokes);
}
