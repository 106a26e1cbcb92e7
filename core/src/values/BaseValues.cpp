// What base values convert to, and what they store. The rules stand in docs/values.md.
#include "BaseValues.h"

#include "ThreadFormats.h"
#include "TypeLookup.h"
#include "ValuePayload.h"

#include <core/component/InterfaceMap.h>
#include <core/streams/PersistenceStorage.h>
#include <core/text/Characters.h>
#include <core/text/Compare.h>
#include <core/values/Type.h>

#include <algorithm>

namespace core {
namespace {

// The words that mean true and false to every thread, beside those of its own format.
constexpr Term kTrueWord = {u"True", u"Истина"};
constexpr Term kFalseWord = {u"False", u"Ложь"};

constexpr auto kDatePattern = DateFormat::Pattern::ShortDateTime;

bool is_blank(const char16_t* begin, const char16_t* end) noexcept {
    return std::all_of(begin, end, [](char16_t c) { return is_space(c); });
}

// Whether the first word is a boolean and the rest of the text blank.
bool parse_boolean_word(std::u16string_view text, bool& value) noexcept {
    const char16_t* const end = text.data() + text.size();
    const auto is_blank_unit = [](char16_t c) { return is_space(c); };
    const char16_t* const word = std::find_if_not(text.data(), end, is_blank_unit);
    const char16_t* const rest = std::find_if(word, end, is_blank_unit);
    const std::u16string_view found(word, static_cast<std::size_t>(rest - word));
    const bool isTrue = compare_term(found, kTrueWord);
    if (!isTrue && !compare_term(found, kFalseWord)) return false;
    if (!is_blank(rest, end)) return false;
    value = isTrue;
    return true;
}

} // namespace

// ---- What all have in common

HRESULT PrimitiveValueCore::QueryInterface(const _GUID& iid, void** out) noexcept {
    static const InterfaceEntry* const entries =
        interface_map<PrimitiveValueCore, IValue, IPersistableValue, ICheckDefaultValue,
                      ICloneableObject>();
    return InternalQueryInterface(this, entries, iid, out);
}

InterfacePtr<IUnknown> PrimitiveValueCore::clone() {
    return {static_cast<IValue*>(this), true};
}

void PrimitiveValueCore::serialize(IOutPersistenceStorage* storage) {
    put_payload(*storage->listStream(), getIType()->getTypeCode(), getDataPtr());
}

// ---- Boolean

bool BooleanValue::getBoolean(bool& out) {
    out = payload_;
    return true;
}

bool BooleanValue::getNumeric(Numeric& out) {
    out = payload_ ? 1 : 0;
    return true;
}

bool BooleanValue::getString(stdx::ustring& out) {
    out = bool_format().format(payload_);
    return true;
}

// ---- Number

bool NumericValue::getBoolean(bool& out) {
    out = !payload_.zero();
    return true;
}

bool NumericValue::getNumeric(Numeric& out) {
    out = payload_;
    return true;
}

bool NumericValue::getString(stdx::ustring& out) {
    out = numeric_format().format(payload_);
    return true;
}

// ---- String

bool StringValue::getBoolean(bool& out) {
    out = false;
    return bool_format().parse(payload_, out) || parse_boolean_word(payload_, out);
}

bool StringValue::getNumeric(Numeric& out) {
    if (numeric_format().parse(payload_, out)) return true;
    const char16_t* const text = payload_.c_str();
    const char16_t* rest = text;
    out.fromString(text, &rest);
    if (rest != text && is_blank(rest, payload_.cend())) return true;
    out = 0;
    return false;
}

bool StringValue::getString(stdx::ustring& out) {
    out = payload_;
    return true;
}

bool StringValue::getDate(Date& out) {
    const DateFormat format = date_format();
    if (format.parse(payload_, format.getPattern(kDatePattern), out)) return true;
    const char16_t* rest = payload_.c_str();
    if (out.fromString(payload_.c_str(), &rest) && is_blank(rest, payload_.cend())) return true;
    out = Date();
    return false;
}

std::uint32_t StringValue::hashCode() {
    return hash(payload_);
}

bool StringValue::isDefaultValue() {
    return is_blank(payload_.cbegin(), payload_.cend());
}

// ---- Date

bool DateValue::getString(stdx::ustring& out) {
    out = format_date(payload_, kDatePattern);
    return true;
}

bool DateValue::getDate(Date& out) {
    out = payload_;
    return true;
}

// ---- Type

HRESULT TypeValue::QueryInterface(const _GUID& iid, void** out) noexcept {
    static const InterfaceEntry* const entries =
        interface_map<TypeValue, IValue, IPersistableValue, ICheckDefaultValue, ICloneableObject,
                      ITypeValue>();
    return InternalQueryInterface(this, entries, iid, out);
}

bool TypeValue::getString(stdx::ustring& out) {
    out.clear();
    out = type_presentation(Type(payload_).get());
    return true;
}

} // namespace core
