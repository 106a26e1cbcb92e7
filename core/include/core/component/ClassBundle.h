// Tables of classes: what they are asked (`SCOM_ClassBundle`), how they are written
// (`SCOM_ClassRegistrar`), and how they are chained (`SCOM_ClassBundleHierarchy`).
//
//   auto bundle = core::create_SCOM_class_bundle(nullptr, strategy);
//   bundle->registerClass(CLSID_X, factory.get(), core::RegisterClass, "x");
//
// Tables are read without locks. They are written while a process starts and while a component is
// loaded; whoever loads sees to it that no other thread uses the classes concerned.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/component/Registration.h>

#include <vector>

namespace core {

inline constexpr _GUID IID_SCOM_ClassBundle = "c9ee26a9-0308-4636-99f0-ce051ce4f9fa"_guid;
inline constexpr _GUID IID_SCOM_ClassBundleHierarchy = "7c6dda28-1556-43ad-882d-c511b9c5f896"_guid;
inline constexpr _GUID IID_SCOM_ClassRegistrar = "c312f762-0f02-4f11-bdda-916f5f806388"_guid;

// Creation answers false, with `*out` null, for an unknown class and when the class has no such
// interface; it throws `std::bad_alloc` when the creator found no memory.
class SCOM_ClassBundle : public IUnknown {
public:
    ORB_INTERFACE(SCOM_ClassBundle, IID_SCOM_ClassBundle)

    virtual bool hasClass(const _GUID& clsid) = 0;
    virtual bool createObject(const _GUID& clsid, const _GUID& iid, void** out) = 0;
    // Aliases are compared without regard to case, in every alphabet.
    virtual bool createObjectByAlias(const stdx::ustring& alias, const _GUID& iid, void** out) = 0;
    // Creates as part of `outer`, for classes of register type 0 only. What `*out` held is
    // released.
    virtual bool createAggregated(const _GUID& clsid, IUnknown* outer, IUnknown** out) = 0;
    // In the order added; empty for an unknown class.
    virtual std::vector<stdx::ustring> getClassAliases(const _GUID& clsid) = 0;
    virtual std::vector<_GUID> getClassesOfCategory(const _GUID& catid) = 0;
    // In the order of GUIDs.
    virtual std::vector<_GUID> getClassCategories(const _GUID& clsid) = 0;
    virtual bool isClassInCategory(const _GUID& catid, const _GUID& clsid) = 0;
    // The name of the library that brought the class; empty for an unknown class.
    virtual stdx::string getClassComponent(const _GUID& clsid) = 0;
};

class SCOM_ClassBundleHierarchy : public IUnknown {
public:
    ORB_INTERFACE(SCOM_ClassBundleHierarchy, IID_SCOM_ClassBundleHierarchy)

    virtual SCOM_ClassBundle* getParentBundle() = 0; // lent
    virtual void setParentBundle(SCOM_ClassBundle* parent) = 0;
};

class SCOM_ClassRegistrar : public SCOM_ClassBundle {
public:
    ORB_INTERFACE(SCOM_ClassRegistrar, IID_SCOM_ClassRegistrar)

    // A class that is there stays as it is. Only a process takes services (type 2).
    virtual void registerClass(const _GUID& clsid, IClassFactory* factory, SCOM_RegisterType type,
                               const char* component) = 0;
    // Ends the singleton, if there is one, and removes the class with its aliases and categories.
    virtual bool revokeClass(const _GUID& clsid) = 0;
    // Ignored when the class is unknown or any class has the alias, in any case of letters.
    virtual void addClassAlias(const _GUID& clsid, const stdx::ustring& alias) = 0;
    virtual void removeClassAlias(const stdx::ustring& alias) = 0;
    virtual void addClassCategory(const _GUID& clsid, const _GUID& catid) = 0;
};

enum class ClassBundleSearchStrategy : std::uint32_t { ParentFirst = 0, OwnFirst = 1 };

// A new, empty table behind an optional parent.
ORBCORE_API InterfacePtr<SCOM_ClassRegistrar>
create_SCOM_class_bundle(SCOM_ClassBundle* parent, ClassBundleSearchStrategy strategy);

} // namespace core
