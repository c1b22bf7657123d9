// Build tool: writes the member reference (docs/reference.md) from the dispatch tables and the
// meanings written beside this file (reference-meanings.txt). The tables give every member, its
// DISPID, kind, declared and dispatch types and parameters, so no member can be left out; the
// meanings give what each does, in words. Win32 side: it runs with mktypelib under Wine.
//
// The meanings file is UTF-8 text in blocks:
//   [reference]            the text above the first control
//   [control NAME]         the text under a coclass's heading
//   [enumeration]          the text under the Colors enumeration
//   [member ITF.MEMBER]    fields "does:", "units:", "bad input:", "window:" (one line each; a line
//                          that starts with a blank continues the field above)
// and lines starting with '#' are comments. A member without its block, a field left empty and a
// block naming no member are written into the reference as gaps, which the reference test reports.
#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "KivWriters.h"

namespace {

const char* const kFields[] = {"does", "units", "bad input", "window"};

struct Meanings {
    std::map<std::string, std::string> texts;                              // "reference", "control X", ...
    std::map<std::string, std::map<std::string, std::string>> members;     // "ITF.MEMBER" -> field -> text
};

std::string trimmed(const std::string& s) {
    const auto first = s.find_first_not_of(" \t\r\n");
    if (first == std::string::npos) return std::string();
    return s.substr(first, s.find_last_not_of(" \t\r\n") - first + 1);
}

bool readMeanings(const wchar_t* path, Meanings& out) {
    FILE* file = _wfopen(path, L"rb");
    if (file == nullptr) return false;
    std::string content;
    char buffer[4096];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, file)) > 0;) content.append(buffer, n);
    std::fclose(file);

    std::string block, field;
    std::size_t start = 0;
    while (start < content.size()) {
        std::size_t end = content.find('\n', start);
        if (end == std::string::npos) end = content.size();
        std::string line = content.substr(start, end - start);
        start = end + 1;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!line.empty() && line[0] == '#') continue;
        if (!line.empty() && line[0] == '[' && line.back() == ']') {
            block = line.substr(1, line.size() - 2);
            field.clear();
            if (block.rfind("member ", 0) == 0) out.members[block.substr(7)];
            else out.texts[block];
            continue;
        }
        if (block.rfind("member ", 0) == 0) {
            auto& fields = out.members[block.substr(7)];
            const std::string text = trimmed(line);
            if (text.empty()) continue;
            if (line[0] == ' ' || line[0] == '\t') {
                if (!field.empty()) fields[field] += " " + text;
                continue;
            }
            const auto colon = line.find(':');
            if (colon == std::string::npos) continue;
            field = trimmed(line.substr(0, colon));
            fields[field] = trimmed(line.substr(colon + 1));
        } else if (!block.empty()) {
            out.texts[block] += line + "\n";
        }
    }
    for (auto& [name, text] : out.texts) text = trimmed(text);
    return true;
}

std::string declared(KivTlbType type) {
    switch (type) {
    case KivTlbType::Void: return "void";
    case KivTlbType::I1: return "VT_I1";
    case KivTlbType::I2: return "VT_I2";
    case KivTlbType::I4: return "VT_I4";
    case KivTlbType::UI4: return "VT_UI4";
    case KivTlbType::R8: return "VT_R8";
    case KivTlbType::Bstr: return "VT_BSTR";
    case KivTlbType::OleColor: return "OLE_COLOR";
    case KivTlbType::EColors: return "eColors";
    }
    return "?";
}

std::string passed(VARTYPE type) {
    switch (type) {
    case VT_EMPTY: return "void";
    case VT_I1: return "VT_I1";
    case VT_I2: return "VT_I2";
    case VT_I4: return "VT_I4";
    case VT_UI4: return "VT_UI4";
    case VT_R8: return "VT_R8";
    case VT_BSTR: return "VT_BSTR";
    case VT_BOOL: return "VT_BOOL";
    default: return "VT_" + std::to_string(type);
    }
}

// A property's type, or a method's or event's result followed by its parameters.
std::string signature(const KivMember& m, bool declaredTypes) {
    std::string s = declaredTypes ? declared(m.tlb) : passed(m.disp);
    if (m.isProperty) return "`" + s + "`";
    s += " (";
    for (int p = 0; p < m.paramCount; ++p) {
        if (p > 0) s += ", ";
        s += (declaredTypes ? declared(m.params[p].tlb) : passed(m.params[p].disp)) + " " + KivAscii(m.params[p].name);
    }
    return "`" + s + ")`";
}

// A table cell: one line, with the column separator escaped.
std::string cell(const std::string& text) {
    std::string out;
    for (char c : text) {
        if (c == '|') out += "\\|";
        else if (c != '\n') out.push_back(c);
    }
    return out;
}

class Writer {
public:
    explicit Writer(const Meanings& meanings) : m_meanings(meanings) {}

    std::string text(const std::string& block) {
        const auto it = m_meanings.texts.find(block);
        if (it == m_meanings.texts.end() || it->second.empty()) {
            m_gaps.push_back("no text [" + block + "]");
            return "**(no text written)**";
        }
        m_used.insert(block);
        return it->second;
    }

    void rows(std::string& out, const KivDispInterface* itf, bool events) {
        for (int i = 0; itf != nullptr && i < itf->memberCount; ++i) {
            const KivMember& m = itf->members[i];
            const std::string key = KivAscii(itf->name) + "." + KivAscii(m.name);
            const auto it = m_meanings.members.find(key);
            m_used.insert("member " + key);
            const char* kind = events ? "event" : !m.isProperty ? "method" : m.isStock ? "stock property" : "property";
            out += "| `" + KivAscii(m.name) + "` | " + std::to_string(m.dispid) + " | " + kind + " | " + signature(m, true) +
                   " | " + signature(m, false);
            for (const char* field : kFields) {
                std::string value;
                if (it != m_meanings.members.end()) {
                    const auto f = it->second.find(field);
                    if (f != it->second.end()) value = f->second;
                }
                if (value.empty()) {
                    m_gaps.push_back(key + ": no \"" + field + "\"");
                    value = "**(not written)**";
                }
                out += " | " + cell(value);
            }
            out += " |\n";
        }
    }

    std::string gaps() {
        for (const auto& [name, text] : m_meanings.texts)
            if (m_used.count(name) == 0) m_gaps.push_back("a text for nothing in the library: [" + name + "]");
        for (const auto& [name, fields] : m_meanings.members)
            if (m_used.count("member " + name) == 0) m_gaps.push_back("a member that does not exist: " + name);
        std::string out;
        for (const std::string& gap : m_gaps) out += "- " + gap + "\n";
        return out;
    }

private:
    const Meanings& m_meanings;
    std::set<std::string> m_used;
    std::vector<std::string> m_gaps;
};

}  // namespace

bool KivWriteReference(const KivModuleModel& model, const wchar_t* path) {
    Meanings meanings;
    if (!readMeanings(model.referenceMeanings.c_str(), meanings)) {
        std::fwprintf(stderr, L"mktypelib: cannot read the reference's meanings \"%ls\"\n", model.referenceMeanings.c_str());
        return false;
    }
    const KivTypeLibDesc& desc = *model.library;
    Writer writer(meanings);
    std::string out = "# Member reference\n\n";
    out += "<!-- Written by tools/mktypelib from the dispatch tables and tools/mktypelib/reference-meanings.txt: "
           "edit those and copy the build's module/reference.md here. -->\n\n";
    out += writer.text("reference") + "\n";

    for (int c = 0; c < desc.coclassCount; ++c) {
        const KivCoclass& co = desc.coclasses[c];
        out += "\n## " + KivAscii(co.help) + " (`" + KivAscii(co.name) + "`)\n\n";
        out += "Class id `" + KivGuidAscii(*co.clsid) + "`; dispatch interface `" + KivAscii(co.dispatch->name) + "` `" +
               KivGuidAscii(*co.dispatch->iid) + "`; event interface `" + KivAscii(co.events->name) + "` `" +
               KivGuidAscii(*co.events->iid) + "`.\n\n";
        out += writer.text("control " + KivAscii(co.name)) + "\n\n";
        if (co.dispatch->memberCount + co.events->memberCount == 0) continue;
        out += "| member | DISPID | kind | declared (type library) | passed (dispatch) | what it does | units | "
               "bad input (silent outcome) | window |\n";
        out += "|---|---|---|---|---|---|---|---|---|\n";
        writer.rows(out, co.dispatch, false);
        writer.rows(out, co.events, true);
    }

    out += "\n## The `" + KivAscii(desc.enumName) + "` enumeration (alias `" + KivAscii(desc.aliasName) + "`)\n\n";
    out += writer.text("enumeration") + "\n\n| constant | value |\n|---|---|\n";
    for (int i = 0; i < desc.constantCount; ++i)
        out += "| `" + KivAscii(desc.constants[i].name) + "` | " + std::to_string(desc.constants[i].value) + " |\n";

    const std::string gaps = writer.gaps();
    if (!gaps.empty()) {
        out += "\n## Gaps in this reference\n\n" + gaps;
        std::fprintf(stderr, "mktypelib: the reference has gaps:\n%s", gaps.c_str());
    }

    return KivWriteTextFile(path, out);
}
