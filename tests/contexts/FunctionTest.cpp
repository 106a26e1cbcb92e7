// Methods as objects, and names.
#include "SampleContexts.h"
#include "support/ProcessTest.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/IllegalArgumentException.h>
#include <core/component/UnsupportedOperationException.h>
#include <core/values/ContextFunction.h>
#include <core/values/ContextNames.h>
#include <core/values/UnknownValue.h>

namespace {

using namespace core;
using namespace test;
using namespace stdx::literals;

using MethodAsFunction = ProcessTest;

TEST_F(MethodAsFunction, AnswersAsTheMethod) {
    const auto context = make_object<Sample>(Names{{u"A"}, {u"Echo", u"Эхо"}}, u"said ");
    const auto function = context_method_to_function(context.get(), u"ЭХО", true);
    EXPECT_TRUE(function->hasRetVal());
    ASSERT_EQ(function->getNParams(), 1);
    for (const int number : {-1, 1}) EXPECT_EQ(function->getParameter(number), nullptr);
    IParameter* const parameter = function->getParameter(0);
    EXPECT_EQ(function->getParameter(0), parameter);
    EXPECT_TRUE(parameter->isIn());
    EXPECT_FALSE(parameter->isOut());
    Value value, result;
    EXPECT_TRUE(parameter->getDefValue(&value));
    std::vector<GenericValue*> arguments{&value};
    EXPECT_TRUE(function->call(&result, arguments));
    EXPECT_EQ(result, u"said nothing"_us);
}

TEST_F(MethodAsFunction, HoldsItsContextUnlessItIsWeak) {
    for (const bool weak : {false, true}) {
        bool died = false;
        auto context = make_object<Sample>(Names{{u"A"}});
        context->died = &died;
        auto function = context_method_to_function(context.get(), 0, weak);
        InterfacePtr<IParameter> parameter(function->getParameter(0), true);
        context.reset();
        EXPECT_EQ(died, weak);
        function.reset();
        EXPECT_EQ(died, weak); // the parameter holds it, too
        parameter.reset();
        EXPECT_TRUE(died);
    }
}

TEST_F(MethodAsFunction, IsRefusedWhereThereIsNoMethod) {
    const auto context = make_object<Sample>(Names{{u"A"}});
    const auto empty = make_object<Sample>(Names{});
    for (const int number : {-1, 1})
        EXPECT_THROW(context_method_to_function(context.get(), number, false),
                     IllegalArgumentException);
    EXPECT_THROW(context_method_to_function(context.get(), u"B", false), IllegalArgumentException);
    EXPECT_THROW(context_method_to_function(empty.get(), 0, false), IllegalArgumentException);
    EXPECT_THROW(context_method_to_function(nullptr, 0, true), IllegalArgumentException);
    EXPECT_THROW(context_method_to_function(nullptr, u"A", true), IllegalArgumentException);
}

class Promise
    : public ObjectRoot
    , public SCOM_InternalClass<Promise>
    , public IMethodPromise {
public:
    static const InterfaceEntry* _GetEntries() { return interface_map<Promise, IMethodPromise>(); }
    void getCallback(bool flag, GenericValue& out) override {
        out.assign(flag ? u"flagged" : u"plain");
    }
};

// Of an asynchronous method the arguments are a callback and what else it takes.
class Asynchronous
    : public ObjectRoot
    , public SCOM_InternalClass<Asynchronous>
    , public ContextCore {
public:
    static const InterfaceEntry* _GetEntries() { return interface_map<Asynchronous, IContext_>(); }
    bool call(int method, GenericValue* result, std::vector<GenericValue*>& arguments) override {
        for (const GenericValue* argument : arguments) seen += to_string(*argument) + u";";
        return method == 0 && !result;
    }
    stdx::ustring seen;
};

class PromiseFactory
    : public ObjectRoot
    , public IClassFactory {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<PromiseFactory, IClassFactory>();
    }
    HRESULT CreateInstance(IUnknown*, const _GUID& iid, void** out) noexcept override {
        return make_object<Promise>()->QueryInterface(iid, out);
    }
    HRESULT LockServer(bool) noexcept override { return S_OK; }
};

TEST_F(MethodAsFunction, OfTheOldAsynchronousKindGivesAPromise) {
    const auto context = make_object<Asynchronous>();
    Value number = 7, result;
    std::vector<GenericValue*> arguments{&number};
    EXPECT_THROW(call_old_async_as_new(nullptr, 0, &result, arguments, true),
                 IllegalArgumentException);
    EXPECT_THROW(call_old_async_as_new(context.get(), 0, &result, arguments, true),
                 UnsupportedOperationException); // nobody brought promises

    const InterfacePtr<SCOM_ClassRegistrar> registrar{static_cast<IUnknown*>(&process())};
    ASSERT_TRUE(registrar);
    registrar->registerClass(CLSID_MethodPromise, make_object<PromiseFactory>().get(),
                             RegisterClass, "test");
    EXPECT_TRUE(call_old_async_as_new(context.get(), 0, &result, arguments, true));
    const auto held = result.object<IUnknownValue>();
    ASSERT_TRUE(held);
    EXPECT_TRUE(InterfacePtr<IMethodPromise>(held->getObject()));
    EXPECT_EQ(arguments.size(), 1u);
    result.clear();
    EXPECT_FALSE(call_old_async_as_new(context.get(), 1, &result, arguments, false));
    EXPECT_TRUE(is_undefined_value(result));
    EXPECT_EQ(context->seen, u"flagged;7;plain;7;"_us);
}

// ---- Names

TEST(ContextNames, AreLettersDigitsAndLowLines) {
    const struct {
        const char16_t* text;
        bool isName, isPath;
    } rows[] = {
        {u"", false, false},       {u"_", true, true},
        {u"A1", true, true},       {u"1A", false, false},
        {u"Счёт_7", true, true},   {u"a b", false, false},
        {u"a.b", false, true},     {u"a..b", false, false},
        {u".a", false, false},     {u"a.", false, false},
        {u"a.1", false, false},    {u"α٣", true, true},
        {u"\xD83D", false, false}, {u"Объект.Имя._", false, true},
    };
    for (const auto& row : rows) {
        const stdx::ustring text(row.text);
        SCOPED_TRACE(to_utf8(text).c_str());
        EXPECT_EQ(is_valid_name(text), row.isName);
        EXPECT_EQ(is_valid_path(text.data(), text.data() + text.size()), row.isPath);
    }
}

TEST(ContextNames, AreMadeOfTextsForPeople) {
    const struct {
        const char16_t *synonym, *name;
    } rows[] = {
        {u"", u""},
        {u" \t\u00A0", u""},
        {u"  номер   счёта ", u"НомерСчёта"},
        {u"unit price, net", u"UnitPrice_Net"},
        {u"1st part 2b", u"_stPart2b"},
        {u"_a b", u"_aB"},
        {u"a\U0001F600", u"A__"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(synonym_to_name(row.synonym), stdx::ustring(row.name));
        EXPECT_TRUE(is_valid_name(synonym_to_name(row.synonym)) || !*row.name);
    }
}

TEST(ContextNames, AreShownAsWords) {
    const struct {
        const char16_t *name, *synonym;
    } rows[] = {
        {u"", u""},
        {u"НомерСчёта", u"Номер счёта"},
        {u"unitPrice", u"unit price"},
        {u"КодИНН", u"Код ИНН"},
        {u"HTTPServer2Name", u"HTTP server2 name"},
        {u"_first__SecondWord_", u"first second word"},
        {u"ПланБ", u"План б"},
        {u"__", u""},
    };
    for (const auto& row : rows) EXPECT_EQ(name_to_synonym(row.name), stdx::ustring(row.synonym));
}

} // namespace
