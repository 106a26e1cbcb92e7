// What the handles on values have in common: `Value` owns one, `WeakValue` borrows one, `TypedValue`
// turns what it is given into the types of a domain.
//
//   value.assign(19);
//   int count = value.as<int>();                              // throws when it is none
//   if (auto price = value.try_as<core::Numeric>()) ...       // or asks
//   stdx::ustring text = core::to_string(value);              // converts, as the thread formats
//   if (value == u"Riga") ...                                 // never converts
//
// A handle is never empty for a reader. One handle is for one thread at a time; the values that
// cannot change may be shared by handles of many.
#pragma once

#include <core/values/CreateValue.h>
#include <core/values/Type.h>

#include <iosfwd>
#include <optional>
#include <string_view>
#include <utility>

namespace core {

class IInPersistenceStorage;
class IOutPersistenceStorage;

class ValueClass {};

namespace detail {

// Native types that a value of one type code holds.
template <class T> struct PayloadOf;
template <> struct PayloadOf<bool> { static constexpr TypeCode code = TypeCode::Boolean; };
template <> struct PayloadOf<Numeric> { static constexpr TypeCode code = TypeCode::Numeric; };
template <> struct PayloadOf<stdx::ustring> { static constexpr TypeCode code = TypeCode::String; };
template <> struct PayloadOf<Date> { static constexpr TypeCode code = TypeCode::Date; };
template <> struct PayloadOf<_GUID> { static constexpr TypeCode code = TypeCode::Type; };

template <class T>
concept Payload = requires {
    PayloadOf<T>::code;
};

// Throws ContextException: a value of type `wanted` is needed where one of `given` stands.
[[noreturn]] ORBCORE_API void throw_not_of_type(TypeCode wanted, IValue* given);
[[noreturn]] ORBCORE_API void throw_out_of_range(const Numeric& number);

} // namespace detail

// That of its type; a value of a type that is not known is an object.
inline TypeCode type_code(IValue* value) {
    IType* const type = value->getIType();
    return type ? type->getTypeCode() : TypeCode::Object;
}

class ORBCORE_API GenericValue : public ValueClass {
public:
    // ---- The table of the handle

    virtual void setIValue(IValue* value) = 0; // null stores undefined
    virtual InterfacePtr<IValue> getIValue() const = 0;
    // `to.setIValue` with the held value.
    virtual void setIValueTo(GenericValue& to) const = 0;
    virtual bool equals0(IValue* other) const = 0;
    virtual bool equalsTo(const GenericValue& other) const = 0;
    virtual std::uint32_t hashCode0() const = 0;
    virtual Type type0() const = 0;
    // The held value without a reference, until the handle changes.
    virtual IValue* lentIValue() const = 0;

    // ---- Writing

    void assign(bool value) { setIValue(create_boolean_value(value)); }
    template <NativeInteger T> void assign(T value) { setIValue(create_numeric_value(value)); }
    void assign(double value) { setIValue(create_numeric_value(value)); }
    void assign(const Numeric& value) { setIValue(create_numeric_value(value)); }
    void assign(const char16_t* value) { setIValue(create_string_value(value)); }
    void assign(const stdx::ustring& value) { setIValue(create_string_value(value)); }
    void assign(stdx::ustring&& value) { setIValue(create_string_value(std::move(value))); }
    void assign(const Date& value) { setIValue(create_date_value(value)); }
    // The object as a value; one that is none is held by an `UnknownValue`. Null stores undefined.
    void assign(IUnknown* object);
    void clear() { setIValue(nullptr); }

    // ---- Reading with conversion, see `IValue`

    bool getBoolean(bool& out) const { return lentIValue()->getBoolean(out); }
    bool getNumeric(Numeric& out) const { return lentIValue()->getNumeric(out); }
    bool getString(stdx::ustring& out) const { return lentIValue()->getString(out); }
    bool getDate(Date& out) const { return lentIValue()->getDate(out); }

    // ---- Reading without conversion
    //
    // T is bool, Numeric, stdx::ustring, Date, _GUID (of a value of the type "Type"), an integer
    // type, which the number must fit exactly, or double.

    // Throws `ContextException`, in the language of the thread's messages.
    template <class T> T as() const;
    template <class T> std::optional<T> try_as() const;
    // The payload in place, until the handle changes; null if the value is of another type.
    template <detail::Payload T> const T* data() const;
    // An interface of the held object; null when it has none such.
    template <class Interface> InterfacePtr<Interface> object() const {
        return InterfacePtr<Interface>(static_cast<IUnknown*>(lentIValue()));
    }

    TypeCode typeCode() const { return type_code(lentIValue()); }

    // ---- Comparison, without conversion

    bool equals(bool value) const;
    template <NativeInteger T> bool equals(T value) const { return equals(Numeric(value)); }
    bool equals(double value) const; // no number equals NaN or an infinity
    bool equals(const Numeric& value) const;
    bool equals(const char16_t* value) const { return equals(std::u16string_view(value)); }
    bool equals(const stdx::ustring& value) const { return equals(std::u16string_view(value)); }
    bool equals(std::u16string_view value) const; // lengths first, then memory
    bool equals(const Date& value) const;

    // ---- Persistence, docs/values.md; text is that of a list

    void serialize(IOutPersistenceStorage* storage) const;
    // Leaves `to` as it is where a later version wrote a kind of value that is not known here, and
    // gives undefined for a type that is not. Throws `ListStreamException`.
    static void deserialize(IInPersistenceStorage* storage, GenericValue& to);
    void toString(stdx::ustring& out) const;
    static void fromString(const stdx::ustring& text, GenericValue& to);

protected:
    GenericValue() = default;
    GenericValue(const GenericValue&) = default;
    GenericValue& operator=(const GenericValue&) = default;
    ~GenericValue() = default;
};

inline bool operator==(const GenericValue& a, const GenericValue& b) {
    return a.equalsTo(b);
}
template <class T>
requires requires(const GenericValue& value, const T& native) {
    value.equals(native);
}
bool operator==(const GenericValue& a, const T& b) {
    return a.equals(b);
}

// What `getString` gives.
ORBCORE_API stdx::ustring to_string(const GenericValue& value);
// The name of the type and the value as text, for people and tests: "Number 12", "String Riga".
ORBCORE_API std::ostream& operator<<(std::ostream& out, const GenericValue& value);

ORBCORE_API bool is_undefined_value(const GenericValue& value);
ORBCORE_API bool is_null_or_undefined_value(const GenericValue& value);

// ---- inline

namespace detail {

// What `as` and `try_as` read: the native type whose payload a `T` comes from.
template <class T> struct SourceOf { using type = T; };
template <NativeInteger T> struct SourceOf<T> { using type = Numeric; };
template <> struct SourceOf<double> { using type = Numeric; };

template <class T> std::optional<T> from_payload(const typename SourceOf<T>::type& payload) {
    if constexpr (NativeInteger<T> && sizeof(T) == sizeof(long long)) {
        // The conversion goes modulo 2^64.
        const T value = static_cast<T>(static_cast<long long>(payload));
        if (Numeric(value) != payload) return std::nullopt;
        return value;
    } else if constexpr (NativeInteger<T>) {
        long long value = 0;
        if (!payload.toInteger(value) || !std::in_range<T>(value)) return std::nullopt;
        return static_cast<T>(value);
    } else {
        return static_cast<T>(payload);
    }
}

} // namespace detail

template <detail::Payload T> const T* GenericValue::data() const {
    IValue* const value = lentIValue();
    // There is one type of each of these codes, so the payload is of this native type.
    if (value->getIType() != base_type(detail::PayloadOf<T>::code)) return nullptr;
    return static_cast<const T*>(value->getDataPtr());
}

template <class T> std::optional<T> GenericValue::try_as() const {
    const auto* const payload = data<typename detail::SourceOf<T>::type>();
    return payload ? detail::from_payload<T>(*payload) : std::nullopt;
}

template <class T> T GenericValue::as() const {
    using Source = typename detail::SourceOf<T>::type;
    const Source* const payload = data<Source>();
    if (!payload) detail::throw_not_of_type(detail::PayloadOf<Source>::code, lentIValue());
    if constexpr (std::same_as<T, Source>) {
        return *payload;
    } else {
        std::optional<T> value = detail::from_payload<T>(*payload);
        if (!value) detail::throw_out_of_range(*payload);
        return *value;
    }
}

} // namespace core
