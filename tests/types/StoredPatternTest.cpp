// The stored form of patterns: known texts and bytes, what older and newer programs leave out and
// add, and damage.
#include "../lists/ListSources.h"
#include "SampleTypes.h"
#include "support/ProcessTest.h"

#include <core/component/Utf8.h>

#include <gmock/gmock.h>

#include <random>

namespace {

using namespace core;
using namespace test;

class StoredPatterns : public ProcessTest {};

auto writing(const TypeDomainPattern& pattern) {
    return [&pattern](IListOutStream& stream) {
        ListOutStream out(&stream);
        pattern.serialize(out);
    };
}

TypeDomainPattern read_text(const std::u16string& text, unsigned window = 1000) {
    const auto reader = make_reader(text, window);
    ListInStream in(reader.get());
    TypeDomainPattern pattern(kUnknownType); // is replaced
    pattern.deserialize(in);
    return pattern;
}
TypeDomainPattern read_bytes(const std::string& bytes) {
    ListInStream in(make_file(bytes, 1000).get());
    TypeDomainPattern pattern(kUnknownType);
    pattern.deserialize(in);
    return pattern;
}

// The text without the line breaks that the stream puts in.
std::string line_of(const TypeDomainPattern& pattern) {
    std::u16string text = text_of(writing(pattern));
    std::erase_if(text, [](char16_t unit) { return unit == u'\r' || unit == u'\n'; });
    return to_utf8(text).c_str();
}

bool equal(const TypeDomainPattern& a, const TypeDomainPattern& b) {
    return a == b && a.getNumericQualifiers() == b.getNumericQualifiers() &&
           a.getStringQualifiers() == b.getStringQualifiers() &&
           a.getDateQualifiers() == b.getDateQualifiers() &&
           a.getBinaryQualifiers() == b.getBinaryQualifiers();
}

TypeDomainPattern with(const _GUID& type, auto set) {
    TypeDomainPattern pattern(type);
    set(pattern);
    return pattern;
}
TypeDomainPattern number(const NumericQualifiers& qualifiers) {
    return with(CLSID_NumericType,
                [&](auto& pattern) { pattern.setNumericQualifiers(qualifiers); });
}
TypeDomainPattern string(unsigned length, bool variable) {
    return with(CLSID_StringType, [&](auto& pattern) {
        pattern.setStringQualifiers(StringQualifiers(length, variable));
    });
}
TypeDomainPattern binary(unsigned length, bool variable) {
    return with(CLSID_BinaryDataType, [&](auto& pattern) {
        pattern.setBinaryQualifiers(BinaryQualifiers(length, variable));
    });
}
TypeDomainPattern date(int parts) {
    return with(CLSID_DateType,
                [&](auto& pattern) { pattern.setDateQualifiers(DateQualifiers(parts)); });
}

TEST_F(StoredPatterns, AreTheseTextsAndReadBack) {
    const struct {
        TypeDomainPattern pattern;
        const char* text;
    } rows[] = {
        {TypeDomainPattern(), R"({"Pattern"})"},
        {TypeDomainPattern(CLSID_BooleanType), R"({"Pattern",{"B"}})"},
        {TypeDomainPattern(CLSID_NullType), R"({"Pattern",{"L"}})"},
        {TypeDomainPattern(CLSID_TypeType), R"({"Pattern",{"T"}})"},
        {number({}), R"({"Pattern",{"N"}})"},
        {number({10, 2}), R"({"Pattern",{"N",10,2,0}})"},
        {number({0, 0, true}), R"({"Pattern",{"N",0,0,1}})"},
        {string(0, true), R"({"Pattern",{"S"}})"},
        {string(25, true), R"({"Pattern",{"S",25,1}})"},
        {string(4294967295, false), R"({"Pattern",{"S",4294967295,0}})"},
        {date(3), R"({"Pattern",{"D"}})"},
        {date(1), R"({"Pattern",{"D","D"}})"},
        {date(2), R"({"Pattern",{"D","T"}})"},
        {binary(0, true), R"({"Pattern",{"R"}})"},
        {binary(16, false), R"({"Pattern",{"R",16,0}})"},
        {TypeDomainPattern(CLSID_WidgetType),
         R"({"Pattern",{"#",6f0b7c52-0f5e-4a55-9a5d-b46cd2d5f0b1}})"},
        // In the order of the set, types that nobody knows among them.
        {TypeDomainPattern({kUnknownType, CLSID_NumericType, CLSID_BooleanType, CLSID_StringType}),
         R"({"Pattern",{"B"},{"S"},{"N"},{"#",e1e1e1e1-0000-4000-8000-000000000001}})"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(line_of(row.pattern), row.text);
        for (const unsigned window : kWindows)
            EXPECT_TRUE(equal(read_text(text_of(writing(row.pattern)), window), row.pattern))
                << row.text;
        EXPECT_TRUE(equal(read_bytes(bytes_of(writing(row.pattern))), row.pattern)) << row.text;
    }
    EXPECT_EQ(hex(bytes_of(writing(TypeDomainPattern()))),
              "5A07" + hex("Pattern") + "20"); // begin and string of 7 bytes, end
    // A fixed length of no limit is not written, so that it reads as a variable one.
    EXPECT_EQ(line_of(string(0, false)), R"({"Pattern",{"S"}})");
}

TEST_F(StoredPatterns, AreReadAsFarAsTheyAreKnown) {
    const struct {
        const char16_t* text;
        TypeDomainPattern expected;
    } rows[] = {
        {u"{}", {}},
        {u"{\"any word\",{\"B\"}}", TypeDomainPattern(CLSID_BooleanType)},
        {u"{\"\",{\"B\"}}", TypeDomainPattern(CLSID_BooleanType)},
        {u" { \"Pattern\" , { \"B\" } } ", TypeDomainPattern(CLSID_BooleanType)},
        {u"{\"Pattern\",{\"X\",1,{2,{3}}},{\"B\"}}", TypeDomainPattern(CLSID_BooleanType)},
        {u"{\"Pattern\",{\"\"},{\"U\"},{\"u\"},{\"b\"}}", {}},
        {u"{\"Pattern\",{\"Boolean\",1,2}}", TypeDomainPattern(CLSID_BooleanType)},
        {u"{\"Pattern\",{\"B\"},{\"B\"}}", TypeDomainPattern(CLSID_BooleanType)},
        {u"{\"Pattern\",{\"N\",10,2,0,\"later\",{1}}}", number({10, 2})},
        {u"{\"Pattern\",{\"N\",100,70,1}}", number({64, 64, true})},
        {u"{\"Pattern\",{\"N\",-1,5,0}}", number({64, 5})},
        {u"{\"Pattern\",{\"N\",0,5,0}}", number({})},
        {u"{\"Pattern\",{\"S\",0,0}}", string(0, true)},
        {u"{\"Pattern\",{\"R\",0,0}}", binary(0, true)},
        {u"{\"Pattern\",{\"D\",\"\"}}", date(3)},
        {u"{\"Pattern\",{\"D\",\"TD\"}}", date(3)},
        {u"{\"Pattern\",{\"D\",\"xTT\"}}", date(2)},
        {u"{\"Pattern\",{\"#\",00000000-0000-0000-0000-000000000000}}", {}},
        {u"{\"Pattern\",{\"#\",ee8d3e7c-f930-4a76-8aad-4ff9083a6ea6}}", {}},
        {u"{\"Pattern\",{\"#\",b0be78f2-0ee6-4d31-a3bb-77dd32ba5bec,\"later\"}}", number({})},
    };
    for (const auto& row : rows)
        EXPECT_TRUE(equal(read_text(row.text), row.expected)) << to_utf8(row.text);
}

TypeDomainPattern sample() {
    TypeDomainPattern pattern(
        {CLSID_BooleanType, CLSID_NumericType, CLSID_StringType, CLSID_DateType, kUnknownType});
    pattern.setNumericQualifiers({10, 2});
    pattern.setStringQualifiers(StringQualifiers(300, false));
    pattern.setDateQualifiers(DateQualifiers(1));
    return pattern;
}

TEST_F(StoredPatterns, ThatAreDamagedAreRefusedAndChangeNothing) {
    for (const char16_t* const text :
         {u"", u"x", u"\"Pattern\"", u"{1}", u"{\"Pattern\"", u"{\"Pattern\",B}",
          u"{\"Pattern\",{B}}", u"{\"Pattern\",{}}", u"{\"Pattern\",{\"N\",5}}",
          u"{\"Pattern\",{\"N\",5,2}}", u"{\"Pattern\",{\"N\",5,2,3}}",
          u"{\"Pattern\",{\"N\",\"5\",2,1}}", u"{\"Pattern\",{\"S\",5}}",
          u"{\"Pattern\",{\"D\",1}}", u"{\"Pattern\",{\"#\"}}", u"{\"Pattern\",{\"#\",12}}",
          u"{\"Pattern\",{\"#\",\"B\"}}", u"{\"Pattern\",{\"B\"},}"}) {
        TypeDomainPattern pattern = sample();
        const auto reader = make_reader(text, 1000);
        ListInStream in(reader.get());
        EXPECT_THROW(pattern.deserialize(in), ListStreamException) << to_utf8(text);
        EXPECT_TRUE(equal(pattern, sample()));
    }
    const std::u16string text = text_of(writing(sample()));
    for (std::size_t size = 0; size != text.rfind(u'}'); ++size)
        EXPECT_THROW(read_text(text.substr(0, size)), ListStreamException) << size;
    const std::string bytes = bytes_of(writing(sample()));
    for (std::size_t size = 0; size != bytes.size(); ++size)
        EXPECT_THROW(read_bytes(bytes.substr(0, size)), ListStreamException) << size;
    // Negative digits and digits beyond 32 bits are refused in bytes.
    for (const long long digits : {-1ll, 1ll << 32})
        EXPECT_THROW(read_bytes(bytes_of([digits](IListOutStream& out) {
                         out.beginList();
                         out.putCString(u"Pattern");
                         out.beginList();
                         out.putCString(u"N");
                         out.putInt64(digits);
                         out.putInt32(0);
                         out.putBool(false);
                         out.endList();
                         out.endList();
                     })),
                     ListStreamException);
}

// What is read is within its limits and reads back the same, whatever the damage.
TEST_F(StoredPatterns, ThatAreChangedAreReadOrRefused) {
    std::mt19937 random(1);
    const std::string bytes = bytes_of(writing(sample()));
    int read = 0, refused = 0;
    for (int round = 0; round != 5000; ++round) {
        std::string changed = bytes;
        changed[random() % changed.size()] ^= static_cast<char>(1 + random() % 255);
        try {
            const TypeDomainPattern pattern = read_bytes(changed);
            EXPECT_LE(pattern.getNumericQualifiers().digits, 64u);
            EXPECT_TRUE(equal(read_text(text_of(writing(pattern))), pattern));
            ++read;
        } catch (const ListStreamException&) {
            ++refused;
        }
    }
    EXPECT_GT(read, 100);
    EXPECT_GT(refused, 100);
}

// The time of reading does not grow with the square of the number of types.
TEST_F(StoredPatterns, WithVeryManyTypesAreRead) {
    std::u16string text = u"{\"Pattern\"";
    _GUID type = kUnknownType;
    constexpr std::uint32_t kTypes = 100'000;
    for (std::uint32_t n = kTypes; n != 0; --n) { // each in front of those before
        type.Data1 = n;
        text += u",{\"#\"," + std::u16string(std::u16string_view(to_string(type))) + u'}';
    }
    const TypeDomainPattern pattern = read_text(text + u'}', 100'000'000);
    EXPECT_EQ(pattern.size(), kTypes);
    EXPECT_EQ(pattern.front().Data1, 1u);
    EXPECT_TRUE(pattern.contains(type));
    EXPECT_TRUE(TypeDomain(pattern).empty());
}

} // namespace
