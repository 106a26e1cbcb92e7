// A raise and a wait that finds it raised, without the system's help; and the hand-over between two
// threads, which the system's wake-ups dominate.
#include <core/concurrency/Semaphore.h>

#include <benchmark/benchmark.h>

#include <thread>

#include <semaphore.h>

namespace {

class PlainSemaphore {
public:
    PlainSemaphore() { sem_init(&semaphore_, 0, 0); }
    void raise() { sem_post(&semaphore_); }
    void wait() { sem_wait(&semaphore_); }

private:
    sem_t semaphore_;
};

template <class Semaphore> void raise_and_wait(benchmark::State& state) {
    Semaphore semaphore;
    for (auto _ : state) {
        semaphore.raise();
        semaphore.wait();
    }
}

template <class Semaphore> void there_and_back(benchmark::State& state) {
    Semaphore there, back;
    bool over = false;
    std::thread other([&] {
        while (true) {
            there.wait();
            if (over) return;
            back.raise();
        }
    });
    for (auto _ : state) {
        there.raise();
        back.wait();
    }
    over = true;
    there.raise();
    other.join();
}

BENCHMARK(raise_and_wait<core::Semaphore>)->Name("raise_and_wait/orbcore");
BENCHMARK(raise_and_wait<PlainSemaphore>)->Name("raise_and_wait/sem_t");
BENCHMARK(there_and_back<core::Semaphore>)->Name("there_and_back/orbcore")->UseRealTime();
BENCHMARK(there_and_back<PlainSemaphore>)->Name("there_and_back/sem_t")->UseRealTime();

} // namespace
