// The matcher beside ICU's own, called direct. What should hold: it adds a few nanoseconds to a
// call, so that on everything but the smallest matches the ratio is 1; copying a match out of
// ICU's string is paid by the length of the match.
#include <core/text/Matcher.h>

#include <benchmark/benchmark.h>

#include <string>

#ifdef ORBCORE_PEER_ICU
#include <unicode/regex.h>
#endif

namespace {

constexpr char16_t kWord[] = u"[a-z]+";
constexpr char16_t kDate[] = u"(\\d{4})-(\\d{2})-(\\d{2})";

// Words with a date every hundred of them.
std::u16string words(std::size_t size) {
    std::u16string text;
    for (unsigned i = 1; text.size() < size; ++i)
        text += i % 100 == 0 ? u"2024-05-17 " : u"amount ";
    return text;
}

void find_all(benchmark::State& state, const char16_t* pattern) {
    core::Matcher matcher(pattern, stdx::ustring(words(static_cast<std::size_t>(state.range(0)))));
    for (auto _ : state) {
        unsigned found = 0;
        matcher.reset();
        while (matcher.find()) found += matcher.group().size();
        benchmark::DoNotOptimize(found);
    }
}

// The whole life of a matcher, as `matches_pattern` leads it.
void match_once(benchmark::State& state) {
    const stdx::ustring pattern(kDate), text(u"2024-05-17");
    for (auto _ : state) benchmark::DoNotOptimize(core::matches_pattern(pattern, text));
}

void match_next_text(benchmark::State& state) {
    core::Matcher matcher(kDate);
    const stdx::ustring text(u"2024-05-17");
    for (auto _ : state) benchmark::DoNotOptimize(matcher.reset(text).matches());
}

// A time limit costs a look at the clock for each call.
void find_all_limited(benchmark::State& state) {
    core::Matcher matcher(kWord, stdx::ustring(words(static_cast<std::size_t>(state.range(0)))));
    matcher.setTimeLimit(std::chrono::seconds(10));
    for (auto _ : state) {
        unsigned found = 0;
        matcher.reset();
        while (matcher.find()) ++found;
        benchmark::DoNotOptimize(found);
    }
}

BENCHMARK_CAPTURE(find_all, words, kWord)->Name("find_words/orbcore")->Arg(100)->Arg(100'000);
BENCHMARK_CAPTURE(find_all, dates, kDate)->Name("find_dates/orbcore")->Arg(100'000);
BENCHMARK(match_once)->Name("match_once/orbcore");
BENCHMARK(match_next_text)->Name("match_next_text/orbcore");
BENCHMARK(find_all_limited)->Name("find_limited/orbcore")->Arg(100'000);

void quote(benchmark::State& state) {
    const stdx::ustring text(words(static_cast<std::size_t>(state.range(0))));
    for (auto _ : state) benchmark::DoNotOptimize(core::quote_pattern(text));
}
BENCHMARK(quote)->Name("quote/orbcore")->Arg(10'000);

#ifdef ORBCORE_PEER_ICU
icu::UnicodeString icu_text(const std::u16string& text) {
    return icu::UnicodeString(text.data(), static_cast<std::int32_t>(text.size()));
}

void icu_find_all(benchmark::State& state, const char16_t* pattern) {
    const icu::UnicodeString text = icu_text(words(static_cast<std::size_t>(state.range(0))));
    UErrorCode status = U_ZERO_ERROR;
    icu::RegexMatcher matcher(pattern, text, 0, status);
    for (auto _ : state) {
        int found = 0;
        matcher.reset();
        while (matcher.find(status)) found += matcher.group(status).length();
        benchmark::DoNotOptimize(found);
    }
}

void icu_match_once(benchmark::State& state) {
    const icu::UnicodeString pattern(kDate), text(u"2024-05-17");
    UErrorCode status = U_ZERO_ERROR;
    for (auto _ : state)
        benchmark::DoNotOptimize(icu::RegexMatcher(pattern, text, 0, status).matches(status));
}

void icu_match_next_text(benchmark::State& state) {
    UErrorCode status = U_ZERO_ERROR;
    icu::RegexMatcher matcher(kDate, 0, status);
    const icu::UnicodeString text(u"2024-05-17");
    for (auto _ : state) benchmark::DoNotOptimize(matcher.reset(text).matches(status));
}

void icu_find_limited(benchmark::State& state) {
    const icu::UnicodeString text = icu_text(words(static_cast<std::size_t>(state.range(0))));
    UErrorCode status = U_ZERO_ERROR;
    icu::RegexMatcher matcher(kWord, text, 0, status);
    matcher.setTimeLimit(10'000, status);
    for (auto _ : state) {
        int found = 0;
        matcher.reset();
        while (matcher.find(status)) ++found;
        benchmark::DoNotOptimize(found);
    }
}

BENCHMARK_CAPTURE(icu_find_all, words, kWord)->Name("find_words/ICU")->Arg(100)->Arg(100'000);
BENCHMARK_CAPTURE(icu_find_all, dates, kDate)->Name("find_dates/ICU")->Arg(100'000);
BENCHMARK(icu_match_once)->Name("match_once/ICU");
BENCHMARK(icu_match_next_text)->Name("match_next_text/ICU");
BENCHMARK(icu_find_limited)->Name("find_limited/ICU")->Arg(100'000);
#endif

} // namespace
