// An enumeration of a host's own.
#include <core/resources/ResourceBundle.h>
#include <core/values/EnumValueClasses.h>

#include "support/MessageLanguage.h"
#include "support/ProcessTest.h"

using namespace core::literals;

enum class Shade : std::int32_t { Dark = 7, Light = -1, Grey = 40, Plain = 3 };

constexpr core::Term kShadeTerm = {u"Shade", nullptr};
constexpr _GUID CLSID_Shade_Factory = "f70a9f3f-7c1e-4f5e-81b7-b8902d0b305f"_guid;
constexpr _GUID CLSID_Shade_FactoryType = "adbf327b-c270-44fc-a9b1-5977c6dedd1d"_guid;
constexpr _GUID CLSID_Shade_Type = "1e314060-72ca-40a7-bb74-01dfd5b42fa7"_guid;
ORBCORE_ENUMERATION(Shade, Shade, kShadeTerm);

namespace {

constexpr core::EnumRow<Shade> kShade[] = {
    {Shade::Dark, {u"Dark", u"Тёмный"}, "IDS_PROPVAL_VALIGN_TOP"}, // a text of the bundle below
    {Shade::Light, {u"Light", u"Светлый"}, "IDS_NOT_IN_THE_BUNDLE"},
    {Shade::Grey, {u"Grey", u""}},
    {Shade::Plain, {u"Plain", nullptr}},
};
static_assert(core::enum_resources<kShade>.size() == 3 && !core::enum_resources<kShade>[2].key);

} // namespace

ORBCORE_REGISTER_ENUMERATION(Shade, Shade, kShade);

namespace {

// Of the category of enumerations, but none.
constexpr _GUID CLSID_NoEnumeration = "6d9c1f0e-02a4-4f5f-8f1a-2f6f4c8a5e03"_guid;
class NoEnumeration
    : public core::ObjectRoot
    , public core::SCOM_Singleton<NoEnumeration, &CLSID_NoEnumeration>
    , public IUnknown {
public:
    static constexpr auto aliases = core::aliases(u"NoEnumeration");
    static constexpr auto categories = core::categories(&core::CATID_EnumValType);
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<NoEnumeration, IUnknown>();
    }
};

} // namespace

ORBCORE_REGISTER(NoEnumeration);

namespace {

using namespace core;
using namespace stdx::literals;

class OwnEnumeration : public test::ProcessTest {};

TEST_F(OwnEnumeration, IsFoundLikeThoseOfTheLibrary) {
    EXPECT_FALSE(enumeration(u"NoEnumeration"));
    const auto factory = enumeration(u"SHADE");
    ASSERT_TRUE(factory);
    EXPECT_EQ(enum_value(Shade::Light), factory->getValue(-1));
    EXPECT_EQ(to_enum<Shade>(enum_value(Shade::Grey)), Shade::Grey);
    EXPECT_EQ(enum_value(Shade::Light).hashCode0(), 0xFFFFFFFFu);
    EXPECT_EQ(factory->getDefaultValue(), enum_value(Shade::Dark)); // the first: there is no 0
    EXPECT_EQ(Type(u"Shade"), enum_value(Shade::Dark).type());
    EXPECT_EQ(stdx::ustring(Type(u"Shade")->getTypeString(1)), u"Shade"_us);
    EXPECT_EQ(stdx::ustring(Type(u"EnumShade")->getTypeString(0)), u"EnumShade"_us);
    EXPECT_EQ(stdx::ustring(Type(u"EnumShade")->getTypeString(1)), u"ПеречислениеShade"_us);
}

TEST(OwnEnumerations, HaveValuesThatMayEndAfterTheirProcess) {
    Value kept;
    {
        const test::ManualProcess process;
        kept = enum_value(Shade::Grey);
        EXPECT_EQ(kept.type(), Type(u"Shade"));
    }
}

TEST_F(OwnEnumeration, IsShownByTheTextsOfItsModuleElseByItsNames) {
    SCOM_ResourceBundle texts("orbcore");
    const test::MessageLanguage russian(u"ru");
    const struct {
        Shade value;
        SCOM_ResourceBundle* bundle;
        int language;
        const char16_t* shown;
    } rows[] = {
        {Shade::Dark, &texts, 0, u"Верх"},
        {Shade::Dark, nullptr, 0, u"IDS_PROPVAL_VALIGN_TOP"}, // as wherever a bundle is missing
        {Shade::Light, &texts, 1, u"Светлый"},                // the bundle has no such text
        {Shade::Light, &texts, 0, u"Light"},
        {Shade::Grey, &texts, 1, u"Grey"},
        {Shade::Plain, &texts, 1, u"Plain"},
        {Shade::Plain, &texts, 2, u""},
    };
    for (const auto& row : rows) {
        this_module().setResourceBundle(row.bundle);
        process().setTermLanguage(row.language);
        EXPECT_EQ(to_string(enum_value(row.value)), row.shown);
    }
    this_module().setResourceBundle(nullptr);
}

TEST(EnumValItem, HasTheEnglishNameWhereThereIsNoRussianOne) {
    constexpr EnumValItem item(5, {u"One", nullptr}, {u"Two", u"Два"}, true);
    EXPECT_EQ(item.value(), 5);
    EXPECT_TRUE(item.deprecated());
    EXPECT_EQ(item.termString(1), item.termString(0));
    EXPECT_EQ(item.termString(2), nullptr);
    EXPECT_EQ(term_string(item.terms2(), 1), u"Два"_us);
    EXPECT_FALSE(EnumValItem(5, {u"One", nullptr}, false).terms2().first);
}

} // namespace
