// KivString: the operations the module uses, their edge cases, and UTF-16 positions
// that are the same on Windows and Linux.
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstring>
#include <limits>

#include "KivString.h"

namespace {
std::string u8(const KivString& s) { return s.toUtf8(); }
}  // namespace

TEST(KivString, DefaultIsEmpty) {
    KivString s;
    EXPECT_EQ(s.length(), 0);
    EXPECT_EQ(std::wcslen(s.getStringW()), 0u);
}

TEST(KivString, ConstructsFromWideNarrowAndUtf16Text) {
    EXPECT_EQ(u8(KivString(L"Dashed")), "Dashed");
    EXPECT_EQ(u8(KivString("Dashed")), "Dashed");
    EXPECT_EQ(u8(KivString(u"Dashed")), "Dashed");
    EXPECT_EQ(KivString(static_cast<const wchar_t*>(nullptr)).length(), 0);
}

TEST(KivString, NarrowTextMapsEachByteToOneCodeUnit) {
    const KivString s("caf\xE9");  // Latin-1 e-acute
    ASSERT_EQ(s.length(), 4);
    EXPECT_EQ(s.at(3), 0x00E9);
}

TEST(KivString, LengthsAndPositionsCountUtf16UnitsOnEveryPlatform) {
    // U+1F600 is one wchar_t on Linux and two on Windows; KivString counts two units everywhere.
    const KivString s(u"a\U0001F600b");
    EXPECT_EQ(s.length(), 4);
    EXPECT_EQ(s.find(KivString(u"b"), 0), 3);
    const KivString round(s.getStringW());
    EXPECT_EQ(round, s);
}

TEST(KivString, FindAtPositionZeroReturnsZero) {
    EXPECT_EQ(KivString(u"*DASHED,x").find(KivString(u"*DASHED"), 0), 0);
}

TEST(KivString, FindReturnsMinusOneWhenAbsentAndHonoursStart) {
    const KivString s(u"A,12.7,-6.35");
    EXPECT_EQ(s.find(KivString(u"B"), 0), -1);
    EXPECT_EQ(s.find(KivString(u","), 0), 1);
    EXPECT_EQ(s.find(KivString(u","), 2), 6);
    EXPECT_EQ(s.find(KivString(u","), 100), -1);
    EXPECT_EQ(s.find(KivString(u"A"), -5), 0);
}

TEST(KivString, CopyFromPositionSetsAndReturns) {
    KivString target(u"old");
    const KivString result = target.copy(KivString(u"A,12.7"), 2);
    EXPECT_EQ(u8(result), "12.7");
    EXPECT_EQ(u8(target), "12.7");
}

TEST(KivString, CopyWithCountAndClamping) {
    KivString t;
    EXPECT_EQ(u8(t.copy(KivString(u"file.pat(ANSI31)"), 9, 6)), "ANSI31");
    EXPECT_EQ(u8(t.copy(KivString(u"abc"), 1, -3)), "");    // negative count: nothing
    EXPECT_EQ(u8(t.copy(KivString(u"abc"), -2, 2)), "ab");  // negative start: from 0
    EXPECT_EQ(u8(t.copy(KivString(u"abc"), 1, 99)), "bc");
    EXPECT_EQ(u8(t.copy(KivString(u"abc"), 7)), "");
    EXPECT_EQ(u8(t.copy(KivString(u"abc"), -1)), "abc");
}

TEST(KivString, CopyFromItself) {
    KivString s(u"A,12.7");
    s.copy(s, 2);
    EXPECT_EQ(u8(s), "12.7");
}

TEST(KivString, LeftAndRight) {
    const KivString s(u"Dashed");
    EXPECT_EQ(u8(s.right(s.length())), "Dashed");
    EXPECT_EQ(u8(s.right(0)), "");
    EXPECT_EQ(u8(s.left(0)), "");
    EXPECT_EQ(u8(s.left(4)), "Dash");
    EXPECT_EQ(u8(s.right(s.length() - 2)), "shed");
    EXPECT_EQ(u8(s.left(-1)), "");
    EXPECT_EQ(u8(s.right(-1)), "");
    EXPECT_EQ(u8(s.left(99)), "Dashed");
    EXPECT_EQ(u8(s.right(99)), "Dashed");
}

TEST(KivString, ToUpperInPlaceReturnsItself) {
    KivString s(u"dashed_x2 caf\u00e9 \u00ff");
    KivString& same = s.toUpper();
    EXPECT_EQ(&same, &s);
    EXPECT_EQ(s, KivString(u"DASHED_X2 CAF\u00c9 \u0178"));
}

TEST(KivString, ToUpperDoesNotTouchDivisionSign) {
    KivString s(u"\u00f7");
    EXPECT_EQ(s.toUpper().at(0), 0x00F7);
}

TEST(KivString, ToLowerInPlaceReturnsItself) {
    KivString s(u"DASHED_X2 CAF\u00c9 \u0178 \u00d7");
    KivString& same = s.toLower();
    EXPECT_EQ(&same, &s);
    EXPECT_EQ(s, KivString(u"dashed_x2 caf\u00e9 \u00ff \u00d7"));  // the multiplication sign stays
}

TEST(KivString, ToLowerUndoesExactlyWhatToUpperRaises) {
    // Over every code unit up to U+017F: a unit toUpper raises comes back, every other one (the
    // capitals included) is one toLower never makes; so no letter is in one table and not the other.
    for (char16_t c = 0; c <= 0x17F; ++c) {
        KivString raised{std::u16string(1, c)};
        raised.toUpper();
        KivString lowered = raised;
        lowered.toLower();
        if (raised.at(0) != c) {
            EXPECT_EQ(lowered.at(0), c) << "unit " << static_cast<int>(c);
        } else {
            KivString back = lowered;
            back.toUpper();
            EXPECT_EQ(back.at(0), c) << "unit " << static_cast<int>(c);
        }
    }
}

TEST(KivString, ToDoubleOfASignedDecimalZeroAndEmptyText) {
    EXPECT_DOUBLE_EQ(KivString(u"-6.35").toDouble(false), -6.35);
    EXPECT_DOUBLE_EQ(KivString(u"0").toDouble(false), 0.0);
    EXPECT_DOUBLE_EQ(KivString(u"").toDouble(false), 0.0);
}

TEST(KivString, ToDoubleAcceptsBlanksSignsAndTrailingText) {
    EXPECT_DOUBLE_EQ(KivString(u" 12.7").toDouble(false), 12.7);
    EXPECT_DOUBLE_EQ(KivString(u"\t+3").toDouble(false), 3.0);
    EXPECT_DOUBLE_EQ(KivString(u"12.7\r").toDouble(false), 12.7);
    EXPECT_DOUBLE_EQ(KivString(u".5").toDouble(false), 0.5);
    EXPECT_DOUBLE_EQ(KivString(u"-.25").toDouble(false), -0.25);
    EXPECT_DOUBLE_EQ(KivString(u"5.").toDouble(false), 5.0);
    EXPECT_DOUBLE_EQ(KivString(u"0.0625.125").toDouble(false), 0.0625);  // malformed: leading number
    EXPECT_DOUBLE_EQ(KivString(u"1e2x").toDouble(false), 100.0);
    EXPECT_DOUBLE_EQ(KivString(u"2e").toDouble(false), 2.0);  // an exponent needs a digit
    EXPECT_DOUBLE_EQ(KivString(u"2e+").toDouble(false), 2.0);
}

TEST(KivString, ToDoubleOfTextWithoutNumberIsZero) {
    EXPECT_EQ(KivString(u"[\"TEXT\",STANDARD]").toDouble(false), 0.0);
    EXPECT_EQ(KivString(u"-").toDouble(false), 0.0);
    EXPECT_EQ(KivString(u".").toDouble(false), 0.0);
    EXPECT_EQ(KivString(u"nan").toDouble(false), 0.0);
    EXPECT_EQ(KivString(u"inf").toDouble(false), 0.0);
    EXPECT_EQ(KivString(u"0x10").toDouble(false), 0.0);
}

TEST(KivString, ToDoubleOutOfRange) {
    EXPECT_EQ(KivString(u"1e999").toDouble(false), std::numeric_limits<double>::infinity());
    EXPECT_EQ(KivString(u"-1e999").toDouble(false), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(KivString(u"1e-999").toDouble(false), 0.0);
}

TEST(KivString, ToDoubleIgnoresTheProcessLocale) {
    const char* candidates[] = {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "German_Germany.1252", "German"};
    const char* chosen = nullptr;
    for (const char* name : candidates) {
        if (std::setlocale(LC_ALL, name) != nullptr) {
            chosen = name;
            break;
        }
    }
    if (chosen == nullptr) GTEST_SKIP() << "no German locale on this machine";
    const double value = KivString(u"12.7").toDouble(false);
    const double withComma = KivString(u"12,7").toDouble(false);
    std::setlocale(LC_ALL, "C");
    EXPECT_DOUBLE_EQ(value, 12.7) << chosen;
    EXPECT_DOUBLE_EQ(withComma, 12.0) << chosen;  // the comma separates elements, it is no decimal mark
}

TEST(KivString, ReplaceInPlace) {
    KivString s(u"A,[\"T\",S],5,");
    const int open = s.find(KivString(u"["), 0);
    const int close = s.find(KivString(u"]"), 0);
    KivString& same = s.replace(open, close - open + 1, KivString(u"0"));
    EXPECT_EQ(&same, &s);
    EXPECT_EQ(u8(s), "A,0,5,");
    KivString t(u"abc");
    EXPECT_EQ(u8(t.replace(-3, 1, KivString(u"X"))), "Xbc");
    EXPECT_EQ(u8(t.replace(2, 99, KivString(u"YZ"))), "XbYZ");
    EXPECT_EQ(u8(t.replace(99, 1, KivString(u"!"))), "XbYZ!");
    EXPECT_EQ(u8(t.replace(0, -1, t)), "XbYZ!XbYZ!");
}

TEST(KivString, CompareOrdersByCodeUnitAndIsCaseSensitive) {
    EXPECT_LT(KivString::compare(KivString(u"DASHED"), KivString(u"DOT")), 0);
    EXPECT_GT(KivString::compare(KivString(u"dashed"), KivString(u"DOT")), 0);
    EXPECT_EQ(KivString::compare(KivString(u"x"), KivString(u"x")), 0);
    EXPECT_LT(KivString::compare(KivString(u""), KivString(u"a")), 0);
    EXPECT_LT(KivString::compare(KivString(u"ab"), KivString(u"abc")), 0);
}

TEST(KivString, EqualityConcatenationAndAppend) {
    const KivString a(u"*"), b(u"DASH");
    EXPECT_EQ(a + b, KivString(u"*DASH"));
    EXPECT_NE(a, b);
    KivString c(u"x");
    const KivString& r = (c += KivString(u"y"));
    EXPECT_EQ(&r, &c);
    EXPECT_EQ(u8(c), "xy");
    c += c;
    EXPECT_EQ(u8(c), "xyxy");
}

TEST(KivString, CopiesAreIndependentAndMovedFromStaysUsable) {
    KivString a(u"one");
    KivString b(a);
    b += KivString(u"!");
    EXPECT_EQ(u8(a), "one");
    KivString c;
    c = std::move(b);
    EXPECT_EQ(u8(c), "one!");
    b = L"again";  // the moved-from string is still a string
    EXPECT_EQ(u8(b), "again");
    c = a;
    EXPECT_EQ(u8(c), "one");
    c = c;
    EXPECT_EQ(u8(c), "one");
}

TEST(KivString, GetStringWIsNullTerminated) {
    const KivString s(u"Color 42");
    const wchar_t* w = s.getStringW();
    EXPECT_EQ(std::wcslen(w), 8u);
    EXPECT_EQ(std::wcscmp(w, L"Color 42"), 0);
}

TEST(KivString, Utf8RoundTripAndInvalidBytes) {
    const KivString s(u"caf\u00e9 \u20ac \U0001F600");
    EXPECT_EQ(KivString::fromUtf8(s.toUtf8()), s);
    const KivString bad = KivString::fromUtf8(std::string("a\xC3(\xFF", 4));
    ASSERT_EQ(bad.length(), 4);
    EXPECT_EQ(bad.at(1), 0xC3);
    EXPECT_EQ(bad.at(3), 0xFF);
    EXPECT_EQ(KivString::fromUtf8(std::string("\xE2\x82", 2)).length(), 2);  // truncated sequence
}
