// Writes KivLorqControls8x64.manifest: the module as a private side-by-side assembly, placed beside
// the module file. A host whose application manifest depends on it creates the controls by ProgID
// or class id and gets their type library with nothing registered. Win32 side (a build tool).
#include <oleidl.h>

#include "KivRegistration.h"
#include "KivWriters.h"

namespace {

// The names an assembly manifest gives the OLEMISC_ flags.
struct MiscName {
    DWORD flag;
    const char* name;
};
const MiscName kMiscNames[] = {
    {OLEMISC_RECOMPOSEONRESIZE, "recomposeonresize"},
    {OLEMISC_ONLYICONIC, "onlyiconic"},
    {OLEMISC_INSERTNOTREPLACE, "insertnotreplace"},
    {OLEMISC_STATIC, "static"},
    {OLEMISC_CANTLINKINSIDE, "cantlinkinside"},
    {OLEMISC_CANLINKBYOLE1, "canlinkbyole1"},
    {OLEMISC_ISLINKOBJECT, "islinkobject"},
    {OLEMISC_INSIDEOUT, "insideout"},
    {OLEMISC_ACTIVATEWHENVISIBLE, "activatewhenvisible"},
    {OLEMISC_RENDERINGISDEVICEINDEPENDENT, "renderingisdeviceindependent"},
    {OLEMISC_INVISIBLEATRUNTIME, "invisibleatruntime"},
    {OLEMISC_ALWAYSRUN, "alwaysrun"},
    {OLEMISC_ACTSLIKEBUTTON, "actslikebutton"},
    {OLEMISC_ACTSLIKELABEL, "actslikelabel"},
    {OLEMISC_NOUIACTIVATE, "nouiactivate"},
    {OLEMISC_ALIGNABLE, "alignable"},
    {OLEMISC_SIMPLEFRAME, "simpleframe"},
    {OLEMISC_SETCLIENTSITEFIRST, "setclientsitefirst"},
    {OLEMISC_IMEMODE, "imemode"},
    {OLEMISC_IGNOREACTIVATEWHENVISIBLE, "ignoreactivatewhenvisible"},
    {OLEMISC_WANTSTOMENUMERGE, "wantstomenumerge"},
    {OLEMISC_SUPPORTSMULTILEVELUNDO, "supportsmultilevelundo"},
};

// "recomposeonresize,cantlinkinside,...", or false when a flag has no name.
bool miscStatusText(DWORD flags, std::string& text) {
    text.clear();
    for (const MiscName& m : kMiscNames) {
        if ((flags & m.flag) == 0) continue;
        text += (text.empty() ? "" : ",") + std::string(m.name);
        flags &= ~m.flag;
    }
    return flags == 0;
}

}  // namespace

bool KivWriteManifest(const KivModuleModel& model, const wchar_t* path) {
    const KivTypeLibDesc& lib = *model.library;
    const std::string libid = KivGuidAscii(*lib.libid);
    const std::string threading = KivAscii(kKivThreadingModel);
    std::string m =
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
        "<!-- " + model.moduleName + " " + model.version +
        ": a private assembly. Place this file beside " + model.moduleFile +
        "; a host whose application manifest\n"
        "     depends on this assembly creates the controls without anything registered. Written by the build. -->\n"
        "<assembly xmlns=\"urn:schemas-microsoft-com:asm.v1\" manifestVersion=\"1.0\">\n"
        "  <assemblyIdentity type=\"win32\" name=\"" + model.moduleName + "\" version=\"" + model.version +
        "\" processorArchitecture=\"amd64\"/>\n"
        "  <file name=\"" + model.moduleFile + "\">\n"
        "    <typelib tlbid=\"" + libid + "\" version=\"" + std::to_string(lib.major) + "." + std::to_string(lib.minor) +
        "\" helpdir=\"\" flags=\"control\"/>\n";
    for (const KivModuleClass& c : model.classes) {
        m += "    <comClass clsid=\"" + KivGuidAscii(*c.factory->clsid) + "\" threadingModel=\"" + threading +
             "\" progid=\"" + KivAscii(c.factory->progId) + "\" tlbid=\"" + libid + "\"";
        // The content aspect's flags, as registration writes them under MiscStatus\1 (the other
        // aspects: 0, the MiscStatus key's own value).
        if (c.factory->isControl) {
            std::string misc;
            if (!miscStatusText(c.factory->miscStatus, misc)) return false;
            m += "\n               miscStatusContent=\"" + misc + "\"";
        }
        m += "/>\n";
    }
    m += "  </file>\n</assembly>\n";
    return KivWriteTextFile(path, m);
}
