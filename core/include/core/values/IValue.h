// What a value is: an object with a type, four conversions, equality and a hash. Numbers, strings and
// dates are such objects as well as collections; code holds them by the handle `core::Value`.
//
// A value cannot change once it is made, unless its type says `isValueMutable`.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/numbers/Date.h>
#include <core/numbers/Numeric.h>
#include <core/platform/api.h>
#include <core/values/FoundOnce.h>
#include <core/values/IType.h>

namespace core {

class IOutPersistenceStorage;

inline constexpr _GUID IID_IValue = "71148f68-6cc2-4f07-b305-85da4dca7120"_guid;
inline constexpr _GUID IID_IPersistableValue = "c6c30b2e-1556-4496-8302-b47b7f1c59af"_guid;
inline constexpr _GUID IID_ICheckDefaultValue = "fc805dba-8ec6-4f7b-aeed-8a63791e9faa"_guid;
inline constexpr _GUID IID_ICloneableObject = "40f5d025-705e-4946-8847-91a07a32317d"_guid;
inline constexpr _GUID IID_IMergeableObject = "0ca9db70-d473-4c9c-97dc-a31ad9b6d44c"_guid;

class IValue : public IUnknown {
public:
    ORB_INTERFACE(IValue, IID_IValue)

    virtual IType* getIType() = 0; // lent
    // The native payload by type code: a `bool`, `Numeric`, `stdx::ustring`, `Date` or `_GUID`; an
    // `std::int32_t` in a value of an enumeration; null in the others.
    virtual const void* getDataPtr() = 0;
    // Conversions. Where there is none, or it fails, they answer false and give false, 0, the empty
    // string or the empty date.
    virtual bool getBoolean(bool& out) = 0;
    virtual bool getNumeric(Numeric& out) = 0;
    virtual bool getString(stdx::ustring& out) = 0;
    virtual bool getDate(Date& out) = 0;
    // Never converts: values of different types are different.
    virtual bool isEqual(IValue* other) = 0;
    // Equal for equal values.
    virtual std::uint32_t hashCode() = 0;
};

// A value that stores itself, behind the mark of its type.
class IPersistableValue : public IUnknown {
public:
    ORB_INTERFACE(IPersistableValue, IID_IPersistableValue)

    virtual void serialize(IOutPersistenceStorage* storage) = 0;
};

// A value that can tell whether it is still as nobody filled it in.
class ICheckDefaultValue : public IUnknown {
public:
    ORB_INTERFACE(ICheckDefaultValue, IID_ICheckDefaultValue)

    virtual bool isDefaultValue() = 0;
};

// An object that can be copied; one that cannot change gives itself.
class ICloneableObject : public IUnknown {
public:
    ORB_INTERFACE(ICloneableObject, IID_ICloneableObject)

    virtual InterfacePtr<IUnknown> clone() = 0;
};

// An object that takes over what another of its kind has.
class IMergeableObject : public IUnknown {
public:
    ORB_INTERFACE(IMergeableObject, IID_IMergeableObject)

    virtual void merge(IUnknown* other) = 0;
};

// What object values have in common: no payload, no conversion but the empty string, and equality
// by address.
class ORBCORE_API ObjectValueCore : public IValue {
public:
    const void* getDataPtr() override { return nullptr; }
    bool getBoolean(bool& out) override;
    bool getNumeric(Numeric& out) override;
    bool getString(stdx::ustring& out) override;
    bool getDate(Date& out) override;
    bool isEqual(IValue* other) override { return other == this; }
    // The low half of the address.
    std::uint32_t hashCode() override;
};

// Looks its type up once, at the first question, in the process of the caller. As a string it is
// the name of the type in the language of the process. A value may end after its process, as types are
// singletons; it must not be used then.
class ORBCORE_API ValueImplBase : public ObjectValueCore {
public:
    // Null for the null GUID and for a class that is not known as a type.
    IType* getIType() override;
    bool getString(stdx::ustring& out) override;
    virtual const _GUID& getTypeClsid() = 0;

private:
    FoundOnce<IType> type_;
};

// A base of a value of the type with this class GUID.
template <const _GUID* clsid> class IValueImpl : public ValueImplBase {
public:
    const _GUID& getTypeClsid() override { return *clsid; }
};

} // namespace core
