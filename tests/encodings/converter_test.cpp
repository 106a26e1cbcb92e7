#include <core/component/Messages.h>
#include <core/component/Utf8.h>
#include <core/text/Converter.h>
#include <core/text/EncodingTester.h>

#include "IcuOracle.h"
#include "support/ProcessTest.h"
#include "text/Utf8Blocks.h"

#include <functional>
#include <random>

namespace {

using namespace stdx::literals;
using core::Converter;
using core::ConverterException;
using core::EncodingTester;
using Error = ConverterException::Error;

Error error_of(const std::function<void()>& action) {
    try {
        action();
    } catch (const ConverterException& exception) {
        return exception.error();
    }
    return Error::None;
}

stdx::string narrow(const Converter& converter, std::u16string_view text) {
    return converter.narrow(text.data(), static_cast<unsigned>(text.size()));
}

std::optional<stdx::ustring> widen(const Converter& converter, std::string_view bytes) {
    try {
        return converter.widen(bytes.data(), static_cast<unsigned>(bytes.size()));
    } catch (const ConverterException& exception) {
        EXPECT_EQ(exception.error(), Error::BadData);
        return {};
    }
}

// ---- Names.

TEST(EncodingNames, AreFoundInAnySpelling) {
    const struct {
        const char16_t *name, *icu;
    } rows[] = {
        {u"UTF-8", u"UTF-8"},
        {u"utf8", u"UTF-8"},
        {u"Utf_8", u"UTF-8"},
        {u"UTF-8,option=1", u"UTF-8"},
        {u"ascii", u"US-ASCII"},
        {u"cp1251", u"ibm-5347_P100-1998"},
        {u"windows-1251", u"ibm-5347_P100-1998"},
        {u"UTF-16LE,version=1", u"UTF-16LE,version=1"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Converter(row.name).name(), stdx::ustring(row.icu));
        EXPECT_EQ(error_of([&] { EncodingTester{row.name}; }), Error::None);
    }
    EXPECT_EQ(Converter::utf8().name(), Converter(u"UTF-8").name());
    EXPECT_EQ(Converter::ascii().name(), u"US-ASCII"_us);
}

TEST(EncodingNames, OfNoEncodingAreRefused) {
    const std::u16string overlong(5000, u'x');
    const std::u16string_view names[] = {
        {},
        u"nosuch",
        u",version=1",
        u"../../tmp/evil",
        u"/dev/stdin",
        u"UTF-8 ж",
        u"ютф-8",
        {u"UTF-8\0x", 7},
        {u"\0", 1},
        u"%s%n",
        u"UTF\xFF0D"
        u"8",
        {u"\xD800", 1},
        overlong,
    };
    for (const auto name : names) {
        const stdx::ustring given(name);
        EXPECT_EQ(error_of([&] { Converter{given}; }), Error::BadName) << core::to_utf8(name);
        EXPECT_EQ(error_of([&] { EncodingTester{given}; }), Error::BadName) << core::to_utf8(name);
    }
    EXPECT_EQ(error_of([] { Converter(static_cast<const char16_t*>(nullptr)); }), Error::BadName);
}

TEST(EncodingNames, CompareAndHaveStandards) {
    EXPECT_EQ(Converter::compareEncodingNames(u"utf_08", u"UTF-8"), 0);
    EXPECT_NE(Converter::compareEncodingNames(u"UTF-8", u"UTF-16"), 0);
    using Standard = Converter::Standard;
    const struct {
        const char16_t* name;
        Standard standard;
        const char16_t* expected;
    } rows[] = {
        {u"latin1", Standard::MIME, u"ISO-8859-1"},
        {u"latin1", Standard::IANA, u"ISO_8859-1:1987"},
        {u"cp1251", Standard::IANA, u"windows-1251"},
        {u"cp1251", Standard::Java, u"windows-1251"},
        {u"cp1251", Standard{7}, u""},
        {u"nosuch", Standard::IANA, u""},
        {u"", Standard::IANA, u""},
        {u"utf-8", Standard::IBM, u"ibm-1208"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Converter::standardName(row.name, row.standard), stdx::ustring(row.expected))
            << core::to_utf8(row.name);
}

TEST(EncodingNames, ShowInSignatures) {
    const struct {
        std::string_view bytes;
        unsigned length;
        const char16_t* name;
    } rows[] = {
        {"\xEF\xBB\xBF", 3, u"UTF-8"},
        {{"\xFF\xFE\0\0", 4}, 4, u"UTF-32LE"},
        {"\xFF\xFEx", 2, u"UTF-16LE"},
        {"\xFE\xFF", 2, u"UTF-16BE"},
        {"\xEF\xBB", 0, u""},
        {"text", 0, u""},
        {{}, 0, u""},
    };
    for (const auto& row : rows) {
        stdx::ustring name = u"before";
        const auto size = static_cast<unsigned>(row.bytes.size());
        EXPECT_EQ(Converter::detectUnicodeSignature(row.bytes.data(), size, name), row.length);
        EXPECT_EQ(name, stdx::ustring(row.name));
    }
    stdx::ustring name;
    EXPECT_EQ(Converter::detectUnicodeSignature("\xEF\xBB\xBFx", name), 3u);
    EXPECT_EQ(Converter::detectUnicodeSignature(nullptr, name), 0u);
    EXPECT_TRUE(name.empty());
}

// ---- Text.

TEST(Encodings, SubstituteWhatTheyLack) {
    const struct {
        const char16_t* encoding;
        std::u16string_view text;
        std::string_view bytes;
    } rows[] = {
        {u"ascii", u"aж\u00AD\U0001F600z", "a???z"}, // the soft hyphen is a character too
        {u"ascii", {u"\xD800\xD800\xDC00", 3}, "??"},
        {u"windows-1251", u"ж№\u4E2D", "\xE6\xB9?"},
        {u"UTF-8", {u"a\xD83D", 2}, "a?"},
        {u"UTF-8", {u"\xDC00\xD83D\xDE00", 3}, "?\xF0\x9F\x98\x80"},
        {u"UTF-16LE", {u"\xDC00z", 2}, {"\xFD\xFFz\0", 4}},
        {u"UTF-16BE", {u"\xDC00z", 2}, {"\xFF\xFD\0z", 4}},
        {u"Shift_JIS", u"ж\u00AD\U0001F600", "\x84w??"},
        {u"UTF-16LE", u"", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(narrow(Converter(row.encoding), row.text), stdx::string(row.bytes));
        const bool fits =
            row.bytes.find('?') == row.bytes.npos && row.text.find(u'\xDC00') == row.text.npos;
        EXPECT_EQ(EncodingTester(row.encoding).performTest(stdx::ustring(row.text)), fits)
            << core::to_utf8(row.encoding) << ' ' << row.bytes;
    }
}

TEST(Encodings, RefuseBytesThatAreNoText) {
    const struct {
        const char16_t* encoding;
        std::string_view bytes;
    } rows[] = {
        {u"UTF-8", "\x80"},
        {u"UTF-8", "\xC0\x80"},
        {u"UTF-8", "\xC1\xBF"},
        {u"UTF-8", "\xE0\x9F\xBF"},
        {u"UTF-8", "\xED\xA0\x80"},
        {u"UTF-8", "\xF0\x8F\xBF\xBF"},
        {u"UTF-8", "\xF4\x90\x80\x80"},
        {u"UTF-8", "\xF5\x80\x80\x80"},
        {u"UTF-8", "\xFF"},
        {u"UTF-8", "\xD0z"},
        {u"UTF-8", "\xE2\x82z"},
        {u"UTF-8", "\xF0\x9F\x98z"},
        {u"UTF-16LE", "z"},
        {u"UTF-16LE", {"\0\xDC", 2}},
        {u"UTF-16LE", {"\0\xD8z\0", 4}},
        {u"UTF-16BE", {"\xD8\0", 2}},
        {u"ascii", "\x80"},
        {u"Shift_JIS", "\x84"},
        {u"Shift_JIS", "\x84 "},
        {u"UTF-32LE", {"\0\0\x11\0", 4}},
        {u"gb18030", "\x81\x30\x81"},
        {u"ISO-2022-JP", "\x1B$Q"},
        {u"UTF-7", "\x80"},
    };
    for (const auto& row : rows) {
        const Converter converter(row.encoding);
        EXPECT_EQ(widen(converter, row.bytes), std::nullopt)
            << core::to_utf8(row.encoding) << ' ' << testing::PrintToString(row.bytes);
    }
    // Wherever it stands among good characters, and however long the vectors have run before.
    for (const std::string_view good : {"a", "\xD0\xB6", "\xE4\xB8\xAD", "\xF0\x9F\x98\x80"})
        for (const std::string_view bad :
             {"\x80", "\xD0", "\xE4\xB8", "\xED\xA0\x80", "\xC1\x81", "\xE0\x81\x81"})
            for (std::size_t before = 0; before < 40; ++before) {
                std::string bytes;
                for (std::size_t i = 0; i < 80; ++i) bytes += i == before ? bad : good;
                EXPECT_EQ(widen(Converter::utf8(), bytes), std::nullopt) << before << ' ' << bytes;
            }
    EXPECT_EQ(error_of([] { (void)Converter::utf8().widen(nullptr); }), Error::BadData);
    EXPECT_EQ(error_of([] { (void)Converter::utf8().narrow(nullptr, 2); }), Error::BadData);
    EXPECT_TRUE(Converter::utf8().widen(nullptr, 0).empty());
}

TEST(Encodings, TestWhatFitsTheBufferAlone) {
    EncodingTester tester(u"ascii");
    stdx::ustring text(8192, u'x');
    EXPECT_TRUE(tester.performTest(text + u'ж'));
    text[8191] = u'ж';
    EXPECT_FALSE(tester.performTest(text));
    EXPECT_TRUE(tester.performTest(u"again"));
}

// ---- Beside ICU.

// Units of all kinds, in runs as text has them.
std::u16string random_text(std::mt19937& random, std::size_t size) {
    constexpr struct {
        int first, count;
    } kKinds[] = {{0, 0x80},       {0x20, 0x5F},     {0x410, 64},
                  {0x80, 0x780},   {0x800, 0xD000},  {0xD800, 0x800},
                  {0xDC00, 0x400}, {0xE000, 0x2000}, {0x4E00, 0x1000}};
    std::u16string text;
    while (text.size() < size) {
        const auto& kind = kKinds[random() % std::size(kKinds)];
        for (auto run = random() % 20; run > 0; --run) {
            const auto code = kind.first + static_cast<int>(random()) % kind.count;
            if (kind.first == 0xDC00) text += u'\xD83D';
            text += static_cast<char16_t>(std::max(code, kind.first));
        }
    }
    text.resize(size);
    return text;
}

// Sizes on both sides of what vectors and buffers hold.
constexpr std::size_t kSizes[] = {0,   1,   2,    7,    15,   16,   17,   18,   33,
                                  100, 700, 2730, 4096, 4097, 8191, 8193, 30000};

void compare_whole(const char* name, std::mt19937& random, std::size_t size) {
    const test::IcuOracle oracle(name);
    const Converter converter{core::from_utf8(name)};
    const std::u16string text = random_text(random, size);
    std::string bytes = oracle.narrow(text);
    ASSERT_EQ(narrow(converter, text), stdx::string(bytes)) << name << ' ' << size;
    for (int changes = 0; changes < 3; ++changes) {
        const auto expected = oracle.widen(bytes);
        const auto widened = widen(converter, bytes);
        ASSERT_EQ(widened.has_value(), expected.has_value()) << name << ' ' << size;
        ASSERT_EQ(widened.value_or(u""_us), stdx::ustring(expected.value_or(u"")))
            << name << ' ' << size;
        if (!bytes.empty()) bytes[random() % bytes.size()] = static_cast<char>(random());
    }
}

TEST(Encodings, GiveWhatIcuGivesOnRandomTexts) {
    std::mt19937 random(1);
    for (int round = 0; round < 40; ++round)
        for (const char* const name : {"UTF-8", "UTF-16LE", "UTF-16BE", "US-ASCII", "ISO-8859-1",
                                       "windows-1251", "ISO-8859-5", "KOI8-R", "ibm-37"})
            for (const std::size_t size : kSizes) compare_whole(name, random, size + random() % 3);
    for (int i = 0; i < ucnv_countAvailable(); ++i)
        for (const std::size_t size : {10u, 300u, 9000u})
            compare_whole(ucnv_getAvailableName(i), random, size);
}

TEST(Encodings, OfOneByteMapEachCodeAsIcuDoes) {
    std::u16string all;
    for (unsigned code = 1; code < 0x10000; ++code) all += static_cast<char16_t>(code);
    all += u"\U0001F600\U00100000";
    for (int i = 0; i < ucnv_countAvailable(); ++i) {
        const char* const name = ucnv_getAvailableName(i);
        const test::IcuOracle oracle(name);
        const UConverterType type = oracle.type();
        if (type != UCNV_SBCS && type != UCNV_LATIN_1 && type != UCNV_US_ASCII) continue;
        const Converter converter{core::from_utf8(name)};
        ASSERT_EQ(narrow(converter, all), stdx::string(oracle.narrow(all))) << name;
        for (int code = 0; code < 0x100; ++code) {
            // In a block and alone.
            for (const std::string& bytes : {std::string(1, static_cast<char>(code)),
                                             std::string(20, static_cast<char>(code))}) {
                const auto expected = oracle.widen(bytes);
                const auto widened = widen(converter, bytes);
                ASSERT_EQ(widened.has_value(), expected.has_value()) << name << ' ' << code;
                ASSERT_EQ(widened.value_or(u""_us), stdx::ustring(expected.value_or(u"")))
                    << name << ' ' << code;
            }
        }
    }
}

// All forms of the inner loops take only what is right, and leave what they stop at.
TEST(Encodings, HaveTheSameTextByEveryInstructionSet) {
    std::mt19937 random(2);
    const test::IcuOracle oracle("UTF-8");
    const bool hasAvx2 = __builtin_cpu_supports("avx2");
    for (const auto* blocks :
         {&core::kUtf8Sse2, &core::kUtf8Ssse3, hasAvx2 ? &core::kUtf8Avx2 : &core::kUtf8Ssse3})
        for (int round = 0; round < 3000; ++round) {
            const std::u16string text = random_text(random, random() % 200);
            std::string bytes = oracle.narrow(text);
            if (round % 2 && !bytes.empty())
                bytes[random() % bytes.size()] = static_cast<char>(random());
            std::u16string units(bytes.size(), u'\0');
            core::Widening widening{bytes.data(), bytes.data() + bytes.size(), units.data(),
                                    units.data() + units.size()};
            blocks->widen(widening);
            units.resize(static_cast<std::size_t>(widening.out - units.data()));
            const std::string_view taken(bytes.data(),
                                         static_cast<std::size_t>(widening.in - bytes.data()));
            ASSERT_EQ(oracle.widen(taken), units);

            std::string out(3 * text.size(), '\0');
            core::Narrowing narrowing{text.data(), text.data() + text.size(), out.data(),
                                      out.data() + out.size()};
            blocks->narrow(narrowing);
            out.resize(static_cast<std::size_t>(narrowing.out - out.data()));
            ASSERT_EQ(
                oracle.narrow({text.data(), static_cast<std::size_t>(narrowing.in - text.data())}),
                out);
        }
}

// ---- The rest.

TEST(SystemEncoding, IsWhatNarrowGoesThrough) {
    const stdx::ustring text = u"путь/file";
    EXPECT_EQ(core::narrow(text), Converter::system().narrow(text.c_str()));
    EXPECT_EQ(Converter::system().widen(core::narrow(text).c_str()), text);
    EXPECT_EQ(Converter::system().name(), u"UTF-8"_us); // the tests run in no other, nor in "C"
}

using ConverterExceptionTest = test::ProcessTest;

TEST_F(ConverterExceptionTest, NamesTheEncodingAndIsKeptByItsTwin) {
    core::InterfacePtr<core::IExceptionObject> kept;
    try {
        Converter bad(u"nosuch");
    } catch (const core::Exception& exception) {
        kept = exception.object();
    }
    ASSERT_TRUE(kept);
    try {
        kept->rethrow();
    } catch (const ConverterException& exception) {
        EXPECT_EQ(exception.error(), Error::BadName);
        EXPECT_EQ(exception.encoding(), u"nosuch"_us);
        EXPECT_EQ(exception.description(),
                  core::load_core_wstring("IDS_CNVERROR_BADNAME") + u" 'nosuch'");
    }
    EXPECT_EQ(ConverterException(Error::BadData, u"x").description(),
              core::load_core_wstring("IDS_CNVERROR_BADDATA") + u" 'x'");
    EXPECT_TRUE(ConverterException().description().empty());
}

} // namespace
