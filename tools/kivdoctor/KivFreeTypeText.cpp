// KivFreeTypeText. Native.
#include "KivFreeTypeText.h"

#include <ft2build.h>
#include FT_FREETYPE_H

namespace {
FT_Face face(void* f) { return static_cast<FT_Face>(f); }
}  // namespace

KivFreeTypeText::KivFreeTypeText(const std::string& fontPath, int pixelSize) {
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0) return;
    m_library = library;
    FT_Face f = nullptr;
    if (FT_New_Face(library, fontPath.c_str(), 0, &f) != 0) return;
    if (FT_Set_Pixel_Sizes(f, 0, static_cast<FT_UInt>(pixelSize)) != 0) {
        FT_Done_Face(f);
        return;
    }
    m_face = f;
    m_ascent = static_cast<int>(f->size->metrics.ascender >> 6);
    m_height = static_cast<int>((f->size->metrics.ascender - f->size->metrics.descender) >> 6);
}

KivFreeTypeText::~KivFreeTypeText() {
    if (m_face != nullptr) FT_Done_Face(face(m_face));
    if (m_library != nullptr) FT_Done_FreeType(static_cast<FT_Library>(m_library));
}

KivSize KivFreeTypeText::extent(const KivString& text) {
    if (m_face == nullptr) return KivSize{7L * text.length(), 13};
    long advance = 0;
    for (char16_t c : text.units()) {
        if (FT_Load_Char(face(m_face), c, FT_LOAD_DEFAULT) != 0) continue;
        advance += face(m_face)->glyph->advance.x >> 6;
    }
    return KivSize{advance, m_height};
}

void KivFreeTypeText::draw(std::vector<std::uint32_t>& pixels, int width, int height, int x, int y,
                           const KivString& text, KivColor color) {
    if (m_face == nullptr) return;
    const int red = color & 0xFF, green = (color >> 8) & 0xFF, blue = (color >> 16) & 0xFF;
    int penX = x;
    for (char16_t c : text.units()) {
        if (c == u'\r' || c == u'\n') continue;
        if (FT_Load_Char(face(m_face), c, FT_LOAD_RENDER) != 0) continue;
        const FT_GlyphSlot glyph = face(m_face)->glyph;
        const FT_Bitmap& bitmap = glyph->bitmap;
        for (unsigned row = 0; row < bitmap.rows; ++row) {
            for (unsigned col = 0; col < bitmap.width; ++col) {
                const int px = penX + glyph->bitmap_left + static_cast<int>(col);
                const int py = y + m_ascent - glyph->bitmap_top + static_cast<int>(row);
                if (px < 0 || py < 0 || px >= width || py >= height) continue;
                const int a = bitmap.buffer[row * static_cast<unsigned>(bitmap.pitch) + col];
                if (a == 0) continue;
                std::uint32_t& p = pixels[static_cast<std::size_t>(py) * static_cast<std::size_t>(width) + static_cast<std::size_t>(px)];
                const int r0 = (p >> 16) & 0xFF, g0 = (p >> 8) & 0xFF, b0 = p & 0xFF;
                const int r = (red * a + r0 * (255 - a)) / 255, g = (green * a + g0 * (255 - a)) / 255,
                          b = (blue * a + b0 * (255 - a)) / 255;
                p = static_cast<std::uint32_t>((r << 16) | (g << 8) | b);
            }
        }
        penX += static_cast<int>(glyph->advance.x >> 6);
    }
}
