#include <core/runtime/CoreInit.h>

#include <core/component/Module.h>
#include <core/component/SCOM_Process.h>
#include <core/locale/Locale.h>
#include <core/resources/ResourceBundle.h>

#include "ComponentUnload.h"
#include "concurrency/MainThread.h"

#include <unicode/uclean.h>

#include <atomic>
#include <csignal>
#include <sys/resource.h>

namespace core {
namespace {

constinit std::atomic<bool> unload_disabled = false;

void raise_open_files_limit() noexcept {
    rlimit limit;
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
}

} // namespace

void disable_scom_component_module_unload() noexcept {
    unload_disabled = true;
}

bool component_unload_is_disabled() noexcept {
    return unload_disabled;
}

CoreInitManager::CoreInitManager() {
    disable_scom_component_module_unload();
    CoreInit();
}

CoreInitManager::~CoreInitManager() {
    CoreDeinit();
}

} // namespace core

void CoreInit() {
    static constinit std::atomic<bool> initialised = false;
    if (initialised.exchange(true)) return;
    core::raise_open_files_limit();
    std::signal(SIGPIPE, SIG_IGN);
    core::note_main_thread();
    // A failure shows where ICU is used; the parts that need no data still work.
    UErrorCode status = U_ZERO_ERROR;
    u_init(&status);
    core::Locale::system(); // is found now, whatever locale the program takes later
    core::SCOM_Module& module = core::this_module();
    module.initialize();
    static auto& messages = *new core::SCOM_ResourceBundle(module.name());
    module.setResourceBundle(&messages);
}

void CoreDeinit() {}
