// The classes of the values of native data. An object is one of them under a template that says how
// it is held:
//
//   StaticValue<BooleanValue>     in the library, for ever; references are not counted
//   DynamicValue<NumericValue>    in a cell of its own, counted
//
// All are read only, so any number of threads may share one.
#pragma once

#include "ValueCells.h"

#include <core/values/IValue.h>
#include <core/values/Type.h>
#include <core/values/TypeValueService.h>

#include <atomic>
#include <utility>

namespace core {

// What they have in common. The payload of a derived class lies behind the four interfaces.
class PrimitiveValueCore
    : public ObjectValueCore
    , public IPersistableValue
    , public ICheckDefaultValue
    , public ICloneableObject {
public:
    HRESULT QueryInterface(const _GUID& iid, void** out) noexcept override;
    // The value itself, which cannot change.
    InterfacePtr<IUnknown> clone() override;
    void serialize(IOutPersistenceStorage* storage) override;
    bool isDefaultValue() override { return true; }

protected:
    constexpr PrimitiveValueCore() noexcept = default;
    PrimitiveValueCore(const PrimitiveValueCore&) = delete;
    PrimitiveValueCore& operator=(const PrimitiveValueCore&) = delete;
};

class UndefinedValue : public PrimitiveValueCore {
public:
    IType* getIType() override { return base_type(TypeCode::Undefined); }
    std::uint32_t hashCode() override { return 0x7fffffff; }
};

class NullValue : public PrimitiveValueCore {
public:
    IType* getIType() override { return base_type(TypeCode::Null); }
    std::uint32_t hashCode() override { return 0x7ffffffe; }
};

// A value of native type `Payload`.
template <class Payload, TypeCode code> class PayloadValue : public PrimitiveValueCore {
public:
    template <class... Arguments>
    constexpr PayloadValue(Arguments&&... arguments)
        : payload_(std::forward<Arguments>(arguments)...) {}

    IType* getIType() override { return base_type(code); }
    const void* getDataPtr() override { return &payload_; }
    bool isEqual(IValue* other) override {
        return other == this || (other && other->getIType() == base_type(code) &&
                                 *static_cast<const Payload*>(other->getDataPtr()) == payload_);
    }

protected:
    const Payload payload_;
};

class BooleanValue : public PayloadValue<bool, TypeCode::Boolean> {
public:
    using PayloadValue::PayloadValue;

    bool getBoolean(bool& out) override;
    bool getNumeric(Numeric& out) override;
    bool getString(stdx::ustring& out) override;
    // There are two objects, one for each value.
    bool isEqual(IValue* other) override { return other == this; }
    std::uint32_t hashCode() override { return payload_ ? 0x7ffffffd : 0x7ffffffc; }
    bool isDefaultValue() override { return false; }
};

class NumericValue : public PayloadValue<Numeric, TypeCode::Numeric> {
public:
    using PayloadValue::PayloadValue;

    bool getBoolean(bool& out) override;
    bool getNumeric(Numeric& out) override;
    bool getString(stdx::ustring& out) override;
    // The integer part.
    std::uint32_t hashCode() override {
        return static_cast<std::uint32_t>(static_cast<long>(payload_));
    }
    bool isDefaultValue() override { return payload_.zero(); }
};

class StringValue : public PayloadValue<stdx::ustring, TypeCode::String> {
public:
    using PayloadValue::PayloadValue;

    bool getBoolean(bool& out) override;
    bool getNumeric(Numeric& out) override;
    bool getString(stdx::ustring& out) override;
    bool getDate(Date& out) override;
    std::uint32_t hashCode() override;
    bool isDefaultValue() override;
};

class DateValue : public PayloadValue<Date, TypeCode::Date> {
public:
    using PayloadValue::PayloadValue;

    bool getString(stdx::ustring& out) override;
    bool getDate(Date& out) override;
    std::uint32_t hashCode() override {
        return static_cast<std::uint32_t>(payload_.ticks() / 10'000);
    }
    bool isDefaultValue() override { return payload_.empty(); }
};

class TypeValue
    : public PayloadValue<_GUID, TypeCode::Type>
    , public ITypeValue {
public:
    using PayloadValue::PayloadValue;

    HRESULT QueryInterface(const _GUID& iid, void** out) noexcept override;
    // Throws `TypeException` for a type that the current process does not know.
    bool getString(stdx::ustring& out) override;
    std::uint32_t hashCode() override { return payload_.Data1; }
    bool isDefaultValue() override { return payload_ == kUUIDNull; }
    const _GUID& getTypeGuid() override { return payload_; }
};

template <class T> class StaticValue final : public T {
public:
    using T::T;

    std::uint32_t AddRef() noexcept override { return 0; }
    std::uint32_t Release() noexcept override { return 0; }
};

template <class T> class DynamicValue final : public T {
public:
    // `references` is 0, or 1 for a handle that takes the new value over.
    template <class Native>
    DynamicValue(std::uint32_t references, Native&& native)
        : T(std::forward<Native>(native)), references_(references) {}

    static void* operator new(std::size_t) { return take_value_cell<sizeof(DynamicValue)>(); }
    static void operator delete(void* memory) noexcept {
        give_value_cell<sizeof(DynamicValue)>(memory);
    }

    std::uint32_t AddRef() noexcept override {
        return references_.fetch_add(1, std::memory_order_relaxed) + 1;
    }
    // The holder of the only reference need not count it down: nobody else can take one.
    std::uint32_t Release() noexcept override {
        std::uint32_t left = 0;
        if (references_.load(std::memory_order_acquire) != 1)
            left = references_.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (left == 0) delete this;
        return left;
    }

private:
    std::atomic<std::uint32_t> references_;
};

} // namespace core
