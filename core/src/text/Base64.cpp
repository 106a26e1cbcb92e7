#include <core/text/Base64.h>

#include "Base64Kernels.h"

#include <algorithm>
#include <iterator>

namespace core {

namespace {

// Fewer bytes or characters are not worth the call of a vector loop.
constexpr std::size_t kVectorBytes = 12, kVectorCharacters = 16;

// The characters of `n` bytes, a multiple of three.
template <class Unit>
void encode_groups(const std::uint8_t* data, std::size_t n, Unit* to,
                   const Base64Alphabet& alphabet) noexcept {
    std::size_t i = n < kVectorBytes ? 0 : base64_kernel<Unit>().encode(data, n, to, alphabet);
    for (; i < n; i += 3) encode_group(data + i, to + i / 3 * 4, alphabet);
}

// The bytes of all groups up to the first that is not four characters of the alphabet; returns the
// characters taken.
template <class Unit>
std::size_t decode_groups(const Unit* text, std::size_t n, std::uint8_t* to,
                          const Base64Alphabet& alphabet) noexcept {
    std::size_t i = n < kVectorCharacters ? 0 : base64_kernel<Unit>().decode(text, n, to, alphabet);
    while (n - i >= 4 && decode_group(text + i, to + i / 4 * 3, alphabet)) i += 4;
    return i;
}

char16_t code(char16_t c) noexcept {
    return c;
}
char16_t code(char c) noexcept {
    return static_cast<unsigned char>(c);
}

bool is_line_break(char16_t c) noexcept {
    return c == u'\r' || c == u'\n';
}

// The bytes of a last group that is full by padding, of which there are 1 or 2; 0 if it is no such
// group.
template <class Unit>
std::size_t decode_padded_group(const Unit* text, std::uint8_t* to,
                                const Base64Alphabet& alphabet) noexcept {
    if (text[3] != Unit('=')) return 0;
    const bool two = text[2] != Unit('=');
    const auto value = [&](int i) { return alphabet.value(code(text[i])); };
    const int group = value(0) << 18 | value(1) << 12 | (two ? value(2) << 6 : 0);
    if (group < 0) return 0;
    to[0] = static_cast<std::uint8_t>(group >> 16);
    if (two) to[1] = static_cast<std::uint8_t>(group >> 8);
    return two ? 2 : 1;
}

// The characters of one or two bytes, padded.
template <class Unit>
void encode_last_group(const std::uint8_t* data, std::size_t n, Unit* to,
                       const Base64Alphabet& alphabet) noexcept {
    const std::uint8_t group[3] = {data[0], n == 2 ? data[1] : std::uint8_t{0}, 0};
    encode_group(group, to, alphabet);
    if (n == 1) to[2] = Unit('=');
    to[3] = Unit('=');
}

template <class String>
String encode(std::string_view data, bool urlAlphabet, Base64Encoder::Padding padding) {
    const Base64Alphabet& alphabet = kBase64Alphabets[urlAlphabet];
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(data.data());
    const std::size_t rest = data.size() % 3, whole = data.size() - rest;
    String text;
    text._resize_nofill(elm::checked_size(whole / 3 * 4 + (rest == 0 ? 0 : 4)));
    auto* const to = text.data();
    encode_groups(bytes, whole, to, alphabet);
    if (rest == 0) return text;
    encode_last_group(bytes + whole, rest, to + whole / 3 * 4, alphabet);
    if (padding == Base64Encoder::Padding::Off)
        text._resize_nofill(text.size() - static_cast<unsigned>(3 - rest));
    return text;
}

template <class String>
String encode_lines(std::string_view data, unsigned lineLength, bool urlAlphabet) {
    Base64Encoder encoder(lineLength, urlAlphabet);
    String text;
    text._resize_nofill(elm::checked_size(encoder.max_size(data.size())));
    auto* const begin = text.data();
    auto* const end = encoder.finish(encoder.encode(data.data(), data.size(), begin));
    text._resize_nofill(static_cast<unsigned>(end - begin));
    return text;
}

template <class Unit>
bool decode(std::basic_string_view<Unit> text, stdx::string& data, bool urlAlphabet,
            Base64Decoder::LastGroup last = Base64Decoder::LastGroup::Full) {
    const Base64Alphabet& alphabet = kBase64Alphabets[urlAlphabet];
    stdx::string bytes;
    // Less than max_size(): there is nothing from before, and a cut group gives two bytes at most.
    bytes._resize_nofill(elm::checked_size(text.size() / 4 * 3 + 2));
    auto* const begin = reinterpret_cast<std::uint8_t*>(bytes.data());
    const std::size_t whole = decode_groups(text.data(), text.size(), begin, alphabet);
    std::uint8_t* end = begin + whole / 4 * 3;
    text.remove_prefix(whole);
    const std::size_t padded =
        text.size() == 4 ? decode_padded_group(text.data(), end, alphabet) : 0;
    end += padded;
    if (!text.empty() && padded == 0) { // something but whole groups
        Base64Decoder decoder(urlAlphabet, last);
        end = decoder.decode(text.data(), text.size(), end);
        if (!decoder.finish(end)) return false;
    }
    bytes._resize_nofill(static_cast<unsigned>(end - begin));
    data.swap(bytes);
    return true;
}

} // namespace

std::size_t Base64Encoder::max_size(std::size_t size) const noexcept {
    const std::size_t characters = (size + restSize_ + 2) / 3 * 4;
    // As many breaks as characters of these begin a line that is not the first.
    const std::size_t breaks = lineLength_ == 0 ? 0 : (characters + column_) / lineLength_;
    return characters + 2 * breaks;
}

// A break is written with the first character behind it, so that none stands at the end.
template <class Unit> Unit* Base64Encoder::end_full_line(Unit* to) noexcept {
    if (lineLength_ == 0 || column_ != lineLength_) return to;
    column_ = 0;
    *to++ = Unit('\r');
    *to++ = Unit('\n');
    return to;
}

template <class Unit>
Unit* Base64Encoder::put(const Unit* characters, std::size_t n, Unit* to) noexcept {
    for (; n != 0; --n) {
        to = end_full_line(to);
        *to++ = *characters++;
        if (lineLength_ != 0) ++column_;
    }
    return to;
}

// `n` is a multiple of three.
template <class Unit>
Unit* Base64Encoder::write(const std::uint8_t* data, std::size_t n, Unit* to) noexcept {
    const Base64Alphabet& alphabet = kBase64Alphabets[urlAlphabet_];
    if (lineLength_ == 0) {
        encode_groups(data, n, to, alphabet);
        return to + n / 3 * 4;
    }
    while (n != 0) {
        to = end_full_line(to);
        std::size_t groups = std::min<std::size_t>(n / 3, (lineLength_ - column_) / 4);
        if (groups != 0) {
            encode_groups(data, groups * 3, to, alphabet);
            to += groups * 4;
            column_ += static_cast<unsigned>(groups * 4);
        } else { // lines share the group
            groups = 1;
            Unit group[4];
            encode_group(data, group, alphabet);
            to = put(group, 4, to);
        }
        data += groups * 3;
        n -= groups * 3;
    }
    return to;
}

template <class Unit> Unit* Base64Encoder::write_rest(Unit* to) noexcept {
    if (restSize_ == 0) return to;
    Unit group[4];
    encode_last_group(rest_, restSize_, group, kBase64Alphabets[urlAlphabet_]);
    const std::size_t n = padding_ == Padding::On ? 4 : restSize_ + 1;
    restSize_ = 0;
    return put(group, n, to);
}

template <class Unit>
Unit* Base64Encoder::take(const std::uint8_t* data, std::size_t size, Unit* to) noexcept {
    while (restSize_ != 0 && size != 0) {
        rest_[restSize_++] = *data++;
        --size;
        if (restSize_ < 3) continue;
        to = write(rest_, 3, to);
        restSize_ = 0;
    }
    const std::size_t whole = size / 3 * 3;
    to = write(data, whole, to);
    for (std::size_t i = whole; i < size; ++i) rest_[restSize_++] = data[i];
    return to;
}

char16_t* Base64Encoder::encode(const void* data, std::size_t size, char16_t* to) noexcept {
    return take(static_cast<const std::uint8_t*>(data), size, to);
}
char* Base64Encoder::encode(const void* data, std::size_t size, char* to) noexcept {
    return take(static_cast<const std::uint8_t*>(data), size, to);
}

char16_t* Base64Encoder::finish(char16_t* to) noexcept {
    return write_rest(to);
}
char* Base64Encoder::finish(char* to) noexcept {
    return write_rest(to);
}

template <class Unit>
std::uint8_t* Base64Decoder::read(const Unit* text, const Unit* end, std::uint8_t* to) noexcept {
    const Base64Alphabet& alphabet = kBase64Alphabets[urlAlphabet_];
    while (text != end && state_ == State::Reading) {
        if (filled_ == 0 && !is_line_break(code(*text))) {
            const auto n = decode_groups(text, static_cast<std::size_t>(end - text), to, alphabet);
            text += n;
            to += n / 4 * 3;
            if (text == end) break;
            const std::size_t padded =
                end - text >= 4 ? decode_padded_group(text, to, alphabet) : 0;
            if (padded != 0) {
                text += 4;
                to += padded;
                continue;
            }
        }
        to = take(code(*text++), to);
    }
    return to;
}

std::uint8_t* Base64Decoder::decode(const char16_t* text, std::size_t size,
                                    std::uint8_t* to) noexcept {
    return read(text, text + size, to);
}
std::uint8_t* Base64Decoder::decode(const char* text, std::size_t size, std::uint8_t* to) noexcept {
    return read(text, text + size, to);
}

// One character, where a group has a line break, padding or an end in it.
std::uint8_t* Base64Decoder::take(char16_t c, std::uint8_t* to) noexcept {
    if (is_line_break(c)) return to;
    const int value = kBase64Alphabets[urlAlphabet_].value(c);
    const bool isPadding = c == u'=';
    if (isPadding ? filled_ == 0 : value < 0) {
        state_ = State::Ended;
    } else if (isPadding ? filled_ == 1 : padding_ != 0) {
        state_ = State::Failed;
    } else {
        padding_ += isPadding;
        group_ = group_ << 6 | static_cast<unsigned>(isPadding ? 0 : value);
        if (++filled_ == 4) return put_group(to);
    }
    return to;
}

std::uint8_t* Base64Decoder::put_group(std::uint8_t* to) noexcept {
    for (unsigned i = 0; i < 3 - padding_; ++i)
        *to++ = static_cast<std::uint8_t>(group_ >> (16 - 8 * i));
    group_ = filled_ = padding_ = 0;
    return to;
}

bool Base64Decoder::finish(std::uint8_t*& to) noexcept {
    if (state_ == State::Failed) return false;
    if (filled_ == 0) return true;
    if (last_ == LastGroup::Full || padding_ != 0 || filled_ == 1) return false;
    padding_ = 4 - filled_;
    group_ <<= 6 * padding_;
    to = put_group(to);
    return true;
}

stdx::ustring encode_base64(std::string_view data, unsigned lineLength, bool urlAlphabet) {
    return lineLength == 0 ? encode<stdx::ustring>(data, urlAlphabet, Base64Encoder::Padding::On)
                           : encode_lines<stdx::ustring>(data, lineLength, urlAlphabet);
}

void encode_base64(std::string_view data, stdx::string& text, unsigned lineLength,
                   bool urlAlphabet) {
    text = lineLength == 0 ? encode<stdx::string>(data, urlAlphabet, Base64Encoder::Padding::On)
                           : encode_lines<stdx::string>(data, lineLength, urlAlphabet);
}

stdx::ustring encode_base64url(std::string_view data, bool noPadding) {
    using Padding = Base64Encoder::Padding;
    return encode<stdx::ustring>(data, true, noPadding ? Padding::Off : Padding::On);
}

bool decode_base64(std::u16string_view text, stdx::string& data, bool urlAlphabet) {
    return decode(text, data, urlAlphabet);
}
bool decode_base64(std::string_view text, stdx::string& data, bool urlAlphabet) {
    return decode(text, data, urlAlphabet);
}

bool decode_base64url(std::u16string_view text, unsigned length, stdx::string& data) {
    return decode(text.substr(0, length), data, true, Base64Decoder::LastGroup::MayBeCut);
}
bool decode_base64url(std::string_view text, unsigned length, stdx::string& data) {
    return decode(text.substr(0, length), data, true, Base64Decoder::LastGroup::MayBeCut);
}

} // namespace core
