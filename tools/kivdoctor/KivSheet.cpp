// KivSheet. Portable.
#include "KivSheet.h"

#include "CKivHatchCtrl.h"
#include "KivLinetypeRow.h"

namespace {

constexpr KivColor kRed = 0x000000D0;     // COLORREF layout
constexpr KivColor kOrange = 0x000070D8;
constexpr KivColor kGrey = 0x00606060;


void label(KivRasterDC& dc, int x, int y, const std::string& text, KivColor color) {
    dc.setOrigin(0, 0);
    dc.resetClip();
    dc.setBkMode(kiv::kBkTransparent);
    dc.setTextColor(color);
    dc.textOut(x, y, KivString::fromUtf8(text));
}

// A red cross over a box: this entry does not load.
void cross(KivRasterDC& dc, const KivRect& box) {
    dc.setOrigin(0, 0);
    dc.setClip(box);
    dc.selectPen(KivPen{kiv::kPsSolid, 1, kRed});
    dc.moveTo(box.left, box.top);
    dc.lineTo(box.right, box.bottom);
    dc.moveTo(box.left, box.bottom - 1);
    dc.lineTo(box.right, box.top - 1);
    dc.restorePen();
    dc.resetClip();
}

std::string fileName(const KivDoctorFile& file) { return file.name.toUtf8(); }

}  // namespace

std::unique_ptr<KivRasterDC> KivLinetypeSheet(const KivDoctorFile& file, const std::vector<KivLinetypeFinding>& findings,
                                              IKivTextRenderer* text) {
    using L = KivSheetLayout;
    const int height = L::kMargin * 2 + L::kTitleHeight + static_cast<int>(findings.size()) * L::kRowPitch;
    auto dc = std::make_unique<KivRasterDC>(L::kLinetypeSheetWidth, height, text);
    label(*dc, L::kMargin, L::kMargin, fileName(file) + ": every linetype as the linetype combo draws its row", 0);
    int y = L::kMargin + L::kTitleHeight;
    for (const KivLinetypeFinding& f : findings) {
        // The row the combo would draw: its display name and the definition it would load (none
        // when it does not load).
        const KivRect box{L::kMargin, y, L::kMargin + L::kRowWidth, y + L::kRowHeight};
        dc->setOrigin(box.left, box.top);
        dc->setClip(box);
        KivDrawItem item;
        item.itemID = 3;
        item.rcItem = KivRect{0, 0, L::kRowWidth, L::kRowHeight};
        KivDrawLinetypeRow(*dc, item, KivString::fromUtf8(f.loads ? f.displayName : f.name),
                           KivString::fromUtf8(f.loads ? f.definition : std::string()), KivLinetypeRowStyle{});
        dc->setOrigin(0, 0);
        dc->resetClip();
        dc->frameRect(box, KivBrush::solid(0x00C8C8C8));
        const int markX = box.right + 10;
        if (!f.loads) {
            cross(*dc, box);
            label(*dc, markX, y, "not loaded (line " + std::to_string(f.headerLine) + ")", kRed);
        } else if (!f.loadsItself) {
            label(*dc, markX, y, "drawn with line " + std::to_string(f.matchLine) + "'s entry", kOrange);
        } else {
            label(*dc, markX, y, "line " + std::to_string(f.headerLine), kGrey);
        }
        y += L::kRowPitch;
    }
    return dc;
}

std::unique_ptr<KivRasterDC> KivPatternSheet(const KivDoctorFile& file, const std::vector<KivPatternFinding>& findings,
                                             double zoom, bool metric, IKivTextRenderer* text) {
    using L = KivSheetLayout;
    const int count = static_cast<int>(findings.size());
    const int rows = (count + L::kTileColumns - 1) / L::kTileColumns;
    const int width = L::kMargin + L::kTileColumns * (L::kTileWidth + L::kMargin);
    const int height = L::kMargin * 2 + L::kTitleHeight + rows * (L::kTileHeight + L::kLabelHeight + L::kMargin);
    auto dc = std::make_unique<KivRasterDC>(width, height, text);
    label(*dc, L::kMargin, L::kMargin,
          fileName(file) + ": every pattern as the hatch preview draws it (zoom " + std::to_string(zoom).substr(0, 4) +
              (metric ? ", millimetres)" : ", inches)"),
          0);
    for (int i = 0; i < count; ++i) {
        const KivPatternFinding& f = findings[static_cast<std::size_t>(i)];
        const int x = L::kMargin + (i % L::kTileColumns) * (L::kTileWidth + L::kMargin);
        const int y = L::kMargin + L::kTitleHeight + (i / L::kTileColumns) * (L::kTileHeight + L::kLabelHeight + L::kMargin);
        const KivRect box{x, y, x + L::kTileWidth, y + L::kTileHeight};
        // The preview control itself, given the Pattern property a host would give it.
        KivNullControlSite site;
        CKivHatchCtrl control(site);
        control.SetMetric(metric);
        control.SetZoomFactor(zoom);
        control.SetPattern(file.path + KivString(u"(") + KivString::fromUtf8(f.name) + KivString(u")"));
        dc->setOrigin(x, y);
        dc->setClip(box);
        control.OnDraw(*dc, KivRect{0, 0, L::kTileWidth, L::kTileHeight}, true, 0x00FFFFFF, 0x00000000);
        dc->setOrigin(0, 0);
        dc->resetClip();
        dc->frameRect(KivRect{box.left - 1, box.top - 1, box.right + 1, box.bottom + 1}, KivBrush::solid(0x00C8C8C8));
        label(*dc, x, box.bottom + 2, f.name, 0);
        if (!f.loads) {
            cross(*dc, box);
            label(*dc, x, box.bottom + 16, "not loaded", kRed);
        } else if (!f.loadsItself) {
            label(*dc, x, box.bottom + 16,
                  std::to_string(f.familiesLoaded) + " of " + std::to_string(f.familiesInFile) + " families" +
                      (f.matchLine != f.headerLine ? " (another pattern)" : ""),
                  kOrange);
        } else if (!f.notes.empty()) {
            label(*dc, x, box.bottom + 16, std::to_string(f.notes.size()) + " families draw nothing", kOrange);
        }
    }
    return dc;
}
