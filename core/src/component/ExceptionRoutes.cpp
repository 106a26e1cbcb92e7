// Where exceptions go that nobody catches: the deferred slot, the handler of destructors, the
// technical log.
#include <core/component/DeferredException.h>
#include <core/component/DestructorException.h>
#include <core/component/SCOM_Process.h>
#include <core/component/TechLog.h>
#include <core/concurrency/LockGuards.h>
#include <core/concurrency/RWMutex.h>

#include <exception>
#include <utility>

namespace core {
namespace {

// The statics of this file are never destroyed: destructors of other statics may come here.
std::exception_ptr& deferred_slot() noexcept {
    static auto& slot = *new std::exception_ptr;
    return slot;
}

struct DestructorHandler {
    RWMutex mutex;
    InterfacePtr<IExceptionHandler> handler; // guarded by `mutex`
};

DestructorHandler& destructor_handler() {
    static auto& handler = *new DestructorHandler;
    return handler;
}

} // namespace

void defer_exception() noexcept {
    if (std::exception_ptr& slot = deferred_slot(); !slot) slot = std::current_exception();
}

bool have_deferred_exception() noexcept {
    return deferred_slot() != nullptr;
}

void raise_deferred_exception() {
    if (auto exception = std::exchange(deferred_slot(), nullptr))
        std::rethrow_exception(std::move(exception));
}

void destructor_exception(const Exception& exception) {
    const InterfacePtr<IExceptionHandler> handler = get_destructor_exception_handler();
    if (!handler) throw exception.as_plain();
    handler->handleException(exception);
}

void set_destructor_exception_handler(IExceptionHandler* handler) {
    InterfacePtr<IExceptionHandler> other(handler, true); // the former one ends outside the lock
    DestructorHandler& current = destructor_handler();
    const WriterLock lock(current.mutex);
    current.handler.swap(other);
}

InterfacePtr<IExceptionHandler> get_destructor_exception_handler() {
    DestructorHandler& current = destructor_handler();
    const ReaderLock lock(current.mutex);
    return current.handler;
}

void write_exception_to_techlog(const Exception& exception, const stdx::ustring& where) {
    SCOM_Process* const process = current_process();
    if (!process) return;
    for (const _GUID& clsid : process->getClassesOfCategory(CATID_TechLog))
        if (const auto log = create_object<ITechLog>(clsid)) log->writeException(exception, where);
}

} // namespace core
