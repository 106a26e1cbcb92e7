#include <core/text/Hex.h>

#include <core/text/Characters.h>

#include <array>
#include <cstring>

namespace core {

namespace {

using HexPair = std::array<char16_t, 2>;

constexpr auto kHexPairs = [] {
    std::array<HexPair, 256> pairs{};
    for (unsigned byte = 0; byte < 256; ++byte)
        pairs[byte] = {for_xdigit(byte >> 4), for_xdigit(byte & 15)};
    return pairs;
}();

// The values of the digits; -1 for all other units below 256.
constexpr auto kNibbles = [] {
    std::array<std::int8_t, 256> nibbles{};
    for (unsigned c = 0; c < 256; ++c)
        nibbles[c] = static_cast<std::int8_t>(xdigit(static_cast<char>(c)));
    return nibbles;
}();

int nibble(char16_t c) noexcept {
    return c < kNibbles.size() ? kNibbles[c] : -1;
}

using CrcTable = std::array<std::uint32_t, 256>;

constexpr CrcTable kCrc = [] {
    CrcTable table{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        table[i] = i;
        for (int bit = 0; bit < 8; ++bit)
            table[i] = (table[i] >> 1) ^ ((table[i] & 1) * 0xEDB88320);
    }
    return table;
}();

constexpr std::uint32_t crc_step(std::uint32_t crc, std::uint32_t byte) noexcept {
    return ((crc << 8) | byte) ^ kCrc[crc >> 24];
}

// The step is linear over xor, so four of them are the four bytes xor what four zero bytes make of
// each byte of the sum: kCrcWord[i] is that for byte i.
constexpr auto kCrcWord = [] {
    std::array<CrcTable, 4> tables{};
    for (unsigned i = 0; i < 4; ++i) {
        for (std::uint32_t byte = 0; byte < 256; ++byte) {
            std::uint32_t crc = byte << (8 * i);
            for (int step = 0; step < 4; ++step) crc = crc_step(crc, 0);
            tables[i][byte] = crc;
        }
    }
    return tables;
}();

constexpr std::uint32_t crc_word(std::uint32_t crc, std::uint32_t word) noexcept {
    return word ^ kCrcWord[0][crc & 0xFF] ^ kCrcWord[1][(crc >> 8) & 0xFF] ^
           kCrcWord[2][(crc >> 16) & 0xFF] ^ kCrcWord[3][crc >> 24];
}

} // namespace

std::u16string_view bin_hex(std::uint8_t byte) noexcept {
    return {kHexPairs[byte].data(), kHexPairs[byte].size()};
}

void bin_hex(std::uint8_t byte, stdx::ustring& to) {
    to.append(bin_hex(byte));
}

void bin_hex(const void* data, std::size_t size, stdx::ustring& to) {
    const auto* const bytes = static_cast<const std::uint8_t*>(data);
    char16_t* at = to._append(elm::checked_size(size * 2));
    for (std::size_t i = 0; i < size; ++i)
        for (const char16_t digit : kHexPairs[bytes[i]]) *at++ = digit;
}

stdx::ustring bin_hex(std::string_view data) {
    stdx::ustring text;
    bin_hex(data, text);
    return text;
}

int hex_bin(const char16_t* digits) noexcept {
    const int high = nibble(digits[0]);
    if (high < 0) return -1;
    const int low = nibble(digits[1]);
    return low < 0 ? -1 : high * 16 + low;
}

bool hex_bin(const char16_t* text, std::size_t length, stdx::string& data) {
    if (length % 2 != 0) return false;
    stdx::string bytes;
    bytes._resize_nofill(elm::checked_size(length / 2));
    for (char& byte : bytes) {
        const int value = hex_bin(text);
        if (value < 0) return false;
        byte = static_cast<char>(value);
        text += 2;
    }
    data.swap(bytes);
    return true;
}

std::uint32_t get_crc_32(const char* data, int size, unsigned long seed, bool finish) noexcept {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(data);
    auto crc = static_cast<std::uint32_t>(seed);
    for (; size >= 4; size -= 4, bytes += 4) {
        std::uint32_t word;
        std::memcpy(&word, bytes, sizeof word);
        crc = crc_word(crc, __builtin_bswap32(word));
    }
    for (; size > 0; --size) crc = crc_step(crc, *bytes++);
    return finish ? crc_word(crc, 0) : crc;
}

} // namespace core
