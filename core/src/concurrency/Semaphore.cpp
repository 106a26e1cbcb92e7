#include <core/concurrency/Semaphore.h>

#include <kiln/suspend_monitor.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <string>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <time.h>
#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

namespace core {
namespace {

// By the wall clock, as sem_timedwait reads it.
timespec deadline_after(int milliseconds) noexcept {
    constexpr long kSecond = 1'000'000'000;
    timespec time;
    clock_gettime(CLOCK_REALTIME, &time);
    time.tv_sec += milliseconds / 1000;
    time.tv_nsec += milliseconds % 1000 * 1'000'000L;
    if (time.tv_nsec >= kSecond) {
        ++time.tv_sec;
        time.tv_nsec -= kSecond;
    }
    return time;
}

// "/" and the name in the code page of the system. A character that is not in it is refused: with
// a substitute two names would become one.
stdx::string system_name(const stdx::ustring& name) {
    char bytes[NAME_MAX] = {'/'};
    UErrorCode status = U_ZERO_ERROR;
    UConverter* const converter = ucnv_open(nullptr, &status);
    ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &status);
    const std::int32_t length = ucnv_fromUChars(converter, bytes + 1, sizeof bytes - 1, name.data(),
                                                static_cast<std::int32_t>(name.size()), &status);
    ucnv_close(converter);
    if (status == U_BUFFER_OVERFLOW_ERROR)
        throw std::system_error(ENAMETOOLONG, std::generic_category(), "name of a semaphore");
    if (U_FAILURE(status))
        throw std::system_error(EILSEQ, std::generic_category(), "name of a semaphore");
    return stdx::string(bytes, static_cast<unsigned int>(length) + 1);
}

sem_t* open_semaphore(const stdx::string& name, bool openExisting) {
    sem_t* const semaphore = openExisting ? sem_open(name.c_str(), 0)
                                          : sem_open(name.c_str(), O_CREAT | O_RDWR, 0600, 0);
    if (semaphore == SEM_FAILED)
        throw std::system_error(errno, std::generic_category(),
                                "semaphore " + std::string(name.c_str()));
    return semaphore;
}

} // namespace

ISemaphoreBaseImpl::ISemaphoreBaseImpl() noexcept : semaphore_(&own_), ownInitialised_(true) {
    sem_init(&own_, 0, 0);
}

ISemaphoreBaseImpl::ISemaphoreBaseImpl(sem_t* semaphore, stdx::string name) noexcept
    : semaphore_(semaphore), ownInitialised_(false), name_(std::move(name)) {}

ISemaphoreBaseImpl::~ISemaphoreBaseImpl() {
    if (ownInitialised_) sem_destroy(&own_);
}

void ISemaphoreBaseImpl::wait() {
    if (sem_trywait(semaphore_) == 0) return;
    const kiln::ReportedWait report(kiln::get_thread_suspend_monitor());
    while (sem_wait(semaphore_) != 0 && errno == EINTR) {}
}

bool ISemaphoreBaseImpl::wait(int milliseconds) {
    if (sem_trywait(semaphore_) == 0) return true;
    if (milliseconds <= 0) return false;
    const kiln::ReportedWait report(kiln::get_thread_suspend_monitor());
    const timespec deadline = deadline_after(milliseconds);
    return sem_timedwait(semaphore_, &deadline) == 0;
}

void ISemaphoreOneTimeImpl::wait() {
    ISemaphoreBaseImpl::wait();
    raise();
}

bool ISemaphoreOneTimeImpl::wait(int milliseconds) {
    if (!ISemaphoreBaseImpl::wait(milliseconds)) return false;
    raise();
    return true;
}

INamedSemaphoreImpl::INamedSemaphoreImpl(const stdx::ustring& name, bool openExisting)
    : INamedSemaphoreImpl(system_name(name), openExisting) {}

INamedSemaphoreImpl::INamedSemaphoreImpl(const stdx::string& systemName, bool openExisting)
    : ISemaphoreBaseImpl(open_semaphore(systemName, openExisting), systemName),
      created_(!openExisting) {}

INamedSemaphoreImpl::~INamedSemaphoreImpl() {
    sem_close(eventHandle());
    if (created_) sem_unlink(name().c_str());
}

} // namespace core
