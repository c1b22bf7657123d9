// KivString: the foundation's UTF-16 string value.
// Portable: no platform header. Storage is char16_t on every platform, so characters, lengths and
// positions are the same on Windows (16-bit wchar_t) and Linux (32-bit wchar_t). getStringW() is a
// zero-copy view on Windows and a converted copy elsewhere.
#pragma once

#include <cstddef>
#include <string>

class KivString {
public:
    KivString() = default;
    KivString(const wchar_t* text);   // NOLINT: implicit by design
    KivString(const char* text);      // NOLINT: 8-bit text, each byte one code unit (Latin-1)
    KivString(const char16_t* text);  // NOLINT: UTF-16 literal, for portable callers and tests
    explicit KivString(std::u16string units) : m_units(std::move(units)) {}
    KivString(const KivString& other) : m_units(other.m_units) {}
    KivString(KivString&& other) noexcept : m_units(std::move(other.m_units)) {}
    ~KivString() = default;

    KivString& operator=(const KivString& other);
    KivString& operator=(KivString&& other) noexcept;
    KivString& operator=(const wchar_t* text);

    // 0-based position of the first occurrence of `what` at or after `start`, or -1.
    int find(const KivString& what, int start = 0) const;
    // Sets this string to src[from, end) and returns that value (positions clamped to src).
    KivString copy(const KivString& src, int from);
    // Sets this string to src[from, from + count) and returns that value (clamped).
    KivString copy(const KivString& src, int from, int count);
    KivString left(int n) const;
    KivString right(int n) const;
    int length() const { return static_cast<int>(m_units.size()); }
    // Upper-cases ASCII and Latin-1 letters in place, independently of any locale.
    KivString& toUpper();
    // Lower-cases exactly the letters toUpper raises (its inverse), in place, independently of any
    // locale: ASCII and Latin-1 capitals, and Y with diaeresis (U+0178) back to U+00FF.
    KivString& toLower();
    // Leading decimal number, locale-independent ("12.7" is 12.7 under any locale); 0.0 when none.
    double toDouble(bool unused = false) const;
    KivString& replace(int pos, int count, const KivString& with);
    // Ordinal, case-sensitive comparison by UTF-16 code unit: <0, 0, >0.
    static int compare(const KivString& a, const KivString& b);

    bool operator==(const KivString& other) const { return m_units == other.m_units; }
    bool operator!=(const KivString& other) const { return m_units != other.m_units; }
    KivString operator+(const KivString& other) const;
    const KivString& operator+=(const KivString& other);

    // Null-terminated wide view, valid while the string is unchanged.
    const wchar_t* getStringW() const;

    // Portable access to the code units.
    const std::u16string& units() const { return m_units; }
    char16_t at(int i) const { return m_units[static_cast<std::size_t>(i)]; }
    bool isEmpty() const { return m_units.empty(); }
    std::string toUtf8() const;
    static KivString fromUtf8(const std::string& utf8);

private:
    std::u16string m_units;
#if !defined(_WIN32)
    mutable std::wstring m_wideView;  // UTF-32 copy for getStringW() where wchar_t is 32-bit
#endif
};

static_assert(sizeof(char16_t) == 2, "KivString stores UTF-16 code units");
