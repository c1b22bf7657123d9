// What registering a class writes under HKEY_CLASSES_ROOT, as MFC's registration functions write it:
// one list of entries, which DllRegisterServer writes and mktypelib turns into the installer's
// registry data, so that registration and installation cannot differ. Win32 side.
#pragma once

#include <string>
#include <vector>

#include "KivModule.h"

struct KivRegistryEntry {
    std::wstring key;    // under HKEY_CLASSES_ROOT
    bool hasValue;       // false: the key alone, with no value
    std::wstring name;   // the value's name; empty: the key's default value
    std::wstring value;  // a REG_SZ
};

// Every class of the module runs in its host's single-threaded apartment.
inline constexpr wchar_t kKivThreadingModel[] = L"Apartment";

// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}", upper case, as the registry spells class ids.
std::wstring KivGuidText(const GUID& guid);

// The entries of one class in the order they are written (AfxOleRegisterControlClass for a control,
// AfxOleRegisterPropertyPageClass for a page), for the module file at `modulePath`. The class's
// name is its string of the module's string table (loaded from kivmodule::instance()).
std::vector<KivRegistryEntry> KivClassRegistration(const KivFactoryEntry& e, const std::wstring& modulePath);
