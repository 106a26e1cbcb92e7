// Arguments of scriptable objects, and whether values are filled in.
#include "SampleTypes.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Utf8.h>
#include <core/text/ConverterException.h>
#include <core/values/Arguments.h>
#include <core/values/ContextException.h>
#include <core/values/ValueIsFilled.h>

#include <functional>
#include <limits>

namespace {

using namespace core;
using namespace core::literals;
using namespace test;

class ValueUse : public ProcessTest {};

// ---- Arguments

inline constexpr _GUID CLSID_TestEnum = "4963a9d0-609f-46a0-87d4-0ee49965d9f0"_guid;

// A value of an enumeration, as far as arguments see it.
class EnumeratedValue
    : public ObjectRoot
    , public SCOM_InternalClass<EnumeratedValue>
    , public IValueImpl<&CLSID_TestEnum> {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<EnumeratedValue, IValue>();
    }
    const void* getDataPtr() override { return &number_; }

private:
    std::int32_t number_ = 16;
};
using EnumeratedType = SampleType<EnumeratedValue, &CLSID_TestEnum, false>;

} // namespace

ORBCORE_REGISTER(EnumeratedType);

namespace {

// What the caller is told; empty when there is nothing to tell.
std::string complaint(const std::function<void()>& read) {
    try {
        read();
    } catch (const CtorException& exception) {
        return "ctor: " + std::string(to_utf8(exception.description()).view());
    } catch (const ContextException& exception) {
        return std::string(to_utf8(exception.description()).view());
    } catch (const ConverterException&) {
        return "encoding";
    }
    return "";
}

const std::string kParameter = "Parameter 2 is of a wrong type", kCtor = "ctor: " + kParameter,
                  kProperty = "The value is of a type that the property does not take",
                  kIndex = "The index is outside of the collection";

TEST_F(ValueUse, ArgumentsAreReadOrNamed) {
    Value first, second;
    const Arguments arguments = {&first, &second};
    const Arguments few = {&first};
    const Value number = 12.5_num, text = u"UTF-8", yes = true, nothing, word = u"x";
    const Value enumerated(static_cast<IValue*>(make_object<EnumeratedValue>().get()));
    bool flag = false;
    Numeric numeric;
    stdx::ustring string;

    const struct {
        const char* what;
        Value given;
        std::function<void()> read;
        std::string complaint; // empty: none
    } rows[] = {
        {"string", text, [&] { EXPECT_EQ(get_string(arguments, 1), u"UTF-8"); }, ""},
        {"string", number, [&] { get_string(arguments, 1); }, kParameter},
        {"string", text, [&] { get_string(few, 1); }, kParameter},
        {"string ctor", number, [&] { get_string_ctor(arguments, 1); }, kCtor},
        {"property", number, [&] { EXPECT_EQ(get_string(second), to_string(number)); }, ""},
        {"boolean", yes, [&] { EXPECT_TRUE(get_boolean(arguments, 1)); }, ""},
        {"boolean", number, [&] { get_boolean(arguments, 1); }, kParameter},
        {"boolean ctor", number, [&] { get_boolean_ctor(arguments, 1); }, kCtor},
        {"index", number, [&] { EXPECT_EQ(get_index(arguments, 1), 12); }, ""},
        {"index", -0.5_num, [&] { EXPECT_EQ(get_index(arguments, 1), 0); }, ""},
        {"index", 2147483647.9_num, [&] { EXPECT_EQ(get_index(arguments, 1), 2147483647); }, ""},
        {"index", 2147483648_num, [&] { get_index(arguments, 1); }, kIndex},
        {"index", -1, [&] { get_index(arguments, 1); }, kIndex},
        {"index", Numeric(10).pow(30), [&] { get_index(arguments, 1); }, kIndex},
        {"index", text, [&] { get_index(arguments, 1); }, kParameter},
        {"encoding", text, [&] { EXPECT_EQ(get_encoding(arguments, 1), u"UTF-8"); }, ""},
        {"encoding", word, [&] { get_encoding(second); }, "encoding"},
        {"encoding", number, [&] { get_encoding(second); }, kProperty},
        {"encoding ctor", number, [&] { get_encoding_ctor(arguments, 1); }, kCtor},
        {"enum", number, [&] { get_enum(arguments, 1, CLSID_TestEnum); }, kParameter},
        {"enum ctor", number, [&] { get_enum_ctor(arguments, 1, CLSID_TestEnum); }, kCtor},
        {"enum", enumerated, [&] { EXPECT_EQ(get_enum(arguments, 1, CLSID_TestEnum), 16); }, ""},
        {"enum property", enumerated, [&] { get_enum(second, CLSID_Plain); }, kProperty},
        {"enum property", text, [&] { get_enum(second, CLSID_TestEnum); }, kProperty},
        {"strict", number, [&] { get_string_value(arguments, 1, string, true); }, kParameter},
        {"not strict", yes,
         [&] {
             get_numeric_value(arguments, 1, numeric, false);
             EXPECT_EQ(numeric, 1);
         },
         ""},
        {"not strict", word, [&] { get_boolean_value(arguments, 1, flag, false); }, kParameter},
        {"strict ctor", word, [&] { ctor_get_boolean_value(arguments, 1, flag, true, true); },
         kCtor},
        {"not optional", nothing,
         [&] { ctor_get_numeric_value(arguments, 1, numeric, false, false); }, kCtor},
        {"optional", nothing,
         [&] {
             numeric = 5;
             ctor_get_numeric_value(arguments, 1, numeric, true, true);
             ctor_get_numeric_value(few, 1, numeric, true, true);
             EXPECT_EQ(numeric, 5);
         },
         ""},
        {"optional", text,
         [&] {
             ctor_get_string_value(arguments, 1, string, true, true);
             EXPECT_EQ(string, u"UTF-8");
         },
         ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.what << " of " << row.given);
        second = row.given;
        EXPECT_EQ(complaint(row.read), row.complaint);
    }
}

TEST_F(ValueUse, ValuesAreReadByTheirExactType) {
    stdx::ustring text = u"before";
    bool flag = false;
    _GUID guid = kUUIDNull;
    EXPECT_TRUE(get_from_val(Value(u"x"), text) && text == u"x");
    EXPECT_TRUE(get_from_val(Value(true), flag) && flag);
    EXPECT_TRUE(get_from_val(type_value(CLSID_DateType), guid) && guid == CLSID_DateType);
    EXPECT_FALSE(get_from_val(Value(1), text) || get_from_val(Value(1), flag) ||
                 get_from_val(Value(u"x"), guid));
    EXPECT_EQ(text, u"x");
}

// ---- Whether values are filled in

// A collection by one of the interfaces that collections have.
template <class Interface>
class CollectionValue
    : public ObjectRoot
    , public SCOM_InternalClass<CollectionValue<Interface>>
    , public IValueImpl<&CLSID_Plain>
    , public Interface {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<CollectionValue, IValue, Interface>();
    }
    std::size_t count = 0;
};

class Indexed : public CollectionValue<IIndexedCollectionRO> {
public:
    std::size_t size() override { return count; }
    Value get(std::size_t) override { return {}; }
};
class Counted : public CollectionValue<ICountedCollection> {
public:
    std::size_t size() override { return count; }
};
class Filled : public CollectionValue<IFilledObject> {};

class OneElement
    : public ObjectRoot
    , public SCOM_InternalClass<OneElement>
    , public IEnumValue {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<OneElement, IEnumValue>();
    }
    explicit OneElement(std::size_t count) : left_(count) {}
    bool next(GenericValue& out) override {
        if (left_ == 0) return false;
        --left_;
        out.assign(1);
        return true;
    }

private:
    std::size_t left_;
};
class Enumerated : public CollectionValue<IProvideEnumValue> {
public:
    InterfacePtr<IEnumValue> getEnumValue() override {
        return count == 2 ? nullptr : InterfacePtr<IEnumValue>(make_object<OneElement>(count));
    }
};

template <class Object> Value collection(std::size_t count) {
    auto object = make_object<Object>();
    object->count = count;
    return Value(static_cast<IValue*>(object.get()));
}

TEST_F(ValueUse, TellsWhatIsFilledIn) {
    constexpr int kThrows = 2;
    const struct {
        const char* what;
        Value value;
        int isFilled, isFilledExt;
    } rows[] = {
        {"undefined", Value(), false, false},
        {"null", Value(create_null_value()), false, false},
        {"false", false, true, true},
        {"0", 0, false, false},
        {"1", 1, true, true},
        {"blanks", u" \t", false, false},
        {"text", u"x", true, true},
        {"empty date", Date(), false, false},
        {"date", Date(2020, 1, 1), true, true},
        {"empty indexed", collection<Indexed>(0), false, false},
        {"indexed", collection<Indexed>(1), true, true},
        {"empty counted", collection<Counted>(0), false, false},
        {"counted", collection<Counted>(1), true, true},
        {"empty enumerated", collection<Enumerated>(0), false, false},
        {"enumerated", collection<Enumerated>(1), true, true},
        {"no enumerator", collection<Enumerated>(2), kThrows, true},
        {"filled object", collection<Filled>(0), true, true},
        {"fixed like new", fixed_value(u""), false, false},
        {"fixed", fixed_value(u"x"), true, true},
        {"mutable", Value(static_cast<IValue*>(make_object<PlainValue>().get())), kThrows, true},
    };
    const auto told = [](bool (*ask)(const GenericValue&), const Value& value) -> int {
        try {
            return ask(value);
        } catch (const ValueIsFilledException& exception) {
            EXPECT_EQ(exception.error(), ValueIsFilledException::Error::MutableType);
            return kThrows;
        }
    };
    for (const auto& row : rows) {
        EXPECT_EQ(told(value_is_filled, row.value), row.isFilled) << row.what;
        EXPECT_EQ(told(value_is_filled_ext, row.value), row.isFilledExt) << row.what;
    }
}

} // namespace
