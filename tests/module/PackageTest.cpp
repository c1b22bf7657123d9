// The package's module and type library under Wine: the module's VERSIONINFO carries the release
// version (numbers and strings) and its own file name; the type library shipped as a file is,
// byte for byte, the module's resource TYPELIB 1, and reads back as the library 1.0 of 20 types.
#include <gtest/gtest.h>
#include <windows.h>
#include <oleauto.h>

#include <string>

#include "KivCom.h"

namespace {

std::wstring packageFile(const wchar_t* name) {
    std::wstring path = std::wstring(L"Z:") + KIV_PACKAGE_DIR_W + L"\\" + name;
    for (wchar_t& c : path)
        if (c == L'/') c = L'\\';
    return path;
}

std::string narrow(const std::wstring& w) {
    std::string s;
    for (wchar_t c : w) s.push_back(c < 128 ? static_cast<char>(c) : '?');
    return s;
}

std::string readAll(const std::wstring& path) {
    std::string bytes;
    HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return bytes;
    char buffer[65536];
    DWORD n = 0;
    while (ReadFile(file, buffer, sizeof buffer, &n, nullptr) && n > 0) bytes.append(buffer, n);
    CloseHandle(file);
    return bytes;
}

}  // namespace

TEST(Package, TheModulesVersionInfoCarriesTheReleaseVersion) {
    const std::wstring module = packageFile(L"KivLorqControls8x64.ocx");
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(module.c_str(), &ignored);
    ASSERT_GT(size, 0u);
    std::string info(size, '\0');
    ASSERT_TRUE(GetFileVersionInfoW(module.c_str(), 0, size, &info[0]));
    VS_FIXEDFILEINFO* fixed = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(&info[0], L"\\", reinterpret_cast<void**>(&fixed), &length));
    const auto numbers = [](DWORD ms, DWORD ls) {
        return std::to_string(HIWORD(ms)) + "." + std::to_string(LOWORD(ms)) + "." + std::to_string(HIWORD(ls)) + "." +
               std::to_string(LOWORD(ls));
    };
    EXPECT_EQ(numbers(fixed->dwFileVersionMS, fixed->dwFileVersionLS), narrow(KIV_VERSION_W));
    EXPECT_EQ(numbers(fixed->dwProductVersionMS, fixed->dwProductVersionLS), narrow(KIV_VERSION_W));
    const std::pair<const wchar_t*, std::wstring> strings[] = {
        {L"FileVersion", KIV_VERSION_W},
        {L"ProductVersion", KIV_VERSION_W},
        {L"OriginalFilename", L"KivLorqControls8x64.ocx"},
        {L"InternalName", L"KivLorqControls8x64"},
        {L"ProductName", L"KivLorqControls"},
    };
    for (const auto& [name, expected] : strings) {
        wchar_t* value = nullptr;
        ASSERT_TRUE(VerQueryValueW(&info[0], (std::wstring(L"\\StringFileInfo\\040904B0\\") + name).c_str(),
                                   reinterpret_cast<void**>(&value), &length))
            << narrow(name);
        EXPECT_EQ(narrow(value), narrow(expected)) << narrow(name);
    }
}

TEST(Package, TheTypeLibraryFileIsTheModulesResourceOne) {
    HMODULE module = LoadLibraryExW(packageFile(L"KivLorqControls8x64.ocx").c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr);
    HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(1), L"TYPELIB");
    ASSERT_NE(resource, nullptr);
    const char* bytes = static_cast<const char*>(LockResource(LoadResource(module, resource)));
    const std::string embedded(bytes, SizeofResource(module, resource));
    FreeLibrary(module);
    const std::string file = readAll(packageFile(L"KivLorqControls8x64.tlb"));
    ASSERT_FALSE(file.empty());
    EXPECT_TRUE(file == embedded) << file.size() << " bytes in the file, " << embedded.size() << " in the module";

    CoInitialize(nullptr);
    {
        KivComPtr<ITypeLib> lib;
        ASSERT_EQ(LoadTypeLibEx(packageFile(L"KivLorqControls8x64.tlb").c_str(), REGKIND_NONE, lib.put()), S_OK);
        TLIBATTR* attr = nullptr;
        ASSERT_EQ(lib->GetLibAttr(&attr), S_OK);
        const GUID libid = {0x64000C4D, 0xB3B0, 0x460E, {0x85, 0xBC, 0x05, 0xC9, 0x0B, 0x5A, 0xDC, 0x21}};
        EXPECT_TRUE(IsEqualGUID(attr->guid, libid));
        EXPECT_EQ(attr->wMajorVerNum, 1);
        EXPECT_EQ(attr->wMinorVerNum, 0);
        lib->ReleaseTLibAttr(attr);
        EXPECT_EQ(lib->GetTypeInfoCount(), 20u);
    }
    CoUninitialize();
}
