// A type declared by a table, used as a script and as design tools would use it.
#include "support/MessageLanguage.h"
#include "support/ProcessTest.h"

#include <core/component/Utf8.h>
#include <core/values/Call.h>
#include <core/values/ContextException.h>
#include <core/values/ScriptType.h>
#include <core/values/TypeValueService.h>

namespace test {

using namespace core;

inline constexpr _GUID CLSID_SampleType = "8f5e3c0a-7d4b-4f8c-9a86-3f1c2f0b7d51"_guid;
inline constexpr _GUID IID_ISample = "8f5e3c0a-7d4b-4f8c-9a86-3f1c2f0b7d52"_guid;

class ISample : public IUnknown {
public:
    ORB_INTERFACE(ISample, IID_ISample)
    virtual int weight() = 0;
};

class Weighed {
public:
    int weight_ = 5;
    bool isHeavy() const noexcept { return weight_ > 9; }
};

stdx::ustring text_of(double number) {
    return from_utf8(std::to_string(static_cast<int>(number * 100)));
}

// Each method gives what it was given as a text, so that a call shows what arrived.
class SampleValue
    : public ObjectRoot
    , public SCOM_InternalClass<SampleValue>
    , public ScriptValue<SampleValue, &CLSID_SampleType>
    , public Weighed
    , public ISample {
public:
    static constexpr Term name = {u"Sample", u"Образец"};
    static const ScriptTable members;
    static const InterfaceEntry* _GetEntries() {
        return script_interface_map<SampleValue, ISample>();
    }

    void setUp(const stdx::ustring& text, const std::optional<Date>& date) {
        text_ = text;
        if (date) date_ = *date;
    }
    static InterfacePtr<IValue> weighing(int weight, bool, bool) {
        if (weight < 0) return nullptr;
        auto value = make_object<SampleValue>();
        value->weight_ = weight;
        return value;
    }
    int weight() override { return weight_; }

    const stdx::ustring& text() const { return text_; }
    void setText(const stdx::ustring& text) { text_ = text; }
    void setSecret(const stdx::ustring& text) { text_ = u"secret " + text; }
    std::optional<Date> date() const { return date_; }
    void setDate(const std::optional<Date>& date) { date_ = date; }
    Type type() const { return Type(CLSID_DateType); }
    InterfacePtr<IValue> self() { return {this, true}; }

    stdx::ustring basics(bool yes, std::int8_t small, unsigned big, double real) const {
        return (yes ? u"yes " : u"no ") + from_utf8(std::to_string(small)) + u" " +
               from_utf8(std::to_string(big)) + u" " + text_of(real);
    }
    stdx::ustring texts(Numeric number, const stdx::ustring& text, Date date,
                        const _GUID& type) const {
        return to_string(Value(number)) + u" " + text + u" " +
               from_utf8(std::to_string(date.getYear())) +
               (type == CLSID_NullType ? u" Null" : u"");
    }
    int objects(ISample* lent, const InterfacePtr<ISample>& held, SampleValue& own) {
        return lent->weight() + held->weight() + own.weight_;
    }
    Value any(const GenericValue& any, std::optional<int> number) {
        return number ? Value(*number) : Value(any);
    }
    // Writes to the first what it had and the second; the copy of the first is not touched.
    stdx::ustring exchange(GenericValue& both, const stdx::ustring& copy) {
        both.assign(to_string(both) + u"+");
        return copy;
    }
    void fail() { throw ContextException(u"as declared"); }
    int count(std::vector<GenericValue*>& all) { return is_undefined_value(*all.at(1)) ? 1 : 2; }
    static double twice(const SampleValue& value, double by) { return by * value.weight_; }

private:
    stdx::ustring text_;
    std::optional<Date> date_;
};

namespace {

constexpr ScriptProperty kProperties[] = {
    {{u"Text", u"Текст"}, reads<&SampleValue::text>, writes<&SampleValue::setText>},
    {{u"Secret", u"Тайна"}, {}, writes<&SampleValue::setSecret>},
    {{u"Weight", u"Вес"},
     reads<&SampleValue::weight_, SampleValue>,
     writes<&SampleValue::weight_, SampleValue>},
    {{u"Heavy", u"Тяжёлый"}, reads<&SampleValue::isHeavy, SampleValue>},
    {{u"Date", u"Дата"}, reads<&SampleValue::date>, writes<&SampleValue::setDate>},
    {{u"Type", u"Тип"}, reads<&SampleValue::type>},
    {{u"Self", u"Сам"}, reads<&SampleValue::self>},
};
constexpr ScriptMethod kMethods[] = {
    {{u"Basics", u"Основы"},
     runs<&SampleValue::basics>,
     {{{u"A", u"А"}, true}, {{u"B", u"Б"}, -7}, {{u"C", u"В"}, 4000000000}, {{u"D", u"Г"}, 0.25}}},
    {{u"Texts", u"Тексты"},
     runs<&SampleValue::texts>,
     {{{u"A", u"А"}}, {{u"B", u"Б"}, u"by default"}, {{u"C", u"В"}}, {{u"D", u"Г"}}}},
    {{u"Objects", u"Объекты"},
     runs<&SampleValue::objects>,
     {{{u"A", u"А"}}, {{u"B", u"Б"}}, {{u"C", u"В"}}}},
    {{u"Any", u"Любое"}, runs<&SampleValue::any>, {{{u"A", u"А"}}, {{u"B", u"Б"}}}},
    {{u"Exchange", u"Обмен"}, runs<&SampleValue::exchange>, {{{u"A", u"А"}}, {{u"B", u"Б"}}}},
    {{u"Fail", u"Отказать"}, runs<&SampleValue::fail>},
    {{u"Count", u"Счесть"},
     runs<&SampleValue::count>,
     {{{u"A", u"А"}}, {{u"B", u"Б"}, std::nullopt}}},
    {{u"Twice", u"Дважды"}, runs<&SampleValue::twice>, {{{u"A", u"А"}}}},
};
constexpr ScriptConstructor kConstructors[] = {
    {makes<&SampleValue::setUp>, {{{u"Text", u"Текст"}, u"new"}, {{u"Date", u"Дата"}}}},
    {makes<&SampleValue::weighing>, {{{u"Weight", u"Вес"}}, {{u"B", u"Б"}}, {{u"C", u"В"}, false}}},
};

constexpr ScriptProperty kTwice[] = {{{u"Count", u"Количество"}}, {{u"Size", u"КОЛИЧЕСТВО"}}};
constexpr ScriptProperty kOwn[] = {{{u"Ёж", u"ёж"}}, {{u"Size", nullptr}}};
static_assert(!names_are_distinct(kTwice) && names_are_distinct(kOwn));
static_assert(is_name_of_scripts(u"_Ёж1") && !is_name_of_scripts(u"1a") &&
              !is_name_of_scripts(u"a b") && !is_name_of_scripts(u""));

} // namespace

constexpr ScriptTable SampleValue::members =
    script_table<SampleValue>(kProperties, kMethods, kConstructors);

} // namespace test

ORBCORE_REGISTER(core::ScriptType<test::SampleValue>);

namespace {

using namespace test;
using namespace stdx::literals;

// The description of what `body` throws, with its class and categories checked.
template <class E, class Body> std::string refusal(Body body) {
    try {
        body();
    } catch (const E& exception) {
        EXPECT_EQ(exception.categories().to_ulong(), 64u);
        return std::string(to_utf8(exception.description()).view());
    } catch (const Exception& exception) {
        return "another class: " + std::string(to_utf8(exception.description()).view());
    }
    return "(none)";
}

class ScriptTypes : public ProcessTest {
protected:
    std::string shown(const Value& value) { return std::string(to_utf8(to_string(value)).view()); }
    template <class... A> std::string called(const char16_t* method, A&&... arguments) {
        return shown(call(sample, method, std::forward<A>(arguments)...));
    }
    template <class... A> std::string refused(const char16_t* method, A&&... arguments) {
        return refusal<ContextException>([&] { call(sample, method, arguments...); });
    }

    InterfacePtr<IType> type = create_object_by_alias<IType>(u"ОБРАЗЕЦ");
    Value sample = type->createIValue();
    const Date day{2026, 11, 23};
    Value nullType = create_type_value(CLSID_NullType);
};

TEST_F(ScriptTypes, AreTypesByTheirNames) {
    EXPECT_EQ(Type(u"sample").get(), type.get());
    EXPECT_EQ(sample.type(), Type(CLSID_SampleType));
    EXPECT_EQ(type->getTypeString(0), u"Sample"_us);
    EXPECT_EQ(type->getTypeString(1), u"Образец"_us);
    EXPECT_TRUE(process().isClassInCategory(CATID_Type, CLSID_SampleType));
}

TEST_F(ScriptTypes, ShowValuesByTheirNameInTheLanguageOfTheProcess) {
    const char* const shownIn[] = {"Sample", "Образец", ""};
    for (const int language : {0, 1, 2}) {
        process().setTermLanguage(language);
        EXPECT_EQ(shown(sample), shownIn[language]);
    }
}

// Type and description are singletons, which end with the process.
TEST(ScriptValues, MayEndAfterTheirProcess) {
    Value kept;
    {
        const ManualProcess process;
        kept = Type(CLSID_SampleType)->createIValue();
        set_property(kept, u"Weight", 3);
    }
}

TEST_F(ScriptTypes, HavePropertiesOfNativeTypes) {
    set_property(sample, u"text", u"abc");
    EXPECT_EQ(get_property(sample, u"ТЕКСТ"), u"abc"_us);
    set_property(sample, u"Secret", u"x");
    EXPECT_EQ(get_property(sample, u"Text"), u"secret x"_us);
    set_property(sample, u"Вес", 10);
    EXPECT_EQ(get_property(sample, u"Heavy"), true);
    EXPECT_TRUE(is_undefined_value(get_property(sample, u"Date")));
    set_property(sample, u"Date", day);
    EXPECT_EQ(get_property(sample, u"Date"), day);
    set_property(sample, u"Date", Value());
    EXPECT_TRUE(is_undefined_value(get_property(sample, u"Date")));
    EXPECT_EQ(get_property(sample, u"Type").as<_GUID>(), CLSID_DateType);
    EXPECT_EQ(get_property(sample, u"Self"), sample);
}

TEST_F(ScriptTypes, TakeArgumentsOfNativeTypes) {
    EXPECT_EQ(called(u"Basics"), "yes -7 4000000000 25");
    EXPECT_EQ(called(u"Основы", false, 127, 0, 2), "no 127 0 200");
    EXPECT_EQ(called(u"Texts", Numeric(12), u"b", day, nullType), "12 b 2026 Null");
    EXPECT_EQ(called(u"Objects", sample, sample, sample), "15");
    EXPECT_EQ(called(u"Any", u"x"), "x");
    EXPECT_EQ(called(u"Any", u"x", 7), "7");
    EXPECT_EQ(called(u"Any", u"x", Value()), "x");
    EXPECT_EQ(called(u"Count", 1), "1");
    EXPECT_EQ(called(u"Count", 1, 2), "2");
    EXPECT_EQ(called(u"Twice", 1.5), shown(Value(7.5)));
    Value variable = u"v";
    EXPECT_EQ(called(u"Exchange", variable, variable), "v"); // one variable for both
    EXPECT_EQ(variable, u"v+"_us);
    const Value constant = u"c";
    called(u"Exchange", constant, u"");
    EXPECT_EQ(constant, u"c"_us);
}

TEST_F(ScriptTypes, RefuseArgumentsThatDoNotFit) {
    const std::string type1 = "Parameter 1 is of a wrong type",
                      value1 = "Parameter 1 has a wrong value";
    EXPECT_EQ(refused(u"Basics", 1), type1);
    EXPECT_EQ(refused(u"Basics", Value()), type1);
    EXPECT_EQ(refused(u"Basics", true, u"1"), "Parameter 2 is of a wrong type");
    for (const Value& number : {Value(128), Value(0.5), Value(1e30)})
        EXPECT_EQ(refused(u"Basics", true, number), "Parameter 2 has a wrong value");
    EXPECT_EQ(refused(u"Basics", true, 1, -1), "Parameter 3 has a wrong value");
    EXPECT_EQ(refused(u"Basics", true, 1, 1, true), "Parameter 4 is of a wrong type");
    EXPECT_EQ(refused(u"Texts", u"1", 2, day, nullType), type1); // the first that does not fit
    EXPECT_EQ(refused(u"Texts", 1, 2, day, nullType), "Parameter 2 is of a wrong type");
    EXPECT_EQ(refused(u"Texts", 1, u"", u"2026", nullType), "Parameter 3 is of a wrong type");
    EXPECT_EQ(refused(u"Texts", 1, u"", day, u"Null"), "Parameter 4 is of a wrong type");
    EXPECT_EQ(refused(u"Objects", 1, sample, sample), type1);
    EXPECT_EQ(refused(u"Objects", sample, nullType, sample), "Parameter 2 is of a wrong type");
    EXPECT_EQ(refused(u"Objects", sample, sample, Value()), "Parameter 3 is of a wrong type");
    EXPECT_EQ(refused(u"Any", 1, u"7"), "Parameter 2 is of a wrong type");
    EXPECT_EQ(refusal<ContextException>([&] { set_property(sample, u"Text", 1); }),
              "The value is of a type that the property does not take");
    EXPECT_EQ(refusal<ContextException>([&] { set_property(sample, u"Weight", 0.5); }),
              "The property does not take this value");
    EXPECT_THROW(call(sample, u"Fail"), ContextException);
}

TEST_F(ScriptTypes, AreConstructedByTheirRows) {
    for (const unsigned count : {0u, 1u, 2u, 3u}) EXPECT_TRUE(type->hasCtor(count));
    EXPECT_FALSE(type->hasCtor(4));
    Value text = u"t", date = day, weight = 30, no = false;
    const auto made = [&](std::vector<GenericValue*> arguments) {
        return Value(type->ctor(arguments));
    };
    EXPECT_EQ(get_property(made({}), u"Text"), u"new"_us);
    EXPECT_EQ(get_property(made({&text}), u"Text"), u"t"_us);
    EXPECT_EQ(get_property(made({&text, &date}), u"Date"), day);
    EXPECT_EQ(get_property(made({&weight, &no, &no}), u"Weight"), 30);
    EXPECT_EQ(type->ctor({&text, &text, &text, &text}), nullptr);
    EXPECT_EQ(refusal<CtorException>([&] { made({&weight}); }), "Parameter 1 is of a wrong type");
    EXPECT_EQ(refusal<CtorException>([&] {
                  made({&weight, &no, &text});
              }),
              "Parameter 3 is of a wrong type");
}

TEST_F(ScriptTypes, AreDescribedByTheirSignatures) {
    const InterfacePtr<IContext_> context = sample.object<IContext_>();
    IContextDefBase* const description = context->getIContextDef();
    EXPECT_EQ(context->findProp(u"ВЕС"), 2);
    EXPECT_EQ(context->findMethod(u"вес"), -1);
    EXPECT_FALSE(context->isPropReadable(1));
    EXPECT_FALSE(context->isPropWritable(3));
    const int exchange = context->findMethod(u"Exchange"), any = context->findMethod(u"Any");
    EXPECT_TRUE(context->isParamOut(exchange, 0));
    EXPECT_FALSE(context->isParamOut(exchange, 1));
    EXPECT_TRUE(context->isParamIn(exchange, 1));
    EXPECT_FALSE(context->hasRetVal(context->findMethod(u"Fail")));
    Value value = 1;
    EXPECT_FALSE(context->getParamDefValue(any, 0, nullptr));
    EXPECT_TRUE(context->getParamDefValue(any, 1, &value)); // an optional one is undefined
    EXPECT_TRUE(is_undefined_value(value));
    const int members = context->getNMethods();
    for (const int number : {-1, members}) {
        std::vector<GenericValue*> none;
        EXPECT_EQ(context->getMethodName(number, 0), nullptr);
        EXPECT_EQ(context->getNParams(number), 0);
        EXPECT_FALSE(context->call(number, nullptr, none));
        EXPECT_FALSE(context->getPropVal(number, value));
        EXPECT_FALSE(context->isParamIn(0, number));
    }
    std::vector<GenericValue*> one{&value};
    EXPECT_FALSE(context->call(exchange, nullptr, one)); // it has two parameters

    const InterfacePtr<IContextDefExt> extended{static_cast<IUnknown*>(description)};
    ASSERT_TRUE(extended);
    const auto types = [](const ContextValueInfo& info) {
        return info.typesUnknown ? kUUIDNull : info.types.front();
    };
    ContextValueInfo info;
    EXPECT_TRUE(extended->getPropInfo(1, info));
    EXPECT_EQ(info.russianName, u"Тайна"_us);
    EXPECT_EQ(types(info), CLSID_StringType);
    EXPECT_TRUE(extended->getMethodReturnInfo(context->findMethod(u"Twice"), info));
    EXPECT_EQ(types(info), CLSID_NumericType);
    EXPECT_FALSE(extended->getMethodReturnInfo(context->findMethod(u"Fail"), info));
    EXPECT_TRUE(extended->getMethodReturnInfo(any, info));
    EXPECT_TRUE(info.typesUnknown);
    EXPECT_EQ(extended->getMethodParamInfos(context->findMethod(u"Objects"), 2, &info), 1);
    EXPECT_EQ(types(info), CLSID_SampleType);
    ContextVariantInfo infos[3];
    EXPECT_EQ(extended->getCtrParamInfos(1, infos), 3);
    EXPECT_EQ(infos[0].name, u"Weight"_us);
    EXPECT_EQ(types(infos[2]), CLSID_BooleanType);
    EXPECT_EQ(extended->getCtrParamInfos(2, nullptr), 0);
}

TEST_F(ScriptTypes, SayWhoWasUsedWrongly) {
    const Value number = 12;
    const struct {
        const char16_t* locale;
        const char *noProperty, *noMethod, *notRead, *notWritten, *tooMany, *missing, *noMembers;
    } rows[] = {
        {u"en", "Sample has no property \"Nothing\"", "Sample has no method \"Nothing\"",
         "The property \"Secret\" of Sample cannot be read",
         "The property \"Type\" of Sample cannot be changed",
         "The method \"Twice\" of Sample takes 1 arguments at most, not 2",
         "The method \"Objects\" of Sample needs a value for parameter 2",
         "A value of type Number has no properties or methods"},
        {u"ru", "Образец не имеет свойства «Nothing»", "Образец не имеет метода «Nothing»",
         "Свойство «Тайна» объекта Образец недоступно для чтения",
         "Свойство «Тип» объекта Образец недоступно для записи",
         "Метод «Дважды» объекта Образец принимает не более 1 аргументов, а не 2",
         "Методу «Объекты» объекта Образец нужно значение параметра 2",
         "Значение типа Число не имеет свойств и методов"},
    };
    for (const auto& row : rows) {
        const MessageLanguage language(row.locale);
        using C = ContextException;
        EXPECT_EQ(refusal<C>([&] { get_property(sample, u"Nothing"); }), row.noProperty);
        EXPECT_EQ(refused(u"Nothing"), row.noMethod);
        EXPECT_EQ(refusal<C>([&] { get_property(sample, u"secret"); }), row.notRead);
        EXPECT_EQ(refusal<C>([&] { set_property(sample, u"type", 1); }), row.notWritten);
        EXPECT_EQ(refused(u"Twice", 1, 2), row.tooMany);
        EXPECT_EQ(refused(u"Objects", sample), row.missing);
        EXPECT_EQ(refusal<C>([&] { get_property(number, u"x"); }), row.noMembers);
    }
    EXPECT_THROW(call(static_cast<IUnknown*>(nullptr), u"x"), ContextException);
}

TEST_F(ScriptTypes, TellMismatchesInBothLanguages) {
    const auto texts = [](const char16_t* locale) {
        const MessageLanguage language(locale);
        using C = ContextException;
        using N = CtorException;
        return std::vector<std::string>{
            refusal<C>([] { parameter_type_mismatch(0); }),
            refusal<C>([] { parameter_value_mismatch(4294967295u, u"why"); }),
            refusal<N>([] { ctor_parameter_type_mismatch(1, u"a (b)"); }),
            refusal<N>([] { ctor_parameter_value_mismatch(9); }),
            refusal<C>([] { property_type_mismatch(); }),
            refusal<C>([] { property_value_mismatch(Exception(u"c").object().get()); })};
    };
    EXPECT_EQ(texts(u"en"),
              (std::vector<std::string>{
                  "Parameter 1 is of a wrong type", "Parameter 4294967296 has a wrong value (why)",
                  "Parameter 2 is of a wrong type (a (b))", "Parameter 10 has a wrong value",
                  "The value is of a type that the property does not take",
                  "The property does not take this value"}));
    EXPECT_EQ(texts(u"ru"),
              (std::vector<std::string>{"Параметр 1 имеет неверный тип",
                                        "Параметр 4294967296 имеет недопустимое значение (why)",
                                        "Параметр 2 имеет неверный тип (a (b))",
                                        "Параметр 10 имеет недопустимое значение",
                                        "Свойство не принимает значение этого типа",
                                        "Свойство не принимает это значение"}));
    try {
        property_value_mismatch(Exception(u"cause").object().get());
    } catch (const ContextException& exception) {
        EXPECT_EQ(exception.inner()->exception()->description(), u"cause"_us);
    }
}

} // namespace
