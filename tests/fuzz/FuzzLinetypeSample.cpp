// Fuzz target: any definition string drawn as a linetype sample of any width, and as a whole row.
// A sample never moves outside 0 .. its width (the width itself when it is negative), never draws
// more than its guard allows, and draws exactly the strokes of a plain walk over copies of the rest
// of the pattern (the way the walk was first written, kept here as the reference).
#include <cstddef>
#include <cstdint>

#include <string>
#include <vector>

#include "CountingDC.h"
#include "FuzzSupport.h"
#include "KivLinetypeRow.h"
#include "KivLinetypeSample.h"

namespace {

// Keeps every stroke as (line?, x, y).
class StrokeLog : public CountingDC {
public:
    void moveTo(int x, int y) override {
        CountingDC::moveTo(x, y);
        log.push_back({0, x, y});
    }
    void lineTo(int x, int y) override {
        CountingDC::lineTo(x, y);
        log.push_back({1, x, y});
    }
    std::vector<std::vector<long long>> log;
};

// The reference walk: the rest of the pattern copied after each element.
std::vector<std::vector<long long>> referenceWalk(const KivString& definition, int y, double width) {
    std::vector<std::vector<long long>> log;
    const KivString pattern = KivLinetypePattern(definition);
    const KivString comma(u",");
    KivString cursor = pattern;
    double x = 0.0;
    log.push_back({0, 0, y});
    int separator = cursor.find(comma, 0);
    if (separator <= 0) return log;
    const double limit = width > 0.0 ? width : 0.0;
    const long long budget = kMaxStrokesPerPixel * (static_cast<long long>(limit) + 1) + 16;
    for (long long strokes = 1;; ++strokes) {
        const double v = cursor.left(separator).toDouble(false);
        cursor = cursor.right(cursor.length() - separator - 1);
        if (cursor.find(comma, 0) < 0) cursor = pattern;
        bool last = false;
        if (v > 0.0001) x += v;
        else if (v < -0.0001) x -= v;
        else x += 1.0;
        if (!(x <= width)) {
            x = width;
            last = true;
        }
        log.push_back({v < -0.0001 ? 0 : 1, static_cast<long long>(x), y});
        if (last || strokes >= budget) break;
        separator = cursor.find(comma, 0);
        if (separator <= 0) break;
    }
    return log;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    // The first two bytes: the width (-16 .. 1007 pixels, a row's sample is about 100); the rest:
    // the definition.
    const int width = ((data[0] | (data[1] << 8)) & 0x03FF) - 16;
    const KivString definition = kivfuzz::latin1(data + 2, size - 2);
    StrokeLog dc;
    const int strokes = KivStrokeLinetypeSample(dc, definition, 7, static_cast<double>(width));
    if (dc.log != referenceWalk(definition, 7, static_cast<double>(width))) kivfuzz::broken("not the reference walk");
    const long long limit = width > 0 ? width : 0;
    if (strokes > kMaxStrokesPerPixel * (limit + 1) + 16) kivfuzz::broken("more strokes than the guard allows");
    const long long lowest = width < 0 ? width : 0, highest = width > 7 ? width : 7;  // y is 7
    if (dc.strokes > 0 && (dc.maxCoordinate > highest || dc.minCoordinate < lowest))
        kivfuzz::broken("a stroke outside the sample");

    CountingDC row;
    KivDrawItem item;
    item.itemID = 3;
    item.itemState = 0x0001u;  // selected
    item.rcItem = KivRect{0, 0, width > 0 ? width : 0, 16};
    KivLinetypeRowStyle style;
    KivDrawLinetypeRow(row, item, KivString(u"Fuzz"), definition, style);
    if (row.pens != 0) kivfuzz::broken("the row's pen was not put back");
    return 0;
}
