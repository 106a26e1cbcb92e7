// What domains ask of binary data. The type itself, `CLSID_BinaryDataType`, belongs to a higher floor:
// its object is an `IBinaryType` beside `IType`, its values are `IBinaryValue`s.
#pragma once

#include <core/component/InterfacePtr.h>

#include <cstddef>
#include <cstdint>

namespace core {

class IValue;

inline constexpr _GUID IID_IBinaryValue = "c5ef9af3-567a-40ef-9867-3e83230c077c"_guid;
inline constexpr _GUID IID_IBinaryType = "5156c350-a8ba-4494-86e3-2e270788bfc1"_guid;

class IBinaryValue : public IUnknown {
public:
    ORB_INTERFACE(IBinaryValue, IID_IBinaryValue)

    virtual std::uint64_t size() = 0; // bytes
    // The first `count` bytes, at most `size`.
    virtual void read(void* to, std::size_t count) = 0;
};

class IBinaryType : public IUnknown {
public:
    ORB_INTERFACE(IBinaryType, IID_IBinaryType)

    // A value with a copy of these bytes, of which there may be none.
    virtual InterfacePtr<IValue> createBinaryValue(const void* bytes, std::size_t count) = 0;
};

} // namespace core
