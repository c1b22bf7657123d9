// The outputs of mktypelib, one writer each, all from the same walk of the module's tables
// (KivModuleWalk.h). Each returns false when its file cannot be written. Win32 side (a build tool).
#pragma once

#include "KivModuleWalk.h"

// The C/C++ header for hosts: GUIDs, a DISPID for every member and event, the Colors enumeration.
bool KivWriteHeader(const KivModuleModel& model, const wchar_t* path);
// The private assembly manifest for activation without registration.
bool KivWriteManifest(const KivModuleModel& model, const wchar_t* path);
// The installer's registration data: the Registry table, as an MSI table file (.idt).
bool KivWriteInstallerRegistry(const KivModuleModel& model, const wchar_t* path);
// The installer's TypeLib table (.idt): the library the installer registers from the module's file.
bool KivWriteInstallerTypeLib(const KivModuleModel& model, const wchar_t* path);
// The member reference (docs/reference.md): every member from the tables, in the words of the
// meanings file named by model.referenceMeanings. Gaps are written into it and listed on stderr.
bool KivWriteReference(const KivModuleModel& model, const wchar_t* path);
