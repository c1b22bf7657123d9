// The type library, read back from the built module through LoadTypeLibEx and ITypeInfo: the library's
// identity, the 20 types in order, every member of every interface with its DISPID, kind, declared
// types, flags and help string, the enumeration, and the edge cases. The expected facts below are
// written out here, independently of the tables that built the library.
#include <gtest/gtest.h>
#include <windows.h>
#include <oleauto.h>

#include <map>
#include <string>
#include <vector>

#include "KivCom.h"
#include "ModulePath.h"
#include "TypeLibText.h"

namespace {

struct Types {
    Types() {
        CoInitialize(nullptr);
        hr = LoadTypeLibEx(kivModulePath().c_str(), REGKIND_NONE, lib.put());
    }
    ~Types() {
        lib.reset();
        CoUninitialize();
    }
    HRESULT hr;
    KivComPtr<ITypeLib> lib;
};

// The functions a reader reports for a dispinterface also include the 7 it inherits from IUnknown
// and IDispatch: counted apart.
int inheritedCount(ITypeInfo* ti) {
    TYPEATTR* attr = nullptr;
    ti->GetTypeAttr(&attr);
    int n = 0;
    for (UINT i = 0; i < attr->cFuncs; ++i) {
        FUNCDESC* f = nullptr;
        ti->GetFuncDesc(i, &f);
        if (isInherited(f)) ++n;
        ti->ReleaseFuncDesc(f);
    }
    ti->ReleaseTypeAttr(attr);
    return n;
}

// One member as "P Name id type [stock]" or "M Name id result(type name, ...)" plus its help string.
std::vector<std::string> members(ITypeInfo* ti) {
    std::vector<std::string> out;
    TYPEATTR* attr = nullptr;
    ti->GetTypeAttr(&attr);
    for (UINT i = 0; i < attr->cVars; ++i) {
        VARDESC* v = nullptr;
        ti->GetVarDesc(i, &v);
        KivBstr name, help;
        ti->GetDocumentation(v->memid, name.put(), help.put(), nullptr, nullptr);
        std::string s = "P " + narrow(name.get()) + " " + std::to_string(v->memid) + " " + typeName(ti, v->elemdescVar.tdesc);
        if (v->wVarFlags == (VARFLAG_FBINDABLE | VARFLAG_FREQUESTEDIT)) s += " stock";
        else if (v->wVarFlags != 0) s += " flags" + std::to_string(v->wVarFlags);
        if (v->varkind != VAR_DISPATCH) s += " notdispatch";
        s += " '" + narrow(help.get()) + "'";
        out.push_back(s);
        ti->ReleaseVarDesc(v);
    }
    for (UINT i = 0; i < attr->cFuncs; ++i) {
        FUNCDESC* f = nullptr;
        ti->GetFuncDesc(i, &f);
        if (isInherited(f)) {
            ti->ReleaseFuncDesc(f);
            continue;
        }
        BSTR names[8] = {};
        UINT count = 0;
        ti->GetNames(f->memid, names, 8, &count);
        KivBstr help;
        ti->GetDocumentation(f->memid, nullptr, help.put(), nullptr, nullptr);
        std::string s = "M " + narrow(names[0]) + " " + std::to_string(f->memid) + " " + typeName(ti, f->elemdescFunc.tdesc) + "(";
        for (SHORT p = 0; p < f->cParams; ++p) {
            if (p > 0) s += ", ";
            s += typeName(ti, f->lprgelemdescParam[p].tdesc) + " " + (static_cast<UINT>(p + 1) < count ? narrow(names[p + 1]) : "?");
            if (f->lprgelemdescParam[p].paramdesc.wParamFlags != PARAMFLAG_NONE) s += " [flags]";
        }
        s += ")";
        if (f->funckind != FUNC_DISPATCH || f->invkind != INVOKE_FUNC || f->cParamsOpt != 0) s += " odd";
        s += " '" + narrow(help.get()) + "'";
        out.push_back(s);
        for (UINT n = 0; n < count; ++n) SysFreeString(names[n]);
        ti->ReleaseFuncDesc(f);
    }
    ti->ReleaseTypeAttr(attr);
    return out;
}

using Lines = std::vector<std::string>;

const Lines kColor = {
    "P ComboIndex 1 I4 'property ComboIndex'",
    "P BlockColorIndex 2 UI4 'property BlockColorIndex'",
    "P LayerColorIndex 3 UI4 'property LayerColorIndex'",
    "P DefaultColorIndex 14 UI4 'property DefaultColorIndex'",
    "P ApprovalStatusColorIndex 15 UI4 'property ApprovalStatusColorIndex'",
    "P DisplayApprovalStatusColor 16 I4 'property DisplayApprovalStatusColor'",
    "P Enabled -514 I1 stock ''",
    "M GetSelColorIndex 5 I2() 'method GetSelColorIndex'",
    "M SetSelColorIndex 6 void(I2 idxTev) 'method SetSelColorIndex'",
    "M AddColorIndex 7 I4(I2 idxTev) 'method AddColorIndex'",
    "M SetComboText 8 void(eColors color, BSTR colorText) 'method SetComboText'",
    "M RGB_Equivalent 9 UI4(I2 idxTev) 'method RGB_Equivalent'",
    "M Tev_Equivalent 10 I2(UI4 idxRGB) 'method Tev_Equivalent'",
    "M FindColor 11 I4(I2 idxTev) 'method FindColor'",
    "M SetTooltipText 12 void(BSTR txt) 'method SetTooltipText'",
    "M AboutDisplay 13 void(I1 display) 'method AboutDisplay'",
};
const Lines kColorEvents = {"M SelChange 1 void(I4 comboIdx, I4 colorIdx) ''", "M SelAndCloseUp 2 void(I4 comboIdx, I4 colorIdx) ''"};
const Lines kLinetypeCommon = {
    "P ComboIndex 1 I4 'property ComboIndex'",
    "P SupportPath 2 BSTR 'property SupportPath'",
    "P LinetypeFile 3 BSTR 'property LinetypeFile'",
    "P TooltipText 5 BSTR 'property TooltipText'",
    "P Enabled -514 I1 stock ''",
    "M Initialize 6 void() 'method Initialize'",
    "M RemoveAll 7 void() 'method RemoveAll'",
    "M LoadLinetype 8 void(BSTR name) 'method LoadLinetype'",
    "M DefineLinetype 9 void(BSTR name, BSTR definition) 'method DefineLinetype'",
    "M SelectItemAt 10 BSTR(I4 idx) 'method SelectItemAt'",
    "M DefineLinetypeByLayer 11 void(BSTR name, BSTR definition) 'method DefineLinetypeByLayer'",
    "M DefineLinetypeByBlock 12 void(BSTR name, BSTR definition) 'method DefineLinetypeByBlock'",
    "M DefineLinetypeContinuous 13 void(BSTR name, BSTR definition) 'method DefineLinetypeContinuous'",
    "M SelectItem 14 BSTR(BSTR name) 'method SelectItem'",
    "M GetCount 15 I4() 'method GetCount'",
    "M UnloadLinetype 16 void(BSTR name) 'method UnloadLinetype'",
};
Lines linetype() {
    Lines l = kLinetypeCommon;
    l.push_back("M SetAboutDisplay 17 void(I1 display) 'method SetAboutDisplay'");
    return l;
}
const Lines kNameEvents = {"M SelChange 1 void(BSTR name) ''", "M SelAndCloseUp 2 void(BSTR name) ''"};
const Lines kLineweight = {
    "P Enabled -514 I1 stock ''",
    "P TooltipText 1 BSTR 'property TooltipText'",
    "P Measurement 2 I2 'property Measurement'",
    "M SelectItem 3 BSTR(BSTR index) 'method SelectItem'",
    "M GetCurrentItemLineWeight 4 I4() 'method GetCurrentItemLineWeight'",
    "M GetItemText 5 BSTR(I4 index) 'method GetItemText'",
    "M SelectItemByLineWeight 6 void(I4 lw) 'method SelectItemByLineWeight'",
    "M SetByLayerText 7 void(BSTR txt) 'method SetByLayerText'",
    "M SetByBlockText 8 void(BSTR txt) 'method SetByBlockText'",
    "M SetDefinitionText 9 void(BSTR txt) 'method SetDefinitionText'",
    "M SetAboutDisplay 10 void(I1 display) 'method SetAboutDisplay'",
};
const Lines kLineweightEvents = {"M SelChange 1 void(BSTR value) ''", "M SelAndCloseUp 2 void(BSTR name) ''"};
const Lines kHatch = {
    "P Enabled -514 I1 stock ''",
    "P ForeColor -513 OLE_COLOR stock ''",
    "P BackColor -501 OLE_COLOR stock ''",
    "P Metric 2 I1 'property Metric'",
    "P ZoomFactor 3 R8 'property ZoomFactor'",
    "P Pattern 4 BSTR 'property Pattern'",
    "M Refresh 1 void() 'method Refresh'",
};

struct TypeFact {
    TYPEKIND kind;
    const char* name;
    const wchar_t* guid;  // nullptr: none
    const char* help;
    WORD flags;
    Lines members;
};

std::vector<TypeFact> expectedTypes() {
    const WORD disp = TYPEFLAG_FHIDDEN | TYPEFLAG_FDISPATCHABLE, events = TYPEFLAG_FDISPATCHABLE,
               cls = TYPEFLAG_FCANCREATE | TYPEFLAG_FCONTROL;
    return {
        {TKIND_ALIAS, "eColors", nullptr, "", 0, {}},
        {TKIND_ENUM, "Colors", nullptr, "", 0, {}},
        {TKIND_DISPATCH, "_DKivColor", L"{5F9D0F49-2079-46BE-9220-C51E2A021D11}", "Dispatch interface for KivColorControl", disp, kColor},
        {TKIND_DISPATCH, "_DKivColorEvents", L"{E2A8D3CB-CEDE-42DA-8883-1554CD8030DD}", "Event interface for KivColorControl", events, kColorEvents},
        {TKIND_COCLASS, "KivColor", L"{134FFBAD-0ECF-4346-BA9D-1EDC507A8A56}", "KivColorControl", cls, {}},
        {TKIND_DISPATCH, "_DKivLayer", L"{DDDF607E-5288-418F-B18F-66E713B1A18A}", "Dispatch interface for KivLayerControl", disp, {}},
        {TKIND_DISPATCH, "_DKivLayerEvents", L"{41FF97A2-4D74-4374-8D7C-E458F28AEA0F}", "Event interface for KivLayerControl", events, {}},
        {TKIND_COCLASS, "KivLayer", L"{A7D6D7BA-DF9F-4E65-84F6-1239BE58B84A}", "KivLayerControl", cls, {}},
        {TKIND_DISPATCH, "_DKivLinetype", L"{09603A20-95BF-4876-B23A-8494BA8F4A02}", "Dispatch interface for KivLinetypeControl", disp, linetype()},
        {TKIND_DISPATCH, "_DKivLinetypeEvents", L"{B38FC9AE-123A-4217-9E92-7F2B3E58EA52}", "Event interface for KivLinetypeControl", events, kNameEvents},
        {TKIND_COCLASS, "KivLinetype", L"{2EEDA6B2-2037-4824-8629-9EAA7758E9BF}", "KivLinetypeControl", cls, {}},
        {TKIND_DISPATCH, "_DKivLineweight", L"{9D8E3FCB-ADCF-4C49-9BAC-98A07C49738F}", "Dispatch interface for KivLineweightControl", disp, kLineweight},
        {TKIND_DISPATCH, "_DKivLineweightEvents", L"{B67DDBB9-C50E-4CE2-A70C-F5A5D59A92AF}", "Event interface for KivLineweightControl", events, kLineweightEvents},
        {TKIND_COCLASS, "KivLineweight", L"{FB47E4A7-11D0-4FFE-9EC1-EEF7C8047D13}", "KivLineweightControl", cls, {}},
        {TKIND_DISPATCH, "_DKivHatch", L"{69B2F882-0370-4645-8A35-517AA8E22A92}", "Dispatch interface for KivHatchControl", disp, kHatch},
        {TKIND_DISPATCH, "_DKivHatchEvents", L"{31864F54-4ECC-4D0A-A3C2-A8BE66536B8E}", "Event interface for KivHatchControl", events, {}},
        {TKIND_COCLASS, "KivHatch", L"{D15E93F0-B2C2-4728-8484-4E561229776F}", "KivHatchControl", cls, {}},
        {TKIND_DISPATCH, "_DKivLTypeList", L"{0C0BD408-CA81-404D-A161-A2952FAD32D4}", "Dispatch interface for KivLinetypeListControl", disp, kLinetypeCommon},
        {TKIND_DISPATCH, "_DKivLTypeListEvents", L"{57D2AB1D-50F4-48D9-A9FD-62702A5527D6}", "Event interface for KivLinetypeListControl", events, {"M SelChange 1 void(BSTR name) ''"}},
        {TKIND_COCLASS, "KivLTypeList", L"{DABAFA9E-2B6F-40B0-95BB-373AB4B2FC18}", "KivLinetypeListControl", cls, {}},
    };
}

GUID guidOf(const wchar_t* text) {
    GUID g{};
    CLSIDFromString(text, &g);
    return g;
}

}  // namespace

TEST(TypeLib, LibraryAttributes) {
    Types t;
    ASSERT_EQ(t.hr, S_OK);
    TLIBATTR* attr = nullptr;
    ASSERT_EQ(t.lib->GetLibAttr(&attr), S_OK);
    EXPECT_TRUE(IsEqualGUID(attr->guid, guidOf(L"{64000C4D-B3B0-460E-85BC-05C90B5ADC21}")));
    EXPECT_EQ(attr->wMajorVerNum, 1);
    EXPECT_EQ(attr->wMinorVerNum, 0);
    EXPECT_EQ(attr->lcid, 0x409u);
    EXPECT_EQ(attr->syskind, SYS_WIN64);
    EXPECT_EQ(attr->wLibFlags & ~LIBFLAG_FHASDISKIMAGE, LIBFLAG_FCONTROL);  // the reader adds "loaded from disk"
    t.lib->ReleaseTLibAttr(attr);
    KivBstr name, help, file;
    DWORD context = 1;
    ASSERT_EQ(t.lib->GetDocumentation(-1, name.put(), help.put(), &context, file.put()), S_OK);
    EXPECT_EQ(narrow(name.get()), "KIVLORQCONTROLSLib");
    EXPECT_EQ(narrow(help.get()), "KivLorqControls ActiveX Control module");
    EXPECT_EQ(narrow(file.get()), "KivLorqControls.hlp");
    EXPECT_EQ(context, 0u);
}

TEST(TypeLib, TwentyTypesInOrderWithIdentityHelpAndFlags) {
    Types t;
    ASSERT_EQ(t.hr, S_OK);
    const std::vector<TypeFact> expected = expectedTypes();
    ASSERT_EQ(t.lib->GetTypeInfoCount(), 20u);
    for (UINT i = 0; i < 20; ++i) {
        const TypeFact& e = expected[i];
        SCOPED_TRACE(e.name);
        KivComPtr<ITypeInfo> ti;
        ASSERT_EQ(t.lib->GetTypeInfo(i, ti.put()), S_OK);
        TYPEATTR* attr = nullptr;
        ASSERT_EQ(ti->GetTypeAttr(&attr), S_OK);
        EXPECT_EQ(attr->typekind, e.kind);
        EXPECT_EQ(attr->wTypeFlags, e.flags);
        EXPECT_EQ(attr->wMajorVerNum, 0);
        EXPECT_EQ(attr->wMinorVerNum, 0);
        if (e.guid != nullptr) {
            EXPECT_TRUE(IsEqualGUID(attr->guid, guidOf(e.guid)));
        }
        KivBstr name, help;
        DWORD context = 1;
        ti->GetDocumentation(MEMBERID_NIL, name.put(), help.put(), &context, nullptr);
        EXPECT_EQ(narrow(name.get()), e.name);
        EXPECT_EQ(narrow(help.get()), e.help);
        EXPECT_EQ(context, 0u);
        if (e.kind == TKIND_DISPATCH) {
            EXPECT_EQ(members(ti.get()), e.members);
            EXPECT_EQ(inheritedCount(ti.get()), 7);  // IUnknown's 3 and IDispatch's 4, nothing else
            // A pure dispinterface derived from IDispatch: one base, stdole2's IDispatch, no vtable methods.
            ASSERT_EQ(attr->cImplTypes, 1);
            HREFTYPE base = 0;
            ti->GetRefTypeOfImplType(0, &base);
            KivComPtr<ITypeInfo> baseInfo;
            ASSERT_EQ(ti->GetRefTypeInfo(base, baseInfo.put()), S_OK);
            TYPEATTR* baseAttr = nullptr;
            baseInfo->GetTypeAttr(&baseAttr);
            EXPECT_TRUE(IsEqualGUID(baseAttr->guid, IID_IDispatch));
            baseInfo->ReleaseTypeAttr(baseAttr);
            KivComPtr<ITypeLib> baseLib;
            UINT index = 0;
            baseInfo->GetContainingTypeLib(baseLib.put(), &index);
            TLIBATTR* baseLibAttr = nullptr;
            baseLib->GetLibAttr(&baseLibAttr);
            EXPECT_TRUE(IsEqualGUID(baseLibAttr->guid, IID_StdOle));
            EXPECT_EQ(baseLibAttr->wMajorVerNum, 2);
            baseLib->ReleaseTLibAttr(baseLibAttr);
            EXPECT_EQ(attr->wTypeFlags & TYPEFLAG_FDUAL, 0);
        }
        if (e.kind == TKIND_COCLASS) {
            // Its dispinterface (default) and its events (default, source): the two types before it.
            ASSERT_EQ(attr->cImplTypes, 2);
            for (UINT k = 0; k < 2; ++k) {
                HREFTYPE ref = 0;
                ti->GetRefTypeOfImplType(k, &ref);
                KivComPtr<ITypeInfo> implemented;
                ti->GetRefTypeInfo(ref, implemented.put());
                KivBstr implName;
                implemented->GetDocumentation(MEMBERID_NIL, implName.put(), nullptr, nullptr, nullptr);
                EXPECT_EQ(narrow(implName.get()), expected[i - 2 + k].name);
                INT flags = 0;
                ti->GetImplTypeFlags(k, &flags);
                EXPECT_EQ(flags, k == 0 ? IMPLTYPEFLAG_FDEFAULT : (IMPLTYPEFLAG_FDEFAULT | IMPLTYPEFLAG_FSOURCE));
            }
        }
        ti->ReleaseTypeAttr(attr);
    }
}

TEST(TypeLib, ColorsEnumerationAndItsAlias) {
    Types t;
    ASSERT_EQ(t.hr, S_OK);
    KivComPtr<ITypeInfo> alias, enumeration;
    ASSERT_EQ(t.lib->GetTypeInfo(0, alias.put()), S_OK);
    ASSERT_EQ(t.lib->GetTypeInfo(1, enumeration.put()), S_OK);
    TYPEATTR* aliasAttr = nullptr;
    alias->GetTypeAttr(&aliasAttr);
    EXPECT_EQ(typeName(alias.get(), aliasAttr->tdescAlias), "Colors");
    alias->ReleaseTypeAttr(aliasAttr);
    const char* names[] = {"kByApprovalStatus", "kByLayer", "kByBlock", "kByDefault", "kRed",  "kYellow",     "kGreen",
                           "kCyan",             "kBlue",    "kMagenta", "kWhite",     "kSelectColor", "kCustomColor", "kLast"};
    TYPEATTR* attr = nullptr;
    enumeration->GetTypeAttr(&attr);
    ASSERT_EQ(attr->cVars, 14);
    for (UINT i = 0; i < 14; ++i) {
        VARDESC* v = nullptr;
        enumeration->GetVarDesc(i, &v);
        KivBstr name;
        enumeration->GetDocumentation(v->memid, name.put(), nullptr, nullptr, nullptr);
        EXPECT_EQ(narrow(name.get()), names[i]);
        EXPECT_EQ(v->memid, static_cast<MEMBERID>(0x40000000 + i));
        EXPECT_EQ(v->varkind, VAR_CONST);
        EXPECT_EQ(v->elemdescVar.tdesc.vt, VT_INT);  // each constant a 32-bit int
        ASSERT_NE(v->lpvarValue, nullptr);
        EXPECT_EQ(V_I4(v->lpvarValue), static_cast<LONG>(i));  // kLast is 13, the count before it
        enumeration->ReleaseVarDesc(v);
    }
    enumeration->ReleaseTypeAttr(attr);
}

TEST(TypeLib, EnabledIsMinus514InEveryDispinterfaceAndLTypeListEventsHaveOnlySelChange) {
    Types t;
    ASSERT_EQ(t.hr, S_OK);
    for (const wchar_t* iid : {L"{5F9D0F49-2079-46BE-9220-C51E2A021D11}", L"{09603A20-95BF-4876-B23A-8494BA8F4A02}",
                               L"{9D8E3FCB-ADCF-4C49-9BAC-98A07C49738F}", L"{69B2F882-0370-4645-8A35-517AA8E22A92}",
                               L"{0C0BD408-CA81-404D-A161-A2952FAD32D4}"}) {
        KivComPtr<ITypeInfo> ti;
        ASSERT_EQ(t.lib->GetTypeInfoOfGuid(guidOf(iid), ti.put()), S_OK);
        LPOLESTR name = const_cast<LPOLESTR>(L"Enabled");
        MEMBERID id = 0;
        EXPECT_EQ(ti->GetIDsOfNames(&name, 1, &id), S_OK);
        EXPECT_EQ(id, -514);
    }
    KivComPtr<ITypeInfo> events;
    ASSERT_EQ(t.lib->GetTypeInfoOfGuid(guidOf(L"{57D2AB1D-50F4-48D9-A9FD-62702A5527D6}"), events.put()), S_OK);
    LPOLESTR name = const_cast<LPOLESTR>(L"SelAndCloseUp");
    MEMBERID id = 0;
    EXPECT_NE(events->GetIDsOfNames(&name, 1, &id), S_OK);
    name = const_cast<LPOLESTR>(L"SelChange");
    EXPECT_EQ(events->GetIDsOfNames(&name, 1, &id), S_OK);
    EXPECT_EQ(id, 1);
}

TEST(TypeLib, IsResourceTypelibOneInEnglish) {
    HMODULE module = LoadLibraryExW(kivModulePath().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr);
    EXPECT_NE(FindResourceExW(module, L"TYPELIB", MAKEINTRESOURCEW(1), MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US)), nullptr);
    FreeLibrary(module);
}

TEST(ModuleResources, SixToolboxBitmapsAndTheStrings) {
    HMODULE module = LoadLibraryExW(kivModulePath().c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr);
    for (int id = 1; id <= 6; ++id) {
        HBITMAP bitmap = static_cast<HBITMAP>(LoadImageW(module, MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, 0));
        ASSERT_NE(bitmap, nullptr) << id;
        BITMAP info{};
        GetObjectW(bitmap, sizeof info, &info);
        EXPECT_EQ(info.bmWidth, 16) << id;
        EXPECT_EQ(info.bmHeight, 15) << id;
        DeleteObject(bitmap);
    }
    const std::pair<UINT, const char*> strings[] = {
        {1, "KivColorControl"}, {2, "KivColor Property Page"}, {3, "KivLayerControl"}, {4, "KivLayer Property Page"},
        {5, "KivLinetypeControl"}, {6, "KivLinetype Property Page"}, {7, "KivLineweightControl"},
        {8, "KivLineweight Property Page"}, {9, "KivHatchControl"}, {10, "KivHatch Property Page"},
        {11, "KivLinetypeListControl"}, {12, "KivLTypeList Property Page"}, {200, "General"}, {205, "General"},
    };
    for (const auto& [id, text] : strings) {
        wchar_t buffer[128] = {};
        LoadStringW(module, id, buffer, 128);
        EXPECT_EQ(narrow(buffer), text) << id;
    }
    for (int id = 200; id <= 205; ++id) EXPECT_NE(FindResourceW(module, MAKEINTRESOURCEW(id), RT_DIALOG), nullptr) << id;
    FreeLibrary(module);
}
