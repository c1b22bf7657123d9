#include "TestFiles.h"

#include "KivFileAccess.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>

#if defined(_WIN32)
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace {
KivString fromPath(const fs::path& p) { return KivString::fromUtf8(p.u8string()); }

// This process's id: test programs run side by side (one per test case), and their temporary
// folders must not meet.
unsigned long processId() {
#if defined(_WIN32)
    return GetCurrentProcessId();
#else
    return static_cast<unsigned long>(getpid());
#endif
}
}  // namespace

KivString sharedDataPath(const std::string& relative) {
    fs::path p = fs::path(KIV_SHARED_DIR) / "data" / relative;
#if defined(_WIN32)
    // The build tree is on Linux; Wine shows the Linux root as drive Z:.
    return KivString(u"Z:") + fromPath(p.lexically_normal().make_preferred());
#else
    return fromPath(p.lexically_normal());
#endif
}

std::string sharedDataNativePath(const std::string& relative) {
    return (fs::path(KIV_SHARED_DIR) / "data" / relative).lexically_normal().u8string();
}

std::vector<std::string> sharedDataFiles(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code ec;
    for (const fs::directory_entry& entry : fs::directory_iterator(fs::path(KIV_SHARED_DIR) / "data" / folder, ec))
        if (entry.is_regular_file()) names.push_back(entry.path().filename().u8string());
    std::sort(names.begin(), names.end());
    return names;
}

TempFile::TempFile(const std::string& bytes, const std::string& name) {
    static std::atomic<int> counter{0};
    fs::path folder = fs::temp_directory_path() / ("kiv-" + std::to_string(processId()) + "-" + std::to_string(counter++) +
                                                   "-" + std::to_string(reinterpret_cast<std::uintptr_t>(this)));
    fs::create_directories(folder);
    fs::path file = folder / name;
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    m_native = file.u8string();
    m_nativeFolder = folder.u8string();
    m_path = fromPath(file);
    m_folder = fromPath(folder);
}

TempFile::~TempFile() {
    std::error_code ec;
    fs::remove_all(fs::u8path(m_nativeFolder), ec);
}

bool fileIsOpenInThisProcess(const TempFile& file) {
    const fs::path target = fs::u8path(file.nativePath());
#if defined(_WIN32)
    // The C library opens without delete sharing: a rename fails while the file is open.
    fs::path moved = target;
    moved += ".probe";
    std::error_code ec;
    fs::rename(target, moved, ec);
    if (ec) return true;
    fs::rename(moved, target, ec);
    return false;
#else
    std::error_code ec;
    const fs::path canonical = fs::canonical(target, ec);
    for (const fs::directory_entry& entry : fs::directory_iterator("/proc/self/fd", ec)) {
        std::error_code linkError;
        const fs::path pointsAt = fs::read_symlink(entry.path(), linkError);
        if (!linkError && pointsAt == canonical) return true;
    }
    return false;
#endif
}
