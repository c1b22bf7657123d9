// The registry entries of each class. Win32 side.
#include "KivRegistration.h"

#include "KivCom.h"
#include "KivLibrary.h"

namespace {
std::wstring loadText(UINT id) {
    wchar_t text[256];
    const int n = LoadStringW(kivmodule::instance(), id, text, 256);
    return n > 0 ? std::wstring(text, static_cast<std::size_t>(n)) : std::wstring();
}
}  // namespace

std::wstring KivGuidText(const GUID& guid) {
    wchar_t text[40];
    StringFromGUID2(guid, text, 40);
    return text;
}

std::vector<KivRegistryEntry> KivClassRegistration(const KivFactoryEntry& e, const std::wstring& modulePath) {
    const std::wstring clsid = KivGuidText(*e.clsid);
    const std::wstring key = L"CLSID\\" + clsid;
    const std::wstring name = loadText(e.nameId);
    std::vector<KivRegistryEntry> entries = {
        {key, true, L"", name},
        {key + L"\\InprocServer32", true, L"", modulePath},
        {key + L"\\InprocServer32", true, L"ThreadingModel", kKivThreadingModel},
    };
    if (!e.isControl) return entries;
    const KivTypeLibDesc& library = KivLibraryDesc();
    const std::wstring progId = e.progId;
    entries.insert(entries.end(), {
        {progId, true, L"", name},
        {progId + L"\\CLSID", true, L"", clsid},
        {key + L"\\ProgID", true, L"", progId},
        {key + L"\\ToolboxBitmap32", true, L"", modulePath + L", " + std::to_wstring(e.bitmapId)},
        {key + L"\\MiscStatus", true, L"", L"0"},
        {key + L"\\MiscStatus\\1", true, L"", std::to_wstring(e.miscStatus)},
        {key + L"\\Control", false, L"", L""},
        {key + L"\\TypeLib", true, L"", KivGuidText(*library.libid)},
        {key + L"\\Version", true, L"", std::to_wstring(library.major) + L"." + std::to_wstring(library.minor)},
    });
    return entries;
}
