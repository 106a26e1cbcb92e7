#include "TextListInStream.h"

#include "Base64Streams.h"
#include "ListTokens.h"

#include <core/streams/IFile.h>
#include <core/streams/ListStreamException.h>
#include <core/streams/StreamFunctions.h>

namespace core {
namespace {

void check(bool good) {
    if (!good) [[unlikely]]
        throw ListStreamException();
}

bool take_mark(TextCursor& in, char16_t mark) {
    if (in.take(mark)) [[likely]]
        return true;
    skip_spaces(in);
    return in.take(mark);
}

// ---- What is passed over; `seen` gets all of it.

struct Unseen {
    void operator()(std::u16string_view) const noexcept {}
};

std::size_t find_quote(std::u16string_view text) noexcept {
    return find_unit(text, u'"');
}

std::size_t find_end_of_item(std::u16string_view text) noexcept {
    std::size_t i = 0;
    for (; i + 8 <= text.size(); i += 8) {
        const __m128i block = load_block(text.data() + i);
        const __m128i marks = _mm_or_si128(_mm_cmpeq_epi16(block, _mm_set1_epi16(u',')),
                                           _mm_cmpeq_epi16(block, _mm_set1_epi16(u'}')));
        if (const auto bits = static_cast<unsigned>(_mm_movemask_epi8(marks)))
            return i + static_cast<std::size_t>(std::countr_zero(bits)) / 2;
    }
    while (i < text.size() && text[i] != u',' && text[i] != u'}') ++i;
    return i;
}

// Passes the units to the place that `find` gives, or to the end of the stream.
template <class Find, class Seen> void pass_until(TextCursor& in, Find find, Seen& seen) {
    while (in.more()) {
        const std::u16string_view rest(in.at(), in.end());
        const std::size_t n = find(rest);
        seen(rest.substr(0, n));
        in.move_to(in.at() + n);
        if (n != rest.size()) return;
    }
}

template <class Seen> void pass_one(TextCursor& in, Seen& seen) {
    seen(std::u16string_view(in.at(), 1));
    in.pass();
}

template <class Seen> void pass_spaces(TextCursor& in, Seen& seen) {
    while (in.more() && is_space(in.unit())) pass_one(in, seen);
}

template <class Seen> bool pass_comma(TextCursor& in, Seen& seen) {
    pass_spaces(in, seen);
    if (!in.more() || in.unit() != u',') return false;
    pass_one(in, seen);
    return true;
}

// A string, which may also end with the stream. False for an escape that is none.
template <class Seen> bool pass_string(TextCursor& in, Seen& seen) {
    pass_one(in, seen);
    for (;;) {
        pass_until(in, find_quote, seen);
        if (!in.more()) return true;
        pass_one(in, seen);
        if (!in.more() || (in.unit() != u'"' && in.unit() != u'\\')) return true;
        const int digits = in.unit() == u'\\' ? 4 : 0;
        pass_one(in, seen);
        for (int i = 0; i != digits; ++i) {
            if (!in.more()) return true;
            if (!is_xdigit(in.unit())) return false;
            pass_one(in, seen);
        }
    }
}

} // namespace

const InterfaceEntry* TextListInStream::_GetEntries() {
    return interface_map<TextListInStream, IListInStream, ITextListInStreamInit>();
}

// The window is an interface of the reader and lives as long.
ITextWindow* TextListInStream::window_of(IReader* reader) {
    return InterfacePtr<ITextWindow>(reader).get();
}

void TextListInStream::init(IReader* reader) {
    if (reader == reader_) in_.sync();
    reader_ = reader;
    in_ = TextCursor(reader, window_of(reader));
    depth_ = 0;
    needComma_ = false;
}

template <class Read> void TextListInStream::get_item(Read read) {
    check((!needComma_ || take_mark(in_, u',')) && read(in_));
    needComma_ = true;
    end_item();
}

// Outside of lists others may use the reader.
inline void TextListInStream::end_item() {
    if (depth_ == 0) in_.sync();
}

// For items that read themselves: nothing but the comma is passed.
void TextListInStream::begin_bare_item() {
    get_item([](TextCursor&) { return true; });
    in_.sync();
}

// ---- Lists.

bool TextListInStream::nextInList() {
    const bool comma = take_mark(in_, u',');
    if (comma) needComma_ = false;
    end_item();
    return comma;
}

void TextListInStream::beginList() {
    get_item([](TextCursor& in) { return take_mark(in, u'{'); });
    check(++depth_ <= kMaxListDepth);
    needComma_ = false;
}

void TextListInStream::endList() {
    check(take_mark(in_, u'}'));
    if (depth_ != 0) --depth_;
    needComma_ = true;
    end_item();
}

// Lists within the list are passed in one loop: `open` counts those that the loop is in.
template <class Seen> void TextListInStream::pass_items(Seen seen) {
    if (needComma_ && !pass_comma(in_, seen)) return;
    needComma_ = false;
    for (unsigned open = 0;;) {
        pass_spaces(in_, seen);
        if (in_.take(u'{')) {
            check(depth_ + ++open <= kMaxListDepth);
            continue;
        }
        if (in_.more() && in_.unit() == u'"')
            check(pass_string(in_, seen));
        else
            pass_until(in_, find_end_of_item, seen);
        for (; !pass_comma(in_, seen); --open) {
            if (open == 0) return;
            check(in_.take(u'}'));
        }
    }
}

void TextListInStream::skipList() {
    pass_items(Unseen());
    end_item();
}

void TextListInStream::readListText(stdx::ustring& text) {
    pass_items([&text](std::u16string_view piece) { text.append(piece); });
    end_item();
}

// ---- Items.

template <class Word, class Integer> void TextListInStream::get_integer(Integer& value) {
    Word word = 0;
    get_item([&](TextCursor& in) { return read_integer(in, word); });
    value = static_cast<Integer>(word);
}

void TextListInStream::getBool(bool& value) {
    get_item([&](TextCursor& in) { return read_bool(in, value); });
}
void TextListInStream::getInt8(std::int8_t& value) {
    get_integer<std::uint32_t>(value);
}
void TextListInStream::getInt16(std::int16_t& value) {
    get_integer<std::uint32_t>(value);
}
void TextListInStream::getInt32(std::int32_t& value) {
    get_integer<std::uint32_t>(value);
}
void TextListInStream::getInt64(std::int64_t& value) {
    get_integer<std::uint64_t>(value);
}
void TextListInStream::getUInt8(std::uint8_t& value) {
    get_integer<std::uint32_t>(value);
}
void TextListInStream::getUInt16(std::uint16_t& value) {
    get_integer<std::uint32_t>(value);
}
void TextListInStream::getUInt32(std::uint32_t& value) {
    get_integer<std::uint32_t>(value);
}
void TextListInStream::getUInt64(std::uint64_t& value) {
    get_integer<std::uint64_t>(value);
}
void TextListInStream::getChar(char16_t& value) {
    get_integer<std::uint32_t>(value);
}

void TextListInStream::getDouble(double& value) {
    get_item([&](TextCursor& in) { return read_double(in, value); });
}
void TextListInStream::getFloat(float& value) {
    double wide = 0;
    getDouble(wide);
    value = static_cast<float>(wide);
}
void TextListInStream::getGuid(_GUID& value) {
    get_item([&](TextCursor& in) { return read_guid(in, value); });
}
void TextListInStream::getString(stdx::ustring& value) {
    get_item([&](TextCursor& in) { return read_string(in, value); });
}
void TextListInStream::getChars(char16_t* value, unsigned capacity) {
    get_item([=](TextCursor& in) { return read_chars(in, value, capacity); });
}
void TextListInStream::getNumeric(Numeric& value) {
    get_item([&](TextCursor& in) { return read_numeric(in, value); });
}

void TextListInStream::getBinary(void* data, unsigned n) {
    begin_bare_item();
    check(decode_base64(reader_, data, n));
}
void TextListInStream::getBytes(stdx::string& data) {
    begin_bare_item();
    check(decode_base64(reader_, data));
}
void TextListInStream::getFile(IFile* file) {
    begin_bare_item();
    check(read_base64(*reader_, false, [file](const std::uint8_t* data, std::size_t n) {
        file->write(data, static_cast<unsigned>(n));
        return true;
    }));
}
void TextListInStream::getObject(IListStreamObject& object) {
    begin_bare_item();
    check(object.fromStream(reader_));
}

} // namespace core
