#include "RegistrySnapshot.h"

#include <algorithm>

namespace {

// A value's data as text: a string as itself, a number in decimal, anything else as its type and
// its bytes in hexadecimal (so that a changed value of any type shows).
std::wstring valueText(DWORD type, const BYTE* data, DWORD length) {
    if (type == REG_SZ || type == REG_EXPAND_SZ)
        return std::wstring(reinterpret_cast<const wchar_t*>(data), length / sizeof(wchar_t)).c_str();
    if (type == REG_DWORD && length == sizeof(DWORD)) return std::to_wstring(*reinterpret_cast<const DWORD*>(data));
    std::wstring text = L"(type " + std::to_wstring(type) + L")";
    const wchar_t* digits = L"0123456789abcdef";
    for (DWORD i = 0; i < length; ++i) text += {L' ', digits[data[i] >> 4], digits[data[i] & 15]};
    return text;
}

// Every key and value under `parent`\`path`, named in the snapshot `prefix` followed by their path.
void snapshotKey(HKEY parent, const std::wstring& path, const std::wstring& prefix, RegistrySnapshot& out) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    out[prefix + path + L"\\"] = L"";  // the key itself
    // Room for its longest name and its largest value.
    DWORD longestKey = 0, longestName = 0, largestData = 0;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, &longestKey, nullptr, nullptr, &longestName, &largestData,
                     nullptr, nullptr);
    std::vector<wchar_t> name(std::max(longestKey, longestName) + 1);
    std::vector<BYTE> data(largestData + sizeof(wchar_t));
    for (DWORD i = 0;; ++i) {
        DWORD nameLength = static_cast<DWORD>(name.size()), dataLength = static_cast<DWORD>(data.size()), type = 0;
        if (RegEnumValueW(key, i, name.data(), &nameLength, nullptr, &type, data.data(), &dataLength) != ERROR_SUCCESS) break;
        out[prefix + path + L"\\[" + name.data() + L"]"] = valueText(type, data.data(), dataLength);
    }
    for (DWORD i = 0;; ++i) {
        DWORD nameLength = static_cast<DWORD>(name.size());
        if (RegEnumKeyExW(key, i, name.data(), &nameLength, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
        snapshotKey(parent, path.empty() ? name.data() : path + L"\\" + name.data(), prefix, out);
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
    snapshotKey(HKEY_CLASSES_ROOT, L"", L"", s);
    return s;
}

RegistrySnapshot snapshotSoftware() {
    RegistrySnapshot s;
    snapshotKey(HKEY_LOCAL_MACHINE, L"Software", L"HKLM\\", s);
    snapshotKey(HKEY_CURRENT_USER, L"Software", L"HKCU\\", s);
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
