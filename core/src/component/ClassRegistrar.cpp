#include "ClassRegistrar.h"

#include <algorithm>
#include <new>
#include <utility>

namespace core {
namespace {

constexpr std::size_t kExpectedClasses = 10'000;

Creator plain_creator(IClassFactory* factory) noexcept {
    const auto* const plain = dynamic_cast<ATL::CComClassFactory*>(factory);
    return plain ? plain->creator() : nullptr;
}

// What a creator said, in the registry's words.
bool created(HRESULT result) {
    if (result == E_OUTOFMEMORY) throw std::bad_alloc();
    return result == S_OK;
}

void end_object(IUnknown* object, ISCOMSingleton* singleton) noexcept {
    if (singleton)
        singleton->destroySingleton();
    else
        object->Release();
}

// Lent: a singleton counts nothing, and a counted object keeps its own reference.
ISCOMSingleton* singleton_part(IUnknown* object) noexcept {
    return InterfacePtr<ISCOMSingleton>(object).get();
}

} // namespace

ClassInfo::ClassInfo(const _GUID& classId, InterfacePtr<IClassFactory> classFactory,
                     SCOM_RegisterType registerType, stdx::string componentName)
    : clsid(classId),
      factory(std::move(classFactory)),
      creator(plain_creator(factory.get())),
      type(registerType),
      component(std::move(componentName)) {}

ClassInfo::~ClassInfo() {
    destroy_object();
}

bool ClassInfo::create(IUnknown* outer, const _GUID& iid, void** out) const {
    if (creator && (!outer || iid == IID_IUnknown)) return created(creator(outer, iid, out));
    return factory && created(factory->CreateInstance(outer, iid, out));
}

void ClassInfo::destroy_object() noexcept {
    if (IUnknown* const ended = object.exchange(nullptr)) end_object(ended, singleton);
}

SCOM_ClassRegistrarImpl::SCOM_ClassRegistrarImpl(SCOM_ClassBundle* parent,
                                                 ClassBundleSearchStrategy strategy)
    : parent_(parent, true), strategy_(strategy) {
    classes_.reserve(kExpectedClasses);
    order_.reserve(kExpectedClasses);
}

SCOM_ClassRegistrarImpl::~SCOM_ClassRegistrarImpl() {
    for (const InfoPtr& info : order_) info->destroy_object();
}

void SCOM_ClassRegistrarImpl::setParentBundle(SCOM_ClassBundle* parent) {
    parent_ = InterfacePtr<SCOM_ClassBundle>(parent, true);
}

// ---- Looking up

ClassInfo* SCOM_ClassRegistrarImpl::find(const _GUID& clsid) const {
    const auto found = classes_.find(clsid);
    return found == classes_.end() ? nullptr : found->second.get();
}

ClassInfo* SCOM_ClassRegistrarImpl::find(const stdx::ustring& alias) const {
    const auto found = aliases_.find(alias);
    return found == aliases_.end() ? nullptr : found->second.get();
}

template <class Parent, class Own>
bool SCOM_ClassRegistrarImpl::search(Parent&& parent, Own&& own) {
    if (!parent_) return own();
    return strategy_ == ClassBundleSearchStrategy::ParentFirst ? parent(*parent_) || own()
                                                               : own() || parent(*parent_);
}

bool SCOM_ClassRegistrarImpl::hasClass(const _GUID& clsid) {
    return (parent_ && parent_->hasClass(clsid)) || find(clsid);
}

std::vector<stdx::ustring> SCOM_ClassRegistrarImpl::getClassAliases(const _GUID& clsid) {
    if (parent_ && parent_->hasClass(clsid)) return parent_->getClassAliases(clsid);
    const ClassInfo* const info = find(clsid);
    return info ? info->aliases : std::vector<stdx::ustring>();
}

std::vector<_GUID> SCOM_ClassRegistrarImpl::getClassesOfCategory(const _GUID& catid) {
    std::vector<_GUID> classes;
    if (parent_) classes = parent_->getClassesOfCategory(catid);
    if (const auto own = categories_.find(catid); own != categories_.end())
        for (const auto& [clsid, info] : own->second) classes.push_back(clsid);
    if (strategy_ == ClassBundleSearchStrategy::OwnFirst) {
        std::sort(classes.begin(), classes.end());
        classes.erase(std::unique(classes.begin(), classes.end()), classes.end());
    }
    return classes;
}

std::vector<_GUID> SCOM_ClassRegistrarImpl::getClassCategories(const _GUID& clsid) {
    std::vector<_GUID> categories;
    search(
        [&](SCOM_ClassBundle& parent) {
            if (!parent.hasClass(clsid)) return false;
            categories = parent.getClassCategories(clsid);
            return true;
        },
        [&] {
            const ClassInfo* const info = find(clsid);
            if (info) categories.assign(info->categories.begin(), info->categories.end());
            return info != nullptr;
        });
    return categories;
}

bool SCOM_ClassRegistrarImpl::isClassInCategory(const _GUID& catid, const _GUID& clsid) {
    if (parent_ && parent_->isClassInCategory(catid, clsid)) return true;
    const auto category = categories_.find(catid);
    return category != categories_.end() && category->second.contains(clsid);
}

stdx::string SCOM_ClassRegistrarImpl::getClassComponent(const _GUID& clsid) {
    stdx::string component;
    search(
        [&](SCOM_ClassBundle& parent) {
            if (!parent.hasClass(clsid)) return false;
            component = parent.getClassComponent(clsid);
            return true;
        },
        [&] {
            const ClassInfo* const info = find(clsid);
            if (info) component = info->component;
            return info != nullptr;
        });
    return component;
}

// ---- Creating

bool SCOM_ClassRegistrarImpl::createObject(const _GUID& clsid, const _GUID& iid, void** out) {
    return search([&](SCOM_ClassBundle& parent) { return parent.createObject(clsid, iid, out); },
                  [&] { return create_own(find(clsid), iid, out); });
}

bool SCOM_ClassRegistrarImpl::createObjectByAlias(const stdx::ustring& alias, const _GUID& iid,
                                                  void** out) {
    return search(
        [&](SCOM_ClassBundle& parent) { return parent.createObjectByAlias(alias, iid, out); },
        [&] { return create_own(find(alias), iid, out); });
}

bool SCOM_ClassRegistrarImpl::createAggregated(const _GUID& clsid, IUnknown* outer,
                                               IUnknown** out) {
    if (IUnknown* const former = std::exchange(*out, nullptr)) former->Release();
    return search(
        [&](SCOM_ClassBundle& parent) { return parent.createAggregated(clsid, outer, out); },
        [&] {
            const ClassInfo* const info = find(clsid);
            void* made = nullptr;
            if (!info || info->type != RegisterClass || !info->create(outer, IID_IUnknown, &made))
                return false;
            *out = static_cast<IUnknown*>(made);
            return true;
        });
}

bool SCOM_ClassRegistrarImpl::create_own(ClassInfo* info, const _GUID& iid, void** out) {
    *out = nullptr;
    if (!info) return false;
    if (info->type == RegisterClass) return info->create(nullptr, iid, out);
    IUnknown* const object = the_object(*info);
    return object && object->QueryInterface(iid, out) == S_OK;
}

// Two threads may both create the first object: outside the lock, as its constructor may create
// others. The first to come back publishes its own; the other ends what it made.
IUnknown* SCOM_ClassRegistrarImpl::the_object(ClassInfo& info) {
    if (IUnknown* const object = info.object.load(std::memory_order_acquire)) return object;
    void* made = nullptr;
    if (!info.create(nullptr, IID_IUnknown, &made)) return nullptr;
    auto* const object = static_cast<IUnknown*>(made);
    ISCOMSingleton* const singleton = singleton_part(object);
    IUnknown* published;
    {
        const std::lock_guard guard(singletonLock_);
        published = info.object.load(std::memory_order_relaxed);
        if (!published) {
            info.singleton = singleton;
            info.object.store(object, std::memory_order_release);
            return object;
        }
    }
    end_object(object, singleton);
    return published;
}

// ---- Writing

void SCOM_ClassRegistrarImpl::registerClass(const _GUID& clsid, IClassFactory* factory,
                                            SCOM_RegisterType type, const char* component) {
    if (type == RegisterService || find(clsid)) return;
    InfoPtr info(new ClassInfo(clsid, InterfacePtr<IClassFactory>(factory, true), type,
                               component ? stdx::string(component) : stdx::string()),
                 true);
    order_.push_back(info);
    classes_.emplace(clsid, std::move(info));
}

bool SCOM_ClassRegistrarImpl::revokeClass(const _GUID& clsid) {
    const auto found = classes_.find(clsid);
    if (found == classes_.end()) return false;
    const InfoPtr info = found->second;
    info->destroy_object();
    // By GUID, as a class whose factory was rewritten has left its former record in these tables.
    boost::unordered::erase_if(aliases_,
                               [&](const auto& row) { return row.second->clsid == clsid; });
    boost::unordered::erase_if(categories_, [&](auto& row) {
        row.second.erase(clsid);
        return row.second.empty();
    });
    std::erase(order_, info);
    classes_.erase(clsid);
    return true;
}

void SCOM_ClassRegistrarImpl::addClassAlias(const _GUID& clsid, const stdx::ustring& alias) {
    ClassInfo* const info = find(clsid);
    if (info && aliases_.try_emplace(alias, info, true).second) info->aliases.push_back(alias);
}

void SCOM_ClassRegistrarImpl::removeClassAlias(const stdx::ustring& alias) {
    const auto found = aliases_.find(alias);
    if (found == aliases_.end()) return;
    std::erase_if(found->second->aliases,
                  [&](const stdx::ustring& own) { return NoCaseEqual()(own, alias); });
    aliases_.erase(found);
}

void SCOM_ClassRegistrarImpl::addClassCategory(const _GUID& clsid, const _GUID& catid) {
    ClassInfo* const info = find(clsid);
    if (info && info->categories.insert(catid).second)
        categories_[catid].try_emplace(clsid, info, true);
}

void SCOM_ClassRegistrarImpl::rewrite_factory(const _GUID& clsid, IClassFactory* factory) {
    ClassInfo* const former = find(clsid);
    if (!former || former->type == RegisterService || former->object.load()) return;
    InfoPtr info(new ClassInfo(clsid, InterfacePtr<IClassFactory>(factory, true), former->type,
                               former->component),
                 true);
    *std::find(order_.begin(), order_.end(), former) = info;
    classes_[clsid] = std::move(info);
}

InterfacePtr<SCOM_ClassRegistrar> create_SCOM_class_bundle(SCOM_ClassBundle* parent,
                                                           ClassBundleSearchStrategy strategy) {
    return make_object<SCOM_ClassRegistrarImpl>(parent, strategy);
}

} // namespace core
