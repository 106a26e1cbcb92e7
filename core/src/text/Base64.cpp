#include <core/text/Base64.h>

#include "Base64Kernels.h"

#include <algorithm>
#include <iterator>

namespace core {

namespace {

// Characters are made in blocks of this size, then put into lines.
constexpr std::size_t kBlock = 1024;
constexpr std::size_t kBlockBytes = kBlock / 4 * 3;

// The characters of `n` bytes, a multiple of three.
void encode_groups(const std::uint8_t* data, std::size_t n, char* to,
                   const Base64Alphabet& alphabet) noexcept {
    for (std::size_t i = base64_kernel().encode(data, n, to, alphabet); i < n; i += 3)
        encode_group(data + i, to + i / 3 * 4, alphabet);
}

// The bytes of all groups up to the first that is not four characters of the alphabet; returns the
// characters taken.
std::size_t decode_groups(const char16_t* text, std::size_t n, std::uint8_t* to,
                          const Base64Alphabet& alphabet) noexcept {
    std::size_t i = base64_kernel().decode(text, n, to, alphabet);
    while (n - i >= 4 && decode_group(text + i, to + i / 4 * 3, alphabet)) i += 4;
    return i;
}

stdx::ustring encode(std::string_view data, Base64Encoder encoder) {
    stdx::ustring text;
    text._resize_nofill(elm::checked_size(encoder.max_size(data.size())));
    char16_t* const begin = text.data();
    char16_t* const end = encoder.finish(encoder.encode(data.data(), data.size(), begin));
    text._resize_nofill(static_cast<unsigned>(end - begin));
    return text;
}

bool decode(std::u16string_view text, stdx::string& data, Base64Decoder decoder) {
    stdx::string bytes;
    bytes._resize_nofill(elm::checked_size(Base64Decoder::max_size(text.size())));
    auto* const begin = reinterpret_cast<std::uint8_t*>(bytes.data());
    std::uint8_t* end = decoder.decode(text.data(), text.size(), begin);
    if (!decoder.finish(end)) return false;
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

char16_t* Base64Encoder::put(const char* characters, std::size_t n, char16_t* to) noexcept {
    if (lineLength_ == 0) return std::copy_n(characters, n, to);
    while (n != 0) {
        if (column_ == lineLength_) {
            *to++ = u'\r';
            *to++ = u'\n';
            column_ = 0;
        }
        const std::size_t fits = std::min<std::size_t>(n, lineLength_ - column_);
        to = std::copy_n(characters, fits, to);
        characters += fits;
        n -= fits;
        column_ += static_cast<unsigned>(fits);
    }
    return to;
}

char16_t* Base64Encoder::encode(const void* data, std::size_t size, char16_t* to) noexcept {
    const Base64Alphabet& alphabet = kBase64Alphabets[urlAlphabet_];
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    char block[kBlock];
    while (restSize_ != 0 && size != 0) {
        rest_[restSize_++] = *bytes++;
        --size;
        if (restSize_ < 3) continue;
        encode_group(rest_, block, alphabet);
        to = put(block, 4, to);
        restSize_ = 0;
    }
    while (size >= 3) {
        const std::size_t n = std::min(size / 3 * 3, kBlockBytes);
        encode_groups(bytes, n, block, alphabet);
        to = put(block, n / 3 * 4, to);
        bytes += n;
        size -= n;
    }
    for (; size != 0; --size) rest_[restSize_++] = *bytes++;
    return to;
}

char16_t* Base64Encoder::finish(char16_t* to) noexcept {
    if (restSize_ == 0) return to;
    std::fill(rest_ + restSize_, std::end(rest_), std::uint8_t{0});
    char group[4];
    encode_group(rest_, group, kBase64Alphabets[urlAlphabet_]);
    std::fill(group + restSize_ + 1, std::end(group), '=');
    const std::size_t n = padding_ == Padding::On ? 4 : restSize_ + 1;
    restSize_ = 0;
    return put(group, n, to);
}

std::uint8_t* Base64Decoder::decode(const char16_t* text, std::size_t size,
                                    std::uint8_t* to) noexcept {
    const Base64Alphabet& alphabet = kBase64Alphabets[urlAlphabet_];
    const char16_t* const end = text + size;
    while (text != end && state_ == State::Reading) {
        if (filled_ == 0) {
            const auto n = decode_groups(text, static_cast<std::size_t>(end - text), to, alphabet);
            text += n;
            to += n / 4 * 3;
            if (text == end) break;
        }
        to = take(*text++, to);
    }
    return to;
}

// One character, where a group has a line break, padding or an end in it.
std::uint8_t* Base64Decoder::take(char16_t c, std::uint8_t* to) noexcept {
    if (c == u'\r' || c == u'\n') return to;
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
    return encode(data, Base64Encoder(lineLength, urlAlphabet));
}

stdx::ustring encode_base64url(std::string_view data, bool noPadding) {
    using Padding = Base64Encoder::Padding;
    return encode(data, Base64Encoder(0, true, noPadding ? Padding::Off : Padding::On));
}

bool decode_base64(std::u16string_view text, stdx::string& data, bool urlAlphabet) {
    return decode(text, data, Base64Decoder(urlAlphabet));
}

bool decode_base64url(std::u16string_view text, unsigned length, stdx::string& data) {
    return decode(text.substr(0, length), data,
                  Base64Decoder(true, Base64Decoder::LastGroup::MayBeCut));
}

} // namespace core
