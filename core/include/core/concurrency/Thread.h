// The thread of this system: a unit of work that belongs to one logical process and runs on a
// worker of a pool, on the caller's thread, or on a timer.
//
//   core::InterfacePtr<core::Thread> thread = core::create_thread([] { work(); });
//   thread->start();
//   thread->join();
//
// An operating-system thread alone is no `core::Thread`: `current_thread()` is null on it, and so
// is `current_process()`. `CallingThread` lets such a thread enter a process for one call.
//
// Locks: a thread's lock guards its state, its interrupted flag and the end of its life; it is
// taken before the lock of the thread set. The per-thread storage has no lock: only its own thread
// touches it. Exceptions out of `run()` reach the pool, but for `ThreadDeath`, which ends the
// thread quietly.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/component/Refcountable.h>
#include <core/component/SCOM_ProcessData.h>
#include <core/concurrency/Mutex.h>
#include <core/concurrency/Semaphore.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <vector>

#include <pthread.h>
#include <sys/types.h>

namespace core {

class BoolFormat;
class Date;
class DateFormat;
class ExceptionCounter;
class Locale;
class NumericFormat;
class Process;
class ThreadSet;
class ThreadSetting;
class ThreadTimer;
class TimeZone;

// Thrown on a thread, ends that thread and nothing else.
class ThreadDeath {};

class ORBCORE_API Thread : public Refcountable<Thread, AtomicCounter> {
public:
    // Picks the pool and, in it, the bucket of workers.
    enum class PoolType : std::uint32_t {
        Separate = 0, // the pool of its own that `set_thread_mode` does not reach
        Functor = 6,  // what `create_thread` makes
        Default = 7,  // the bucket of all types that have none
    };

    enum class State : std::uint32_t {
        New = 0,
        Running = 1,
        Finished = 2,   // `run` returned
        Terminated = 3, // refused by its process, or ended by an exception
    };

    // What a thread keeps under a `TLSIndex`; the thread owns it.
    class ORBCORE_API TLSData {
    public:
        virtual ~TLSData();
    };

    // Names a slot of per-thread storage. Generations tell a slot's present use from former ones.
    struct TLSIndex {
        std::uint32_t generation;
        std::uint32_t slot;
    };

    explicit Thread(PoolType poolType) noexcept;
    // Ends a timer, without waiting for references to itself.
    virtual ~Thread();

    // The work. Does nothing in the base.
    virtual void run();
    // Waits for the end of `other`; a thread with a message loop waits differently.
    virtual void wait(Thread* other);

protected:
    virtual void doStart();
    virtual void doStartTimer();

public:
    virtual bool isProcess() const noexcept;       // true for `core::Process` and below
    virtual bool isServerProcess() const noexcept; // false here; for subclasses
    virtual bool isUIThread() const noexcept;      // false here; for subclasses

    // Runs the thread once; a second call does nothing. When the process takes no more threads,
    // the state becomes Terminated and the interrupted flag is set.
    void start() { doStart(); }

    // Periodic execution of `run()`, each interval in milliseconds after the last run ended.
    void startTimer() { doStartTimer(); }
    void stopTimer();
    unsigned int getTimerInterval() const noexcept;
    void setTimerInterval(unsigned int milliseconds) noexcept;

    // Waits for the end of a running thread; returns at once for any other.
    void join();
    bool isAlive();
    State state();
    PoolType poolType() const noexcept { return poolType_; }

    // Sets the flag; nothing else happens: the thread must look.
    void interrupt();
    bool isInterrupted();
    // Reads and clears the flag of the calling thread; false on a foreign thread.
    static bool interrupted();

    static void sleep(unsigned int milliseconds);
    static void yield() noexcept;
    static pthread_t getId() noexcept;
    static pid_t getOSId() noexcept;             // the kernel's number
    static pthread_t getMainThreadId() noexcept; // the thread that ran CoreInit

    // ---- Per-thread storage.

    static TLSIndex allocTLS();
    // The values that threads hold under the index go at their next access to the slot.
    static void freeTLS(const TLSIndex& index);
    // Null for an index that was never set on this thread, or that was freed.
    TLSData* getTLSValue(const TLSIndex& index);
    // Takes `value` over and destroys a different one that stood there.
    void setTLSValue(const TLSIndex& index, TLSData* value);
    // Makes room for the slot.
    void checkTLSIndex(const TLSIndex& index);
    void clearTLSData() noexcept;
    // What a thread does at its end: clears the storage, then drops the security context.
    void destroyThreadState() noexcept;

    // ---- Settings of this thread in front of those of its process.
    //
    // Touched by the thread itself, or before it starts. A setting that was never set, or that was
    // reset, is that of the current process; without a process, what the system says.

    void setResourceLocale(const Locale& locale);
    Locale getResourceLocale() const;
    void resetResourceLocale() noexcept;

    void setNumericFormat(const NumericFormat& format);
    NumericFormat getNumericFormat() const;
    void resetNumericFormat() noexcept;

    void setDateFormat(const DateFormat& format);
    DateFormat getDateFormat() const;
    void resetDateFormat() noexcept;

    void setBoolFormat(const BoolFormat& format);
    BoolFormat getBoolFormat() const;
    void resetBoolFormat() noexcept;

    void setTimeZone(const TimeZone& zone);
    TimeZone getTimeZone() const;
    void resetTimeZone() noexcept;

    void setBeginningOfCentury(int year);
    int getBeginningOfCentury() const;
    void resetBeginningOfCentury() noexcept;

    // ---- Kept for others: interactive security, the memory monitor.

    bool getSafeMode() const noexcept { return safeMode_; }
    const stdx::ustring& getSpName() const noexcept { return securityProfileName_; }
    void setSafeMode(bool enabled, const stdx::ustring& securityProfileName);
    void setExecModuleSecurityContext(IUnknown* context) noexcept;
    IUnknown* getExecModuleSecurityContext() const noexcept { return securityContext_.get(); }
    void setStatisticTlsIndex(unsigned int index) noexcept { statisticTlsIndex_ = index; }
    unsigned int statisticTlsIndex() const noexcept { return statisticTlsIndex_; }

    // The counter of the exceptions made on this thread; lent.
    ExceptionCounter* exceptionsCount() const noexcept { return exceptionCounter_; }

    // The set of the process object that this thread runs in; null while it does not run.
    ThreadSet* threadSet() const noexcept { return threadSet_.load(std::memory_order_acquire); }

    // ---- For the pool.

    void threadMain();
    void timerMain();
    void timerMainEnd();

protected:
    void runAndCatch();
    // Joins the set of the calling thread's process, or ends refused; with the lock held.
    bool enter(ThreadSet* set);
    void leave();
    void set_state(State state);
    void set_interrupted(bool interrupted);
    void set_thread_set(ThreadSet* set) noexcept {
        threadSet_.store(set, std::memory_order_release);
    }
    void raise_end() { end_.raise(); }

    Mutex lock_;

private:
    struct TLSValue {
        std::uint32_t generation = 0;
        TLSData* data = nullptr;
    };

    template <class HandOver> void start_by(HandOver&& hand_over);
    void run_with_hook();

    std::atomic<State> state_ = State::New;
    PoolType poolType_;
    std::atomic<bool> interrupted_ = false;
    OneTimeSemaphore end_;
    std::atomic<ThreadSet*> threadSet_ = nullptr;
    // Counted boxes, null where the process's setting holds.
    InterfacePtr<ThreadSetting> resourceLocale_;
    InterfacePtr<ThreadSetting> numericFormat_;
    InterfacePtr<ThreadSetting> dateFormat_;
    InterfacePtr<ThreadSetting> boolFormat_;
    InterfacePtr<ThreadSetting> timeZone_;
    InterfacePtr<ThreadSetting> beginningOfCentury_;
    bool safeMode_ = false;
    stdx::ustring securityProfileName_;
    InterfacePtr<IUnknown> securityContext_;
    std::atomic<unsigned int> timerInterval_ = 0;
    std::atomic<ThreadTimer*> timer_ = nullptr;
    std::vector<TLSValue> storage_;
    unsigned int statisticTlsIndex_ = 0;
    ExceptionCounter* exceptionCounter_;
};

// Runs a function.
class ORBCORE_API FunctorThread final : public Thread {
public:
    explicit FunctorThread(std::function<void()> function);
    void run() override;

private:
    std::function<void()> function_;
};

// A thread that is not started yet, with one reference.
ORBCORE_API InterfacePtr<Thread> create_thread(const std::function<void()>& function);
ORBCORE_API InterfacePtr<Thread> create_thread(std::function<void()>&& function);

// The `core::Thread` of the calling thread, or null.
ORBCORE_API Thread* current_thread() noexcept;

// The current time, whole seconds, in the time zone of the calling thread.
ORBCORE_API Date current_thread_date();

// Installs a pair as the calling thread's current ones and restores the former at its end.
class ORBCORE_API ThreadAttach {
public:
    ThreadAttach(Thread* thread, SCOM_Process* process) noexcept;
    ~ThreadAttach();
    ThreadAttach(const ThreadAttach&) = delete;
    ThreadAttach& operator=(const ThreadAttach&) = delete;

private:
    Thread* formerThread_;
    SCOM_Process* formerProcess_;
};

// Waits until the caller's reference to `thread` is the only one: looks every 10 ms. False after
// `timeoutMs`, at the earliest after one look.
ORBCORE_API bool wait_unique(Thread* thread, unsigned int timeoutMs);

// The processors that are online.
ORBCORE_API unsigned int hardware_concurrency() noexcept;

// Notes the present place on the stack as the start of the calling thread.
ORBCORE_API void start_thread_resource_control() noexcept;
// True while the stack used since then is within 884,736 bytes, and where no start was noted.
ORBCORE_API bool check_stack_overflow() noexcept;

// If a service with this interface is bound, it runs the threads: it is up to it to call `run()`.
inline constexpr _GUID IID_IThreadRunHook = "76104703-b3bb-4b12-b397-6c8806e3d55f"_guid;

class IThreadRunHook : public IUnknown {
public:
    ORB_INTERFACE(IThreadRunHook, IID_IThreadRunHook)
    virtual void runThread(Thread* thread) = 0;
};

} // namespace core
