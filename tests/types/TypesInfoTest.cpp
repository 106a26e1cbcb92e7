// What design tools are told of the types: by the library's own provider, and by the aggregator.
#include "SampleTypes.h"
#include "support/ProcessTest.h"

#include <core/component/Object.h>
#include <core/values/TypesInfo.h>

#include <gmock/gmock.h>

namespace {

using namespace core;
using namespace test;
using testing::ElementsAre;

class TypesInfo : public ProcessTest {
protected:
    const InterfacePtr<ITypesInfoProvider> provider =
        create_object<ITypesInfoProvider>(CLSID_CoreTypesInfoProvider);
};

TEST_F(TypesInfo, OfTheLibraryListsTheTypesOfACategory) {
    const auto names_of = [this](const _GUID& category, int language) {
        std::vector<TypeInfo> types(1); // is extended
        provider->collectTypesInfo(category, language, types);
        std::vector<stdx::ustring> names;
        for (const TypeInfo& info : types) names.push_back(info.name);
        return names;
    };
    for (const _GUID& category : {kUserDefinedTypeInfoCategory, kMobileAppTypeInfoCategory,
                                  kEDBPropertyTypeInfoCategory, kEDBDimensionTableTypeInfoCategory})
        EXPECT_THAT(names_of(category, 1),
                    ElementsAre(u"", u"Число", u"Строка", u"Булево", u"Дата"));
    EXPECT_THAT(names_of(kLogFormTypeInfoCategory, 0),
                ElementsAre(u"", u"Number", u"String", u"Boolean", u"Date", u"HorizontalAlign",
                            u"VerticalAlign"));
    std::vector<TypeInfo> none;
    provider->collectTypesInfo(kUnknownType, 0, none);
    EXPECT_TRUE(none.empty());
}

TEST_F(TypesInfo, OfTheLibraryKnowsItsTypes) {
    TypeInfo info;
    ASSERT_TRUE(provider->getTypeInfo(CLSID_NumericType, 0, info));
    EXPECT_EQ(info.type, CLSID_NumericType);
    EXPECT_EQ(info.name, u"Number");
    EXPECT_EQ(info.group, 2);
    EXPECT_EQ(info.order, 10);
    EXPECT_FALSE(info.picture);
    unsigned kind = 0;
    bool isSimple = false;
    EXPECT_TRUE(provider->getTypeKind(CLSID_DateType, kind));
    EXPECT_EQ(kind, 3u);
    EXPECT_TRUE(provider->isSimpleType(CLSID_DateType, isSimple) && isSimple);
    EXPECT_EQ(provider->createTypeObject(CLSID_DateType),
              static_cast<IUnknown*>(base_type(TypeCode::Date)));
    EXPECT_FALSE(provider->isTypeCollectable(CLSID_DateType, true));
    EXPECT_FALSE(provider->createTypeObjectEx(CLSID_DateType));
    EXPECT_EQ(provider->getTypeExtra(CLSID_DateType), 0u);

    kind = 7;
    isSimple = true;
    EXPECT_FALSE(provider->getTypeInfo(CLSID_WidgetType, 0, info) ||
                 provider->getTypeKind(CLSID_WidgetType, kind) ||
                 provider->isSimpleType(CLSID_WidgetType, isSimple) ||
                 provider->createTypeObject(CLSID_WidgetType));
    EXPECT_TRUE(info.name == u"Number" && kind == 7 && isSimple);
    EXPECT_TRUE(provider->getTypeInfo(CLSID_NumericType, 2, info))
        << "a language that there is not";
    EXPECT_EQ(info.name, u"");
}

TEST_F(TypesInfo, TellsHowLongValuesAre) {
    struct Limits {
        NumericQualifiers number = {};
        LengthQualifiers length = {};
        DateQualifiers date = {};
    };
    const auto length = [this](const std::vector<_GUID>& types, const Limits& limits = {}) {
        TypeDomainPattern pattern(types);
        pattern.setNumericQualifiers(limits.number);
        pattern.setStringQualifiers(limits.length);
        pattern.setBinaryQualifiers(limits.length);
        pattern.setDateQualifiers(limits.date);
        return provider->getDisplayLength(pattern);
    };
    using Number = NumericQualifiers;
    using Length = LengthQualifiers;
    EXPECT_EQ(length({}), 0u);
    EXPECT_EQ(length({CLSID_NumericType}, {.number = Number(10, 2)}), 13u);
    EXPECT_EQ(length({CLSID_NumericType}, {.number = Number(10, 2, true)}), 12u);
    EXPECT_EQ(length({CLSID_NumericType}, {.number = Number(64, 64)}), 50u);
    EXPECT_EQ(length({CLSID_StringType}, {.length = Length(17)}), 17u);
    EXPECT_EQ(length({CLSID_StringType}, {.length = Length(~0u)}), 50u);
    EXPECT_EQ(length({CLSID_BinaryDataType}, {.length = Length(18)}), 18u);
    EXPECT_EQ(length({CLSID_DateType}, {.date = DateQualifiers(1)}), 10u);
    EXPECT_EQ(length({CLSID_DateType}, {.date = DateQualifiers(2)}), 8u);
    EXPECT_EQ(length({CLSID_DateType}, {.date = DateQualifiers(3)}), 20u);
    EXPECT_EQ(length({CLSID_BooleanType}, {.length = Length(17)}), 10u);
    EXPECT_EQ(length({CLSID_WidgetType}, {.length = Length(17)}), 0u);
    EXPECT_EQ(length({CLSID_BooleanType, CLSID_NumericType, CLSID_StringType},
                     {.number = Number(3, 0), .length = Length(12)}),
              12u);
}

// ---- Settings

class Pictures
    : public ObjectRoot
    , public SCOM_InternalClass<Pictures>
    , public ITypePictureService {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<Pictures, ITypePictureService>();
    }
    InterfacePtr<IUnknown> getTypePicture(const _GUID& type) override {
        if (type != CLSID_DateType) return {};
        return {static_cast<IUnknown*>(this), true};
    }
};

TEST_F(TypesInfo, HasPicturesOfAServiceThatIsSet) {
    const InterfacePtr<ITypesInfoSettings> settings(provider);
    ASSERT_TRUE(settings);
    const auto pictures = make_object<Pictures>();
    const auto* const own = static_cast<IUnknown*>(pictures.get());
    const auto picture_of = [this](const _GUID& type) {
        TypeInfo info;
        provider->getTypeInfo(type, 0, info);
        return info.picture;
    };
    constexpr _GUID kKey = "476956f8-d461-4735-8b79-9c6385a13c19"_guid;
    settings->setSetting(kUnknownType, pictures.get());
    EXPECT_FALSE(picture_of(CLSID_DateType));
    settings->setSetting(kKey, pictures.get());
    EXPECT_EQ(picture_of(CLSID_DateType), own);
    EXPECT_FALSE(picture_of(CLSID_StringType));
    settings->setSetting(kKey, nullptr);
    EXPECT_FALSE(picture_of(CLSID_DateType));
}

// ---- The aggregator

// Answers with its number; one that is silent has no answer to anything.
class Numbered
    : public ObjectRoot
    , public SCOM_InternalClass<Numbered>
    , public ITypesInfoProvider {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<Numbered, ITypesInfoProvider>();
    }
    Numbered(unsigned number, bool isSilent) : number_(number), isSilent_(isSilent) {}

    void collectTypesInfo(const _GUID&, int, std::vector<TypeInfo>& types) override {
        TypeInfo info;
        info.flags = number_;
        types.push_back(info);
    }
    bool getTypeInfo(const _GUID&, int, TypeInfo& info) override {
        if (!isSilent_) info.flags = number_;
        return !isSilent_;
    }
    bool isTypeCollectable(const _GUID&, bool flag) override { return flag && !isSilent_; }
    unsigned getDisplayLength(const TypeDomainPattern&) override { return number_ * 10; }
    InterfacePtr<IUnknown> createTypeObject(const _GUID&) override { return object(); }
    InterfacePtr<IUnknown> createTypeObjectEx(const _GUID&) override { return object(); }
    unsigned getTypeExtra(const _GUID&) override { return isSilent_ ? 0 : number_; }
    bool getTypeKind(const _GUID&, unsigned& kind) override {
        if (!isSilent_) kind = number_;
        return !isSilent_;
    }
    bool isSimpleType(const _GUID&, bool& isSimple) override {
        if (!isSilent_) isSimple = number_ == 2;
        return !isSilent_;
    }

private:
    InterfacePtr<IUnknown> object() {
        return {isSilent_ ? nullptr : static_cast<IUnknown*>(this), true};
    }

    const unsigned number_;
    const bool isSilent_;
};

TEST_F(TypesInfo, OfSeveralProvidersIsThatOfAllOrOfTheFirstThatAnswers) {
    const auto all = create_object<ITypesInfoProvider>(CLSID_TypesInfoProvidersAgregator);
    TypeInfo info;
    unsigned kind = 0;
    bool isSimple = false;
    const TypeDomainPattern pattern;
    EXPECT_FALSE(all->getTypeInfo(kUnknownType, 0, info) || all->createTypeObject(kUnknownType));
    EXPECT_EQ(all->getDisplayLength(pattern), 0u);

    const InterfacePtr<ITypesInfoProvidersAgregator> list(all);
    const auto second = make_object<Numbered>(2u, false);
    list->addProvider(nullptr);
    for (const auto& each : {make_object<Numbered>(1u, true), second,
                             make_object<Numbered>(4u, false), make_object<Numbered>(3u, false)})
        list->addProvider(each.get());

    std::vector<TypeInfo> types;
    all->collectTypesInfo(kUnknownType, 0, types);
    ASSERT_EQ(types.size(), 4u);
    EXPECT_TRUE(types[0].flags == 1 && types[1].flags == 2 && types[3].flags == 3);
    EXPECT_TRUE(all->getTypeInfo(kUnknownType, 0, info));
    EXPECT_EQ(info.flags, 2u);
    EXPECT_TRUE(all->isTypeCollectable(kUnknownType, true));
    EXPECT_FALSE(all->isTypeCollectable(kUnknownType, false));
    EXPECT_EQ(all->getDisplayLength(pattern), 40u);
    const auto* const own = static_cast<IUnknown*>(second.get());
    EXPECT_EQ(all->createTypeObject(kUnknownType), own);
    EXPECT_EQ(all->createTypeObjectEx(kUnknownType), own);
    EXPECT_EQ(all->getTypeExtra(kUnknownType), 2u);
    EXPECT_TRUE(all->getTypeKind(kUnknownType, kind));
    EXPECT_EQ(kind, 2u);
    EXPECT_TRUE(all->isSimpleType(kUnknownType, isSimple) && isSimple);

    list->addProvider(make_object<Numbered>(9u, true).get());
    EXPECT_EQ(all->getDisplayLength(pattern), 50u) << "cut, of the longest";
}

} // namespace
