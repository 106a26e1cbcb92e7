// The matcher beside ICU's own, called direct. What should hold: it adds a few nanoseconds to a
// call, so that on everything but the smallest matches the ratio is 1; copying a match out of
// ICU's string is paid by the length of the match. RE2, on 8-bit text, shows what an automaton makes
// of the same patterns; the engine is ICU's, so there is nothing to hold.
#include <core/text/Matcher.h>

#include <benchmark/benchmark.h>

#include <string>

#ifdef ORBCORE_PEER_ICU
#include <unicode/regex.h>
#endif
#ifdef ORBCORE_PEER_RE2
#include <re2/re2.h>
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

#ifdef ORBCORE_PEER_RE2
constexpr char kWord8[] = "[a-z]+";
constexpr char kDate8[] = "(\\d{4})-(\\d{2})-(\\d{2})";

void re2_find_all(benchmark::State& state, const char* pattern) {
    const std::u16string wide = words(static_cast<std::size_t>(state.range(0)));
    std::string text;
    for (const char16_t c : wide) text.push_back(static_cast<char>(c)); // ASCII
    const RE2 regex(pattern);
    const re2::StringPiece whole(text);
    for (auto _ : state) {
        std::size_t found = 0, at = 0;
        re2::StringPiece match;
        while (regex.Match(whole, at, whole.size(), RE2::UNANCHORED, &match, 1)) {
            found += match.size();
            at = static_cast<std::size_t>(match.end() - whole.begin());
        }
        benchmark::DoNotOptimize(found);
    }
}

void re2_match_once(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(RE2::FullMatch("2024-05-17", kDate8));
}

void re2_match_next_text(benchmark::State& state) {
    const RE2 regex(kDate8);
    for (auto _ : state) benchmark::DoNotOptimize(RE2::FullMatch("2024-05-17", regex));
}

BENCHMARK_CAPTURE(re2_find_all, words, kWord8)->Name("find_words/RE2")->Arg(100)->Arg(100'000);
BENCHMARK_CAPTURE(re2_find_all, dates, kDate8)->Name("find_dates/RE2")->Arg(100'000);
BENCHMARK(re2_match_once)->Name("match_once/RE2");
BENCHMARK(re2_match_next_text)->Name("match_next_text/RE2");
#endif

} // namespace
