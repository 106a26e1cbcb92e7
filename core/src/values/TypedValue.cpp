#include <core/values/TypedValue.h>

#include "DomainConversion.h"
#include "ThreadFormats.h"

#include <utility>

namespace core {
namespace {

void release(IValue* value) noexcept {
    if (value) value->Release();
}

DateFormat::Pattern pattern_of(const DateQualifiers& qualifiers) noexcept {
    switch (qualifiers.parts) {
    case DateQualifiers::kDate:
        return DateFormat::Pattern::ShortDate;
    case DateQualifiers::kTime:
        return DateFormat::Pattern::Time;
    default:
        return DateFormat::Pattern::ShortDateTime;
    }
}

stdx::ustring format(const Numeric& number, const NumericQualifiers& qualifiers) {
    if (number.zero()) return {};
    const NumericFormat format = numeric_format();
    if (qualifiers.digits == 0) return format.format(number);
    return format.format(number, qualifiers.digits - qualifiers.fraction, 1, qualifiers.fraction,
                         qualifiers.fraction);
}

} // namespace

TypedValue::TypedValue(const TypedValue& other) : value_(other.value_), domain_(other.domain_) {
    if (value_) value_->AddRef();
}

TypedValue::TypedValue(TypedValue&& other) noexcept
    : value_(std::exchange(other.value_, nullptr)), domain_(std::move(other.domain_)) {}

TypedValue& TypedValue::operator=(const TypedValue& other) {
    return *this = TypedValue(other);
}

TypedValue& TypedValue::operator=(TypedValue&& other) noexcept {
    TypedValue taken(std::move(other));
    std::swap(value_, taken.value_);
    std::swap(domain_, taken.domain_);
    return *this;
}

TypedValue::~TypedValue() {
    release(value_);
}

void TypedValue::setDomain(const TypeDomain& domain) {
    domain_ = domain;
    setDefaultValue();
}

void TypedValue::changeDomain(const TypeDomain& domain) {
    const InterfacePtr<IValue> current = getIValue();
    domain_ = domain;
    setIValueInternal(current.get());
}

void TypedValue::setDefaultValue() {
    release(std::exchange(value_, nullptr));
}

InterfacePtr<IValue> TypedValue::getDefaultValue() const {
    return default_of_domain(domain_);
}

void TypedValue::setIValue(IValue* value) {
    if (!value) value = create_undefined_value();
    if (value == value_) return;
    // A new value has no reference yet, and may become another one.
    const InterfacePtr<IValue> given(value, true);
    setIValueInternal(value);
}

IValue* TypedValue::_getIValue() const {
    if (!value_) value_ = getDefaultValue().detach();
    return value_;
}

void TypedValue::setIValueInternal(IValue* value) {
    InterfacePtr<IValue> converted = convert_to_domain(value, domain_);
    release(std::exchange(value_, converted.detach()));
}

stdx::ustring format(const TypedValue& value) {
    if (const Date* const date = value.data<Date>())
        return date->empty()
                   ? stdx::ustring()
                   : format_date(*date, pattern_of(value.typeDomain().getDateQualifiers()));
    if (const Numeric* const number = value.data<Numeric>())
        return format(*number, value.typeDomain().getNumericQualifiers());
    return to_string(value);
}

} // namespace core
