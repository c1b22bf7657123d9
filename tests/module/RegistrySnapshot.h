// The whole of HKEY_CLASSES_ROOT as text, for tests that compare what registration and installation
// write: every key and every value, "Key\\Sub\\" for a key and "Key\\Sub\\[Name]" for a value (the
// default value is "[]"), mapped to the value's data (REG_SZ as text, other types by number).
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

using RegistrySnapshot = std::map<std::wstring, std::wstring>;

RegistrySnapshot snapshotClassesRoot();

// The entries of `after` that `before` does not have.
RegistrySnapshot addedEntries(const RegistrySnapshot& before, const RegistrySnapshot& after);

// The differences between two snapshots, one line each ("+ key = value" only in `b`, "- key = value"
// only in `a`, "~ key: a -> b" changed), leaving out the entries `ignore` accepts.
std::vector<std::string> snapshotDifferences(const RegistrySnapshot& a, const RegistrySnapshot& b,
                                             bool (*ignore)(const std::wstring& key) = nullptr);
