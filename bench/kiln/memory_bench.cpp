// An allocation through the default manager should cost what malloc costs, and a pooled buffer
// less than a block of its size, at any size.
#include <kiln/buffer_pools.h>
#include <kiln/memory.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <new>

namespace {

void object_by_kiln(benchmark::State& state) {
    for (auto _ : state) {
        void* const block = kiln_new(48);
        benchmark::DoNotOptimize(block);
        kiln_delete(block);
    }
}

void object_by_new(benchmark::State& state) {
    for (auto _ : state) {
        void* const block = ::operator new(48);
        benchmark::DoNotOptimize(block);
        ::operator delete(block);
    }
}

void pooled_buffer(benchmark::State& state) {
    kiln::BufferPool& pool = *kiln::buffer_pools().find(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        kiln::PooledBuffer buffer(pool);
        benchmark::DoNotOptimize(buffer.data());
    }
}

void malloc_buffer(benchmark::State& state) {
    for (auto _ : state) {
        void* const block = std::malloc(static_cast<std::size_t>(state.range(0)));
        benchmark::DoNotOptimize(block);
        std::free(block);
    }
}

BENCHMARK(object_by_kiln)->Name("object/orbcore");
BENCHMARK(object_by_new)->Name("object/operator new");
BENCHMARK(pooled_buffer)->Name("buffer/orbcore")->Arg(8192)->Arg(262'144);
BENCHMARK(malloc_buffer)->Name("buffer/malloc")->Arg(8192)->Arg(262'144);

} // namespace
