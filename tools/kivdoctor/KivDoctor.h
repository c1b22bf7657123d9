// KivDoctor: why a linetype or a hatch pattern shows, or does not, in the controls, found by running
// the controls' own code (the linetype control's LoadLinetype, the hatch control's pattern loader)
// on the file and explaining the outcome line by line. Portable.
#pragma once

#include <string>
#include <vector>

#include "KivString.h"

// A library file as the controls read it, or why it cannot be examined.
struct KivDoctorFile {
    bool ok = false;
    std::string problem;  // one sentence when not ok
    KivString content;    // the whole file, decoded as the controls decode it
    KivString folder;     // as the linetype control's SupportPath and LinetypeFile take it
    KivString name;
    KivString path;
};
// Files larger than this are refused: the controls read the whole file at every lookup.
constexpr long long kKivDoctorMaxBytes = 16LL * 1024 * 1024;
KivDoctorFile KivDoctorRead(const std::string& path);

// The headers of a library ("*NAME,description" lines): name, 1-based line and character position.
struct KivDoctorHeader {
    std::string name;
    int line = 0;
    int position = 0;
};
std::vector<KivDoctorHeader> KivDoctorHeaders(const KivString& content);

struct KivLinetypeFinding {
    std::string name;            // the header's name, or the name asked for
    int headerLine = 0;          // its own header's line (0: none in the file)
    bool loads = false;          // LoadLinetype adds a row for it
    bool loadsItself = false;    // ... drawn with its own definition
    std::string displayName;     // the row's text
    std::string definition;      // what the row is drawn with, when it loads
    std::string ownDefinition;   // the line after its own header
    int matchLine = 0;           // the line the control's lookup matches (0: none)
    std::string reason;          // one sentence, empty when it loads as itself
};
// Every header of the file, or the names given.
std::vector<KivLinetypeFinding> KivDiagnoseLinetypes(const KivDoctorFile& file, const std::vector<std::string>& names);

struct KivFamilyNote {
    int line = 0;
    std::string text;  // why this family draws nothing or is stopped by the guard
};
struct KivPatternFinding {
    std::string name;
    int headerLine = 0;        // its own header's line (0: none in the file)
    bool loads = false;        // the Pattern property loads families for it
    bool loadsItself = false;  // its own families, all of them
    int familiesLoaded = 0;
    int familiesInFile = 0;    // family lines between its own header and the next header
    int matchLine = 0;         // the header the loader matches (0: none)
    std::string reason;        // why families are missing, empty when none are
    std::vector<KivFamilyNote> notes;
};
// The preview in which the notes find the families the guard stops: the size hosts give it.
constexpr int kGuardWidth = 200, kGuardHeight = 150;
// Every pattern of the file, or the names given; the guard's notes at `zoom` in millimetres or inches.
std::vector<KivPatternFinding> KivDiagnosePatterns(const KivDoctorFile& file, const std::vector<std::string>& names,
                                                   double zoom, bool metric);
