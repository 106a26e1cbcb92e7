// How the payload of a base value is stored, behind the letter of its type.
#pragma once

#include <core/streams/ListStream.h>
#include <core/values/IType.h>

namespace core {

// Nothing for a code whose values have none. `BaseTypeRow::read` is the way back.
void put_payload(ListOutStream& list, TypeCode code, const void* payload);

} // namespace core
