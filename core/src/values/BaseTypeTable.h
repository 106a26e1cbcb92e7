// What the base types differ in, a row each, in the order of their codes.
#pragma once

#include <core/streams/ListStream.h>
#include <core/values/IType.h>

#include <array>

namespace core {

struct BaseTypeRow {
    TypeCode code;
    const _GUID* clsid;
    Term name;
    char16_t letter;          // in front of stored values, and in stored patterns
    const char* presentation; // the key of its message
    IValue* (*defaultValue)();
    IValue* (*read)(ListInStream& list); // what is stored behind the letter
};

extern const std::array<BaseTypeRow, 7> base_type_rows;

// Null for other types and letters.
const BaseTypeRow* find_base_type_row(const _GUID& type) noexcept;
const BaseTypeRow* find_base_type_row(char16_t letter) noexcept;

} // namespace core
