// The schemes that a URL is handed to.
#pragma once

#include <core/files/SchemeBase.h>

namespace core {

// The scheme of this name in the current process, or null; null for the empty name.
InterfacePtr<IScheme> scheme_of(std::u16string_view name);

// The rules for a text without a scheme.
const SchemeBase& default_scheme();

} // namespace core
