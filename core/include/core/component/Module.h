// A module: the static list of the classes of one library or program, and its version.
//
// One source of every library or host that registers classes of its own says
//
//   ORBCORE_MODULE("counter", "1.0.0.0")       a host; or, in a component library,
//   ORBCORE_COMPONENT("counter", "1.0.0.0")    the module with the entry points of a component
//
// Registration copies the list into a process. Descriptors are linked while the library is loaded,
// on one thread; afterwards the list does not change.
#pragma once

#include <core/component/IUnknown.h>
#include <core/platform/api.h>

#include <atomic>
#include <cstdint>
#include <mutex>

namespace core {

struct ClassDescriptor;
struct ObjectMap;
class SCOM_ClassRegistrar;
class SCOM_Process;
class SCOM_ResourceBundle;

class ORBCORE_API SCOM_Module {
public:
    // Both texts have static storage; `version` is four dotted numbers.
    constexpr SCOM_Module(const char* name, const char* version) noexcept
        : name_(name), version_(version) {}
    SCOM_Module(const SCOM_Module&) = delete;
    SCOM_Module& operator=(const SCOM_Module&) = delete;

    const char* name() const noexcept { return name_; }
    const char* version() const noexcept { return version_; }
    // The classes, the last linked first.
    const ClassDescriptor* classes() const noexcept { return classes_; }

    SCOM_ResourceBundle* resourceBundle() const noexcept { return resourceBundle_; }
    void setResourceBundle(SCOM_ResourceBundle* bundle) noexcept { resourceBundle_ = bundle; }

    // Pushes a class at the head of the list.
    void link(ClassDescriptor& descriptor) noexcept;

    // Builds the table that caches a factory for each class; a second call does nothing.
    void initialize();
    // Releases the cached factories and frees the table.
    void cleanup() noexcept;

    // Registers all classes and then binds all services of the module. Throws
    // `core::VersionException` when the process has another version; the first module that
    // registers fixes it. Calls `initialize` where that was not done.
    void registerAll(SCOM_Process* process, SCOM_ClassRegistrar* registrar);
    // Takes the classes out again; `process` may be null. A service class that is bound stays: a
    // component unbinds its services first.
    void revokeAll(SCOM_Process* process, SCOM_ClassRegistrar* registrar);
    // Ends the services of this module.
    void unbindAll(SCOM_Process* process);

    // The lock count: live aggregates of this module's classes, and factories.
    void lock() noexcept { lockCount_.fetch_add(1, std::memory_order_relaxed); }
    void unlock() noexcept { lockCount_.fetch_sub(1, std::memory_order_relaxed); }
    std::int32_t lockCount() const noexcept { return lockCount_.load(std::memory_order_relaxed); }

private:
    void check_version(SCOM_Process& process) const;

    const char* name_;
    const char* version_;
    ClassDescriptor* classes_ = nullptr;
    SCOM_ResourceBundle* resourceBundle_ = nullptr;
    std::mutex mutex_;               // guards the making of the object map and of its factories
    ObjectMap* objectMap_ = nullptr; // made once, before any registration
    std::atomic<std::int32_t> lockCount_ = 0;
};

// The module of the library or program that this call is compiled into.
ORBCORE_HIDDEN SCOM_Module& this_module() noexcept;

// The name of that module: an address constant, so that descriptors need no initialisation.
ORBCORE_HIDDEN extern const char this_module_name[];

} // namespace core

#define ORBCORE_MODULE(moduleName, moduleVersion)                                                  \
    namespace core {                                                                               \
    extern const char this_module_name[] = moduleName;                                             \
    SCOM_Module& this_module() noexcept {                                                          \
        static constinit SCOM_Module module(this_module_name, moduleVersion);                      \
        return module;                                                                             \
    }                                                                                              \
    }                                                                                              \
    static_assert(true)

// A component library: `SCOM_Main` is called once by each logical process that loads it (phase 0)
// and lets it go (phase 1), `DllMain` when the library is opened (reason 1) and closed (reason 0).
#define ORBCORE_COMPONENT(moduleName, moduleVersion)                                               \
    ORBCORE_MODULE(moduleName, moduleVersion);                                                     \
    extern "C" ORBCORE_API void SCOM_Main(core::SCOM_Process* process,                             \
                                          core::SCOM_ClassRegistrar* registrar, int phase) {       \
        if (phase == 0) {                                                                          \
            core::this_module().registerAll(process, registrar);                                   \
        } else {                                                                                   \
            core::this_module().unbindAll(process);                                                \
            core::this_module().revokeAll(process, registrar);                                     \
        }                                                                                          \
    }                                                                                              \
    extern "C" ORBCORE_API void DllMain(void*, int reason, void*) {                                \
        if (reason == 1)                                                                           \
            core::this_module().initialize();                                                      \
        else                                                                                       \
            core::this_module().cleanup();                                                         \
    }                                                                                              \
    static_assert(true)
