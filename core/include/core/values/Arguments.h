// What the methods, constructors and properties of scriptable objects read their arguments with.
//
//   const stdx::ustring name = core::get_string(arguments, 0);
//   const int index = core::get_index(arguments, 1);
//   bool isStrict = false;
//   if (arguments.size() > 2) core::get_boolean_value(arguments, 2, isStrict, false);
//
// What does not fit throws the mismatch exception of its place: those with a position that of the
// parameter, which also stands for one that is missing, `_ctor` that of a parameter of a constructor,
// those without a position that of a property (core/values/ContextException.h).
//
// They take the exact type. The functions whose names end with `_value` take with `strict` false
// whatever converts.
#pragma once

#include <core/values/GenericValue.h>

#include <cstdint>
#include <vector>

namespace core {

using Arguments = std::vector<GenericValue*>;

ORBCORE_API stdx::ustring get_string(const Arguments& arguments, unsigned position);
ORBCORE_API stdx::ustring get_string_ctor(const Arguments& arguments, unsigned position);
// Whatever converts.
ORBCORE_API stdx::ustring get_string(const GenericValue& value);

ORBCORE_API bool get_boolean(const Arguments& arguments, unsigned position);
ORBCORE_API bool get_boolean_ctor(const Arguments& arguments, unsigned position);

// The integer part of a number. Throws `ContextException` for one below 0 or beyond `int`.
ORBCORE_API int get_index(const Arguments& arguments, unsigned position);

// The integer of a value of the enumeration `type`.
ORBCORE_API std::int32_t get_enum(const GenericValue& value, const _GUID& type);
ORBCORE_API std::int32_t get_enum(const Arguments& arguments, unsigned position, const _GUID& type);
ORBCORE_API std::int32_t get_enum_ctor(const Arguments& arguments, unsigned position,
                                       const _GUID& type);

// The name of an encoding, as it was given. Throw `ConverterException` for one that is not known.
ORBCORE_API stdx::ustring get_encoding(const Arguments& arguments, unsigned position);
ORBCORE_API stdx::ustring get_encoding(const GenericValue& value);
ORBCORE_API stdx::ustring get_encoding_ctor(const Arguments& arguments, unsigned position);

ORBCORE_API void get_string_value(const Arguments& arguments, unsigned position, stdx::ustring& out,
                                  bool strict);
ORBCORE_API void get_boolean_value(const Arguments& arguments, unsigned position, bool& out,
                                   bool strict);
ORBCORE_API void get_numeric_value(const Arguments& arguments, unsigned position, Numeric& out,
                                   bool strict);

// With `optional` an argument that is undefined or missing leaves `out` as it is.
ORBCORE_API void ctor_get_string_value(const Arguments& arguments, unsigned position,
                                       stdx::ustring& out, bool strict, bool optional);
ORBCORE_API void ctor_get_boolean_value(const Arguments& arguments, unsigned position, bool& out,
                                        bool strict, bool optional);
ORBCORE_API void ctor_get_numeric_value(const Arguments& arguments, unsigned position, Numeric& out,
                                        bool strict, bool optional);

// False, with `out` as it is, for a value of another type. They throw nothing.
ORBCORE_API bool get_from_val(const GenericValue& value, stdx::ustring& out);
ORBCORE_API bool get_from_val(const GenericValue& value, bool& out);
ORBCORE_API bool get_from_val(const GenericValue& value, _GUID& out);

} // namespace core
