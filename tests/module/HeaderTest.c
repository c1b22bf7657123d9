/* include/KivLorqControls.h used as a host uses it, from C (and, through HeaderTest.cpp, from C++):
   this file includes <initguid.h> first and so defines the GUIDs; HeaderTestSecond.c includes the
   header alone and only declares them. Every identifier the header gives is checked against the
   type library read back through oleaut32 from the built module (and the pages' class ids against
   the controls' own ISpecifyPropertyPages). The names below are this test's own list; a name the
   header lacks does not compile, a member the library has and the list lacks is counted.
   Prints each failure and "N checked, M failed"; exits 1 on any failure. */
#include <windows.h>
#include <ocidl.h>
#include <oleauto.h>
#include <stdio.h>
#include <string.h>

/* This file defines the header's GUIDs. */
#include <initguid.h>
#include <KivLorqControls.h>

#ifdef __cplusplus
#define CALL(object, method, ...) (object)->method(__VA_ARGS__)
#define CALL0(object, method) (object)->method()
#define REF(guid) (guid)
#else
#define CALL(object, method, ...) (object)->lpVtbl->method((object), __VA_ARGS__)
#define CALL0(object, method) (object)->lpVtbl->method(object)
#define REF(guid) (&(guid))
#endif

/* From HeaderTestSecond.c. */
#ifdef __cplusplus
extern "C" {
#endif
const GUID* secondFileColourClass(void);
int secondFileLinetypeSelChange(void);
#ifdef __cplusplus
}
#endif

static int checked, failed;

static void check(int ok, const char* what, const char* name) {
    ++checked;
    if (!ok) {
        ++failed;
        printf("FAIL %s: %s\n", what, name);
    }
}

struct Dispid {
    const char* coclass;
    const char* member;
    int isEvent;
    long value;
    int seen;
};
#define MEMBER(coclass, member) {#coclass, #member, 0, DISPID_##coclass##_##member, 0}
#define EVENT(coclass, event) {#coclass, #event, 1, DISPID_##coclass##Events_##event, 0}
/* The members both linetype controls have; the list lacks the combo's SetAboutDisplay. */
#define LINETYPE_MEMBERS(coclass)                                                                          \
    MEMBER(coclass, ComboIndex), MEMBER(coclass, SupportPath), MEMBER(coclass, LinetypeFile),              \
        MEMBER(coclass, TooltipText), MEMBER(coclass, Enabled), MEMBER(coclass, Initialize),               \
        MEMBER(coclass, RemoveAll), MEMBER(coclass, LoadLinetype), MEMBER(coclass, DefineLinetype),        \
        MEMBER(coclass, SelectItemAt), MEMBER(coclass, DefineLinetypeByLayer),                             \
        MEMBER(coclass, DefineLinetypeByBlock), MEMBER(coclass, DefineLinetypeContinuous),                 \
        MEMBER(coclass, SelectItem), MEMBER(coclass, GetCount), MEMBER(coclass, UnloadLinetype)
static struct Dispid kDispids[] = {
    MEMBER(KivColor, ComboIndex), MEMBER(KivColor, BlockColorIndex), MEMBER(KivColor, LayerColorIndex),
    MEMBER(KivColor, DefaultColorIndex), MEMBER(KivColor, ApprovalStatusColorIndex),
    MEMBER(KivColor, DisplayApprovalStatusColor), MEMBER(KivColor, Enabled), MEMBER(KivColor, GetSelColorIndex),
    MEMBER(KivColor, SetSelColorIndex), MEMBER(KivColor, AddColorIndex), MEMBER(KivColor, SetComboText),
    MEMBER(KivColor, RGB_Equivalent), MEMBER(KivColor, Tev_Equivalent), MEMBER(KivColor, FindColor),
    MEMBER(KivColor, SetTooltipText), MEMBER(KivColor, AboutDisplay),
    EVENT(KivColor, SelChange), EVENT(KivColor, SelAndCloseUp),
    LINETYPE_MEMBERS(KivLinetype), MEMBER(KivLinetype, SetAboutDisplay),
    EVENT(KivLinetype, SelChange), EVENT(KivLinetype, SelAndCloseUp),
    LINETYPE_MEMBERS(KivLTypeList),
    EVENT(KivLTypeList, SelChange),
    MEMBER(KivLineweight, TooltipText), MEMBER(KivLineweight, Measurement), MEMBER(KivLineweight, Enabled),
    MEMBER(KivLineweight, SelectItem), MEMBER(KivLineweight, GetCurrentItemLineWeight),
    MEMBER(KivLineweight, GetItemText), MEMBER(KivLineweight, SelectItemByLineWeight),
    MEMBER(KivLineweight, SetByLayerText), MEMBER(KivLineweight, SetByBlockText),
    MEMBER(KivLineweight, SetDefinitionText), MEMBER(KivLineweight, SetAboutDisplay),
    EVENT(KivLineweight, SelChange), EVENT(KivLineweight, SelAndCloseUp),
    MEMBER(KivHatch, Enabled), MEMBER(KivHatch, ForeColor), MEMBER(KivHatch, BackColor), MEMBER(KivHatch, Metric),
    MEMBER(KivHatch, ZoomFactor), MEMBER(KivHatch, Pattern), MEMBER(KivHatch, Refresh),
};
#define COUNT(a) ((int)(sizeof(a) / sizeof((a)[0])))

struct Type {
    const char* name;  /* its name in the library */
    const GUID* guid;  /* the header's */
    TYPEKIND kind;
};
static const struct Type kTypes[] = {
    {"KivColor", &CLSID_KivColor, TKIND_COCLASS},
    {"KivLinetype", &CLSID_KivLinetype, TKIND_COCLASS},
    {"KivLTypeList", &CLSID_KivLTypeList, TKIND_COCLASS},
    {"KivLineweight", &CLSID_KivLineweight, TKIND_COCLASS},
    {"KivHatch", &CLSID_KivHatch, TKIND_COCLASS},
    {"KivLayer", &CLSID_KivLayer, TKIND_COCLASS},
    {"_DKivColor", &DIID__DKivColor, TKIND_DISPATCH},
    {"_DKivColorEvents", &DIID__DKivColorEvents, TKIND_DISPATCH},
    {"_DKivLinetype", &DIID__DKivLinetype, TKIND_DISPATCH},
    {"_DKivLinetypeEvents", &DIID__DKivLinetypeEvents, TKIND_DISPATCH},
    {"_DKivLTypeList", &DIID__DKivLTypeList, TKIND_DISPATCH},
    {"_DKivLTypeListEvents", &DIID__DKivLTypeListEvents, TKIND_DISPATCH},
    {"_DKivLineweight", &DIID__DKivLineweight, TKIND_DISPATCH},
    {"_DKivLineweightEvents", &DIID__DKivLineweightEvents, TKIND_DISPATCH},
    {"_DKivHatch", &DIID__DKivHatch, TKIND_DISPATCH},
    {"_DKivHatchEvents", &DIID__DKivHatchEvents, TKIND_DISPATCH},
    {"_DKivLayer", &DIID__DKivLayer, TKIND_DISPATCH},
    {"_DKivLayerEvents", &DIID__DKivLayerEvents, TKIND_DISPATCH},
};

/* Each control's class id and its page's. */
struct Page {
    const GUID* control;
    const GUID* page;
    const char* name;
};
static const struct Page kPages[] = {
    {&CLSID_KivColor, &CLSID_KivColorPropPage, "KivColorPropPage"},
    {&CLSID_KivLinetype, &CLSID_KivLinetypePropPage, "KivLinetypePropPage"},
    {&CLSID_KivLTypeList, &CLSID_KivLTypeListPropPage, "KivLTypeListPropPage"},
    {&CLSID_KivLineweight, &CLSID_KivLineweightPropPage, "KivLineweightPropPage"},
    {&CLSID_KivHatch, &CLSID_KivHatchPropPage, "KivHatchPropPage"},
    {&CLSID_KivLayer, &CLSID_KivLayerPropPage, "KivLayerPropPage"},
};

struct Constant {
    const char* name;
    int value;
    int seen;
};
#define CONSTANT(name) {#name, name, 0}
static struct Constant kConstants[] = {
    CONSTANT(kByApprovalStatus), CONSTANT(kByLayer), CONSTANT(kByBlock), CONSTANT(kByDefault), CONSTANT(kRed),
    CONSTANT(kYellow), CONSTANT(kGreen), CONSTANT(kCyan), CONSTANT(kBlue), CONSTANT(kMagenta), CONSTANT(kWhite),
    CONSTANT(kSelectColor), CONSTANT(kCustomColor), CONSTANT(kLast),
};

static void ascii(const wchar_t* w, char* out, int size) {
    int i = 0;
    for (; w != NULL && w[i] != 0 && i < size - 1; ++i) out[i] = (char)(w[i] < 128 ? w[i] : '?');
    out[i] = 0;
}

static void typeName(ITypeInfo* info, char* out, int size) {
    BSTR name = NULL;
    out[0] = 0;
    if (SUCCEEDED(CALL(info, GetDocumentation, MEMBERID_NIL, &name, NULL, NULL, NULL))) ascii(name, out, size);
    SysFreeString(name);
}

/* Marks the list's entry for one member of one of a coclass's interfaces; an unknown member fails. */
static void member(const char* coclass, int isEvent, const char* name, MEMBERID id) {
    int i;
    for (i = 0; i < COUNT(kDispids); ++i) {
        struct Dispid* d = &kDispids[i];
        if (d->isEvent == isEvent && strcmp(d->coclass, coclass) == 0 && strcmp(d->member, name) == 0) {
            check(d->value == id, "DISPID differs from the library's", name);
            ++d->seen;
            return;
        }
    }
    check(0, "a member of the library the header test does not know", name);
}

/* One member of one of a coclass's interfaces, by its id, named as the library names it. */
static void memberOf(ITypeInfo* itf, const char* coclassName, int isEvent, MEMBERID id) {
    BSTR name = NULL;
    char text[64];
    UINT n = 0;
    CALL(itf, GetNames, id, &name, 1, &n);
    ascii(name, text, sizeof text);
    SysFreeString(name);
    member(coclassName, isEvent, text, id);
}

/* Every member of one interface of a coclass, as the library describes it. */
static void interfaceMembers(ITypeInfo* coclass, const char* coclassName, UINT index) {
    HREFTYPE ref = 0;
    ITypeInfo* itf = NULL;
    TYPEATTR* attr = NULL;
    INT flags = 0;
    UINT i;
    CALL(coclass, GetImplTypeFlags, index, &flags);
    if (FAILED(CALL(coclass, GetRefTypeOfImplType, index, &ref)) || FAILED(CALL(coclass, GetRefTypeInfo, ref, &itf))) {
        check(0, "an interface of the coclass cannot be read", coclassName);
        return;
    }
    CALL(itf, GetTypeAttr, &attr);
    for (i = 0; i < attr->cFuncs; ++i) {
        FUNCDESC* f = NULL;
        CALL(itf, GetFuncDesc, i, &f);
        if (f->memid < 0x60000000 || f->memid >= 0x60020000) /* not one of IUnknown's or IDispatch's */
            memberOf(itf, coclassName, (flags & IMPLTYPEFLAG_FSOURCE) != 0, f->memid);
        CALL(itf, ReleaseFuncDesc, f);
    }
    for (i = 0; i < attr->cVars; ++i) {
        VARDESC* v = NULL;
        CALL(itf, GetVarDesc, i, &v);
        memberOf(itf, coclassName, (flags & IMPLTYPEFLAG_FSOURCE) != 0, v->memid);
        CALL(itf, ReleaseVarDesc, v);
    }
    CALL(itf, ReleaseTypeAttr, attr);
    CALL0(itf, Release);
}

typedef HRESULT(WINAPI* GetClassObjectFn)(REFCLSID, REFIID, void**);

/* The page a control names (ISpecifyPropertyPages), from the module itself. */
static void pageOf(GetClassObjectFn getClassObject, const struct Page* p) {
    IClassFactory* factory = NULL;
    ISpecifyPropertyPages* specify = NULL;
    CAUUID pages;
    pages.cElems = 0;
    pages.pElems = NULL;
    if (FAILED(getClassObject(REF(*p->control), REF(IID_IClassFactory), (void**)&factory)) ||
        FAILED(CALL(factory, CreateInstance, NULL, REF(IID_ISpecifyPropertyPages), (void**)&specify)) ||
        FAILED(CALL(specify, GetPages, &pages))) {
        check(0, "the control's pages cannot be read", p->name);
    } else {
        check(pages.cElems == 1 && IsEqualGUID(REF(pages.pElems[0]), REF(*p->page)), "the control names another page", p->name);
    }
    CoTaskMemFree(pages.pElems);
    if (specify != NULL) CALL0(specify, Release);
    if (factory != NULL) CALL0(factory, Release);
    factory = NULL;
    check(SUCCEEDED(getClassObject(REF(*p->page), REF(IID_IClassFactory), (void**)&factory)), "the module has no such page", p->name);
    if (factory != NULL) CALL0(factory, Release);
}

int main(void) {
    wchar_t path[MAX_PATH] = L"Z:" KIV_OCX_PATH_W;
    ITypeLib* lib = NULL;
    TLIBATTR* libAttr = NULL;
    HMODULE module;
    UINT i;
    int t;
    eColors alias = kLast;
    Colors colour = alias;
    for (t = 0; path[t] != 0; ++t)
        if (path[t] == L'/') path[t] = L'\\';
    CoInitialize(NULL);
    if (FAILED(LoadTypeLibEx(path, REGKIND_NONE, &lib))) {
        printf("FAIL the type library cannot be loaded\n");
        return 1;
    }

    /* A few values as the documentation gives them. */
    check(DISPID_KivColor_GetSelColorIndex == 5, "GetSelColorIndex is 5", "DISPID_KivColor_GetSelColorIndex");
    check(DISPID_KivHatch_ForeColor == -513, "ForeColor is -513", "DISPID_KivHatch_ForeColor");
    check(DISPID_KivLinetypeEvents_SelChange == 1, "SelChange is 1", "DISPID_KivLinetypeEvents_SelChange");
    check(colour == 13 && sizeof(eColors) == sizeof(int), "kLast is 13, an int", "eColors");

    /* The library's id. */
    CALL(lib, GetLibAttr, &libAttr);
    check(IsEqualGUID(REF(libAttr->guid), REF(LIBID_KIVLORQCONTROLSLib)), "the library's id", "LIBID_KIVLORQCONTROLSLib");
    CALL(lib, ReleaseTLibAttr, libAttr);

    /* Each class and interface id names the type of that name and kind. */
    for (t = 0; t < COUNT(kTypes); ++t) {
        ITypeInfo* info = NULL;
        TYPEATTR* attr = NULL;
        char name[64] = "";
        if (FAILED(CALL(lib, GetTypeInfoOfGuid, REF(*kTypes[t].guid), &info))) {
            check(0, "no type of that id in the library", kTypes[t].name);
            continue;
        }
        typeName(info, name, sizeof name);
        CALL(info, GetTypeAttr, &attr);
        check(strcmp(name, kTypes[t].name) == 0 && attr->typekind == kTypes[t].kind, "the id names another type", kTypes[t].name);
        CALL(info, ReleaseTypeAttr, attr);
        CALL0(info, Release);
    }

    /* Every member and event of every coclass, and the enumeration with its alias. */
    for (i = 0; i < CALL0(lib, GetTypeInfoCount); ++i) {
        ITypeInfo* info = NULL;
        TYPEATTR* attr = NULL;
        char name[64];
        UINT k;
        CALL(lib, GetTypeInfo, i, &info);
        CALL(info, GetTypeAttr, &attr);
        typeName(info, name, sizeof name);
        if (attr->typekind == TKIND_COCLASS) {
            for (k = 0; k < attr->cImplTypes; ++k) interfaceMembers(info, name, k);
        } else if (attr->typekind == TKIND_ENUM) {
            check(strcmp(name, "Colors") == 0, "the enumeration's name", name);
            for (k = 0; k < attr->cVars; ++k) {
                VARDESC* v = NULL;
                BSTR constantName = NULL;
                char text[64];
                UINT n = 0;
                int c, found = 0;
                CALL(info, GetVarDesc, k, &v);
                CALL(info, GetNames, v->memid, &constantName, 1, &n);
                ascii(constantName, text, sizeof text);
                SysFreeString(constantName);
                for (c = 0; c < COUNT(kConstants); ++c)
                    if (strcmp(kConstants[c].name, text) == 0) {
                        check(V_I4(v->lpvarValue) == kConstants[c].value, "the constant's value", text);
                        ++kConstants[c].seen;
                        found = 1;
                    }
                check(found, "a constant of the library the header test does not know", text);
                CALL(info, ReleaseVarDesc, v);
            }
        } else if (attr->typekind == TKIND_ALIAS) {
            check(strcmp(name, "eColors") == 0, "the alias's name", name);
        }
        CALL(info, ReleaseTypeAttr, attr);
        CALL0(info, Release);
    }
    for (t = 0; t < COUNT(kDispids); ++t)
        check(kDispids[t].seen == 1, "not once in the library", kDispids[t].member);
    for (t = 0; t < COUNT(kConstants); ++t)
        check(kConstants[t].seen == 1, "not once in the library", kConstants[t].name);
    CALL0(lib, Release);

    /* The pages, from the module. */
    module = LoadLibraryW(path);
    if (module == NULL) {
        check(0, "the module cannot be loaded", "pages");
    } else {
        GetClassObjectFn getClassObject = (GetClassObjectFn)(void (*)(void))GetProcAddress(module, "DllGetClassObject");
        for (t = 0; t < COUNT(kPages); ++t) pageOf(getClassObject, &kPages[t]);
    }

    /* The other source file sees the same definitions. */
    check(secondFileColourClass() == &CLSID_KivColor, "one definition for both files", "CLSID_KivColor");
    check(secondFileLinetypeSelChange() == 1, "the same DISPID in both files", "DISPID_KivLinetypeEvents_SelChange");

    CoUninitialize();
    printf("%d checked, %d failed\n", checked, failed);
    return failed == 0 ? 0 : 1;
}
