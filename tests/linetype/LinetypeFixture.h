// The linetype controls over the in-memory seams (ControlFixture) and a small linetype file in a
// temporary folder, with helpers that point a control at a file and load from it.
#pragma once

#include "CKivLinetypeCtrl.h"
#include "CKivLinetypeListCtrl.h"
#include "ControlFixture.h"
#include "TestFiles.h"

#include <initializer_list>

// A comment line first (a header at the very first byte is never found), then linetypes.
constexpr const char* kSampleLin =
    ";; test linetypes\n"
    "*DASHED,Dashed __ __ __\n"
    "A,12.7,-6.35\n"
    "*DOT,Dot . . . .\n"
    "A,0,-6.35\n"
    "*CENTER,Center ____ _ ____\n"
    "A,31.75,-6.35,6.35,-6.35\n"
    "*dashdot,lower case header\n"
    "A,12.7,-6.35,0,-6.35\n";

class LinetypeFixture : public ControlFixture {
protected:
    // Points the control at `file`: SupportPath its folder, LinetypeFile its name.
    template <class Control>
    static void useFile(Control& control, const TempFile& file, const char16_t* name) {
        control.SetSupportPath(file.folder());
        control.SetLinetypeFile(KivString(name));
    }
    // Points the control at the sample file (kSampleLin) and loads `names` from it, in that order.
    template <class Control>
    void loadSample(Control& control, std::initializer_list<const char16_t*> names) {
        useFile(control, sample, u"sample.lin");
        for (const char16_t* name : names) control.LoadLinetype(KivString(name));
    }

    TempFile sample{kSampleLin, "sample.lin"};
};

inline Texts definitionsOf(const KivLinetypeModel& model) {
    Texts out;
    for (int i = 0; i < model.definitions().getLogicalLength(); ++i) out.push_back(model.definitions()[i].toUtf8());
    return out;
}

inline Texts namesOf(const KivLinetypeModel& model) {
    Texts out;
    for (int i = 0; i < model.items().getLogicalLength(); ++i) out.push_back(model.items()[i].name.toUtf8());
    return out;
}

inline Texts sortedNamesOf(const KivLinetypeModel& model) {
    Texts out;
    for (int i = 0; i < model.sortedNames().getLogicalLength(); ++i) out.push_back(model.sortedNames()[i].toUtf8());
    return out;
}
