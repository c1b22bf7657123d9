// Opening a file for KivFileAccess on POSIX: the path as UTF-8, a backslash read as "/", regular
// files only.
#include <sys/stat.h>

#include <cstdio>
#include <string>

#include "KivFileAccess.h"

std::FILE* kivfile_platform::openRegularFile(const KivString& path, long& size) {
    size = 0;
    std::string native = path.toUtf8();
    for (char& c : native)
        if (c == '\\') c = '/';
    std::FILE* file = std::fopen(native.c_str(), "rb");
    if (file == nullptr) return nullptr;
    struct stat info {};
    if (fstat(fileno(file), &info) != 0 || !S_ISREG(info.st_mode)) {
        std::fclose(file);  // a folder or a device: not a file to read
        return nullptr;
    }
    size = info.st_size <= 0x7FFFFFFF ? static_cast<long>(info.st_size) : 0;
    std::setvbuf(file, nullptr, _IONBF, 0);  // read whole, straight into the caller's buffer
    return file;
}
