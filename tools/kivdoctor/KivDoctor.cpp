// KivDoctor. Portable.
#include "KivDoctor.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <sys/stat.h>

#include "CKivHatchCtrl.h"
#include "CKivLinetypeCtrl.h"
#include "KivFileAccess.h"
#include "KivHatchDrawing.h"
#include "KivHatchPattern.h"
#include "KivLinetypeFile.h"
#include "KivRasterDC.h"

namespace {

KivString mid(const KivString& text, int from, int count) { return KivString().copy(text, from, count); }

std::string quoted(const std::string& s) { return "\"" + s + "\""; }

// The 1-based line of a character position.
int lineAt(const KivString& text, int position) {
    int line = 1;
    for (int i = 0; i < position && i < text.length(); ++i)
        if (text.at(i) == u'\n') ++line;
    return line;
}

// The line holding a position, without its line feed (a carriage return stays).
KivString lineOf(const KivString& text, int position) {
    int start = position;
    while (start > 0 && text.at(start - 1) != u'\n') --start;
    int end = text.find(KivString(u"\n"), position);
    if (end < 0) end = text.length();
    return mid(text, start, end - start);
}

// The line after the one holding `position` (empty at the end of the text).
KivString lineAfter(const KivString& text, int position) {
    const int feed = text.find(KivString(u"\n"), position);
    if (feed < 0 || feed + 1 >= text.length()) return KivString();
    return lineOf(text, feed + 1);
}

std::string shown(const KivString& s) {
    std::string text = s.toUtf8();
    while (!text.empty() && (text.back() == '\r' || text.back() == '\n')) text.pop_back();
    return text;
}

std::string upperAscii(std::string s) {
    for (char& c : s)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
    return s;
}

// The header of a name: written as asked, else written in other case.
const KivDoctorHeader* ownHeader(const std::vector<KivDoctorHeader>& headers, const std::string& name) {
    for (const KivDoctorHeader& h : headers)
        if (h.name == name) return &h;
    for (const KivDoctorHeader& h : headers)
        if (upperAscii(h.name) == upperAscii(name)) return &h;
    return nullptr;
}

// Why a key search finds nothing, or finds the wrong header, shared by both kinds of library:
// empty when it finds the entry's own header. `what` names the searcher and `outcome` what the
// control then shows.
std::string keyReason(const KivDoctorFile& file, const KivDoctorHeader* own, const std::string& key, int keyPosition,
                      int matchLine, const std::string& what, const std::string& outcome) {
    if (keyPosition < 0) {
        if (own != nullptr && upperAscii(own->name) != own->name)
            return "The header on line " + std::to_string(own->line) + " is not written in capitals: the control looks for " +
                   quoted(key) + " and the file never says that.";
        return "The file has no header " + quoted(key) + ".";
    }
    if (keyPosition == 0)
        return "The header is at the very first byte of the file (line 1), where the control never finds a match: start the file with a comment line.";
    if (own == nullptr || keyPosition != own->position)
        return what + " for " + quoted(key) + " first matches line " + std::to_string(matchLine) + " (" +
               quoted(shown(lineOf(file.content, keyPosition))) + "), " + outcome;
    return std::string();
}

std::string number(double v) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", v);
    return text;
}

}  // namespace

KivDoctorFile KivDoctorRead(const std::string& path) {
    KivDoctorFile file;
    struct stat info {};
    if (stat(path.c_str(), &info) != 0) {
        file.problem = path + ": no such file";
        return file;
    }
    if (!S_ISREG(info.st_mode)) {
        file.problem = path + ": not a regular file";
        return file;
    }
    if (info.st_size == 0) {
        file.problem = path + ": the file is empty";
        return file;
    }
    if (static_cast<long long>(info.st_size) > kKivDoctorMaxBytes) {
        file.problem = path + ": " + std::to_string(info.st_size / (1024 * 1024)) +
                       " MB is larger than a linetype or pattern library can be (16 MB): the controls read the whole file at every lookup";
        return file;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        file.problem = path + ": the file cannot be read";
        return file;
    }
    // Only the first bytes, to tell text from binary data: the content is read below, as the controls read it.
    std::string bytes(8192, '\0');
    in.read(&bytes[0], static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(in.gcount()));
    // Text holds no zero byte, except UTF-16 text, which the controls read when it opens with its
    // byte-order mark.
    const bool utf16 = bytes.size() >= 2 && ((static_cast<unsigned char>(bytes[0]) == 0xFF && static_cast<unsigned char>(bytes[1]) == 0xFE) ||
                                             (static_cast<unsigned char>(bytes[0]) == 0xFE && static_cast<unsigned char>(bytes[1]) == 0xFF));
    for (std::size_t i = 0; !utf16 && i < bytes.size(); ++i) {
        if (bytes[i] == '\0') {
            file.problem = path + ": the file holds binary data (a zero byte at offset " + std::to_string(i) +
                           "), not the text of a library";
            return file;
        }
    }
    // The path as the controls take it: a folder and a name, joined by a backslash.
    const std::size_t slash = path.find_last_of('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash);
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    file.folder = KivString::fromUtf8(folder);
    file.name = KivString::fromUtf8(name);
    file.path = KivLinetypeFilePath(file.folder, file.name);
    KivFileAccess access(file.path, KivString(u"r"), KivFileAccess::eAnsi);
    if (access.isOpen() == 0) {
        file.problem = path + ": the file cannot be read";
        return file;
    }
    const long length = access.getFileLength();
    access.readFile(file.content, static_cast<std::size_t>(length > 0 ? length : 0));
    file.ok = true;
    return file;
}

std::vector<KivDoctorHeader> KivDoctorHeaders(const KivString& content) {
    std::vector<KivDoctorHeader> headers;
    int line = 1;
    for (int start = 0; start < content.length();) {
        int end = content.find(KivString(u"\n"), start);
        if (end < 0) end = content.length();
        if (content.at(start) == u'*') {
            const KivString text = mid(content, start + 1, end - start - 1);
            int cut = text.find(KivString(u","), 0);
            if (cut < 0) cut = text.length();
            std::string name = shown(text.left(cut));
            while (!name.empty() && (name.back() == ' ' || name.back() == '\t')) name.pop_back();
            headers.push_back(KivDoctorHeader{name, line, start});
        }
        start = end + 1;
        ++line;
    }
    return headers;
}

std::vector<KivLinetypeFinding> KivDiagnoseLinetypes(const KivDoctorFile& file, const std::vector<std::string>& names) {
    const std::vector<KivDoctorHeader> headers = KivDoctorHeaders(file.content);
    std::vector<std::string> asked = names;
    if (asked.empty())
        for (const KivDoctorHeader& h : headers) asked.push_back(h.name);

    std::vector<KivLinetypeFinding> findings;
    for (const std::string& name : asked) {
        KivLinetypeFinding f;
        f.name = name;
        const KivString given = KivString::fromUtf8(name);
        f.displayName = KivLinetypeModel::displayName(given).toUtf8();
        const KivDoctorHeader* own = ownHeader(headers, name);
        if (own != nullptr) {
            f.headerLine = own->line;
            f.ownDefinition = shown(lineAfter(file.content, own->position));
        }

        // What the control does: a fresh control, pointed at the file, asked to load the name.
        KivNullControlSite site;
        CKivLinetypeCtrl control(site);
        control.SetSupportPath(file.folder);
        control.SetLinetypeFile(file.name);
        control.LoadLinetype(given);
        for (int row = 3; row < control.items().getLogicalLength(); ++row) {
            f.loads = true;
            f.definition = shown(control.items()[row].definition);
        }

        // Why: the lookup's own account.
        const KivLinetypeLookup lookup = KivLookUpLinetypeInContent(file.content, given);
        f.matchLine = lookup.keyPosition >= 0 ? lineAt(file.content, lookup.keyPosition) : 0;
        const std::string upper = upperAscii(name);
        const std::string key = "*" + upper;
        if (upper == "BYLAYER" || upper == "BYBLOCK" || upper == "CONTINUOUS") {
            f.reason = upper + " is one of the three rows every linetype control already has (ByLayer, ByBlock, "
                               "Continuous): loading it keeps that row and adds none.";
        } else {
            f.reason = keyReason(file, own, key, lookup.keyPosition, f.matchLine, "The control's lookup",
                                 "an earlier entry whose name begins with the same letters: the row is drawn with the "
                                 "definition that follows it.");
            // Found at its own header: what follows it.
            if (f.reason.empty() && lookup.definitionStart < 0) {
                f.reason = "No definition line (\"A,...\") follows the header on line " + std::to_string(own->line) +
                           ": the row is drawn without a sample.";
            } else if (f.reason.empty() && f.definition != f.ownDefinition) {
                f.reason = "The line after the header on line " + std::to_string(own->line) +
                           " is not a definition (\"A,...\"): the row takes the next one in the file, on line " +
                           std::to_string(lineAt(file.content, lookup.definitionStart)) + ".";
            }
        }
        f.loadsItself = f.loads && f.reason.empty();
        findings.push_back(f);
    }
    return findings;
}

std::vector<KivPatternFinding> KivDiagnosePatterns(const KivDoctorFile& file, const std::vector<std::string>& names,
                                                   double zoom, bool metric) {
    const std::vector<KivDoctorHeader> headers = KivDoctorHeaders(file.content);
    std::vector<std::string> asked = names;
    if (asked.empty())
        for (const KivDoctorHeader& h : headers) asked.push_back(h.name);
    const double pixelsPerUnit = zoom * 3.0 * (metric ? 1.0 : 25.4);

    std::vector<KivPatternFinding> findings;
    for (const std::string& name : asked) {
        KivPatternFinding f;
        f.name = name;
        const KivDoctorHeader* own = ownHeader(headers, name);
        if (own != nullptr) {
            f.headerLine = own->line;
            // The family lines the file holds for it: up to the next header, comments and blank lines aside.
            for (int line = own->line + 1, position = file.content.find(KivString(u"\n"), own->position) + 1;
                 position > 0 && position < file.content.length(); ++line) {
                if (file.content.at(position) == u'*') break;
                std::string text = shown(lineOf(file.content, position));
                const std::size_t comment = text.find(';');
                if (comment != std::string::npos) text.erase(comment);
                if (text.find(',') != std::string::npos && text.find_first_not_of(" \t,") != std::string::npos) ++f.familiesInFile;
                const int feed = file.content.find(KivString(u"\n"), position);
                if (feed < 0) break;
                position = feed + 1;
            }
        }

        // What the control does: the Pattern property "path(NAME)" through its loader.
        KivArray<HatchLineFamily> families;
        KivPatternLoadReport report;
        LoadPattern(file.path + KivString(u"(") + KivString::fromUtf8(name) + KivString(u")"), families, &report);
        f.familiesLoaded = families.getLogicalLength();
        f.loads = f.familiesLoaded > 0;
        f.matchLine = report.headerLine >= 0 ? report.headerLine + 1 : 0;

        const std::string key = "*" + upperAscii(name);
        f.reason = keyReason(file, own, key, report.keyPosition, f.matchLine, "The loader's search",
                             "an earlier pattern whose name begins with the same letters: the preview shows that "
                             "pattern's families.");
        if (!f.reason.empty()) {
        } else if (f.familiesLoaded < f.familiesInFile) {
            const std::string where = "line " + std::to_string(report.endLine + 1);
            const std::string lost = std::to_string(f.familiesInFile - f.familiesLoaded) + " of its " +
                                     std::to_string(f.familiesInFile) + " families are never read";
            switch (report.end) {
            case KivPatternEnd::CommentLine:
                f.reason = quoted(shown(report.endText)) + " on " + where + " holds a comment (\";\"), which ends the pattern: " + lost + ".";
                break;
            case KivPatternEnd::EmptyLine: f.reason = "The empty " + where + " ends the pattern: " + lost + "."; break;
            case KivPatternEnd::NoCommaLine:
                f.reason = quoted(shown(report.endText)) + " on " + where + " has no comma, which ends the pattern: " + lost + ".";
                break;
            case KivPatternEnd::LastLineNoFeed:
                f.reason = "The last line of the file (" + where + ") has no line feed after it, and a line without one is never read: " + lost + ".";
                break;
            default: f.reason = lost + "."; break;
            }
        } else if (f.familiesInFile == 0) {
            f.reason = "No family line follows the header on line " + std::to_string(own->line) + ": there is nothing to draw.";
        }
        f.loadsItself = f.loads && f.reason.empty();

        // The families that load but draw nothing, or that the guard stops, each with its line: the
        // loader's own walk over the lines, to number them. A family is stopped when, drawn alone by
        // the preview's own drawing into a preview of kGuardWidth x kGuardHeight at the zoom, it
        // spends the paint's stroke budget.
        if (report.keyPosition > 0) {
            KivString buffer = file.content.right(file.content.length() - report.keyPosition);
            KivString line;
            ReadPatternLine(buffer, line);
            int lineNumber = f.matchLine + 1;
            KivArray<HatchLineFamily> one;
            while (ReadPatternLine(buffer, line)) {
                one.setLogicalLength(0);
                ParsePatternLine(line, one);
                if (one.getLogicalLength() == 1) {
                    const HatchLineFamily& family = one[0];
                    const double theta = KivHatchNormalisedAngle(family.angle);
                    if (KivHatchBandOf(theta) == KivHatchBand::None) {
                        f.notes.push_back({lineNumber, "angle " + number(family.angle) +
                                                           (theta >= 359.95 ? " (360 or more)" : " (on a band bound)") +
                                                           ": this family draws nothing"});
                    } else if (family.deltaY * pixelsPerUnit == 0.0) {
                        f.notes.push_back({lineNumber, "spacing (delta-y) 0: its lines fall on one another, and the guard draws its line 0 alone"});
                    } else {
                        KivRasterDC preview(kGuardWidth, kGuardHeight);
                        KivArray<double> dashes;
                        KivHatchStyle style;
                        style.zoomFactor = zoom;
                        style.unitFactor = metric ? 1.0 : 25.4;
                        if (DrawHatch(preview, KivRect{0, 0, kGuardWidth, kGuardHeight}, one, dashes, style).guardStopped) {
                            f.notes.push_back({lineNumber, "spacing (delta-y) " + number(family.deltaY) + " puts so many lines into a " +
                                                               std::to_string(kGuardWidth) + " x " + std::to_string(kGuardHeight) +
                                                               " preview at zoom " + number(zoom) +
                                                               " that the paint spends its stroke budget and stops"});
                        }
                    }
                }
                ++lineNumber;
            }
        }
        findings.push_back(f);
    }
    return findings;
}
