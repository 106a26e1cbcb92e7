// What base values convert to, in two languages, and what does not convert.
#include "SampleTypes.h"

#include <core/component/ClassDescriptor.h>
#include <core/concurrency/Thread.h>
#include <core/locale/BoolFormat.h>
#include <core/locale/DateFormat.h>
#include <core/locale/NumericFormat.h>
#include <core/values/TypeException.h>

#include <optional>

namespace {

using namespace core;
using namespace core::literals;
using namespace test;

// The formats of a locale, for the thread of the test.
void use_formats_of(const char16_t* name) {
    const Locale locale(name);
    Thread& thread = *current_thread();
    thread.setNumericFormat(NumericFormat(locale));
    thread.setDateFormat(DateFormat(locale));
    thread.setBoolFormat(BoolFormat(locale));
}

class ValueConversions : public ProcessTest {
protected:
    void TearDown() override {
        Thread& thread = *current_thread();
        thread.resetNumericFormat();
        thread.resetDateFormat();
        thread.resetBoolFormat();
    }
};

// What a conversion gives; nothing where it fails, which must leave the default.
template <class T>
std::optional<T> converted(const Value& value, bool (GenericValue::*get)(T&) const, T wrong) {
    T out = wrong;
    if ((value.*get)(out)) return out;
    EXPECT_EQ(out, T()) << value;
    return std::nullopt;
}

struct Conversion {
    Value value;
    std::optional<bool> boolean;
    std::optional<Numeric> number;
    std::optional<const char16_t*> text; // of a string that fails to convert there is none
    std::optional<Date> date;
};

void expect(const Conversion& row) {
    SCOPED_TRACE(testing::Message() << row.value);
    EXPECT_EQ(converted(row.value, &GenericValue::getBoolean, true), row.boolean);
    EXPECT_EQ(converted(row.value, &GenericValue::getNumeric, Numeric(77)), row.number);
    EXPECT_EQ(converted(row.value, &GenericValue::getDate, Date(2000, 1, 1)), row.date);
    stdx::ustring text = u"wrong";
    EXPECT_TRUE(row.value.getString(text));
    EXPECT_EQ(text, row.text.value_or(u""));
}

constexpr auto kNone = std::nullopt;
constexpr Date kMoment(2020, 5, 15, 10, 20, 30);

TEST_F(ValueConversions, GoByTheFormatsOfTheThread) {
    const Conversion english[] = {
        {Value(), kNone, kNone, u"", kNone},
        {Value(create_null_value()), kNone, kNone, u"", kNone},
        {true, true, 1, u"Yes", kNone},
        {false, false, 0, u"No", kNone},
        {1234.5_num, true, 1234.5_num, u"1,234.5", kNone},
        {-1, true, -1, u"-1", kNone},
        {0, false, 0, u"0", kNone},
        {kMoment, kNone, kNone, u"5/15/2020 10:20:30\u202FAM", kMoment},
        {u"Yes", true, kNone, u"Yes", kNone},
        {u" no ", false, kNone, u" no ", kNone},
        {u"1,234.5", kNone, 1234.5_num, u"1,234.5", kNone},
        {u"5/15/2020 10:20:30\u202FAM", kNone, kNone, u"5/15/2020 10:20:30\u202FAM", kMoment},
        {type_value(CLSID_DateType), kNone, kNone, u"Date", kNone},
    };
    const Conversion russian[] = {
        {true, true, 1, u"Да", kNone},
        {false, false, 0, u"Нет", kNone},
        {1234.5_num, true, 1234.5_num, u"1\u00A0234,5", kNone},
        {kMoment, kNone, kNone, u"15.05.2020 10:20:30", kMoment},
        {u"да", true, kNone, u"да", kNone},
        {u"1\u00A0234,5 ", kNone, 1234.5_num, u"1\u00A0234,5 ", kNone},
        {u"15.05.2020 10:20:30", kNone, kNone, u"15.05.2020 10:20:30", kMoment},
    };
    use_formats_of(u"en");
    for (const Conversion& row : english) expect(row);
    use_formats_of(u"ru");
    for (const Conversion& row : russian) expect(row);
}

TEST_F(ValueConversions, TextsOfTheSystemAreReadInAnyLanguage) {
    const Conversion rows[] = {
        {u"  ИСТИНА\t", true, kNone, u"  ИСТИНА\t", kNone},
        {u"true", true, kNone, u"true", kNone},
        {u"ложь", false, kNone, u"ложь", kNone},
        {u"False\u00A0", false, kNone, u"False\u00A0", kNone},
        {u"True story", kNone, kNone, u"True story", kNone},
        {u"Truestory", kNone, kNone, u"Truestory", kNone},
        {u"", kNone, kNone, u"", kNone},
        {u" ", kNone, kNone, u" ", kNone},
        {u" -12.50 ", kNone, -12.5_num, u" -12.50 ", kNone},
        {u".5", kNone, 0.5_num, u".5", kNone},
        {u"0.125", kNone, 0.125_num, u"0.125", kNone}, // no groups
        {u"-1.125", kNone, -1.125_num, u"-1.125", kNone},
        {u"- ", kNone, 0, u"- ", kNone}, // a number ends where its reading stops
        {u"x", kNone, kNone, u"x", kNone},
        {u"12.5x", kNone, kNone, u"12.5x", kNone},
        {u"12 .5", kNone, kNone, u"12 .5", kNone},
        {u"1e3.", kNone, kNone, u"1e3.", kNone},
        {u"20200515102030 ", kNone, 20200515102030_num, u"20200515102030 ", kMoment},
        {u"20200515", kNone, 20200515, u"20200515", Date(2020, 5, 15)},
        {u"00000000", kNone, 0, u"00000000", Date()},
        {u"20201332", kNone, 20201332, u"20201332", kNone},
        {u"20200515 x", kNone, kNone, u"20200515 x", kNone},
    };
    for (const char16_t* const locale : {u"en", u"ru"}) {
        use_formats_of(locale);
        for (const Conversion& row : rows) expect(row);
    }
    // A text does not end where a unit of 0 stands in it.
    for (const char16_t* const text : {u"12", u"Да", u"True"}) {
        const Value cut(stdx::ustring(text) + u'\0');
        EXPECT_EQ(converted(cut, &GenericValue::getNumeric, Numeric(77)), kNone);
        EXPECT_EQ(converted(cut, &GenericValue::getBoolean, true), kNone);
        EXPECT_EQ(converted(cut, &GenericValue::getDate, Date(2000, 1, 1)), kNone);
    }
}

TEST_F(ValueConversions, TypesAreShownAsTheyPresentThemselves) {
    process().setTermLanguage(1);
    EXPECT_EQ(to_string(type_value(CLSID_NumericType)), u"Number");      // of messages
    EXPECT_EQ(to_string(type_value(CLSID_Plain)), u"НеизвестныйОбъект"); // of names
    const _GUID unknown = "12345678-0000-0000-0000-000000000000"_guid;
    try {
        to_string(type_value(unknown));
        ADD_FAILURE();
    } catch (const TypeException& exception) {
        EXPECT_EQ(exception.description(),
                  u"The type is unknown: '12345678-0000-0000-0000-000000000000'");
    }
}

TEST_F(ValueConversions, ObjectsConvertToTextAlone) {
    expect({Value(static_cast<IValue*>(make_object<PlainValue>().get())), kNone, kNone,
            u"UnknownObject", kNone});
}

} // namespace
