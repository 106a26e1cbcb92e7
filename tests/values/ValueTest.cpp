// Handles on values: what they hold, read, compare and how the objects behind them behave.
#include "SampleTypes.h"

#include <core/component/ClassDescriptor.h>
#include <core/values/ContextException.h>
#include <core/values/TypeValueService.h>
#include <core/values/TypedValue.h>
#include <core/values/UnknownValue.h>

#include "support/MessageLanguage.h"

#include <cmath>
#include <limits>
#include <sstream>
#include <unordered_set>

namespace {

using namespace core;
using namespace core::literals;
using namespace test;

class ValueTest : public ProcessTest {};

// Counts its references where everybody sees them.
class CountedValue
    : public ObjectRoot
    , public SCOM_InternalClass<CountedValue>
    , public IValueImpl<&kUUIDNull> {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<CountedValue, IValue>();
    }
    explicit CountedValue(int& alive) : alive_(alive) { ++alive_; }
    ~CountedValue() { --alive_; }

private:
    int& alive_;
};

std::uint32_t references_of(IValue* value) {
    value->AddRef();
    return value->Release();
}

TEST_F(ValueTest, HandlesOwnShareAndNeverGoEmpty) {
    int alive = 0;
    {
        Value value(static_cast<IValue*>(make_object<CountedValue>(alive).get()));
        IValue* const object = value.lentIValue();
        EXPECT_EQ(references_of(object), 1u);
        Value copy = value;
        Value moved = std::move(value);
        EXPECT_TRUE(is_undefined_value(value));
        EXPECT_EQ(references_of(object), 2u);
        moved = static_cast<const Value&>(moved);
        moved = std::move(copy);
        copy.setIValue(nullptr);
        EXPECT_TRUE(is_undefined_value(copy));
        EXPECT_EQ(references_of(object), 1u);

        WeakValue weak(object);
        EXPECT_EQ(references_of(object), 1u);
        weak.assign(12); // lets go of what it never owned
        EXPECT_EQ(references_of(object), 1u);
        weak.setIValue(object);
        EXPECT_EQ(references_of(object), 2u);
        weak.clear();

        const InterfacePtr<IValue> given = moved.detachIValue();
        EXPECT_TRUE(is_undefined_value(moved));
        EXPECT_EQ(references_of(given.get()), 1u);
        given->AddRef();
        Value last;
        last.setIValue(given.get());
        given->Release();
        EXPECT_EQ(alive, 1);
    }
    EXPECT_EQ(alive, 0);
    EXPECT_TRUE(is_undefined_value(Value::undefined()));
    EXPECT_TRUE(is_undefined_value(Value(static_cast<IUnknown*>(nullptr))));
    EXPECT_TRUE(is_undefined_value(WeakValue(nullptr)));
}

TEST_F(ValueTest, CommonValuesAreStatic) {
    const auto is_static = [](IValue* value) {
        const Value holder(value);
        return value->AddRef() == 0 && value->Release() == 0;
    };
    for (int i = 0; i != 10; ++i) {
        EXPECT_EQ(create_numeric_value(i), create_numeric_value(static_cast<unsigned char>(i)));
        EXPECT_EQ(create_numeric_value(i), create_numeric_value(Numeric(i)));
        EXPECT_TRUE(is_static(create_numeric_value(i))) << i;
        EXPECT_TRUE(Value(i).equals(i));
    }
    for (IValue* const value :
         {create_undefined_value(), create_null_value(), proceed_call_unspecified_value(),
          create_boolean_value(true), create_boolean_value(false), create_numeric_value(0.0),
          create_numeric_value(-0.0), create_string_value(u""), create_date_value(Date()),
          create_type_value(CLSID_UndefinedType)})
        EXPECT_TRUE(is_static(value));
    EXPECT_NE(proceed_call_unspecified_value(), create_undefined_value());

    const struct {
        const char* what;
        IValue* value;
    } dynamic[] = {
        {"10", create_numeric_value(10)},
        {"-1", create_numeric_value(-1)},
        {"1.0", create_numeric_value(1.0)},
        {"0.5", create_numeric_value(0.5_num)},
        {"huge", create_numeric_value(~0ull)},
        {"blank", create_string_value(u" ")},
        {"a tick", create_date_value(Date::fromTicks(1))},
        {"a type", create_type_value(kUUIDNull)},
    };
    for (const auto& row : dynamic) {
        const Value holder(row.value);
        EXPECT_EQ(references_of(row.value), 1u) << row.what;
    }
    EXPECT_TRUE(Value(1.0) == Value(1));
}

TEST_F(ValueTest, HoldsNativeData) {
    EXPECT_EQ(Value(true).as<bool>(), true);
    EXPECT_EQ(Value(std::numeric_limits<long long>::min()).as<Numeric>(),
              Numeric(std::numeric_limits<long long>::min()));
    EXPECT_EQ(Value(~0ull).as<unsigned long long>(), ~0ull);
    EXPECT_EQ(Value(~0ull).try_as<long long>(), std::nullopt);
    EXPECT_EQ(Value(std::numeric_limits<long long>::min()).as<long long>(),
              std::numeric_limits<long long>::min());
    EXPECT_EQ(Value(u"Riga").as<stdx::ustring>(), u"Riga");
    EXPECT_EQ(Value("20200515"_date).as<Date>(), "20200515"_date);
    EXPECT_EQ(type_value(CLSID_DateType).as<_GUID>(), CLSID_DateType);
    EXPECT_EQ(Value(0.1).as<double>(), 0.1);

    stdx::ustring text(100, u'x');
    const char16_t* const units = text.c_str();
    const Value taken = std::move(text); // the block, and no copy
    EXPECT_EQ(taken.data<stdx::ustring>()->c_str(), units);
    EXPECT_EQ(taken.data<stdx::ustring>()->_get_refs(), 1u);

    Value value = 300;
    EXPECT_EQ(value.try_as<int>(), 300);
    EXPECT_EQ(value.try_as<signed char>(), std::nullopt);
    EXPECT_EQ(value.try_as<bool>(), std::nullopt);
    EXPECT_EQ(value.try_as<stdx::ustring>(), std::nullopt);
    EXPECT_EQ(value.data<Date>(), nullptr);
    EXPECT_EQ(*value.data<Numeric>(), 300);
    value = -1;
    EXPECT_EQ(value.try_as<unsigned>(), std::nullopt);
    EXPECT_EQ(value.try_as<unsigned long long>(), std::nullopt);
    value = 2.5;
    EXPECT_EQ(value.try_as<int>(), std::nullopt);
    EXPECT_EQ(value.try_as<double>(), 2.5);
}

TEST_F(ValueTest, SaysWhatItCannotRead) {
    const auto said = [](auto read) {
        try {
            read();
        } catch (const ContextException& exception) {
            return exception.description();
        }
        return stdx::ustring();
    };
    const Value value(u"Riga"), number(2.5_num);
    EXPECT_EQ(said([&] { (void)value.as<int>(); }),
              u"A value of the type Number is needed, this one is of the type String");
    EXPECT_EQ(said([&] { (void)number.as<int>(); }),
              u"The number 2.5 is too large here, or has a fraction");
    const MessageLanguage russian(u"ru");
    EXPECT_EQ(said([&] { (void)value.as<int>(); }),
              u"Требуется значение типа Число, а это значение имеет тип Строка");
    EXPECT_EQ(said([&] { (void)number.as<int>(); }),
              u"Число 2.5 здесь слишком велико или имеет дробную часть");
}

TEST_F(ValueTest, ComparesWithNativeDataWithoutConversion) {
    const Value one = 1, text = u"1", yes = true, day = "20200515"_date, nothing;
    EXPECT_TRUE(one == 1);
    EXPECT_TRUE(one == 1.0);
    EXPECT_TRUE(one == 1_num);
    EXPECT_TRUE(one.equals(static_cast<unsigned char>(1)));
    EXPECT_TRUE(text == u"1");
    EXPECT_TRUE(text == stdx::ustring(u"1"));
    EXPECT_TRUE(yes == true);
    EXPECT_TRUE(day == "20200515"_date);
    EXPECT_FALSE(one == u"1");
    EXPECT_FALSE(text == 1);
    EXPECT_FALSE(yes == 1);
    EXPECT_FALSE(one == true);
    EXPECT_FALSE(text == u"1 ");
    EXPECT_FALSE(nothing == false);
    EXPECT_FALSE(Value(u" ") == u"");
    EXPECT_TRUE(TypedValue() == Value());
    for (const double none : {HUGE_VAL, -HUGE_VAL, std::nan("")})
        EXPECT_FALSE(one == none || text == none);
}

TEST_F(ValueTest, HashesAsItIsTold) {
    const struct {
        Value value;
        std::uint32_t hash;
    } rows[] = {
        {Value(), 0x7fffffff},
        {Value(create_null_value()), 0x7ffffffe},
        {false, 0x7ffffffc},
        {true, 0x7ffffffd},
        {12, 12},
        {12.75_num, 12},
        {-1, 0xffffffff},
        {0x1'2345'6789, 0x23456789},
        {u"ab", 97 * 37 + 98},
        {Date::fromTicks(0x1'0000'0005ull * 10'000 + 9'999), 5},
        {type_value("12345678-0000-0000-0000-000000000000"_guid), 0x12345678},
    };
    for (const auto& row : rows) EXPECT_EQ(row.value.hashCode0(), row.hash) << row.value;

    const Value object = fixed_value(u"");
    IValue* const plain = make_object<PlainValue>().detach();
    EXPECT_EQ(plain->hashCode(),
              static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(plain)));
    plain->Release();
    const std::unordered_set<Value> set = {1, 1, u"1", true, Value(), Value(1.0), object, object};
    EXPECT_EQ(set.size(), 5u);
}

TEST_F(ValueTest, ObjectsOfBaseTypesAnswerForTheirInterfaces) {
    const struct {
        Value value;
        bool isDefault;
    } rows[] = {
        {Value(), true},
        {Value(create_null_value()), true},
        {false, false},
        {0, true},
        {12, false},
        {u"", true},
        {u" \t\u00A0", true},
        {u" x", false},
        {Date(), true},
        {Date::fromTicks(1), false},
        {type_value(kUUIDNull), true},
        {type_value(CLSID_UndefinedType), false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.value.hashCode0());
        IValue* const value = row.value.lentIValue();
        const auto check = row.value.object<ICheckDefaultValue>();
        ASSERT_TRUE(check && row.value.object<IPersistableValue>());
        EXPECT_EQ(check->isDefaultValue(), row.isDefault);
        EXPECT_EQ(row.value.object<ICloneableObject>()->clone(), static_cast<IUnknown*>(value));
        EXPECT_EQ(InterfacePtr<IUnknown>(static_cast<IUnknown*>(check.get())),
                  static_cast<IUnknown*>(value)); // one identity
        EXPECT_EQ(static_cast<bool>(row.value.object<ITypeValue>()),
                  row.value.typeCode() == TypeCode::Type);
        void* out = value;
        EXPECT_EQ(value->QueryInterface(IID_IUnknownValue, &out), E_NOINTERFACE);
        EXPECT_EQ(out, nullptr);
        EXPECT_EQ(row.value.getIValue()->getIType(), base_type(row.value.typeCode()));
    }
    EXPECT_EQ(type_value(CLSID_DateType).object<ITypeValue>()->getTypeGuid(), CLSID_DateType);
}

TEST_F(ValueTest, PassesThroughTheTableOfHandles) {
    Value value = 12, other;
    TypedValue typed;
    value.setIValueTo(typed);
    typed.setIValueTo(other);
    EXPECT_EQ(other.lentIValue(), value.lentIValue());
    EXPECT_TRUE(typed.equalsTo(value) && value.equalsTo(WeakValue(other.lentIValue())));
    EXPECT_TRUE(typed.type0() == Type(TypeCode::Numeric));
    EXPECT_EQ(typed.hashCode0(), 12u);
}

TEST_F(ValueTest, HoldsObjectsThatAreNoValues) {
    // A type object is none.
    IUnknown* const object = base_type(TypeCode::Date);
    Value value(object);
    const auto unknown = value.object<IUnknownValue>();
    ASSERT_TRUE(unknown);
    EXPECT_EQ(unknown->getObject(), object);
    EXPECT_EQ(value.typeCode(), TypeCode::Object);
    EXPECT_EQ(value.type().clsid(), CLSID_UnknownValue);
    EXPECT_EQ(to_string(value), u"UnknownObject");
    process().setTermLanguage(1);
    EXPECT_EQ(to_string(value), u"НеизвестныйОбъект");

    Value number = 12, same;
    same.assign(static_cast<IUnknown*>(number.getIValue().get()));
    EXPECT_EQ(same.lentIValue(), number.lentIValue());
}

TEST_F(ValueTest, PrintsItselfForPeople) {
    std::ostringstream out;
    out << Value() << '|' << Value(12) << '|' << Value(u"Рига") << '|' << fixed_value(u"x");
    EXPECT_EQ(out.str(), "Undefined|Number 12|String Рига|UnknownObject x");
}

// The processes of the tests have gone, or there was never one.
TEST(ValueWithoutProcess, Works) {
    const Value number = 12.5_num, text = u"12", yes = true, nothing, day = "20200515"_date;
    EXPECT_FALSE(to_string(number).empty() || to_string(yes).empty() || to_string(day).empty());
    Numeric parsed;
    EXPECT_TRUE(text.getNumeric(parsed) && parsed == 12);
    EXPECT_TRUE(number == 12.5_num && !(number == text));
    const Value object(static_cast<IValue*>(make_object<PlainValue>().get()));
    EXPECT_EQ(object.lentIValue()->getIType(), nullptr);
    EXPECT_EQ(object.typeCode(), TypeCode::Object);
    EXPECT_EQ(to_string(object), u"UnknownObject");
}

} // namespace
