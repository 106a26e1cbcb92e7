#include <core/values/CreateValue.h>

#include "BaseValues.h"

#include <core/values/BaseTypes.h>

namespace core {
namespace {

// Complete before any code runs, and never destroyed: others may use values until the very end.
union StaticObjects {
    constexpr StaticObjects() : objects() {}
    ~StaticObjects() {}

    struct Objects {
        StaticValue<UndefinedValue> undefined;
        StaticValue<NullValue> null;
        StaticValue<UndefinedValue> unspecified;
        StaticValue<BooleanValue> no = {false}, yes = {true};
        // No array: GCC cannot make one of such objects at compile time.
        StaticValue<NumericValue> zero = {0}, one = {1}, two = {2}, three = {3}, four = {4},
                                  five = {5}, six = {6}, seven = {7}, eight = {8}, nine = {9};
        StaticValue<StringValue> emptyString;
        StaticValue<DateValue> emptyDate;
        StaticValue<TypeValue> undefinedType = {CLSID_UndefinedType};
    } objects;
};
constinit StaticObjects statics;

} // namespace

namespace detail {

constexpr auto& objects = statics.objects;

constinit const StaticValues static_values = {
    .undefined = &objects.undefined,
    .null = &objects.null,
    .unspecified = &objects.unspecified,
    .booleans = {&objects.no, &objects.yes},
    .digits = {&objects.zero, &objects.one, &objects.two, &objects.three, &objects.four,
               &objects.five, &objects.six, &objects.seven, &objects.eight, &objects.nine},
    .emptyString = &objects.emptyString,
    .emptyDate = &objects.emptyDate,
    .undefinedType = &objects.undefinedType,
    .begin = &objects,
    .size = sizeof objects,
};

} // namespace detail

namespace {

using detail::static_values;

// One of each kind. `references` is what a new value begins with, see `DynamicValue`.

IValue* make_value(std::uint32_t references, unsigned long long value) {
    if (value <= 9) return static_values.digits[value];
    return new DynamicValue<NumericValue>(references, value);
}

IValue* make_value(std::uint32_t references, long long value) {
    if (value >= 0 && value <= 9) return static_values.digits[value];
    return new DynamicValue<NumericValue>(references, value);
}

IValue* make_value(std::uint32_t references, double value) {
    if (value == 0.0) return static_values.digits[0];
    return new DynamicValue<NumericValue>(references, value);
}

IValue* make_value(std::uint32_t references, const Numeric& value) {
    long long integer = 0;
    if (value.toInteger(integer) && integer >= 0 && integer <= 9)
        return static_values.digits[integer];
    return new DynamicValue<NumericValue>(references, value);
}

IValue* make_value(std::uint32_t references, const stdx::ustring& value) {
    if (value.empty()) return static_values.emptyString;
    return new DynamicValue<StringValue>(references, value);
}

IValue* make_value(std::uint32_t references, stdx::ustring&& value) {
    if (value.empty()) return static_values.emptyString;
    return new DynamicValue<StringValue>(references, std::move(value));
}

IValue* make_value(std::uint32_t references, const char16_t* value) {
    return make_value(references, stdx::ustring(value));
}

IValue* make_value(std::uint32_t references, const Date& value) {
    if (value.empty()) return static_values.emptyDate;
    return new DynamicValue<DateValue>(references, value);
}

} // namespace

IValue* create_numeric_value(long long value) {
    return make_value(0, value);
}
IValue* create_numeric_value(unsigned long long value) {
    return make_value(0, value);
}
IValue* create_numeric_value(double value) {
    return make_value(0, value);
}
IValue* create_numeric_value(const Numeric& value) {
    return make_value(0, value);
}
IValue* create_string_value(const stdx::ustring& value) {
    return make_value(0, value);
}
IValue* create_string_value(stdx::ustring&& value) {
    return make_value(0, std::move(value));
}
IValue* create_string_value(const char16_t* value) {
    return make_value(0, value);
}
IValue* create_date_value(const Date& value) {
    return make_value(0, value);
}

IValue* create_type_value(const _GUID& type) {
    if (type == CLSID_UndefinedType) return static_values.undefinedType;
    return new DynamicValue<TypeValue>(0, type);
}

namespace detail {

IValue* owned_value(long long value) {
    return make_value(1, value);
}
IValue* owned_value(unsigned long long value) {
    return make_value(1, value);
}
IValue* owned_value(double value) {
    return make_value(1, value);
}
IValue* owned_value(const Numeric& value) {
    return make_value(1, value);
}
IValue* owned_value(const stdx::ustring& value) {
    return make_value(1, value);
}
IValue* owned_value(stdx::ustring&& value) {
    return make_value(1, std::move(value));
}
IValue* owned_value(const char16_t* value) {
    return make_value(1, value);
}
IValue* owned_value(const Date& value) {
    return make_value(1, value);
}

} // namespace detail
} // namespace core
