// Functions on text beside their peers. What should hold: case and comparison without case take a
// tenth of QString's time, base64 less than half of a table-driven decoder's, and numbers no more
// than snprintf's.
#include <core/text/Base64.h>
#include <core/text/Characters.h>
#include <core/text/Compare.h>
#include <core/text/Format.h>
#include <core/text/Hex.h>
#include <core/text/Numbers.h>

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string>

#ifdef ORBCORE_PEER_QT
#include <QByteArray>
#include <QHash>
#include <QString>
#endif
#ifdef ORBCORE_PEER_GLIB
#include <glib.h>
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

// The table-driven forms.
std::string table_encode(const std::string& data) {
    static constexpr char kAlphabet[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text((data.size() + 2) / 3 * 4, '=');
    char* to = text.data();
    const auto at = [&](std::size_t i) -> unsigned {
        return i < data.size() ? static_cast<unsigned char>(data[i]) : 0;
    };
    for (std::size_t i = 0; i < data.size(); i += 3) {
        const unsigned group = at(i) << 16 | at(i + 1) << 8 | at(i + 2);
        for (unsigned k = 0; k < 4; ++k) *to++ = kAlphabet[group >> (18 - 6 * k) & 63];
    }
    return text;
}

std::string table_decode(const std::string& text) {
    static const auto kValues = [] {
        std::array<signed char, 256> values;
        values.fill(-1);
        for (int i = 0; i < 26; ++i) {
            values[static_cast<std::size_t>('A' + i)] = static_cast<signed char>(i);
            values[static_cast<std::size_t>('a' + i)] = static_cast<signed char>(26 + i);
        }
        for (int i = 0; i < 10; ++i)
            values[static_cast<std::size_t>('0' + i)] = static_cast<signed char>(52 + i);
        values['+'] = 62;
        values['/'] = 63;
        return values;
    }();
    std::string data(text.size() / 4 * 3, '\0');
    char* to = data.data();
    for (std::size_t i = 0; i + 4 <= text.size(); i += 4) {
        int group = 0;
        for (std::size_t k = 0; k < 4; ++k)
            group = group << 6 | kValues[static_cast<unsigned char>(text[i + k])];
        if (group < 0) break;
        for (int k = 16; k >= 0; k -= 8) *to++ = static_cast<char>(group >> k);
    }
    return data;
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

void register_base64() {
    bench("encode_base64/orbcore", [](benchmark::State& state) {
        const std::string data = some_bytes(size_of(state));
        run(state, data.size(), [&] { return core::encode_base64(data); });
    });
    bench("encode_base64/table", [](benchmark::State& state) {
        const std::string data = some_bytes(size_of(state));
        run(state, data.size(), [&] { return table_encode(data); });
    });
    bench("decode_base64/orbcore", [](benchmark::State& state) {
        const stdx::ustring text = core::encode_base64(some_bytes(size_of(state)));
        stdx::string data;
        run(state, size_of(state), [&] { return core::decode_base64(text, data); });
    });
    bench("decode_base64_lines/orbcore", [](benchmark::State& state) {
        const stdx::ustring text = core::encode_base64(some_bytes(size_of(state)), 64);
        stdx::string data;
        run(state, size_of(state), [&] { return core::decode_base64(text, data); });
    });
    bench("decode_base64/table", [](benchmark::State& state) {
        const std::string text = table_encode(some_bytes(size_of(state)));
        run(state, size_of(state), [&] { return table_decode(text); });
    });
#ifdef ORBCORE_PEER_QT
    bench("encode_base64/QByteArray", [](benchmark::State& state) {
        const QByteArray data = QByteArray::fromStdString(some_bytes(size_of(state)));
        run(state, size_of(state), [&] { return data.toBase64(); });
    });
    bench("decode_base64/QByteArray", [](benchmark::State& state) {
        const auto text = QByteArray::fromStdString(table_encode(some_bytes(size_of(state))));
        run(state, size_of(state), [&] { return QByteArray::fromBase64(text); });
    });
#endif
#ifdef ORBCORE_PEER_GLIB
    bench("encode_base64/glib", [](benchmark::State& state) {
        const std::string data = some_bytes(size_of(state));
        for (auto _ : state)
            g_free(g_base64_encode(reinterpret_cast<const guchar*>(data.data()), data.size()));
    });
    bench("decode_base64/glib", [](benchmark::State& state) {
        const std::string text = table_encode(some_bytes(size_of(state)));
        gsize size = 0;
        for (auto _ : state) g_free(g_base64_decode(text.c_str(), &size));
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

[[maybe_unused]] const bool kRegistered =
    (register_case(), register_base64(), register_numbers(), true);

} // namespace
