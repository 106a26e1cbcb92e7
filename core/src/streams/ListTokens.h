// The tokens of the text form of lists. Readers work on a cursor, writers fill a chunk; both serve
// the free functions on bare streams as well as the list streams.
#pragma once

#include "TextCursor.h"
#include "UnitScan.h"

#include <core/component/Guid.h>
#include <core/streams/IWriter.h>
#include <core/text/Characters.h>
#include <elm/string>

#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

namespace core {

class Numeric;

// ---- Reading: false for anything that is not the token, with the cursor somewhere inside.

inline void skip_spaces(TextCursor& in) {
    while (in.more() && is_space(in.unit())) in.pass();
}

// One sign or none and digits, modulo the width of `value`, which is 32 or 64 bits.
template <class Word> bool read_integer(TextCursor& in, Word& value) {
    skip_spaces(in);
    const bool negative = in.take(u'-');
    if (!negative) in.take(u'+');
    Word digits = 0;
    bool any = false;
    while (in.more()) {
        const int d = digit(in.unit());
        if (d < 0) break;
        digits = digits * 10 + static_cast<Word>(d);
        any = true;
        in.pass();
    }
    value = negative ? Word{0} - digits : digits;
    return any;
}

bool read_bool(TextCursor& in, bool& value);
bool read_double(TextCursor& in, double& value);
bool read_guid(TextCursor& in, _GUID& value);
// White space, then a decimal as Numeric::fromString reads it; false without a digit.
bool read_numeric(TextCursor& in, Numeric& value);
bool read_string(TextCursor& in, stdx::ustring& value); // empties the string on failure
bool read_chars(TextCursor& in, char16_t* value, unsigned capacity);

// The part of a string token behind its opening quote, handed to `sink` piece by piece without
// quotes and escapes. False where the text ends inside, where an escape is none, or where the sink
// refuses.
template <class Sink> bool read_quoted(TextCursor& in, Sink sink) {
    while (in.more()) {
        const std::u16string_view rest(in.at(), in.end());
        const std::size_t run = find_unit(rest, u'"');
        if (run != 0 && !sink(rest.substr(0, run))) return false;
        in.move_to(in.at() + run);
        if (run == rest.size()) continue;
        in.pass();
        if (in.take(u'"')) {
            if (!sink(u"\"")) return false;
        } else if (in.take(u'\\')) {
            unsigned code = 0;
            for (int i = 0; i != 4; ++i) {
                if (!in.more() || !is_xdigit(in.unit())) return false;
                code = code << 4 | static_cast<unsigned>(xdigit(in.unit()));
                in.pass();
            }
            const auto unit = static_cast<char16_t>(code);
            if (!sink(std::u16string_view(&unit, 1))) return false;
        } else {
            return true;
        }
    }
    return false;
}

// ---- Writing.

// Collects the short pieces of a token, so that the writer gets one call for it.
class TextChunk {
public:
    explicit TextChunk(IWriter* writer) noexcept : writer_(writer) {}
    TextChunk(const TextChunk&) = delete;
    TextChunk& operator=(const TextChunk&) = delete;

    void put(char16_t unit) {
        if (size_ == kCapacity) flush();
        units_[size_++] = unit;
    }
    // Long pieces go to the writer from where they lie.
    void put(std::u16string_view piece) {
        if (piece.size() > kCapacity - size_) {
            flush();
            if (piece.size() > kCapacity) {
                write(piece);
                return;
            }
        }
        std::memcpy(units_ + size_, piece.data(), piece.size() * sizeof(char16_t));
        size_ += static_cast<unsigned>(piece.size());
    }
    // A number, say: never longer than the chunk.
    void put_ascii(std::string_view piece) {
        if (piece.size() > kCapacity - size_) flush();
        for (const char c : piece) units_[size_++] = static_cast<char16_t>(c);
    }
    // What is not flushed is lost.
    void flush() {
        if (size_ != 0) writer_->write(units_, std::exchange(size_, 0));
    }

private:
    static constexpr unsigned kCapacity = 64;

    void write(std::u16string_view piece) {
        constexpr std::size_t kMost = 1 << 30; // counts are of 32 bits, and one value means all
        for (; piece.size() > kMost; piece.remove_prefix(kMost))
            writer_->write(piece.data(), kMost);
        writer_->write(piece.data(), static_cast<unsigned>(piece.size()));
    }

    IWriter* writer_;
    unsigned size_ = 0;
    char16_t units_[kCapacity];
};

void put_integer(TextChunk& out, std::int64_t value);
void put_integer(TextChunk& out, std::uint64_t value);
void put_double(TextChunk& out, double value);
void put_guid(TextChunk& out, const _GUID& value);
void put_numeric(TextChunk& out, const Numeric& value);
void put_string(TextChunk& out, std::u16string_view value);

// ---- One token on a bare stream.

// Reads it by `read(cursor)` and puts the reader behind it.
template <class Read> bool read_token(IReader* reader, Read read) {
    const InterfacePtr<ITextWindow> window(reader);
    TextCursor in(reader, window.get());
    const bool done = read(in);
    in.sync();
    return done;
}

// Writes it by `put(chunk)`.
template <class Put> void write_token(IWriter* writer, Put put) {
    TextChunk out(writer);
    put(out);
    out.flush();
}

} // namespace core
