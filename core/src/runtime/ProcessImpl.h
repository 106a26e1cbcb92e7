// The logical process: a table of classes, services and settings. See SCOM_Process.h for what it
// does and ComponentContainer.h for the classes.
//
// The class tables and the services are read without locks; they are written during start and end,
// and while a component loads. `settingsLock_` guards the locales, the time zone and the version
// strings.
#pragma once

#include <core/component/Object.h>
#include <core/component/SCOM_ProcessData.h>
#include <core/concurrency/IRWMutex.h>
#include <core/concurrency/Thread.h>
#include <core/locale/BoolFormat.h>
#include <core/locale/DateFormat.h>
#include <core/locale/NumericFormat.h>
#include <core/numbers/TimeZone.h>

#include "ComponentContainer.h"

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <atomic>
#include <map>
#include <vector>

namespace core {

class SCOM_ProcessImpl
    : public ObjectRoot
    , public SCOM_Process
    , public SCOM_ClassRegistrar
    , public ATL::CComCoClass<SCOM_Process, &GUID_NULL> {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<SCOM_ProcessImpl, SCOM_Process, SCOM_ClassRegistrar,
                             Via<SCOM_ClassBundle, SCOM_Process>>();
    }

    explicit SCOM_ProcessImpl(SCOM_ProcessData& owner);
    ~SCOM_ProcessImpl();

    // True for the one caller that is to end the process.
    bool begin_termination() noexcept { return !terminated_.exchange(true); }
    // Ends the services, the last bound first, then the components and the singletons.
    void end_services_and_components();
    void close_libraries() { components_->close_libraries(); }

    SCOM_ProcessData& owner() noexcept { return owner_; }
    void rewrite_factory(const _GUID& clsid, IClassFactory* factory);
    std::vector<RegisteredClass> registered_classes() const;

    // SCOM_ClassBundle: the process's own table, then the bundle of the calling thread.
    bool hasClass(const _GUID& clsid) override;
    bool createObject(const _GUID& clsid, const _GUID& iid, void** out) override;
    bool createObjectByAlias(const stdx::ustring& alias, const _GUID& iid, void** out) override;
    bool createAggregated(const _GUID& clsid, IUnknown* outer, IUnknown** out) override;
    std::vector<stdx::ustring> getClassAliases(const _GUID& clsid) override;
    std::vector<_GUID> getClassesOfCategory(const _GUID& catid) override;
    std::vector<_GUID> getClassCategories(const _GUID& clsid) override;
    bool isClassInCategory(const _GUID& catid, const _GUID& clsid) override;
    stdx::string getClassComponent(const _GUID& clsid) override;

    // SCOM_Process
    bool bindService(const _GUID& clsid, const _GUID& iid) override;
    bool unbindService(const _GUID& clsid) override;
    IUnknown* getService(const _GUID& iid) override;
    int reservedQuery() override { return 0; }
    void* loadComponent(const char* name) override;
    void* loadComponentEx(const char* name) override;
    void unloadComponent(void* handle) override;
    int getRoundMode() override { return roundMode_; }
    void setRoundMode(int mode) override { roundMode_ = mode; }
    void setLocale(const Locale& locale) override;
    Locale getLocale() override;
    void setResourceLocale(const Locale& locale) override;
    Locale getResourceLocale() override;
    void setNumericFormat(const NumericFormat& format) override { numericFormat_ = format; }
    NumericFormat getNumericFormat() override { return numericFormat_; }
    void setDateFormat(const DateFormat& format) override { dateFormat_ = format; }
    DateFormat getDateFormat() override { return dateFormat_; }
    void setBoolFormat(const BoolFormat& format) override { boolFormat_ = format; }
    BoolFormat getBoolFormat() override { return boolFormat_; }
    void setTimeZone(const TimeZone& zone) override;
    TimeZone getTimeZone() override;
    int getBeginningOfCentury() override { return beginningOfCentury_; }
    void setBeginningOfCentury(int year) override { beginningOfCentury_ = year; }
    int getFirstDayOfWeek() override { return firstDayOfWeek_; }
    void setFirstDayOfWeek(int day) override { firstDayOfWeek_ = day; }
    int getTermLanguage() override { return termLanguage_; }
    void setTermLanguage(int language) override { termLanguage_ = language; }
    void addResourceBundle(SCOM_ResourceBundle* bundle) override;
    void removeResourceBundle(SCOM_ResourceBundle* bundle) override;
    SCOM_ResourceBundle* findResourceBundle(const stdx::string& name) override;
    void enableCOMInThreads(bool enable) override;
    bool isCOMEnabledInThreads() override { return comInThreads_; }
    void setVersion(const char* version, const char* owner) override;
    stdx::string getVersion() override;
    stdx::string getVersionOwner() override;
    SCOM_ClassBundle* getThreadClassBundle() override;
    InterfacePtr<SCOM_ClassBundle> setThreadClassBundle(SCOM_ClassBundle* bundle) override;
    InterfacePtr<SCOM_ClassBundle> takeThreadClassBundle() override;

    // SCOM_ClassRegistrar: services stay in the process, all else goes to the table.
    void registerClass(const _GUID& clsid, IClassFactory* factory, SCOM_RegisterType type,
                       const char* component) override;
    bool revokeClass(const _GUID& clsid) override;
    void addClassAlias(const _GUID& clsid, const stdx::ustring& alias) override;
    void removeClassAlias(const stdx::ustring& alias) override;
    void addClassCategory(const _GUID& clsid, const _GUID& catid) override;

private:
    // A bound service. Releasing is left to `unbindService`: the interface first, then the object.
    struct ServiceRecord {
        _GUID clsid;
        IUnknown* inner;      // of the aggregate; owned reference
        IUnknown* interface_; // what `getService` lends; owned reference
    };
    struct ServiceClass {
        _GUID boundInterface; // all zero while not bound
        InterfacePtr<ClassInfo> info;
    };
    struct LessNoCase {
        bool operator()(const stdx::string& a, const stdx::string& b) const noexcept;
    };
    class ClassBundleHolder;

    // By its final class, which spares the virtual call on the way of every creation.
    SCOM_Object<SCOM_ClassRegistrarImpl>* classes() const noexcept {
        return components_->classes();
    }
    ClassBundleHolder* thread_slot();

    std::atomic<bool> terminated_ = false;
    SimpleRWMutex settingsLock_;
    boost::unordered_flat_map<_GUID, ServiceRecord, std::hash<_GUID>> services_;
    boost::unordered_flat_map<_GUID, ServiceClass, std::hash<_GUID>> serviceClasses_;
    std::vector<_GUID> boundServices_; // in the order of binding
    boost::unordered_flat_set<_GUID, std::hash<_GUID>> suppressedServices_;
    InterfacePtr<ComponentContainer> components_;
    int roundMode_ = 1;
    Locale locale_ = Locale::system();         // guarded by settingsLock_
    Locale resourceLocale_ = Locale::system(); // guarded by settingsLock_
    NumericFormat numericFormat_{Locale::system()};
    DateFormat dateFormat_{Locale::system()};
    BoolFormat boolFormat_{Locale::system()};
    TimeZone timeZone_ = TimeZone::system(); // guarded by settingsLock_
    int beginningOfCentury_ = kDefaultBeginningOfCentury;
    int firstDayOfWeek_;
    int termLanguage_ = 0;
    bool comInThreads_ = false;
    std::map<stdx::string, SCOM_ResourceBundle*, LessNoCase> resourceBundles_;
    SCOM_ProcessData& owner_;
    stdx::string version_;      // guarded by settingsLock_
    stdx::string versionOwner_; // guarded by settingsLock_
    Thread::TLSIndex threadBundleSlot_;
};

} // namespace core
