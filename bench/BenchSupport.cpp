#include "BenchSupport.h"

#include <filesystem>

std::string kivLargestSharedFile(const std::string& folder) {
    namespace fs = std::filesystem;
    std::string best;
    std::uintmax_t bestSize = 0;
    std::error_code ec;
    for (const fs::directory_entry& entry : fs::directory_iterator(fs::path(KIV_SHARED_DIR) / "data" / folder, ec)) {
        if (!entry.is_regular_file() || entry.file_size() < bestSize) continue;
        bestSize = entry.file_size();
        best = entry.path().u8string();
    }
    return best;
}
