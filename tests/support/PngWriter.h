// Test support: writes 24-bit RGB pixels as a PNG file (stored deflate blocks, no compression
// library needed), for screenshots kept as test artifacts. Portable.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// `rgb` holds width * height pixels, 3 bytes each (red, green, blue), rows top to bottom.
bool KivWritePng(const std::string& path, int width, int height, const std::vector<std::uint8_t>& rgb);
