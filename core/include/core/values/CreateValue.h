// Values of native data. A static object serves for undefined, null, true, false, the numbers 0 to 9,
// the empty string and the empty date; anything else is one allocation, of a cell that the calling
// thread keeps for such values.
//
// A new value has no reference yet: whoever gets the pointer takes one at once, as a handle does.
#pragma once

#include <core/values/IValue.h>

#include <concepts>

namespace core {

// The types of the language that make numbers: every integer but bool and the characters.
template <class T>
concept NativeInteger = std::integral<T> && !std::same_as<T, bool> && !std::same_as<T, char> &&
                        !std::same_as<T, wchar_t> && !std::same_as<T, char8_t> &&
                        !std::same_as<T, char16_t> && !std::same_as<T, char32_t>;

ORBCORE_API IValue* create_undefined_value() noexcept;
ORBCORE_API IValue* create_null_value() noexcept;
// An undefined value of another address, which marks a call that goes on without a result.
ORBCORE_API IValue* proceed_call_unspecified_value() noexcept;
ORBCORE_API IValue* create_boolean_value(bool value) noexcept;

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
[[nodiscard]] ORBCORE_API IValue* create_string_value(const char16_t* value);
[[nodiscard]] ORBCORE_API IValue* create_date_value(const Date& value);
// A value of the type "Type" of its own, for where no service is; `TypeValueService` shares them.
[[nodiscard]] ORBCORE_API IValue* create_type_value(const _GUID& type);

} // namespace core
