// Handing work to other threads, beside thread pools and threads of others. Names are
// `<what>/<who>`.
//
// A started thread whose worker still looks for its next job should cost a fraction of a wake-up; a
// tiny task, with a future each, not more than the peer's.

#include <core/component/Module.h>
#include <core/concurrency/Semaphore.h>
#include <core/concurrency/Thread.h>
#include <core/concurrency/async.h>
#include <core/runtime/CoreInit.h>
#include <core/runtime/Process.h>

#include <benchmark/benchmark.h>

#include <atomic>
#include <future>
#include <thread>
#include <vector>

#if __has_include(<boost/asio/thread_pool.hpp>)
#define ORBCORE_PEER_ASIO
#include <boost/asio/post.hpp>
#include <boost/asio/thread_pool.hpp>
#include <boost/asio/use_future.hpp>
#endif
#ifdef ORBCORE_PEER_QT
#include <QRunnable>
#include <QThreadPool>
#endif

ORBCORE_MODULE("bench", "1.0.0.0");

namespace {

constexpr int kTasks = 100'000;

// The process that the threads of the library run in.
class Host {
public:
    Host() {
        host_.construct(nullptr);
        host_.init(nullptr);
    }
    ~Host() { host_.term(); }

private:
    core::CoreInitManager init_;
    core::Process host_;
};

// ---- One piece of work, waited for. `pause` lets the workers fall asleep first.

template <class Work> void hand_over(benchmark::State& state, bool pause, Work work) {
    for (auto _ : state) {
        if (pause) {
            state.PauseTiming();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            state.ResumeTiming();
        }
        work();
    }
}

void start_and_join() {
    const auto thread = core::create_thread([] {});
    thread->start();
    thread->join();
}

void start_orbcore(benchmark::State& state) {
    const Host host;
    hand_over(state, false, start_and_join);
}
BENCHMARK(start_orbcore)->Name("start and join/orbcore")->UseRealTime();

void start_asleep_orbcore(benchmark::State& state) {
    const Host host;
    hand_over(state, true, start_and_join);
}
BENCHMARK(start_asleep_orbcore)->Name("start and join, asleep/orbcore")->UseRealTime();

void async_and_get_orbcore(benchmark::State& state) {
    const Host host;
    hand_over(state, false, [] { core::async([] {}).get(); });
}
BENCHMARK(async_and_get_orbcore)->Name("task and get/orbcore")->UseRealTime();

void start_std(benchmark::State& state) {
    hand_over(state, false, [] { std::async(std::launch::async, [] {}).get(); });
}
BENCHMARK(start_std)->Name("start and join/std::async")->UseRealTime();

// ---- Many tiny tasks, each with a future

void tasks_orbcore(benchmark::State& state) {
    const Host host;
    std::atomic<int> ran = 0;
    std::vector<core::Future<void>> tasks(kTasks);
    for (auto _ : state) {
        for (auto& task : tasks)
            task = core::async([&] { ran.fetch_add(1, std::memory_order_relaxed); });
        for (auto& task : tasks) task.get();
    }
    state.SetItemsProcessed(state.iterations() * kTasks);
}
BENCHMARK(tasks_orbcore)->Name("tiny tasks/orbcore")->UseRealTime()->Unit(benchmark::kMillisecond);

void tasks_std(benchmark::State& state) {
    std::atomic<int> ran = 0;
    std::vector<std::future<void>> tasks(1000); // a thread each: more would not fit
    for (auto _ : state) {
        for (int batch = 0; batch != kTasks / 1000; ++batch) {
            for (auto& task : tasks) task = std::async(std::launch::async, [&] { ++ran; });
            for (auto& task : tasks) task.get();
        }
    }
    state.SetItemsProcessed(state.iterations() * kTasks);
}
BENCHMARK(tasks_std)->Name("tiny tasks/std::async")->UseRealTime()->Unit(benchmark::kMillisecond);

#ifdef ORBCORE_PEER_ASIO

void post_and_wait(boost::asio::thread_pool& pool) {
    core::Semaphore done;
    boost::asio::post(pool, [&] { done.raise(); });
    done.wait();
}

void start_asio(benchmark::State& state) {
    boost::asio::thread_pool pool(std::thread::hardware_concurrency());
    hand_over(state, false, [&] { post_and_wait(pool); });
}
BENCHMARK(start_asio)->Name("start and join/asio")->UseRealTime();

void start_asleep_asio(benchmark::State& state) {
    boost::asio::thread_pool pool(std::thread::hardware_concurrency());
    hand_over(state, true, [&] { post_and_wait(pool); });
}
BENCHMARK(start_asleep_asio)->Name("start and join, asleep/asio")->UseRealTime();

void task_asio(benchmark::State& state) {
    boost::asio::thread_pool pool(std::thread::hardware_concurrency());
    hand_over(state, false, [&] { boost::asio::post(pool, boost::asio::use_future([] {})).get(); });
}
BENCHMARK(task_asio)->Name("task and get/asio")->UseRealTime();

void tasks_asio(benchmark::State& state) {
    boost::asio::thread_pool pool(std::thread::hardware_concurrency());
    std::atomic<int> ran = 0;
    std::vector<std::future<void>> tasks(kTasks);
    for (auto _ : state) {
        for (auto& task : tasks)
            task = boost::asio::post(pool, boost::asio::use_future([&] {
                                         ran.fetch_add(1, std::memory_order_relaxed);
                                     }));
        for (auto& task : tasks) task.get();
    }
    state.SetItemsProcessed(state.iterations() * kTasks);
}
BENCHMARK(tasks_asio)->Name("tiny tasks/asio")->UseRealTime()->Unit(benchmark::kMillisecond);

#endif

#ifdef ORBCORE_PEER_QT

// Without futures: the peer has none of this kind.
void tasks_qt(benchmark::State& state) {
    QThreadPool pool;
    std::atomic<int> ran = 0;
    for (auto _ : state) {
        for (int task = 0; task != kTasks; ++task)
            pool.start([&] { ran.fetch_add(1, std::memory_order_relaxed); });
        pool.waitForDone();
    }
    state.SetItemsProcessed(state.iterations() * kTasks);
}
BENCHMARK(tasks_qt)->Name("tiny tasks/QThreadPool")->UseRealTime()->Unit(benchmark::kMillisecond);

#endif

} // namespace
