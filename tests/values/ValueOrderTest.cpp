// The order of values and their equality, over a corpus of all kinds.
#include "SampleTypes.h"

#include <core/component/ClassDescriptor.h>
#include <core/locale/Locale.h>
#include <core/values/ValueOrder.h>

#include <algorithm>
#include <random>

namespace {

using namespace core;
using namespace core::literals;
using namespace test;

class ValueOrder : public ProcessTest {
protected:
    void SetUp() override { process().setLocale(Locale(u"ru")); }
};

TEST_F(ValueOrder, GoesByTypeThenByValue) {
    // Ascending; those of one row stand in one place.
    const std::vector<std::vector<Value>> places = {
        {Value(), Value(proceed_call_unspecified_value())},
        {Value(create_null_value())},
        {false},
        {true},
        {Numeric::parse(u"-1000000000000000000000.5").value()},
        {-1},
        {0, 0.0},
        {2, 2.0_num},
        {10},
        {u"", u"  "},
        {u"1"},
        {u"10"},
        {u"2"},
        {u"ёлка", u"ЁЛКА "},
        {u"ель"},
        {u"жук"},
        {u"riga", u"RIGA  ", u"Riga"},
        {u"rigb"},
        {Date()},
        {Date(2020, 5, 15), Date(2020, 5, 15)},
        {Date::fromTicks(Date::kLastTicks)},
        {fixed_value(u"a"), fixed_value(u"A ")},
        {fixed_value(u"b")},
        {type_value(CLSID_DateType), type_value(CLSID_DateType)},
        {type_value(CLSID_NumericType)},
    };
    for (std::size_t i = 0; i != places.size(); ++i)
        for (std::size_t j = 0; j != places.size(); ++j)
            for (const Value& a : places[i])
                for (const Value& b : places[j]) {
                    const int order = compare_values(a, b);
                    const int wanted = i < j ? -1 : i > j ? 1 : 0;
                    EXPECT_EQ((order > 0) - (order < 0), wanted) << a << " and " << b;
                    EXPECT_EQ(ValueLess()(a, b), i < j) << a << " and " << b;
                }
}

// Values that are near each other in every way.
Value random_value(std::mt19937& random, const std::vector<Value>& objects) {
    static constexpr char16_t kLetters[] = u"aA bBё ";
    const auto below = [&](unsigned n) { return static_cast<int>(random() % n); };
    switch (below(8)) {
    case 0:
        return Value();
    case 1:
        return Value(create_null_value());
    case 2:
        return Value(below(2) == 0);
    case 3:
        return Value(Numeric(below(40) - 20) / 4);
    case 4: {
        stdx::ustring text;
        for (int n = below(4); n > 0; --n) text += kLetters[below(7)];
        return Value(text);
    }
    case 5:
        return Value(Date::fromTicks(static_cast<unsigned>(below(5))));
    case 6:
        return type_value(below(2) == 0 ? CLSID_DateType : CLSID_NullType);
    default:
        return objects[static_cast<std::size_t>(below(static_cast<unsigned>(objects.size())))];
    }
}

TEST_F(ValueOrder, IsATotalOrderAndEqualityAnEquivalence) {
    std::mt19937 random(1);
    const std::vector<Value> objects = {
        fixed_value(u"a"), fixed_value(u"A"), fixed_value(u"b"),
        Value(static_cast<IValue*>(make_object<PlainValue>().get()))};
    std::vector<Value> values;
    for (int i = 0; i != 120; ++i) values.push_back(random_value(random, objects));
    const auto sign = [](int n) { return (n > 0) - (n < 0); };
    for (const Value& a : values) {
        EXPECT_EQ(compare_values(a, a), 0);
        EXPECT_TRUE(a == a);
        for (const Value& b : values) {
            const int ab = sign(compare_values(a, b));
            ASSERT_EQ(ab, -sign(compare_values(b, a))) << a << " and " << b;
            ASSERT_EQ(a == b, b == a) << a << " and " << b;
            if (a == b) {
                ASSERT_EQ(ab, 0) << a << " and " << b;
                if (a.typeCode() != TypeCode::Object) {
                    ASSERT_EQ(a.hashCode0(), b.hashCode0()) << a << " and " << b;
                }
            }
            for (const Value& c : values) {
                const int bc = sign(compare_values(b, c));
                const bool ascends = ab <= 0 && bc <= 0;
                ASSERT_TRUE(!ascends || compare_values(a, c) <= 0) << a << b << c;
                ASSERT_TRUE(a != b || b != c || a == c) << a << b << c;
            }
        }
    }
    std::stable_sort(values.begin(), values.end(), ValueLess());
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end(), ValueLess()));
}

} // namespace
