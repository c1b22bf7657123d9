// KivFileAccess: whole-file, read-only text reading. Portable: uses the C library; the file is
// opened by KivFileAccess_win.cpp or KivFileAccess_posix.cpp. It never writes.
//
// Only a regular file opens: a folder, a device (CON, NUL, a pipe) or anything else that is not a
// file on disk leaves the object unopened, so a host's odd file name can never block a read. On
// POSIX a backslash in the path is a folder separator (the module's paths are Windows paths).
//
// Decoding (encodeType):
//  - eAnsi (1), the only value the module passes: a byte-order mark at the start of the file
//    decides the decoding and is dropped (EF BB BF: UTF-8; FF FE: UTF-16 little-endian;
//    FE FF: UTF-16 big-endian). Without a mark each byte becomes the code unit of the same value
//    (Latin-1), so 8-bit linetype and pattern files read as the same characters.
//  - eUtf8 (2): UTF-8, a leading mark dropped; an invalid byte stands for itself (Latin-1).
//  - eUtf16LE (3): UTF-16 little-endian, a leading mark dropped; an odd last byte is ignored.
#pragma once

#include <cstddef>
#include <cstdio>

#include "KivString.h"

class KivFileAccess {
public:
    enum encodeType { eAnsi = 1, eUtf8 = 2, eUtf16LE = 3 };

    // Opens `path` for reading. Only read modes are accepted ("r", "rb", "rt"); any mode that
    // could write leaves the object unopened. Failing to open is reported by isOpen() only.
    KivFileAccess(const KivString& path, const KivString& mode, encodeType type);
    KivFileAccess(const KivFileAccess&) = delete;
    KivFileAccess& operator=(const KivFileAccess&) = delete;
    virtual ~KivFileAccess();

    int isOpen() const { return m_file != nullptr ? 1 : 0; }
    // The file's length in bytes, as it was when the file opened; 0 when not open.
    long getFileLength();
    // Reads up to `count` bytes from the start, decodes them into `out`; returns the bytes read.
    std::size_t readFile(KivString& out, std::size_t count) const;
    void close();

    // Decoding of a byte block as readFile does it (exposed for tests and fuzzing).
    static KivString decode(const unsigned char* bytes, std::size_t size, encodeType type);

private:
    std::FILE* m_file = nullptr;
    long m_size = 0;               // taken when the file opened
    mutable bool m_atStart = true;  // no read has moved the file position yet
    encodeType m_type;
};

namespace kivfile_platform {
// Opens `path` for binary reading, unbuffered (the readers read the file whole), when it names a
// regular file, and gives its size in bytes (0 when it does not fit a long); nullptr otherwise.
std::FILE* openRegularFile(const KivString& path, long& size);
}  // namespace kivfile_platform
