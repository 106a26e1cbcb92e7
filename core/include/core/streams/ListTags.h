// The tag bytes of the binary form of lists, for programs that look at lists without knowing what they
// hold: a type in the low five bits, marks above it. The marks of one byte apply in the order end,
// comma, begin, then the item. docs/formats/lists.md tells the rest.
#pragma once

#include <cstdint>
#include <initializer_list>

namespace core::list_tag {

inline constexpr std::uint8_t kTypeMask = 0x1F;
inline constexpr std::uint8_t kEnd = 0x20;
inline constexpr std::uint8_t kBegin = 0x40;
inline constexpr std::uint8_t kComma = 0x80;

// Types 1 to 10 are the values 0 to 9; 1 is also false, an empty string, blob or GUID, 2 is true.
inline constexpr std::uint8_t kZero = 1;
inline constexpr std::uint8_t kTrue = 2;
inline constexpr std::uint8_t kNine = 10;
inline constexpr std::uint8_t kUInt8 = 11;     // also a string or blob of one byte
inline constexpr std::uint8_t kNegative8 = 12; // the magnitude follows
inline constexpr std::uint8_t kUInt16 = 13;
inline constexpr std::uint8_t kNegative16 = 14;
inline constexpr std::uint8_t kUInt32 = 15;
inline constexpr std::uint8_t kNegative32 = 16;
inline constexpr std::uint8_t kUInt64 = 17;
inline constexpr std::uint8_t kNegative64 = 18;
inline constexpr std::uint8_t kFloat = 19;
inline constexpr std::uint8_t kDouble = 20;
inline constexpr std::uint8_t kGuid = 21;
inline constexpr std::uint8_t kNumeric = 22; // a blob with the decimal text follows
inline constexpr std::uint8_t kUnits8 = 23;  // UTF-16, behind a count of 8, 16 or 64 bits
inline constexpr std::uint8_t kUnits16 = 24;
inline constexpr std::uint8_t kUnits64 = 25;
inline constexpr std::uint8_t kBytes8 = 26; // bytes, or units below 256
inline constexpr std::uint8_t kBytes16 = 27;
inline constexpr std::uint8_t kBytes64 = 28;

// Of types 11 to 18: how many bytes follow.
constexpr unsigned width_of_integer(std::uint8_t type) noexcept {
    return 1u << ((type - kUInt8) / 2);
}
constexpr bool is_negative_integer(std::uint8_t type) noexcept {
    return type >= kNegative8 && type <= kNegative64 && (type - kNegative8) % 2 == 0;
}
// The mark of a tag byte that applies first or, behind the marks, its type.
constexpr std::uint8_t first_of(std::uint8_t byte) noexcept {
    for (const std::uint8_t mark : {kEnd, kComma, kBegin})
        if ((byte & mark) != 0) return mark;
    return byte;
}

// A file is a list of blobs of this size, the last one shorter.
inline constexpr unsigned kFileChunk = 16384;

} // namespace core::list_tag
