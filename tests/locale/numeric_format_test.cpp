// Formats of numbers. ICU, called plainly, is the oracle of what our own writing gives.

#include <core/component/Utf8.h>
#include <core/locale/NumericFormat.h>
#include <core/numbers/Numeric.h>
#include <core/text/Characters.h>

#include <gtest/gtest.h>

#include <unicode/unum.h>

#include <memory>
#include <random>
#include <string>

namespace {

using namespace core;
using namespace core::literals;

std::string utf8(std::u16string_view text) {
    return std::string(std::string_view(to_utf8(text)));
}

// No-break blanks are blanks, to be read in a source.
std::string shown(std::u16string_view text) {
    std::u16string plain(text);
    for (char16_t& c : plain)
        if (c == u'\u00A0' || c == u'\u202F') c = u' ';
    return utf8(plain);
}

NumericFormat format_of(const char16_t* locale) {
    return NumericFormat(Locale(locale));
}

class IcuFormat {
public:
    explicit IcuFormat(const Locale& locale)
        : format_(unum_open(UNUM_DECIMAL, nullptr, 0, locale.key(), nullptr, &status_),
                  [](UNumberFormat* opened) { unum_close(opened); }) {}

    void limit(unsigned maxInteger, unsigned minInteger, unsigned maxFraction,
               unsigned minFraction) {
        set(UNUM_MAX_INTEGER_DIGITS, maxInteger);
        set(UNUM_MIN_INTEGER_DIGITS, minInteger);
        set(UNUM_MAX_FRACTION_DIGITS, maxFraction);
        set(UNUM_MIN_FRACTION_DIGITS, minFraction);
    }
    void set(UNumberFormatAttribute attribute, unsigned value) {
        unum_setAttribute(format_.get(), attribute, static_cast<int>(value));
    }

    std::u16string format(const Numeric& value) {
        stdx::string digits;
        value.toString(digits);
        std::u16string text(4'096, u'\0');
        const int size =
            unum_formatDecimal(format_.get(), digits.c_str(), static_cast<int>(digits.size()),
                               text.data(), static_cast<int>(text.size()), nullptr, &status_);
        EXPECT_TRUE(U_SUCCESS(status_));
        text.resize(static_cast<std::size_t>(size));
        return text;
    }

    // Whether the whole text is a number, blanks at its ends aside.
    bool parse(std::u16string_view text, Numeric& value) {
        while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
        while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
        char digits[1'024];
        UErrorCode status = U_ZERO_ERROR;
        std::int32_t end = 0;
        unum_parseDecimal(format_.get(), text.data(), static_cast<int>(text.size()), &end, digits,
                          sizeof digits, &status);
        if (U_FAILURE(status) || end != static_cast<int>(text.size())) return false;
        const char* exponent = nullptr;
        value.fromString(digits, &exponent);
        if (*exponent == 'E') value *= Numeric(10).pow(std::stoi(exponent + 1));
        return true;
    }

private:
    UErrorCode status_ = U_ZERO_ERROR;
    std::unique_ptr<UNumberFormat, void (*)(UNumberFormat*)> format_;
};

constexpr unsigned kEndless = 0x7FFFFFFF;
constexpr unsigned kLimits[][4] = {
    {kEndless, 1, kEndless, 0},
    {kEndless, 1, 2, 2},
    {8, 1, 2, 0},
    {12, 12, 0, 0},
    {9, 0, 2, 2},
    {9, 0, 3, 0},
    {9, 0, 0, 0},
    {3, 6, 1, 4},
    {2, 1, 1, 1},
    {30, 20, 25, 25},
};

Numeric random_number(std::mt19937_64& random) {
    Numeric number = static_cast<long long>(random() >> (random() % 64));
    if (random() % 4 == 0) number *= static_cast<long long>(random() >> 8);
    for (unsigned i = random() % 8; i != 0; --i) number /= 10;
    return random() % 2 ? -number : number;
}

TEST(NumericFormatOfAllLocales, WritesAndReadsAsIcuDoes) {
    std::mt19937_64 random(7);
    for (const Locale& locale : Locale::all()) {
        SCOPED_TRACE(locale.key());
        const NumericFormat format(locale);
        IcuFormat icu(locale);
        for (const auto& [maxInteger, minInteger, maxFraction, minFraction] : kLimits) {
            icu.limit(maxInteger, minInteger, maxFraction, minFraction);
            for (int i = 0; i != 12; ++i) {
                Numeric number = i < 4 ? Numeric(i - 1) : random_number(random);
                if (i > 8) number /= 1'000'000'000;
                unsigned length = 0, precision = 0;
                number.lengthAndPrecision(length, precision);
                if (length - precision > maxInteger) continue; // nines: ours alone
                const int places = static_cast<int>(std::min(maxFraction, 100u));
                const auto text =
                    format.format(number, maxInteger, minInteger, maxFraction, minFraction);
                const auto expected = icu.format(number.round(places));
                ASSERT_EQ(utf8(text), utf8(expected))
                    << number << ' ' << maxInteger << ' ' << minInteger;
                Numeric back(-42), expectedBack(-42);
                ASSERT_EQ(format.parse(text, back), icu.parse(text, expectedBack)) << number;
                ASSERT_EQ(back, expectedBack);
            }
        }
        const std::u16string units = std::u16string(format.getDigitSymbols().substr(0, 3)) +
                                     format.getDecimalSeparator() + format.getGroupingSeparator() +
                                     u' ' + std::u16string(format.getNegativePrefix());
        for (int i = 0; i != 200; ++i) {
            std::u16string text(i % 2 ? 1 : 0, units.back());
            for (auto size = 1 + random() % 9; size != 0; --size)
                text += units[random() % units.size()];
            Numeric value(-42), expected(-42);
            const bool isNumber = icu.parse(text, expected);
            ASSERT_EQ(format.parse(text, value), isNumber) << utf8(text);
            ASSERT_EQ(value, expected) << utf8(text);
        }
        for (unsigned group = 1; group != 5; ++group) {
            NumericFormat grouped = format;
            grouped.setGroupingSize(group);
            grouped.setSecondaryGroupingSize(group % 3);
            IcuFormat icuGrouped(locale);
            icuGrouped.set(UNUM_GROUPING_USED, 1);
            icuGrouped.set(UNUM_GROUPING_SIZE, group);
            icuGrouped.set(UNUM_SECONDARY_GROUPING_SIZE, group % 3);
            const Numeric number = random_number(random).round(3);
            ASSERT_EQ(utf8(grouped.format(number)), utf8(icuGrouped.format(number))) << group;
        }
    }
}

TEST(NumericFormat, KeepsToItsLimits) {
    const struct {
        const char* number;
        unsigned maxInteger, minInteger, maxFraction, minFraction;
        const char* text;
    } rows[] = {
        {"1234.5", 2, 1, 1, 1, "99,9"},  // does not fit
        {"-1234.5", 3, 1, 0, 0, "-999"}, //
        {"12345", 4, 1, 0, 0, "9 999"},  // in groups
        {"0.5", 0, 0, 2, 2, ",50"},      //
        {"7", 0, 0, 2, 2, ",99"},        //
        {"7", 0, 0, 0, 0, ""},           // no digit fits
        {"5", 3, 3, 0, 0, "005"},        //
        {"5", 6, 6, 1, 1, "000 005,0"},  //
        {"2.345", 9, 1, 2, 2, "2,35"},   // half up
        {"-0.004", 9, 1, 2, 2, "0,00"},  // no negative zero
        {"9.99", 1, 1, 1, 1, "0,0"},     // grows by rounding, and its first digit goes
        {"1234567.5", kEndless, 1, 0, 0, "1 234 568"},
    };
    const NumericFormat format = format_of(u"ru");
    for (const auto& row : rows) {
        SCOPED_TRACE(row.number);
        const Numeric number = *Numeric::parse(std::string_view(row.number));
        EXPECT_EQ(shown(format.format(number, row.maxInteger, row.minInteger, row.maxFraction,
                                      row.minFraction)),
                  row.text);
    }
    EXPECT_EQ(shown(format.format(1234567.125_num)), "1 234 567,125");
    EXPECT_EQ(shown(format.format(1234567.125_num, 10, 2)), "1 234 567,13");
}

TEST(NumericFormat, WritesTextsLongerThanAnyBuffer) {
    const NumericFormat format = format_of(u"en");
    const Numeric huge = Numeric(10).pow(1'500);
    const std::string text = utf8(format.format(huge));
    EXPECT_EQ(text.size(), 2'001u);
    EXPECT_EQ(text.substr(0, 8), "1,000,00");
    const std::string nines = utf8(format.format(-huge, 1'400, 4'000'000'000));
    EXPECT_EQ(nines.size(), 1'024u + 340) << "1,023 nines and their separators";
    EXPECT_EQ(utf8(format.format(1, 1, 1, 4'000'000'000, 4'000'000'000)).size(), 1u + 1 + 999);
    Numeric value(-42);
    EXPECT_FALSE(format.parse(format.format(huge), value));
    EXPECT_EQ(value, -42);
    EXPECT_TRUE(format.parse(format.format(Numeric(10).pow(600)), value));
    EXPECT_EQ(value, Numeric(10).pow(600));
}

TEST(NumericFormat, SetsGroupsByWin32) {
    const struct {
        const char16_t* sizes;
        unsigned primary, secondary;
        const char* text;
    } rows[] = {
        {u"3;0", 3, 0, "12,345,678.5"},
        {u"3;2;0", 3, 2, "1,23,45,678.5"},
        {u"3", 3, NumericFormat::kEndlessGroup, "12345,678.5"},
        {u" 4 / 1", 4, 1, "1,2,3,4,5678.5"},
        {u"", 0, 0, "12345678.5"},
        {u"x", 0, 0, "12345678.5"},
        {u"0;0", 0, 0, "12345678.5"},
        {u"99999999999999999999;3", NumericFormat::kEndlessGroup, 3, "12345678.5"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(utf8(row.sizes));
        NumericFormat format = format_of(u"en");
        format.setWin32Grouping(row.sizes);
        EXPECT_EQ(format.getGroupingSize(), row.primary);
        EXPECT_EQ(format.getSecondaryGroupingSize(), row.secondary);
        const stdx::ustring text = format.format(12345678.5_num);
        EXPECT_EQ(utf8(text), row.text);
        Numeric value;
        EXPECT_TRUE(format.parse(text, value) && value == 12345678.5_num) << value;
    }
}

TEST(NumericFormat, SetsNegativeOrdersByWin32) {
    const char* const texts[] = {"(1.5)", "-1.5", "- 1.5", "1.5-", "1.5 -"};
    NumericFormat format = format_of(u"en");
    for (unsigned order = 0; order != 5; ++order) {
        SCOPED_TRACE(order);
        format.setWin32NegativeOrder(order);
        const stdx::ustring text = format.format(-1.5_num);
        EXPECT_EQ(utf8(text), texts[order]);
        EXPECT_EQ(utf8(format.format(1.5_num)), "1.5");
        Numeric value;
        EXPECT_TRUE(format.parse(text, value) && value == -1.5_num) << value;
    }
    format.setWin32NegativeOrder(5);
    EXPECT_EQ(utf8(format.getNegativeSuffix()), " -");
}

TEST(NumericFormat, ChangesNoOtherFormat) {
    NumericFormat format = format_of(u"de");
    const NumericFormat before = format;
    format.setDecimalSeparator(u'|');
    format.setGroupingSeparator(u'_');
    format.setPositivePrefix(u"+");
    format.setPositiveSuffix(u" EUR");
    format.setNegativePrefix(u"minus ");
    format.setNegativeSuffix(stdx::ustring(2'000, u'x'));
    EXPECT_EQ(utf8(format.format(1234.5_num)), "+1_234|5 EUR");
    EXPECT_EQ(utf8(format.format(-1234.5_num)), "minus 1_234|5" + std::string(2'000, 'x'));
    EXPECT_EQ(format.getDecimalSeparator(), u'|');
    EXPECT_EQ(format.getGroupingSeparator(), u'_');
    EXPECT_EQ(utf8(format.getPositivePrefix()), "+");
    EXPECT_EQ(utf8(format.getPositiveSuffix()), " EUR");
    EXPECT_EQ(utf8(format.getNegativePrefix()), "minus ");
    EXPECT_EQ(format.getNegativeSuffix().size(), 2'000u);
    Numeric value;
    EXPECT_TRUE(format.parse(u"+1_234|5 EUR", value) && value == 1234.5_num);
    EXPECT_TRUE(format.parse(format.format(-7), value) && value == -7);
    for (const NumericFormat& other : {before, format_of(u"de")}) {
        EXPECT_EQ(utf8(other.format(-1234.5_num)), "-1.234,5");
        EXPECT_TRUE(other.parse(u"-1.234,5", value) && value == -1234.5_num);
    }
    const NumericFormat copy = format;
    format.setDecimalSeparator(u'!');
    EXPECT_EQ(utf8(copy.format(1.5_num)), "+1|5 EUR");
    EXPECT_EQ(utf8(format_of(u"ar_EG").getDigitSymbols()), "٠١٢٣٤٥٦٧٨٩");
}

TEST(NumericFormat, ParsesWholeTextsAlone) {
    const struct {
        const char16_t* text;
        const char* number; // null: none
    } rows[] = {
        {u"1 234,5", "1234.5"},
        {u"1234,5", "1234.5"},
        {u"\t -12,50 \n", "-12.5"},
        {u"12.5", nullptr},
        {u"0.125", nullptr}, // no group either
        {u"-1.125 ", nullptr},
        {u"1.125,5", "1125.5"}, // that is one
        {u"1.125.125", "1125125"},
        {u"007", "7"},
        {u"1234567890123456789012345678901234567890,01",
         "1234567890123456789012345678901234567890.01"},
        {u"", nullptr},
        {u"  ", nullptr},
        {u"-", nullptr},
        {u",", nullptr},
        {u"12x", nullptr},
        {u"x12", nullptr},
        {u"1 2 x", nullptr},
        {u"∞", nullptr},
        {u"1E3", "1000"},
        {u"1E-3", "0.001"},
        {u"1E1000", nullptr},
        {u"1E-1000", nullptr},
        {u"1E99999999999", nullptr},
    };
    const NumericFormat format = format_of(u"ru");
    for (const auto& row : rows) {
        SCOPED_TRACE(utf8(row.text));
        std::u16string text(row.text);
        for (char16_t& c : text)
            if (c == u' ') c = u'\u00A0';
        Numeric value(-42);
        EXPECT_EQ(format.parse(text, value), row.number != nullptr);
        EXPECT_EQ(value, row.number ? *Numeric::parse(std::string_view(row.number)) : -42);
    }
    Numeric value;
    EXPECT_FALSE(format.parse(std::u16string(1'000'000, u'1'), value));
    EXPECT_TRUE(format_of(u"de").parse(u"1.125", value) && value == 1125) << value;
}

} // namespace
