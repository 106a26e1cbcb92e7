// The string family beside std::string, std::u16string, QString and ICU. What should hold: a copy
// of a long string costs one atomic pair, whatever its length, and is no slower than QString's;
// short strings and appending are no slower than std::u16string; comparison and equality are no
// slower than memcmp plus 5 ns.
#include <elm/string>

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#ifdef ORBCORE_PEER_QT
#include <QString>
#endif
#ifdef ORBCORE_PEER_ICU
#include <unicode/unistr.h>
#endif

namespace {

using stdx::ustring;

// The peers differ in how text comes in and units are counted; all else is spelled alike.
template <class S> struct Peer {
    static S make(const char16_t* p, std::size_t n) {
        return S(p, static_cast<typename S::size_type>(n));
    }
    static void push_back(S& s, char16_t c) { s.push_back(c); }
};

#ifdef ORBCORE_PEER_QT
template <> struct Peer<QString> {
    static QString make(const char16_t* p, std::size_t n) {
        return QString(reinterpret_cast<const QChar*>(p), static_cast<int>(n));
    }
    static void push_back(QString& s, char16_t c) { s.push_back(QChar(c)); }
};
#define ORB_BENCH_QT(JOB, NAME, ...) ORB_BENCH_ONE(JOB, NAME, "QString", QString) __VA_ARGS__
#else
#define ORB_BENCH_QT(...)
#endif

#ifdef ORBCORE_PEER_ICU
template <> struct Peer<icu::UnicodeString> {
    static icu::UnicodeString make(const char16_t* p, std::size_t n) {
        return icu::UnicodeString(p, static_cast<std::int32_t>(n));
    }
    static void push_back(icu::UnicodeString& s, char16_t c) { s.append(c); }
};
#define ORB_BENCH_ICU(JOB, NAME, ...)                                                              \
    ORB_BENCH_ONE(JOB, NAME, "ICU", icu::UnicodeString) __VA_ARGS__
#else
#define ORB_BENCH_ICU(...)
#endif

#define ORB_BENCH_ONE(JOB, NAME, PEER, S) BENCHMARK_TEMPLATE(JOB, S)->Name(NAME "/" PEER)
// One job over all peers, with the arguments behind it.
#define ORB_BENCH_ALL(JOB, NAME, ...)                                                              \
    ORB_BENCH_ONE(JOB, NAME, "orbcore", ustring) __VA_ARGS__;                                      \
    ORB_BENCH_ONE(JOB, NAME, "std", std::u16string) __VA_ARGS__;                                   \
    ORB_BENCH_QT(JOB, NAME, __VA_ARGS__);                                                          \
    ORB_BENCH_ICU(JOB, NAME, __VA_ARGS__)

template <class S> void construct(benchmark::State& state) {
    const std::u16string source(static_cast<std::size_t>(state.range(0)), u'x');
    for (auto _ : state) {
        S s = Peer<S>::make(source.data(), source.size());
        benchmark::DoNotOptimize(s);
    }
}
ORB_BENCH_ALL(construct, "construct", ->Arg(4)->Arg(5)->Arg(6)->Arg(1000));

template <class S> void copy(benchmark::State& state) {
    const S source = Peer<S>::make(std::u16string(100'000, u'x').data(),
                                   static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        S s = source;
        benchmark::DoNotOptimize(s);
    }
}
ORB_BENCH_ALL(copy, "copy", ->Arg(4)->Arg(6)->Arg(100'000));

template <class S> void append_by_one(benchmark::State& state) {
    for (auto _ : state) {
        S s;
        for (auto i = state.range(0); i > 0; --i) Peer<S>::push_back(s, u'x');
        benchmark::DoNotOptimize(s);
    }
}
ORB_BENCH_ALL(append_by_one, "append_by_one", ->Arg(5)->Arg(1000));

template <class S> void concatenate(benchmark::State& state) {
    const auto n = static_cast<std::size_t>(state.range(0));
    const S a = Peer<S>::make(std::u16string(n, u'x').data(), n);
    const S b = Peer<S>::make(std::u16string(n, u'y').data(), n);
    for (auto _ : state) {
        S s = a + b;
        benchmark::DoNotOptimize(s);
    }
}
ORB_BENCH_ALL(concatenate, "concatenate", ->Arg(2)->Arg(20)->Arg(1000));

template <class S> void equal(benchmark::State& state) {
    const std::u16string source(static_cast<std::size_t>(state.range(0)), u'x');
    const S a = Peer<S>::make(source.data(), source.size());
    const S b = Peer<S>::make(source.data(), source.size());
    for (auto _ : state) benchmark::DoNotOptimize(a == b);
}
ORB_BENCH_ALL(equal, "equal", ->Arg(5)->Arg(50)->Arg(10'000));

template <class S> void order(benchmark::State& state) {
    std::u16string source(static_cast<std::size_t>(state.range(0)), u'x');
    const S a = Peer<S>::make(source.data(), source.size());
    source.back() = u'y';
    const S b = Peer<S>::make(source.data(), source.size());
    for (auto _ : state) benchmark::DoNotOptimize(a < b);
}
ORB_BENCH_ALL(order, "order", ->Arg(5)->Arg(50)->Arg(10'000));

// The floor of both.
void memory_compare(benchmark::State& state) {
    std::u16string a(static_cast<std::size_t>(state.range(0)), u'x');
    std::u16string b = a;
    for (auto _ : state) {
        benchmark::DoNotOptimize(a.data());
        benchmark::DoNotOptimize(std::memcmp(a.data(), b.data(), 2 * a.size()));
    }
}
BENCHMARK(memory_compare)->Name("equal/memcmp")->Arg(5)->Arg(50)->Arg(10'000);
BENCHMARK(memory_compare)->Name("order/memcmp")->Arg(5)->Arg(50)->Arg(10'000);

} // namespace
