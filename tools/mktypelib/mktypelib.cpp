// Build tool: writes the module's type library from the dispatch tables, with
// ICreateTypeLib2. Runs at build time under Wine (natively on Windows). Usage: mktypelib OUT.tlb
#include <cstdio>

#include "KivLibrary.h"

int wmain(int argc, wchar_t** argv) {
    if (argc != 2) {
        std::fwprintf(stderr, L"usage: mktypelib OUT.tlb\n");
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
