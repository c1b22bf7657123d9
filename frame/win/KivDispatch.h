// One dispatch table per dispinterface (name, DISPID, kind, declared and dispatch types, handlers):
// it drives GetIDsOfNames, Invoke and the type library, so the three cannot disagree. Win32 side.
#pragma once

#include <ole2.h>

#include "KivString.h"

// The type as the type library declares it; the dispatch map's type may differ.
enum class KivTlbType { Void, I1, I2, I4, UI4, R8, Bstr, OleColor, EColors };

struct KivParam {
    const wchar_t* name;
    KivTlbType tlb;  // declared in the type library
    VARTYPE disp;    // what the control's code receives (arguments are coerced to it)
};

class KivControlCore;
class KivOleControl;

// What a call through a table acts on: the control's core (its own members) and its frame (the
// stock properties).
struct KivDispatchTarget {
    KivOleControl& frame;
    KivControlCore* core;
};

// A handler: `args` the coerced arguments in declaration order, `result` an empty VARIANT to fill
// (never null). Tables name members of the core's class or the frame's; KivDispatchHandlers.h makes
// the handler of each, which reaches its own class through the target.
using KivInvokeFn = HRESULT (*)(KivDispatchTarget& target, VARIANT* args, VARIANT* result);

struct KivMember {
    const wchar_t* name;
    DISPID dispid;
    bool isProperty;
    bool isStock;       // bindable + requestedit, no help string
    KivTlbType tlb;     // property type, or method result
    VARTYPE disp;       // property type, or method result, as the dispatch map has it (VT_EMPTY: void)
    const KivParam* params;
    int paramCount;
    KivInvokeFn get;    // property get, or the method
    KivInvokeFn put;    // property put (properties only)
};

struct KivDispInterface {
    const wchar_t* name;
    const IID* iid;
    const wchar_t* help;
    bool isSource;  // an event interface
    const KivMember* members;
    int memberCount;
};

struct KivCoclass {
    const wchar_t* name;
    const CLSID* clsid;
    const wchar_t* help;
    const KivDispInterface* dispatch;
    const KivDispInterface* events;
};

const KivMember* KivFindMember(const KivDispInterface& itf, DISPID dispid);

// IDispatch::GetIDsOfNames over a table: the member name (any case), then its parameter names.
HRESULT KivGetIDsOfNames(const KivDispInterface& itf, LPOLESTR* names, UINT count, DISPID* ids);

// IDispatch::Invoke over a table, written by hand: argument counts, named arguments for put,
// coercion with VariantChangeType, the DISP_E_* codes; a handler's failure is returned as it is, and
// its result is given the member's dispatch type.
HRESULT KivInvoke(const KivDispInterface& itf, KivDispatchTarget& target, DISPID dispid, WORD flags, DISPPARAMS* params,
                  VARIANT* result, UINT* argErr);

// Result helpers for handlers.
HRESULT KivReturnLong(VARIANT* result, long value);
HRESULT KivReturnShort(VARIANT* result, short value);
HRESULT KivReturnBool(VARIANT* result, bool value);
HRESULT KivReturnBstr(VARIANT* result, const wchar_t* text);
HRESULT KivReturnDouble(VARIANT* result, double value);
HRESULT KivReturnText(VARIANT* result, const KivString& text);  // a new BSTR, owned by the caller
// A BSTR argument as text; a null BSTR is the empty text.
KivString KivTextArg(const VARIANT& arg);
