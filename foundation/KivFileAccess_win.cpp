// Opening a file for KivFileAccess on Windows: _wfopen, then only a file on disk is kept (a device
// name such as CON would block the read, a pipe would too).
#include <windows.h>

#include <io.h>

#include <cstdio>

#include "KivFileAccess.h"

std::FILE* kivfile_platform::openRegularFile(const KivString& path, long& size) {
    size = 0;
    std::FILE* file = _wfopen(path.getStringW(), L"rb");
    if (file == nullptr) return nullptr;
    const HANDLE handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
    LARGE_INTEGER bytes{};
    if (handle == INVALID_HANDLE_VALUE || GetFileType(handle) != FILE_TYPE_DISK || !GetFileSizeEx(handle, &bytes)) {
        std::fclose(file);
        return nullptr;
    }
    size = bytes.QuadPart <= 0x7FFFFFFF ? static_cast<long>(bytes.QuadPart) : 0;
    std::setvbuf(file, nullptr, _IONBF, 0);  // read whole, straight into the caller's buffer
    return file;
}
