#include "NumberCases.h"

#include "support/FailingMemory.h"
#include "support/ProcessTest.h"

#include <core/component/IllegalArgumentException.h>
#include <core/concurrency/Thread.h>
#include <core/numbers/NumericException.h>
#include <core/numbers/NumericLimits.h>

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <random>

namespace {

using namespace core;
using namespace core::literals;
using test::text_of;
using Error = NumericException::Error;

Numeric number(std::string_view text) {
    return Numeric::parse(text).value();
}

Error error_of(const std::function<void()>& body) {
    try {
        body();
    } catch (const NumericException& exception) {
        return exception.error();
    }
    return Error::None;
}

// Digits with many nines and zeros, where carries are; a point at any place or none.
std::string random_text(std::mt19937& random, std::size_t most) {
    const auto below = [&](std::size_t n) {
        return std::uniform_int_distribution<std::size_t>(0, n - 1)(random);
    };
    const std::string_view from = below(2) != 0 ? "0123456789" : "0009999995";
    std::string digits(1 + below(most), '0');
    for (char& digit : digits) digit = from[below(10)];
    if (below(4) != 0) digits.insert(below(digits.size() + 1), 1, '.');
    if (below(4) == 0) digits.append(digits.find('.') == digits.npos ? 9 * below(4) : 0, '0');
    return (below(3) == 0 ? "-" : "") + digits;
}

TEST(NumericArithmetic, GivesTheResultsOfTheTable) {
    std::ifstream in(CASES "numbers.cases");
    int rows = 0;
    for (std::string line; std::getline(in, line);) {
        const auto row = test::parse_number_case(line);
        if (!row) continue;
        ++rows;
        EXPECT_EQ(test::by_numeric(row->operation, number(row->a), number(row->b)), row->result)
            << line;
    }
    EXPECT_GT(rows, 250);
}

TEST(NumericArithmetic, AgreesWithTheModel) {
    std::mt19937 random(1);
    for (int i = 0; i != 3000; ++i) {
        const std::size_t most = i % 100 == 0 ? 500 : i % 3 == 0 ? 90 : 30;
        const Numeric a = number(random_text(random, most)), b = number(random_text(random, most));
        const std::string x = text_of(a), y = text_of(b);
        for (const char* const operation : {"add", "sub", "mul", "div"}) {
            const std::string expected = test::by_model(operation, x, y);
            if (expected == "?") continue;
            ASSERT_EQ(test::by_numeric(operation, a, b), expected)
                << x << ' ' << operation << ' ' << y;
        }
        for (const Numeric& places : {Numeric(static_cast<int>(random() % 60) - 30), Numeric(0)})
            for (const char* const operation : {"round0", "round1"})
                ASSERT_EQ(test::by_numeric(operation, a, places),
                          test::by_model(operation, x, text_of(places)))
                    << x << ' ' << operation << ' ' << places;
    }
}

// Lengths about the places where one method takes over from another.
TEST(NumericArithmetic, MultipliesAndDividesLongNumbers) {
    std::mt19937 random(2);
    const auto digits = [&](std::size_t limbs) {
        std::string text(9 * limbs, '9');
        if (random() % 4 != 0)
            for (char& digit : text) digit = static_cast<char>('0' + random() % 10);
        text[0] = '1';
        text.back() = '7';
        return text;
    };
    for (const std::size_t n :
         {1u, 2u, 3u, 4u, 5u, 15u, 16u, 17u, 33u, 94u, 95u, 96u, 97u, 191u, 192u, 200u, 390u})
        for (const std::size_t m : {1u, 3u, 4u, 16u, 17u, 18u, 95u, 96u, 99u, 193u}) {
            const std::string x = digits(n), y = digits(m);
            const Numeric a = number(x), b = number(y), product = a * b;
            ASSERT_EQ(product, b * a);
            // The product modulo two numbers that have nothing in common with the base.
            for (const std::uint64_t prime :
                 {std::uint64_t{998'244'353}, std::uint64_t{1'000'003}}) {
                const auto rest = [&](const std::string& text) {
                    std::uint64_t value = 0;
                    for (const char c : text)
                        value = (value * 10 + static_cast<std::uint64_t>(c - '0')) % prime;
                    return value;
                };
                ASSERT_EQ(rest(text_of(product)), rest(x) * rest(y) % prime) << n << ' ' << m;
            }
            ASSERT_EQ(product / b, a) << n << ' ' << m;
            ASSERT_EQ((product + b - 1) % b, b - 1) << n << ' ' << m;
        }
}

TEST(NumericArithmetic, AllowsTheSameNumberOnBothSides) {
    for (const char* const text :
         {"0", "7", "-999999999.999999999", "123456789012345678901234567890123456789.5"}) {
        const Numeric a = number(text);
        const std::string x = text_of(a);
        Numeric sum = a, difference = a, product = a;
        EXPECT_EQ(text_of(sum += sum), test::by_model("add", x, x));
        EXPECT_TRUE((difference -= difference).zero());
        EXPECT_EQ(difference.sign(), 0);
        EXPECT_EQ(text_of(product *= product), test::by_model("mul", x, x));
        if (a.zero()) continue;
        Numeric quotient = a, rest = a;
        EXPECT_EQ(quotient /= quotient, 1);
        EXPECT_TRUE((rest %= rest).zero());
    }
}

TEST(NumericArithmetic, RefusesToDivideByZero) {
    EXPECT_EQ(error_of([] { Numeric(1) / 0; }), Error::DivideByZero);
    EXPECT_EQ(error_of([] { Numeric(0) / 0; }), Error::DivideByZero);
    EXPECT_EQ(error_of([] { Numeric(1.5) % 0; }), Error::DivideByZero);
    EXPECT_EQ(error_of([] { Numeric(0).pow(-1); }), Error::DivideByZero);
    EXPECT_EQ(error_of([] { Numeric(0).pow(-0.5_num); }), Error::DivideByZero);
    EXPECT_EQ(error_of([] { Numeric(-2).pow(0.5_num); }), Error::NegativePow);
    EXPECT_EQ(error_of([] { Numeric(-1).pow(10'000'000'000); }), Error::NegativePow);
    EXPECT_EQ(error_of([] { Numeric(10).pow(308.5_num); }), Error::Overflow);
}

TEST(NumericArithmetic, RaisesToFractionsByDouble) {
    EXPECT_EQ(Numeric(2).pow(0.5_num), 1.4142135623731_num);
    EXPECT_EQ(Numeric(0).pow(0.5_num), 0);
    EXPECT_EQ(Numeric(1).pow(10'000'000'000), 1);
}

// The exponent counts limbs: a number with few limbs can stand far from the point.
TEST(NumericArithmetic, RefusesWhatWouldNeedGigabytes) {
    const Numeric far = Numeric(1'000'000'000).pow(999'999'999); // one limb
    EXPECT_EQ(far * 2 - far, far);
    EXPECT_EQ(Numeric(far).compare(far * 2), -1);
    const Numeric near = (0.000000001_num).pow(999'999'999);
    EXPECT_EQ(far * near, 1);
    // As far as a product reaches; a sum may go on.
    const Numeric half = far * Numeric(1'000'000'000).pow(0x3FFFFFFF - 999'999'999) * 500'000'000;
    EXPECT_THROW(half * 1'000'000'000, std::bad_alloc);
    EXPECT_EQ(half + half - half, half);
    EXPECT_THROW(far * far, std::bad_alloc);
    EXPECT_THROW(near * near, std::bad_alloc);
    EXPECT_THROW(far + near, std::bad_alloc);
    EXPECT_THROW(far - near, std::bad_alloc);
    EXPECT_THROW(far.toString(), std::bad_alloc);
    EXPECT_EQ(near.round(9), 0);
    EXPECT_EQ(near.floor(), 0);
    EXPECT_EQ((-near).floor(), -1);
    EXPECT_EQ(static_cast<double>(near), 0);
    EXPECT_EQ(static_cast<double>(-far), -HUGE_VAL);
    EXPECT_EQ(static_cast<long long>(far), 0);
    unsigned length, precision;
    near.lengthAndPrecision(length, precision);
    EXPECT_EQ(precision, 0xFFFFFFFF);
}

TEST(NumericArithmetic, KeepsItsValueWhenMemoryFails) {
    const Numeric big = number("9" + std::string(35, '9')),
                  more = number("1" + std::string(44, '1'));
    for (const char* const operation : {"add", "sub", "mul", "div"}) {
        SCOPED_TRACE(operation);
        Numeric a = big;
        {
            const test::FailingMemory memory(0);
            EXPECT_THROW(operation[0] == 'a'   ? a += more
                         : operation[0] == 's' ? a -= more
                         : operation[0] == 'm' ? a *= more
                                               : a /= 7.000000000000000000000000001_num,
                         std::bad_alloc);
        }
        EXPECT_EQ(a, big);
    }
}

TEST(NumericArithmetic, TakesNoMemoryForFourLimbs) {
    Numeric a = number("123456789012345678.123456789012345678");
    Numeric b = number("876543210987654321.876543210987654322"), c = 98765.4321_num;
    const test::FailingMemory memory(0);
    a += b; // carries into 19 digits, and the fraction vanishes
    EXPECT_EQ(a, 1'000'000'000'000'000'000);
    EXPECT_EQ(c * c * c - c * c * c, 0);
    EXPECT_EQ(Numeric(1) / 3 * 3 + (0.000000001_num).pow(3), 1);
    EXPECT_EQ(number("999999999999999999999999999") - 0.5_num + 0.5_num,
              number("999999999999999999999999999"));
    EXPECT_EQ((-2.55_num).round(1, NumericRoundMode::HalfUp), -2.6_num);
}

TEST(NumericArithmetic, AddsAPowerOfTenToTheLowestLimb) {
    Numeric a = 999'999'999.5_num;
    a.add1(8); // half a unit is five of these
    EXPECT_EQ(a, 999'999'999.6_num);
    for (int i = 0; i != 4; ++i) a.add1(8);
    a.delUnsigned();
    EXPECT_EQ(a, 1'000'000'000);
    a = -7;
    a.add1(-3);
    EXPECT_EQ(a, -8);
    EXPECT_THROW(a.add1(9), IllegalArgumentException);
    EXPECT_EQ(a.minus(-9), 1);
    EXPECT_EQ(a.abs(), 8);
}

class NumericInProcess : public test::ProcessTest {};

TEST_F(NumericInProcess, RoundsByTheModeOfItsProcess) {
    char text[8];
    process().setRoundMode(0);
    EXPECT_EQ((2.5_num).round(0), 2);
    EXPECT_TRUE((2.5_num).digits(text, 3, 0));
    EXPECT_STREQ(text, "+002");
    process().setRoundMode(1);
    EXPECT_EQ((2.5_num).round(0), 3);
}

TEST_F(NumericInProcess, LimitsPowersByTheInnermostGuard) {
    EXPECT_EQ(Numeric(10).pow(3), 1000);
    {
        const NumericLimits three(3);
        EXPECT_EQ(Numeric(10).pow(2), 100);
        EXPECT_EQ((0.001_num).pow(9), Numeric::parse("0." + std::string(26, '0') + "1"));
        EXPECT_EQ(error_of([] { Numeric(10).pow(3); }), Error::Overflow);
        {
            const NumericLimits thousand(1000);
            EXPECT_EQ(Numeric(10).pow(999).compare(Numeric(10).pow(998)), 1);
        }
        EXPECT_EQ(error_of([] { Numeric(-10).pow(-3); }), Error::Overflow);
        EXPECT_EQ(error_of([] { Numeric(9).pow(999'999'999); }), Error::Overflow);
        bool limited = true;
        const InterfacePtr<Thread> other =
            create_thread([&] { limited = error_of([] { Numeric(10).pow(3); }) != Error::None; });
        other->start();
        other->join();
        EXPECT_FALSE(limited) << "another thread";
    }
    EXPECT_EQ(Numeric(10).pow(3), 1000);
}

TEST(NumericLimitsWithoutAThread, DoesNothing) {
    const NumericLimits none(1);
    EXPECT_EQ(Numeric(10).pow(3), 1000);
}

TEST_F(NumericInProcess, KeepsItsExceptionInTheTwin) {
    try {
        NumericException(Error::NegativePow).object()->rethrow();
    } catch (const NumericException& exception) {
        EXPECT_EQ(exception.error(), Error::NegativePow);
        EXPECT_FALSE(exception.description().empty());
    }
}

} // namespace
