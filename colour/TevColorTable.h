// The indexed colour palette: the 256-entry table, the special Tev index values and the
// three conversions. Portable, pure data and arithmetic.
#pragma once

#include <cstdint>

#include "KivTypes.h"

// Entry i read as a little-endian 32-bit word: 0x00RRGGBB (bytes blue, green, red, zero).
extern const std::uint32_t TevColorTable[256];

namespace tev {
constexpr std::int16_t kByBlock = 0;
constexpr std::int16_t kByLayer = 256;
constexpr std::int16_t kDefault = 257;
constexpr std::int16_t kByApprovalStatus = 258;
constexpr std::int16_t kNone = -1;
}  // namespace tev

// The 0x00BBGGRR colour of a palette index; anything outside 1..255 gives entry 255 (white).
KivColor TevToRGB(std::int16_t index);
// The first index 1..255 whose entry equals the colour exactly (top byte ignored), or -1.
std::int16_t RGBToTev(KivColor color);
// The index 1..255 of the nearest entry by squared distance; ties keep the lowest index.
std::int16_t NearestTev(KivColor color);
