#include <core/values/GenericValue.h>

#include "TypeLookup.h"
#include "component/MessageFormat.h"

#include <core/component/Messages.h>
#include <core/component/Utf8.h>
#include <core/values/ContextException.h>
#include <core/values/UnknownValue.h>

#include <cmath>
#include <ostream>

namespace core {

namespace detail {

void throw_not_of_type(TypeCode wanted, IValue* given) {
    throw ContextException(format_message(load_core_wstring("IDS_VALUE_NOT_OF_TYPE"),
                                          type_presentation(base_type(wanted)),
                                          type_presentation(given->getIType())));
}

void throw_out_of_range(const Numeric& number) {
    throw ContextException(
        format_message(load_core_wstring("IDS_VALUE_OUT_OF_RANGE"), number.toString()));
}

} // namespace detail

void GenericValue::assign(IUnknown* object) {
    const InterfacePtr<IValue> value(object);
    setIValue(value || !object ? value.get() : create_unknown_value(object).get());
}

bool GenericValue::equals(bool value) const {
    const bool* const held = data<bool>();
    return held && *held == value;
}

bool GenericValue::equals(double value) const {
    const Numeric* const held = data<Numeric>();
    return held && std::isfinite(value) && *held == Numeric(value);
}

bool GenericValue::equals(const Numeric& value) const {
    const Numeric* const held = data<Numeric>();
    return held && *held == value;
}

bool GenericValue::equals(std::u16string_view value) const {
    const stdx::ustring* const held = data<stdx::ustring>();
    return held && *held == value;
}

bool GenericValue::equals(const Date& value) const {
    const Date* const held = data<Date>();
    return held && *held == value;
}

stdx::ustring to_string(const GenericValue& value) {
    stdx::ustring text;
    value.getString(text);
    return text;
}

std::ostream& operator<<(std::ostream& out, const GenericValue& value) {
    constexpr int kEnglish = 0;
    out << to_utf8(type_name(value.lentIValue()->getIType(), kEnglish));
    const stdx::ustring text = to_string(value);
    if (!text.empty()) out << ' ' << to_utf8(text);
    return out;
}

bool is_undefined_value(const GenericValue& value) {
    return value.typeCode() == TypeCode::Undefined;
}

bool is_null_or_undefined_value(const GenericValue& value) {
    return value.typeCode() <= TypeCode::Null;
}

} // namespace core
