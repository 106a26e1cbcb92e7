// Counting semaphores: one in the object, one that stays open once raised, and one that processes
// share by name.
//
//   core::Semaphore jobs;                      // value 0
//   jobs.raise();                              // any thread
//   if (jobs.wait(100)) ...                    // false after 100 ms
//
//   core::OneTimeSemaphore over;               // once raised, every wait returns at once
//   core::NamedSemaphore shared(u"reports"_us, false);
//
// A wait that blocks is reported to the suspend monitor of the calling thread: callers need not.
#pragma once

#include <core/component/IUnknownImpl.h>
#include <core/platform/api.h>

#include <elm/string>

#include <semaphore.h>

namespace core {

inline constexpr _GUID IID_ISemaphore = "099400d4-c772-4597-870a-e3249c205d93"_guid;

class ISemaphore : public IUnknown {
public:
    ORB_INTERFACE(ISemaphore, IID_ISemaphore)

    // Takes one from the value; while it is 0, waits.
    virtual void wait() = 0;
    // The same for at most so many milliseconds of the system's wall clock; not positive: only
    // looks. False when nothing was taken, which a signal may bring about before the time.
    virtual bool wait(int milliseconds) = 0;
    // Adds one to the value. May be called in a signal handler.
    virtual void raise() noexcept = 0;
    // The system's semaphore; lent.
    virtual sem_t* eventHandle() noexcept = 0;
};

// What all semaphores share.
class ORBCORE_API ISemaphoreBaseImpl : public ISemaphore {
public:
    ISemaphoreBaseImpl(const ISemaphoreBaseImpl&) = delete;
    ISemaphoreBaseImpl& operator=(const ISemaphoreBaseImpl&) = delete;

    void wait() override;
    bool wait(int milliseconds) override;
    void raise() noexcept override { sem_post(semaphore_); }
    sem_t* eventHandle() noexcept override { return semaphore_; }

protected:
    // Uses the semaphore in the object.
    ISemaphoreBaseImpl() noexcept;
    // Uses `semaphore`, which the derived class closes.
    ISemaphoreBaseImpl(sem_t* semaphore, stdx::string name) noexcept;
    ~ISemaphoreBaseImpl();

    const stdx::string& name() const noexcept { return name_; }

private:
    sem_t own_;
    sem_t* const semaphore_; // the one in use: own_ or a named one
    const bool ownInitialised_;
    const stdx::string name_; // as the system knows it; empty without one
};

class ORBCORE_API ISemaphoreImpl : public ISemaphoreBaseImpl {};

// A latch: every wait that succeeds raises it again.
class ORBCORE_API ISemaphoreOneTimeImpl : public ISemaphoreBaseImpl {
public:
    void wait() override;
    bool wait(int milliseconds) override;
};

// One semaphore of the whole machine by its name, for processes of one user.
class ORBCORE_API INamedSemaphoreImpl : public ISemaphoreBaseImpl {
public:
    // Opens the semaphore `name`, without '/' in it; with `openExisting` false makes it, value 0,
    // when there is none, and then takes the name away at the end: those who have it open keep
    // it. Throws std::system_error.
    INamedSemaphoreImpl(const stdx::ustring& name, bool openExisting);
    ~INamedSemaphoreImpl();

private:
    INamedSemaphoreImpl(const stdx::string& systemName, bool openExisting);

    const bool created_;
};

// What owners declare as members.
using Semaphore = IUnknownImpl<ISemaphoreImpl, ISemaphore>;
using OneTimeSemaphore = IUnknownImpl<ISemaphoreOneTimeImpl, ISemaphore>;
using NamedSemaphore = IUnknownImpl<INamedSemaphoreImpl, ISemaphore>;

} // namespace core
