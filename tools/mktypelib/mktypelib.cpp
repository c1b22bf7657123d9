// Build tool: writes the module's type library from the dispatch tables, with
// ICreateTypeLib2. Runs at build time under Wine (natively on Windows).
// Usage: mktypelib OUT.tlb
//        mktypelib --reference MEANINGS.txt OUT.md   (the member reference, KivReferenceWriter.cpp)
#include <cstdio>
#include <cwchar>

#include "KivLibrary.h"

int KivWriteReference(const wchar_t* meaningsPath, const wchar_t* outPath, const KivTypeLibDesc& desc);

int wmain(int argc, wchar_t** argv) {
    if (argc == 4 && std::wcscmp(argv[1], L"--reference") == 0) return KivWriteReference(argv[2], argv[3], KivLibraryDesc());
    if (argc != 2) {
        std::fwprintf(stderr, L"usage: mktypelib OUT.tlb | mktypelib --reference MEANINGS.txt OUT.md\n");
        return 2;
    }
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
    const HRESULT hr = KivBuildTypeLib(argv[1], KivLibraryDesc());
    CoUninitialize();
    if (FAILED(hr)) {
        std::fwprintf(stderr, L"mktypelib: failed with 0x%08lX\n", static_cast<unsigned long>(hr));
        return 1;
    }
    return 0;
}
