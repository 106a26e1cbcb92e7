// A value that keeps to a domain: what it is given is turned into one of the domain's types, cut and
// rounded to their qualifiers; what cannot be turned becomes the default of the domain. Nothing of
// this throws but for std::bad_alloc.
//
//   core::TypeDomainPattern price(core::CLSID_NumericType);
//   price.setNumericQualifiers({5, 2, true});
//   core::TypedValue cell{core::TypeDomain(price)};
//   cell.assign(u"12.345");                          // 12.35
//   cell.assign(-1);                                 // 0
//
// Readers make the default value where none was stored yet, so even reading is for one thread at a
// time.
#pragma once

#include <core/values/TypeDomain.h>
#include <core/values/Value.h>

namespace core {

class ORBCORE_API TypedValue final : public GenericValue {
public:
    TypedValue() noexcept = default; // any value
    explicit TypedValue(const TypeDomain& domain) noexcept : domain_(domain) {}
    TypedValue(const TypedValue& other);
    TypedValue(TypedValue&& other) noexcept;
    TypedValue& operator=(const TypedValue& other);
    TypedValue& operator=(TypedValue&& other) noexcept;
    ~TypedValue();

    const TypeDomain& typeDomain() const noexcept { return domain_; }
    // Drops the value: the next reader sees the default.
    void setDomain(const TypeDomain& domain);
    // Keeps the value as far as the new domain can hold it.
    void changeDomain(const TypeDomain& domain);
    void setDefaultValue();
    InterfacePtr<IValue> getDefaultValue() const;

    void setIValue(IValue* value) override;
    InterfacePtr<IValue> getIValue() const override { return {_getIValue(), true}; }
    void setIValueTo(GenericValue& to) const override { to.setIValue(_getIValue()); }
    bool equals0(IValue* other) const override { return _getIValue()->isEqual(other); }
    bool equalsTo(const GenericValue& other) const override { return other.equals0(_getIValue()); }
    std::uint32_t hashCode0() const override { return _getIValue()->hashCode(); }
    Type type0() const override { return type(); }
    IValue* lentIValue() const override { return _getIValue(); }

    Type type() const { return Type(_getIValue()->getIType()); }

private:
    IValue* _getIValue() const;
    void setIValueInternal(IValue* value);

    mutable IValue* value_ = nullptr; // null: the default, not made yet
    TypeDomain domain_;
};

// For people: empty values, the number 0 and the empty date give nothing, the rest as the thread
// formats it, by the digits and the parts of the domain.
ORBCORE_API stdx::ustring format(const TypedValue& value);

} // namespace core
