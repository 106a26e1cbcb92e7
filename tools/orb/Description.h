// What a scriptable class offers, taken from its description into plain data, for the printers.
#pragma once

#include <core/core.h>

#include <optional>
#include <vector>

namespace orb {

// English and Russian.
struct Names {
    stdx::ustring name[2];
};

struct ParameterInfo {
    Names names; // empty where the description has none
    core::TypeDomainPattern types;
    std::optional<core::Value> defaultValue;
    bool in = true;
    bool out = false;
};

struct PropertyInfo {
    Names names;
    core::TypeDomainPattern types;
    bool readable = false;
    bool writable = false;
};

struct MethodInfo {
    Names names;
    std::vector<ParameterInfo> parameters;
    bool hasResult = false;
    core::TypeDomainPattern result;
};

struct ClassInfo {
    Names names;
    _GUID clsid = core::kUUIDNull;
    std::vector<PropertyInfo> properties;
    std::vector<MethodInfo> methods;
    std::vector<unsigned> constructors; // the numbers of arguments that one can be called with
};

// Of an object that is a type or scriptable; nothing for any other.
std::optional<ClassInfo> describe(IUnknown* object);

// "Number, String"; empty for the empty pattern. A type that is not known shows as its GUID.
stdx::ustring type_names(const core::TypeDomainPattern& types, int language);

} // namespace orb
