// The value of scripts and collections: a handle that owns one, or shares it.
//
//   core::Value price = 12, name = u"Riga", nothing;      // also Numeric, Date, bool, double
//   core::Value same = price;                             // shares the number
//   std::unordered_set<core::Value> seen;                 // by equality of values
//
// Two words. A copy shares the object and counts a reference, which costs nothing for the values that
// are static (core/values/CreateValue.h). core/values/GenericValue.h has what one does with a value.
#pragma once

#include <core/values/GenericValue.h>

namespace core {

class ORBCORE_API Value final : public GenericValue {
public:
    Value() noexcept : value_(create_undefined_value()) {}
    Value(bool value) noexcept : value_(create_boolean_value(value)) {}
    template <NativeInteger T> Value(T value) : value_(detail::owned_value(value)) {}
    Value(double value) : value_(detail::owned_value(value)) {}
    Value(const Numeric& value) : value_(detail::owned_value(value)) {}
    Value(const char16_t* value) : value_(detail::owned_value(value)) {}
    Value(const stdx::ustring& value) : value_(detail::owned_value(value)) {}
    Value(stdx::ustring&& value) : value_(detail::owned_value(std::move(value))) {}
    Value(const Date& value) : value_(detail::owned_value(value)) {}
    // Null gives undefined.
    Value(IValue* value) noexcept : value_(value ? value : create_undefined_value()) {
        add_reference(value_);
    }
    // See `assign(IUnknown*)`.
    explicit Value(IUnknown* object) : Value() { assign(object); }
    template <class Interface> Value(const InterfacePtr<Interface>& object) : Value() {
        if constexpr (std::convertible_to<Interface*, IValue*>)
            setIValue(object.get());
        else
            assign(static_cast<IUnknown*>(object.get()));
    }
    explicit Value(const GenericValue& value) : Value(value.lentIValue()) {}
    // What is no value of its own would become true.
    template <class T> Value(const T*) = delete;

    Value(const Value& other) noexcept : value_(other.value_) { add_reference(value_); }
    // Sources of moves are undefined afterwards.
    Value(Value&& other) noexcept : value_(std::exchange(other.value_, create_undefined_value())) {}
    Value& operator=(const Value& other) noexcept {
        setIValue(other.value_);
        return *this;
    }
    Value& operator=(Value&& other) noexcept {
        Value taken(std::move(other));
        std::swap(value_, taken.value_);
        return *this;
    }
    ~Value() { release(value_); }

    // A value that is undefined and lives for ever.
    static const Value& undefined() noexcept;

    void setIValue(IValue* value) noexcept override;
    InterfacePtr<IValue> getIValue() const override { return {value_, true}; }
    void setIValueTo(GenericValue& to) const override { to.setIValue(value_); }
    bool equals0(IValue* other) const override { return value_->isEqual(other); }
    bool equalsTo(const GenericValue& other) const override { return other.equals0(value_); }
    std::uint32_t hashCode0() const override { return value_->hashCode(); }
    Type type0() const override { return type(); }
    IValue* lentIValue() const override { return value_; }

    Type type() const { return Type(value_->getIType()); }

    // Gives the value away with its reference and is undefined afterwards.
    InterfacePtr<IValue> detachIValue() noexcept {
        return {std::exchange(value_, create_undefined_value()), false};
    }

private:
    static void add_reference(IValue* value) noexcept {
        if (!detail::is_static(value)) value->AddRef();
    }
    static void release(IValue* value) noexcept {
        if (!detail::is_static(value)) value->Release();
    }

    IValue* value_; // never null, one reference
};

// Points at a value for the time of a call and takes no reference, so nobody may release the value
// meanwhile. What is assigned to it later it owns.
class ORBCORE_API WeakValue final : public GenericValue {
public:
    // Null gives undefined.
    explicit WeakValue(IValue* value) noexcept : value_(value ? value : create_undefined_value()) {}
    WeakValue(const WeakValue&) = delete;
    WeakValue& operator=(const WeakValue&) = delete;
    ~WeakValue() {
        if (owned_) value_->Release();
    }

    void setIValue(IValue* value) noexcept override;
    InterfacePtr<IValue> getIValue() const override { return {value_, true}; }
    void setIValueTo(GenericValue& to) const override { to.setIValue(value_); }
    bool equals0(IValue* other) const override { return value_->isEqual(other); }
    bool equalsTo(const GenericValue& other) const override { return other.equals0(value_); }
    std::uint32_t hashCode0() const override { return value_->hashCode(); }
    Type type0() const override { return Type(value_->getIType()); }
    IValue* lentIValue() const override { return value_; }

private:
    IValue* value_; // never null
    bool owned_ = false;
};

} // namespace core

template <> struct std::hash<core::Value> {
    std::size_t operator()(const core::Value& value) const { return value.hashCode0(); }
};
