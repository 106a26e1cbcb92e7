#include <core/component/ClassDescriptor.h>
#include <core/component/CompatibilityMode.h>
#include <core/component/Object.h>
#include <core/component/Utf8.h>
#include <core/locale/BoolFormat.h>

#include "support/ProcessTest.h"

namespace {

using namespace core;
using namespace stdx::literals;

std::string text(const stdx::ustring& s) {
    return std::string(std::string_view(to_utf8(s)));
}

TEST(BoolFormat, HasTheWordsOfTheLanguage) {
    const struct {
        const char16_t* locale;
        const char *no, *yes;
    } rows[] = {
        {u"ru_UA", "Нет", "Да"}, {u"en", "No", "Yes"},      {u"az_Cyrl", "yox", "bəli"},
        {u"zh_TW", "假", "真"},  {u"nn", "usann", "sann"},  {u"es_MX", "No", "Si"},
        {u"it", "No", "Sì"},     {u"af", "No", "Yes"}, // none of its own
        {u"kok", "No", "Yes"},   {u"sr_Latn", "No", "Yes"}, {u"vi", "Không", "Có"},
    };
    for (const auto& row : rows) {
        const BoolFormat format{Locale(row.locale)};
        EXPECT_EQ(text(format.format(false)), row.no) << to_utf8(row.locale);
        EXPECT_EQ(text(format.format(true)), row.yes) << to_utf8(row.locale);
        EXPECT_EQ(text(format.getTrueName()), row.yes);
    }
}

// "false", "true" or "-" for what is no word.
std::string parsed(const BoolFormat& format, std::u16string_view source) {
    for (const bool before : {false, true}) {
        bool value = before;
        if (!format.parse(source, value)) {
            EXPECT_EQ(value, before) << "was touched";
        } else if (before) {
            return value ? "true" : "false";
        }
    }
    return "-";
}

TEST(BoolFormat, ParsesItsWords) {
    BoolFormat format{Locale(u"ru")};
    const struct {
        std::u16string_view source;
        const char* value;
    } rows[] = {
        {u"Да", "true"}, {u"нЕТ", "false"}, {u" \t да\u00A0\n", "true"},
        {u"", "-"},      {u"   ", "-"},     {u"Д", "-"},
        {u"Дада", "-"},  {u"Да нет", "-"},  {u"истина", "-"},
        {u"Yes", "-"},   {u"Нет.", "-"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(parsed(format, row.source), row.value) << to_utf8(row.source);

    format.setFalseName(u"off");
    format.setTrueName(u"offer");
    EXPECT_EQ(parsed(format, u"OFF"), "false");
    EXPECT_EQ(parsed(format, u"offer"), "-") << "false is tried first, and something follows it";
    EXPECT_EQ(text(format.format(true)), "offer");
    EXPECT_EQ(text(BoolFormat{Locale(u"ru")}.format(true)), "Да") << "others keep their words";
}

// A platform of the compatibility mode that a test asks for.
int mode = kNewestCompatibilityMode;
inline constexpr _GUID CLSID_Platform = "e79dead0-ecc5-43dd-8c13-e0199b1ccb0a"_guid;

class Platform
    : public ObjectRoot
    , public SCOM_Service<Platform, &CLSID_Platform, &IID_IPresentationService>
    , public IPresentationService {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<Platform, IPresentationService>();
    }
    int getCompatibilityMode() override { return mode; }
};

} // namespace

ORBCORE_REGISTER(Platform);

namespace {

using BoolFormatOfPlatform = test::ProcessTest;

TEST_F(BoolFormatOfPlatform, UsesTheSecondPairInTheModes0And1) {
    BoolFormat format{Locale(u"ru")};
    for (const auto& [asked, yes] :
         {std::pair{0, "истина"}, {1, "истина"}, {2, "Да"}, {80300, "Да"}}) {
        mode = asked;
        EXPECT_EQ(text(format.format(true)), yes) << asked;
        EXPECT_EQ(parsed(format, from_utf8(yes)), "true") << asked;
        EXPECT_EQ(text(format.getFalseName()), "Нет");
    }
    mode = 1;
    format.setFalseName(u"off");
    EXPECT_EQ(text(format.format(false)), "off");
    mode = kNewestCompatibilityMode;
}

} // namespace
