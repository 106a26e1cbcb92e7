// The table of classes behind every registrar: of a component container and of thread bundles.
//
// It is read without locks and written while a process starts or a component loads; see
// ClassBundle.h. One case races, the first creation of a singleton: `singletonLock_` decides it.
#pragma once

#include <core/component/ClassBundle.h>
#include <core/component/ClassFactory.h>
#include <core/component/Object.h>
#include <core/component/Refcountable.h>

#include "NoCase.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <atomic>
#include <mutex>
#include <set>

namespace core {

// A registered class.
struct ClassInfo : Refcountable<ClassInfo, AtomicCounter> {
    ClassInfo(const _GUID& classId, InterfacePtr<IClassFactory> classFactory,
              SCOM_RegisterType registerType, stdx::string componentName);
    virtual ~ClassInfo();

    // Makes an object, or its part of `outer`; `S_OK` or the creator's failure. Throws
    // `std::bad_alloc` where that was the failure.
    bool create(IUnknown* outer, const _GUID& iid, void** out) const;
    // Ends the singleton.
    void destroy_object() noexcept;

    const _GUID clsid;
    const InterfacePtr<IClassFactory> factory; // may be null: a class that nobody can create
    // The factory's own creator, where it is the library's plain one: saves a virtual call.
    const Creator creator;
    const SCOM_RegisterType type;
    const stdx::string component;
    std::vector<stdx::ustring> aliases;
    std::set<_GUID> categories;

    // Of register type 1: the one object, with its reference, and how to end it if it counts none.
    std::atomic<IUnknown*> object = nullptr;
    ISCOMSingleton* singleton = nullptr; // written before `object` is published
};

class SCOM_ClassRegistrarImpl
    : public ObjectRoot
    , public SCOM_InternalClass<SCOM_ClassRegistrarImpl, SCOM_EmptyObjectRoot>
    , public SCOM_ClassBundleHierarchy
    , public SCOM_ClassRegistrar {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<SCOM_ClassRegistrarImpl, SCOM_ClassRegistrar, SCOM_ClassBundle,
                             SCOM_ClassBundleHierarchy>();
    }

    SCOM_ClassRegistrarImpl(SCOM_ClassBundle* parent, ClassBundleSearchStrategy strategy);
    // Ends the singletons, in the order of registration.
    ~SCOM_ClassRegistrarImpl();

    bool hasClass(const _GUID& clsid) override;
    bool createObject(const _GUID& clsid, const _GUID& iid, void** out) override;
    bool createObjectByAlias(const stdx::ustring& alias, const _GUID& iid, void** out) override;
    bool createAggregated(const _GUID& clsid, IUnknown* outer, IUnknown** out) override;
    std::vector<stdx::ustring> getClassAliases(const _GUID& clsid) override;
    std::vector<_GUID> getClassesOfCategory(const _GUID& catid) override;
    std::vector<_GUID> getClassCategories(const _GUID& clsid) override;
    bool isClassInCategory(const _GUID& catid, const _GUID& clsid) override;
    stdx::string getClassComponent(const _GUID& clsid) override;

    SCOM_ClassBundle* getParentBundle() override { return parent_.get(); }
    void setParentBundle(SCOM_ClassBundle* parent) override;

    void registerClass(const _GUID& clsid, IClassFactory* factory, SCOM_RegisterType type,
                       const char* component) override;
    bool revokeClass(const _GUID& clsid) override;
    void addClassAlias(const _GUID& clsid, const stdx::ustring& alias) override;
    void removeClassAlias(const stdx::ustring& alias) override;
    void addClassCategory(const _GUID& clsid, const _GUID& catid) override;

    // Puts a record with another factory in the place of the class's own; the alias and category
    // tables keep the old record.
    void rewrite_factory(const _GUID& clsid, IClassFactory* factory);

    // The classes in the order of registration.
    const std::vector<InterfacePtr<ClassInfo>>& classes() const noexcept { return order_; }

private:
    using InfoPtr = InterfacePtr<ClassInfo>;

    ClassInfo* find(const _GUID& clsid) const;
    ClassInfo* find(const stdx::ustring& alias) const;
    bool create_own(ClassInfo* info, const _GUID& iid, void** out);
    IUnknown* the_object(ClassInfo& info);
    // Asks the parent and the own table in the order of the strategy until one answers true.
    template <class Parent, class Own> bool search(Parent&& parent, Own&& own);

    InterfacePtr<SCOM_ClassBundle> parent_;
    const ClassBundleSearchStrategy strategy_;
    std::mutex singletonLock_; // only for the first creation of a singleton
    boost::unordered_flat_map<_GUID, InfoPtr, std::hash<_GUID>> classes_;
    std::vector<InfoPtr> order_;
    boost::unordered_flat_map<_GUID, boost::unordered_flat_map<_GUID, InfoPtr, std::hash<_GUID>>,
                              std::hash<_GUID>>
        categories_;
    boost::unordered_flat_map<stdx::ustring, InfoPtr, NoCaseHash, NoCaseEqual> aliases_;
};

} // namespace core
