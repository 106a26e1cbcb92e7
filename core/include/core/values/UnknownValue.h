// An object that is no value, as a value: what `GenericValue::assign` makes of it.
//
//   core::Value value(static_cast<IUnknown*>(device));
//   auto unknown = value.object<core::IUnknownValue>();
//   if (unknown) use(unknown->getObject());
//
// Two such values are different, also of one object.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/platform/api.h>

namespace core {

class IValue;

// Names the type as well.
inline constexpr _GUID CLSID_UnknownValue = "e56a5335-379d-406d-bd25-6f6da90f3fa7"_guid;
inline constexpr _GUID IID_IUnknownValue = "fc5100a2-b5a4-4727-afde-159d9f54f7cd"_guid;

class IUnknownValue : public IUnknown {
public:
    ORB_INTERFACE(IUnknownValue, IID_IUnknownValue)

    virtual void setObject(IUnknown* object) = 0; // null: none
    virtual IUnknown* getObject() = 0;            // lent
};

// A new value that holds the object. Throws `std::bad_alloc`.
ORBCORE_API InterfacePtr<IValue> create_unknown_value(IUnknown* object);

} // namespace core
