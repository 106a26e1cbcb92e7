#include <core/component/Guid.h>

namespace core {
namespace {

// Where the text form holds its parts: for each byte of the big-endian form, the index of the
// first of its two digits.
constexpr std::uint8_t kDigitOfByte[16] = {0,  2,  4,  6,  9,  11, 14, 16,
                                           19, 21, 24, 26, 28, 30, 32, 34};
constexpr std::uint8_t kDashes[] = {8, 13, 18, 23};

// The value of every hexadecimal digit, 0xff for all other characters.
constexpr auto kDigitValue = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(0xff);
    for (int i = 0; i != 10; ++i) values[static_cast<std::size_t>('0' + i)] = std::uint8_t(i);
    for (int i = 0; i != 6; ++i)
        values[static_cast<std::size_t>('a' + i)] = values[static_cast<std::size_t>('A' + i)] =
            std::uint8_t(10 + i);
    return values;
}();

template <class Char> std::uint8_t digit_value(Char c) {
    const auto code = static_cast<std::make_unsigned_t<
        std::conditional_t<std::is_same_v<Char, char16_t>, std::uint16_t, Char>>>(c);
    return code < 256 ? kDigitValue[code] : std::uint8_t(0xff);
}

template <class Char> Char* write_text(const _GUID& guid, Char* buffer) {
    char bytes[16];
    to_binary(guid, bytes);
    for (std::size_t i = 0; i != 16; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        buffer[kDigitOfByte[i]] = static_cast<Char>("0123456789abcdef"[byte >> 4]);
        buffer[kDigitOfByte[i] + 1] = static_cast<Char>("0123456789abcdef"[byte & 15]);
    }
    for (const std::uint8_t dash : kDashes) buffer[dash] = Char('-');
    buffer[kGuidTextLength] = Char(0);
    return buffer;
}

// Reads strictly from left to right, so that it never looks behind the terminator of a short text.
template <class Char> bool read_text(const Char* text, _GUID& guid) {
    guid = {};
    if (!text) return false;
    char bytes[16];
    const std::uint8_t* dash = kDashes;
    for (std::size_t i = 0; i != 16; ++i) {
        const std::uint8_t at = kDigitOfByte[i];
        if (dash != std::end(kDashes) && *dash < at && text[*dash++] != Char('-')) return false;
        const std::uint8_t high = digit_value(text[at]);
        if (high > 15) return false;
        const std::uint8_t low = digit_value(text[at + 1]);
        if (low > 15) return false;
        bytes[i] = static_cast<char>(high << 4 | low);
    }
    from_binary(bytes, guid);
    return true;
}

template <class String> bool read_string(const String& text, _GUID& guid) {
    guid = {};
    return text.size() >= kGuidTextLength && read_text(text.data(), guid);
}

} // namespace

stdx::ustring to_string(const _GUID& guid) {
    char16_t buffer[kGuidTextLength + 1];
    return {to_string(guid, buffer), static_cast<unsigned>(kGuidTextLength)};
}

stdx::string to_cstring(const _GUID& guid) {
    char buffer[kGuidTextLength + 1];
    return {to_string(guid, buffer), static_cast<unsigned>(kGuidTextLength)};
}

char16_t* to_string(const _GUID& guid, char16_t* buffer) noexcept {
    return write_text(guid, buffer);
}

char* to_string(const _GUID& guid, char* buffer) noexcept {
    return write_text(guid, buffer);
}

bool from_string(const char16_t* text, _GUID& guid) noexcept {
    return read_text(text, guid);
}

bool from_string(const char* text, _GUID& guid) noexcept {
    return read_text(text, guid);
}

bool from_string(const stdx::ustring& text, _GUID& guid) noexcept {
    return read_string(text, guid);
}

bool from_string(const stdx::string& text, _GUID& guid) noexcept {
    return read_string(text, guid);
}

void to_binary(const _GUID& guid, char* buffer) noexcept {
    const std::uint32_t data1 = __builtin_bswap32(guid.Data1);
    const std::uint16_t data2 = __builtin_bswap16(guid.Data2);
    const std::uint16_t data3 = __builtin_bswap16(guid.Data3);
    std::memcpy(buffer, &data1, 4);
    std::memcpy(buffer + 4, &data2, 2);
    std::memcpy(buffer + 6, &data3, 2);
    std::memcpy(buffer + 8, guid.Data4, 8);
}

void from_binary(const char* buffer, _GUID& guid) noexcept {
    std::memcpy(&guid, buffer, sizeof guid);
    guid.Data1 = __builtin_bswap32(guid.Data1);
    guid.Data2 = __builtin_bswap16(guid.Data2);
    guid.Data3 = __builtin_bswap16(guid.Data3);
}

void to_binary(const _GUID& guid, stdx::string& out) {
    const _GUID copy = guid;
    to_binary(copy, out._append(sizeof copy));
}

stdx::string to_binary(const _GUID& guid) {
    stdx::string bytes;
    to_binary(guid, bytes);
    return bytes;
}

void to_digits(const _GUID& guid, unsigned long long& hi, unsigned long long& lo) noexcept {
    static_assert(std::endian::native == std::endian::little);
    const auto words = std::bit_cast<std::array<unsigned long long, 2>>(guid);
    hi = words[0];
    lo = words[1];
}

} // namespace core
