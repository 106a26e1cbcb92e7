// Types of objects for the tests of values: what each can and cannot is in its name.
#pragma once

#include "support/ProcessTest.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/numbers/Date.h>
#include <core/streams/ListRecord.h>
#include <core/streams/PersistenceStorage.h>
#include <core/values/BaseTypes.h>
#include <core/values/IBinaryValue.h>
#include <core/values/IValueCollection.h>
#include <core/values/Value.h>

#include <cstring>
#include <string>

namespace test {

using namespace core::literals;

inline constexpr core::_GUID CLSID_Plain = "4974bfa9-c9eb-4940-af39-6fe2be2812a9"_guid;
inline constexpr core::_GUID CLSID_Stored = "e5027caf-0242-4b89-be79-8b90d7684436"_guid;
inline constexpr core::_GUID CLSID_Fixed = "57dd83bf-8fb8-4c6f-b0ae-86705ba8e3d0"_guid;

// A type of `ObjectValue`, registered by its own line in SampleTypes.cpp.
template <class ObjectValue, const core::_GUID* clsid, bool isMutable = true>
class SampleType
    : public core::ObjectRoot
    , public core::SCOM_Singleton<SampleType<ObjectValue, clsid, isMutable>, clsid>
    , public core::ITypeImpl<clsid, ObjectValue> {
public:
    static constexpr auto categories = core::categories(&core::CATID_Type);
    static const core::InterfaceEntry* _GetEntries() noexcept {
        return core::interface_map<SampleType, core::IType>();
    }
    bool isValueMutable() override { return isMutable; }
};

// Has nothing but the interface of values.
class PlainValue
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<PlainValue>
    , public core::IValueImpl<&CLSID_Plain> {
public:
    static const core::InterfaceEntry* _GetEntries() noexcept {
        return core::interface_map<PlainValue, core::IValue>();
    }
};

// Stores itself in both forms, and holds a value.
class StoredValue
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<StoredValue>
    , public core::IValueImpl<&CLSID_Stored>
    , public core::IPersistableObjectImpl<StoredValue, &CLSID_Stored>
    , public core::IIndirectSerializable {
public:
    static const core::InterfaceEntry* _GetEntries() noexcept {
        return core::interface_map<StoredValue, core::IValue, core::IPersistableObject,
                                   core::IIndirectSerializable>();
    }

    void serialize(core::IOutPersistenceStorage* storage) override { held.serialize(storage); }
    void deserialize(core::IInPersistenceStorage* storage) override {
        core::GenericValue::deserialize(storage, held);
    }
    void serialize(core::IOutPersistenceStorage* storage, int flag) override {
        (*storage->listStream())->putInt32(1000 + flag);
    }
    void deserialize(core::IInPersistenceStorage* storage, int flag) override {
        std::int32_t number = 0;
        (*storage->listStream())->getInt32(number);
        held = number + flag;
    }

    core::Value held;
};

// Cannot change, and is equal to all of its kind with the same text.
class FixedValue
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<FixedValue>
    , public core::IValueImpl<&CLSID_Fixed> {
public:
    static const core::InterfaceEntry* _GetEntries() noexcept {
        return core::interface_map<FixedValue, core::IValue>();
    }

    FixedValue() = default;
    explicit FixedValue(const char16_t* of) : text(of) {}

    bool getString(stdx::ustring& out) override {
        out = text;
        return true;
    }
    bool isEqual(core::IValue* other) override {
        return other->getIType() == getIType() && static_cast<FixedValue*>(other)->text == text;
    }

    stdx::ustring text;
};

// Binary data, as the type of a higher floor will have them.
class BytesValue
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<BytesValue>
    , public core::IValueImpl<&core::CLSID_BinaryDataType>
    , public core::IBinaryValue {
public:
    static const core::InterfaceEntry* _GetEntries() noexcept {
        return core::interface_map<BytesValue, core::IValue, core::IBinaryValue>();
    }

    std::uint64_t size() override { return bytes.size(); }
    void read(void* to, std::size_t count) override { std::memcpy(to, bytes.data(), count); }

    std::string bytes;
};

inline core::Value bytes_value(std::string bytes) {
    auto value = core::make_object<BytesValue>();
    value->bytes = std::move(bytes);
    return core::Value(static_cast<core::IValue*>(value.get()));
}

inline core::Value fixed_value(const char16_t* text) {
    return core::Value(static_cast<core::IValue*>(core::make_object<FixedValue>(text).get()));
}

// A value that stands for a type.
inline core::Value type_value(const core::_GUID& type) {
    return core::Value(core::create_type_value(type));
}

} // namespace test
