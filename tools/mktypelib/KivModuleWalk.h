// The walk every writer of mktypelib shares: the module as its tables describe it (the type
// library's description, KivLibraryDesc(), and the class table, KivFactories()), with the names a
// host knows each class by. Reads only the tables' descriptive fields (names, ids, kinds, types),
// never their handlers. Win32 side (a build tool).
#pragma once

#include <string>
#include <vector>

#include "KivLibrary.h"
#include "KivModule.h"

// One class of the module, in registration order.
struct KivModuleClass {
    const KivFactoryEntry* factory;  // its class id, ProgID, misc status
    const KivCoclass* coclass;       // a control's coclass; nullptr for a property page
    std::string name;                // a control: its coclass ("KivColor"); a page: its class without the
                                     // leading C, as its ProgID spells it ("KivColorPropPage")
};

struct KivModuleModel {
    const KivTypeLibDesc* library = nullptr;
    std::vector<KivModuleClass> classes;
    std::string version;     // the release version, "1.0.0.1"
    std::string moduleName;  // "KivLorqControls8x64"
    std::string moduleFile;  // "KivLorqControls8x64.ocx"
    std::wstring referenceMeanings;  // an input of the member reference: its words, beside the tool
};

// Reads the tables. Fails, saying why in `error`, when a class cannot be named (a control without
// its coclass, a ProgID of another form).
bool KivReadModule(KivModuleModel& model, std::string& error);

// Calls `visit(coclass, dispinterface, member)` for every member of every coclass's dispatch and
// event interfaces, in the library's order.
template <class Visit>
void KivForEachMember(const KivModuleModel& model, Visit visit) {
    for (int c = 0; c < model.library->coclassCount; ++c) {
        const KivCoclass& coclass = model.library->coclasses[c];
        for (const KivDispInterface* itf : {coclass.dispatch, coclass.events})
            for (int m = 0; m < itf->memberCount; ++m) visit(coclass, *itf, itf->members[m]);
    }
}

// Text helpers of the writers: the tables' names are ASCII.
std::string KivAscii(const wchar_t* text);
std::string KivAscii(const std::wstring& text);
// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}", upper case.
std::string KivGuidAscii(const GUID& guid);
// Writes `text` to `path` as it is (UTF-8). False when the file cannot be written whole.
bool KivWriteTextFile(const wchar_t* path, const std::string& text);
