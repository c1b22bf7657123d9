// The shared walk of mktypelib's writers. Win32 side (a build tool).
#include "KivModuleWalk.h"

#include <cstdio>
#include <cwchar>

#include "KivRegistration.h"
#include "KivVersion.h"

namespace {
// The ProgID of every class is "KIVLORQCONTROLS." + its class name without the leading C + ".1".
bool classNameOfProgId(const std::string& progId, std::string& name) {
    static const std::string prefix = "KIVLORQCONTROLS.", suffix = ".1";
    if (progId.size() <= prefix.size() + suffix.size() || progId.compare(0, prefix.size(), prefix) != 0 ||
        progId.compare(progId.size() - suffix.size(), suffix.size(), suffix) != 0)
        return false;
    name = progId.substr(prefix.size(), progId.size() - prefix.size() - suffix.size());
    return true;
}
}  // namespace

std::string KivAscii(const wchar_t* text) {
    std::string s;
    for (; text != nullptr && *text != 0; ++text) s.push_back(*text < 128 ? static_cast<char>(*text) : '?');
    return s;
}

std::string KivAscii(const std::wstring& text) { return KivAscii(text.c_str()); }

std::string KivGuidAscii(const GUID& guid) { return KivAscii(KivGuidText(guid)); }

bool KivWriteTextFile(const wchar_t* path, const std::string& text) {
    FILE* file = _wfopen(path, L"wb");
    if (file == nullptr) return false;
    const bool written = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    return std::fclose(file) == 0 && written;
}

bool KivReadModule(KivModuleModel& model, std::string& error) {
    model.library = &KivLibraryDesc();
    model.version = KIV_VERSION_TEXT;
    model.moduleName = KIV_MODULE_NAME;
    model.moduleFile = KIV_MODULE_FILE;
    model.classes.clear();
    for (const KivFactoryEntry& factory : KivFactories()) {
        KivModuleClass c{&factory, nullptr, {}};
        if (factory.isControl) {
            for (int i = 0; i < model.library->coclassCount; ++i)
                if (IsEqualCLSID(*model.library->coclasses[i].clsid, *factory.clsid)) c.coclass = &model.library->coclasses[i];
            if (c.coclass == nullptr) {
                error = "the control " + KivAscii(factory.progId) + " has no coclass in the type library";
                return false;
            }
            c.name = KivAscii(c.coclass->name);
        } else if (!classNameOfProgId(KivAscii(factory.progId), c.name)) {
            error = "the page's ProgID " + KivAscii(factory.progId) + " does not name its class";
            return false;
        }
        model.classes.push_back(c);
    }
    return true;
}
