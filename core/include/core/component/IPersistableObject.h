// An object that stores its own state, and fills itself from what was stored. Whoever stores it
// writes its class GUID in front, which is all that is needed to make it again.
//
//   class Counter
//       : public core::ObjectRoot
//       , public core::SCOM_Class<Counter, &CLSID_Counter>
//       , public core::IPersistableObjectImpl<Counter, &CLSID_Counter> { … };
//
// The interface stands on this floor because the twins of the exceptions have it; the storages are
// those of core/streams.
#pragma once

#include <core/component/IUnknown.h>

namespace core {

class IInPersistenceStorage;
class IOutPersistenceStorage;

inline constexpr _GUID IID_IPersistableObject = "81732eb9-8292-420e-87a2-0b71f10f5631"_guid;

class IPersistableObject : public IUnknown {
public:
    ORB_INTERFACE(IPersistableObject, IID_IPersistableObject)

    // The class that makes such an object.
    virtual const _GUID& getClsid() = 0;
    // Throws what the medium below throws.
    virtual void serialize(IOutPersistenceStorage* storage) = 0;
    // Throws `core::ListStreamException` for what no such object wrote; the state is undefined then.
    virtual void deserialize(IInPersistenceStorage* storage) = 0;
};

// Supplies the class GUID.
template <class X, const _GUID* clsid> class IPersistableObjectImpl : public IPersistableObject {
public:
    const _GUID& getClsid() override { return *clsid; }
};

} // namespace core
