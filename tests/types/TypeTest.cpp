// Types and the handle on them: how they are found, what their objects answer, how base types read
// their values, and the values that stand for types.
#include "../persistence/StorageProgram.h"
#include "SampleTypes.h"
#include "support/MessageLanguage.h"
#include "support/ProcessTest.h"

#include <core/component/IllegalArgumentException.h>
#include <core/concurrency/Thread.h>
#include <core/values/CreateValue.h>
#include <core/values/TypeException.h>
#include <core/values/TypeValueService.h>

#include <gmock/gmock.h>

#include <latch>
#include <vector>

namespace {

using namespace core;
using namespace test;
using testing::ElementsAre;

class Types : public ProcessTest {};

stdx::ustring message_of(auto&& action) {
    try {
        action();
    } catch (const TypeException& exception) {
        return exception.description();
    }
    return u"nothing was thrown";
}

struct BaseTypeCase {
    unsigned code;
    _GUID clsid;
    const char16_t* english;
    const char16_t* russian;
    IValue* (*byDefault)();
};
const BaseTypeCase kBaseTypes[] = {
    {0, "ee8d3e7c-f930-4a76-8aad-4ff9083a6ea6"_guid, u"Undefined", u"Неопределено",
     create_undefined_value},
    {1, "af40a278-63bc-478e-91a8-19e0d16b10b5"_guid, u"Null", u"Null", create_null_value},
    {2, "5d4125ad-f6e7-4313-be32-f71d0ab60915"_guid, u"Boolean", u"Булево",
     [] { return create_boolean_value(false); }},
    {3, "b0be78f2-0ee6-4d31-a3bb-77dd32ba5bec"_guid, u"Number", u"Число",
     [] { return create_numeric_value(0); }},
    {4, "9b6abf8b-0173-48e5-b0a0-83b21fcf63c5"_guid, u"String", u"Строка",
     [] { return create_string_value(u""); }},
    {5, "aae38c48-a877-411c-a6d3-fbaa1f83c4bd"_guid, u"Date", u"Дата",
     [] { return create_date_value(Date()); }},
    {1000, "d47d59f8-73f0-481c-8b5e-f6384c0a4804"_guid, u"Type", u"Тип",
     [] { return create_type_value(CLSID_UndefinedType); }},
};

bool same(const InterfacePtr<IValue>& value, IValue* expected) {
    const InterfacePtr<IValue> kept(expected, true);
    return value && value->isEqual(kept.get());
}

TEST_F(Types, OfTheBaseAreFoundByCodeByClassAndByName) {
    for (const BaseTypeCase& row : kBaseTypes) {
        SCOPED_TRACE(row.code);
        const Type type(static_cast<TypeCode>(row.code));
        EXPECT_EQ(static_cast<unsigned>(type.code()), row.code);
        EXPECT_EQ(type.clsid(), row.clsid);
        EXPECT_EQ(type, Type(row.clsid));
        EXPECT_EQ(create_object<IType>(row.clsid), type.get());
        for (const stdx::ustring name : {row.english, row.russian}) {
            EXPECT_EQ(Type(name), type);
            EXPECT_EQ(create_object_by_alias<IType>(name), type.get());
        }
        EXPECT_TRUE(process().isClassInCategory(CATID_Type, row.clsid));
    }
    EXPECT_EQ(Type(u"чИСЛО"), Type(u"NUMBER"));
    EXPECT_THAT(process().getClassAliases(CLSID_DateType), ElementsAre(u"Date", u"Дата"));
    EXPECT_THAT(process().getClassAliases(CLSID_NullType), ElementsAre(u"Null"));
    for (const unsigned code : {6u, 100u, 999u, 1001u, ~0u})
        EXPECT_THROW(Type(static_cast<TypeCode>(code)), IllegalArgumentException);
}

TEST_F(Types, OfTheBaseAnswerWithTheirNamesAndDefaults) {
    for (const BaseTypeCase& row : kBaseTypes) {
        SCOPED_TRACE(row.code);
        IType* const type = base_type(static_cast<TypeCode>(row.code));
        EXPECT_EQ(stdx::ustring(type->getTypeString(0)), row.english);
        EXPECT_EQ(stdx::ustring(type->getTypeString(1)), row.russian);
        EXPECT_EQ(type->getTypeString(2), nullptr);
        for (const auto& [locale, text] : {std::pair(u"en", row.english), {u"ru", row.russian}}) {
            const MessageLanguage language(locale);
            stdx::ustring presentation;
            type->getString(presentation);
            EXPECT_EQ(presentation, text);
        }
        EXPECT_FALSE(type->isCOMType() || type->isValueMutable() || type->hasCtor(0) ||
                     type->hasCtor(1));
        EXPECT_FALSE(type->ctor({}));
        const InterfacePtr<IValue> value = type->createIValue();
        EXPECT_TRUE(same(value, row.byDefault()));
        EXPECT_EQ(value->getIType(), type);
        EXPECT_EQ(type->createIValue(), value) << "the default of the library is static";
        void* none = type;
        EXPECT_EQ(type->QueryInterface(IID_IValue, &none), E_NOINTERFACE);
        EXPECT_EQ(none, nullptr);
    }
}

TEST_F(Types, OfObjectsHaveTheirDefaults) {
    const Type type(CLSID_WidgetType);
    EXPECT_EQ(type, Type(u"widget"));
    EXPECT_EQ(type, Type(u"ШТУКОВИНА"));
    EXPECT_EQ(type.code(), TypeCode::Object);
    EXPECT_EQ(stdx::ustring(type->getTypeString(0)), u"UnknownObject");
    EXPECT_EQ(stdx::ustring(type->getTypeString(1)), u"НеизвестныйОбъект");
    stdx::ustring presentation = u"something";
    type->getString(presentation);
    EXPECT_TRUE(presentation.empty());
    EXPECT_TRUE(type->isValueMutable() && type->hasCtor(0) && !type->hasCtor(1));
    EXPECT_FALSE(type->isCOMType());
    const InterfacePtr<IValue> made = type->createIValue(), constructed = type->ctor({});
    EXPECT_NE(made, constructed);
    EXPECT_EQ(made->getIType(), type.get());
    EXPECT_EQ(constructed->getIType(), type.get());
}

TEST_F(Types, ThatAreUnknownAreNamedInTheMessage) {
    traps = 0;
    const auto expect_in = [](const char16_t* locale, const stdx::ustring& start) {
        const MessageLanguage language(locale);
        const auto text = [&start](const stdx::ustring& what) { return start + what + u'\''; };
        for (const stdx::ustring name : {u"Nombre", u"", u"Trap", u"COMObject"})
            EXPECT_EQ(message_of([&] { Type{name}; }), text(name));
        for (const _GUID& clsid : {kUnknownType, kUUIDNull, CLSID_Trap, CLSID_COMSafeArrayType})
            EXPECT_EQ(message_of([&] { Type{clsid}; }), text(to_string(clsid)));
    };
    expect_in(u"en", u"The type is unknown: '");
    expect_in(u"ru", u"Неизвестный тип: '");
    EXPECT_EQ(traps, 0) << "a class that is no type was created";
}

TEST_F(Types, OfOtherComponentsAreKnownAndNotCreated) {
    for (const auto& [clsid, text] :
         {std::pair("2319dcf1-f4ee-438d-b16f-6a145d6b9422"_guid, u"COMОбъект"),
          {"44a60d92-2624-46bf-ae82-c9ab6abc07df"_guid, u"COMSafeArray"}}) {
        EXPECT_TRUE(process().isClassInCategory(CATID_Type, clsid));
        EXPECT_EQ(process().getClassAliases(clsid).back(), text);
        EXPECT_FALSE(create_object<IType>(clsid));
        EXPECT_EQ(TypeDomain(clsid).size(), 1u);
    }
}

// A handle may outlive what it was made from and is never empty.
TEST_F(Types, AreHeldByHandlesThatAreNeverEmpty) {
    const Type undefined;
    EXPECT_EQ(undefined.code(), TypeCode::Undefined);
    EXPECT_EQ(Type(static_cast<IType*>(nullptr)), undefined);
    EXPECT_EQ(Type(static_cast<ITypeValue*>(nullptr)), undefined);
    Type number(TypeCode::Numeric);
    Type moved = std::move(number);
    EXPECT_EQ(number, undefined);
    EXPECT_EQ(moved.code(), TypeCode::Numeric);
    number = std::move(moved);
    EXPECT_EQ(moved, undefined);
    EXPECT_EQ(number.code(), TypeCode::Numeric);
    Type& alias = number;
    number = std::move(alias);
    EXPECT_EQ(number.code(), TypeCode::Numeric);
    EXPECT_EQ(std::hash<Type>()(number), std::hash<Type>()(Type(u"Number")));
}

TEST(TypesWithoutAProcess, AreThoseOfTheBase) {
    for (const BaseTypeCase& row : kBaseTypes) {
        EXPECT_EQ(Type(row.clsid), Type(row.russian));
        EXPECT_EQ(Type(row.clsid).getITypeValue(), nullptr);
    }
    EXPECT_THROW(Type{CLSID_WidgetType}, TypeException);
    EXPECT_THROW(Type{u"Widget"}, TypeException);
    TypeDomain domain(TypeDomainPattern({CLSID_NumericType, CLSID_WidgetType}));
    EXPECT_THAT(domain.types(), ElementsAre(CLSID_NumericType));
}

// ---- Stored values

TEST_F(Types, OfTheBaseReadTheirValues) {
    const struct {
        TypeCode type;
        void (*put)(ListOutStream& list);
        IValue* (*expected)();
    } rows[] = {
        {TypeCode::Undefined, [](ListOutStream&) {}, create_undefined_value},
        {TypeCode::Null, [](ListOutStream&) {}, create_null_value},
        {TypeCode::Boolean, [](ListOutStream& list) { list->putBool(true); },
         [] { return create_boolean_value(true); }},
        {TypeCode::Numeric, [](ListOutStream& list) { list->putNumeric(Numeric(-12.5)); },
         [] { return create_numeric_value(-12.5); }},
        {TypeCode::String, [](ListOutStream& list) { list->putString(u"Рига"); },
         [] { return create_string_value(u"Рига"); }},
        {TypeCode::Date,
         [](ListOutStream& list) {
             Date date(2020, 5, 15, 10, 20, 30);
             DateSerializer item(&date);
             list->putObject(item);
         },
         [] { return create_date_value(Date(2020, 5, 15, 10, 20, 30)); }},
        {TypeCode::Type, [](ListOutStream& list) { list->putGuid(kUnknownType); },
         [] { return create_type_value(kUnknownType); }},
    };
    for (const StorageKind& kind : kKinds)
        for (const auto& row : rows) {
            SCOPED_TRACE(kind.name + std::to_string(static_cast<unsigned>(row.type)));
            const InterfacePtr<IPersistableType> type(static_cast<IUnknown*>(base_type(row.type)));
            const auto read = [&](auto put) {
                const std::string bytes = stored(kind, [&](IOutPersistenceStorage& storage) {
                    ListOutStream& list = *storage.listStream();
                    list->beginList();
                    put(list);
                    list->endList();
                });
                const auto storage = open_in(kind, source_of(bytes, true).get());
                (*storage->listStream())->beginList();
                const InterfacePtr<IValue> value = type->deserialize(storage.get());
                (*storage->listStream())->endList();
                return value;
            };
            EXPECT_TRUE(same(read(row.put), row.expected()));
            EXPECT_THROW(read([](ListOutStream& list) {
                             list->beginList();
                             list->endList();
                         }),
                         ListStreamException);
        }
}

// ---- Values that stand for types

TEST_F(Types, HaveOneValueEach) {
    auto* const service = get_service<ITypeValueService>();
    ASSERT_TRUE(service);
    for (const _GUID& clsid : {CLSID_UndefinedType, CLSID_NumericType, CLSID_TypeType,
                               CLSID_WidgetType, kUnknownType, kUUIDNull}) {
        ITypeValue* const value = service->getTypeValue(clsid);
        EXPECT_EQ(value->getTypeGuid(), clsid);
        EXPECT_EQ(service->getTypeValue(clsid), value);
        const InterfacePtr<IValue> asValue(static_cast<IUnknown*>(value));
        EXPECT_EQ(asValue->getIType(), base_type(TypeCode::Type));
        EXPECT_TRUE(same(asValue, create_type_value(clsid)));
    }
    const Type widget(CLSID_WidgetType);
    EXPECT_EQ(widget.getITypeValue(), service->getTypeValue(CLSID_WidgetType));
    EXPECT_EQ(Type(widget.getITypeValue()), widget);
    EXPECT_THROW(Type(service->getTypeValue(kUnknownType)), TypeException);
}

// Threads that ask for the first time all get the same objects.
TEST_F(Types, MayBeUsedFirstByManyThreads) {
    constexpr int kThreads = 4, kNewTypes = 200;
    std::latch start(kThreads);
    IType* types[kThreads] = {};
    std::vector<ITypeValue*> values[kThreads];
    std::vector<InterfacePtr<Thread>> threads;
    for (int i = 0; i != kThreads; ++i) {
        threads.push_back(create_thread([&, i] {
            start.arrive_and_wait();
            types[i] = Type(u"Widget").get();
            _GUID clsid = kUnknownType;
            for (; clsid.Data1 != kUnknownType.Data1 + kNewTypes; ++clsid.Data1)
                values[i].push_back(get_service<ITypeValueService>()->getTypeValue(clsid));
            values[i].push_back(Type(CLSID_DateType).getITypeValue());
        }));
        threads.back()->start();
    }
    for (const auto& thread : threads) thread->join();
    for (int i = 0; i != kThreads; ++i) {
        EXPECT_EQ(types[i], Type(CLSID_WidgetType).get());
        EXPECT_EQ(values[i], values[0]);
    }
    EXPECT_EQ(values[0].size(), kNewTypes + 1u);
}

} // namespace
