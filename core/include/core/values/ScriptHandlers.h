// `reads`, `writes`, `runs` and `makes`: between the values of scripts and the C++ types of handlers,
// one small function for each handler. core/values/ScriptTable.h tells what may be a handler.
#pragma once

#include <core/component/Object.h>
#include <core/values/ScriptNative.h>
#include <core/values/ScriptRows.h>

#include <functional>
#include <tuple>
#include <type_traits>

namespace core {

namespace detail {

// Its address names a class at compile time.
template <class X> inline constexpr char kOwner = 0;

// ---- What a handler is made of

template <class C, class R, class... P> struct HandlerParts {
    using Owner = C; // void where there is no object
    using Result = R;
    using Parameters = std::tuple<P...>;
};

// Of functions the first parameter is the object, where it is a reference to a class that is one.
template <class R, class... P> struct FunctionParts : HandlerParts<void, R, P...> {};
template <class R, class C, class... P>
requires std::is_base_of_v<IUnknown, C>
struct FunctionParts<R, C&, P...> : HandlerParts<std::remove_const_t<C>, R, P...> {
};

template <class F> struct PartsOf { // of the type of a handler
    static_assert(sizeof(F) == 0, "a handler is a function, a data member, or a member function "
                                  "without a reference qualifier");
};
template <class C, class R, class... P>
struct PartsOf<R (C::*)(P...)> : HandlerParts<C, R, P...> {};
template <class C, class R, class... P>
struct PartsOf<R (C::*)(P...) const> : HandlerParts<C, R, P...> {};
template <class C, class R, class... P>
struct PartsOf<R (C::*)(P...) noexcept> : HandlerParts<C, R, P...> {};
template <class C, class R, class... P>
struct PartsOf<R (C::*)(P...) const noexcept> : HandlerParts<C, R, P...> {};
template <class R, class... P> struct PartsOf<R (*)(P...)> : FunctionParts<R, P...> {};
template <class R, class... P> struct PartsOf<R (*)(P...) noexcept> : FunctionParts<R, P...> {};

template <class F> struct MemberParts : PartsOf<F> {};
template <class C, class T>
requires std::is_object_v<T>
struct MemberParts<T C::*> : HandlerParts<C, T> {
};

template <auto handler> using Parts = MemberParts<decltype(handler)>;
template <auto handler> using OwnerOf = typename Parts<handler>::Owner;
template <auto handler>
inline constexpr bool kIsData = std::is_member_object_pointer_v<decltype(handler)>;

// ---- One argument, held for the time of a call

template <class P> struct ScriptArgument {
    using Native = std::remove_cvref_t<P>;
    static_assert(!std::is_lvalue_reference_v<P> || std::is_const_v<std::remove_reference_t<P>>,
                  "a parameter that goes back to the script is a GenericValue&");
    static constexpr ScriptParameterType kType = {ScriptNative<Native>::type, false,
                                                  requires {ScriptNative<Native>::kOptional;
}
}; // namespace detail

ScriptArgument(const GenericValue& value, ScriptPlace place)
    : native(ScriptNative<Native>::read(value, place)) {}
P&& get() {
    return static_cast<P&&>(native);
} // a reference where the handler takes one

Native native;
}; // namespace core

template <class V>
requires std::same_as<std::remove_const_t<V>, GenericValue>
struct ScriptArgument<V&> {
    static constexpr ScriptParameterType kType = {nullptr, !std::is_const_v<V>, false};
    ScriptArgument(V& value, ScriptPlace) : native(value) {}
    V& get() { return native; }

    V& native;
};

// A value of the class itself.
template <class V>
requires std::is_base_of_v<IValue, V>
struct ScriptArgument<V&> {
    static constexpr ScriptParameterType kType = {V::kTypeClsid, false, false};
    ScriptArgument(const GenericValue& value, ScriptPlace place)
        : held(value.getIValue()), native(dynamic_cast<V*>(held.get())) {
        if (!native) place.refuse_type();
    }
    V& get() { return *native; }

    InterfacePtr<IValue> held;
    V* native;
};

template <std::derived_from<IUnknown> I> struct ScriptArgument<I*> {
    static constexpr ScriptParameterType kType = {nullptr, false, false};
    ScriptArgument(const GenericValue& value, ScriptPlace place)
        : native(ScriptNative<InterfacePtr<I>>::read(value, place)) {}
    I* get() { return native.get(); }

    InterfacePtr<I> native;
};

// ---- Signatures, shared by the handlers of a class that look alike

template <class R> struct ResultType {
    using Native = std::remove_cvref_t<R>;
    static constexpr bool kExists = true;
    static constexpr const _GUID* type = ScriptNative<Native>::type;
};
template <std::derived_from<IUnknown> I> struct ResultType<I*> : ResultType<InterfacePtr<I>> {};
template <> struct ResultType<void> {
    static constexpr bool kExists = false;
    static constexpr const _GUID* type = nullptr;
};

template <class Parameters> struct ParameterTypes;
template <class... P> struct ParameterTypes<std::tuple<P...>> {
    static constexpr unsigned count = sizeof...(P);
    // One more, as there are no empty arrays.
    static constexpr ScriptParameterType types[count + 1] = {ScriptArgument<P>::kType...};
};
// All arguments as they come.
template <class V>
requires std::same_as<std::remove_const_t<V>, std::vector<GenericValue*>>
struct ParameterTypes<std::tuple<V&>> {
    static constexpr unsigned count = ScriptSignature::kAny;
    static constexpr const ScriptParameterType* types = nullptr;
};

template <class X> constexpr const void* owner_mark() {
    if constexpr (std::is_void_v<X>)
        return nullptr;
    else
        return &kOwner<X>;
}

template <class X, class R, class Parameters>
inline constexpr ScriptSignature kSignatureOf = {owner_mark<X>(), ParameterTypes<Parameters>::types,
                                                 ParameterTypes<Parameters>::count,
                                                 ResultType<R>::kExists, ResultType<R>::type};

// ---- Calls

template <class R> void write_result(GenericValue& to, R&& native) {
    using Native = std::remove_cvref_t<R>;
    if constexpr (std::is_pointer_v<Native> && !std::same_as<Native, const char16_t*>)
        ScriptNative<InterfacePtr<std::remove_pointer_t<Native>>>::write(to, {native, true});
    else
        ScriptNative<Native>::write(to, native);
}

// Deduces the parameters.
template <class Parameters> inline constexpr auto kParameters = static_cast<Parameters*>(nullptr);

using PlaceOf = ScriptPlace (*)(std::size_t position);

// The arguments of a call, made in their order, so that the first that does not fit is refused.
template <std::size_t position, class P> struct HeldArgument { ScriptArgument<P> argument; };
template <class Positions, class... P> struct HeldArguments;
template <std::size_t... i, class... P>
struct HeldArguments<std::index_sequence<i...>, P...> : HeldArgument<i, P>... {
    template <class Body> decltype(auto) pass(Body& body) {
        return body(HeldArgument<i, P>::argument.get()...);
    }
};

// Calls `body` with the arguments as natives; they live until it returns.
template <PlaceOf place, class... P, class Body>
decltype(auto) with_natives(std::tuple<P...>*, std::vector<GenericValue*>& arguments, Body body) {
    return [&]<std::size_t... i>(std::index_sequence<i...>)->decltype(auto) {
        HeldArguments<std::index_sequence<i...>, P...> held{
            {ScriptArgument<P>(*arguments[i], place(i))}...};
        return held.pass(body);
    }
    (std::index_sequence_for<P...>());
}
template <PlaceOf place, class V, class Body>
requires std::same_as<std::remove_const_t<V>, std::vector<GenericValue*>>
decltype(auto) with_natives(std::tuple<V&>*, std::vector<GenericValue*>& arguments, Body body) {
    return body(arguments);
}

template <auto handler, class X> struct Property {
    using Member = Parts<handler>;
    static constexpr const ScriptSignature& kGetter =
        kSignatureOf<X, typename Member::Result, std::tuple<>>;
    static constexpr const ScriptSignature& kSetter = []() -> const ScriptSignature& {
        if constexpr (kIsData<handler>)
            return kSignatureOf<X, void, std::tuple<const typename Member::Result&>>;
        else
            return kSignatureOf<X, void, typename Member::Parameters>;
    }();

    static void get(void* object, GenericValue& out) {
        write_result(out, std::invoke(handler, *static_cast<X*>(object)));
    }
    static void set(void* object, const GenericValue& value) {
        if constexpr (kIsData<handler>) {
            using Native = typename Member::Result;
            static_cast<X*>(object)->*handler =
                ScriptNative<Native>::read(value, ScriptPlace::property());
        } else {
            static_assert(std::tuple_size_v<typename Member::Parameters> == 1,
                          "what writes a property takes its value alone");
            using Argument = ScriptArgument<std::tuple_element_t<0, typename Member::Parameters>>;
            static_assert(!Argument::kType.out, "a setter does not change what it is given");
            Argument argument(value, ScriptPlace::property());
            std::invoke(handler, *static_cast<X*>(object), argument.get());
        }
    }
};

template <auto handler, class X> struct Method {
    using Member = Parts<handler>;
    using Parameters = typename Member::Parameters;
    static constexpr const ScriptSignature& kSignature =
        kSignatureOf<X, typename Member::Result, Parameters>;

    static void call(void* object, GenericValue* result, std::vector<GenericValue*>& arguments) {
        with_natives<&ScriptPlace::parameter>(kParameters<Parameters>, arguments, [&](auto&&... n) {
            const auto run = [&]() -> decltype(auto) {
                return std::invoke(handler, *static_cast<X*>(object),
                                   std::forward<decltype(n)>(n)...);
            };
            if constexpr (!std::is_void_v<typename Member::Result>)
                if (result) return write_result(*result, run());
            static_cast<void>(run());
        });
    }
};

template <auto handler> struct Maker {
    using Member = Parts<handler>;
    using Parameters = typename Member::Parameters;
    using X = typename Member::Owner;
    static constexpr const ScriptSignature& kSignature =
        kSignatureOf<X, typename Member::Result, Parameters>;

    static InterfacePtr<IValue> make(std::vector<GenericValue*>& arguments) {
        const auto run = [&](auto&&... all) -> decltype(auto) {
            return std::invoke(handler, std::forward<decltype(all)>(all)...);
        };
        const auto body = [&](auto&&... n) -> InterfacePtr<IValue> {
            if constexpr (std::is_void_v<X>) {
                return run(std::forward<decltype(n)>(n)...);
            } else {
                const auto object = make_object<X>();
                run(static_cast<X&>(*object), std::forward<decltype(n)>(n)...);
                return object;
            }
        };
        return with_natives<&ScriptPlace::ctor_parameter>(kParameters<Parameters>, arguments, body);
    }
};

} // namespace detail

// ---- Handlers. `X` is the class of the table.

template <auto handler, class X = detail::OwnerOf<handler>>
inline constexpr ScriptGetter reads = {&detail::Property<handler, X>::get,
                                       &detail::Property<handler, X>::kGetter};
template <auto handler, class X = detail::OwnerOf<handler>>
inline constexpr ScriptSetter writes = {&detail::Property<handler, X>::set,
                                        &detail::Property<handler, X>::kSetter};
template <auto handler, class X = detail::OwnerOf<handler>>
inline constexpr ScriptAction runs = {&detail::Method<handler, X>::call,
                                      &detail::Method<handler, X>::kSignature};
// A function that gives a new object, or a member function that sets up one made by default.
template <auto handler>
inline constexpr ScriptMaker makes = {&detail::Maker<handler>::make,
                                      &detail::Maker<handler>::kSignature};

} // namespace core
