#include <core/streams/ListText.h>

#include "ListTokens.h"

#include <type_traits>

namespace core {
namespace {

template <class Word, class Integer> bool read_integer_as(IReader* reader, Integer& value) {
    Word word = 0;
    if (!read_token(reader, [&](TextCursor& in) { return read_integer(in, word); })) return false;
    value = static_cast<Integer>(static_cast<std::make_signed_t<Word>>(word));
    return true;
}

// Passes spaces and tells whether `mark` is next; passes that unit if `get`.
bool mark_is_next(IReader* reader, char16_t mark, bool get) {
    return read_token(reader, [=](TextCursor& in) {
        skip_spaces(in);
        const bool here = in.more() && in.unit() == mark;
        if (get && in.more()) in.pass();
        return here;
    });
}

} // namespace

void to_stream(IWriter* writer, bool value) {
    writer->put(value ? u'1' : u'0');
}
void to_stream(IWriter* writer, int value) {
    write_token(writer, [=](TextChunk& out) { put_integer(out, std::int64_t{value}); });
}
void to_stream(IWriter* writer, unsigned value) {
    write_token(writer, [=](TextChunk& out) { put_integer(out, std::uint64_t{value}); });
}
void to_stream(IWriter* writer, long long value) {
    write_token(writer, [=](TextChunk& out) { put_integer(out, std::int64_t{value}); });
}
void to_stream(IWriter* writer, unsigned long long value) {
    write_token(writer, [=](TextChunk& out) { put_integer(out, std::uint64_t{value}); });
}
void to_stream(IWriter* writer, double value) {
    write_token(writer, [=](TextChunk& out) { put_double(out, value); });
}
void to_stream(IWriter* writer, const stdx::ustring& value) {
    write_token(writer, [&](TextChunk& out) { put_string(out, value); });
}
void to_stream(IWriter* writer, const char16_t* value) {
    write_token(writer, [=](TextChunk& out) { put_string(out, value); });
}
void to_stream(IWriter* writer, const char16_t* value, unsigned n) {
    const std::u16string_view all(value, n);
    write_token(writer, [=](TextChunk& out) { put_string(out, all.substr(0, find_unit(all, 0))); });
}
void to_stream(IWriter* writer, const _GUID& value) {
    write_token(writer, [&](TextChunk& out) { put_guid(out, value); });
}

bool from_stream(IReader* reader, bool& value) {
    return read_token(reader, [&](TextCursor& in) { return read_bool(in, value); });
}
bool from_stream(IReader* reader, signed char& value) {
    return read_integer_as<std::uint32_t>(reader, value);
}
bool from_stream(IReader* reader, short& value) {
    return read_integer_as<std::uint32_t>(reader, value);
}
bool from_stream(IReader* reader, int& value) {
    return read_integer_as<std::uint32_t>(reader, value);
}
bool from_stream(IReader* reader, long& value) {
    return read_integer_as<std::uint32_t>(reader, value);
}
bool from_stream(IReader* reader, long long& value) {
    return read_integer_as<std::uint64_t>(reader, value);
}
bool from_stream(IReader* reader, unsigned char& value) {
    return read_integer_as<std::uint32_t>(reader, value);
}
bool from_stream(IReader* reader, unsigned short& value) {
    return read_integer_as<std::uint32_t>(reader, value);
}
bool from_stream(IReader* reader, unsigned int& value) {
    return read_integer_as<std::uint32_t>(reader, value);
}
bool from_stream(IReader* reader, unsigned long& value) {
    unsigned int word = 0;
    if (!from_stream(reader, word)) return false;
    value = word;
    return true;
}
bool from_stream(IReader* reader, unsigned long long& value) {
    return read_integer_as<std::uint64_t>(reader, value);
}
bool from_stream(IReader* reader, double& value) {
    return read_token(reader, [&](TextCursor& in) { return read_double(in, value); });
}
bool from_stream(IReader* reader, float& value) {
    double wide = 0;
    if (!from_stream(reader, wide)) return false;
    value = static_cast<float>(wide);
    return true;
}
bool from_stream(IReader* reader, stdx::ustring& value) {
    return read_token(reader, [&](TextCursor& in) { return read_string(in, value); });
}
bool from_stream(IReader* reader, char16_t* value, unsigned capacity) {
    return read_token(reader, [=](TextCursor& in) { return read_chars(in, value, capacity); });
}
bool from_stream(IReader* reader, _GUID& value) {
    return read_token(reader, [&](TextCursor& in) { return read_guid(in, value); });
}

void skip_spaces(IReader* reader) {
    read_token(reader, [](TextCursor& in) {
        skip_spaces(in);
        return true;
    });
}

void skip_and_save_spaces(IReader* reader, stdx::ustring& spaces) {
    read_token(reader, [&](TextCursor& in) {
        for (; in.more() && is_space(in.unit()); in.pass()) spaces.push_back(in.unit());
        return true;
    });
}

bool is_begin_of_list(IReader* reader) {
    return mark_is_next(reader, u'{', false);
}
bool is_end_of_list(IReader* reader) {
    return mark_is_next(reader, u'}', false);
}
bool is_comma(IReader* reader) {
    return mark_is_next(reader, u',', false);
}
bool get_begin_of_list(IReader* reader) {
    return mark_is_next(reader, u'{', true);
}
bool get_end_of_list(IReader* reader) {
    return mark_is_next(reader, u'}', true);
}
bool get_comma(IReader* reader) {
    return mark_is_next(reader, u',', true);
}

} // namespace core
