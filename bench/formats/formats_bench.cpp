// Amounts and dates to text and back, as a report and its import do it. Ours should cost a fraction
// of ICU called plainly, with its format open and its pattern in force; with a pattern that changes
// from call to call ICU pays for taking it in, ours does not.
//
// Argument 0: "en", 1: "ru".

#include <core/locale/DateFormat.h>
#include <core/locale/NumericFormat.h>
#include <core/numbers/Date.h>
#include <core/numbers/Numeric.h>

#include <benchmark/benchmark.h>

#ifdef ORBCORE_PEER_QT
#include <QDateTime>
#include <QLocale>
#include <QString>
#endif
#ifdef ORBCORE_PEER_ICU
#include <unicode/ucal.h>
#include <unicode/udat.h>
#include <unicode/unum.h>
#endif

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kCount = 1'024;
constexpr std::u16string_view kPatterns[] = {u"dd.MM.yyyy HH:mm:ss", u"d MMMM yyyy"};

core::Locale locale_of(const benchmark::State& state) {
    return core::Locale(state.range(0) ? u"ru" : u"en");
}

// Amounts with two places, from cents to hundreds of millions.
std::vector<core::Numeric> amounts() {
    std::mt19937_64 random(1);
    std::vector<core::Numeric> made(kCount);
    for (core::Numeric& amount : made)
        amount =
            core::Numeric(static_cast<long long>(random() % 100'000'000'000 >> random() % 30)) /
            100;
    return made;
}

std::vector<core::Date> dates() {
    std::mt19937_64 random(2);
    std::vector<core::Date> made(kCount);
    const core::Date first(1990, 1, 1);
    for (core::Date& date : made)
        date = first +
               core::DateSpan::fromSeconds(static_cast<std::int64_t>(random() % 1'500'000'000));
    return made;
}

void over(benchmark::State& state, const auto& all, auto&& work) {
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(work(all[i++ % all.size()]));
}

std::vector<std::u16string> amount_texts(const benchmark::State& state) {
    const core::NumericFormat format(locale_of(state));
    std::vector<std::u16string> texts;
    for (const core::Numeric& amount : amounts())
        texts.emplace_back(format.format(amount, 20, 1, 2, 2));
    return texts;
}

std::vector<std::u16string> date_texts(const benchmark::State& state) {
    const core::DateFormat format(locale_of(state));
    std::vector<std::u16string> texts;
    for (const core::Date& date : dates()) texts.emplace_back(format.format(date, kPatterns[0]));
    return texts;
}

void format_number_orbcore(benchmark::State& state) {
    const core::NumericFormat format(locale_of(state));
    over(state, amounts(), [&](const auto& amount) { return format.format(amount, 20, 1, 2, 2); });
}
BENCHMARK(format_number_orbcore)->Name("format_number/orbcore")->Arg(0)->Arg(1);

void parse_number_orbcore(benchmark::State& state) {
    const core::NumericFormat format(locale_of(state));
    over(state, amount_texts(state), [&](const auto& text) {
        core::Numeric amount;
        format.parse(text, amount);
        return amount.sign();
    });
}
BENCHMARK(parse_number_orbcore)->Name("parse_number/orbcore")->Arg(0)->Arg(1);

template <int kPattern> void format_date_orbcore(benchmark::State& state) {
    const core::DateFormat format(locale_of(state));
    over(state, dates(),
         [&](const auto& date) { return format.format(date, kPatterns[kPattern]); });
}
BENCHMARK(format_date_orbcore<0>)->Name("format_date/orbcore")->Arg(0)->Arg(1);
BENCHMARK(format_date_orbcore<1>)->Name("format_long_date/orbcore")->Arg(0)->Arg(1);

void format_two_patterns_orbcore(benchmark::State& state) {
    const core::DateFormat format(locale_of(state));
    int turn = 0;
    over(state, dates(),
         [&](const auto& date) { return format.format(date, kPatterns[++turn % 2]); });
}
BENCHMARK(format_two_patterns_orbcore)->Name("format_two_patterns/orbcore")->Arg(1);

void parse_date_orbcore(benchmark::State& state) {
    const core::DateFormat format(locale_of(state));
    over(state, date_texts(state), [&](const auto& text) {
        core::Date date;
        format.parse(text, kPatterns[0], date);
        return date;
    });
}
BENCHMARK(parse_date_orbcore)->Name("parse_date/orbcore")->Arg(0)->Arg(1);

void open_formats_orbcore(benchmark::State& state) {
    const core::Locale locale = locale_of(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(core::NumericFormat(locale));
        benchmark::DoNotOptimize(core::DateFormat(locale));
    }
}
BENCHMARK(open_formats_orbcore)->Name("open_formats/orbcore")->Arg(1);

void translate_pattern_orbcore(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(core::DateFormat::parseOrbPattern(u"dd.MM.yyyy HH:mm:ss"));
}
BENCHMARK(translate_pattern_orbcore)->Name("translate_pattern/orbcore");

#ifdef ORBCORE_PEER_ICU
std::shared_ptr<UNumberFormat> icu_numbers(const benchmark::State& state) {
    UErrorCode status = U_ZERO_ERROR;
    std::shared_ptr<UNumberFormat> format(
        unum_open(UNUM_DECIMAL, nullptr, 0, locale_of(state).key(), nullptr, &status), unum_close);
    unum_setAttribute(format.get(), UNUM_MIN_FRACTION_DIGITS, 2);
    unum_setAttribute(format.get(), UNUM_MAX_FRACTION_DIGITS, 2);
    return format;
}

void format_number_icu(benchmark::State& state) {
    const auto format = icu_numbers(state);
    over(state, amounts(), [&](const auto& amount) {
        UErrorCode status = U_ZERO_ERROR;
        char digits[64];
        const auto size = static_cast<int>(amount.digits(digits));
        char16_t text[128];
        const int units =
            unum_formatDecimal(format.get(), digits, size, text, 128, nullptr, &status);
        return std::u16string(text, static_cast<std::size_t>(units));
    });
}
BENCHMARK(format_number_icu)->Name("format_number/icu")->Arg(0)->Arg(1);

void parse_number_icu(benchmark::State& state) {
    const auto format = icu_numbers(state);
    over(state, amount_texts(state), [&](const auto& text) {
        UErrorCode status = U_ZERO_ERROR;
        char digits[64];
        return unum_parseDecimal(format.get(), text.data(), static_cast<int>(text.size()), nullptr,
                                 digits, 64, &status);
    });
}
BENCHMARK(parse_number_icu)->Name("parse_number/icu")->Arg(0)->Arg(1);

std::shared_ptr<UDateFormat> icu_dates(const benchmark::State& state, std::u16string_view pattern) {
    UErrorCode status = U_ZERO_ERROR;
    return {udat_open(UDAT_PATTERN, UDAT_PATTERN, locale_of(state).key(), u"GMT", 3, pattern.data(),
                      static_cast<int>(pattern.size()), &status),
            udat_close};
}

std::u16string icu_text(const std::shared_ptr<UDateFormat>& format, const core::Date& date) {
    constexpr core::Date kEpoch(1970, 1, 1);
    UErrorCode status = U_ZERO_ERROR;
    char16_t text[128];
    const int units = udat_format(format.get(), static_cast<double>((date - kEpoch).ticks() / 10),
                                  text, 128, nullptr, &status);
    return std::u16string(text, static_cast<std::size_t>(units));
}

template <int kPattern> void format_date_icu(benchmark::State& state) {
    const auto format = icu_dates(state, kPatterns[kPattern]);
    over(state, dates(), [&](const auto& date) { return icu_text(format, date); });
}
BENCHMARK(format_date_icu<0>)->Name("format_date/icu")->Arg(0)->Arg(1);
BENCHMARK(format_date_icu<1>)->Name("format_long_date/icu")->Arg(0)->Arg(1);

void format_two_patterns_icu(benchmark::State& state) {
    const auto format = icu_dates(state, kPatterns[0]);
    int turn = 0;
    over(state, dates(), [&](const auto& date) {
        const std::u16string_view pattern = kPatterns[++turn % 2];
        udat_applyPattern(format.get(), false, pattern.data(), static_cast<int>(pattern.size()));
        return icu_text(format, date);
    });
}
BENCHMARK(format_two_patterns_icu)->Name("format_two_patterns/icu")->Arg(1);

void parse_date_icu(benchmark::State& state) {
    const auto format = icu_dates(state, kPatterns[0]);
    over(state, date_texts(state), [&](const auto& text) {
        UErrorCode status = U_ZERO_ERROR;
        return udat_parse(format.get(), text.data(), static_cast<int>(text.size()), nullptr,
                          &status);
    });
}
BENCHMARK(parse_date_icu)->Name("parse_date/icu")->Arg(0)->Arg(1);

void open_formats_icu(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(icu_numbers(state));
        benchmark::DoNotOptimize(icu_dates(state, kPatterns[0]));
    }
}
BENCHMARK(open_formats_icu)->Name("open_formats/icu")->Arg(1);
#endif

#ifdef ORBCORE_PEER_QT
QLocale qt_locale(const benchmark::State& state) {
    return QLocale(locale_of(state).key());
}

std::vector<QString> qt_texts(const std::vector<std::u16string>& texts) {
    std::vector<QString> made;
    for (const auto& text : texts) made.push_back(QString::fromStdU16String(text));
    return made;
}

void format_number_qt(benchmark::State& state) {
    const QLocale locale = qt_locale(state);
    std::vector<double> all;
    for (const core::Numeric& amount : amounts()) all.push_back(static_cast<double>(amount));
    over(state, all, [&](double amount) { return locale.toString(amount, 'f', 2); });
}
BENCHMARK(format_number_qt)->Name("format_number/qt")->Arg(0)->Arg(1);

void parse_number_qt(benchmark::State& state) {
    const QLocale locale = qt_locale(state);
    over(state, qt_texts(amount_texts(state)),
         [&](const auto& text) { return locale.toDouble(text); });
}
BENCHMARK(parse_number_qt)->Name("parse_number/qt")->Arg(0)->Arg(1);

template <int kPattern> void format_date_qt(benchmark::State& state) {
    const QLocale locale = qt_locale(state);
    const QString pattern = QString::fromStdU16String(std::u16string(kPatterns[kPattern]));
    std::vector<QDateTime> all;
    for (const core::Date& date : dates()) {
        int year, month, day, hour, minute, second;
        date.split(year, month, day, hour, minute, second);
        all.emplace_back(QDate(year, month, day), QTime(hour, minute, second), Qt::UTC);
    }
    over(state, all, [&](const auto& date) { return locale.toString(date, pattern); });
}
BENCHMARK(format_date_qt<0>)->Name("format_date/qt")->Arg(0)->Arg(1);
BENCHMARK(format_date_qt<1>)->Name("format_long_date/qt")->Arg(0)->Arg(1);

void parse_date_qt(benchmark::State& state) {
    const QLocale locale = qt_locale(state);
    const QString pattern = QString::fromStdU16String(std::u16string(kPatterns[0]));
    over(state, qt_texts(date_texts(state)),
         [&](const auto& text) { return locale.toDateTime(text, pattern); });
}
BENCHMARK(parse_date_qt)->Name("parse_date/qt")->Arg(0)->Arg(1);
#endif

} // namespace
