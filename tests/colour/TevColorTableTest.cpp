// The palette: every entry against the expected table held here, the conversions, and NearestTev
// against a brute-force reference.
#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>

#include "TevColorTable.h"

namespace {
// The expected palette as 0xRRGGBB values, ten entries a row, each row led by its first index.
const char kExpectedPalette[] = R"(
  0 FFFFFF FF0000 FFFF00 00FF00 00FFFF 0000FF FF00FF FFFFFF 808080 C0C0C0
 10 FF0000 FF7F7F A50000 A55252 7F0000 7F3F3F 4C0000 4C2626 260000 261313
 20 FF3F00 FF9F7F A52900 A56752 7F1F00 7F4F3F 4C1300 4C2F26 260900 261713
 30 FF7F00 FFBF7F A55200 A57C52 7F3F00 7F5F3F 4C2600 4C3926 261300 261C13
 40 FFBF00 FFDF7F A57C00 A59152 7F5F00 7F6F3F 4C3900 4C4226 261C00 262113
 50 FFFF00 FFFF7F A5A500 A5A552 7F7F00 7F7F3F 4C4C00 4C4C26 262600 262613
 60 BFFF00 DFFF7F 7CA500 91A552 5F7F00 6F7F3F 394C00 424C26 1C2600 212613
 70 7FFF00 BFFF7F 52A500 7CA552 3F7F00 5F7F3F 264C00 394C26 132600 1C2613
 80 3FFF00 9FFF7F 29A500 67A552 1F7F00 4F7F3F 134C00 2F4C26 092600 172613
 90 00FF00 7FFF7F 00A500 52A552 007F00 3F7F3F 004C00 264C26 002600 132613
100 00FF3F 7FFF9F 00A529 52A567 007F1F 3F7F4F 004C13 264C2F 002609 132617
110 00FF7F 7FFFBF 00A552 52A57C 007F3F 3F7F5F 004C26 264C39 002613 13261C
120 00FFBF 7FFFDF 00A57C 52A591 007F5F 3F7F6F 004C39 264C42 00261C 132621
130 00FFFF 7FFFFF 00A5A5 52A5A5 007F7F 3F7F7F 004C4C 264C4C 002626 132626
140 00BFFF 7FDFFF 007CA5 5291A5 005F7F 3F6F7F 00394C 26424C 001C26 132126
150 007FFF 7FBFFF 0052A5 527CA5 003F7F 3F5F7F 00264C 26394C 001326 131C26
160 003FFF 7F9FFF 0029A5 5267A5 001F7F 3F4F7F 00134C 262F4C 000926 131726
170 0000FF 7F7FFF 0000A5 5252A5 00007F 3F3F7F 00004C 26264C 000026 131326
180 3F00FF 9F7FFF 2900A5 6752A5 1F007F 4F3F7F 13004C 2F264C 090026 171326
190 7F00FF BF7FFF 5200A5 7C52A5 3F007F 5F3F7F 26004C 39264C 130026 1C1326
200 BF00FF DF7FFF 7C00A5 9152A5 5F007F 6F3F7F 39004C 42264C 1C0026 211326
210 FF00FF FF7FFF A500A5 A552A5 7F007F 7F3F7F 4C004C 4C264C 260026 261326
220 FF00BF FF7FDF A5007C A55291 7F005F 7F3F6F 4C0039 4C2642 26001C 261321
230 FF007F FF7FBF A50052 A5527C 7F003F 7F3F5F 4C0026 4C2639 260013 26131C
240 FF003F FF7F9F A50029 A55267 7F001F 7F3F4F 4C0013 4C262F 260009 261317
250 545454 767676 989898 BABABA DCDCDC FFFFFF)";

std::vector<std::uint32_t> expectedPalette() {
    std::vector<std::uint32_t> values;
    std::istringstream rows(kExpectedPalette);
    std::string row;
    while (std::getline(rows, row)) {
        std::istringstream fields(row);
        std::size_t first = 0;
        if (!(fields >> first) || first != values.size()) continue;  // rows must follow each other
        std::string h;
        while (fields >> h) values.push_back(static_cast<std::uint32_t>(std::stoul(h, nullptr, 16)));
    }
    return values;
}

std::int16_t bruteForceNearest(KivColor c) {
    const int r = c & 0xFF, g = (c >> 8) & 0xFF, b = (c >> 16) & 0xFF;
    long best = -1;
    int bestIndex = 0;
    for (int i = 1; i < 256; ++i) {
        const KivColor e = TevToRGB(static_cast<std::int16_t>(i));
        const long dr = static_cast<long>(e & 0xFF) - r, dg = static_cast<long>((e >> 8) & 0xFF) - g,
                   db = static_cast<long>((e >> 16) & 0xFF) - b;
        const long d = dr * dr + dg * dg + db * db;
        if (best < 0 || d < best) {
            best = d;
            bestIndex = i;
        }
    }
    return static_cast<std::int16_t>(bestIndex);
}
}  // namespace

TEST(TevColorTable, EveryEntryHasItsExpectedColour) {
    const std::vector<std::uint32_t> expected = expectedPalette();
    ASSERT_EQ(expected.size(), 256u);
    for (int i = 0; i < 256; ++i) EXPECT_EQ(TevColorTable[i], expected[static_cast<std::size_t>(i)]) << "entry " << i;
}

TEST(TevColorTable, SpotChecksOfNamedColoursAndGreys) {
    EXPECT_EQ(TevColorTable[0], 0xFFFFFFu);
    EXPECT_EQ(TevColorTable[1], 0xFF0000u);
    EXPECT_EQ(TevColorTable[18], 0x260000u);
    EXPECT_EQ(TevColorTable[250], 0x545454u);
    EXPECT_EQ(TevColorTable[255], 0xFFFFFFu);
}

TEST(TevToRGB, RedBlueAndTheSpecialIndicesGiveWhite) {
    EXPECT_EQ(TevToRGB(1), 0x000000FFu);
    EXPECT_EQ(TevToRGB(5), 0x00FF0000u);
    EXPECT_EQ(TevToRGB(0), 0x00FFFFFFu);
    EXPECT_EQ(TevToRGB(256), 0x00FFFFFFu);
    EXPECT_EQ(TevToRGB(-1), 0x00FFFFFFu);
}

TEST(TevToRGB, SwapsRedAndBlueAndSendsEveryOtherValueToWhite) {
    EXPECT_EQ(TevToRGB(21), 0x007F9FFFu);  // 0xFF9F7F as red, green, blue
    for (int v : {257, 258, 300, 32767, -32768, -2}) EXPECT_EQ(TevToRGB(static_cast<std::int16_t>(v)), 0x00FFFFFFu) << v;
}

TEST(RGBToTev, WhiteIsSevenRedIsOneAbsentIsMinusOne) {
    EXPECT_EQ(RGBToTev(0x00FFFFFF), 7);
    EXPECT_EQ(RGBToTev(0x000000FF), 1);
    EXPECT_EQ(RGBToTev(0x00123456), -1);
}

TEST(RGBToTev, IgnoresTheTopByte) {
    EXPECT_EQ(RGBToTev(0xFF0000FF), 1);
    EXPECT_EQ(RGBToTev(0x7AFFFFFF), 7);
}

TEST(RGBToTev, EveryEntryMapsToItsFirstIndex) {
    for (int i = 1; i < 256; ++i) {
        const std::int16_t found = RGBToTev(TevToRGB(static_cast<std::int16_t>(i)));
        EXPECT_LE(found, i);
        EXPECT_EQ(TevToRGB(found), TevToRGB(static_cast<std::int16_t>(i)));
    }
}

TEST(NearestTev, WhiteIsSevenBlackIsEighteenRedIsOne) {
    EXPECT_EQ(NearestTev(0x00FFFFFF), 7);
    EXPECT_EQ(NearestTev(0x00000000), 18);
    EXPECT_EQ(NearestTev(0x000000FF), 1);  // red yields 1, not 10
}

TEST(NearestTev, MatchesBruteForceOverALargeSampleAndStaysInRange) {
    int checked = 0;
    for (int r = 0; r < 256; r += 5)
        for (int g = 0; g < 256; g += 5)
            for (int b = 0; b < 256; b += 5) {
                const KivColor c = static_cast<KivColor>(r | (g << 8) | (b << 16));
                const std::int16_t n = NearestTev(c);
                ASSERT_EQ(n, bruteForceNearest(c)) << std::hex << c;
                ASSERT_GE(n, 1);
                ASSERT_LE(n, 255);
                ++checked;
            }
    EXPECT_EQ(checked, 52 * 52 * 52);
}

TEST(NearestTev, IgnoresTheTopByteAndKeepsTheLowestIndexOnTies) {
    EXPECT_EQ(NearestTev(0xFF000000), 18);
    // Every palette colour is its own nearest, at its first index.
    for (int i = 1; i < 256; ++i) EXPECT_EQ(NearestTev(TevToRGB(static_cast<std::int16_t>(i))), RGBToTev(TevToRGB(static_cast<std::int16_t>(i))));
}
