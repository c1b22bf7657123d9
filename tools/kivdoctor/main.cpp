// kivdoctor: tells why a linetype or a hatch pattern will not show in the controls, with the very
// code the controls run, and draws a library as the controls draw it.
//   kivdoctor lin FILE [NAME...] [--json] [--sheet OUT.png]
//   kivdoctor pat FILE [NAME...] [--json] [--sheet OUT.png] [--zoom Z] [--metric | --inch]
// Exit status: 0 when every entry asked for loads as itself, 1 when one does not, 2 on bad usage or
// a file that cannot be examined.
#include <png.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "KivDoctor.h"
#include "KivFreeTypeText.h"
#include "KivSheet.h"

namespace {

constexpr const char* kUsage =
    "usage: kivdoctor lin FILE [NAME...] [--json] [--sheet OUT.png]\n"
    "       kivdoctor pat FILE [NAME...] [--json] [--sheet OUT.png] [--zoom Z] [--metric | --inch]\n"
    "  lin: every linetype of a .lin file (or the names given): whether the linetype control loads it,\n"
    "       the definition its row is drawn with, and why not when it does not load as itself.\n"
    "  pat: every pattern of a .pat file (or the names given): whether the hatch preview loads it, how\n"
    "       many families it loads of those in the file, why any are lost, and the families that draw\n"
    "       nothing or that the guard stops (at --zoom, default 1, in millimetres unless --inch).\n"
    "  --json   the findings as JSON on standard output\n"
    "  --sheet  a PNG contact sheet: every entry drawn as the control draws it, marked when it does not load\n"
    "  --font   the TrueType font of the sheet's labels (default DejaVu Sans)\n"
    "exit status: 0 every entry loads as itself, 1 one does not, 2 bad usage or a file that cannot be examined\n";

int usage(const std::string& message) {
    std::cerr << "kivdoctor: " << message << "\n" << kUsage;
    return 2;
}

std::string json(const std::string& s) {
    std::string out = "\"";
    for (unsigned char c : s) {
        switch (c) {
        case '"': out += "\\\""; break;
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        default:
            if (c < 0x20) {
                char hex[8];
                std::snprintf(hex, sizeof hex, "\\u%04x", c);
                out += hex;
            } else {
                out += static_cast<char>(c);
            }
        }
    }
    return out + "\"";
}

const char* boolean(bool b) { return b ? "true" : "false"; }

bool writePng(const std::string& path, const KivRasterDC& dc) {
    FILE* out = std::fopen(path.c_str(), "wb");
    if (out == nullptr) return false;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
    if (png == nullptr || info == nullptr || setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        std::fclose(out);
        return false;
    }
    png_init_io(png, out);
    png_set_IHDR(png, info, static_cast<png_uint_32>(dc.width()), static_cast<png_uint_32>(dc.height()), 8, PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    std::vector<png_byte> row(static_cast<std::size_t>(dc.width()) * 3);
    for (int y = 0; y < dc.height(); ++y) {
        for (int x = 0; x < dc.width(); ++x) {
            const std::uint32_t p = dc.pixel(x, y);
            row[static_cast<std::size_t>(x) * 3] = static_cast<png_byte>(p >> 16);
            row[static_cast<std::size_t>(x) * 3 + 1] = static_cast<png_byte>(p >> 8);
            row[static_cast<std::size_t>(x) * 3 + 2] = static_cast<png_byte>(p);
        }
        png_write_row(png, row.data());
    }
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return std::fclose(out) == 0;
}

void printLinetypes(const std::string& path, const std::vector<KivLinetypeFinding>& findings, bool asJson) {
    if (asJson) {
        std::cout << "{\"file\": " << json(path) << ", \"kind\": \"lin\", \"entries\": [";
        for (std::size_t i = 0; i < findings.size(); ++i) {
            const KivLinetypeFinding& f = findings[i];
            std::cout << (i ? ",\n  " : "\n  ") << "{\"name\": " << json(f.name) << ", \"line\": " << f.headerLine
                      << ", \"loads\": " << boolean(f.loads) << ", \"loadsItself\": " << boolean(f.loadsItself)
                      << ", \"displayName\": " << json(f.displayName) << ", \"definition\": " << json(f.definition)
                      << ", \"ownDefinition\": " << json(f.ownDefinition) << ", \"matchLine\": " << f.matchLine
                      << ", \"reason\": " << json(f.reason) << "}";
        }
        std::cout << "\n]}\n";
        return;
    }
    int itself = 0;
    for (const KivLinetypeFinding& f : findings) itself += f.loadsItself ? 1 : 0;
    std::cout << path << ": " << findings.size() << " linetypes, " << itself << " load as themselves, "
              << findings.size() - static_cast<std::size_t>(itself) << " do not\n";
    for (const KivLinetypeFinding& f : findings) {
        std::cout << "  " << f.name;
        if (f.headerLine > 0) std::cout << " (line " << f.headerLine << ")";
        if (f.loadsItself) {
            std::cout << ": loads as \"" << f.displayName << "\", drawn with " << f.definition << "\n";
        } else if (f.loads) {
            std::cout << ": LOADS ANOTHER DEFINITION, drawn with " << f.definition << "\n    " << f.reason << "\n";
        } else {
            std::cout << ": DOES NOT LOAD\n    " << f.reason << "\n";
        }
    }
}

void printPatterns(const std::string& path, const std::vector<KivPatternFinding>& findings, bool asJson) {
    if (asJson) {
        std::cout << "{\"file\": " << json(path) << ", \"kind\": \"pat\", \"entries\": [";
        for (std::size_t i = 0; i < findings.size(); ++i) {
            const KivPatternFinding& f = findings[i];
            std::cout << (i ? ",\n  " : "\n  ") << "{\"name\": " << json(f.name) << ", \"line\": " << f.headerLine
                      << ", \"loads\": " << boolean(f.loads) << ", \"loadsItself\": " << boolean(f.loadsItself)
                      << ", \"familiesLoaded\": " << f.familiesLoaded << ", \"familiesInFile\": " << f.familiesInFile
                      << ", \"matchLine\": " << f.matchLine << ", \"reason\": " << json(f.reason) << ", \"notes\": [";
            for (std::size_t n = 0; n < f.notes.size(); ++n)
                std::cout << (n ? ", " : "") << "{\"line\": " << f.notes[n].line << ", \"text\": " << json(f.notes[n].text) << "}";
            std::cout << "]}";
        }
        std::cout << "\n]}\n";
        return;
    }
    int itself = 0;
    for (const KivPatternFinding& f : findings) itself += f.loadsItself ? 1 : 0;
    std::cout << path << ": " << findings.size() << " patterns, " << itself << " load whole as themselves, "
              << findings.size() - static_cast<std::size_t>(itself) << " do not\n";
    for (const KivPatternFinding& f : findings) {
        std::cout << "  " << f.name;
        if (f.headerLine > 0) std::cout << " (line " << f.headerLine << ")";
        std::cout << ": " << f.familiesLoaded << " of " << f.familiesInFile << " families load";
        std::cout << (f.loadsItself ? "\n" : f.loads ? " - INCOMPLETE\n" : " - DOES NOT LOAD\n");
        if (!f.reason.empty()) std::cout << "    " << f.reason << "\n";
        for (const KivFamilyNote& n : f.notes) std::cout << "    line " << n.line << ": " << n.text << "\n";
    }
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty()) return usage("a command is needed: lin or pat");
    if (args[0] == "--help" || args[0] == "-h") {
        std::cout << kUsage;
        return 0;
    }
    const std::string command = args[0];
    if (command != "lin" && command != "pat") return usage("unknown command '" + command + "' (lin or pat)");
    std::string file, sheet, font = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
    std::vector<std::string> names;
    bool asJson = false, metric = true;
    double zoom = 1.0;
    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::string& a = args[i];
        // The option's value: the next argument, taken; nullptr when there is none.
        auto value = [&]() -> const std::string* { return i + 1 < args.size() ? &args[++i] : nullptr; };
        if (a == "--json") {
            asJson = true;
        } else if (a == "--sheet") {
            const std::string* v = value();
            if (v == nullptr || v->empty()) return usage("--sheet needs a file name");
            sheet = *v;
        } else if (a == "--font") {
            const std::string* v = value();
            if (v == nullptr) return usage("--font needs a TrueType file");
            font = *v;
        } else if (a == "--zoom") {
            const std::string* v = value();
            char* end = nullptr;
            errno = 0;
            zoom = v != nullptr ? std::strtod(v->c_str(), &end) : 0.0;
            if (v == nullptr || end == v->c_str() || *end != '\0' || errno != 0 || !(zoom > 0.0) || zoom > 1000.0)
                return usage("--zoom needs a number above 0 and at most 1000");
        } else if (a == "--metric" || a == "--inch") {
            metric = a == "--metric";
        } else if (a.size() > 1 && a[0] == '-' && a[1] == '-') {
            return usage("unknown option '" + a + "'");
        } else if (file.empty()) {
            file = a;
        } else {
            names.push_back(a);
        }
    }
    if (file.empty()) return usage("a " + std::string(command == "lin" ? ".lin" : ".pat") + " file is needed");
    if (command == "lin" && (zoom != 1.0 || !metric)) return usage("--zoom, --metric and --inch are for pat");

    const KivDoctorFile library = KivDoctorRead(file);
    if (!library.ok) {
        std::cerr << "kivdoctor: " << library.problem << "\n";
        return 2;
    }
    KivFreeTypeText text(font, 11);
    if (!sheet.empty() && !text.ok()) {
        std::cerr << "kivdoctor: the font " << font << " cannot be loaded for the sheet's labels\n";
        return 2;
    }
    bool allItself = true;
    std::unique_ptr<KivRasterDC> picture;
    if (command == "lin") {
        const std::vector<KivLinetypeFinding> findings = KivDiagnoseLinetypes(library, names);
        if (findings.empty()) std::cerr << "kivdoctor: " << file << " holds no linetype header (\"*NAME,...\")\n";
        for (const KivLinetypeFinding& f : findings) allItself = allItself && f.loadsItself;
        printLinetypes(file, findings, asJson);
        if (!sheet.empty()) picture = KivLinetypeSheet(library, findings, &text);
    } else {
        const std::vector<KivPatternFinding> findings = KivDiagnosePatterns(library, names, zoom, metric);
        if (findings.empty()) std::cerr << "kivdoctor: " << file << " holds no pattern header (\"*NAME,...\")\n";
        for (const KivPatternFinding& f : findings) allItself = allItself && f.loadsItself;
        printPatterns(file, findings, asJson);
        if (!sheet.empty()) picture = KivPatternSheet(library, findings, zoom, metric, &text);
    }
    if (picture && !writePng(sheet, *picture)) {
        std::cerr << "kivdoctor: the sheet cannot be written to " << sheet << "\n";
        return 2;
    }
    if (picture && !asJson) std::cout << "sheet: " << sheet << "\n";
    return allItself ? 0 : 1;
}
