#include <core/component/Utf8.h>
#include <core/concurrency/Thread.h>
#include <core/text/Converter.h>
#include <core/text/StreamConverter.h>

#include "IcuOracle.h"
#include "Pieces.h"
#include "support/ProcessTest.h"

#include <random>
#include <thread>

namespace {

using namespace stdx::literals;
using core::Converter;
using core::ConverterException;
using core::StreamConverterFromUnicode;
using core::StreamConverterToUnicode;

// Encodings with kernels and without, with states, with marks of their own.
constexpr const char* kEncodings[] = {
    "UTF-8", "UTF-16LE",  "UTF-16BE", "UTF-16",      "UTF-32", "windows-1251", "ibm-37",
    "UTF-7", "Shift_JIS", "gb18030",  "ISO-2022-JP", "SCSU",   "US-ASCII",
};
constexpr std::u16string_view kText =
    u"Text жук 中文 \U0001F600, ё№€ again and again, длинное слово, 漢字\U00020000 end";

TEST(StreamConverters, GiveTheSameTextForEveryCutAndRoom) {
    for (const char* const name : kEncodings) {
        SCOPED_TRACE(name);
        const test::IcuOracle oracle(name);
        const std::string bytes = oracle.narrow(kText);
        const auto text = oracle.widen(bytes);
        ASSERT_TRUE(text);
        const stdx::ustring encoding = core::from_utf8(name);
        StreamConverterToUnicode widening(encoding);
        StreamConverterFromUnicode narrowing(encoding);
        std::mt19937 random(3);
        for (const unsigned most : {1u, 2u, 3u, 5u, 17u, 64u})
            for (int round = 0; round < 20; ++round) {
                const auto sizes = [&] { return 1 + static_cast<unsigned>(random()) % most; };
                ASSERT_EQ((test::in_pieces<char16_t>(widening, std::string_view(bytes), sizes)),
                          text);
                ASSERT_EQ((test::in_pieces<char>(narrowing, kText, sizes)), bytes);
            }
        // Cut off at each place, the end refuses what is half a character, as the whole text does.
        for (std::size_t size = 0; size < bytes.size(); ++size) {
            const std::string_view head(bytes.data(), size);
            ASSERT_EQ((test::in_pieces<char16_t>(widening, head, [] { return 3u; })),
                      oracle.widen(head))
                << size;
            widening.reset();
        }
    }
}

TEST(StreamConverters, RefuseBadBytesInEveryPiece) {
    std::mt19937 random(4);
    for (const char* const name : kEncodings) {
        const test::IcuOracle oracle(name);
        StreamConverterToUnicode converter(core::from_utf8(name));
        for (int round = 0; round < 300; ++round) {
            std::string bytes = oracle.narrow(kText);
            bytes[random() % bytes.size()] = static_cast<char>(random());
            ASSERT_EQ((test::in_pieces<char16_t>(
                          converter, std::string_view(bytes),
                          [&] { return 1 + static_cast<unsigned>(random()) % 40; })),
                      oracle.widen(bytes))
                << name;
            converter.reset();
        }
    }
}

TEST(StreamConverters, KeepWhatIsUnfinished) {
    StreamConverterToUnicode converter(u"UTF-8");
    char16_t units[8];
    char16_t* out = units;
    const char* in = "\xD0";
    EXPECT_FALSE(converter.widen(&in, 1, &out, 8));
    EXPECT_EQ(converter.pending(), 1u);
    EXPECT_EQ(out, units);
    in = "\xB6\xF0\x9F\x98\x80z";
    EXPECT_TRUE(converter.widen(&in, 6, &out, 2)); // half of the pair has room
    EXPECT_EQ(converter.pending(), 0u);
    out = units + 2;
    EXPECT_FALSE(converter.widen(&in, *in ? 1 : 0, &out, 6));
    EXPECT_EQ(std::u16string(units, out), u"ж\U0001F600z");

    StreamConverterFromUnicode back(u"UTF-8");
    const char16_t* half = u"\xD83D";
    char bytes[8];
    char* to = bytes;
    EXPECT_FALSE(back.narrow(&half, 1, &to, 8));
    EXPECT_EQ(back.pending(), 1u);
    EXPECT_FALSE(back.narrow(nullptr, 0, &to, 8));
    EXPECT_EQ(std::string(bytes, to), "?");
    EXPECT_EQ(back.pending(), 0u);
}

TEST(StreamConverters, CountWhatTheyRefuse) {
    const struct {
        std::string_view first, second;
        std::ptrdiff_t taken; // of the second
        unsigned refused;
    } rows[] = {
        {"good", "good\xFFgood", 5, 1},
        {"\xE2", "\x82zz", 1, 2}, // begun in the first piece
        {"\xE2\x82", "zz", 0, 2}, // the fault shows in the second
        {"good", "\xED\xA0\x80", 1, 1},
    };
    for (const auto& row : rows) {
        StreamConverterToUnicode converter(u"UTF-8");
        char16_t units[32];
        char16_t* out = units;
        const char* in = row.first.data();
        converter.widen(&in, static_cast<unsigned>(row.first.size()), &out, 32);
        in = row.second.data();
        EXPECT_EQ(converter.refused(), 0u);
        EXPECT_THROW(converter.widen(&in, static_cast<unsigned>(row.second.size()), &out, 16),
                     ConverterException);
        EXPECT_EQ(in - row.second.data(), row.taken) << testing::PrintToString(row.second);
        EXPECT_EQ(converter.refused(), row.refused) << testing::PrintToString(row.second);
        converter.reset();
        in = "z";
        out = units;
        EXPECT_FALSE(converter.widen(&in, 1, &out, 32));
        EXPECT_EQ(units[0], u'z');
    }
}

TEST(StreamConverters, KnowTheirEncoding) {
    const struct {
        const char16_t* name;
        bool hasSignature;
        unsigned maxCharSize;
    } rows[] = {{u"UTF-8", true, 3},         {u"UTF-16LE", true, 2}, {u"UTF-32", true, 4},
                {u"windows-1251", false, 1}, {u"SCSU", true, 3},     {u"gb18030", false, 4}};
    for (const auto& row : rows) {
        StreamConverterToUnicode widening(row.name);
        StreamConverterFromUnicode narrowing(row.name);
        EXPECT_EQ(widening.name(), stdx::ustring(row.name));
        EXPECT_EQ(narrowing.maxCharSize(), row.maxCharSize) << core::to_utf8(row.name);
        for (const char16_t* const signature : {widening.signature(), narrowing.signature()}) {
            EXPECT_EQ(std::u16string(signature ? signature : u""),
                      row.hasSignature ? u"\uFEFF" : u"")
                << core::to_utf8(row.name);
        }
    }
    EXPECT_EQ(StreamConverterToUnicode().name(), Converter::system().name());
    EXPECT_EQ(StreamConverterFromUnicode(u"").name(), Converter::system().name());
    EXPECT_THROW(StreamConverterToUnicode(u"nosuch"), ConverterException);
}

// ---- Threads.

class ConvertersOfThreads : public test::ProcessTest {};

// Each thread uses shared converters, its own ones and new names at once; `core::Thread`s keep ICU's
// converters, the others open them for each call.
TEST_F(ConvertersOfThreads, DoNotDisturbEachOther) {
    const std::u16string text(kText);
    const auto work = [&](int number) {
        for (int round = 0; round < 30; ++round)
            for (const char* const name :
                 {"UTF-8", "windows-1251", "Shift_JIS", "gb18030", "KOI8-U"}) {
                const test::IcuOracle oracle(name);
                const std::string spelling =
                    std::string(name) + ",thread=" + std::to_string((number + round) % 7);
                for (const std::string& encoding : {std::string(name), spelling}) {
                    const Converter converter(core::from_utf8(encoding));
                    const stdx::string bytes = converter.narrow(text.c_str());
                    ASSERT_EQ(bytes, stdx::string(oracle.narrow(text)));
                    ASSERT_EQ(converter.widen(bytes.c_str()),
                              stdx::ustring(*oracle.widen(bytes.view())));
                }
            }
    };
    std::vector<core::InterfacePtr<core::Thread>> threads;
    std::vector<std::thread> foreign;
    for (int number = 0; number < 4; ++number) {
        threads.push_back(core::create_thread([=] { work(number); }));
        threads.back()->start();
        foreign.emplace_back(work, number);
    }
    for (const auto& thread : threads) thread->join();
    for (std::thread& thread : foreign) thread.join();
}

// Spellings are countless; those that find the table full work as well. The last test: behind it no
// thread keeps converters for new names.
TEST_F(ConvertersOfThreads, TakeNamesInGreatNumbers) {
    for (int number = 0; number < 2000; ++number) {
        const auto name = core::from_utf8("Shift_JIS,x=" + std::to_string(number));
        ASSERT_EQ(Converter(name).narrow(u"ж"), "\x84w"_s);
    }
}

} // namespace
