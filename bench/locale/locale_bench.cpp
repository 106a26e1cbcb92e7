// Collation, and finding what hangs on a locale. A collator of ours is a handle on ICU's, so that
// comparing and making keys should cost what ICU costs; getting one should cost nothing.

#include <core/component/Utf8.h>
#include <core/locale/BoolFormat.h>
#include <core/locale/Collator.h>
#include <core/locale/WeekInfo.h>

#include <benchmark/benchmark.h>

#ifdef ORBCORE_PEER_QT
#include <QCollator>
#include <QLocale>
#include <QString>
#endif
#ifdef ORBCORE_PEER_ICU
#include <unicode/ucol.h>
#include <unicode/uloc.h>
#endif

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

// Names of people: many share their beginning, as in a real register.
std::vector<std::u16string> names(bool cyrillic) {
    constexpr std::u16string_view kLatin[] = {u"Ander", u"Peter", u"Johan", u"Mc",
                                              u"Smith", u"son",   u"sen",   u"er",
                                              u"a",     u" ",     u"Maria", u"Ann"};
    constexpr std::u16string_view kCyrillic[] = {u"Иван", u"Петр", u"Сидор", u"Ко",
                                                 u"ов",   u"ев",   u"ова",   u"енко",
                                                 u"ина",  u" ",    u"Анна",  u"Олег"};
    const auto& parts = cyrillic ? kCyrillic : kLatin;
    std::mt19937 random(1);
    std::vector<std::u16string> made(1'024);
    for (std::u16string& name : made)
        for (int i = 0; i != 4; ++i) name += parts[random() % std::size(parts)];
    return made;
}

const char* locale_of(const benchmark::State& state) {
    return state.range(0) ? "ru" : "en";
}

core::Locale our_locale(const benchmark::State& state) {
    return core::Locale(state.range(0) ? u"ru" : u"en");
}

void over_pairs(benchmark::State& state, auto&& compare) {
    const auto all = names(state.range(0));
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(compare(all[i % 1'024], all[(i + 1) % 1'024]));
        ++i;
    }
}

void over_names(benchmark::State& state, auto&& make_key) {
    const auto all = names(state.range(0));
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(make_key(all[i++ % 1'024]));
}

// --- compare, compareNocase and keys; argument 0: Latin names in "en", 1: Cyrillic in "ru" ---

void compare_orbcore(benchmark::State& state) {
    const core::Collator collator(our_locale(state));
    over_pairs(state, [&](const auto& a, const auto& b) { return collator.compare(a, b); });
}
BENCHMARK(compare_orbcore)->Name("compare/orbcore")->Arg(0)->Arg(1);

void key_orbcore(benchmark::State& state) {
    const core::Collator collator(our_locale(state));
    over_names(state, [&](const auto& name) { return collator.transform(name); });
}
BENCHMARK(key_orbcore)->Name("key/orbcore")->Arg(0)->Arg(1);

void compare_nocase_orbcore(benchmark::State& state) {
    const core::Collator collator(our_locale(state));
    over_pairs(state, [&](const auto& a, const auto& b) { return collator.compareNocase(a, b); });
}
BENCHMARK(compare_nocase_orbcore)->Name("compare_nocase/orbcore")->Arg(0)->Arg(1);

// --- getting what hangs on a locale ---

void open_collator_orbcore(benchmark::State& state) {
    const core::Locale locale = our_locale(state);
    for (auto _ : state) benchmark::DoNotOptimize(core::Collator(locale));
}
BENCHMARK(open_collator_orbcore)->Name("open_collator/orbcore")->Arg(0)->Arg(1);

void find_locale_orbcore(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(core::Locale(u"sr_Latn_RS"));
}
BENCHMARK(find_locale_orbcore)->Name("find_locale/orbcore");

void week_orbcore(benchmark::State& state) {
    const core::Locale locale(u"ru");
    for (auto _ : state) benchmark::DoNotOptimize(core::WeekInfo::of(locale));
}
BENCHMARK(week_orbcore)->Name("week/orbcore");

void bool_format_orbcore(benchmark::State& state) {
    const core::Locale locale(u"ru");
    for (auto _ : state) benchmark::DoNotOptimize(core::BoolFormat(locale));
}
BENCHMARK(bool_format_orbcore)->Name("bool_format/orbcore");

#ifdef ORBCORE_PEER_ICU
struct Close {
    void operator()(UCollator* collator) const { ucol_close(collator); }
};
std::unique_ptr<UCollator, Close> icu_collator(const char* locale, UCollationStrength strength) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<UCollator, Close> opened(ucol_open(locale, &status));
    ucol_setStrength(opened.get(), strength);
    return opened;
}

template <UCollationStrength kStrength> void compare_icu(benchmark::State& state) {
    const auto collator = icu_collator(locale_of(state), kStrength);
    over_pairs(state, [&](const auto& a, const auto& b) {
        return ucol_strcoll(collator.get(), a.data(), static_cast<int>(a.size()), b.data(),
                            static_cast<int>(b.size()));
    });
}
BENCHMARK(compare_icu<UCOL_TERTIARY>)->Name("compare/icu")->Arg(0)->Arg(1);
BENCHMARK(compare_icu<UCOL_SECONDARY>)->Name("compare_nocase/icu")->Arg(0)->Arg(1);

void key_icu(benchmark::State& state) {
    const auto collator = icu_collator(locale_of(state), UCOL_TERTIARY);
    over_names(state, [&](const auto& name) {
        std::uint8_t bytes[256];
        const int size = ucol_getSortKey(collator.get(), name.data(), static_cast<int>(name.size()),
                                         bytes, sizeof bytes);
        return std::string(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size));
    });
}
BENCHMARK(key_icu)->Name("key/icu")->Arg(0)->Arg(1);

void open_collator_icu(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(icu_collator(locale_of(state), UCOL_TERTIARY).get());
}
BENCHMARK(open_collator_icu)->Name("open_collator/icu")->Arg(0)->Arg(1);

void find_locale_icu(benchmark::State& state) {
    for (auto _ : state) {
        char id[ULOC_FULLNAME_CAPACITY];
        UErrorCode status = U_ZERO_ERROR;
        benchmark::DoNotOptimize(uloc_canonicalize("sr_Latn_RS", id, sizeof id, &status));
    }
}
BENCHMARK(find_locale_icu)->Name("find_locale/icu");
#endif

#ifdef ORBCORE_PEER_QT
std::vector<QString> qt_names(const benchmark::State& state) {
    std::vector<QString> all;
    for (const std::u16string& name : names(state.range(0)))
        all.push_back(QString::fromStdU16String(name));
    return all;
}

QCollator qt_collator(const benchmark::State& state) {
    QCollator collator{QLocale(locale_of(state))};
    collator.setCaseSensitivity(Qt::CaseSensitive);
    return collator;
}

void compare_qt(benchmark::State& state) {
    const QCollator collator = qt_collator(state);
    const auto all = qt_names(state);
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(collator.compare(all[i % 1'024], all[(i + 1) % 1'024]));
        ++i;
    }
}
BENCHMARK(compare_qt)->Name("compare/qt")->Arg(0)->Arg(1);

void key_qt(benchmark::State& state) {
    const QCollator collator = qt_collator(state);
    const auto all = qt_names(state);
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(collator.sortKey(all[i++ % 1'024]));
}
BENCHMARK(key_qt)->Name("key/qt")->Arg(0)->Arg(1);

void find_locale_qt(benchmark::State& state) {
    const QString name = QStringLiteral("sr_Latn_RS");
    for (auto _ : state) benchmark::DoNotOptimize(QLocale(name));
}
BENCHMARK(find_locale_qt)->Name("find_locale/qt");

void week_qt(benchmark::State& state) {
    const QLocale locale("ru");
    for (auto _ : state) {
        benchmark::DoNotOptimize(locale.firstDayOfWeek());
        benchmark::DoNotOptimize(locale.weekdays());
    }
}
BENCHMARK(week_qt)->Name("week/qt");
#endif

} // namespace
