// Values that stand for types, one for each type and process.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/platform/api.h>

namespace core {

inline constexpr _GUID CLSID_TypeValueService = "afcdbae0-6a13-4e28-9338-c897211c7b2c"_guid;
inline constexpr _GUID IID_ITypeValueService = "73c84948-4e44-43c9-a17d-84b1e70c3f6c"_guid;
inline constexpr _GUID IID_ITypeValue = "be6d8c6d-5e9b-49af-8edd-109eb37625f5"_guid;

// A value of the type "Type".
class ITypeValue : public IUnknown {
public:
    ORB_INTERFACE(ITypeValue, IID_ITypeValue)

    // Of the type that it stands for.
    virtual const _GUID& getTypeGuid() = 0;
};

class ITypeValueService : public IUnknown {
public:
    ORB_INTERFACE(ITypeValueService, IID_ITypeValueService)

    // Lent as long as the service lives; the class need not be known. Any thread may ask.
    virtual ITypeValue* getTypeValue(const _GUID& type) = 0;
};

} // namespace core
