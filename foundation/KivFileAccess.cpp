// KivFileAccess. Portable.
#include "KivFileAccess.h"

#include <memory>
#include <new>
#include <string>

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
    // Binary: line ends reach the readers unchanged. The size is taken once, as the file opens.
    m_file = kivfile_platform::openRegularFile(path, m_size);
}

KivFileAccess::~KivFileAccess() { close(); }

long KivFileAccess::getFileLength() { return m_file != nullptr ? m_size : 0; }

std::size_t KivFileAccess::readFile(KivString& out, std::size_t count) const {
    out = KivString();
    if (m_file == nullptr || count == 0 || m_size <= 0) return 0;
    // From the start, every time (a fresh file is there already).
    if (!m_atStart && std::fseek(m_file, 0, SEEK_SET) != 0) return 0;
    m_atStart = false;
    // The file's size bounds the buffer, whatever count the caller asks for.
    const std::size_t want = count < static_cast<std::size_t>(m_size) ? count : static_cast<std::size_t>(m_size);
    std::unique_ptr<unsigned char[]> bytes(new (std::nothrow) unsigned char[want]);
    if (!bytes) return 0;  // no memory for the file: nothing read
    std::size_t total = 0;
    while (total < want) {
        const std::size_t got = std::fread(bytes.get() + total, 1, want - total, m_file);
        if (got == 0) break;
        total += got;
    }
    out = decode(bytes.get(), total, m_type);
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
        // Each byte is the unit of the same value, converted in one pass.
        return KivString(std::u16string(bytes, bytes + size));
    }
}
