// Failure, events and messages, beside what a program would use without them. A throw should cost
// little more than one of the standard exceptions: the capture of the stack is some 10 ns a frame,
// and no text is made. An exception with a cause captures nothing.

#include <core/component/EventService.h>
#include <core/component/Exception.h>
#include <core/component/IllegalStateException.h>
#include <core/component/Logger.h>
#include <core/component/Messages.h>
#include <core/component/Object.h>
#include <core/component/SCOM_Process.h>
#include <core/component/StackTrace.h>
#include <core/platform/version.h>
#include <core/runtime/CoreInit.h>
#include <core/runtime/Process.h>

#include <benchmark/benchmark.h>

#include <execinfo.h>

#include <stdexcept>
#include <vector>

#ifdef ORBCORE_PEER_QT
#include <QObject>
#endif

ORBCORE_MODULE("bench", ORBCORE_VERSION ".0");

namespace {

using namespace core::literals;

// The process of all benchmarks; it lives as long as the program.
const bool in_process = [] {
    CoreInit();
    auto& host = *new core::Process;
    host.construct(nullptr);
    host.init(nullptr);
    return true;
}();

// Calls at the bottom of so many frames.
template <class Call> [[gnu::noinline]] void from_depth(std::int64_t depth, const Call& call) {
    if (depth > 1)
        from_depth(depth - 1, call);
    else
        call();
    asm volatile("");
}

template <class Failure> void throw_and_catch(benchmark::State& state, const Failure& make) {
    from_depth(state.range(0), [&] {
        for (auto _ : state) try {
                throw make();
            } catch (const decltype(make())& failure) {
                benchmark::DoNotOptimize(&failure);
            }
    });
}

void throw_ours(benchmark::State& state) {
    throw_and_catch(state, [] { return core::Exception(u"The table is full"); });
}
void throw_ours_with_cause(benchmark::State& state) {
    const auto cause = core::Exception(u"cause").object();
    throw_and_catch(state, [&] { return core::Exception(u"The table is full", cause.get()); });
}
void throw_ours_with_message(benchmark::State& state) {
    throw_and_catch(state, [] { return core::IllegalStateException(); });
}
void throw_standard(benchmark::State& state) {
    throw_and_catch(state, [] { return std::runtime_error("The table is full"); });
}
BENCHMARK(throw_standard)->Arg(1)->Arg(30);
BENCHMARK(throw_ours)->Arg(1)->Arg(30);
BENCHMARK(throw_ours_with_cause)->Arg(1)->Arg(30);
BENCHMARK(throw_ours_with_message)->Arg(1)->Arg(30);

void capture_ours(benchmark::State& state) {
    from_depth(state.range(0), [&] {
        for (auto _ : state) benchmark::DoNotOptimize(core::get_stack_trace(3, 100));
    });
}
void capture_libc(benchmark::State& state) {
    from_depth(state.range(0), [&] {
        void* frames[100];
        for (auto _ : state) benchmark::DoNotOptimize(backtrace(frames, 100));
    });
}
BENCHMARK(capture_libc)->Arg(1)->Arg(30)->Arg(300);
BENCHMARK(capture_ours)->Arg(1)->Arg(30)->Arg(300);

void text_of_a_trace(benchmark::State& state) {
    from_depth(30, [&] {
        const core::Exception exception(u"x");
        for (auto _ : state) benchmark::DoNotOptimize(exception.creationStackTrace());
    });
}
BENCHMARK(text_of_a_trace);

void exception_object(benchmark::State& state) {
    const core::Exception exception(u"The table is full");
    for (auto _ : state) benchmark::DoNotOptimize(exception.object());
}
BENCHMARK(exception_object);

void load_message(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(core::load_core_wstring("IDS_ERR_ILLEGAL_STATE"));
}
BENCHMARK(load_message);

void logger_without_sink(benchmark::State& state) {
    static constinit const core::SCOM_StaticLogger logger("bench", "Bench");
    for (auto _ : state) benchmark::DoNotOptimize(logger.isEnabled(core::SCOM_LogLevel::Trace));
}
BENCHMARK(logger_without_sink);

// ---- Events: one firing to so many recipients.

constexpr _GUID kEvent = "70000000-0000-4000-8000-000000000001"_guid;

class Listener
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<Listener>
    , public core::IEventRecipientImpl<Listener> {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Listener, core::IEventRecipient>();
    }
    void onEvent(const _GUID&, void* param, void*) override { ++*static_cast<long*>(param); }
};

void fire_event(benchmark::State& state) {
    std::vector<core::InterfacePtr<core::SCOM_Object<Listener>>> listeners;
    for (std::int64_t i = 0; i != state.range(0); ++i) {
        listeners.push_back(core::make_object<Listener>());
        listeners.back()->subscribe(kEvent);
    }
    auto* const events = core::get_service<core::IEventService>();
    long heard = 0;
    for (auto _ : state) events->fireEvent(kEvent, &heard, nullptr);
    if (heard != static_cast<long>(state.iterations()) * state.range(0))
        state.SkipWithError("not all recipients heard");
}
BENCHMARK(fire_event)->Arg(0)->Arg(1)->Arg(100);

#ifdef ORBCORE_PEER_QT
void fire_event_qt(benchmark::State& state) {
    QObject source;
    std::vector<std::unique_ptr<QObject>> listeners;
    long heard = 0;
    for (std::int64_t i = 0; i != state.range(0); ++i) {
        listeners.push_back(std::make_unique<QObject>());
        QObject::connect(&source, &QObject::objectNameChanged, listeners.back().get(),
                         [&heard](const QString&) { ++heard; });
    }
    bool other = false;
    const QString names[] = {"a", "b"};
    for (auto _ : state) source.setObjectName(names[other = !other]);
    if (heard != static_cast<long>(state.iterations()) * state.range(0))
        state.SkipWithError("not all recipients heard");
}
BENCHMARK(fire_event_qt)->Arg(1)->Arg(100);
#endif

} // namespace
