// All are one family: a place, which knows its value and how to complain, and a way to read.
#include <core/values/Arguments.h>

#include <core/component/Messages.h>
#include <core/text/Converter.h>
#include <core/values/ContextException.h>

#include <cstdlib>
#include <utility>

namespace core {
namespace {

using Mismatch = void (*)(unsigned position, const stdx::ustring& extra);

void property_mismatch(unsigned, const stdx::ustring&) {
    property_type_mismatch();
}

struct Place {
    const GenericValue* value; // null: none was given
    Mismatch mismatch;
    unsigned position;

    [[noreturn]] void fail() const {
        mismatch(position, {});
        std::abort(); // no mismatch function returns
    }
};

Place argument(const Arguments& arguments, unsigned position,
               Mismatch mismatch = parameter_type_mismatch) {
    return {position < arguments.size() ? arguments[position] : nullptr, mismatch, position};
}
Place ctor_argument(const Arguments& arguments, unsigned position) {
    return argument(arguments, position, ctor_parameter_type_mismatch);
}
Place property(const GenericValue& value) {
    return {&value, property_mismatch, 0};
}

// ---- Ways to read

template <class T> const T& exact(const Place& place) {
    const T* const payload = place.value ? place.value->data<T>() : nullptr;
    if (!payload) place.fail();
    return *payload;
}

bool convert(const GenericValue& value, stdx::ustring& out) {
    return value.getString(out);
}
bool convert(const GenericValue& value, bool& out) {
    return value.getBoolean(out);
}
bool convert(const GenericValue& value, Numeric& out) {
    return value.getNumeric(out);
}

template <class T> void read(const Place& place, T& out, bool strict) {
    if (strict)
        out = exact<T>(place);
    else if (!place.value || !convert(*place.value, out))
        place.fail();
}

template <class T> void read(const Place& place, T& out, bool strict, bool optional) {
    if (optional && (!place.value || is_undefined_value(*place.value))) return;
    read(place, out, strict);
}

std::int32_t enum_value(const Place& place, const _GUID& type) {
    if (!place.value) place.fail();
    IValue* const value = place.value->lentIValue();
    IType* const held = value->getIType();
    const void* const data = held && *held->getTypeClsid() == type ? value->getDataPtr() : nullptr;
    if (!data) place.fail();
    return *static_cast<const std::int32_t*>(data);
}

const stdx::ustring& encoding(const Place& place) {
    const stdx::ustring& name = exact<stdx::ustring>(place);
    const Converter known(name);
    return name;
}

template <class T> bool read_if(const GenericValue& value, T& out) {
    const T* const payload = value.data<T>();
    if (payload) out = *payload;
    return payload != nullptr;
}

} // namespace

stdx::ustring get_string(const Arguments& arguments, unsigned position) {
    return exact<stdx::ustring>(argument(arguments, position));
}
stdx::ustring get_string_ctor(const Arguments& arguments, unsigned position) {
    return exact<stdx::ustring>(ctor_argument(arguments, position));
}
stdx::ustring get_string(const GenericValue& value) {
    stdx::ustring text;
    read(property(value), text, false);
    return text;
}

bool get_boolean(const Arguments& arguments, unsigned position) {
    return exact<bool>(argument(arguments, position));
}
bool get_boolean_ctor(const Arguments& arguments, unsigned position) {
    return exact<bool>(ctor_argument(arguments, position));
}

int get_index(const Arguments& arguments, unsigned position) {
    const Numeric& number = exact<Numeric>(argument(arguments, position));
    long long index = -1;
    const Numeric magnitude = number.abs().floor();
    if (!magnitude.toInteger(index) || !std::in_range<int>(index) ||
        (number.sign() < 0 && index != 0))
        throw ContextException(load_core_wstring("IDS_INDEX_OFFBOUND"));
    return static_cast<int>(index);
}

std::int32_t get_enum(const GenericValue& value, const _GUID& type) {
    return enum_value(property(value), type);
}
std::int32_t get_enum(const Arguments& arguments, unsigned position, const _GUID& type) {
    return enum_value(argument(arguments, position), type);
}
std::int32_t get_enum_ctor(const Arguments& arguments, unsigned position, const _GUID& type) {
    return enum_value(ctor_argument(arguments, position), type);
}

stdx::ustring get_encoding(const Arguments& arguments, unsigned position) {
    return encoding(argument(arguments, position));
}
stdx::ustring get_encoding(const GenericValue& value) {
    return encoding(property(value));
}
stdx::ustring get_encoding_ctor(const Arguments& arguments, unsigned position) {
    return encoding(ctor_argument(arguments, position));
}

void get_string_value(const Arguments& arguments, unsigned position, stdx::ustring& out,
                      bool strict) {
    read(argument(arguments, position), out, strict);
}
void get_boolean_value(const Arguments& arguments, unsigned position, bool& out, bool strict) {
    read(argument(arguments, position), out, strict);
}
void get_numeric_value(const Arguments& arguments, unsigned position, Numeric& out, bool strict) {
    read(argument(arguments, position), out, strict);
}

void ctor_get_string_value(const Arguments& arguments, unsigned position, stdx::ustring& out,
                           bool strict, bool optional) {
    read(ctor_argument(arguments, position), out, strict, optional);
}
void ctor_get_boolean_value(const Arguments& arguments, unsigned position, bool& out, bool strict,
                            bool optional) {
    read(ctor_argument(arguments, position), out, strict, optional);
}
void ctor_get_numeric_value(const Arguments& arguments, unsigned position, Numeric& out,
                            bool strict, bool optional) {
    read(ctor_argument(arguments, position), out, strict, optional);
}

bool get_from_val(const GenericValue& value, stdx::ustring& out) {
    return read_if(value, out);
}
bool get_from_val(const GenericValue& value, bool& out) {
    return read_if(value, out);
}
bool get_from_val(const GenericValue& value, _GUID& out) {
    return read_if(value, out);
}

} // namespace core
