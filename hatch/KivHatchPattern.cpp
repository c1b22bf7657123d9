// Hatch patterns as the preview reads them. Portable.
#include "KivHatchPattern.h"

#include "KivFileAccess.h"

namespace {
const KivString kComma(u",");
const KivString kLineFeed(u"\n");

int lineNumberAt(const KivString& text, int position) {
    int line = 0;
    for (int i = 0; i < position && i < text.length(); ++i)
        if (text.at(i) == u'\n') ++line;
    return line;
}
}  // namespace

KivPatternName KivSplitPattern(const KivString& pattern) {
    // 1. The first "(" and the first ")".
    const int open = pattern.find(KivString(u"("), 0);
    const int close = pattern.find(KivString(u")"), 0);
    KivPatternName split;
    // 2. The name between them; without a "(" the first `close` characters (a negative count,
    //    without a ")", is an empty name).
    split.name.copy(pattern, open + 1, close - open - 1);
    // 3. The path before the "("; without one the whole value.
    split.path = open >= 0 ? pattern.left(open) : pattern;
    return split;
}

bool ReadPatternLine(KivString& buffer, KivString& line) {
    // 1. No line feed, or an empty line at the front: nothing is taken.
    const int feed = buffer.find(kLineFeed, 0);
    if (feed < 1) return false;
    // 2. The line without its line feed (a carriage return stays), and the rest.
    line = buffer.left(feed);
    buffer = buffer.right(buffer.length() - feed - 1);
    // 3. A definition line holds a comma and neither "*" nor ";".
    return line.find(KivString(u"*"), 0) < 0 && line.find(KivString(u";"), 0) < 0 && line.find(kComma, 0) > -1;
}

void ParsePatternLine(const KivString& text, KivArray<HatchLineFamily>& families) {
    // 1. A trailing comma; a line that starts with one is ignored.
    KivString line = text + kComma;
    int comma = line.find(kComma, 0);
    if (comma < 1) return;
    // 2. and 3. The five numbers in order, as long as each has a non-empty field.
    HatchLineFamily family;
    double* const fields[5] = {&family.angle, &family.originX, &family.originY, &family.deltaX, &family.deltaY};
    int read = 0;
    for (double* field : fields) {
        comma = line.find(kComma, 0);
        if (comma < 1) break;  // an empty field or no more fields: the rest keep their defaults
        *field = line.left(comma).toDouble(false);
        line = line.right(line.length() - comma - 1);
        ++read;
    }
    // 4. After deltaY, the rest (with its commas) is the dash list.
    if (read == 5 && line.find(kComma, 0) >= 1) family.dashes = line;
    // 5. Appended however many fields were found.
    families.append(family);
}

void DecodeDashes(const KivString& dashText, KivArray<double>& dashes) {
    // 1. and 2. Nothing before a first comma: one long dash, an unbroken line.
    dashes.setLogicalLength(0);
    KivString text = dashText;
    int comma = text.find(kComma, 0);
    if (comma < 1) {
        dashes.append(100.0);
        return;
    }
    // 3. Each value followed by a comma; an empty field ends the list.
    do {
        dashes.append(text.left(comma).toDouble(false));
        text = text.right(text.length() - comma - 1);
        comma = text.find(kComma, 0);
    } while (comma >= 1);
}

void LoadPatternFromText(const KivString& text, const KivString& name, KivArray<HatchLineFamily>& families,
                         KivPatternLoadReport* report) {
    KivPatternLoadReport local;
    KivPatternLoadReport& r = report != nullptr ? *report : local;
    r.fileReadable = text.length() > 0;
    if (!r.fileReadable) return;
    // 5. The key, found only at index 1 or later.
    KivString key = name;
    key.toUpper();
    key = KivString(u"*") + key;
    r.keyPosition = text.find(key, 0);
    if (r.keyPosition < 1) return;
    r.headerLine = lineNumberAt(text, r.keyPosition);
    // 6. The text from the match on.
    KivString buffer = text.right(text.length() - r.keyPosition);
    // 7. The header line is consumed whatever it holds.
    KivString line;
    ReadPatternLine(buffer, line);
    int lineNumber = r.headerLine + 1;
    const int familiesBefore = families.getLogicalLength();
    // 8. The definition lines.
    for (;;) {
        const int before = buffer.length();
        if (!ReadPatternLine(buffer, line)) {
            r.familiesLoaded = families.getLogicalLength() - familiesBefore;
            if (buffer.length() == before) {  // nothing was taken
                const int feed = buffer.find(kLineFeed, 0);
                r.end = feed == 0 ? KivPatternEnd::EmptyLine : buffer.length() == 0 ? KivPatternEnd::EndOfText
                                                                                    : KivPatternEnd::LastLineNoFeed;
                r.endText = feed == 0 ? KivString() : buffer;
            } else {
                r.end = line.find(KivString(u";"), 0) > -1   ? KivPatternEnd::CommentLine
                        : line.find(KivString(u"*"), 0) > -1 ? KivPatternEnd::HeaderLine
                                                             : KivPatternEnd::NoCommaLine;
                r.endText = line;
            }
            r.endLine = lineNumber;
            return;
        }
        ParsePatternLine(line, families);  // a line that starts with a comma adds nothing
        ++lineNumber;
    }
}

void LoadPattern(const KivString& pattern, KivArray<HatchLineFamily>& families, KivPatternLoadReport* report) {
    // 1. Without a path nothing happens: the families loaded before stay (the constructor loads with
    //    an empty Pattern and must leave an empty list).
    const KivPatternName split = KivSplitPattern(pattern);
    if (split.path.length() == 0) return;
    if (report != nullptr) report->pathGiven = true;
    // 2. Cleared, the storage kept.
    families.setLogicalLength(0);
    // 3. and 4. The file, read whole.
    KivString text;
    {
        KivFileAccess file(split.path, KivString(u"r"), KivFileAccess::eAnsi);
        if (file.isOpen() == 0) return;
        const long length = file.getFileLength();
        if (length < 1) return;
        file.readFile(text, static_cast<std::size_t>(length));
        file.close();
    }
    LoadPatternFromText(text, split.name, families, report);
}
