// How values come to fit a domain.
#pragma once

#include <core/values/IValue.h>
#include <core/values/TypeDomain.h>

namespace core {

// The value, or what it becomes in the domain; null where that is the default of the domain.
InterfacePtr<IValue> convert_to_domain(IValue* value, const TypeDomain& domain);

// What a value of the domain is before anybody filled it in.
InterfacePtr<IValue> default_of_domain(const TypeDomain& domain);

} // namespace core
