// The handlers of the dispatch tables, made from the members they call. Win32 side.
//
// A table names a member function of the control's core (&CKivColorCtrl::SetComboIndex) or of the
// frame for a stock property (&KivOleControl::setEnabled); KivHandler<member> is the handler that
// finds that class through the call's target (a core of another class answers E_UNEXPECTED), reads
// each coerced argument as the member's parameter type and returns its result as a VARIANT. So a
// table is typed on its core: no handler is written by hand and no object pointer is cast blindly.
#pragma once

#include <cstddef>
#include <tuple>
#include <type_traits>
#include <utility>

#include "KivDispatch.h"
#include "KivOleControl.h"

namespace kivdispatch {

// A member function's class, result and parameters.
template <class F>
struct MemberFn;
template <class C, class R, class... A>
struct MemberFn<R (C::*)(A...)> {
    using Class = C;
    using Result = R;
    using Params = std::tuple<std::decay_t<A>...>;
    static constexpr int arity = static_cast<int>(sizeof...(A));
};
template <class C, class R, class... A>
struct MemberFn<R (C::*)(A...) const> : MemberFn<R (C::*)(A...)> {};

// The variant type an argument is read as, per parameter type: the table's dispatch types already
// are these but for a flag the core stores as a long (DisplayApprovalStatusColor), read as VT_I4.
template <class T>
constexpr VARTYPE argumentType() {
    if constexpr (std::is_same_v<T, bool>) return VT_BOOL;
    else if constexpr (std::is_same_v<T, short>) return VT_I2;
    else if constexpr (std::is_same_v<T, long> || std::is_same_v<T, unsigned long>) return VT_I4;
    else if constexpr (std::is_same_v<T, double>) return VT_R8;
    else {
        static_assert(std::is_same_v<T, KivString>, "a parameter type the dispatch tables do not carry");
        return VT_BSTR;
    }
}

template <class T>
HRESULT coerce(VARIANT& v) {
    constexpr VARTYPE type = argumentType<T>();
    return V_VT(&v) == type ? S_OK : VariantChangeType(&v, &v, 0, type);
}

template <class T>
T argument(const VARIANT& v) {
    if constexpr (std::is_same_v<T, bool>) return V_BOOL(&v) != VARIANT_FALSE;
    else if constexpr (std::is_same_v<T, short>) return V_I2(&v);
    else if constexpr (std::is_same_v<T, long>) return V_I4(&v);
    else if constexpr (std::is_same_v<T, unsigned long>) return static_cast<unsigned long>(V_I4(&v));  // the bits
    else if constexpr (std::is_same_v<T, double>) return V_R8(&v);
    else return KivTextArg(v);
}

// A result as its natural variant; KivInvoke then gives it the member's dispatch type.
inline HRESULT result(VARIANT* r, bool value) { return KivReturnBool(r, value); }
inline HRESULT result(VARIANT* r, short value) { return KivReturnShort(r, value); }
inline HRESULT result(VARIANT* r, long value) { return KivReturnLong(r, value); }
inline HRESULT result(VARIANT* r, unsigned long value) { return KivReturnLong(r, static_cast<long>(value)); }  // the bits
inline HRESULT result(VARIANT* r, double value) { return KivReturnDouble(r, value); }
inline HRESULT result(VARIANT* r, const KivString& value) { return KivReturnText(r, value); }

template <class C>
C* objectOf(KivDispatchTarget& target) {
    if constexpr (std::is_same_v<C, KivOleControl>) return &target.frame;
    else return dynamic_cast<C*>(target.core);
}

template <auto Member, std::size_t... I>
HRESULT call(KivDispatchTarget& target, VARIANT* args, VARIANT* out, std::index_sequence<I...>) {
    using M = MemberFn<decltype(Member)>;
    auto* object = objectOf<typename M::Class>(target);
    if (object == nullptr) return E_UNEXPECTED;  // a table of another control's class
    using Params = typename M::Params;
    HRESULT hr = S_OK;
    ((hr = SUCCEEDED(hr) ? coerce<std::tuple_element_t<I, Params>>(args[I]) : hr), ...);
    if (FAILED(hr)) return DISP_E_TYPEMISMATCH;
    if constexpr (std::is_void_v<typename M::Result>) {
        (object->*Member)(argument<std::tuple_element_t<I, Params>>(args[I])...);
        return S_OK;
    } else {
        return result(out, (object->*Member)(argument<std::tuple_element_t<I, Params>>(args[I])...));
    }
}

}  // namespace kivdispatch

// The handler calling `Member` with the table's arguments.
template <auto Member>
HRESULT KivHandler(KivDispatchTarget& target, VARIANT* args, VARIANT* result) {
    using M = kivdispatch::MemberFn<decltype(Member)>;
    return kivdispatch::call<Member>(target, args, result, std::make_index_sequence<M::arity>{});
}

// The handler of a member that takes `arity` arguments: the table and the member must agree.
template <auto Member, int arity>
constexpr KivInvokeFn KivHandlerOf() {
    static_assert(kivdispatch::MemberFn<decltype(Member)>::arity == arity,
                  "the member takes another number of arguments than its table entry lists");
    return &KivHandler<Member>;
}
