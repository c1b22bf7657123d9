// KivRasterDC. Portable.
#include "KivRasterDC.h"

#include <utility>

#include "KivGdiLine.h"

namespace {

std::uint32_t toRgb(KivColor c) {  // COLORREF 0x00BBGGRR to 0x00RRGGBB
    return ((c & 0xFF) << 16) | (c & 0xFF00) | ((c >> 16) & 0xFF);
}

}  // namespace

std::vector<KivPixel> KivGdiLinePixels(int x0, int y0, int x1, int y1) {
    std::vector<KivPixel> out;
    KivWalkGdiLine(x0, y0, x1, y1, [&](int x, int y) { out.push_back(KivPixel{x, y}); });
    return out;
}

KivRasterDC::KivRasterDC(int width, int height, IKivTextRenderer* text)
    : m_width(width > 0 ? width : 0),
      m_height(height > 0 ? height : 0),
      m_pixels(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height), 0x00FFFFFFu),
      m_text(text),
      m_clip{0, 0, m_width, m_height} {}

std::uint32_t KivRasterDC::pixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= m_width || y >= m_height) return 0;
    return m_pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(x)];
}

void KivRasterDC::setPixel(int x, int y, KivColor color) {
    if (x < m_clip.left || y < m_clip.top || x >= m_clip.right || y >= m_clip.bottom) return;
    if (x < 0 || y < 0 || x >= m_width || y >= m_height) return;
    m_pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(x)] = toRgb(color);
}

KivColor KivRasterDC::getSysColor(int index) {
    switch (index) {
    case kiv::kColorWindow: return 0x00FFFFFF;
    case kiv::kColorWindowText: return 0x00000000;
    case kiv::kColorHighlight: return 0x00D77800;  // a classic selection blue
    case kiv::kColorGrayText: return 0x006D6D6D;
    default: return 0x00C0C0C0;
    }
}

KivColor KivRasterDC::setTextColor(KivColor color) { return std::exchange(m_textColor, color); }

KivColor KivRasterDC::setBkColor(KivColor color) { return std::exchange(m_bkColor, color); }

int KivRasterDC::setBkMode(int mode) { return std::exchange(m_bkMode, mode); }

unsigned KivRasterDC::setTextAlign(unsigned align) { return std::exchange(m_textAlign, align); }

KivColor KivRasterDC::brushColor(const KivBrush& brush) const {
    if (!brush.isStock) return brush.color;
    switch (brush.stock) {
    case KivStockObject::WhiteBrush: return 0x00FFFFFF;
    default: return 0x00000000;
    }
}

void KivRasterDC::fillRect(const KivRect& rect, const KivBrush& brush) {
    const KivColor c = brushColor(brush);
    for (int y = rect.top; y < rect.bottom; ++y)
        for (int x = rect.left; x < rect.right; ++x) setPixel(x + m_originX, y + m_originY, c);
}

void KivRasterDC::frameRect(const KivRect& r, const KivBrush& brush) {
    if (r.right <= r.left || r.bottom <= r.top) return;
    const KivColor c = brushColor(brush);
    for (int x = r.left; x < r.right; ++x) {
        setPixel(x + m_originX, r.top + m_originY, c);
        setPixel(x + m_originX, r.bottom - 1 + m_originY, c);
    }
    for (int y = r.top; y < r.bottom; ++y) {
        setPixel(r.left + m_originX, y + m_originY, c);
        setPixel(r.right - 1 + m_originX, y + m_originY, c);
    }
}

void KivRasterDC::drawFocusRect(const KivRect& r) {
    // Every other pixel of the border inverted, as the dotted focus rectangle is.
    auto invert = [&](int x, int y) {
        const int px = x + m_originX, py = y + m_originY;
        if (px < 0 || py < 0 || px >= m_width || py >= m_height) return;
        std::uint32_t& p = m_pixels[static_cast<std::size_t>(py) * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(px)];
        p = ~p & 0x00FFFFFFu;
    };
    for (int x = r.left; x < r.right; x += 2) {
        invert(x, r.top);
        invert(x, r.bottom - 1);
    }
    for (int y = r.top + 2; y < r.bottom - 1; y += 2) {
        invert(r.left, y);
        invert(r.right - 1, y);
    }
}

KivSize KivRasterDC::getTextExtent(const KivString& text) {
    if (m_text != nullptr) return m_text->extent(text);
    return KivSize{7L * text.length(), 13};
}

int KivRasterDC::drawText(const KivString& text, const KivRect& rect, unsigned format) {
    const KivSize size = getTextExtent(text);
    int y = rect.top;
    if ((format & kiv::kDtVCenter) != 0 && (format & kiv::kDtSingleLine) != 0)
        y = rect.top + (rect.height() - static_cast<int>(size.cy)) / 2;
    if (m_bkMode == kiv::kBkOpaque) {
        fillRect(KivRect{rect.left, y, rect.left + static_cast<int>(size.cx), y + static_cast<int>(size.cy)},
                 KivBrush::solid(m_bkColor));
    }
    if (m_text != nullptr) m_text->draw(m_pixels, m_width, m_height, rect.left + m_originX, y + m_originY, text, m_textColor);
    return static_cast<int>(size.cy);
}

bool KivRasterDC::textOut(int x, int y, const KivString& text) {
    const KivSize size = getTextExtent(text);
    if ((m_textAlign & kiv::kTaCenter) == kiv::kTaCenter) x -= static_cast<int>(size.cx) / 2;
    if ((m_textAlign & kiv::kTaBaseline) == kiv::kTaBaseline) y -= static_cast<int>(size.cy) * 4 / 5;
    if (m_text != nullptr) m_text->draw(m_pixels, m_width, m_height, x + m_originX, y + m_originY, text, m_textColor);
    return true;
}

void KivRasterDC::selectPen(const KivPen& pen) { m_pens.push_back(pen); }

void KivRasterDC::restorePen() {
    if (m_pens.size() > 1) m_pens.pop_back();
}

void KivRasterDC::selectBrush(const KivBrush& brush) { m_brushes.push_back(brush); }

void KivRasterDC::restoreBrush() {
    if (m_brushes.size() > 1) m_brushes.pop_back();
}

bool KivRasterDC::strokeRules(KivStrokeRules& rules) {
    // A line's pixels lie within the box of its ends, widened by the nib; only those inside the
    // clip (device coordinates, the origin added to the drawing's) land.
    const int margin = (m_pens.back().width > 1 ? m_pens.back().width : 1) + 1;
    rules.box = KivRect{m_clip.left - m_originX - margin, m_clip.top - m_originY - margin, m_clip.right - m_originX + margin,
                        m_clip.bottom - m_originY + margin};
    rules.repeatsChangeNothing = true;
    rules.emptyStrokesChangeNothing = true;
    return true;
}

void KivRasterDC::moveTo(int x, int y) { m_position = KivPixel{x, y}; }

void KivRasterDC::lineTo(int x, int y) {
    const KivPen& pen = m_pens.back();
    // A line far outside the canvas is clipped to nothing before it is walked.
    const long long margin = 4LL * (m_width + m_height) + 64;
    const bool inReach = std::llabs(static_cast<long long>(x)) < margin && std::llabs(static_cast<long long>(y)) < margin &&
                         std::llabs(static_cast<long long>(m_position.x)) < margin &&
                         std::llabs(static_cast<long long>(m_position.y)) < margin;
    if (inReach) {
        const int nib = pen.width > 1 ? pen.width : 1;
        KivWalkGdiLine(m_position.x, m_position.y, x, y, [&](int px, int py) {
            for (int j = 0; j < nib; ++j)
                for (int i = 0; i < nib; ++i)
                    setPixel(px + i - nib / 2 + m_originX, py + j - nib / 2 + m_originY, pen.color);
        });
    }
    m_position = KivPixel{x, y};
}

void KivRasterDC::ellipse(const KivRect& r) {
    // Filled with the brush, outlined with the pen: enough for the layer's picture.
    const double cx = (r.left + r.right - 1) / 2.0, cy = (r.top + r.bottom - 1) / 2.0;
    const double rx = (r.right - r.left) / 2.0, ry = (r.bottom - r.top) / 2.0;
    if (rx <= 0 || ry <= 0) return;
    for (int y = r.top; y < r.bottom; ++y)
        for (int x = r.left; x < r.right; ++x) {
            const double u = (x - cx) / rx, v = (y - cy) / ry, d = u * u + v * v;
            if (d <= 1.0) setPixel(x + m_originX, y + m_originY, d > 0.85 ? m_pens.back().color : brushColor(m_brushes.back()));
        }
}

KivColor KivRasterDC::getBkColor() { return m_bkColor; }
// Labels are drawn by the text renderer in its own face: the stock font changes nothing here.
void KivRasterDC::selectStockFont(KivStockObject) {}
void KivRasterDC::restoreFont() {}
// The rows copy a 0 x 0 bitmap onto the sample box: nothing to draw.
void KivRasterDC::bitBltFromCompatibleBitmap(int, int, const KivRect&, unsigned long) {}
