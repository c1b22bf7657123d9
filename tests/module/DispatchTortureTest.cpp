// Every member of the six controls' dispatch interfaces called the wrong way through IDispatch: wrong
// argument counts, arguments of every kind that is not a plain value (empty, null, error, objects,
// arrays, references), null and one-megabyte strings, numbers out of range, named arguments, unknown
// DISPIDs and call flags, malformed DISPPARAMS; before the control has a window, while it is active
// in a container, and after the container closed it. Each call gets the dispatch error its mistake
// calls for, or the member's own silent outcome; nothing crashes or hangs, and the control works as
// before afterwards. The members are read from the type library, so a member added later is tortured
// too.
#include <gtest/gtest.h>
#include <windows.h>
#include <ocidl.h>
#include <olectl.h>

#include <atomic>
#include <cmath>
#include <climits>
#include <cstdio>
#include <limits>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "ContainerHost.h"
#include "ControlCases.h"
#include "KivCom.h"
#include "KivContainer.h"

namespace {

// A member as the type library describes it.
struct MemberInfo {
    DISPID id = 0;
    std::string name;
    bool property = false;
    bool readOnly = false;
    VARTYPE type = VT_EMPTY;        // a property's type
    std::vector<VARTYPE> params;    // a method's parameter types
};

std::vector<MemberInfo> membersOf(IDispatch* d) {
    std::vector<MemberInfo> members;
    KivComPtr<ITypeInfo> info;
    if (FAILED(d->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.put()))) return members;
    TYPEATTR* attr = nullptr;
    if (FAILED(info->GetTypeAttr(&attr))) return members;
    auto nameOf = [&](MEMBERID id) {
        BSTR name = nullptr;
        info->GetDocumentation(id, &name, nullptr, nullptr, nullptr);
        std::string text = narrow(name != nullptr ? name : L"");
        SysFreeString(name);
        return text;
    };
    for (UINT i = 0; i < attr->cVars; ++i) {
        VARDESC* var = nullptr;
        if (FAILED(info->GetVarDesc(i, &var))) continue;
        MemberInfo m;
        m.id = var->memid;
        m.name = nameOf(var->memid);
        m.property = true;
        m.readOnly = (var->wVarFlags & VARFLAG_FREADONLY) != 0;
        m.type = var->elemdescVar.tdesc.vt;
        members.push_back(m);
        info->ReleaseVarDesc(var);
    }
    for (UINT i = 0; i < attr->cFuncs; ++i) {
        FUNCDESC* func = nullptr;
        if (FAILED(info->GetFuncDesc(i, &func))) continue;
        if ((func->wFuncFlags & FUNCFLAG_FRESTRICTED) != 0) {  // IUnknown's and IDispatch's own, listed first
            info->ReleaseFuncDesc(func);
            continue;
        }
        MemberInfo m;
        m.id = func->memid;
        m.name = nameOf(func->memid);
        for (SHORT p = 0; p < func->cParams; ++p) m.params.push_back(func->lprgelemdescParam[p].tdesc.vt);
        members.push_back(m);
        info->ReleaseFuncDesc(func);
    }
    info->ReleaseTypeAttr(attr);
    return members;
}

// Closes every dialog of this process that a tortured member opens (an about box, the colour
// dialog), for as long as it lives. Its flag is initialised before its thread starts.
class DialogDismisser {
public:
    DialogDismisser()
        : m_thread([this] {
              while (!m_stop) {
                  for (HWND found : ownVisibleWindows(L"#32770", nullptr)) {
                      PostMessageW(found, WM_COMMAND, IDCANCEL, 0);
                      ++m_dismissed;
                  }
                  Sleep(20);
              }
          }) {}
    ~DialogDismisser() {
        m_stop = true;
        m_thread.join();
    }
    int dismissed() const { return m_dismissed; }

private:
    std::atomic<bool> m_stop{false};
    std::atomic<int> m_dismissed{0};
    std::thread m_thread;
};

// The values thrown at a member, each a VARIANT over storage this object owns (they are never
// cleared by the caller).
class OddValues {
public:
    explicit OddValues(IDispatch* anObject) {
        m_big = SysAllocStringLen(nullptr, 1 << 19);  // 512 Ki characters: one megabyte
        for (UINT i = 0; i < SysStringLen(m_big); ++i) m_big[i] = L'A' + static_cast<wchar_t>(i % 26);
        m_numberText = SysAllocString(L"1e400");
        m_shortText = SysAllocString(L"12");
        m_refText = SysAllocString(L"Continuous");
        SAFEARRAYBOUND bound{3, 0};
        m_array = SafeArrayCreate(VT_I4, 1, &bound);
        VariantInit(&m_refVariant);
        V_VT(&m_refVariant) = VT_I4;
        V_I4(&m_refVariant) = 3;

        VARIANT v;
        auto add = [&](const char* label) { m_values.push_back({label, v}); };
        VariantInit(&v); add("VT_EMPTY");
        V_VT(&v) = VT_NULL; add("VT_NULL");
        V_VT(&v) = VT_ERROR; V_ERROR(&v) = DISP_E_PARAMNOTFOUND; add("VT_ERROR (missing)");
        V_VT(&v) = VT_DISPATCH; V_DISPATCH(&v) = nullptr; add("null VT_DISPATCH");
        V_VT(&v) = VT_DISPATCH; V_DISPATCH(&v) = anObject; add("the control itself as VT_DISPATCH");
        V_VT(&v) = VT_UNKNOWN; V_UNKNOWN(&v) = nullptr; add("null VT_UNKNOWN");
        V_VT(&v) = VT_ARRAY | VT_I4; V_ARRAY(&v) = m_array; add("an array of long");
        V_VT(&v) = VT_BYREF | VT_I4; V_I4REF(&v) = &m_refLong; add("VT_BYREF long");
        V_VT(&v) = VT_BYREF | VT_BSTR; V_BSTRREF(&v) = &m_refText; add("VT_BYREF text");
        V_VT(&v) = VT_BYREF | VT_VARIANT; V_VARIANTREF(&v) = &m_refVariant; add("VT_BYREF variant");
        V_VT(&v) = VT_BSTR; V_BSTR(&v) = nullptr; add("null text");
        V_VT(&v) = VT_BSTR; V_BSTR(&v) = m_big; add("one megabyte of text");
        V_VT(&v) = VT_BSTR; V_BSTR(&v) = m_numberText; add("text of a number out of range");
        V_VT(&v) = VT_BSTR; V_BSTR(&v) = m_shortText; add("text of a number");
        V_VT(&v) = VT_R8; V_R8(&v) = 1e300; add("1e300");
        V_VT(&v) = VT_R8; V_R8(&v) = -1e300; add("-1e300");
        V_VT(&v) = VT_R8; V_R8(&v) = std::numeric_limits<double>::quiet_NaN(); add("NaN");
        V_VT(&v) = VT_R8; V_R8(&v) = std::numeric_limits<double>::infinity(); add("infinity");
        V_VT(&v) = VT_I4; V_I4(&v) = LONG_MIN; add("LONG_MIN");
        V_VT(&v) = VT_I4; V_I4(&v) = LONG_MAX; add("LONG_MAX");
        V_VT(&v) = VT_I4; V_I4(&v) = -1; add("-1");
        V_VT(&v) = VT_I2; V_I2(&v) = SHRT_MIN; add("SHRT_MIN");
        V_VT(&v) = VT_I8; V_I8(&v) = LLONG_MAX; add("LLONG_MAX");
        V_VT(&v) = VT_BOOL; V_BOOL(&v) = VARIANT_TRUE; add("true");
    }
    ~OddValues() {
        SysFreeString(m_big);
        SysFreeString(m_numberText);
        SysFreeString(m_shortText);
        SysFreeString(m_refText);
        SafeArrayDestroy(m_array);
    }
    OddValues(const OddValues&) = delete;
    OddValues& operator=(const OddValues&) = delete;

    struct Value {
        const char* label;
        VARIANT v;
    };
    const std::vector<Value>& values() const { return m_values; }

private:
    BSTR m_big = nullptr, m_numberText = nullptr, m_shortText = nullptr, m_refText = nullptr;
    SAFEARRAY* m_array = nullptr;
    LONG m_refLong = 7;
    VARIANT m_refVariant;
    std::vector<Value> m_values;
};

// A plain value of a parameter's type.
VARIANT plainValue(VARTYPE type) {
    VARIANT v;
    VariantInit(&v);
    if (type == VT_BSTR) {
        V_VT(&v) = VT_BSTR;
        V_BSTR(&v) = nullptr;  // the empty text
    } else if (type == VT_I1 || type == VT_BOOL) {
        V_VT(&v) = VT_BOOL;
        V_BOOL(&v) = VARIANT_FALSE;
    } else {
        V_VT(&v) = VT_I4;
        V_I4(&v) = 0;
    }
    return v;
}

struct Outcome {
    HRESULT hr;
    UINT argErr;
};

// One raw Invoke: `args` in declaration order (rgvarg holds them last first), `named` the DISPIDs of
// the named ones.
Outcome invoke(IDispatch* d, DISPID id, WORD flags, const std::vector<VARIANT>& args, std::vector<DISPID> named = {},
               REFIID riid = IID_NULL) {
    std::vector<VARIANT> reversed(args.rbegin(), args.rend());
    DISPPARAMS params{reversed.empty() ? nullptr : reversed.data(), named.empty() ? nullptr : named.data(),
                      static_cast<UINT>(reversed.size()), static_cast<UINT>(named.size())};
    KivVariant result;
    EXCEPINFO excep{};
    Outcome o{E_FAIL, 0xFFFFFFFFu};
    o.hr = d->Invoke(id, riid, LOCALE_USER_DEFAULT, flags, &params, &result.v, &excep, &o.argErr);
    SysFreeString(excep.bstrSource);
    SysFreeString(excep.bstrDescription);
    SysFreeString(excep.bstrHelpFile);
    return o;
}

std::string hex(HRESULT hr) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08lX", static_cast<unsigned long>(hr));
    return text;
}

// The whole battery against one control in its present state.
void torture(IDispatch* d, const std::vector<MemberInfo>& members) {
    OddValues odd(d);
    const WORD call = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

    // Members that are not there, whatever the flags.
    for (const DISPID id : {DISPID(12345), DISPID(999), DISPID(4000), DISPID(-1), DISPID(-3), DISPID(-4), DISPID(-5),
                            DISPID(INT_MIN), DISPID(INT_MAX)}) {
        bool known = false;
        for (const MemberInfo& m : members) known = known || m.id == id;
        if (known) continue;
        SCOPED_TRACE("unknown DISPID " + std::to_string(id));
        EXPECT_EQ(invoke(d, id, call, {}).hr, DISP_E_MEMBERNOTFOUND);
        VARIANT one = plainValue(VT_I4);
        EXPECT_EQ(invoke(d, id, DISPATCH_PROPERTYPUT, {one}, {DISPID_PROPERTYPUT}).hr, DISP_E_MEMBERNOTFOUND);
        EXPECT_EQ(invoke(d, id, 0, {}).hr, DISP_E_MEMBERNOTFOUND);
    }

    for (const MemberInfo& m : members) {
        SCOPED_TRACE(m.name);
        // An interface id other than IID_NULL is refused, and so are DISPPARAMS that do not hold
        // together.
        EXPECT_EQ(invoke(d, m.id, call, {}, {}, IID_IDispatch).hr, DISP_E_UNKNOWNINTERFACE);
        {
            DISPPARAMS broken{nullptr, nullptr, 1, 0};  // one argument, no array
            EXPECT_EQ(d->Invoke(m.id, IID_NULL, LOCALE_USER_DEFAULT, call, &broken, nullptr, nullptr, nullptr),
                      E_INVALIDARG);
            DISPID namedId = DISPID_PROPERTYPUT;
            DISPPARAMS moreNamed{nullptr, &namedId, 0, 1};  // a named argument among none
            EXPECT_EQ(d->Invoke(m.id, IID_NULL, LOCALE_USER_DEFAULT, call, &moreNamed, nullptr, nullptr, nullptr),
                      E_INVALIDARG);
        }
        // Flags that ask for nothing.
        EXPECT_EQ(invoke(d, m.id, 0, {}).hr, DISP_E_MEMBERNOTFOUND);

        if (m.property) {
            EXPECT_EQ(invoke(d, m.id, DISPATCH_PROPERTYGET, {}).hr, S_OK);
            // No DISPPARAMS, no result, no argument-error slot: a plain get all the same.
            EXPECT_EQ(d->Invoke(m.id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, nullptr, nullptr, nullptr,
                                nullptr),
                      S_OK);
            VARIANT plain = plainValue(m.type);
            EXPECT_EQ(invoke(d, m.id, DISPATCH_PROPERTYGET, {plain}).hr, DISP_E_BADPARAMCOUNT);
            if (m.readOnly) {
                EXPECT_EQ(invoke(d, m.id, DISPATCH_PROPERTYPUT, {plain}, {DISPID_PROPERTYPUT}).hr, DISP_E_MEMBERNOTFOUND);
                continue;
            }
            // A put names its value DISPID_PROPERTYPUT, and has exactly one.
            EXPECT_EQ(invoke(d, m.id, DISPATCH_PROPERTYPUT, {plain}).hr, DISP_E_PARAMNOTFOUND);
            EXPECT_EQ(invoke(d, m.id, DISPATCH_PROPERTYPUT, {}).hr, DISP_E_BADPARAMCOUNT);
            EXPECT_EQ(invoke(d, m.id, DISPATCH_PROPERTYPUT, {plain, plain}, {DISPID_PROPERTYPUT, 0}).hr,
                      DISP_E_BADPARAMCOUNT);
            for (const OddValues::Value& value : odd.values()) {
                SCOPED_TRACE(value.label);
                for (const WORD flags : {WORD(DISPATCH_PROPERTYPUT), WORD(DISPATCH_PROPERTYPUTREF)}) {
                    const Outcome o = invoke(d, m.id, flags, {value.v}, {DISPID_PROPERTYPUT});
                    // Stored (a value the property's type can take, kept or ignored as the property
                    // does), or refused as a mismatch that names the argument.
                    EXPECT_TRUE(o.hr == S_OK || o.hr == DISP_E_TYPEMISMATCH) << hex(o.hr);
                    if (o.hr == DISP_E_TYPEMISMATCH) {
                        EXPECT_EQ(o.argErr, 0u);
                    }
                }
            }
            // Whatever it was given, it still answers.
            EXPECT_EQ(invoke(d, m.id, DISPATCH_PROPERTYGET, {}).hr, S_OK);
            continue;
        }

        // A method.
        const std::size_t n = m.params.size();
        std::vector<VARIANT> plain;
        for (const VARTYPE t : m.params) plain.push_back(plainValue(t));
        VARIANT one = plainValue(VT_I4);
        EXPECT_EQ(invoke(d, m.id, DISPATCH_PROPERTYPUT, {one}, {DISPID_PROPERTYPUT}).hr, DISP_E_MEMBERNOTFOUND);
        std::vector<VARIANT> more = plain;
        more.push_back(plainValue(VT_I4));
        EXPECT_EQ(invoke(d, m.id, call, more).hr, DISP_E_BADPARAMCOUNT);
        if (n > 0) {
            std::vector<VARIANT> fewer(plain.begin(), plain.end() - 1);
            EXPECT_EQ(invoke(d, m.id, call, fewer).hr, DISP_E_BADPARAMCOUNT);
            EXPECT_EQ(invoke(d, m.id, call, plain, {0}).hr, DISP_E_NONAMEDARGS);
        } else {
            EXPECT_EQ(invoke(d, m.id, call, more, {0}).hr, DISP_E_NONAMEDARGS);
            EXPECT_EQ(d->Invoke(m.id, IID_NULL, LOCALE_USER_DEFAULT, call, nullptr, nullptr, nullptr, nullptr), S_OK);
        }
        for (std::size_t p = 0; p < n; ++p) {
            for (const OddValues::Value& value : odd.values()) {
                SCOPED_TRACE(std::string(value.label) + " as argument " + std::to_string(p + 1));
                std::vector<VARIANT> args = plain;
                args[p] = value.v;
                const Outcome o = invoke(d, m.id, call, args);
                EXPECT_TRUE(o.hr == S_OK || o.hr == DISP_E_TYPEMISMATCH) << hex(o.hr);
                if (o.hr == DISP_E_TYPEMISMATCH) {
                    EXPECT_EQ(o.argErr, static_cast<UINT>(n - 1 - p));
                }
            }
        }
    }
}

// IDispatch's other three members, wrongly called.
void tortureNames(IDispatch* d, const std::vector<MemberInfo>& members) {
    EXPECT_EQ(d->GetTypeInfoCount(nullptr), E_POINTER);
    EXPECT_EQ(d->GetTypeInfo(0, LOCALE_USER_DEFAULT, nullptr), E_POINTER);
    ITypeInfo* info = reinterpret_cast<ITypeInfo*>(1);
    EXPECT_EQ(d->GetTypeInfo(1, LOCALE_USER_DEFAULT, &info), DISP_E_BADINDEX);
    EXPECT_EQ(info, nullptr);

    DISPID ids[3] = {0, 0, 0};
    EXPECT_EQ(d->GetIDsOfNames(IID_NULL, nullptr, 1, LOCALE_USER_DEFAULT, ids), E_POINTER);
    LPOLESTR none[1] = {nullptr};
    EXPECT_EQ(d->GetIDsOfNames(IID_NULL, none, 1, LOCALE_USER_DEFAULT, nullptr), E_POINTER);
    EXPECT_EQ(d->GetIDsOfNames(IID_NULL, none, 1, LOCALE_USER_DEFAULT, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], DISPID_UNKNOWN);
    EXPECT_EQ(d->GetIDsOfNames(IID_NULL, none, 0, LOCALE_USER_DEFAULT, ids), S_OK);
    std::wstring big(1 << 19, L'Q');
    LPOLESTR bigName[1] = {&big[0]};
    EXPECT_EQ(d->GetIDsOfNames(IID_NULL, bigName, 1, LOCALE_USER_DEFAULT, ids), DISP_E_UNKNOWNNAME);
    for (const MemberInfo& m : members) {
        std::wstring name(m.name.begin(), m.name.end());
        wchar_t stranger[] = L"NoSuchParameter";
        LPOLESTR names[3] = {&name[0], stranger, nullptr};
        EXPECT_EQ(d->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids), DISP_E_UNKNOWNNAME) << m.name;
        EXPECT_EQ(ids[0], m.id) << m.name;
        EXPECT_EQ(ids[1], DISPID_UNKNOWN) << m.name;
        EXPECT_EQ(ids[2], DISPID_UNKNOWN) << m.name;
    }
}

// The read-write properties keep what they are given back: get, put the same, get again.
void expectPropertiesRoundTrip(IDispatch* d, const std::vector<MemberInfo>& members) {
    for (const MemberInfo& m : members) {
        if (!m.property || m.readOnly) continue;
        SCOPED_TRACE(m.name);
        KivVariant before, after;
        ASSERT_EQ(d->Invoke(m.id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, nullptr, &before.v, nullptr,
                            nullptr),
                  S_OK);
        EXPECT_EQ(invoke(d, m.id, DISPATCH_PROPERTYPUT, {before.v}, {DISPID_PROPERTYPUT}).hr, S_OK);
        ASSERT_EQ(d->Invoke(m.id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, nullptr, &after.v, nullptr,
                            nullptr),
                  S_OK);
        EXPECT_EQ(V_VT(&after.v), V_VT(&before.v));
        EXPECT_EQ(VarCmp(&after.v, &before.v, LOCALE_USER_DEFAULT, 0), VARCMP_EQ);
    }
}

// What each control does for a host, asked once more after the torture.
void expectItStillWorks(const ControlCase& c, KivControlHost& host) {
    IDispatch* d = host.dispatch();
    const std::string name = c.name;
    if (name == "Colour") {
        ASSERT_EQ(call(d, L"SetSelColorIndex", DISPATCH_METHOD, {shortArg(1)}, nullptr), S_OK);
        EXPECT_EQ(longResult(d, L"GetSelColorIndex"), 1);
    } else if (name == "Lineweight") {
        ASSERT_EQ(put(d, L"Measurement", shortArg(0)), S_OK);
        ASSERT_EQ(call(d, L"SelectItemByLineWeight", DISPATCH_METHOD, {longArg(50)}, nullptr), S_OK);
        EXPECT_EQ(longResult(d, L"GetCurrentItemLineWeight"), 50);
    } else if (name == "Linetype" || name == "LinetypeList") {
        ASSERT_EQ(call(d, L"RemoveAll", DISPATCH_METHOD, {}, nullptr), S_OK);
        EXPECT_EQ(longResult(d, L"GetCount"), 3);
        KivVariant lineName, definition;
        lineName.v = textArg(L"KIVTORTURE");
        definition.v = textArg(L"A,0.5,-0.25");
        ASSERT_EQ(call(d, L"DefineLinetype", DISPATCH_METHOD, {lineName.v, definition.v}, nullptr), S_OK);
        EXPECT_EQ(longResult(d, L"GetCount"), 4);
        KivVariant selected;
        ASSERT_EQ(call(d, L"SelectItem", DISPATCH_METHOD, {lineName.v}, &selected.v), S_OK);
        EXPECT_EQ(longResult(d, L"ComboIndex"), 3);
    } else if (name == "Hatch") {
        KivVariant pattern;
        pattern.v = textArg(L"SOLID");
        ASSERT_EQ(call(d, L"Pattern", DISPATCH_PROPERTYPUT, {pattern.v}, nullptr), S_OK);
        EXPECT_EQ(textResult(d, L"Pattern"), "SOLID");
        EXPECT_EQ(call(d, L"Refresh", DISPATCH_METHOD, {}, nullptr), S_OK);
    }
    // Its window and child are still there, and it draws.
    ASSERT_TRUE(IsWindow(host.window()));
    if (c.childId != 0) {
        EXPECT_TRUE(IsWindow(GetDlgItem(host.window(), c.childId)));
    }
    KivComPtr<IViewObject> view;
    ASSERT_EQ(host.control()->QueryInterface(IID_IViewObject, view.putVoid()), S_OK);
    Canvas canvas(220, 21);
    RECTL bounds{0, 0, 220, 21};
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, canvas.dc, &bounds, nullptr, nullptr, 0), S_OK);
}

class Torture : public ComTest, public ::testing::WithParamInterface<ControlCase> {
protected:
    void SetUp() override {
        ComTest::SetUp();
        dialog = CreateWindowExW(0, L"STATIC", L"torture", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_VISIBLE, 0, 0,
                                 520, 360, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    }
    void TearDown() override {
        if (dismisser.dismissed() > 0) std::printf("%s: %d dialogs dismissed\n", c.name, dismisser.dismissed());
        DestroyWindow(dialog);
        pumpMessages(20);
        // Nothing the torture did kept an object or a lock alive.
        EXPECT_EQ(canUnloadNow(), S_OK) << c.name << " left an object or a lock behind";
        ComTest::TearDown();
    }
    // The type library lists every member of the control's interface, the stock ones included.
    void expectAllMembers(const std::vector<MemberInfo>& members) const {
        const std::map<std::string, std::size_t> expected = {{"Colour", 16},      {"Lineweight", 11}, {"Linetype", 17},
                                                             {"LinetypeList", 16}, {"Hatch", 7},       {"Layer", 0}};
        EXPECT_EQ(members.size(), expected.at(c.name));
    }
    const ControlCase& c = GetParam();
    HWND dialog = nullptr;
    DialogDismisser dismisser;
};

}  // namespace

TEST_P(Torture, BeforeItHasAWindowEveryMemberCalledWronglyAnswersWithoutHarm) {
    KivComPtr<IDispatch> d = newControl(guid(c.clsid));
    ASSERT_TRUE(d);
    const std::vector<MemberInfo> members = membersOf(d.get());
    expectAllMembers(members);
    tortureNames(d.get(), members);
    torture(d.get(), members);
    expectPropertiesRoundTrip(d.get(), members);
}

TEST_P(Torture, ActiveInAContainerEveryMemberCalledWronglyAnswersWithoutHarmAndTheControlStillWorks) {
    KivControlHost host(dialog, RECT{10, 10, 230, 31});
    ASSERT_EQ(host.create(guid(c.clsid)), S_OK);
    const std::vector<MemberInfo> members = membersOf(host.dispatch());
    expectAllMembers(members);
    tortureNames(host.dispatch(), members);
    torture(host.dispatch(), members);
    pumpMessages(50);
    expectPropertiesRoundTrip(host.dispatch(), members);
    expectItStillWorks(c, host);
    host.close();
}

TEST_P(Torture, AfterItsContainerClosedItEveryMemberCalledWronglyAnswersWithoutHarm) {
    KivComPtr<IDispatch> kept;
    std::vector<MemberInfo> members;
    {
        KivControlHost host(dialog, RECT{10, 10, 230, 31});
        ASSERT_EQ(host.create(guid(c.clsid)), S_OK);
        kept = KivComPtr<IDispatch>(host.dispatch());
        members = membersOf(kept.get());
        host.close();
        expectAllMembers(members);
    }
    tortureNames(kept.get(), members);
    torture(kept.get(), members);
    expectPropertiesRoundTrip(kept.get(), members);
}

INSTANTIATE_TEST_SUITE_P(EveryControl, Torture, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<ControlCase>& info) { return std::string(info.param.name); });
