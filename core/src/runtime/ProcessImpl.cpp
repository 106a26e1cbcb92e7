#include "ProcessImpl.h"

#include <core/component/Logger.h>
#include <core/component/SCOM_Exception.h>
#include <core/component/Utf8.h>
#include <core/concurrency/LockGuards.h>
#include <core/locale/WeekInfo.h>
#include <core/resources/ResourceBundle.h>

#include <algorithm>
#include <utility>

namespace core {
namespace {

constexpr std::size_t kExpectedServices = 1'000;

constinit const SCOM_StaticLogger logger("orbcore", "SCOM_ProcessImpl");

// `value` is asked for only when somebody listens.
template <class Value> void trace(const char16_t* key, Value&& value) {
    if (logger.isEnabled(SCOM_LogLevel::Trace))
        logger.logTrace(0, u"", key, stdx::ustring(value()).c_str(), nullptr);
}

char lower(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

} // namespace

// What a thread keeps of this process: a bundle of classes of its own.
class SCOM_ProcessImpl::ClassBundleHolder final : public Thread::TLSData {
public:
    InterfacePtr<SCOM_ClassBundle> bundle;
};

bool SCOM_ProcessImpl::LessNoCase::operator()(const stdx::string& a,
                                              const stdx::string& b) const noexcept {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return lower(x) < lower(y); });
}

SCOM_ProcessImpl::SCOM_ProcessImpl(SCOM_ProcessData& owner)
    : components_(new ComponentContainer(*this, *this), true),
      firstDayOfWeek_(static_cast<int>(WeekInfo::of(Locale::system()).firstDayOfWeek())),
      owner_(owner),
      threadBundleSlot_(Thread::allocTLS()) {
    services_.reserve(kExpectedServices);
}

SCOM_ProcessImpl::~SCOM_ProcessImpl() {
    for (const auto& [iid, service] : services_) {
        service.interface_->Release();
        service.inner->Release();
    }
    if (begin_termination()) Thread::freeTLS(threadBundleSlot_);
}

void SCOM_ProcessImpl::end_services_and_components() {
    while (!boundServices_.empty()) {
        const _GUID last = boundServices_.back();
        boundServices_.pop_back();
        unbindService(last);
    }
    serviceClasses_.clear();
    components_->end_components();
    Thread::freeTLS(threadBundleSlot_);
}

// ---- Classes: the table of the process answers first, then the bundle of the calling thread.

bool SCOM_ProcessImpl::hasClass(const _GUID& clsid) {
    if (classes() && classes()->hasClass(clsid)) return true;
    SCOM_ClassBundle* const bundle = getThreadClassBundle();
    return bundle && bundle->hasClass(clsid);
}

bool SCOM_ProcessImpl::createObject(const _GUID& clsid, const _GUID& iid, void** out) {
    if (auto* const own = classes(); own && own->createObject(clsid, iid, out)) return true;
    SCOM_ClassBundle* const bundle = getThreadClassBundle();
    return bundle && bundle->createObject(clsid, iid, out);
}

bool SCOM_ProcessImpl::createObjectByAlias(const stdx::ustring& alias, const _GUID& iid,
                                           void** out) {
    if (classes() && classes()->createObjectByAlias(alias, iid, out)) return true;
    SCOM_ClassBundle* const bundle = getThreadClassBundle();
    return bundle && bundle->createObjectByAlias(alias, iid, out);
}

bool SCOM_ProcessImpl::createAggregated(const _GUID& clsid, IUnknown* outer, IUnknown** out) {
    if (classes() && classes()->createAggregated(clsid, outer, out)) return true;
    SCOM_ClassBundle* const bundle = getThreadClassBundle();
    return bundle && bundle->createAggregated(clsid, outer, out);
}

std::vector<stdx::ustring> SCOM_ProcessImpl::getClassAliases(const _GUID& clsid) {
    if (classes() && classes()->hasClass(clsid)) return classes()->getClassAliases(clsid);
    SCOM_ClassBundle* const bundle = getThreadClassBundle();
    return bundle ? bundle->getClassAliases(clsid) : std::vector<stdx::ustring>();
}

std::vector<_GUID> SCOM_ProcessImpl::getClassesOfCategory(const _GUID& catid) {
    std::vector<_GUID> all;
    if (classes()) all = classes()->getClassesOfCategory(catid);
    if (SCOM_ClassBundle* const bundle = getThreadClassBundle()) {
        const std::vector<_GUID> more = bundle->getClassesOfCategory(catid);
        all.insert(all.end(), more.begin(), more.end());
    }
    return all;
}

std::vector<_GUID> SCOM_ProcessImpl::getClassCategories(const _GUID& clsid) {
    if (classes() && classes()->hasClass(clsid)) return classes()->getClassCategories(clsid);
    SCOM_ClassBundle* const bundle = getThreadClassBundle();
    return bundle ? bundle->getClassCategories(clsid) : std::vector<_GUID>();
}

bool SCOM_ProcessImpl::isClassInCategory(const _GUID& catid, const _GUID& clsid) {
    if (classes() && classes()->isClassInCategory(catid, clsid)) return true;
    SCOM_ClassBundle* const bundle = getThreadClassBundle();
    return bundle && bundle->isClassInCategory(catid, clsid);
}

stdx::string SCOM_ProcessImpl::getClassComponent(const _GUID& clsid) {
    if (classes() && classes()->hasClass(clsid)) return classes()->getClassComponent(clsid);
    SCOM_ClassBundle* const bundle = getThreadClassBundle();
    return bundle ? bundle->getClassComponent(clsid) : stdx::string();
}

void SCOM_ProcessImpl::registerClass(const _GUID& clsid, IClassFactory* factory,
                                     SCOM_RegisterType type, const char* component) {
    if (type != RegisterService) {
        if (classes()) classes()->registerClass(clsid, factory, type, component);
        return;
    }
    if (serviceClasses_.contains(clsid)) return;
    serviceClasses_[clsid] = {
        kUUIDNull, InterfacePtr<ClassInfo>(
                       new ClassInfo(clsid, InterfacePtr<IClassFactory>(factory, true), type,
                                     component ? stdx::string(component) : stdx::string()),
                       true)};
}

bool SCOM_ProcessImpl::revokeClass(const _GUID& clsid) {
    if (classes() && classes()->revokeClass(clsid)) return true;
    const auto service = serviceClasses_.find(clsid);
    if (service == serviceClasses_.end() || service->second.boundInterface != kUUIDNull)
        return false;
    serviceClasses_.erase(service);
    return true;
}

void SCOM_ProcessImpl::addClassAlias(const _GUID& clsid, const stdx::ustring& alias) {
    if (classes()) classes()->addClassAlias(clsid, alias);
}

void SCOM_ProcessImpl::removeClassAlias(const stdx::ustring& alias) {
    if (classes()) classes()->removeClassAlias(alias);
}

void SCOM_ProcessImpl::addClassCategory(const _GUID& clsid, const _GUID& catid) {
    if (classes()) classes()->addClassCategory(clsid, catid);
}

void SCOM_ProcessImpl::rewrite_factory(const _GUID& clsid, IClassFactory* factory) {
    if (classes()) classes()->rewrite_factory(clsid, factory);
}

std::vector<RegisteredClass> SCOM_ProcessImpl::registered_classes() const {
    std::vector<RegisteredClass> all;
    const auto add = [&](const ClassInfo& info) {
        all.push_back({info.clsid,
                       info.type,
                       info.component,
                       info.aliases,
                       {info.categories.begin(), info.categories.end()}});
    };
    if (classes())
        for (const InterfacePtr<ClassInfo>& info : classes()->classes()) add(*info);
    for (const auto& [clsid, service] : serviceClasses_) add(*service.info);
    return all;
}

// ---- The bundle of the calling thread

// Null on a thread that has no `core::Thread`, or that never had a bundle.
SCOM_ProcessImpl::ClassBundleHolder* SCOM_ProcessImpl::thread_slot() {
    Thread* const thread = current_thread();
    return thread ? static_cast<ClassBundleHolder*>(thread->getTLSValue(threadBundleSlot_))
                  : nullptr;
}

SCOM_ClassBundle* SCOM_ProcessImpl::getThreadClassBundle() {
    const ClassBundleHolder* const holder = thread_slot();
    return holder ? holder->bundle.get() : nullptr;
}

InterfacePtr<SCOM_ClassBundle> SCOM_ProcessImpl::setThreadClassBundle(SCOM_ClassBundle* bundle) {
    InterfacePtr<SCOM_ClassBundle> former = takeThreadClassBundle();
    Thread* const thread = current_thread();
    if (!bundle || !thread) return former;
    auto holder = std::make_unique<ClassBundleHolder>();
    holder->bundle = InterfacePtr<SCOM_ClassBundle>(bundle, true);
    thread->checkTLSIndex(threadBundleSlot_);
    thread->setTLSValue(threadBundleSlot_, holder.release());
    return former;
}

InterfacePtr<SCOM_ClassBundle> SCOM_ProcessImpl::takeThreadClassBundle() {
    ClassBundleHolder* const holder = thread_slot();
    return holder ? std::move(holder->bundle) : InterfacePtr<SCOM_ClassBundle>();
}

// ---- Services

bool SCOM_ProcessImpl::bindService(const _GUID& clsid, const _GUID& iid) {
    if (suppressedServices_.erase(clsid) != 0 || services_.contains(iid)) return false;
    auto service = serviceClasses_.find(clsid);
    if (service == serviceClasses_.end() || service->second.boundInterface != kUUIDNull)
        return false;

    // Its constructor may bind other services: nothing found before is used after.
    const InterfacePtr<ClassInfo> info = service->second.info;
    void* made = nullptr;
    if (!info->create(static_cast<SCOM_Process*>(this), IID_IUnknown, &made)) return false;
    InterfacePtr<IUnknown> inner(static_cast<IUnknown*>(made), false);
    void* found = nullptr;
    if (inner->QueryInterface(iid, &found) != S_OK) return false;

    boundServices_.push_back(clsid);
    services_[iid] = {clsid, inner.detach(), static_cast<IUnknown*>(found)};
    serviceClasses_[clsid] = {iid, info};
    return true;
}

bool SCOM_ProcessImpl::unbindService(const _GUID& clsid) {
    const auto service = serviceClasses_.find(clsid);
    if (service == serviceClasses_.end()) {
        suppressedServices_.insert(clsid);
        return false;
    }
    const _GUID iid = service->second.boundInterface;
    if (iid == kUUIDNull) return true;
    const auto bound = services_.find(iid);
    if (bound == services_.end()) return false;
    service->second.boundInterface = kUUIDNull;
    const ServiceRecord record = bound->second;
    record.interface_->Release();
    services_.erase(iid);
    std::erase(boundServices_, clsid);
    record.inner->Release();
    return true;
}

IUnknown* SCOM_ProcessImpl::getService(const _GUID& iid) {
    const auto bound = services_.find(iid);
    return bound == services_.end() ? nullptr : bound->second.interface_;
}

// ---- Components

void* SCOM_ProcessImpl::loadComponent(const char* name) {
    try {
        return loadComponentEx(name);
    } catch (const SCOM_Exception& exception) {
        logger.logError(0, (u"LoadComponent(" + from_utf8(name ? name : "") + u")").c_str(),
                        u"descr", exception.description().c_str(), exception.object().get());
        return nullptr;
    }
}

void* SCOM_ProcessImpl::loadComponentEx(const char* name) {
    const std::string component = name ? name : "";
    trace(u"component", [&] { return from_utf8(component); });
    return components_->load(component);
}

void SCOM_ProcessImpl::unloadComponent(void* handle) {
    components_->unload(handle);
}

// ---- Settings

void SCOM_ProcessImpl::setLocale(const Locale& locale) {
    trace(u"locale", [&] { return locale.displayName(Locale::system()); });
    const WriterLock guard(settingsLock_);
    locale_ = locale;
}

Locale SCOM_ProcessImpl::getLocale() {
    const ReaderLock guard(settingsLock_);
    return locale_;
}

void SCOM_ProcessImpl::setResourceLocale(const Locale& locale) {
    trace(u"locale", [&] { return locale.displayName(Locale::system()); });
    const WriterLock guard(settingsLock_);
    resourceLocale_ = locale;
}

Locale SCOM_ProcessImpl::getResourceLocale() {
    const ReaderLock guard(settingsLock_);
    return resourceLocale_;
}

void SCOM_ProcessImpl::setTimeZone(const TimeZone& zone) {
    trace(u"tz", [&] { return zone.displayName(Locale::system()); });
    const WriterLock guard(settingsLock_);
    timeZone_ = zone;
}

TimeZone SCOM_ProcessImpl::getTimeZone() {
    const ReaderLock guard(settingsLock_);
    return timeZone_;
}

void SCOM_ProcessImpl::enableCOMInThreads(bool enable) {
    trace(u"enable", [&] { return enable ? u"true" : u"false"; });
    comInThreads_ = enable;
}

void SCOM_ProcessImpl::addResourceBundle(SCOM_ResourceBundle* bundle) {
    if (bundle) resourceBundles_[bundle->name()] = bundle;
}

void SCOM_ProcessImpl::removeResourceBundle(SCOM_ResourceBundle* bundle) {
    if (bundle)
        std::erase_if(resourceBundles_, [&](const auto& row) { return row.second == bundle; });
}

SCOM_ResourceBundle* SCOM_ProcessImpl::findResourceBundle(const stdx::string& name) {
    const auto found = resourceBundles_.find(name);
    return found == resourceBundles_.end() ? nullptr : found->second;
}

void SCOM_ProcessImpl::setVersion(const char* version, const char* owner) {
    const WriterLock guard(settingsLock_);
    version_ = version ? version : "";
    versionOwner_ = owner ? owner : "";
}

stdx::string SCOM_ProcessImpl::getVersion() {
    const ReaderLock guard(settingsLock_);
    return version_;
}

stdx::string SCOM_ProcessImpl::getVersionOwner() {
    const ReaderLock guard(settingsLock_);
    return versionOwner_;
}

} // namespace core
