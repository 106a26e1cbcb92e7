#include <core/text/Base64.h>

#include <text/Base64Kernels.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace core;

std::string random_bytes(std::mt19937& random, std::size_t n) {
    std::string bytes(n, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    return bytes;
}

// The rule as it is told, bit by bit.
std::u16string plain_base64(std::string_view data, unsigned lineLength, bool url, bool padding) {
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789" +
                                 std::string(url ? "-_" : "+/");
    const std::size_t bits = data.size() * 8;
    std::u16string flat;
    for (std::size_t bit = 0; bit < bits; bit += 6) {
        unsigned value = 0;
        for (std::size_t i = bit; i < bit + 6; ++i) {
            const unsigned byte = i < bits ? static_cast<unsigned char>(data[i / 8]) : 0;
            value = value * 2 + ((byte >> (7 - i % 8)) & 1);
        }
        flat.push_back(static_cast<char16_t>(alphabet[value]));
    }
    while (padding && flat.size() % 4 != 0) flat.push_back(u'=');
    if (lineLength == 0) return flat;
    std::u16string lines;
    for (std::size_t i = 0; i < flat.size(); ++i) {
        if (i != 0 && i % lineLength == 0) lines += u"\r\n";
        lines.push_back(flat[i]);
    }
    return lines;
}

TEST(Base64, EncodesAndDecodesEveryLength) {
    std::mt19937 random(4);
    for (std::size_t n = 0; n <= 300; ++n) {
        const std::string data = random_bytes(random, n);
        for (const bool url : {false, true}) {
            SCOPED_TRACE(n);
            const stdx::ustring text = encode_base64(data, 0, url);
            ASSERT_EQ(text, plain_base64(data, 0, url, true));
            stdx::string back("was there");
            ASSERT_TRUE(decode_base64(text, back, url));
            ASSERT_EQ(back, data);
        }
        const stdx::ustring bare = encode_base64url(data, true);
        ASSERT_EQ(bare, plain_base64(data, 0, true, false));
        ASSERT_EQ(encode_base64url(data), plain_base64(data, 0, true, true));
        stdx::string back;
        ASSERT_TRUE(decode_base64url(bare, bare.size(), back));
        ASSERT_EQ(back, data);
    }
}

TEST(Base64, BreaksLinesOfEveryLength) {
    std::mt19937 random(5);
    for (unsigned lineLength = 1; lineLength <= 300; ++lineLength) {
        for (const std::size_t n : {0u, 1u, 48u, 225u, 768u, 769u, 2000u}) {
            const std::string data = random_bytes(random, n);
            const stdx::ustring text = encode_base64(data, lineLength);
            ASSERT_EQ(text, plain_base64(data, lineLength, false, true)) << lineLength;
            stdx::string back;
            ASSERT_TRUE(decode_base64(text, back));
            ASSERT_EQ(back, data);
        }
    }
}

TEST(Base64, InPartsIsTheSameAsAtOnce) {
    std::mt19937 random(6);
    for (int round = 0; round < 500; ++round) {
        const std::string data = random_bytes(random, random() % 1000);
        const auto lineLength = static_cast<unsigned>(random() % 80);
        const stdx::ustring whole = encode_base64(data, lineLength);

        Base64Encoder encoder(lineLength);
        std::u16string text;
        for (std::size_t at = 0; at < data.size();) {
            const std::size_t n = std::min<std::size_t>(1 + random() % 50, data.size() - at);
            std::u16string part(encoder.max_size(n), u'#');
            char16_t* const end = encoder.encode(data.data() + at, n, part.data());
            text.append(part.data(), end);
            at += n;
        }
        std::u16string part(encoder.max_size(0), u'#');
        text.append(part.data(), encoder.finish(part.data()));
        ASSERT_EQ(whole, text);

        Base64Decoder decoder;
        std::string back;
        for (std::size_t at = 0; at <= text.size();) {
            const std::size_t n = std::min<std::size_t>(1 + random() % 90, text.size() - at);
            std::string bytes(Base64Decoder::max_size(n), '#');
            auto* const begin = reinterpret_cast<std::uint8_t*>(bytes.data());
            std::uint8_t* end = decoder.decode(text.data() + at, n, begin);
            const bool isLast = at + n == text.size();
            if (isLast) {
                ASSERT_TRUE(decoder.finish(end));
            }
            back.append(bytes.data(), static_cast<std::size_t>(end - begin));
            if (isLast) break;
            at += n;
        }
        ASSERT_EQ(back, data);
    }
}

TEST(Base64, EndsOrFailsWhereTheTextSaysSo) {
    constexpr const char* kFails = nullptr;
    const struct {
        std::u16string_view text;
        const char* standard; // what decode_base64 gives
        const char* url;      // what decode_base64url gives
    } rows[] = {
        {u"", "", ""},
        {u"QUJD", "ABC", "ABC"},
        {u"QU\r\nJ\nD\r", "ABC", "ABC"},
        {u"QUI=", "AB", "AB"},
        {u"QQ==", "A", "A"},
        {u"QQ\n=\n=", "A", "A"},
        {u"QQ==QUJD", "AABC", "AABC"}, // a short group is no end
        {u"QUJD=garbage", "ABC", "ABC"},
        {u"=", "", ""},
        {u"QUJD!QUJD", "ABC", "ABC"},
        {u"QUJD QUJD", "ABC", "ABC"},
        {u"QUJD\u0451QUJD", "ABC", "ABC"},
        {u"QUJD\uFF21", "ABC", "ABC"},
        {u"!", "", ""},
        {u"Q", kFails, kFails},
        {u"QU", kFails, "A"},
        {u"QUI", kFails, "AB"},
        {u"QUJDQU!D", kFails, "ABCA"},
        {u"Q===", kFails, kFails},
        {u"QQ=", kFails, kFails},
        {u"QQ=D", kFails, kFails},
        {u"QQ=!", kFails, kFails},
        {u"++//", "\xFB\xEF\xFF", ""},
        {u"--__", "", "\xFB\xEF\xFF"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(stdx::string(row.text.begin(), row.text.end()));
        stdx::string data("untouched");
        EXPECT_EQ(decode_base64(row.text, data), row.standard != kFails);
        EXPECT_EQ(data, row.standard ? row.standard : "untouched");
        data = "untouched";
        const auto n = static_cast<unsigned>(row.text.size());
        EXPECT_EQ(decode_base64url(row.text, n, data), row.url != kFails);
        EXPECT_EQ(data, row.url ? row.url : "untouched");
    }
    stdx::string head;
    EXPECT_TRUE(decode_base64url(u"QUJDQUJD", 6, head));
    EXPECT_EQ(head, "ABCA");
}

// Each character that is wrong, at each place that a vector may see it.
TEST(Base64, FindsAForeignCharacterAnywhere) {
    const stdx::ustring good(60, u'Q');
    for (unsigned c = 0; c <= 0xFFFF; c = c < 0x180 ? c + 1 : c * 5 / 4) {
        for (unsigned place = 0; place < 60; ++place) {
            stdx::ustring text = good;
            text[place] = static_cast<char16_t>(c);
            const bool isOwn =
                c == '+' || c == '/' || (c < 0x80 && std::isalnum(static_cast<int>(c)));
            const bool isBreak = c == '\r' || c == '\n';
            const bool isPadding = c == '=' && place % 4 == 3;
            stdx::string data;
            bool isGood = isOwn || place % 4 == 0 || isPadding;
            if (isBreak) isGood = false; // 59 characters are left
            ASSERT_EQ(decode_base64(text, data), isGood) << c << " at " << place;
            if (!isGood) continue;
            const unsigned size = isOwn ? 45 : isPadding ? 44 : place / 4 * 3;
            ASSERT_EQ(data.size(), size) << c << " at " << place;
        }
    }
}

// The 8-bit forms give what the 16-bit forms give, for good text and for text with a fault.
TEST(Base64, EightBitTextIsTheSame) {
    std::mt19937 random(8);
    for (int round = 0; round < 3000; ++round) {
        const std::string data = random_bytes(random, random() % 200);
        const unsigned lineLength = round % 3 == 0 ? 0 : static_cast<unsigned>(random() % 80);
        const bool url = random() % 2 != 0;
        stdx::string text("was there");
        encode_base64(data, text, lineLength, url);
        stdx::ustring wide(text.begin(), text.end());
        ASSERT_EQ(wide, encode_base64(data, lineLength, url));

        if (round % 2 != 0 && !text.empty()) {
            const auto place = static_cast<unsigned>(random() % text.size());
            text[place] = static_cast<char>(random());
            wide[place] = static_cast<unsigned char>(std::as_const(text)[place]);
        }
        stdx::string back("untouched"), wideBack("untouched");
        ASSERT_EQ(decode_base64(text, back, url), decode_base64(wide, wideBack, url)) << text;
        ASSERT_EQ(back, wideBack);
        const unsigned length = text.size() - text.size() % 5;
        ASSERT_EQ(decode_base64url(text, length, back), decode_base64url(wide, length, wideBack));
        ASSERT_EQ(back, wideBack);
    }
}

template <class Unit> class Base64Kernels : public testing::Test {
protected:
    std::vector<const Base64Kernel<Unit>*> kernels() const {
        std::vector<const Base64Kernel<Unit>*> runnable{&kBase64Plain<Unit>};
        if (__builtin_cpu_supports("ssse3")) runnable.push_back(&kBase64Ssse3<Unit>);
        if (__builtin_cpu_supports("avx2")) runnable.push_back(&kBase64Avx2<Unit>);
        return runnable;
    }
};
using Units = testing::Types<char, char16_t>;
TYPED_TEST_SUITE(Base64Kernels, Units);

// Memory is exact, so that a sanitizer sees a step too far.
TYPED_TEST(Base64Kernels, DoWhatTheTableDoes) {
    using Text = std::vector<TypeParam>;
    std::mt19937 random(7);
    for (const Base64Alphabet& alphabet : kBase64Alphabets) {
        for (std::size_t n = 0; n < 300; n += 3) {
            const std::string data = random_bytes(random, n);
            const auto* bytes = reinterpret_cast<const std::uint8_t*>(data.data());
            Text expected(n / 3 * 4);
            for (std::size_t i = 0; i < n; i += 3)
                encode_group(bytes + i, expected.data() + i / 3 * 4, alphabet);
            for (const auto* kernel : this->kernels()) {
                Text text(expected.size(), '#');
                const std::size_t encoded = kernel->encode(bytes, n, text.data(), alphabet);
                if (kernel != &kBase64Plain<TypeParam>) {
                    ASSERT_LT(n - encoded, 12u);
                }
                for (std::size_t i = encoded; i < n; i += 3)
                    encode_group(bytes + i, text.data() + i / 3 * 4, alphabet);
                ASSERT_EQ(text, expected);

                std::vector<std::uint8_t> back(n);
                const std::size_t decoded =
                    kernel->decode(text.data(), text.size(), back.data(), alphabet);
                if (kernel != &kBase64Plain<TypeParam>) {
                    ASSERT_LT(text.size() - decoded, 16u);
                }
                ASSERT_TRUE(std::equal(bytes, bytes + decoded / 4 * 3, back.begin()));
            }
        }
    }
}

// Each code at each place of a block.
TYPED_TEST(Base64Kernels, StopAtAForeignCharacter) {
    for (const Base64Alphabet& alphabet : kBase64Alphabets) {
        for (unsigned code = 0; code < (sizeof(TypeParam) == 1 ? 0x100u : 0x10000u);
             code += code < 0x200 ? 1 : 97) {
            const auto c = static_cast<TypeParam>(code);
            const bool isOwn =
                code < 0x80 && std::find(alphabet.characters.begin(), alphabet.characters.end(),
                                         static_cast<char>(code)) != alphabet.characters.end();
            for (std::size_t place = 0; place < 64; ++place) {
                std::vector<TypeParam> text(64, 'A');
                text[place] = c;
                std::vector<std::uint8_t> bytes(48);
                for (const auto* kernel : this->kernels()) {
                    const std::size_t n =
                        kernel->decode(text.data(), text.size(), bytes.data(), alphabet);
                    if (!isOwn) {
                        ASSERT_LE(n, place / 4 * 4) << code;
                    } else if (kernel != &kBase64Plain<TypeParam>) {
                        ASSERT_EQ(n, 64u) << code;
                    }
                }
            }
        }
    }
}

} // namespace
