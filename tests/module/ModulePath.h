// The built module's path as Windows sees it (the build tree is on Wine's drive Z:).
#pragma once

#include <string>

inline std::wstring kivModulePath() {
    std::wstring path = L"Z:" KIV_OCX_PATH_W;
    for (wchar_t& c : path)
        if (c == L'/') c = L'\\';
    return path;
}
