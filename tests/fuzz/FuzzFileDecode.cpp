// Fuzz target: a file's bytes decoded as the module reads them. Each of the three decodings must
// give at most one character per byte (per two for UTF-16), and the bytes written as a file and read
// whole through KivFileAccess must give exactly the decoding of the bytes, its length the file's.
#include <cstddef>
#include <cstdint>

#include "FuzzSupport.h"
#include "KivFileAccess.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using kivfuzz::broken;
    if (KivFileAccess::decode(data, size, KivFileAccess::eAnsi).length() > static_cast<int>(size)) broken("ANSI longer");
    if (KivFileAccess::decode(data, size, KivFileAccess::eUtf8).length() > static_cast<int>(size)) broken("UTF-8 longer");
    if (KivFileAccess::decode(data, size, KivFileAccess::eUtf16LE).length() > static_cast<int>(size / 2))
        broken("UTF-16 longer");

    static kivfuzz::ScratchFolder folder;
    const KivString path = folder.write("decode.txt", data, size);
    KivFileAccess file(path, KivString(u"r"), KivFileAccess::eAnsi);
    if (!file.isOpen()) broken("a regular file did not open");
    if (file.getFileLength() != static_cast<long>(size)) broken("length differs from the file's");
    KivString whole;
    if (file.readFile(whole, size) != size) broken("short read");
    if (!(whole == KivFileAccess::decode(data, size, KivFileAccess::eAnsi))) broken("read differs from the decoding");
    KivString part;
    file.readFile(part, size / 2);  // a part, after the whole: read from the start again
    return 0;
}
