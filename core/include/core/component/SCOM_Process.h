// The logical process: the table of classes, the services and the settings that a thread works in.
// One operating-system process can hold several; each thread knows its current one.
//
//   auto counter = core::create_object<ICounter>(CLSID_Counter);            // null: no such class
//   auto named = core::create_object_by_alias<ICounter>(u"Счётчик");
//   IEventService* events = core::get_service<IEventService>();             // lent, or null
#pragma once

#include <core/component/ClassBundle.h>

namespace core {

class BoolFormat;
class DateFormat;
class Locale;
class NumericFormat;
class SCOM_ResourceBundle;
class SCOM_ProcessData;
class TimeZone;

inline constexpr _GUID IID_SCOM_Process = "40cd9ac6-e87b-48d2-97af-c07337b7ec31"_guid;

// The year that years of two digits count from where nobody set another one.
inline constexpr int kDefaultBeginningOfCentury = 1950;

class SCOM_Process : public SCOM_ClassBundle {
public:
    ORB_INTERFACE(SCOM_Process, IID_SCOM_Process)

    // Creates the service object of a registered service class and binds it to `iid`. False when
    // it was suppressed (once), when the interface or the class is bound already, when the class is
    // unknown, or when it cannot be created.
    virtual bool bindService(const _GUID& clsid, const _GUID& iid) = 0;
    // Ends the service. For a class that is not registered yet it suppresses the next binding.
    virtual bool unbindService(const _GUID& clsid) = 0;
    // Lent: no reference is added. Null when nothing is bound.
    virtual IUnknown* getService(const _GUID& iid) = 0;
    virtual int reservedQuery() = 0; // always 0

    // Loads `<name>.so` from beside this library. `loadComponent` writes a failure to the log and
    // returns null; `loadComponentEx` throws `core::SCOM_Exception`.
    virtual void* loadComponent(const char* name) = 0;
    virtual void* loadComponentEx(const char* name) = 0;
    virtual void unloadComponent(void* handle) = 0;

    // The rounding rule where none is named.
    virtual int getRoundMode() = 0;
    virtual void setRoundMode(int mode) = 0;

    // What threads go by that have no settings of their own; see `Thread`. Safe on any thread are
    // those of the locales and the time zone, the others are set while the process starts. No
    // setting changes another one.
    virtual void setLocale(const Locale& locale) = 0;
    virtual Locale getLocale() = 0;
    virtual void setResourceLocale(const Locale& locale) = 0;
    virtual Locale getResourceLocale() = 0;
    virtual void setNumericFormat(const NumericFormat& format) = 0;
    virtual NumericFormat getNumericFormat() = 0;
    virtual void setDateFormat(const DateFormat& format) = 0;
    virtual DateFormat getDateFormat() = 0;
    virtual void setBoolFormat(const BoolFormat& format) = 0;
    virtual BoolFormat getBoolFormat() = 0;
    virtual void setTimeZone(const TimeZone& zone) = 0;
    virtual TimeZone getTimeZone() = 0;

    virtual int getBeginningOfCentury() = 0;
    virtual void setBeginningOfCentury(int year) = 0;
    virtual int getFirstDayOfWeek() = 0;
    virtual void setFirstDayOfWeek(int day) = 0;
    // The language of bilingual names: 0 English, 1 Russian.
    virtual int getTermLanguage() = 0;
    virtual void setTermLanguage(int language) = 0;

    // Bundles are known by name, in any case of letters; the process does not own them. Null is
    // ignored by both.
    virtual void addResourceBundle(SCOM_ResourceBundle* bundle) = 0;
    virtual void removeResourceBundle(SCOM_ResourceBundle* bundle) = 0;
    virtual SCOM_ResourceBundle* findResourceBundle(const stdx::string& name) = 0;

    virtual void enableCOMInThreads(bool enable) = 0;
    virtual bool isCOMEnabledInThreads() = 0;

    // The version that all modules of the process share, and the module that fixed it.
    virtual void setVersion(const char* version, const char* owner) = 0;
    virtual stdx::string getVersion() = 0;
    virtual stdx::string getVersionOwner() = 0;

    // The bundle of the calling thread, which answers for classes that the process does not know.
    virtual SCOM_ClassBundle* getThreadClassBundle() = 0; // lent, or null
    // Null clears the slot. Both give the former bundle with its reference.
    virtual InterfacePtr<SCOM_ClassBundle> setThreadClassBundle(SCOM_ClassBundle* bundle) = 0;
    virtual InterfacePtr<SCOM_ClassBundle> takeThreadClassBundle() = 0;
};

// The logical process of the calling thread; null on a thread that belongs to none.
ORBCORE_API SCOM_Process* current_process() noexcept;

// A new object (or the singleton) of a class of the current process. Null without a process, and
// for a class that is unknown or has no such interface. Throws `std::bad_alloc`.
template <class Interface> InterfacePtr<Interface> create_object(const _GUID& clsid) {
    void* object = nullptr;
    SCOM_Process* const process = current_process();
    if (!process || !process->createObject(clsid, interface_id_of<Interface>(), &object)) return {};
    return {static_cast<Interface*>(object), false};
}
template <class Interface>
InterfacePtr<Interface> create_object_by_alias(const stdx::ustring& alias) {
    void* object = nullptr;
    SCOM_Process* const process = current_process();
    if (!process || !process->createObjectByAlias(alias, interface_id_of<Interface>(), &object))
        return {};
    return {static_cast<Interface*>(object), false};
}

// The service of the current process that answers to `Interface`; lent, or null.
template <class Interface> Interface* get_service() {
    SCOM_Process* const process = current_process();
    return process ? static_cast<Interface*>(process->getService(interface_id_of<Interface>()))
                   : nullptr;
}

// `revokeClass` on the current process; without one, nothing.
ORBCORE_API void revoke_SCOM_class(const _GUID& clsid);

// Gives a registered class another factory, for creation by GUID; creation by alias keeps the old
// one. Nothing happens for an unknown class, and for a singleton whose object exists.
ORBCORE_API void rewrite_SCOM_class_factory(const _GUID& clsid, IClassFactory* factory);

// A class as a process knows it, for people and tools.
struct RegisteredClass {
    _GUID clsid;
    SCOM_RegisterType type;
    stdx::string component;
    std::vector<stdx::ustring> aliases;
    std::vector<_GUID> categories;
};

// Every class of the current process in the order of registration, the services last; empty
// without a process.
ORBCORE_API std::vector<RegisteredClass> registered_classes();

// From now on component libraries stay mapped when their process ends.
ORBCORE_API void disable_scom_component_module_unload() noexcept;

// The file name of a component: the name, widened from UTF-8, and ".so".
ORBCORE_API stdx::ustring get_lib_file_name(const char* name);

} // namespace core
