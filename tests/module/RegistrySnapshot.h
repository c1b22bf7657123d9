// A part of the registry as text, for tests that compare what registration and installation write:
// every key and every value, "Key\\Sub\\" for a key and "Key\\Sub\\[Name]" for a value (the default
// value is "[]"), mapped to the value's data (strings as text, a REG_DWORD in decimal, other types
// as "(type N)" and their bytes in hexadecimal).
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

using RegistrySnapshot = std::map<std::wstring, std::wstring>;

// The whole of HKEY_CLASSES_ROOT.
RegistrySnapshot snapshotClassesRoot();
// HKEY_LOCAL_MACHINE\Software and HKEY_CURRENT_USER\Software alike, their keys named "HKLM\Software\..."
// and "HKCU\Software\...": where an installer keeps its records of a product (the machine's classes,
// Software\Classes, are there too).
RegistrySnapshot snapshotSoftware();

// The entries of `after` that `before` does not have.
RegistrySnapshot addedEntries(const RegistrySnapshot& before, const RegistrySnapshot& after);

// The differences between two snapshots, one line each ("+ key = value" only in `b`, "- key = value"
// only in `a`, "~ key: a -> b" changed), leaving out the entries `ignore` accepts.
std::vector<std::string> snapshotDifferences(const RegistrySnapshot& a, const RegistrySnapshot& b,
                                             bool (*ignore)(const std::wstring& key) = nullptr);
