// Substring search beside the standard library, QString, ICU and memmem. What should hold: on
// ordinary text half of QString's time or less, for bytes half of memmem's; on text that repeats
// itself the time grows with the length of the text alone.
#include <elm/string>

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

#ifdef ORBCORE_PEER_QT
#include <QString>
#endif
#ifdef ORBCORE_PEER_ICU
#include <unicode/unistr.h>
#endif

namespace {

struct Job {
    std::u16string text, needle;
};

// Words of a few letters with a needle that stands at the very end.
Job ordinary(std::size_t n) {
    constexpr std::u16string_view kWords[] = {u"the ",  u"report ", u"of ",   u"every ",
                                              u"year ", u"holds ",  u"sums ", u"and names "};
    Job job{{}, u"total amount"};
    for (unsigned int i = 1; job.text.size() < n; i = i * 1103515245u + 12345u)
        job.text += kWords[i >> 29];
    job.text += job.needle;
    return job;
}

// A needle that agrees with every place of the text but for its middle.
Job hostile(std::size_t n) {
    Job job{std::u16string(n, u'a'), std::u16string(n / 8 + 2, u'a')};
    job.needle[job.needle.size() / 2] = u'b';
    return job;
}

std::string narrow(const std::u16string& s) {
    return std::string(s.begin(), s.end());
}

template <class Find> void run(benchmark::State& state, const Find& find) {
    for (auto _ : state) benchmark::DoNotOptimize(find());
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

using MakeJob = Job (*)(std::size_t);

template <MakeJob kMake> void ours(benchmark::State& state) {
    const Job job = kMake(static_cast<std::size_t>(state.range(0)));
    const stdx::ustring text(job.text), needle(job.needle);
    run(state, [&] { return text.find(needle); });
}

template <MakeJob kMake> void ours_backwards(benchmark::State& state) {
    const Job job = kMake(static_cast<std::size_t>(state.range(0)));
    const stdx::ustring text(job.needle + job.text.substr(0, job.text.size() - job.needle.size()));
    const stdx::ustring needle(job.needle);
    run(state, [&] { return text.rfind(needle); });
}

template <MakeJob kMake> void standard(benchmark::State& state) {
    const Job job = kMake(static_cast<std::size_t>(state.range(0)));
    run(state, [&] { return job.text.find(job.needle); });
}

template <MakeJob kMake> void ours_on_bytes(benchmark::State& state) {
    const Job job = kMake(static_cast<std::size_t>(state.range(0)));
    const std::string text = narrow(job.text), needle = narrow(job.needle);
    run(state, [&] { return elm::memmem(text.data(), text.size(), needle.data(), needle.size()); });
}

template <MakeJob kMake> void memmem_of_libc(benchmark::State& state) {
    const Job job = kMake(static_cast<std::size_t>(state.range(0)));
    const std::string text = narrow(job.text), needle = narrow(job.needle);
    run(state, [&] { return ::memmem(text.data(), text.size(), needle.data(), needle.size()); });
}

BENCHMARK_TEMPLATE(ours, ordinary)->Name("find/orbcore")->Arg(30)->Arg(1000)->Arg(1'000'000);
BENCHMARK_TEMPLATE(standard, ordinary)->Name("find/std")->Arg(30)->Arg(1000)->Arg(1'000'000);
BENCHMARK_TEMPLATE(ours_backwards, ordinary)->Name("rfind/orbcore")->Arg(1000);
BENCHMARK_TEMPLATE(ours, hostile)->Name("find_hostile/orbcore")->Arg(10'000)->Arg(100'000);
BENCHMARK_TEMPLATE(standard, hostile)->Name("find_hostile/std")->Arg(10'000);
BENCHMARK_TEMPLATE(ours_on_bytes, ordinary)
    ->Name("memmem/orbcore")
    ->Arg(30)
    ->Arg(1000)
    ->Arg(1'000'000);
BENCHMARK_TEMPLATE(memmem_of_libc, ordinary)
    ->Name("memmem/libc")
    ->Arg(30)
    ->Arg(1000)
    ->Arg(1'000'000);
BENCHMARK_TEMPLATE(ours_on_bytes, hostile)->Name("memmem_hostile/orbcore")->Arg(100'000);
BENCHMARK_TEMPLATE(memmem_of_libc, hostile)->Name("memmem_hostile/libc")->Arg(100'000);

#ifdef ORBCORE_PEER_QT
template <MakeJob kMake> void qt(benchmark::State& state) {
    const Job job = kMake(static_cast<std::size_t>(state.range(0)));
    const QString text = QString::fromStdU16String(job.text);
    const QString needle = QString::fromStdU16String(job.needle);
    run(state, [&] { return text.indexOf(needle); });
}
BENCHMARK_TEMPLATE(qt, ordinary)->Name("find/QString")->Arg(30)->Arg(1000)->Arg(1'000'000);
BENCHMARK_TEMPLATE(qt, hostile)->Name("find_hostile/QString")->Arg(10'000);
#endif

#ifdef ORBCORE_PEER_ICU
template <MakeJob kMake> void icu_find(benchmark::State& state) {
    const Job job = kMake(static_cast<std::size_t>(state.range(0)));
    const icu::UnicodeString text(job.text.data(), static_cast<std::int32_t>(job.text.size()));
    const icu::UnicodeString needle(job.needle.data(),
                                    static_cast<std::int32_t>(job.needle.size()));
    run(state, [&] { return text.indexOf(needle); });
}
BENCHMARK_TEMPLATE(icu_find, ordinary)->Name("find/ICU")->Arg(30)->Arg(1000)->Arg(1'000'000);
BENCHMARK_TEMPLATE(icu_find, hostile)->Name("find_hostile/ICU")->Arg(10'000);
#endif

} // namespace
