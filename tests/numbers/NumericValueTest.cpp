#include "NumberCases.h"

#include <core/numbers/NumericException.h>
#include <core/text/Hex.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>
#include <unordered_set>
#include <vector>

namespace {

using namespace core;
using namespace core::literals;
using test::text_of;

Numeric number(std::string_view text) {
    return Numeric::parse(text).value();
}

constinit Numeric madeByTheCompiler = -5'000'000'000;

template <class T>
concept MakesANumber = std::is_constructible_v<Numeric, T>;
static_assert(!MakesANumber<bool> && !MakesANumber<char> && !MakesANumber<char16_t> &&
              !MakesANumber<const char*>);
static_assert(MakesANumber<std::uint8_t> && MakesANumber<float> &&
              !std::is_convertible_v<Numeric, double>);

TEST(NumericValue, HoldsIntegersExactly) {
    EXPECT_EQ(text_of(std::numeric_limits<long long>::min()), "-9223372036854775808");
    EXPECT_EQ(text_of(~0ull), "18446744073709551615");
    EXPECT_EQ(text_of(static_cast<short>(-32768)), "-32768");
    EXPECT_EQ(text_of(1'000'000'000'000'000'000), "1000000000000000000");
    EXPECT_EQ(text_of(madeByTheCompiler), "-5000000000");
    EXPECT_EQ(text_of(Numeric()), "0");
    EXPECT_EQ(text_of(12.50_num), "12.5");
    EXPECT_EQ(text_of(1'000'010_num - 010_num), "1000000");
}

TEST(NumericValue, TakesFifteenDigitsOfADouble) {
    const struct {
        double value;
        const char* text;
    } rows[] = {
        {0.1, "0.1"},
        {-0.1, "-0.1"},
        {0.0, "0"},
        {-0.0, "0"},
        {123456789012345.0, "123456789012345"},
        {999999999999999.0, "999999999999999"},
        {1e15, "1000000000000000"},
        {1e23, "100000000000000000000000"},
        {1.0 / 3, "0.333333333333333"},
        {2.0 / 3, "0.666666666666667"},
        {123456789012345678.0, "123456789012346000"},
        {9007199254740993.0, "9007199254740990"},
        {0.000001234567890123456, "0.00000123456789012346"},
        {1e-9, "0.000000001"},
        {99999999.99999999, "100000000"},
        {0.99999999999999994, "1"},
    };
    for (const auto& row : rows) EXPECT_EQ(text_of(row.value), row.text);
    for (int power = -308; power < 308; ++power) {
        const double value =
            std::strtod(("-7.89012345678901e" + std::to_string(power)).c_str(), nullptr);
        const Numeric weight = power > 14 ? Numeric(10).pow(power - 14) : (0.1_num).pow(14 - power);
        EXPECT_EQ(Numeric(value), -789'012'345'678'901 * weight) << power;
        EXPECT_EQ(static_cast<double>(Numeric(value)), value) << power;
    }
    for (const double value : {HUGE_VAL, -HUGE_VAL, std::nan("")})
        EXPECT_THROW(Numeric{value}, NumericException);
    EXPECT_NE(Numeric(std::numeric_limits<double>::denorm_min()), 0);
    // The fifteen digits of the largest double lie above it.
    EXPECT_EQ(static_cast<double>(Numeric(std::numeric_limits<double>::max())), HUGE_VAL);
}

TEST(NumericValue, ConvertsToDouble) {
    std::mt19937_64 random(3);
    for (int i = 0; i != 2000; ++i) {
        std::string text = std::to_string(random() >> random() % 60);
        text.insert(random() % (text.size() + 1), ".");
        EXPECT_DOUBLE_EQ(static_cast<double>(number(text)), std::strtod(text.c_str(), nullptr))
            << text;
    }
    EXPECT_EQ(static_cast<double>(number("-1" + std::string(308, '0'))), -1e308);
}

// The three highest limbs in extended precision, scaled by a power of 10^9: what is exact to 64 bits
// and then rounded to double is the same to the last bit in every way to get there.
TEST(NumericValue, ConvertsToDoubleByItsHighestLimbs) {
    const auto power_of_base = [](int power) {
        long double result = 1;
        for (long double square = 1e9L; power != 0; power >>= 1, square *= square)
            if (power & 1) result *= square;
        return result;
    };
    std::mt19937_64 random(4);
    for (int i = 0; i != 20'000; ++i) {
        std::vector<unsigned> limbs(1 + random() % 5); // the highest first; none at an end is zero
        std::string digits;
        for (unsigned& limb : limbs) {
            limb = 1 + static_cast<unsigned>(random() % (random() % 2 ? 1'000 : 999'999'999));
            const std::string text = std::to_string(limb);
            digits += std::string(9 - text.size(), '0') + text;
        }
        const std::size_t behind = random() % 25, zeros = random() % 2 ? random() % 25 : 0;
        if (behind != 0 && zeros == 0) {
            digits.insert(0, 9 * behind, '0');
            digits.insert(digits.size() - 9 * behind, ".");
        }
        digits.append(9 * zeros, '0');

        long double top = 0;
        const std::size_t used = std::min<std::size_t>(limbs.size(), 3);
        for (std::size_t limb = 0; limb != used; ++limb)
            top = top * 1e9L + static_cast<long double>(limbs[limb]);
        const auto power = static_cast<int>(limbs.size() - used + zeros) -
                           static_cast<int>(zeros == 0 ? behind : 0);
        top = power < 0 ? top / power_of_base(-power) : top * power_of_base(power);
        ASSERT_EQ(static_cast<double>(number(digits)), static_cast<double>(top)) << digits;
        ASSERT_EQ(static_cast<double>(number('-' + digits)), static_cast<double>(-top)) << digits;
    }
}

// The integer part with its sign, modulo 2^64 and 2^32.
TEST(NumericValue, WrapsUncheckedIntegers) {
    const struct {
        const char* text;
        long long wide;
        long narrow;
    } rows[] = {
        {"0", 0, 0},
        {"-1.9", -1, -1},
        {"4294967297.5", 4294967297, 1},
        {"2147483648", 2147483648, -2147483648L},
        {"18446744073709551617", 1, 1},
        {"-18446744073709551618", -2, -2},
        {"1000000000000000000000000000", static_cast<long long>(0x9fd0803ce8000000), -402653184L},
        {"0.5", 0, 0},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(static_cast<long long>(number(row.text)), row.wide) << row.text;
        EXPECT_EQ(static_cast<long>(number(row.text)), row.narrow) << row.text;
    }
}

template <class T>
void expect_range(T (Numeric::*convert)() const, const char* least, const char* most) {
    const auto fails = [&](const Numeric& value) {
        try {
            (value.*convert)();
            return false;
        } catch (const NumericException& exception) {
            return exception.error() == NumericException::Error::Overflow;
        }
    };
    EXPECT_EQ((number(least).*convert)(), std::numeric_limits<T>::min());
    EXPECT_EQ((number(most).*convert)(), std::numeric_limits<T>::max());
    EXPECT_EQ((Numeric(0).*convert)(), 0);
    EXPECT_TRUE(fails(number(least) - 1)) << least;
    EXPECT_TRUE(fails(number(most) + 1)) << most;
    for (const char* const text :
         {"1.5", "0.000000001", "1000000000000000000000000000", "18446744073709551616000000000"})
        EXPECT_TRUE(fails(number(text))) << text;
}

TEST(NumericValue, ChecksIntegers) {
    expect_range(&Numeric::safeAsByte, "0", "255");
    expect_range(&Numeric::safeAsUInt16, "0", "65535");
    expect_range(&Numeric::safeAsUInt32, "0", "4294967295");
    expect_range(&Numeric::safeAsUInt64, "0", "18446744073709551615");
    expect_range(&Numeric::safeAsInt64, "-9223372036854775808", "9223372036854775807");
    EXPECT_THROW(Numeric(1'000'000'000).safeAsByte(), NumericException);
}

TEST(NumericValue, TellsIntegersOfEighteenDigits) {
    long long value = 77;
    EXPECT_TRUE(number("-999999999999999999").toInteger(value));
    EXPECT_EQ(value, -999999999999999999);
    EXPECT_TRUE(Numeric(1'000'000'000).toInteger(value));
    EXPECT_EQ(value, 1'000'000'000);
    for (const char* const text : {"1000000000000000000", "0.5", "-1000000000.000000001"})
        EXPECT_FALSE(number(text).toInteger(value)) << text;
}

TEST(NumericValue, TellsLengthAndPrecision) {
    const struct {
        const char* text;
        unsigned length, precision;
    } rows[] = {
        {"0", 1, 0},
        {"7", 1, 0},
        {"-10", 2, 0},
        {"1000000000", 10, 0},
        {"12.50", 3, 1},
        {"0.05", 2, 2},
        {"0.000000000123", 12, 12},
        {"123456789.000000001", 18, 9},
        {"99999999999", 11, 0},
        {"100.000000000000000001", 21, 18},
    };
    for (const auto& row : rows) {
        unsigned length, precision;
        number(row.text).lengthAndPrecision(length, precision);
        EXPECT_EQ(std::make_pair(length, precision), std::make_pair(row.length, row.precision))
            << row.text;
    }
}

// The numbers ascend; each is compared with each.
TEST(NumericValue, IsOrderedAndHashed) {
    const Numeric ascending[] = {
        number("-1000000000000000000000000000000000000000"),
        -1'000'000'000,
        number("-999999999.999999999"),
        -2,
        -1.5_num,
        -1,
        -0.000000001_num,
        0,
        number("0.000000000000000001"),
        0.000000001_num,
        0.1_num,
        1,
        1.000000001_num,
        999'999'999,
        1'000'000'000,
        number("1000000000.1"),
        number("100000000000000000000000000000000000000.1"),
    };
    std::unordered_set<std::size_t> hashes;
    for (const Numeric& a : ascending) {
        for (const Numeric& b : ascending) {
            EXPECT_EQ(a <=> b, &a <=> &b) << a << ' ' << b;
            EXPECT_EQ(a.compare(b), (&a > &b) - (&a < &b));
            EXPECT_EQ(a.compareMod(b), a.abs().compare(b.abs()));
            EXPECT_EQ(a == b, &a == &b);
        }
        hashes.insert(std::hash<Numeric>()(a));
        EXPECT_EQ(std::hash<Numeric>()(a), std::hash<Numeric>()(a * 3 / 3 + 1 - 1));
    }
    EXPECT_EQ(hashes.size(), std::size(ascending));
    EXPECT_TRUE(1_num < 2 && 2 > 1.5_num && 0.5_num == 0.5 && 3u >= 3_num);
}

TEST(NumericValue, HasNoNegativeZero) {
    EXPECT_EQ((-Numeric(0)).sign(), 0);
    EXPECT_EQ(-Numeric(0), 0);
    EXPECT_EQ((-0.4_num).round(0, NumericRoundMode::HalfUp), 0);
    EXPECT_EQ(0 * -5_num, 0);
    EXPECT_EQ(-5_num + 5, 0);
}

// CRC over the fields as they lie in memory.
TEST(NumericValue, SumsItsFields) {
    const std::string bytes{"\x01\0\0\0\xFF\x80\xB2\xE6\x0E\x0C\0\0\0", 13}; // -12.25
    const auto expected = get_crc_32(bytes.data(), 13, 5, false);
    EXPECT_EQ((-12.25_num).calculateChecksum(5), expected);
    EXPECT_NE((12.25_num).calculateChecksum(5), expected);
}

TEST(NumericValue, MovesAndCopies) {
    for (const char* const text : {"0", "-12.5", "123456789012345678901234567890123456.789"}) {
        const Numeric original = number(text);
        Numeric copy = original, moved = std::move(copy);
        EXPECT_EQ(moved, original);
        EXPECT_EQ(copy, 0);
        EXPECT_EQ(copy + 1, 1);
        Numeric assigned = number("98765432109876543210987654321098765432109876543210");
        assigned = moved;
        EXPECT_EQ(assigned, original);
        assigned = std::move(moved);
        EXPECT_EQ(assigned, original);
        EXPECT_EQ(moved, 0);
        Numeric& self = assigned;
        assigned = self;
        EXPECT_EQ(assigned, original);
        assigned = std::move(self);
        EXPECT_EQ(assigned, original);
    }
}

TEST(NumericValue, IsPrinted) {
    std::ostringstream out;
    out << std::string("[") << -1.50_num << ']';
    EXPECT_EQ(out.str(), "[-1.5]");
}

} // namespace
