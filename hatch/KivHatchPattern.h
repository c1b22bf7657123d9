// Hatch patterns as the preview reads them. Portable.
//
// The Pattern property names a file and a pattern in it: "path(NAME)". The file is read whole, the
// key "*" + the upper-cased name is searched as a plain substring of the text as read (so the key of
// a name that begins another, earlier header finds that header), and only at index 1 or later: a
// header in the very first byte is never found, as with the earlier module. The header line is
// skipped; then each line with a comma and without "*" or ";" is a line family ("angle, x, y,
// delta-x, delta-y[, dash...]"), until a comment, another header, a line without a comma, an empty
// line, or the end of the text. A last line without a line feed is never read.
#pragma once

#include "HatchLineFamily.h"
#include "KivString.h"
#include "ORVRoots/Exp/KivArray.h"

// The Pattern property split into the file path and the pattern name.
struct KivPatternName {
    KivString path;  // empty: nothing is loaded and the families loaded before stay
    KivString name;
};
KivPatternName KivSplitPattern(const KivString& pattern);

// Why the families of a pattern stop where they stop (for reports; the loader itself is silent).
enum class KivPatternEnd {
    NotLoaded,        // no path, a file that cannot be read or is empty, or the key not found
    CommentLine,      // a line holding ";"
    HeaderLine,       // a line holding "*" (the next pattern)
    NoCommaLine,      // a line without a comma
    EmptyLine,        // an empty line (a line feed at the front of the rest)
    LastLineNoFeed,   // the rest of the text holds no line feed: its last line is never read
    EndOfText,        // the text ended after a line feed
};

// What one load did, for reports (kivdoctor); the control passes none.
struct KivPatternLoadReport {
    bool pathGiven = false;     // the Pattern had a path: the families were cleared first
    bool fileReadable = false;  // the file opened and held at least one character
    int keyPosition = -1;       // first occurrence of the key in the text (-1: none)
    int headerLine = -1;        // 0-based line number of the match in the file
    int familiesLoaded = 0;
    KivPatternEnd end = KivPatternEnd::NotLoaded;
    int endLine = -1;           // 0-based line number of the line that ended the pattern
    KivString endText;          // that line (or the unread rest)
};

// (Re)builds `families` from the Pattern property. All failures are silent.
void LoadPattern(const KivString& pattern, KivArray<HatchLineFamily>& families, KivPatternLoadReport* report = nullptr);
// The same from text already read (the file's content), for a pattern name.
void LoadPatternFromText(const KivString& text, const KivString& name, KivArray<HatchLineFamily>& families,
                         KivPatternLoadReport* report = nullptr);

// Takes the next line off the front of `buffer` into `line`; true when it is a definition line.
// A line feed at the very front or none at all: false, and the buffer is left as it is.
bool ReadPatternLine(KivString& buffer, KivString& line);

// Parses one definition line and appends its family (missing fields keep their defaults).
void ParsePatternLine(const KivString& line, KivArray<HatchLineFamily>& families);

// Replaces `dashes` with the numbers of a family's dash text ("10," gives 10; a text that begins
// with a comma, or holds none, gives the single long dash 100).
void DecodeDashes(const KivString& text, KivArray<double>& dashes);
