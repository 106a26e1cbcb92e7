// Bytes as base64 text (RFC 4648), in the standard alphabet or the one for URLs.
//
//   stdx::ustring text = core::encode_base64(bytes, 64);      // lines of 64 characters
//   stdx::string back;
//   if (!core::decode_base64(text, back)) ...                 // broken off inside a group
//
// Text is UTF-16 or 8-bit, both with the same meaning. `Base64Encoder` and `Base64Decoder` take data
// in parts of any size; the functions are built on them. Functions may be called from any thread, an
// encoder or decoder serves one thread at a time. Text goes through the processor's vector unit, up
// to thirty-two characters at a time.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace core {

// The text of the bytes, padded with "=". A `lineLength` other than 0 puts "\r\n" behind every so
// many characters, but not at the very end. `urlAlphabet`: "-" and "_" instead of "+" and "/".
ORBCORE_API stdx::ustring encode_base64(std::string_view data, unsigned lineLength = 0,
                                        bool urlAlphabet = false);
// The same, replacing the string.
ORBCORE_API void encode_base64(std::string_view data, stdx::string& text, unsigned lineLength = 0,
                               bool urlAlphabet = false);

// In the alphabet for URLs, without line breaks; `noPadding` leaves the "=" out.
ORBCORE_API stdx::ustring encode_base64url(std::string_view data, bool noPadding = false);

// The bytes of a text. Line breaks are skipped, inside of groups too. A character of neither the
// alphabet nor a line break ends the text, and so does "=" where a group would begin; what stands
// behind is not read. False, and `data` as it was, if the text ends inside a group of four or has
// "=" where none may stand.
ORBCORE_API bool decode_base64(std::u16string_view text, stdx::string& data,
                               bool urlAlphabet = false);
ORBCORE_API bool decode_base64(std::string_view text, stdx::string& data, bool urlAlphabet = false);

// The bytes of the first `length` characters of a text in the alphabet for URLs. The last group
// may lack its padding: two characters give one byte, three give two.
ORBCORE_API bool decode_base64url(std::u16string_view text, unsigned length, stdx::string& data);
ORBCORE_API bool decode_base64url(std::string_view text, unsigned length, stdx::string& data);

// Makes text of bytes that come in parts.
class ORBCORE_API Base64Encoder {
public:
    enum class Padding { On, Off };

    explicit Base64Encoder(unsigned lineLength = 0, bool urlAlphabet = false,
                           Padding padding = Padding::On) noexcept
        : lineLength_(lineLength), urlAlphabet_(urlAlphabet), padding_(padding) {}

    // Room for what encode() of `size` bytes and finish() write together, at any time.
    std::size_t max_size(std::size_t size) const noexcept;

    // Writes the text of `size` more bytes, but for the last one or two that make no group yet;
    // returns its end.
    char16_t* encode(const void* data, std::size_t size, char16_t* to) noexcept;
    char* encode(const void* data, std::size_t size, char* to) noexcept;

    // Writes the rest and the padding; returns the end.
    char16_t* finish(char16_t* to) noexcept;
    char* finish(char* to) noexcept;

private:
    template <class Unit> Unit* put(const Unit* characters, std::size_t n, Unit* to) noexcept;
    template <class Unit> Unit* end_full_line(Unit* to) noexcept;
    template <class Unit> Unit* write(const std::uint8_t* data, std::size_t n, Unit* to) noexcept;
    template <class Unit> Unit* write_rest(Unit* to) noexcept;
    template <class Unit> Unit* take(const std::uint8_t* data, std::size_t size, Unit* to) noexcept;

    unsigned lineLength_;
    unsigned column_ = 0;       // characters in the line; a full line gets its break with the next
    std::uint8_t rest_[3] = {}; // bytes of a group that is not full
    unsigned restSize_ = 0;     // 0 to 2
    bool urlAlphabet_;
    Padding padding_;
};

// Makes bytes of text that comes in parts.
class ORBCORE_API Base64Decoder {
public:
    // Whether the last group must be full.
    enum class LastGroup { Full, MayBeCut };

    explicit Base64Decoder(bool urlAlphabet = false, LastGroup last = LastGroup::Full) noexcept
        : urlAlphabet_(urlAlphabet), last_(last) {}

    // Room for what decode() of `size` characters and finish() write together, at any time.
    static constexpr std::size_t max_size(std::size_t size) noexcept { return size / 4 * 3 + 6; }

    // Writes the bytes of all groups that are full; returns their end. What lies behind it, within
    // max_size(), may be overwritten. Reads nothing more once is_ended().
    std::uint8_t* decode(const char16_t* text, std::size_t size, std::uint8_t* to) noexcept;
    std::uint8_t* decode(const char* text, std::size_t size, std::uint8_t* to) noexcept;

    // Whether the text has ended by itself, well or badly.
    bool is_ended() const noexcept { return state_ != State::Reading; }

    // Ends the text: writes the bytes of a group that was cut short, moves `to` behind them, and
    // tells whether the text was good.
    bool finish(std::uint8_t*& to) noexcept;

private:
    enum class State { Reading, Ended, Failed };

    template <class Unit>
    std::uint8_t* read(const Unit* text, const Unit* end, std::uint8_t* to) noexcept;
    std::uint8_t* take(char16_t c, std::uint8_t* to) noexcept;
    std::uint8_t* put_group(std::uint8_t* to) noexcept;

    std::uint32_t group_ = 0; // six bits a character
    unsigned filled_ = 0;     // characters of the group, padding included: 0 to 3
    unsigned padding_ = 0;    // "=" in the group
    State state_ = State::Reading;
    bool urlAlphabet_;
    LastGroup last_;
};

} // namespace core
