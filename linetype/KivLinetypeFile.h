// Looking one linetype up in a linetype definition file. Portable.
//
// A file holds header lines (an asterisk, the name in capitals, a comma, a description), each
// followed by a definition line ("A," and comma-separated numbers). The lookup reads the whole file
// each time, searches "*" + the upper-cased name as a plain substring of the content as read (so
// the headers must be written in capitals, and "*DASH" also matches "*DASHED"), and counts a match
// only at a position greater than 0: a header in the very first byte is never found, as with the
// earlier module (real files open with a comment line). The definition runs from the first "A,"
// after the match up to, not including, the next line feed; a carriage return before it stays.
#pragma once

#include "KivString.h"

struct KivLinetypeLookup {
    bool readable = false;  // the file opened and held at least one byte
    int keyPosition = -1;   // first occurrence of the key in the content (-1: none)
    int definitionStart = -1;  // the first "A," at or after the key (-1: none)
    int definitionEnd = -1;    // the first line feed at or after that (-1: none)
    KivString definition;      // what the control loads for the name
    bool found() const { return readable && keyPosition > 0; }
};

// SupportPath + "\" + LinetypeFile: one backslash always, even after an empty or "\"-ended folder.
KivString KivLinetypeFilePath(const KivString& supportPath, const KivString& linetypeFile);

// "*" + the upper-cased name.
KivString KivLinetypeKey(const KivString& name);

// Reads the file whole through KivFileAccess (type 1) and looks `name` up in it.
KivLinetypeLookup KivLookUpLinetype(const KivString& path, const KivString& name);

// The same lookup in content already read.
KivLinetypeLookup KivLookUpLinetypeInContent(const KivString& content, const KivString& name);
