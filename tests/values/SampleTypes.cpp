#include "SampleTypes.h"

namespace test {

using PlainType = SampleType<PlainValue, &CLSID_Plain>;
using StoredType = SampleType<StoredValue, &CLSID_Stored>;
using FixedType = SampleType<FixedValue, &CLSID_Fixed, false>;

class BytesType
    : public core::ObjectRoot
    , public core::SCOM_Singleton<BytesType, &core::CLSID_BinaryDataType>
    , public core::ITypeImpl<&core::CLSID_BinaryDataType, BytesValue>
    , public core::IBinaryType {
public:
    static constexpr auto categories = core::categories(&core::CATID_Type);
    static const core::InterfaceEntry* _GetEntries() noexcept {
        return core::interface_map<BytesType, core::IType, core::IBinaryType>();
    }

    core::InterfacePtr<core::IValue> createBinaryValue(const void* bytes,
                                                       std::size_t count) override {
        auto value = core::make_object<BytesValue>();
        if (count != 0) value->bytes.assign(static_cast<const char*>(bytes), count);
        return value;
    }
};

} // namespace test

ORBCORE_REGISTER(test::PlainType);
ORBCORE_REGISTER(test::StoredType);
ORBCORE_REGISTER(test::FixedType);
ORBCORE_REGISTER(test::BytesType);
