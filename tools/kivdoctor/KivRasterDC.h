// KivRasterDC: the controls' device-context seam drawn into a 32-bit pixel buffer, so that a program
// without Windows (kivdoctor's contact sheet) draws linetype rows and hatch previews with the very
// code the controls run. Portable.
//
// Lines follow GDI's rules for a one-pixel solid pen: from the current position to the new one,
// the last pixel left out, the pixels chosen as GDI chooses them (KivWalkGdiLine, the walk the
// controls' own pixel mask takes); a test draws the same segments with GDI under Wine and
// compares every pixel. Wider pens are drawn as a square nib along that walk (an approximation:
// the sheet draws at 96 dpi, where the controls' pens are one pixel wide). Rectangles fill from
// left/top up to, not including, right/bottom, as FillRect does. Text goes to an optional renderer.
#pragma once

#include <cstdint>
#include <vector>

#include "IKivDC.h"

// Draws text for a raster DC (a font library behind it); without one, text is measured roughly
// and not drawn.
class IKivTextRenderer {
public:
    virtual ~IKivTextRenderer() = default;
    virtual KivSize extent(const KivString& text) = 0;
    // Draws `text` with its cell's top-left at (x, y), blending `color` by the glyphs' coverage.
    virtual void draw(std::vector<std::uint32_t>& pixels, int width, int height, int x, int y, const KivString& text,
                      KivColor color) = 0;
};

struct KivPixel {
    int x, y;
    bool operator==(const KivPixel& o) const { return x == o.x && y == o.y; }
};

// The pixels a one-pixel GDI line from (x0, y0) towards (x1, y1) sets, in order, the last point
// excluded.
std::vector<KivPixel> KivGdiLinePixels(int x0, int y0, int x1, int y1);

class KivRasterDC : public IKivDC {
public:
    // A white canvas; pixels are 0x00RRGGBB.
    KivRasterDC(int width, int height, IKivTextRenderer* text = nullptr);

    int width() const { return m_width; }
    int height() const { return m_height; }
    const std::vector<std::uint32_t>& pixels() const { return m_pixels; }
    std::vector<std::uint32_t>& pixels() { return m_pixels; }
    std::uint32_t pixel(int x, int y) const;  // 0x00RRGGBB; 0 outside
    // Drawing lands at an offset (a tile of a sheet) and only inside `clip` (device coordinates),
    // as a control's drawing stays inside its window.
    void setOrigin(int x, int y) {
        m_originX = x;
        m_originY = y;
    }
    void setClip(const KivRect& clip) { m_clip = clip; }
    void resetClip() { m_clip = KivRect{0, 0, m_width, m_height}; }

    KIV_DC_MEMBERS
    // A raster device: strokes beyond the clip, empty ones and repeats change no pixel (every line
    // sets its pixels to the pen's colour, up to and not including its end).
    bool strokeRules(KivStrokeRules& rules) override;

    void setPixel(int x, int y, KivColor color);  // device coordinates (the origin applied)

private:
    KivColor brushColor(const KivBrush& brush) const;
    int m_width, m_height;
    std::vector<std::uint32_t> m_pixels;
    IKivTextRenderer* m_text;
    int m_originX = 0, m_originY = 0;
    KivRect m_clip;
    KivColor m_textColor = 0, m_bkColor = 0x00FFFFFF;
    int m_bkMode = 2;  // OPAQUE
    unsigned m_textAlign = 0;
    KivPixel m_position{0, 0};
    std::vector<KivPen> m_pens{KivPen{}};
    std::vector<KivBrush> m_brushes{KivBrush::solid(0x00FFFFFF)};
};
