// Streams that are cut, changed, or lie: the list's own exception and nothing else, no more memory
// than there are data; and random trees, which come back as they were.
#include "ListProgram.h"
#include "support/ProcessTest.h"

#include <core/component/IllegalArgumentException.h>

#include <functional>
#include <random>

namespace {

using namespace core;
using namespace test;

unsigned below(std::mt19937& random, unsigned limit) {
    return static_cast<unsigned>(random() % limit);
}

// A tree of items of all kinds, made from a number: what writes it, and the operations that read it.
class RandomTree {
public:
    explicit RandomTree(unsigned seed) : random_(seed) {}

    void write(IListOutStream& out, unsigned depth = 0) {
        out.beginList();
        operations += '{';
        for (unsigned n = below(random_, 6); n != 0; --n) item(out, depth);
        out.endList();
        operations += '}';
    }

    std::string operations, expected;

private:
    void item(IListOutStream& out, unsigned depth) {
        switch (below(random_, 9)) {
        case 0: {
            const auto value = static_cast<std::int64_t>(any() >> below(random_, 64));
            out.putInt64(value);
            return note('8', std::to_string(value));
        }
        case 1: {
            const std::uint64_t value = any() >> below(random_, 64);
            out.putUInt64(value);
            return note('9', std::to_string(value));
        }
        case 2: {
            const double value = static_cast<double>(static_cast<std::int32_t>(any())) / 64;
            out.putDouble(value);
            return note('d', number_text(value));
        }
        case 3: {
            const stdx::ustring value = units();
            out.putString(value);
            return note('s', std::string(to_utf8(value.view()).view()));
        }
        case 4: {
            stdx::string value;
            for (unsigned n = below(random_, 300); n != 0; --n)
                value.push_back(static_cast<char>(random_()));
            out.putBytes(value);
            return note('x', hex(value.view()));
        }
        case 5: {
            const Numeric value = Numeric(static_cast<long long>(any())) *
                                  Numeric(below(random_, 3)) /
                                  Numeric(below(random_, 4) == 0 ? 1000 : 1);
            out.putNumeric(value);
            return note('n', std::string(to_utf8(value.toString().view()).view()));
        }
        case 6: {
            _GUID value = {};
            if (below(random_, 3) != 0) value.Data1 = static_cast<std::uint32_t>(random_());
            out.putGuid(value);
            return note('g', std::string(to_utf8(to_string(value).view()).view()));
        }
        case 7: {
            const bool value = below(random_, 2) != 0;
            out.putBool(value);
            return note('b', value ? "1" : "0");
        }
        default:
            if (depth < 6) write(out, depth + 1);
        }
    }

    void note(char operation, const std::string& value) {
        operations += operation;
        expected += value + ';';
    }
    std::uint64_t any() { return random_() | std::uint64_t{random_()} << 32; }
    // Pairs of surrogates are whole, so that the text of the result is UTF-8.
    stdx::ustring units() {
        static constexpr std::u16string_view kPieces[] = {
            u"a", u"\"", u"\n", u"\u00FF", u"\u0416", u"\U0001F600", u"{,}", u"\\", u"some words "};
        stdx::ustring value;
        for (unsigned n = below(random_, 40); n != 0; --n) {
            if (below(random_, 4) != 0)
                value.append(kPieces[0]);
            else
                value.append(kPieces[below(random_, std::size(kPieces))]);
        }
        return value;
    }

    std::mt19937 random_;
};

class ListDamage : public ProcessTest {};

TEST_F(ListDamage, RandomTreesComeBackFromBothForms) {
    for (unsigned seed = 0; seed != 300; ++seed) {
        SCOPED_TRACE(seed);
        RandomTree tree(seed), same(seed);
        const std::u16string text = text_of([&](IListOutStream& out) { tree.write(out); });
        const std::string bytes = bytes_of([&](IListOutStream& out) { same.write(out); });
        for (const unsigned window : kWindows) {
            EXPECT_EQ(run_text(tree.operations, text, window), tree.expected);
            EXPECT_EQ(run_bytes(tree.operations, bytes, window), tree.expected);
        }
        EXPECT_EQ(run_text("{~}", text, 3), "");
        EXPECT_EQ(run_bytes("{~}", bytes, 3), "");
    }
}

// However a tree is cut or changed, it is read to some end, the same one in all windows.
TEST_F(ListDamage, CutAndChangedStreamsAreReadOrRefused) {
    unsigned refused = 0;
    for (unsigned seed = 0; seed != 12; ++seed) {
        SCOPED_TRACE(seed);
        RandomTree tree(seed), same(seed);
        const std::u16string text = text_of([&](IListOutStream& out) { tree.write(out); });
        const std::string bytes = bytes_of([&](IListOutStream& out) { same.write(out); });
        for (std::size_t size = 0; size != bytes.size(); ++size) {
            const std::string result = run_bytes(tree.operations, bytes.substr(0, size), 100);
            EXPECT_TRUE(result.ends_with(kRefused)) << size;
        }
        for (std::size_t size = 0; size != text.size(); ++size) {
            const std::string result = run_text(tree.operations, text.substr(0, size), 100);
            EXPECT_TRUE(result.ends_with(kRefused)) << size;
        }
        std::mt19937 random(seed);
        for (const std::string_view operations :
             {std::string_view(tree.operations), std::string_view("{~}"),
              std::string_view("{?}")}) {
            for (std::size_t i = 0; i != std::min<std::size_t>(bytes.size(), 400); ++i) {
                std::string changed = bytes;
                changed[i] =
                    static_cast<char>(changed[i] + 1 + static_cast<char>(below(random, 255)));
                const std::string result = run_bytes(operations, changed, 100);
                refused += result.ends_with(kRefused);
                EXPECT_EQ(result, run_bytes(operations, changed, 0));
            }
            for (std::size_t i = 0; i != std::min<std::size_t>(text.size(), 400); ++i) {
                std::u16string changed = text;
                changed[i] = u"{},\"\\0 \uFFFF"[below(random, 8)];
                const std::string result = run_text(operations, changed, 100);
                refused += result.ends_with(kRefused);
                EXPECT_EQ(result, run_text(operations, changed, 0));
            }
        }
    }
    EXPECT_GT(refused, 1000u);
}

TEST_F(ListDamage, NoiseIsReadOrRefused) {
    std::mt19937 random(1);
    constexpr std::string_view kOperations = "{},~?b12485679cfdgsxnCBDF";
    for (unsigned round = 0; round != 20'000; ++round) {
        std::string bytes, operations = "{";
        for (unsigned n = below(random, 40); n != 0; --n) bytes += static_cast<char>(random());
        for (unsigned n = below(random, 8); n != 0; --n)
            operations += kOperations[random() % kOperations.size()];
        if (!bytes.empty()) bytes[0] = static_cast<char>(0x40 | (bytes[0] & 0x1F));
        EXPECT_EQ(run_bytes(operations, bytes, 1), run_bytes(operations, bytes, 100));
    }
}

// Lists to the limit are read, by calls as well as in passing; deeper ones are refused.
TEST_F(ListDamage, DepthHasALimit) {
    const std::string limit(kMaxListDepth, '{');
    for (const std::size_t depth :
         {std::size_t{kMaxListDepth}, std::size_t{kMaxListDepth + 1}, std::size_t{1'000'000}}) {
        SCOPED_TRACE(depth);
        const std::u16string text = std::u16string(depth, u'{') + std::u16string(depth, u'}');
        const std::string bytes = std::string(depth, '\x40') + std::string(depth, '\x20');
        const std::string calls = std::string(depth, '{') + std::string(depth, '}');
        const std::string expected(depth <= kMaxListDepth ? std::string_view() : kRefused);
        for (const std::string& operations : {calls, std::string("{~}")}) {
            EXPECT_EQ(run_text(operations, text, 100), expected);
            EXPECT_EQ(run_bytes(operations, bytes, 100), expected);
        }
    }
}

// A file of many bytes of which it gives a few, as one that was cut.
TEST_F(ListDamage, MemoryIsTakenAsDataArrive) {
    using namespace std::string_literals;
    for (const std::string& bytes : {
             "\x1C\xFF\xFF\xFF\x7F\0\0\0\0short"s,         // a string of 2 GiB
             "\x1C\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFFshort"s, // and longer ones
             "\x19\xFF\xFF\xFF\x7F\0\0\0\0short"s, "\x19\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x7Fshort"s,
             "\x19\0\0\0\0\0\0\0\x80short"s, // the bytes of so many units would be none
         })
        for (const std::string_view operations : {"s", "x", "~", "?", "B", "C"})
            EXPECT_TRUE(run_bytes(operations, bytes, 100).ends_with(kRefused));
    // A chunk of a file is never longer than a chunk.
    EXPECT_EQ(run_bytes("F", "\x5C\x01\x40\0\0\0\0\0\0"s + std::string(16385, 'x') + '\x20', 100),
              kRefused);
}

} // namespace
