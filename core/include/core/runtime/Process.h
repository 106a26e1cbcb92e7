// The process object of a host, and the other ways into a logical process.
//
//   class Host : public core::Process {
//       void run() override { … }
//   };
//
//   int main() {
//       core::CoreInitManager init;
//       Host host;
//       host.construct(&core::this_module());   // or nullptr: no classes of its own
//       host.start();                            // runs on this thread, returns when it has ended
//   }
//
// A process object is a thread and the set of the threads that run in it; it waits for them before
// it ends. docs/threads.md tells how a process ends.
#pragma once

#include <core/component/Module.h>
#include <core/concurrency/ThreadSet.h>

#include <vector>

namespace core {

class ORBCORE_API Process
    : public Thread
    , public ThreadSet {
public:
    Process();
    ~Process() override;

    // The module whose classes this host registers; null for none. Not owned.
    void construct(SCOM_Module* module);

    // Enters the logical process on the calling thread: null makes a new one and registers the
    // classes of this library and of the host in it; other data joins an existing one. Throws
    // `core::ProcessInitException` on an object that is in another one, and whatever registration
    // throws (then nothing of the process is left).
    void init(SCOM_ProcessData* data);
    // Leaves it again: the last `term` of an object ends its threads, its services and its
    // components, in the order that docs/threads.md tells.
    void term();
    // The same; an exception stops the program.
    void shutdown() noexcept;

    // The logical process, or null; a counted reference.
    InterfacePtr<SCOM_ProcessData> processData() const { return data(); }

    bool isProcess() const noexcept override;

protected:
    // `init`, `runAndCatch` and `term`, on the calling thread; without `init` and `term` where the
    // thread is in a process already.
    void doStart() override;

private:
    struct Pair {
        Thread* thread;
        SCOM_Process* process;
    };

    void start_up();
    void restore_pair() noexcept;

    SCOM_Module* module_ = nullptr;
    std::vector<Pair> formerPairs_; // what `init` replaced
};

// A thread of a pool that is a process object of its own within an existing logical process: it is
// not one of that process's threads.
class ORBCORE_API ProcessThread : public Process {
public:
    explicit ProcessThread(SCOM_ProcessData* data);

    // Marks it as accepting threads.
    void construct();

protected:
    void doStart() override;
};

// Runs `run()` on the calling operating-system thread inside `process`; `start` returns at its end.
class ORBCORE_API AttachedThread : public Thread {
public:
    explicit AttachedThread(ThreadSet& process);

protected:
    void doStart() override;

private:
    ThreadSet& process_;
};

// Lets a foreign operating-system thread enter `process` for the time of one call:
//
//   core::InterfacePtr<core::CallingThread> entry(new core::CallingThread(host), true);
//   entry->call([] { … });
//
// It may come in any number of times. A process that ends waits until it has left; then it is over.
class ORBCORE_API CallingThread final : public Thread {
public:
    enum class Attached : int { Joined = 0, Already = 1, Refused = 3 };

    explicit CallingThread(ThreadSet& process);

    Attached attach();
    void detach();
    // Calls `function` inside the process, or just calls it where it cannot enter. Exceptions pass.
    void call(const std::function<void()>& function);

private:
    ThreadSet& process_;
};

} // namespace core
