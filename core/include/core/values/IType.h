// What a type is: a singleton object, named by its class GUID, of the category `CATID_Type`. Two
// values are of one type exactly when their type objects have one address.
//
//   class PointType
//       : public core::ObjectRoot
//       , public core::SCOM_Singleton<PointType, &CLSID_PointType>
//       , public core::ITypeImpl<&CLSID_PointType, PointValue> {
//   public:
//       static constexpr auto aliases = core::aliases(u"Point", u"Точка");
//       static constexpr auto categories = core::categories(&core::CATID_Type);
//       static const core::InterfaceEntry* _GetEntries() {
//           return core::interface_map<PointType, core::IType>();
//       }
//   };
//
// core/values/Type.h has the handle on a type, core/values/ScriptType.h the way to declare one that
// scripts can use. Type objects are stateless: any thread may use them.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/component/Object.h>
#include <core/platform/api.h>
#include <core/values/Term.h>

#include <vector>

namespace core {

class GenericValue;
class IInPersistenceStorage;
class IValue;

inline constexpr _GUID IID_IType = "030362c3-3bca-4337-bfe5-d89e95efb487"_guid;
inline constexpr _GUID IID_IPersistableType = "bc40fc36-1a61-4d81-a32d-157d4089f419"_guid;

// The category of the classes that are types.
inline constexpr _GUID CATID_Type = "fd7b6cc0-dc8e-11d2-b8d0-008048da0335"_guid;

// What a type without a name of its own is called.
inline constexpr Term kUnknownObjectTypeString = {u"UnknownObject", u"НеизвестныйОбъект"};

// The coarse kind of a type, as `IType::getTypeCode` gives it and `Type::Code` names it.
enum class TypeCode : unsigned {
    Undefined = 0, // no value
    Null = 1,      // the missing value of data
    Boolean = 2,
    Numeric = 3,
    String = 4,
    Date = 5,
    Object = 100, // every type of objects
    Type = 1000,  // the value is itself a type
};

class IType : public IUnknown {
public:
    ORB_INTERFACE(IType, IID_IType)

    virtual TypeCode getTypeCode() = 0;
    virtual const _GUID* getTypeClsid() = 0;
    // The name in a language, 0 or 1; a constant.
    virtual const char16_t* getTypeString(int language) = 0;
    // How the type is shown to people; may be empty.
    virtual void getString(stdx::ustring& out) = 0;
    virtual bool isCOMType() = 0;
    virtual bool isValueMutable() = 0;
    // A new value, or the default one of a type whose values cannot change.
    virtual InterfacePtr<IValue> createIValue() = 0;
    // Whether a script can construct a value from so many arguments.
    virtual bool hasCtor(unsigned count) = 0;
    // Constructs one; null where there is no such constructor. Throws what the mismatch functions
    // of core/values/ContextException.h throw.
    virtual InterfacePtr<IValue> ctor(const std::vector<GenericValue*>& arguments) = 0;
};

// A type that reads its values itself.
class IPersistableType : public IUnknown {
public:
    ORB_INTERFACE(IPersistableType, IID_IPersistableType)

    virtual InterfacePtr<IValue> deserialize(IInPersistenceStorage* storage) = 0;
};

// What the types of objects have in common: mutable values, one constructor without arguments, no
// name and no presentation.
class ORBCORE_API ObjectTypeCore : public IType {
public:
    TypeCode getTypeCode() override { return TypeCode::Object; }
    const char16_t* getTypeString(int language) override;
    void getString(stdx::ustring& out) override;
    bool isCOMType() override { return false; }
    bool isValueMutable() override { return true; }
    bool hasCtor(unsigned count) override { return count == 0; }
    InterfacePtr<IValue> ctor(const std::vector<GenericValue*>& arguments) override;
};

// A base of the type of `Value`, a counted class of the model that is made by default.
template <const _GUID* clsid, class Value> class ITypeImpl : public ObjectTypeCore {
public:
    const _GUID* getTypeClsid() override { return clsid; }
    InterfacePtr<IValue> createIValue() override { return make_object<Value>(); }
};

} // namespace core
