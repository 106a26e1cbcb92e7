#include <core/runtime/Process.h>

#include <core/component/EventService.h>
#include <core/component/SCOM_Exception.h>
#include <core/concurrency/ThreadPool.h>

#include "ComponentUnload.h"
#include "ProcessData.h"
#include "concurrency/CurrentPair.h"
#include "concurrency/WorkerDrain.h"

#include <utility>

namespace core {
namespace {

void fire(const _GUID& event, SCOM_Process* process) {
    if (auto* const events = get_service<IEventService>())
        events->fireEvent(event, nullptr, process);
}

ProcessDataImpl& impl_of(SCOM_ProcessData& data) noexcept {
    return static_cast<ProcessDataImpl&>(data);
}

// Ends what runs in the process; the caller is in it. Several process objects may share one logical
// process: the first to get here ends it.
void end_process(SCOM_ProcessImpl& process) {
    if (!process.begin_termination()) return;
    fire(kProcessDeathEvent, &process);
    process.end_services_and_components();
}

} // namespace

Process::Process() : Thread(PoolType::Separate), ThreadSet(static_cast<Thread&>(*this)) {}

Process::~Process() = default;

void Process::construct(SCOM_Module* module) {
    module_ = module;
}

bool Process::isProcess() const noexcept {
    return true;
}

// ---- Entering

void Process::init(SCOM_ProcessData* joined) {
    const InterfacePtr<SCOM_ProcessData> own = data();
    if (own && own.get() != joined) throw ProcessInitException();
    const bool isNew = !joined;
    if (isNew)
        set_data({new ProcessDataImpl, true});
    else if (!own)
        set_data({joined, true});

    formerPairs_.push_back({current_pair.thread, current_pair.process});
    current_pair = {this, process()};
    set_thread_set(this);
    if (!isNew) return;
    try {
        start_up();
        accept_threads();
    } catch (...) {
        const InterfacePtr<SCOM_ProcessData> failed = data();
        end_process(impl_of(*failed).impl());
        set_data(nullptr);
        restore_pair();
        throw;
    }
}

void Process::start_up() {
    SCOM_ProcessImpl& process = impl_of(*data()).impl();
    this_module().registerAll(&process, &process);
    if (module_) module_->registerAll(&process, &process);
}

void Process::restore_pair() noexcept {
    const Pair former = formerPairs_.back();
    formerPairs_.pop_back();
    current_pair = {former.thread, former.process};
    set_thread_set(nullptr);
}

// ---- Leaving

void Process::term() {
    if (formerPairs_.empty()) return;
    if (formerPairs_.size() > 1) {
        restore_pair();
        set_thread_set(this);
        return;
    }
    const InterfacePtr<SCOM_ProcessData> ended = data();
    SCOM_ProcessImpl& process = impl_of(*ended).impl();

    fire(kProcessTermEvent, &process);
    wait_for_all();
    drain_workers(*this);
    end_process(process);
    destroyThreadState();
    if (!component_unload_is_disabled()) process.close_libraries();
    set_data(nullptr);
    restore_pair();
}

void Process::shutdown() noexcept {
    term();
}

void Process::doStart() {
    {
        const std::lock_guard guard(lock_);
        if (state() != State::New) return;
        set_state(State::Running);
    }
    const bool enters = !current_process();
    // Whatever ends the run, the process ends in order; the first failure is the one that counts.
    try {
        if (enters) init(nullptr);
        runAndCatch();
    } catch (...) {
        set_state(State::Terminated);
        if (enters) term();
        raise_end();
        throw;
    }
    if (enters) term();
    raise_end();
}

// ---- The other ways in

ProcessThread::ProcessThread(SCOM_ProcessData* data) {
    set_data({data, true});
}

void ProcessThread::construct() {
    accept_threads();
}

void ProcessThread::doStart() {
    const std::lock_guard guard(lock_);
    if (state() != State::New) return;
    set_thread_set(this);
    set_state(State::Running);
    set_interrupted(false);
    thread_pool(poolType())->schedule(process(), this);
}

AttachedThread::AttachedThread(ThreadSet& process)
    : Thread(PoolType::Separate), process_(process) {}

void AttachedThread::doStart() {
    const ThreadAttach attach(this, process_.process());
    {
        const std::lock_guard guard(lock_);
        if (state() != State::New || !enter(&process_)) return;
    }
    threadMain();
}

CallingThread::CallingThread(ThreadSet& process) : Thread(PoolType::Separate), process_(process) {}

CallingThread::Attached CallingThread::attach() {
    const std::lock_guard guard(lock_);
    if (state() == State::Running) return Attached::Already;
    if (state() == State::Terminated || !process_.add(*this)) {
        set_interrupted(true);
        return Attached::Refused;
    }
    set_thread_set(&process_);
    set_state(State::Running);
    return Attached::Joined;
}

// The end is a latch, so it is raised where it is the last one: from the moment on that the process
// accepts no more threads, it may be waiting for this one, and this one cannot come in again. Which
// of the two it is, is told under the same lock as the leaving itself; the process is not touched
// after it.
void CallingThread::detach() {
    const std::lock_guard guard(lock_);
    if (state() != State::Running) return;
    set_thread_set(nullptr);
    const bool mayComeAgain = process_.remove(*this);
    set_state(mayComeAgain ? State::New : State::Terminated);
    if (!mayComeAgain) raise_end();
}

void CallingThread::call(const std::function<void()>& function) {
    const InterfacePtr<CallingThread> self(this, true);
    if (attach() != Attached::Joined) {
        function();
        return;
    }
    struct Detach {
        CallingThread& thread;
        ~Detach() { thread.detach(); }
    } detach{*this};
    const ThreadAttach pair(this, process_.process());
    function();
}

} // namespace core
