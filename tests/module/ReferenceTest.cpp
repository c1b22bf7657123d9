// The member reference (docs/reference.md) against the built module: every member of every
// dispinterface and event interface of the type library, read back through oleaut32, has its row
// with its DISPID, kind and declared types, and the reference names no member the library does not
// have; every result comes back through IDispatch::Invoke in the type the reference says is passed.
#include <gtest/gtest.h>
#include <windows.h>
#include <oleauto.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "KivCom.h"
#include "ModulePath.h"
#include "TypeLibText.h"

namespace {

// One row of the reference, or one member of the library in the same words.
struct Row {
    std::string kind, declared, passed;
    DISPID dispid = 0;
    int params = 0;  // a method's parameter count, from the library
};
using Rows = std::map<std::string, Row>;            // by member name
using Interfaces = std::map<std::string, Rows>;     // by interface name

std::string readFile(const std::wstring& path) {
    std::string out;
    FILE* f = _wfopen(path.c_str(), L"rb");
    if (f == nullptr) return out;
    char buffer[4096];
    for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, f)) > 0;) out.append(buffer, n);
    std::fclose(f);
    return out;
}

std::wstring referencePath() {
    std::wstring path = L"Z:" KIV_REFERENCE_PATH_W;
    for (wchar_t& c : path)
        if (c == L'/') c = L'\\';
    return path;
}

// The text between the first pair of backticks after `from`, or "".
std::string backticked(const std::string& line, std::size_t from = 0) {
    const auto open = line.find('`', from);
    const auto close = open == std::string::npos ? open : line.find('`', open + 1);
    return close == std::string::npos ? std::string() : line.substr(open + 1, close - open - 1);
}

// Each control's section names its dispatch and event interfaces on its identity line, then lists
// the members of both in one table; event rows belong to the event interface.
Interfaces parseReference(const std::string& text, std::string& problems) {
    Interfaces out;
    std::string dispatch, events;
    std::size_t start = 0;
    while (start < text.size()) {
        std::size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        const std::string line = text.substr(start, end - start);
        start = end + 1;
        if (line.rfind("## ", 0) == 0) {
            dispatch.clear();  // a new section: its rows are members only under a control's identity line
            events.clear();
        } else if (line.rfind("Class id `", 0) == 0) {
            dispatch = backticked(line, line.find("dispatch interface"));
            events = backticked(line, line.find("event interface"));
            out[dispatch];
            out[events];
        } else if (line.rfind("| `", 0) == 0 && !dispatch.empty()) {
            std::vector<std::string> cells;
            std::size_t from = 2;
            for (int c = 0; c < 5; ++c) {
                const auto bar = line.find(" | ", from);
                if (bar == std::string::npos) break;
                cells.push_back(line.substr(from, bar - from));
                from = bar + 3;
            }
            if (cells.size() < 5) {
                problems += "a row that is not a member's: " + line.substr(0, 60) + "\n";
                continue;
            }
            Row row{cells[2], backticked(cells[3]), backticked(cells[4]), std::atoi(cells[1].c_str())};
            out[row.kind == "event" ? events : dispatch][backticked(cells[0])] = row;
        }
        if (line.find("(not written)") != std::string::npos || line.find("(no text written)") != std::string::npos ||
            line.rfind("## Gaps", 0) == 0)
            problems += "a gap: " + line.substr(0, 80) + "\n";
    }
    return out;
}

// A declared type as the reference writes it: "VT_I4", "void", or a user-defined type's name.
std::string declaredName(ITypeInfo* ti, const TYPEDESC& t) {
    const std::string name = typeName(ti, t);
    return t.vt == VT_VOID || t.vt == VT_USERDEFINED ? name : "VT_" + name;
}

// The members of one interface of the library, in the reference's words.
Rows libraryRows(ITypeInfo* ti, bool events) {
    Rows out;
    TYPEATTR* attr = nullptr;
    ti->GetTypeAttr(&attr);
    for (UINT i = 0; i < attr->cVars; ++i) {
        VARDESC* v = nullptr;
        ti->GetVarDesc(i, &v);
        KivBstr name;
        ti->GetDocumentation(v->memid, name.put(), nullptr, nullptr, nullptr);
        const bool stock = (v->wVarFlags & VARFLAG_FBINDABLE) != 0;
        out[narrow(name.get())] = Row{stock ? "stock property" : "property", declaredName(ti, v->elemdescVar.tdesc), "", v->memid};
        ti->ReleaseVarDesc(v);
    }
    for (UINT i = 0; i < attr->cFuncs; ++i) {
        FUNCDESC* f = nullptr;
        ti->GetFuncDesc(i, &f);
        if (!isInherited(f)) {
            BSTR names[8] = {};
            UINT count = 0;
            ti->GetNames(f->memid, names, 8, &count);
            std::string declared = declaredName(ti, f->elemdescFunc.tdesc) + " (";
            for (SHORT p = 0; p < f->cParams; ++p) {
                if (p > 0) declared += ", ";
                declared += declaredName(ti, f->lprgelemdescParam[p].tdesc) + " " +
                            (static_cast<UINT>(p + 1) < count ? narrow(names[p + 1]) : "?");
            }
            out[narrow(names[0])] = Row{events ? "event" : "method", declared + ")", "", f->memid, f->cParams};
            for (UINT n = 0; n < count; ++n) SysFreeString(names[n]);
        }
        ti->ReleaseFuncDesc(f);
    }
    ti->ReleaseTypeAttr(attr);
    return out;
}

struct Coclass {
    CLSID clsid;
    std::string dispatch, events;
};

// The library's dispinterfaces and event interfaces with their members, and its coclasses.
struct Library {
    Library() {
        CoInitialize(nullptr);
        hr = LoadTypeLibEx(kivModulePath().c_str(), REGKIND_NONE, lib.put());
        for (UINT i = 0; SUCCEEDED(hr) && i < lib->GetTypeInfoCount(); ++i) {
            KivComPtr<ITypeInfo> ti;
            lib->GetTypeInfo(i, ti.put());
            TYPEATTR* attr = nullptr;
            ti->GetTypeAttr(&attr);
            if (attr->typekind == TKIND_COCLASS) {
                Coclass c{attr->guid, "", ""};
                for (UINT k = 0; k < attr->cImplTypes; ++k) {
                    HREFTYPE ref = 0;
                    INT flags = 0;
                    KivComPtr<ITypeInfo> impl;
                    ti->GetRefTypeOfImplType(k, &ref);
                    ti->GetImplTypeFlags(k, &flags);
                    ti->GetRefTypeInfo(ref, impl.put());
                    KivBstr name;
                    impl->GetDocumentation(MEMBERID_NIL, name.put(), nullptr, nullptr, nullptr);
                    const bool source = (flags & IMPLTYPEFLAG_FSOURCE) != 0;
                    (source ? c.events : c.dispatch) = narrow(name.get());
                    interfaces[narrow(name.get())] = libraryRows(impl.get(), source);
                }
                coclasses.push_back(c);
            }
            ti->ReleaseTypeAttr(attr);
        }
    }
    ~Library() {
        lib.reset();
        CoUninitialize();
    }
    HRESULT hr;
    KivComPtr<ITypeLib> lib;
    Interfaces interfaces;
    std::vector<Coclass> coclasses;
};

// A control of the module, made by its class object without registration and without a window.
KivComPtr<IDispatch> newControl(const CLSID& clsid) {
    static const HMODULE module = LoadLibraryW(kivModulePath().c_str());
    auto getClassObject = KivProcAddress<HRESULT(WINAPI*)(REFCLSID, REFIID, void**)>(module, "DllGetClassObject");
    KivComPtr<IClassFactory> factory;
    KivComPtr<IDispatch> control;
    if (getClassObject != nullptr && SUCCEEDED(getClassObject(clsid, IID_IClassFactory, factory.putVoid())))
        factory->CreateInstance(nullptr, IID_IDispatch, control.putVoid());
    return control;
}

std::string vtName(VARTYPE vt) {
    switch (vt) {
    case VT_EMPTY: return "void";
    case VT_I2: return "VT_I2";
    case VT_I4: return "VT_I4";
    case VT_R8: return "VT_R8";
    case VT_BSTR: return "VT_BSTR";
    case VT_BOOL: return "VT_BOOL";
    default: return "vt" + std::to_string(vt);
    }
}

// Calls a member with `args` (declaration order), the result in `result` when given.
HRESULT invoke(IDispatch* d, DISPID id, WORD flags, std::vector<VARIANT> args, VARIANT* result) {
    std::vector<VARIANT> reversed(args.rbegin(), args.rend());
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS params{reversed.data(), flags == DISPATCH_PROPERTYPUT ? &put : nullptr, static_cast<UINT>(reversed.size()),
                      flags == DISPATCH_PROPERTYPUT ? 1u : 0u};
    return d->Invoke(id, IID_NULL, 0, flags, &params, result, nullptr, nullptr);
}

VARIANT ui4(ULONG value) {
    VARIANT v;
    V_VT(&v) = VT_UI4;
    V_UI4(&v) = value;
    return v;
}

}  // namespace

TEST(Reference, EveryMemberOfTheTypeLibraryIsInTheReferenceAndNoOther) {
    Library library;
    ASSERT_EQ(library.hr, S_OK);
    std::string problems;
    const std::string text = readFile(referencePath());
    ASSERT_FALSE(text.empty()) << "cannot read the reference";
    const Interfaces reference = parseReference(text, problems);
    EXPECT_EQ(problems, "");
    ASSERT_EQ(library.interfaces.size(), 12u);
    for (const auto& [itf, members] : library.interfaces) {
        SCOPED_TRACE(itf);
        const auto written = reference.find(itf);
        ASSERT_NE(written, reference.end()) << "the reference has no section for it";
        for (const auto& [name, row] : members) {
            const auto r = written->second.find(name);
            if (r == written->second.end()) {
                ADD_FAILURE() << name << " is not in the reference";
                continue;
            }
            EXPECT_EQ(r->second.dispid, row.dispid) << name;
            EXPECT_EQ(r->second.kind, row.kind) << name;
            EXPECT_EQ(r->second.declared, row.declared) << name;
        }
        for (const auto& [name, row] : written->second)
            if (members.count(name) == 0) ADD_FAILURE() << "the reference names " << name << ", which does not exist";
    }
    for (const auto& [itf, members] : reference)
        if (library.interfaces.count(itf) == 0) ADD_FAILURE() << "the reference has a section for " << itf << ", not in the library";
}

// What every property and method gives back through Invoke on a control without a window, arguments
// left empty (each converts to its type's zero), against the reference's "passed" type; and the
// members whose declared and passed types differ, written out here.
TEST(Reference, DeclaredAndPassedTypesDifferWhereTheReferenceSays) {
    Library library;
    ASSERT_EQ(library.hr, S_OK);
    std::string problems;
    const Interfaces reference = parseReference(readFile(referencePath()), problems);
    std::map<std::string, KivComPtr<IDispatch>> controls;
    for (const Coclass& c : library.coclasses) {
        KivComPtr<IDispatch> d = newControl(c.clsid);
        ASSERT_TRUE(d) << c.dispatch;
        const auto written = reference.find(c.dispatch);
        ASSERT_NE(written, reference.end()) << c.dispatch;
        for (const auto& [name, member] : library.interfaces[c.dispatch]) {
            SCOPED_TRACE(c.dispatch + "." + name);
            const auto row = written->second.find(name);
            ASSERT_NE(row, written->second.end());
            const bool method = member.kind == "method";
            std::vector<VARIANT> args(static_cast<std::size_t>(member.params));
            for (VARIANT& a : args) VariantInit(&a);
            KivVariant result;
            ASSERT_EQ(invoke(d.get(), member.dispid, method ? DISPATCH_METHOD : DISPATCH_PROPERTYGET, args, &result.v), S_OK);
            EXPECT_EQ(vtName(V_VT(&result.v)), row->second.passed.substr(0, row->second.passed.find(' ')));
        }
        controls[c.dispatch] = d;
    }

    // Written out: declared long, answers a boolean (true, whatever it did).
    const Row& add = library.interfaces["_DKivColor"]["AddColorIndex"];
    EXPECT_EQ(add.declared, "VT_I4 (VT_I2 idxTev)");
    KivVariant added;
    VARIANT index;
    V_VT(&index) = VT_I2;
    V_I2(&index) = 42;
    ASSERT_EQ(invoke(controls["_DKivColor"].get(), add.dispid, DISPATCH_METHOD, {index}, &added.v), S_OK);
    EXPECT_EQ(V_VT(&added.v), VT_BOOL);
    EXPECT_EQ(V_BOOL(&added.v), VARIANT_TRUE);
    // Declared as an 8-bit integer, read back as a boolean; so is the colour control's long flag.
    EXPECT_EQ(library.interfaces["_DKivHatch"]["Metric"].declared, "VT_I1");
    KivVariant metric;
    ASSERT_EQ(invoke(controls["_DKivHatch"].get(), 2, DISPATCH_PROPERTYGET, {}, &metric.v), S_OK);
    EXPECT_EQ(V_VT(&metric.v), VT_BOOL);
    EXPECT_EQ(V_BOOL(&metric.v), VARIANT_TRUE);
    EXPECT_EQ(library.interfaces["_DKivColor"]["DisplayApprovalStatusColor"].declared, "VT_I4");
    KivVariant display;
    ASSERT_EQ(invoke(controls["_DKivColor"].get(), 16, DISPATCH_PROPERTYGET, {}, &display.v), S_OK);
    EXPECT_EQ(V_VT(&display.v), VT_BOOL);
    // Declared unsigned, passed as a long: an unsigned argument is taken.
    EXPECT_EQ(library.interfaces["_DKivColor"]["Tev_Equivalent"].declared, "VT_I2 (VT_UI4 idxRGB)");
    KivVariant tev;
    EXPECT_EQ(invoke(controls["_DKivColor"].get(), 10, DISPATCH_METHOD, {ui4(0x000000FFu)}, &tev.v), S_OK);
    EXPECT_EQ(V_VT(&tev.v), VT_I2);
    EXPECT_EQ(V_I2(&tev.v), 1);
    // A system colour as an OLE_COLOR, declared OLE_COLOR and passed as a long: a negative long.
    IDispatch* hatch = controls["_DKivHatch"].get();
    EXPECT_EQ(library.interfaces["_DKivHatch"]["ForeColor"].declared, "OLE_COLOR");
    VARIANT system;
    V_VT(&system) = VT_I4;
    V_I4(&system) = static_cast<LONG>(0x80000005u);
    EXPECT_EQ(invoke(hatch, DISPID_FORECOLOR, DISPATCH_PROPERTYPUT, {system}, nullptr), S_OK);
    KivVariant fore;
    ASSERT_EQ(invoke(hatch, DISPID_FORECOLOR, DISPATCH_PROPERTYGET, {}, &fore.v), S_OK);
    EXPECT_EQ(V_VT(&fore.v), VT_I4);
    EXPECT_EQ(static_cast<ULONG>(V_I4(&fore.v)), 0x80000005u);
}
