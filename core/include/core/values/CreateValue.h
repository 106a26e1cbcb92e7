// Values of native data. A static object serves for undefined, null, true, false, the numbers 0 to 9,
// the empty string and the empty date; anything else is one allocation, of a cell that the calling
// thread keeps for such values.
//
// A new value has no reference yet: whoever gets the pointer takes one at once, as a handle does.
#pragma once

#include <core/values/IValue.h>

#include <concepts>
#include <cstddef>
#include <cstdint>

namespace core {

// The types of the language that make numbers: every integer but bool and the characters.
template <class T>
concept NativeInteger = std::integral<T> && !std::same_as<T, bool> && !std::same_as<T, char> &&
                        !std::same_as<T, wchar_t> && !std::same_as<T, char8_t> &&
                        !std::same_as<T, char16_t> && !std::same_as<T, char32_t>;

namespace detail {

// The static objects, whose references nobody counts.
struct StaticValues {
    IValue* undefined;
    IValue* null;
    IValue* unspecified;
    IValue* booleans[2];
    IValue* digits[10];
    IValue* emptyString;
    IValue* emptyDate;
    IValue* undefinedType;
    const void* begin; // all of them lie here
    std::size_t size;
};
ORBCORE_API extern const StaticValues static_values;

// Whether the references of a value are not counted, so that handles may pass the calls by.
inline bool is_static(const IValue* value) noexcept {
    return reinterpret_cast<std::uintptr_t>(value) -
               reinterpret_cast<std::uintptr_t>(static_values.begin) <
           static_values.size;
}

} // namespace detail

inline IValue* create_undefined_value() noexcept {
    return detail::static_values.undefined;
}
inline IValue* create_null_value() noexcept {
    return detail::static_values.null;
}
// An undefined value of another address, which marks a call that goes on without a result.
inline IValue* proceed_call_unspecified_value() noexcept {
    return detail::static_values.unspecified;
}
inline IValue* create_boolean_value(bool value) noexcept {
    return detail::static_values.booleans[value];
}

// They throw `std::bad_alloc`, and the one of a double `NumericException` for what is no number.
[[nodiscard]] ORBCORE_API IValue* create_numeric_value(long long value);
[[nodiscard]] ORBCORE_API IValue* create_numeric_value(unsigned long long value);
template <NativeInteger T> [[nodiscard]] IValue* create_numeric_value(T value) {
    if constexpr (std::signed_integral<T>)
        return create_numeric_value(static_cast<long long>(value));
    else
        return create_numeric_value(static_cast<unsigned long long>(value));
}
// Of the doubles, 0.0 alone has a static object.
[[nodiscard]] ORBCORE_API IValue* create_numeric_value(double value);
[[nodiscard]] ORBCORE_API IValue* create_numeric_value(const Numeric& value);
[[nodiscard]] ORBCORE_API IValue* create_string_value(const stdx::ustring& value);
[[nodiscard]] ORBCORE_API IValue* create_string_value(stdx::ustring&& value);
[[nodiscard]] ORBCORE_API IValue* create_string_value(const char16_t* value);
[[nodiscard]] ORBCORE_API IValue* create_date_value(const Date& value);
// A value of the type "Type" of its own, for where no service is; `TypeValueService` shares them.
// That of the undefined type is static.
[[nodiscard]] ORBCORE_API IValue* create_type_value(const _GUID& type);

namespace detail {

// What the functions above give, with one reference for a handle that takes the value over: that of a
// new value costs no atomic increment.
[[nodiscard]] ORBCORE_API IValue* owned_value(long long value);
[[nodiscard]] ORBCORE_API IValue* owned_value(unsigned long long value);
template <NativeInteger T> [[nodiscard]] IValue* owned_value(T value) {
    if constexpr (std::signed_integral<T>)
        return owned_value(static_cast<long long>(value));
    else
        return owned_value(static_cast<unsigned long long>(value));
}
[[nodiscard]] ORBCORE_API IValue* owned_value(double value);
[[nodiscard]] ORBCORE_API IValue* owned_value(const Numeric& value);
[[nodiscard]] ORBCORE_API IValue* owned_value(const stdx::ustring& value);
[[nodiscard]] ORBCORE_API IValue* owned_value(stdx::ustring&& value);
[[nodiscard]] ORBCORE_API IValue* owned_value(const char16_t* value);
[[nodiscard]] ORBCORE_API IValue* owned_value(const Date& value);

} // namespace detail
} // namespace core
