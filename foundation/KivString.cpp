// KivString implementation. Portable.
#include "KivString.h"

#include <charconv>
#include <climits>
#include <cmath>
#include <cwchar>
#include <limits>

namespace {

std::u16string fromWide(const wchar_t* text) {
    std::u16string out;
    if (text == nullptr) return out;
#if WCHAR_MAX <= 0xFFFF
    for (; *text != 0; ++text) out.push_back(static_cast<char16_t>(*text));
#else
    for (; *text != 0; ++text) {
        auto cp = static_cast<unsigned long>(*text);
        if (cp >= 0x10000 && cp <= 0x10FFFF) {
            cp -= 0x10000;
            out.push_back(static_cast<char16_t>(0xD800 + (cp >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
        } else if (cp > 0x10FFFF) {
            out.push_back(u'\uFFFD');
        } else {
            out.push_back(static_cast<char16_t>(cp));
        }
    }
#endif
    return out;
}

// Clamp a [pos, pos + count) request to a string of `len` units.
void clampRange(int len, int& pos, int& count) {
    if (pos < 0) pos = 0;
    if (pos > len) pos = len;
    if (count < 0) count = 0;
    if (count > len - pos) count = len - pos;
}

bool isBlank(char16_t c) { return c == u' ' || c == u'\t'; }
bool isDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

}  // namespace

KivString::KivString(const wchar_t* text) : m_units(fromWide(text)) {}

KivString::KivString(const char* text) {
    if (text == nullptr) return;
    for (; *text != 0; ++text) m_units.push_back(static_cast<char16_t>(static_cast<unsigned char>(*text)));
}

KivString::KivString(const char16_t* text) {
    if (text != nullptr) m_units = text;
}

KivString& KivString::operator=(const KivString& other) {
    if (this != &other) m_units = other.m_units;
    return *this;
}

KivString& KivString::operator=(KivString&& other) noexcept {
    if (this != &other) m_units = std::move(other.m_units);
    return *this;
}

KivString& KivString::operator=(const wchar_t* text) {
    m_units = fromWide(text);
    return *this;
}

int KivString::find(const KivString& what, int start) const {
    if (start < 0) start = 0;
    if (start > length()) return -1;
    const std::size_t from = static_cast<std::size_t>(start);
    const std::size_t n = what.m_units.size();
    const std::size_t size = m_units.size();
    // Whole files are searched for a header key: there a Horspool scan (skips keyed on the low byte
    // of each unit, so a shared low byte only shortens a skip) beats a unit-by-unit search. Short
    // texts and keys take the plain search.
    if (n < 3 || size - from < 256) {
        const std::size_t at = m_units.find(what.m_units, from);
        return at == std::u16string::npos ? -1 : static_cast<int>(at);
    }
    if (n > size - from) return -1;
    std::size_t skip[256];
    for (std::size_t& s : skip) s = n;
    for (std::size_t i = 0; i + 1 < n; ++i) skip[what.m_units[i] & 0xFF] = n - 1 - i;
    const char16_t* text = m_units.data();
    const char16_t* key = what.m_units.data();
    const char16_t last = key[n - 1];
    for (std::size_t pos = from; pos + n <= size; pos += skip[text[pos + n - 1] & 0xFF]) {
        if (text[pos + n - 1] == last && std::char_traits<char16_t>::compare(text + pos, key, n - 1) == 0)
            return static_cast<int>(pos);
    }
    return -1;
}

KivString KivString::copy(const KivString& src, int from) {
    return copy(src, from, src.length() - (from < 0 ? 0 : from));
}

KivString KivString::copy(const KivString& src, int from, int count) {
    clampRange(src.length(), from, count);
    // src may be *this: build the value first, then assign.
    std::u16string value = src.m_units.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(count));
    m_units = value;
    return KivString(std::move(value));
}

KivString KivString::left(int n) const {
    int pos = 0;
    clampRange(length(), pos, n);
    return KivString(m_units.substr(0, static_cast<std::size_t>(n)));
}

KivString KivString::right(int n) const {
    if (n < 0) n = 0;
    if (n > length()) n = length();
    return KivString(m_units.substr(static_cast<std::size_t>(length() - n)));
}

KivString& KivString::toUpper() {
    for (char16_t& c : m_units) {
        if (c >= u'a' && c <= u'z') {
            c = static_cast<char16_t>(c - 0x20);
        } else if (c >= 0xE0 && c <= 0xFE && c != 0xF7) {
            c = static_cast<char16_t>(c - 0x20);  // Latin-1 letters: à..þ -> À..Þ
        } else if (c == 0xFF) {
            c = 0x178;  // ÿ -> Ÿ
        }
    }
    return *this;
}

KivString& KivString::toLower() {
    for (char16_t& c : m_units) {
        if (c >= u'A' && c <= u'Z') {
            c = static_cast<char16_t>(c + 0x20);
        } else if (c >= 0xC0 && c <= 0xDE && c != 0xD7) {
            c = static_cast<char16_t>(c + 0x20);  // Latin-1 letters: À..Þ -> à..þ
        } else if (c == 0x178) {
            c = 0xFF;  // Ÿ -> ÿ
        }
    }
    return *this;
}

double KivString::toDouble(bool /*unused*/) const {
    // The leading decimal number: blanks, optional sign, digits, optional fraction, optional exponent.
    // Parsed without the C locale, so a German-locale host still reads "12.7" as 12.7.
    std::size_t i = 0;
    const std::size_t n = m_units.size();
    while (i < n && isBlank(m_units[i])) ++i;
    bool negative = false;
    if (i < n && (m_units[i] == u'+' || m_units[i] == u'-')) {
        negative = m_units[i] == u'-';
        ++i;
    }
    std::string digits;  // ASCII copy of the number without its sign
    std::size_t intDigits = 0;
    std::size_t fracDigits = 0;
    while (i < n && isDigit(m_units[i])) { digits.push_back(static_cast<char>(m_units[i++])); ++intDigits; }
    if (i < n && m_units[i] == u'.') {
        digits.push_back('.');
        ++i;
        while (i < n && isDigit(m_units[i])) { digits.push_back(static_cast<char>(m_units[i++])); ++fracDigits; }
    }
    if (intDigits + fracDigits == 0) return 0.0;  // no number at all
    long exponent = 0;
    if (i < n && (m_units[i] == u'e' || m_units[i] == u'E')) {
        std::size_t j = i + 1;
        bool expNegative = false;
        if (j < n && (m_units[j] == u'+' || m_units[j] == u'-')) { expNegative = m_units[j] == u'-'; ++j; }
        if (j < n && isDigit(m_units[j])) {  // an exponent counts only with at least one digit
            digits.push_back('e');
            if (expNegative) digits.push_back('-');
            while (j < n && isDigit(m_units[j])) {
                digits.push_back(static_cast<char>(m_units[j]));
                if (exponent < 100000) exponent = exponent * 10 + (m_units[j] - u'0');
                ++j;
            }
            if (expNegative) exponent = -exponent;
        }
    }
    double value = 0.0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::general);
    if (result.ec == std::errc::result_out_of_range) {
        // Too large or too small for a double: infinity when the magnitude is large, else zero.
        const std::size_t firstNonZero = digits.find_first_not_of("0.");
        const long magnitude = static_cast<long>(intDigits) + exponent;
        const bool large = firstNonZero != std::string::npos && magnitude > 0;
        value = large ? std::numeric_limits<double>::infinity() : 0.0;
    } else if (result.ec != std::errc()) {
        value = 0.0;
    }
    return negative ? -value : value;
}

KivString& KivString::replace(int pos, int count, const KivString& with) {
    clampRange(length(), pos, count);
    const std::u16string insert = with.m_units;  // `with` may be *this
    m_units.replace(static_cast<std::size_t>(pos), static_cast<std::size_t>(count), insert);
    return *this;
}

int KivString::compare(const KivString& a, const KivString& b) {
    const int c = a.m_units.compare(b.m_units);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

KivString KivString::operator+(const KivString& other) const {
    return KivString(m_units + other.m_units);
}

const KivString& KivString::operator+=(const KivString& other) {
    m_units += other.m_units;
    return *this;
}

const wchar_t* KivString::getStringW() const {
#if defined(_WIN32)
    // wchar_t is a 16-bit UTF-16 unit here: the storage is the view.
    static_assert(sizeof(wchar_t) == sizeof(char16_t), "16-bit wchar_t expected on Windows");
    return reinterpret_cast<const wchar_t*>(m_units.c_str());
#else
    m_wideView.clear();
    for (std::size_t i = 0; i < m_units.size(); ++i) {
        const char16_t c = m_units[i];
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < m_units.size() && m_units[i + 1] >= 0xDC00 && m_units[i + 1] <= 0xDFFF) {
            const unsigned long cp = 0x10000 + ((static_cast<unsigned long>(c) - 0xD800) << 10) + (m_units[i + 1] - 0xDC00);
            m_wideView.push_back(static_cast<wchar_t>(cp));
            ++i;
        } else {
            m_wideView.push_back(static_cast<wchar_t>(c));
        }
    }
    return m_wideView.c_str();
#endif
}

std::string KivString::toUtf8() const {
    std::string out;
    for (std::size_t i = 0; i < m_units.size(); ++i) {
        unsigned long cp = m_units[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < m_units.size() && m_units[i + 1] >= 0xDC00 && m_units[i + 1] <= 0xDFFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (m_units[i + 1] - 0xDC00);
            ++i;
        }
        if (cp < 0x80) {
            out.push_back(static_cast<char>(cp));
        } else if (cp < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        } else if (cp < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        }
    }
    return out;
}

KivString KivString::fromUtf8(const std::string& utf8) {
    // Decodes UTF-8; a byte that does not start a valid sequence stands for itself (Latin-1).
    std::u16string out;
    const auto* s = reinterpret_cast<const unsigned char*>(utf8.data());
    const std::size_t n = utf8.size();
    std::size_t i = 0;
    while (i < n) {
        const unsigned char b = s[i];
        unsigned long cp = b;
        std::size_t extra = 0;
        if (b >= 0xC2 && b <= 0xDF) { cp = b & 0x1F; extra = 1; }
        else if (b >= 0xE0 && b <= 0xEF) { cp = b & 0x0F; extra = 2; }
        else if (b >= 0xF0 && b <= 0xF4) { cp = b & 0x07; extra = 3; }
        bool valid = extra > 0 && i + extra < n;  // the whole sequence lies inside the text
        for (std::size_t k = 1; valid && k <= extra; ++k) {
            if ((s[i + k] & 0xC0) != 0x80) valid = false;
            else cp = (cp << 6) | (s[i + k] & 0x3F);
        }
        const unsigned long minimum[] = {0, 0x80, 0x800, 0x10000};
        if (valid && (cp < minimum[extra] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF))) valid = false;
        if (!valid) {
            out.push_back(static_cast<char16_t>(b));
            ++i;
            continue;
        }
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out.push_back(static_cast<char16_t>(0xD800 + (cp >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
        } else {
            out.push_back(static_cast<char16_t>(cp));
        }
        i += extra + 1;
    }
    return KivString(std::move(out));
}
