// How values of scripts become native ones and back, by type.
//
// | native type                     | value                                                      |
// |---------------------------------|------------------------------------------------------------|
// | bool                            | Boolean                                                    |
// | integers, double, Numeric       | Number; one that an integer type cannot hold is refused    |
// | stdx::ustring, Date             | String, Date                                               |
// | _GUID                           | Type, by its class GUID                                    |
// | Type                            | Type                                                       |
// | Value                           | any                                                        |
// | InterfacePtr<I>                 | an object that has the interface; as a result also null,   |
// |                                 | which becomes undefined                                    |
// | std::optional<T>                | that of `T`, or undefined                                  |
// | const char16_t*                 | String; only as a result                                   |
//
// Nothing is converted: the number 1 is no String. Other types join by a specialisation of
// `ScriptNative`.
#pragma once

#include <core/values/BaseTypes.h>
#include <core/values/Value.h>

#include <optional>

namespace core {

// Where a value that is read stands, for the message that refuses it.
class ScriptPlace {
public:
    static constexpr ScriptPlace parameter(std::size_t position) {
        return {Kind::Parameter, position};
    }
    static constexpr ScriptPlace ctor_parameter(std::size_t position) {
        return {Kind::CtorParameter, position};
    }
    static constexpr ScriptPlace property() { return {Kind::Property, 0}; }

    // By the functions of core/values/ContextException.h.
    [[noreturn, gnu::cold]] ORBCORE_API void refuse_type() const;
    [[noreturn, gnu::cold]] ORBCORE_API void refuse_value() const;

private:
    enum class Kind : unsigned { Parameter, CtorParameter, Property };
    constexpr ScriptPlace(Kind kind, std::size_t position)
        : kind_(kind), position_(static_cast<unsigned>(position)) {}

    Kind kind_;
    unsigned position_;
};

namespace detail {

ORBCORE_API void write_type(GenericValue& to, const _GUID& type);

template <class T> const T& script_payload(const GenericValue& value, ScriptPlace place) {
    const T* const payload = value.data<T>();
    if (!payload) place.refuse_type();
    return *payload;
}

constexpr const _GUID* type_of_payload(TypeCode code) {
    switch (code) {
    case TypeCode::Boolean:
        return &CLSID_BooleanType;
    case TypeCode::Numeric:
        return &CLSID_NumericType;
    case TypeCode::String:
        return &CLSID_StringType;
    case TypeCode::Date:
        return &CLSID_DateType;
    case TypeCode::Type:
        return &CLSID_TypeType;
    default:
        return nullptr;
    }
}

} // namespace detail

// A specialisation has
//   `type`, the class GUID of the type of values, null where it may be any,
//   `read`, a static function that makes a `T` of a value or lets the place refuse it,
//   `write`, a static function that assigns a `T` to a value.
template <class T> struct ScriptNative {
    static_assert(sizeof(T) == 0, "scripts have no value for this native type");
};

template <detail::Payload T> struct ScriptNative<T> {
    static constexpr const _GUID* type = detail::type_of_payload(detail::PayloadOf<T>::code);
    static T read(const GenericValue& value, ScriptPlace place) {
        return detail::script_payload<T>(value, place);
    }
    static void write(GenericValue& to, const T& native) {
        if constexpr (std::same_as<T, _GUID>)
            detail::write_type(to, native);
        else
            to.assign(native);
    }
};

template <class T>
requires(NativeInteger<T> || std::same_as<T, double>) struct ScriptNative<T> {
    static constexpr const _GUID* type = &CLSID_NumericType;
    static T read(const GenericValue& value, ScriptPlace place) {
        const std::optional<T> native =
            detail::from_payload<T>(detail::script_payload<Numeric>(value, place));
        if (!native) place.refuse_value();
        return *native;
    }
    static void write(GenericValue& to, T native) { to.assign(native); }
};

template <> struct ScriptNative<const char16_t*> {
    static constexpr const _GUID* type = &CLSID_StringType;
    static void write(GenericValue& to, const char16_t* native) { to.assign(native); }
};

template <> struct ScriptNative<Type> {
    static constexpr const _GUID* type = &CLSID_TypeType;
    static Type read(const GenericValue& value, ScriptPlace place) {
        return Type(detail::script_payload<_GUID>(value, place));
    }
    static void write(GenericValue& to, const Type& native) {
        detail::write_type(to, native.clsid());
    }
};

template <> struct ScriptNative<GenericValue> { // only as a result
    static constexpr const _GUID* type = nullptr;
    static void write(GenericValue& to, const GenericValue& native) { native.setIValueTo(to); }
};

template <> struct ScriptNative<Value> : ScriptNative<GenericValue> {
    static Value read(const GenericValue& value, ScriptPlace) { return Value(value); }
};

// A class that is a value of its own says of which type in `kTypeClsid`, as `ScriptValue` does.
template <class I> struct ScriptNative<InterfacePtr<I>> {
    static constexpr const _GUID* type = [] {
        if constexpr (requires { I::kTypeClsid; })
            return I::kTypeClsid;
        else
            return static_cast<const _GUID*>(nullptr);
    }();
    static InterfacePtr<I> read(const GenericValue& value, ScriptPlace place) {
        InterfacePtr<I> object = value.object<I>();
        if (!object) place.refuse_type();
        return object;
    }
    static void write(GenericValue& to, const InterfacePtr<I>& object) {
        if constexpr (std::convertible_to<I*, IValue*>)
            to.setIValue(object.get());
        else
            to.assign(static_cast<IUnknown*>(object.get()));
    }
};

template <class T> struct ScriptNative<std::optional<T>> {
    static constexpr const _GUID* type = ScriptNative<T>::type;
    static constexpr bool kOptional = true;
    static std::optional<T> read(const GenericValue& value, ScriptPlace place) {
        if (value.typeCode() == TypeCode::Undefined) return std::nullopt;
        return ScriptNative<T>::read(value, place);
    }
    static void write(GenericValue& to, const std::optional<T>& native) {
        if (native)
            ScriptNative<T>::write(to, *native);
        else
            to.clear();
    }
};

} // namespace core
