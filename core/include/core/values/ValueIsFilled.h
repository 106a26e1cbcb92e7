// Whether somebody has filled a value in: no empty string and no string of blanks, not 0, not the
// empty date, no empty collection; true and false both are filled.
#pragma once

#include <core/values/GenericValue.h>

namespace core {

// The name of the function in scripts.
inline constexpr Term kValueIsFilledTerm = {u"ValueIsFilled", u"ЗначениеЗаполнено"};

// Throws `ValueIsFilledException` for an object that can change and does not tell: there is nothing
// to compare it with.
ORBCORE_API bool value_is_filled(const GenericValue& value);
// The same, but such an object is compared with a new one of its type.
ORBCORE_API bool value_is_filled_ext(const GenericValue& value);

} // namespace core
