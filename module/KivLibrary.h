// The module's library: coclasses in the type library's order, and the description the type
// library is built from. Win32 side.
#pragma once

#include "KivDispatch.h"
#include "KivDispatchHandlers.h"
#include "KivOleControl.h"
#include "KivTypeLibBuilder.h"

// Dispinterfaces of the six controls, each defined beside its control (<family>/win) with its handlers.
extern const KivDispInterface g_DKivColor, g_DKivColorEvents;
extern const KivDispInterface g_DKivLayer, g_DKivLayerEvents;
extern const KivDispInterface g_DKivLinetype, g_DKivLinetypeEvents;
extern const KivDispInterface g_DKivLineweight, g_DKivLineweightEvents;
extern const KivDispInterface g_DKivHatch, g_DKivHatchEvents;
extern const KivDispInterface g_DKivLTypeList, g_DKivLTypeListEvents;

const KivTypeLibDesc& KivLibraryDesc();

// Shorthands for the tables: `get`, `put` and `fn` name the members they call (KivDispatchHandlers.h).
#define KIV_PROPERTY(name, id, tlb, disp, get, put) \
    {L## #name, id, true, false, KivTlbType::tlb, disp, nullptr, 0, KivHandlerOf<get, 0>(), KivHandlerOf<put, 1>()}
#define KIV_STOCK_PROPERTY(name, id, tlb, disp, get, put) \
    {L## #name, id, true, true, KivTlbType::tlb, disp, nullptr, 0, KivHandlerOf<get, 0>(), KivHandlerOf<put, 1>()}
// A method with a result, with its parameters or none.
#define KIV_METHOD(name, id, tlb, disp, params, fn) \
    {L## #name, id, false, false, KivTlbType::tlb, disp, params, kivCountOf(params), KivHandlerOf<fn, kivCountOf(params)>(), nullptr}
#define KIV_METHOD0(name, id, tlb, disp, fn) \
    {L## #name, id, false, false, KivTlbType::tlb, disp, nullptr, 0, KivHandlerOf<fn, 0>(), nullptr}
// A method without a result (void), with its parameters or none.
#define KIV_SUB(name, id, params, fn) KIV_METHOD(name, id, Void, VT_EMPTY, params, fn)
#define KIV_SUB0(name, id, fn) KIV_METHOD0(name, id, Void, VT_EMPTY, fn)
// An event: a method of an event interface, fired by the control, never called.
#define KIV_EVENT(name, id, params) {L## #name, id, false, false, KivTlbType::Void, VT_EMPTY, params, kivCountOf(params), nullptr, nullptr}
// The stock Enabled every control but the layer has, served by the frame.
#define KIV_STOCK_ENABLED \
    KIV_STOCK_PROPERTY(Enabled, DISPID_ENABLED, I1, VT_BOOL, &KivOleControl::enabled, &KivOleControl::setEnabled)

template <std::size_t N>
constexpr int kivCountOf(const KivParam (&)[N]) {
    return static_cast<int>(N);
}

// A dispinterface (or, `isSource`, an event interface) over its table.
template <std::size_t N>
constexpr KivDispInterface KivInterfaceOf(const wchar_t* name, const IID& iid, const wchar_t* help, bool isSource,
                                          const KivMember (&members)[N]) {
    return KivDispInterface{name, &iid, help, isSource, members, static_cast<int>(N)};
}

// Parameters that several tables declare alike.
namespace kivparams {
inline const KivParam kDisplay[] = {{L"display", KivTlbType::I1, VT_BOOL}};  // SetAboutDisplay, AboutDisplay
inline const KivParam kText[] = {{L"txt", KivTlbType::Bstr, VT_BSTR}};       // the text setters
inline const KivParam kName[] = {{L"name", KivTlbType::Bstr, VT_BSTR}};      // names and events' names
}  // namespace kivparams
