// Names of interfaces, for people: which interfaces an object answers to can be told by asking it
// for every interface that has a name.
//
//   ORBCORE_NAME_INTERFACE(ICounter);      // once, in a source, outside any namespace
//   for (const core::NamedInterface& named : core::interfaces_of(object)) …
//
// Libraries name their interfaces when they are loaded and take the names back when they go.
#pragma once

#include <core/component/ClassDescriptor.h>

#include <vector>

namespace core {

struct NamedInterface {
    const _GUID* iid;
    const char* name;
};

// One name, for as long as it lives.
class ORBCORE_API InterfaceName {
public:
    // Both have static storage.
    InterfaceName(const _GUID& iid, const char* name);
    ~InterfaceName();
    InterfaceName(const InterfaceName&) = delete;
    InterfaceName& operator=(const InterfaceName&) = delete;

private:
    NamedInterface named_;
};

// Those of the named interfaces that `object` answers to, in the order of their names.
ORBCORE_API std::vector<NamedInterface> interfaces_of(IUnknown* object);

} // namespace core

#define ORBCORE_NAME_INTERFACE(Interface)                                                          \
    static const core::InterfaceName ORB_JOIN(orb_interface_, __LINE__)(                           \
        core::interface_id_of<Interface>(), #Interface)
