// Functions on text beside their peers. What should hold: case and comparison without case take a
// tenth of QString's time, and numbers take no more than snprintf's.
#include <core/text/Characters.h>
#include <core/text/Compare.h>
#include <core/text/Format.h>
#include <core/text/Hex.h>
#include <core/text/Numbers.h>

#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string>

#ifdef ORBCORE_PEER_QT
#include <QHash>
#include <QString>
#endif
#ifdef ORBCORE_PEER_ICU
#include <unicode/locid.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>
#endif

namespace {

// Russian text with Latin words, as the platform's texts are.
std::u16string mixed_text(std::size_t n) {
    const std::u16string_view words =
        u"\u0421\u0447\u0435\u0442 Invoice \u043E\u0442 2024, \u0441\u0443\u043C\u043C\u0430 ";
    std::u16string text;
    while (text.size() < n) text += words;
    text.resize(n);
    return text;
}

std::string some_bytes(std::size_t n) {
    std::string bytes(n, '\0');
    unsigned state = 1;
    for (char& byte : bytes) byte = static_cast<char>((state = state * 1664525 + 1013904223) >> 24);
    return bytes;
}

template <class Job> void run(benchmark::State& state, std::size_t bytes, Job job) {
    for (auto _ : state) benchmark::DoNotOptimize(job());
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) *
                            static_cast<std::int64_t>(state.iterations()));
}

using Job = void (*)(benchmark::State&);

void bench(const char* name, Job job) {
    for (const int n : {8, 40, 1000}) benchmark::RegisterBenchmark(name, job)->Arg(n);
}

std::size_t size_of(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

// The equal text in other case, so that every unit is looked at.
std::u16string capitals(const std::u16string& text) {
    std::u16string upper = text;
    core::to_upper(text.data(), text.data() + text.size(), upper.data());
    return upper;
}

void register_case() {
    bench("to_upper/orbcore", [](benchmark::State& state) {
        const std::u16string text = mixed_text(size_of(state));
        run(state, text.size() * 2,
            [&] { return core::to_upper(text.data(), text.data() + text.size()); });
    });
    bench("compare_nocase/orbcore", [](benchmark::State& state) {
        const std::u16string a = mixed_text(size_of(state)), b = capitals(a);
        run(state, a.size() * 2, [&] { return core::compare_nocase(a, b); });
    });
    bench("hash_nocase/orbcore", [](benchmark::State& state) {
        const std::u16string text = mixed_text(size_of(state));
        run(state, text.size() * 2, [&] { return core::hash_nocase(text); });
    });
#ifdef ORBCORE_PEER_ICU
    bench("to_upper/ICU", [](benchmark::State& state) {
        const std::u16string text = mixed_text(size_of(state));
        const icu::UnicodeString source(text.data(), static_cast<std::int32_t>(text.size()));
        run(state, text.size() * 2,
            [&] { return icu::UnicodeString(source).toUpper(icu::Locale::getRoot()); });
    });
    bench("compare_nocase/ICU", [](benchmark::State& state) {
        const std::u16string a = mixed_text(size_of(state)), b = capitals(a);
        const auto n = static_cast<std::int32_t>(a.size());
        run(state, a.size() * 2, [&] { return u_memcasecmp(a.data(), b.data(), n, 0); });
    });
    bench("hash_nocase/ICU", [](benchmark::State& state) {
        const std::u16string text = mixed_text(size_of(state));
        const icu::UnicodeString source(text.data(), static_cast<std::int32_t>(text.size()));
        run(state, text.size() * 2,
            [&] { return icu::UnicodeString(source).foldCase().hashCode(); });
    });
#endif
#ifdef ORBCORE_PEER_QT
    const auto qstring = [](const std::u16string& s) { return QString::fromStdU16String(s); };
    static const auto make = qstring;
    bench("to_upper/QString", [](benchmark::State& state) {
        const QString text = make(mixed_text(size_of(state)));
        run(state, size_of(state) * 2, [&] { return text.toUpper(); });
    });
    bench("compare_nocase/QString", [](benchmark::State& state) {
        const std::u16string text = mixed_text(size_of(state));
        const QString a = make(text), b = make(capitals(text));
        run(state, size_of(state) * 2, [&] { return a.compare(b, Qt::CaseInsensitive); });
    });
    bench("hash_nocase/QString", [](benchmark::State& state) {
        const QString text = make(mixed_text(size_of(state)));
        run(state, size_of(state) * 2, [&] { return qHash(text.toCaseFolded()); });
    });
#endif
}

void one(const char* name, Job job) {
    benchmark::RegisterBenchmark(name, job);
}

void register_numbers() {
    one("printf_line/orbcore", [](benchmark::State& state) {
        char line[100];
        run(state, 0, [&] {
            return core::string_nprintf(line, sizeof line, "%-10s %8.2f %05d", "name", 3.14159, 42);
        });
    });
    one("printf_line/snprintf", [](benchmark::State& state) {
        char line[100];
        run(state, 0, [&] {
            return std::snprintf(line, sizeof line, "%-10s %8.2f %05d", "name", 3.14159, 42);
        });
    });
    one("double_to_text/orbcore", [](benchmark::State& state) {
        stdx::ustring text;
        run(state, 0, [&] { return core::string_dto(12345.678, text), text.size(); });
    });
    one("double_to_text/snprintf", [](benchmark::State& state) {
        char text[40];
        run(state, 0, [&] { return std::snprintf(text, sizeof text, "%.16g", 12345.678); });
    });
    one("integer_to_text/orbcore", [](benchmark::State& state) {
        char16_t text[40];
        std::int64_t value = 1234567890123;
        benchmark::DoNotOptimize(value);
        run(state, 0, [&] { return core::string_i64to(value, text); });
    });
    one("integer_to_text/to_chars", [](benchmark::State& state) {
        char text[40];
        std::int64_t value = 1234567890123;
        benchmark::DoNotOptimize(value);
        run(state, 0, [&] {
            char* const end = std::to_chars(text, text + 40, value).ptr;
            benchmark::ClobberMemory();
            return end;
        });
    });
    one("integer_to_text/snprintf", [](benchmark::State& state) {
        char text[40];
        run(state, 0, [&] { return std::snprintf(text, sizeof text, "%lld", 1234567890123LL); });
    });
    one("text_to_double/orbcore", [](benchmark::State& state) {
        run(state, 0, [] { return core::string_tod(u"12345.678"); });
    });
    one("text_to_double/strtod", [](benchmark::State& state) {
        run(state, 0, [] { return std::strtod("12345.678", nullptr); });
    });
    bench("crc_32/orbcore", [](benchmark::State& state) {
        const std::string data = some_bytes(size_of(state));
        run(state, data.size(),
            [&] { return core::get_crc_32(data.data(), static_cast<int>(data.size()), 0, true); });
    });
}

[[maybe_unused]] const bool kRegistered = (register_case(), register_numbers(), true);

} // namespace
