#include "RegistrySnapshot.h"

namespace {

void snapshotKey(HKEY parent, const std::wstring& path, RegistrySnapshot& out) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    out[path + L"\\"] = L"";  // the key itself
    wchar_t name[512];
    BYTE data[4096];
    for (DWORD i = 0;; ++i) {
        DWORD nameLength = 512, dataLength = sizeof data, type = 0;
        if (RegEnumValueW(key, i, name, &nameLength, nullptr, &type, data, &dataLength) != ERROR_SUCCESS) break;
        std::wstring value = type == REG_SZ ? std::wstring(reinterpret_cast<wchar_t*>(data)) : L"(type " + std::to_wstring(type) + L")";
        out[path + L"\\[" + name + L"]"] = value;
    }
    for (DWORD i = 0;; ++i) {
        DWORD nameLength = 512;
        if (RegEnumKeyExW(key, i, name, &nameLength, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
        snapshotKey(parent, path.empty() ? name : path + L"\\" + name, out);
    }
    RegCloseKey(key);
}

std::string ascii(const std::wstring& w) {
    std::string s;
    for (wchar_t c : w) s.push_back(c < 128 ? static_cast<char>(c) : '?');
    return s;
}

}  // namespace

RegistrySnapshot snapshotClassesRoot() {
    RegistrySnapshot s;
    snapshotKey(HKEY_CLASSES_ROOT, L"", s);
    return s;
}

RegistrySnapshot addedEntries(const RegistrySnapshot& before, const RegistrySnapshot& after) {
    RegistrySnapshot added;
    for (const auto& [k, v] : after)
        if (before.find(k) == before.end()) added[k] = v;
    return added;
}

std::vector<std::string> snapshotDifferences(const RegistrySnapshot& a, const RegistrySnapshot& b,
                                             bool (*ignore)(const std::wstring& key)) {
    std::vector<std::string> lines;
    for (const auto& [k, v] : a) {
        if (ignore != nullptr && ignore(k)) continue;
        const auto it = b.find(k);
        if (it == b.end()) lines.push_back("- " + ascii(k) + " = " + ascii(v));
        else if (it->second != v) lines.push_back("~ " + ascii(k) + ": " + ascii(v) + " -> " + ascii(it->second));
    }
    for (const auto& [k, v] : b)
        if ((ignore == nullptr || !ignore(k)) && a.find(k) == a.end()) lines.push_back("+ " + ascii(k) + " = " + ascii(v));
    return lines;
}
