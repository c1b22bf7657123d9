// Fuzz target: a Pattern text and any .pat bytes through the hatch control (LoadPattern), drawn by
// DrawHatch at any zoom, in millimetres or inches, into any rectangle up to 255 x 255, onto a DC that
// counts strokes. The last 12 bytes of the input are the parameters (zoom as a double, width,
// height, Metric and whether the first line is also tried as a whole Pattern text, and whether the
// pixels are compared); the rest is the file. Its first three headers are the names looked up. A
// paint never exceeds its stroke budget, puts its pen back, and never hands GDI a coordinate outside
// its range; and, when asked, the same paint onto a raster device that answers its stroke rules (and
// so is spared strokes) gives the pixels, the stroke count and the guard's verdict of the same paint
// onto one that is sent every stroke.
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "CKivHatchCtrl.h"
#include "CountingDC.h"
#include "FuzzSupport.h"
#include "EveryStrokeRasterDC.h"
#include "KivRasterDC.h"
#include "RecordingSite.h"

namespace {

// A budget far below a real paint's, so that a run spends its time on many inputs rather than on a
// few dense ones; the guard's logic is the same for any budget.
constexpr long long kBudget = 1 << 11;

void paint(CKivHatchCtrl& ctrl, const KivRect& rect, bool comparePixels) {
    CountingDC dc;
    KivHatchStyle style;
    style.zoomFactor = ctrl.m_zoomFactor;
    style.unitFactor = ctrl.m_unitFactor;
    style.foreColor = 0x00800000;
    const KivHatchPaint done = DrawHatch(dc, rect, ctrl.m_lineFamilies, ctrl.m_dashes, style, kBudget);
    if (done.strokes > kBudget || dc.strokes != done.strokes) kivfuzz::broken("strokes beyond the budget or miscounted");
    if (dc.pens != 0) kivfuzz::broken("the pen was not put back");
    if (dc.strokes > 0 && (dc.maxCoordinate > static_cast<long long>(kHatchDeviceLimit) ||
                           dc.minCoordinate < -static_cast<long long>(kHatchDeviceLimit)))
        kivfuzz::broken("a coordinate outside GDI's range");
    if (!comparePixels) return;
    EveryStrokeRasterDC every(rect.right, rect.bottom);
    KivRasterDC spared(rect.right, rect.bottom);
    const KivHatchPaint a = DrawHatch(every, rect, ctrl.m_lineFamilies, ctrl.m_dashes, style, kBudget);
    const KivHatchPaint b = DrawHatch(spared, rect, ctrl.m_lineFamilies, ctrl.m_dashes, style, kBudget);
    if (a.strokes != done.strokes || b.strokes != done.strokes || a.guardStopped != b.guardStopped)
        kivfuzz::broken("a raster device changed the stroke count or the guard's verdict");
    if (every.pixels() != spared.pixels()) kivfuzz::broken("the strokes a raster device was spared changed a pixel");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static kivfuzz::ScratchFolder folder;
    if (size < 12) return 0;
    const std::uint8_t* tail = data + size - 12;
    double zoom = 0;
    std::memcpy(&zoom, tail, sizeof zoom);
    const int width = tail[8], height = tail[9];  // a preview is about 200 x 150
    const bool metric = (tail[10] & 1) != 0, wholeFirstLine = (tail[10] & 2) != 0, comparePixels = (tail[11] & 1) != 0;
    const std::size_t fileSize = size - 12;
    const KivString file = folder.write("fuzz.pat", data, fileSize);

    RecordingSite site;
    CKivHatchCtrl ctrl(site);
    ctrl.SetMetric(metric);
    ctrl.SetZoomFactor(zoom);
    if (!(ctrl.m_zoomFactor > CKivHatchCtrl::kMinimumZoom)) kivfuzz::broken("a zoom at or below the floor was taken");
    const KivRect rect{3, 5, 3 + width, 5 + height};
    for (const KivString& name : kivfuzz::headerNames(data, fileSize, 3)) {
        ctrl.SetPattern(file + KivString(u"(") + name + KivString(u")"));
        paint(ctrl, rect, comparePixels);
    }
    if (wholeFirstLine) {
        // The first line as the whole Pattern text: a path and a name, or anything at all.
        std::size_t end = 0;
        while (end < fileSize && data[end] != '\n') ++end;
        ctrl.SetPattern(kivfuzz::latin1(data, end));
        paint(ctrl, rect, comparePixels);
    }
    return 0;
}
