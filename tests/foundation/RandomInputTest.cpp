// Outside text never crashes the foundation: seeded random strings and byte blocks through every
// KivString operation the readers use and through KivFileAccess's decoding (run under ASan/UBSan
// natively). The seed is fixed, so a failure reproduces.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "KivFileAccess.h"
#include "KivString.h"

namespace {
KivString randomText(std::mt19937& rng) {
    static const char16_t alphabet[] = u"A,-.0123456789e+[]* \r\n\t;()\u00e9\u20ac\xD800";
    std::uniform_int_distribution<int> length(0, 24);
    std::uniform_int_distribution<int> pick(0, static_cast<int>(sizeof alphabet / sizeof alphabet[0]) - 2);
    std::u16string s;
    for (int i = length(rng); i > 0; --i) s.push_back(alphabet[pick(rng)]);
    return KivString(s);
}
}  // namespace

TEST(RandomInput, KivStringOperationsStayInBounds) {
    std::mt19937 rng(20261121);
    std::uniform_int_distribution<int> position(-30, 30);
    for (int round = 0; round < 20000; ++round) {
        KivString a = randomText(rng);
        const KivString b = randomText(rng);
        const int p = position(rng), n = position(rng);
        const int found = a.find(b, p);
        EXPECT_GE(found, -1);
        EXPECT_LE(found, a.length());
        EXPECT_LE(a.left(n).length(), a.length());
        EXPECT_LE(a.right(n).length(), a.length());
        KivString c;
        EXPECT_LE(c.copy(a, p, n).length(), a.length());
        EXPECT_LE(c.copy(a, p).length(), a.length());
        const double v = a.toDouble(false);
        EXPECT_FALSE(std::isnan(v));
        a.replace(p, n, b);
        a.toUpper();
        (void)a.getStringW();
        (void)KivString::compare(a, b);
        (void)a.toUtf8();
    }
}

TEST(RandomInput, DecodingAnyBytesNeverFails) {
    std::mt19937 rng(42);
    std::uniform_int_distribution<int> length(0, 64), byte(0, 255), type(0, 3);
    for (int round = 0; round < 20000; ++round) {
        std::vector<unsigned char> bytes(static_cast<std::size_t>(length(rng)));
        for (unsigned char& b : bytes) b = static_cast<unsigned char>(byte(rng));
        if (round % 4 == 0 && bytes.size() >= 3) bytes[0] = 0xEF, bytes[1] = 0xBB, bytes[2] = 0xBF;
        if (round % 4 == 1 && bytes.size() >= 2) bytes[0] = 0xFF, bytes[1] = 0xFE;
        const KivString text = KivFileAccess::decode(bytes.data(), bytes.size(), static_cast<KivFileAccess::encodeType>(type(rng)));
        EXPECT_LE(text.length(), static_cast<int>(bytes.size()));
        (void)KivString::fromUtf8(std::string(bytes.begin(), bytes.end())).toUtf8();
    }
}
