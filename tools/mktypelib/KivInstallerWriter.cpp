// Writes the installer's registration data as MSI tables (.idt files, imported into the package
// that wixl builds from tools/installer/KivLorqControls.wxs): the Registry table, exactly the
// entries DllRegisterServer writes for each class (KivClassRegistration), and the TypeLib table,
// from which the installer registers the library held in the module file, as DllRegisterServer
// does. Registration is data, not a call into the module. Win32 side (a build tool).
#include <cstdio>

#include "KivRegistration.h"
#include "KivWriters.h"

namespace {

// Names the installer's template gives the module's component, its file and the feature.
const char kComponent[] = "KivModule";
const wchar_t kModuleFileReference[] = L"[#KivModuleFile]";  // formatted: the installed file's full path
const char kFeature[] = "KivControls";

// A text written into a formatted column as itself: the installer reads [ ] as references.
std::string literal(const std::wstring& text) {
    std::string s;
    for (wchar_t c : text) {
        if (c == L'[') s += "[\\[]";
        else if (c == L']') s += "[\\]]";
        else s.push_back(c < 128 ? static_cast<char>(c) : '?');
    }
    return s;
}

// A value whose module path stays a reference for the installer to resolve; the rest is literal.
std::string formatted(const std::wstring& value) {
    const std::wstring reference = kModuleFileReference;
    std::string out;
    std::wstring::size_type from = 0;
    for (std::wstring::size_type at; (at = value.find(reference, from)) != std::wstring::npos; from = at + reference.size())
        out += literal(value.substr(from, at - from)) + KivAscii(reference);
    return out + literal(value.substr(from));
}

}  // namespace

bool KivWriteInstallerRegistry(const KivModuleModel& model, const wchar_t* path) {
    // HKEY_CLASSES_ROOT is root 0. A key without a value is the name "*": created at installation and
    // removed at uninstallation (a key whose values are removed goes with its last value; one with no
    // value would otherwise stay behind, and its parents with it).
    std::string t = "Registry\tRoot\tKey\tName\tValue\tComponent_\r\ns72\ti2\tl255\tL255\tL0\ts72\r\nRegistry\tRegistry\r\n";
    int row = 0;
    for (const KivModuleClass& c : model.classes) {
        for (const KivRegistryEntry& e : KivClassRegistration(*c.factory, kModuleFileReference)) {
            char id[32];
            std::snprintf(id, sizeof id, "KivRegistry%03d", ++row);
            t += std::string(id) + "\t0\t" + literal(e.key) + "\t" + (e.hasValue ? literal(e.name) : "*") + "\t" +
                 (e.hasValue ? formatted(e.value) : "") + "\t" + kComponent + "\r\n";
        }
    }
    return KivWriteTextFile(path, t);
}

bool KivWriteInstallerTypeLib(const KivModuleModel& model, const wchar_t* path) {
    const KivTypeLibDesc& lib = *model.library;
    // Version: the major version above the low 8 bits, the minor in them.
    std::string t = "LibID\tLanguage\tComponent_\tVersion\tDescription\tDirectory_\tFeature_\tCost\r\n"
                    "s38\ti2\ts72\tI4\tL128\tS72\ts38\tI4\r\n"
                    "TypeLib\tLibID\tLanguage\tComponent_\r\n";
    t += KivGuidAscii(*lib.libid) + "\t" + std::to_string(LANGIDFROMLCID(lib.lcid)) + "\t" + kComponent + "\t" +
         std::to_string((lib.major << 8) | lib.minor) + "\t" + literal(lib.help) + "\t\t" + kFeature + "\t\r\n";
    return KivWriteTextFile(path, t);
}
