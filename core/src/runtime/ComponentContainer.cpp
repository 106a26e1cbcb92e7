#include "ComponentContainer.h"

#include <core/component/Messages.h>
#include <core/component/SCOM_Exception.h>
#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>

#include "LibraryTable.h"
#include "component/MessageFormat.h"

#include <dlfcn.h>

namespace core {
namespace {

using ComponentMain = void (*)(SCOM_Process* process, SCOM_ClassRegistrar* registrar, int phase);

constexpr int kLoad = 0;
constexpr int kUnload = 1;

void call_component_main(void* handle, SCOM_Process& process, SCOM_ClassRegistrar& registrar,
                         int phase) {
    if (const auto main = reinterpret_cast<ComponentMain>(dlsym(handle, "SCOM_Main")))
        main(&process, &registrar, phase);
}

} // namespace

ComponentContainer::ComponentContainer(SCOM_Process& process, SCOM_ClassRegistrar& registrar)
    : process_(process),
      registrar_(registrar),
      classes_(
          make_object<SCOM_ClassRegistrarImpl>(nullptr, ClassBundleSearchStrategy::ParentFirst)) {}

ComponentContainer::~ComponentContainer() = default;

void* ComponentContainer::load(const std::string& name) {
    const std::lock_guard guard(lock_);
    std::string error;
    void* const handle = LibraryTable::instance().open(name, error);
    if (!handle) {
        const stdx::ustring text =
            format_message(load_core_wstring("IDS_ERR_SCOM_LOADCOMPONENT_FAULT"), from_utf8(name)) +
            u": " + from_utf8(error);
        throw SCOM_Exception(SCOM_Exception::Reason::ComponentLoad, text, nullptr);
    }
    if (const auto known = counts_.find(handle); known != counts_.end()) {
        ++known->second;
        return handle;
    }
    start_component(handle, name);
    counts_.emplace(handle, 1);
    loadOrder_.push_back(handle);
    return handle;
}

// What the entry point throws becomes one kind of failure for the caller. The library stays open:
// it may have left objects behind.
void ComponentContainer::start_component(void* handle, const std::string& name) {
    const auto fail = [](const stdx::ustring& text, IExceptionObject* cause) {
        throw SCOM_Exception(SCOM_Exception::Reason::ComponentLoad, text, cause);
    };
    try {
        call_component_main(handle, process_, registrar_, kLoad);
    } catch (const VersionException& exception) {
        fail(format_message(exception.description(), from_utf8(name)), nullptr);
    } catch (const Exception& exception) {
        const stdx::ustring text =
            exception.inner()
                ? format_message(load_core_wstring("IDS_ERR_LOAD_COMPONENT_1"), from_utf8(name))
                : format_message(load_core_wstring("IDS_ERR_LOAD_COMPONENT_2"), from_utf8(name),
                                 exception.description());
        fail(text, exception.object().get());
    }
}

void ComponentContainer::unload(void* handle) {
    const std::lock_guard guard(lock_);
    const auto known = counts_.find(handle);
    if (known == counts_.end()) return;
    if (--known->second == 0) {
        counts_.erase(known);
        std::erase(loadOrder_, handle);
        call_component_main(handle, process_, registrar_, kUnload);
    }
    LibraryTable::instance().close(handle);
}

void ComponentContainer::end_components() {
    const std::lock_guard guard(lock_);
    for (void* const handle : loadOrder_) call_component_main(handle, process_, *classes_, kUnload);
    classes_.reset();
}

void ComponentContainer::close_libraries() {
    const std::lock_guard guard(lock_);
    for (void* const handle : loadOrder_)
        for (unsigned count = counts_[handle]; count != 0; --count)
            LibraryTable::instance().close(handle);
    loadOrder_.clear();
    counts_.clear();
}

} // namespace core
