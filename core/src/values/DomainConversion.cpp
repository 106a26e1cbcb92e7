#include "DomainConversion.h"

#include "BaseTypeTable.h"
#include "TypeLookup.h"

#include <core/values/BaseTypes.h>
#include <core/values/CreateValue.h>
#include <core/values/IBinaryValue.h>
#include <core/values/Type.h>
#include <core/values/TypeException.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace core {
namespace {

using Owned = InterfacePtr<IValue>;

Owned owned(IValue* created) {
    return {created, true};
}

// ---- Qualifiers: whether a payload fits, and what it becomes if it does not

struct Digits {
    unsigned whole, fraction;
};

Digits digits_of(const Numeric& number) noexcept {
    if (number.zero()) return {0, 0};
    unsigned length = 0, fraction = 0;
    number.lengthAndPrecision(length, fraction);
    return {length - fraction, fraction};
}

bool fits(const Numeric& number, const NumericQualifiers& limits) noexcept {
    if (limits.nonNegative && number.sign() < 0) return false;
    if (limits.digits == 0) return true;
    const Digits digits = digits_of(number);
    return digits.fraction <= limits.fraction && digits.whole <= limits.digits - limits.fraction;
}

// The largest number of its shape, with the sign of `number`.
Numeric saturated(const Numeric& number, const NumericQualifiers& limits) {
    std::array<char, NumericQualifiers::kMostDigits + 2> text;
    char* end = std::fill_n(text.data(), limits.digits - limits.fraction, '9');
    if (limits.fraction != 0) {
        *end++ = '.';
        end = std::fill_n(end, limits.fraction, '9');
    }
    Numeric largest;
    from_chars(text.data(), end, largest);
    return number.sign() < 0 ? -largest : largest;
}

Numeric fit(const Numeric& number, const NumericQualifiers& limits) {
    if (number.sign() < 0 && limits.nonNegative) return 0;
    if (fits(number, limits)) return number;
    const unsigned whole = limits.digits - limits.fraction;
    if (digits_of(number).whole <= whole) {
        Numeric rounded = number.round(static_cast<int>(limits.fraction));
        if (digits_of(rounded).whole <= whole) return rounded;
    }
    return saturated(number, limits);
}

bool fits(const LengthQualifiers& limits, std::uint64_t length) noexcept {
    return limits.length == 0 || limits.length == length ||
           (limits.length > length && limits.variable);
}

bool fits(const stdx::ustring& text, const StringQualifiers& limits) noexcept {
    return fits(limits, text.size());
}

stdx::ustring fit(const stdx::ustring& text, const StringQualifiers& limits) {
    if (fits(text, limits)) return text;
    stdx::ustring result = text;
    result.resize(limits.length, u' ');
    return result;
}

Date fit(const Date& date, const DateQualifiers& limits) noexcept {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    date.split(year, month, day, hour, minute, second);
    if (limits.parts == DateQualifiers::kDate) return Date(year, month, day);
    if (limits.parts == DateQualifiers::kTime) return Date(1, 1, 1, hour, minute, second);
    return date;
}

bool fits(const Date& date, const DateQualifiers& limits) noexcept {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    date.split(year, month, day, hour, minute, second);
    if (limits.parts == DateQualifiers::kDate) return hour == 0 && minute == 0 && second == 0;
    if (limits.parts == DateQualifiers::kTime) return year == 1 && month == 1 && day == 1;
    return true;
}

// ---- Values of the domain's own types

template <class Payload, class Qualifiers, class Create>
Owned keep(IValue* value, const Qualifiers& limits, Create create) {
    const Payload& payload = *static_cast<const Payload*>(value->getDataPtr());
    return fits(payload, limits) ? owned(value) : owned(create(fit(payload, limits)));
}

Owned new_binary(const std::vector<std::byte>& bytes) {
    const InterfacePtr<IBinaryType> type(find_type(CLSID_BinaryDataType));
    return type ? type->createBinaryValue(bytes.data(), bytes.size()) : nullptr;
}

// Null for data that cannot be read or made here.
Owned keep_binary(IValue* value, const BinaryQualifiers& limits) {
    if (limits.length == 0) return owned(value);
    const InterfacePtr<IBinaryValue> binary(static_cast<IUnknown*>(value));
    if (!binary) return nullptr;
    const std::uint64_t size = binary->size();
    if (fits(limits, size)) return owned(value);
    std::vector<std::byte> bytes(limits.length);
    binary->read(bytes.data(),
                 static_cast<std::size_t>(std::min<std::uint64_t>(size, limits.length)));
    return new_binary(bytes);
}

// A value whose type the domain holds.
Owned keep(IValue* value, TypeCode code, const _GUID& type, const TypeDomain& domain) {
    const auto number = [](const Numeric& fitted) { return create_numeric_value(fitted); };
    const auto string = [](const stdx::ustring& fitted) { return create_string_value(fitted); };
    const auto date = [](const Date& fitted) { return create_date_value(fitted); };
    if (code == TypeCode::Numeric)
        return keep<Numeric>(value, domain.getNumericQualifiers(), number);
    if (code == TypeCode::String)
        return keep<stdx::ustring>(value, domain.getStringQualifiers(), string);
    if (code == TypeCode::Date) return keep<Date>(value, domain.getDateQualifiers(), date);
    if (type == CLSID_BinaryDataType) return keep_binary(value, domain.getBinaryQualifiers());
    return owned(value);
}

// ---- Values that are converted

// What values of a type become, the first that the domain holds and that succeeds.
struct Conversions {
    TypeCode from;
    std::array<TypeCode, 3> to; // ends with Undefined
};
constexpr auto kNone = TypeCode::Undefined;
constexpr Conversions kConversions[] = {
    {TypeCode::Boolean, {TypeCode::String, TypeCode::Numeric, kNone}},
    {TypeCode::Numeric, {TypeCode::String, TypeCode::Boolean, kNone}},
    {TypeCode::String, {TypeCode::Date, TypeCode::Numeric, TypeCode::Boolean}},
    {TypeCode::Date, {TypeCode::String, kNone, kNone}},
    {TypeCode::Type, {TypeCode::String, kNone, kNone}},
    {TypeCode::Object, {TypeCode::String, kNone, kNone}},
};

// A value that stands for a type which is not known says so by an exception.
bool get_text(IValue* value, stdx::ustring& text) {
    try {
        return value->getString(text);
    } catch (const TypeException&) {
        return false;
    }
}

// Null where the conversion fails.
Owned convert(IValue* value, TypeCode to, const TypeDomain& domain) {
    switch (to) {
    case TypeCode::Boolean: {
        bool result = false;
        return value->getBoolean(result) ? owned(create_boolean_value(result)) : nullptr;
    }
    case TypeCode::Numeric: {
        Numeric result;
        if (!value->getNumeric(result)) return nullptr;
        return owned(create_numeric_value(fit(result, domain.getNumericQualifiers())));
    }
    case TypeCode::Date: {
        Date result;
        if (!value->getDate(result)) return nullptr;
        return owned(create_date_value(fit(result, domain.getDateQualifiers())));
    }
    case TypeCode::String: {
        stdx::ustring result;
        if (!get_text(value, result)) return nullptr;
        return owned(create_string_value(fit(result, domain.getStringQualifiers())));
    }
    default:
        return nullptr;
    }
}

const _GUID& clsid_of(TypeCode code) {
    return *base_type(code)->getTypeClsid();
}

} // namespace

InterfacePtr<IValue> convert_to_domain(IValue* value, const TypeDomain& domain) {
    if (domain.defaultTypeId() == kUUIDNull) return owned(value);
    IType* const type = value->getIType();
    const TypeCode code = type ? type->getTypeCode() : TypeCode::Object;
    if (code == TypeCode::Undefined) return nullptr;
    if (type && domain.contains(*type->getTypeClsid()))
        return keep(value, code, *type->getTypeClsid(), domain);

    for (const Conversions& conversions : kConversions) {
        if (conversions.from != code) continue;
        for (const TypeCode to : conversions.to) {
            if (to == kNone || !domain.contains(clsid_of(to))) continue;
            if (Owned converted = convert(value, to, domain)) return converted;
        }
    }
    return nullptr;
}

InterfacePtr<IValue> default_of_domain(const TypeDomain& domain) {
    const _GUID& type = domain.defaultTypeId();
    if (type == CLSID_StringType) {
        const StringQualifiers& limits = domain.getStringQualifiers();
        const unsigned spaces = limits.variable ? 0 : limits.length;
        return owned(create_string_value(stdx::ustring(spaces, u' ')));
    }
    Owned value;
    if (type == CLSID_BinaryDataType) {
        const BinaryQualifiers& limits = domain.getBinaryQualifiers();
        value = new_binary(std::vector<std::byte>(limits.variable ? 0 : limits.length));
    } else if (const BaseTypeRow* const base = find_base_type_row(type)) {
        value = owned(base->defaultValue());
    } else if (const InterfacePtr<IType> found = find_type(type)) {
        value = found->createIValue();
    }
    return value ? value : owned(create_undefined_value());
}

} // namespace core
