// Build tool: writes everything derived from the module's tables (the dispatch tables through
// KivLibraryDesc(), the class table KivFactories()): the type library, with ICreateTypeLib2, and the
// outputs of the writers in KivWriters.h. Runs at build time under Wine (natively on Windows).
// Usage: mktypelib [meanings=PATH] OUTPUT=PATH... with OUTPUT one of the names in kOutputs;
// `meanings` is an input: the words of the member reference (reference-meanings.txt).
#include <cstdio>
#include <cwchar>
#include <string>

#include "KivCom.h"
#include "KivWriters.h"

namespace {

bool writeTypeLib(const KivModuleModel& model, const wchar_t* path) {
    return SUCCEEDED(KivBuildTypeLib(path, *model.library));
}

struct Output {
    const wchar_t* name;
    bool (*write)(const KivModuleModel&, const wchar_t*);
};
const Output kOutputs[] = {
    {L"tlb", &writeTypeLib},
    {L"header", &KivWriteHeader},
    {L"manifest", &KivWriteManifest},
    {L"registry-idt", &KivWriteInstallerRegistry},
    {L"typelib-idt", &KivWriteInstallerTypeLib},
    {L"reference", &KivWriteReference},
};

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc < 2) {
        std::fwprintf(stderr, L"usage: mktypelib [meanings=PATH] OUTPUT=PATH... (OUTPUT:");
        for (const Output& o : kOutputs) std::fwprintf(stderr, L" %ls", o.name);
        std::fwprintf(stderr, L")\n");
        return 2;
    }
    // The class names come from the module's string table, linked into this tool too.
    kivmodule::setInstance(GetModuleHandleW(nullptr));
    KivModuleModel model;
    std::string error;
    if (!KivReadModule(model, error)) {
        std::fprintf(stderr, "mktypelib: %s\n", error.c_str());
        return 1;
    }
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
    int status = 0;
    for (int i = 1; i < argc && status == 0; ++i) {
        const std::wstring arg = argv[i];
        const std::wstring::size_type equals = arg.find(L'=');
        if (arg.compare(0, equals, L"meanings") == 0) {  // an input, for the outputs after it
            model.referenceMeanings = arg.substr(equals + 1);
            continue;
        }
        const Output* output = nullptr;
        for (const Output& o : kOutputs)
            if (equals != std::wstring::npos && arg.compare(0, equals, o.name) == 0) output = &o;
        if (output == nullptr) {
            std::fwprintf(stderr, L"mktypelib: unknown output %ls\n", arg.c_str());
            status = 2;
        } else if (!output->write(model, arg.c_str() + equals + 1)) {
            std::fwprintf(stderr, L"mktypelib: could not write %ls\n", arg.c_str());
            status = 1;
        }
    }
    CoUninitialize();
    return status;
}
