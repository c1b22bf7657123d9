// KivFileAccess. Portable.
#include "KivFileAccess.h"

#include <string>
#include <vector>

namespace {

bool isReadMode(const KivString& mode) {
    return mode == KivString(u"r") || mode == KivString(u"rb") || mode == KivString(u"rt");
}

KivString decodeUtf16(const unsigned char* b, std::size_t size, bool bigEndian) {
    std::u16string units;
    units.reserve(size / 2);
    for (std::size_t i = 0; i + 1 < size; i += 2) {
        const unsigned lo = bigEndian ? b[i + 1] : b[i];
        const unsigned hi = bigEndian ? b[i] : b[i + 1];
        units.push_back(static_cast<char16_t>(lo | (hi << 8)));
    }
    return KivString(std::move(units));
}

bool startsWith(const unsigned char* b, std::size_t size, const unsigned char* mark, std::size_t markSize) {
    if (size < markSize) return false;
    for (std::size_t i = 0; i < markSize; ++i)
        if (b[i] != mark[i]) return false;
    return true;
}

const unsigned char kUtf8Mark[] = {0xEF, 0xBB, 0xBF};
const unsigned char kUtf16LeMark[] = {0xFF, 0xFE};
const unsigned char kUtf16BeMark[] = {0xFE, 0xFF};

}  // namespace

KivFileAccess::KivFileAccess(const KivString& path, const KivString& mode, encodeType type) : m_type(type) {
    if (!isReadMode(mode) || path.isEmpty()) return;
#if defined(_WIN32)
    m_file = _wfopen(path.getStringW(), L"rb");  // binary: line ends reach the readers unchanged
#else
    m_file = std::fopen(path.toUtf8().c_str(), "rb");
#endif
}

KivFileAccess::~KivFileAccess() { close(); }

long KivFileAccess::getFileLength() {
    if (m_file == nullptr) return 0;
    if (std::fseek(m_file, 0, SEEK_END) != 0) return 0;
    const long length = std::ftell(m_file);
    std::fseek(m_file, 0, SEEK_SET);
    return length < 0 ? 0 : length;
}

std::size_t KivFileAccess::readFile(KivString& out, std::size_t count) const {
    out = KivString();
    if (m_file == nullptr || count == 0) return 0;
    if (std::fseek(m_file, 0, SEEK_SET) != 0) return 0;
    std::vector<unsigned char> bytes;
    std::size_t total = 0;
    unsigned char chunk[65536];
    while (total < count) {
        const std::size_t want = count - total < sizeof chunk ? count - total : sizeof chunk;
        const std::size_t got = std::fread(chunk, 1, want, m_file);
        if (got == 0) break;
        bytes.insert(bytes.end(), chunk, chunk + got);
        total += got;
    }
    out = decode(bytes.data(), bytes.size(), m_type);
    return total;
}

void KivFileAccess::close() {
    if (m_file != nullptr) {
        std::fclose(m_file);
        m_file = nullptr;
    }
}

KivString KivFileAccess::decode(const unsigned char* bytes, std::size_t size, encodeType type) {
    if (bytes == nullptr || size == 0) return KivString();
    switch (type) {
    case eUtf16LE:
        if (startsWith(bytes, size, kUtf16LeMark, 2)) return decodeUtf16(bytes + 2, size - 2, false);
        return decodeUtf16(bytes, size, false);
    case eUtf8:
        if (startsWith(bytes, size, kUtf8Mark, 3)) { bytes += 3; size -= 3; }
        return KivString::fromUtf8(std::string(reinterpret_cast<const char*>(bytes), size));
    case eAnsi:
    default:
        if (startsWith(bytes, size, kUtf8Mark, 3)) return decode(bytes, size, eUtf8);
        if (startsWith(bytes, size, kUtf16LeMark, 2)) return decodeUtf16(bytes + 2, size - 2, false);
        if (startsWith(bytes, size, kUtf16BeMark, 2)) return decodeUtf16(bytes + 2, size - 2, true);
        std::u16string units(size, u'\0');
        for (std::size_t i = 0; i < size; ++i) units[i] = static_cast<char16_t>(bytes[i]);
        return KivString(std::move(units));
    }
}
