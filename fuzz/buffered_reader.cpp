// Whatever the text, the separator and the cuts, a buffered reader gives the lines and the text of
// the plain splitter.
//
// The first byte is the number of separator units that follow, then come eight sizes of pieces, then
// the text.
#include "../tests/streams/NaiveLines.h"

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/streams/IBufferedReader.h>
#include <core/streams/IStringBuffer.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>

namespace {

using Pieces = std::array<unsigned, 8>;

void check(bool holds) {
    if (!holds) std::abort();
}

// Gives its text in pieces.
class Source
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<Source>
    , public core::IReader {
public:
    Source(std::u16string_view text, const Pieces& pieces) : rest_(text), pieces_(pieces) {}

    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Source, core::IReader>();
    }

    unsigned read(char16_t* to, unsigned n) override {
        const std::size_t piece = pieces_[next_++ % pieces_.size()];
        const std::size_t size = std::min<std::size_t>({n, piece, rest_.size()});
        rest_.copy(to, size);
        rest_.remove_prefix(size);
        return static_cast<unsigned>(size);
    }
    // A buffered reader reads in no other way.
    char16_t get() override { std::abort(); }
    char16_t peek() override { std::abort(); }
    unsigned readUntil(char16_t, char16_t*, unsigned) override { std::abort(); }
    unsigned readTo(core::IStringBuffer*, unsigned) override { std::abort(); }
    unsigned readToUntil(char16_t, core::IStringBuffer*, unsigned) override { std::abort(); }
    unsigned skip(unsigned) override { std::abort(); }
    bool eof() override { std::abort(); }

private:
    std::u16string_view rest_;
    Pieces pieces_;
    std::size_t next_ = 0;
};

core::InterfacePtr<core::IBufferedReader>
open(std::u16string_view text, const std::u16string& separator, const Pieces& pieces) {
    auto reader = core::create_buffered_reader();
    reader->open(core::make_object<Source>(text, pieces).get(), separator.c_str());
    return reader;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::span rest(data, size);
    if (rest.size() < 9) return 0;
    const std::size_t separatorSize = rest[0] % 5;
    Pieces pieces;
    for (std::size_t i = 0; i < pieces.size(); ++i) pieces[i] = 1u + rest[i + 1] * rest[i + 1];
    rest = rest.subspan(9);
    std::u16string separator, text;
    for (const std::uint8_t byte : rest.first(std::min(separatorSize, rest.size())))
        separator.push_back(byte ? byte : u'\n'); // a separator has no zero units
    // Long enough for several blocks: the bytes are taken over and over.
    const std::size_t rounds = rest.size() > 64 ? 1 + 40'000 / rest.size() : 1;
    for (std::size_t i = 0; i < rounds; ++i) text.append(rest.begin(), rest.end());

    const test::SplitText expected = test::split(text, separator);
    const auto lines = open(text, separator, pieces);
    const auto line = core::create_std_string_buffer();
    for (const std::u16string& expectedLine : expected.lines) {
        check(!lines->eof());
        line->clear();
        check(lines->readLine(line.get()) == expectedLine.size());
        check(line->toString() == std::u16string_view(expectedLine));
    }
    check(lines->eof());

    const auto units = open(text, separator, pieces);
    for (const char16_t unit : expected.text) check(units->peek() == unit && units->get() == unit);
    check(units->eof());

    // Some by units, then all the rest at once.
    const auto mixed = open(text, separator, pieces);
    std::u16string head(pieces[0], u'\0');
    head.resize(mixed->read(head.data(), pieces[0]));
    const auto tail = core::create_string_buffer();
    mixed->readTo(tail.get(), core::kAllUnits);
    check(head + std::u16string(tail->toString().view()) == expected.text);
    return 0;
}
