// Writes include/KivLorqControls.h: what a C or C++ host needs to create the controls and call them
// without reading the type library, named as the IDL compiler names them (LIBID_, CLSID_, DIID_),
// with a DISPID_<coclass>_<member> and DISPID_<coclass>Events_<event> for every member and event,
// and the Colors enumeration with its alias. Win32 side (a build tool).
#include <cstdio>

#include "KivWriters.h"

namespace {

// DEFINE_GUID(name, ...), under a comment with the GUID as the registry spells it (and `note`).
std::string defineGuid(const std::string& name, const GUID& g, const std::string& note = "") {
    char text[160];
    std::snprintf(text, sizeof text,
                  "DEFINE_GUID(%s, 0x%08lx, 0x%04x, 0x%04x, 0x%02x, 0x%02x, 0x%02x, 0x%02x, 0x%02x, 0x%02x, 0x%02x, 0x%02x);\n",
                  name.c_str(), static_cast<unsigned long>(g.Data1), g.Data2, g.Data3, g.Data4[0], g.Data4[1], g.Data4[2],
                  g.Data4[3], g.Data4[4], g.Data4[5], g.Data4[6], g.Data4[7]);
    return "/* " + (note.empty() ? "" : note + " ") + KivGuidAscii(g) + " */\n" + text;
}

std::string number(long value) { return value < 0 ? "(" + std::to_string(value) + ")" : std::to_string(value); }

}  // namespace

bool KivWriteHeader(const KivModuleModel& model, const wchar_t* path) {
    const KivTypeLibDesc& lib = *model.library;
    const std::string libName = KivAscii(lib.name);
    std::string h =
        "/* KivLorqControls.h: the identifiers of " + model.moduleFile + " " + model.version +
        " for C and C++ hosts: its type\n"
        "   library " + libName + " " + std::to_string(lib.major) + "." + std::to_string(lib.minor) +
        ", the class ids of its controls and property pages, the ids of the\n"
        "   controls' dispatch and event interfaces, the DISPID of every member and event, and the Colors\n"
        "   enumeration. Written by the build from the module's own tables: do not edit.\n"
        "\n"
        "   Include it after <windows.h>; nothing needs to be linked. The GUIDs follow the INITGUID rule:\n"
        "   in exactly one source file of a program, include <initguid.h> before this header, which\n"
        "   defines them there; every other file that includes it sees extern declarations. */\n"
        "#ifndef KIVLORQCONTROLS_H\n"
        "#define KIVLORQCONTROLS_H\n\n";

    h += "/* The type library. */\n" + defineGuid("LIBID_" + libName, *lib.libid) + "\n";
    h += "/* The controls (CLSID_<coclass>) and their property pages (CLSID_<page class>). */\n";
    for (const KivModuleClass& c : model.classes)
        h += defineGuid("CLSID_" + c.name, *c.factory->clsid, KivAscii(c.factory->progId));
    h += "\n/* The dispatch and event interfaces. */\n";
    for (int i = 0; i < lib.coclassCount; ++i)
        for (const KivDispInterface* itf : {lib.coclasses[i].dispatch, lib.coclasses[i].events})
            h += defineGuid("DIID_" + KivAscii(itf->name), *itf->iid);

    h += "\n/* The DISPID of every member (DISPID_<coclass>_<member>) and event (DISPID_<coclass>Events_<event>). */\n";
    KivForEachMember(model, [&](const KivCoclass& coclass, const KivDispInterface& itf, const KivMember& m) {
        const std::string prefix = "DISPID_" + KivAscii(coclass.name) + (itf.isSource ? "Events_" : "_");
        h += "#define " + prefix + KivAscii(m.name) + " " + number(m.dispid) + "\n";
    });

    h += "\n/* The colour list's positions. */\ntypedef enum " + KivAscii(lib.enumName) + " {\n";
    for (int i = 0; i < lib.constantCount; ++i)
        h += "    " + KivAscii(lib.constants[i].name) + " = " + number(lib.constants[i].value) +
             (i + 1 < lib.constantCount ? ",\n" : "\n");
    h += "} " + KivAscii(lib.enumName) + ";\n";
    h += "typedef " + KivAscii(lib.enumName) + " " + KivAscii(lib.aliasName) + ";\n\n";
    h += "#endif /* KIVLORQCONTROLS_H */\n";
    return KivWriteTextFile(path, h);
}
