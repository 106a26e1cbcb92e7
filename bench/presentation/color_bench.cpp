// Color arithmetic, without a peer. What should hold: a conversion there and back and a blend take
// some tens of nanoseconds at most, a contrast search less than ten microseconds, as a screen asks
// for one per text.
#include <core/presentation/Color.h>
#include <core/presentation/ColorBlending.h>
#include <core/presentation/ColorContrast.h>

#include <benchmark/benchmark.h>

namespace {

constexpr unsigned kCount = 1024;

// All of the cube, in an order that branches cannot learn.
unsigned color(unsigned i) {
    return i * 0x9e3779b1u >> 8;
}

template <class Job> void for_each_color(benchmark::State& state, const Job& job) {
    for (auto _ : state)
        for (unsigned i = 0; i != kCount; ++i) benchmark::DoNotOptimize(job(color(i)));
    state.SetItemsProcessed(state.iterations() * kCount);
}

void hsv(benchmark::State& state) {
    for_each_color(state, [](unsigned c) {
        return unsigned(core::RGB_Color(core::HSV_Color(core::RGB_Color(c))));
    });
}

void hsl(benchmark::State& state) {
    for_each_color(state, [](unsigned c) {
        return unsigned(core::RGB_Color(core::HSL_Color(core::RGB_Color(c))));
    });
}

void mix(benchmark::State& state) {
    for_each_color(
        state, [](unsigned c) { return core::blendColors(core::BlendingType::Mix, c, ~c, 77); });
}

void contrast(benchmark::State& state) {
    for_each_color(state, [](unsigned c) { return core::compute_contrast(c, 0x336699); });
}

void search(benchmark::State& state) {
    for_each_color(state, [](unsigned c) { return core::adjust_fore_color(0x777777, c, 4.5); });
}

BENCHMARK(hsv)->Name("hsv_and_back/orbcore");
BENCHMARK(hsl)->Name("hsl_and_back/orbcore");
BENCHMARK(mix)->Name("mix/orbcore");
BENCHMARK(contrast)->Name("contrast/orbcore");
BENCHMARK(search)->Name("adjust_fore_color/orbcore");

} // namespace
