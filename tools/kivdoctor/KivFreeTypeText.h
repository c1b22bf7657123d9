// Text for the raster device context through FreeType: a TrueType font at a pixel size, glyphs
// blended by their coverage. Native only (kivdoctor's labels and the rows' names).
#pragma once

#include <string>

#include "KivRasterDC.h"

class KivFreeTypeText : public IKivTextRenderer {
public:
    KivFreeTypeText(const std::string& fontPath, int pixelSize);
    ~KivFreeTypeText() override;
    KivFreeTypeText(const KivFreeTypeText&) = delete;
    KivFreeTypeText& operator=(const KivFreeTypeText&) = delete;
    bool ok() const { return m_face != nullptr; }

    KivSize extent(const KivString& text) override;
    void draw(std::vector<std::uint32_t>& pixels, int width, int height, int x, int y, const KivString& text,
              KivColor color) override;

private:
    void* m_library = nullptr;  // FT_Library
    void* m_face = nullptr;     // FT_Face
    int m_ascent = 0, m_height = 0;
};
