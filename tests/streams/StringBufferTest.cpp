#include "Sources.h"

#include <core/streams/IStringBuffer.h>
#include <core/text/ConverterException.h>
#include <core/text/StreamConverter.h>

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace core;
using Error = IOException::Error;
using test::io_error_of;
using test::text_of;
using Buffer = InterfacePtr<IStringBuffer>;

const char* const kKinds[] = {"in chunks", "over a string"};

Buffer create(std::size_t kind) {
    return kind == 0 ? create_string_buffer() : create_std_string_buffer();
}

// Every operation against std::u16string, in an order that chance chooses.
class Model {
public:
    Model(Buffer buffer, unsigned seed) : buffer_(std::move(buffer)), random_(seed) {}

    void run(int steps) {
        for (int i = 0; i < steps; ++i) {
            step();
            ASSERT_EQ(buffer_->length(), text_.size());
            ASSERT_GE(buffer_->capacity(), text_.size());
            if (i % 16 == 0 || text_.size() < 64) {
                ASSERT_TRUE(text_of(*buffer_) == text_) << "step " << i;
            }
        }
    }

private:
    unsigned below(std::size_t n) { return static_cast<unsigned>(random_() % (n + 1)); }
    unsigned size() { return static_cast<unsigned>(text_.size()); }

    // Mostly short, at times longer than a chunk.
    std::u16string some_text() {
        static constexpr unsigned kLengths[] = {1, 3, 20, 300, 9000};
        std::u16string text(below(kLengths[below(4)]), u'\0');
        for (char16_t& unit : text) unit = static_cast<char16_t>(u'a' + random_() % 26);
        return text;
    }

    void step() {
        if (text_.size() > 60'000) {
            buffer_->erase(10, size() - 30);
            text_.erase(10, size() - 30);
        }
        const std::u16string text = some_text();
        const stdx::ustring string{std::u16string_view(text)};
        const auto n = static_cast<unsigned>(text.size());
        const unsigned pos = below(size()), count = below(size() - pos + 3);
        const auto stop = static_cast<char16_t>(u'a' + random_() % 26);
        const unsigned from = below(n);
        const auto until = [&](std::u16string_view s) { return s.substr(0, s.find(stop)); };
        switch (random_() % 24) {
        case 0:
            buffer_->append(stop);
            text_.push_back(stop);
            break;
        case 1:
            buffer_->append(text.data(), n);
            text_ += text;
            break;
        case 2:
            EXPECT_EQ(buffer_->appendUntil(stop, text.c_str()), until(text).size());
            text_ += until(text);
            break;
        case 3:
            buffer_->append(string, from, 7);
            text_ += text.substr(from, 7);
            break;
        case 4:
            buffer_->append(buffer_.get(), pos, count);
            text_ += text_.substr(pos, count);
            break;
        case 5:
            buffer_->appendUntil(stop, buffer_.get(), pos, count);
            text_ += std::u16string(until(std::u16string_view(text_).substr(pos, count)));
            break;
        case 6:
            buffer_->append(-123456);
            text_ += u"-123456";
            break;
        case 7:
            buffer_->insert(pos, text.data(), n);
            text_.insert(pos, text);
            break;
        case 8:
            buffer_->insert(pos, stop);
            text_.insert(pos, 1, stop);
            break;
        case 9:
            buffer_->insert(pos, string, from);
            text_.insert(pos, text.substr(from));
            break;
        case 10: {
            const unsigned other = below(size());
            const std::u16string part = text_.substr(other, count);
            buffer_->insert(pos, buffer_.get(), other, count);
            text_.insert(pos, part);
            break;
        }
        case 11:
            buffer_->insert(pos, true);
            text_.insert(pos, u"true");
            break;
        case 12:
            buffer_->erase(pos, count);
            text_.erase(pos, count);
            break;
        case 13:
            EXPECT_EQ(text_of(*buffer_->subBuffer(pos, count)), text_.substr(pos, count));
            break;
        case 14:
            EXPECT_EQ(text_of(*buffer_->subBufferUntil(pos, stop, count)),
                      until(std::u16string_view(text_).substr(pos, count)));
            break;
        case 15: {
            std::u16string to(count, u'?');
            to.resize(buffer_->copyUntil(pos, stop, to.data(), count));
            EXPECT_EQ(to, until(std::u16string_view(text_).substr(pos, count)));
            break;
        }
        case 16: {
            const Buffer to = create(random_() % 2);
            EXPECT_EQ(buffer_->copyTo(pos, to.get(), count), text_.substr(pos, count).size());
            EXPECT_EQ(text_of(*to), text_.substr(pos, count));
            break;
        }
        case 17:
            buffer_->replace(pos, count, text.data(), n);
            text_.replace(pos, count, text);
            break;
        case 18: {
            const std::u16string part = text_.substr(pos);
            buffer_->replace(pos, count, buffer_.get(), pos);
            text_.replace(pos, count, part);
            break;
        }
        case 19:
            buffer_->reserve(below(20'000));
            break;
        case 20:
            buffer_->compact();
            break;
        case 21:
            buffer_->setLength(pos);
            text_.resize(pos);
            break;
        case 22:
            buffer_->setLength(size() + n);
            for (unsigned i = 0; i < n; ++i) buffer_->setCharAt(size() + i, text[i]);
            text_ += text;
            break;
        case 23:
            if (size() != 0 && pos < size()) {
                EXPECT_EQ(buffer_->charAt(pos), text_[pos]);
            }
            if (random_() % 8 == 0) {
                buffer_->clear();
                text_.clear();
            }
            break;
        }
    }

    Buffer buffer_;
    std::u16string text_;
    std::mt19937 random_;
};

TEST(StringBuffers, HoldWhatAStringHolds) {
    for (std::size_t kind = 0; kind < 2; ++kind) {
        for (unsigned seed = 1; seed <= 6; ++seed) {
            SCOPED_TRACE(testing::Message() << kKinds[kind] << ", seed " << seed);
            Model(create(kind), seed).run(1500);
        }
    }
}

TEST(StringBuffers, GrowInTheirSteps) {
    const struct {
        const char* what;
        std::vector<unsigned> reserved;
        unsigned appended;
        unsigned capacity;
    } rows[] = {
        {"the first chunk", {}, 1, 512},
        {"doubled", {}, 513, 512 + 1024},
        {"at most 8192", {}, 512 + 1024 + 2048 + 4096 + 8192 + 1, 15872 + 8192},
        {"little at first", {10}, 0, 256},
        {"as asked", {5000}, 0, 5000},
        {"in chunks of 8192 and a rest", {20'000}, 0, 20'000},
        {"one more of the last", {300, 500}, 0, 600},
        {"all that is asked", {300, 700}, 0, 1000},
        {"what is missing, if it is much", {300, 9000}, 0, 9000},
        {"nothing", {300, 300}, 300, 300},
        {"twice the last", {300}, 301, 900},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const auto buffer = create_string_buffer();
        for (const unsigned n : row.reserved) buffer->reserve(n);
        for (unsigned i = 0; i < row.appended; ++i) buffer->append(u'x');
        EXPECT_EQ(buffer->capacity(), row.capacity);
    }
    const auto buffer = create_string_buffer();
    buffer->append(stdx::ustring(9000, u'x'));
    buffer->setLength(700);
    buffer->compact();
    EXPECT_EQ(buffer->capacity(), 512u + 256u);
    buffer->setLength(0);
    buffer->compact();
    EXPECT_EQ(buffer->capacity(), 0u);
    EXPECT_THROW(buffer->reserve(0x80000000u), std::bad_alloc);
}

TEST(StringBuffers, RefusePlacesOutside) {
    for (std::size_t kind = 0; kind < 2; ++kind) {
        SCOPED_TRACE(kKinds[kind]);
        const Buffer buffer = create(kind), source = create(kind);
        buffer->append(u"abc");
        const stdx::ustring text(u"ab");
        const std::function<void()> calls[] = {
            [&] { buffer->append(text, 3); },
            [&] { buffer->append(source.get(), 1); },
            [&] { buffer->appendUntil(u'x', source.get(), 1); },
            [&] { buffer->insert(4, u'x'); },
            [&] { buffer->insert(4, 5); },
            [&] { buffer->insert(0, text, 3); },
            [&] { buffer->insert(0, source.get(), 1); },
            [&] { buffer->erase(4); },
            [&] { buffer->subBuffer(4); },
            [&] { buffer->copyTo(4, source.get()); },
            [&] { buffer->charAt(3); },
            [&] { buffer->setCharAt(3, u'x'); },
            [&] { buffer->replace(4, 0, u"x"); },
            [&] { buffer->createIterator(4); },
        };
        for (std::size_t i = 0; i < std::size(calls); ++i)
            EXPECT_EQ(io_error_of(calls[i]), Error::OutOfBounds) << "call " << i;
        EXPECT_EQ(text_of(*buffer), u"abc");
        EXPECT_EQ(io_error_of([&] { buffer->createIterator(3); }),
                  kind == 0 ? Error::OutOfBounds : Error::None);
        EXPECT_EQ(io_error_of([&] { source->createIterator(0); }),
                  kind == 0 ? Error::OutOfBounds : Error::None);
    }
}

class Brackets
    : public ObjectRoot
    , public SCOM_InternalClass<Brackets>
    , public IStringFormatter {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<Brackets, IStringFormatter>();
    }
    stdx::ustring format(bool) override { return u"[b]"; }
    stdx::ustring format(std::int8_t) override { return u"[i8]"; }
    stdx::ustring format(std::uint8_t) override { return u"[u8]"; }
    stdx::ustring format(std::int16_t) override { return u"[i16]"; }
    stdx::ustring format(std::uint16_t) override { return u"[u16]"; }
    stdx::ustring format(std::int32_t) override { return u"[i32]"; }
    stdx::ustring format(std::uint32_t) override { return u"[u32]"; }
    stdx::ustring format(std::int64_t) override { return u"[i64]"; }
    stdx::ustring format(std::uint64_t) override { return u"[u64]"; }
    stdx::ustring format(float) override { return u"[f]"; }
    stdx::ustring format(double) override { return u"[d]"; }
};

TEST(StringBuffers, WriteValuesByTheFormatterIfThereIsOne) {
    const auto fill = [](IStringBuffer& to) {
        to.append(false);
        to.append(std::int8_t{-128});
        to.append(std::uint8_t{255});
        to.append(std::int16_t{-7});
        to.append(std::uint16_t{65535});
        to.append(std::numeric_limits<std::int32_t>::min());
        to.append(4000000000u);
        to.append(-5LL);
        to.append(18446744073709551615ull);
        to.append(0.5f);
        to.insert(0, 12.5);
    };
    const Buffer plain = create_string_buffer();
    fill(*plain);
    EXPECT_EQ(text_of(*plain), u"12.5false-128255-765535-21474836484000000000-5"
                               u"184467440737095516155e-1");
    const auto formatter = make_object<Brackets>();
    const Buffer formatted = create_std_string_buffer(formatter.get());
    fill(*formatted);
    EXPECT_EQ(text_of(*formatted), u"[d][b][i8][u8][i16][u16][i32][u32][i64][u64][f]");
    formatted->subBuffer(0)->append(true);
}

// Cuts fall into characters and into surrogate pairs, and chunks end inside of pairs.
TEST(StringBuffers, DecodeAndEncodeInPieces) {
    std::string bytes = "x";
    for (int i = 0; i < 3000; ++i) bytes += i % 3 ? "\xF0\x9F\x98\x80" : "\xD0\x96";
    std::u16string expected = u"x";
    for (int i = 0; i < 3000; ++i) expected += i % 3 ? u"\xD83D\xDE00" : u"\u0416";
    for (std::size_t kind = 0; kind < 2; ++kind) {
        for (const std::size_t piece : {1u, 7u, 4096u}) {
            const Buffer buffer = create(kind);
            StreamConverterToUnicode decoder(u"UTF-8");
            for (std::size_t at = 0; at < bytes.size(); at += piece) {
                const auto n = static_cast<unsigned>(std::min(piece, bytes.size() - at));
                EXPECT_EQ(buffer->append(decoder, bytes.data() + at, n), n);
            }
            buffer->append(decoder, nullptr, 0);
            ASSERT_TRUE(text_of(*buffer) == expected) << kKinds[kind] << ", pieces of " << piece;

            StreamConverterFromUnicode encoder(u"UTF-8");
            std::string back;
            char block[64];
            const auto room = static_cast<unsigned>(4 + piece % 60);
            for (unsigned pos = 0, size = 1; size != 0; back.append(block, size))
                size = buffer->encode(encoder, pos, block, room);
            EXPECT_TRUE(back == bytes);
        }
        const Buffer buffer = create(kind);
        StreamConverterToUnicode decoder(u"UTF-8");
        EXPECT_THROW(buffer->append(decoder, "good\xFFmore", 9), ConverterException);
        EXPECT_EQ(text_of(*buffer), u"good");
    }
}

TEST(StringBufferIterators, StepBothWays) {
    const std::u16string text(20'000, u'x');
    for (std::size_t kind = 0; kind < 2; ++kind) {
        SCOPED_TRACE(kKinds[kind]);
        const Buffer buffer = create(kind);
        buffer->append(text.data(), 600); // two chunks
        const auto at = buffer->createIterator(510);
        unsigned steps = 0;
        while (at->next()) ++steps;
        EXPECT_EQ(at->position(), 600u);
        EXPECT_EQ(steps, kind == 0 ? 89u : 90u) << "the step to the end counts over a string only";
        EXPECT_FALSE(at->next());
        EXPECT_EQ(at->current(), 0);
        EXPECT_EQ(at->get(), kEndOfText);
        EXPECT_TRUE(at->eof());
        while (at->prev()) ++steps;
        EXPECT_EQ(at->position(), 0u);
        EXPECT_EQ(at->current(), u'x');
        EXPECT_EQ(at->skip(kAllUnits), 600u);
    }
}

TEST(StringBufferIterators, SurviveChangesUnderThem) {
    for (std::size_t kind = 0; kind < 2; ++kind) {
        SCOPED_TRACE(kKinds[kind]);
        const Buffer buffer = create(kind);
        buffer->append(stdx::ustring(2000, u'a'));
        const auto at = buffer->createIterator(1990);
        EXPECT_EQ(at->skip(20), 10u);
        buffer->append(u"bc");
        EXPECT_EQ(at->get(), u'b') << "what was appended is read";
        buffer->erase(0, 1000);
        EXPECT_TRUE(at->eof()) << "the place is gone";
        EXPECT_EQ(at->position(), 1002u);
        EXPECT_TRUE(at->prev());
        buffer->compact();
        buffer->insert(0, u"z");
        EXPECT_EQ(at->get(), u'b');
        EXPECT_EQ(at->readTo(buffer.get(), kAllUnits), 1u) << "into its own buffer";
        EXPECT_EQ(at->peek(), u'c');
        buffer->clear();
        EXPECT_EQ(at->peek(), kEndOfText);
        EXPECT_FALSE(at->prev());
    }
}

} // namespace
