// Part 3.1: the table against the Part itself (every entry), the conversions, and NearestTev
// against a brute-force reference.
#include <gtest/gtest.h>

#include <cstdio>
#include <regex>
#include <sstream>

#include "TestFiles.h"
#include "TevColorTable.h"

namespace {
// The Part's table, read from ../shared/spec.md: rows "| a–b | RRGGBB RRGGBB ... |".
std::vector<std::uint32_t> tableOfThePart() {
    const std::string spec = specText();
    const std::size_t from = spec.find("The table, as 0xRRGGBB values");
    const std::size_t to = spec.find("How the table is laid out");
    std::vector<std::uint32_t> values;
    if (from == std::string::npos || to == std::string::npos) return values;
    std::istringstream lines(spec.substr(from, to - from));
    const std::regex row("^\\| (\\d+)\xE2\x80\x93(\\d+) \\| ([0-9A-F ]+) \\|$");
    std::string line;
    while (std::getline(lines, line)) {
        std::smatch m;
        if (!std::regex_match(line, m, row)) continue;
        std::istringstream hexes(m[3].str());
        std::string h;
        while (hexes >> h) values.push_back(static_cast<std::uint32_t>(std::stoul(h, nullptr, 16)));
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

TEST(TevColorTable, EveryEntryIsThePartsValue) {
    const std::vector<std::uint32_t> expected = tableOfThePart();
    ASSERT_EQ(expected.size(), 256u) << "could not read the table of Part 3.1 from ../shared/spec.md";
    for (int i = 0; i < 256; ++i) EXPECT_EQ(TevColorTable[i], expected[static_cast<std::size_t>(i)]) << "entry " << i;
}

TEST(TevColorTable, SpotChecksIndependentOfTheSpecText) {
    EXPECT_EQ(TevColorTable[0], 0xFFFFFFu);
    EXPECT_EQ(TevColorTable[1], 0xFF0000u);
    EXPECT_EQ(TevColorTable[18], 0x260000u);
    EXPECT_EQ(TevColorTable[250], 0x545454u);
    EXPECT_EQ(TevColorTable[255], 0xFFFFFFu);
}

TEST(TevToRGB, PartEdgeCases) {
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

TEST(RGBToTev, PartEdgeCases) {
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

TEST(NearestTev, PartEdgeCases) {
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
