#include <core/concurrency/RWRMutex.h>

#include "Backoff.h"

#include <new>
#include <system_error>

namespace core {

// The base's mutex; its `lock` by name, since the virtual one is the writer side.
class RWRMutexImpl::InnerLock {
public:
    explicit InnerLock(RWRMutexImpl& mutex) : mutex_(mutex) { mutex_.IMutexImpl::lock(); }
    ~InnerLock() { mutex_.IMutexImpl::unlock(); }
    InnerLock(const InnerLock&) = delete;
    InnerLock& operator=(const InnerLock&) = delete;

private:
    RWRMutexImpl& mutex_;
};

RWRMutexImpl::RWRMutexImpl(kiln::IThreadSuspendMonitor* suspendMonitor)
    : IMutexImpl(suspendMonitor) {
    if (const int error = pthread_key_create(&ownReaders_, nullptr))
        throw std::system_error(error, std::generic_category(), "thread key of a lock");
}

RWRMutexImpl::~RWRMutexImpl() {
    pthread_key_delete(ownReaders_);
}

unsigned int RWRMutexImpl::getThreadReaders() const noexcept {
    return static_cast<unsigned int>(
        reinterpret_cast<std::uintptr_t>(pthread_getspecific(ownReaders_)));
}

void RWRMutexImpl::setThreadReaders(unsigned int count) {
    const auto value = static_cast<std::uintptr_t>(count);
    if (pthread_setspecific(ownReaders_, reinterpret_cast<void*>(value)) != 0)
        throw std::bad_alloc();
}

bool RWRMutexImpl::canGrantReadAccess(unsigned long long id,
                                      unsigned int ownReaders) const noexcept {
    if (owner_ == id) return true;
    if (owner_ != 0) return false;
    return ownReaders != 0 || waitingWriters_ == 0;
}

bool RWRMutexImpl::canGrantWriteAccess(unsigned long long id,
                                       unsigned int ownReaders) const noexcept {
    if (readers_ != 0) return readers_ == ownReaders;
    return owner_ == 0 || owner_ == id;
}

void RWRMutexImpl::wait(bool, unsigned int& backoff) noexcept {
    IMutexImpl::unlock();
    back_off(backoff);
    lock_unreported(); // part of a wait that is reported already
}

void RWRMutexImpl::lock() {
    const InnerLock inner(*this);
    lock0();
}

void RWRMutexImpl::lock0() {
    const unsigned long long id = getThreadId();
    const unsigned int own = getThreadReaders();
    if (!canGrantWriteAccess(id, own)) {
        const kiln::ReportedWait report(suspend_monitor());
        ++waitingWriters_;
        unsigned int backoff = 0;
        do wait(false, backoff);
        while (!canGrantWriteAccess(id, own));
        --waitingWriters_;
    }
    enter(id);
}

void RWRMutexImpl::enter(std::uint64_t id) noexcept {
    ++depth_;
    owner_ = id;
}

void RWRMutexImpl::unlock() noexcept {
    {
        const InnerLock inner(*this);
        unlock0();
    }
    notifyAll();
}

void RWRMutexImpl::unlock0() noexcept {
    if (--depth_ == 0) owner_ = 0;
}

void RWRMutexImpl::lockShared() {
    const InnerLock inner(*this);
    lockShared0();
}

void RWRMutexImpl::lockShared0() {
    const unsigned long long id = getThreadId();
    const unsigned int own = getThreadReaders();
    if (!canGrantReadAccess(id, own)) {
        const kiln::ReportedWait report(suspend_monitor());
        unsigned int backoff = 0;
        do wait(true, backoff);
        while (!canGrantReadAccess(id, own));
    }
    enterShared(own);
}

// The thread's own count first: it may find no memory.
void RWRMutexImpl::enterShared(std::uint32_t ownReaders) {
    setThreadReaders(ownReaders + 1);
    ++readers_;
}

void RWRMutexImpl::unlockShared() noexcept {
    {
        const InnerLock inner(*this);
        unlockShared0();
    }
    notifyAll();
}

void RWRMutexImpl::unlockShared0() noexcept {
    --readers_;
    setThreadReaders(getThreadReaders() - 1); // the place is there since the lock was taken
}

bool RWRMutexImpl::try_lock() {
    const InnerLock inner(*this);
    const unsigned long long id = getThreadId();
    if (!canGrantWriteAccess(id, getThreadReaders())) return false;
    enter(id);
    return true;
}

bool RWRMutexImpl::try_lock_shared() {
    const InnerLock inner(*this);
    const unsigned int own = getThreadReaders();
    if (!canGrantReadAccess(getThreadId(), own)) return false;
    enterShared(own);
    return true;
}

} // namespace core
