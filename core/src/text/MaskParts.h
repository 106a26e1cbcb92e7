// What finds a stretch of a mask between two `%`. Texts are represented already: characters that
// count as equal are equal.
#pragma once

#include "MaskSyntax.h"

#include <cstdint>

namespace core {

class BasicMaskPart {
public:
    virtual ~BasicMaskPart() = default;

    // The first place in the text where the whole stretch fits, or `end`.
    virtual const char16_t* find(const char16_t* begin, const char16_t* end) = 0;
    virtual std::size_t length() const noexcept = 0;
};

// A stretch of literals: the vector search of the strings.
class NoSetsMaskPart final : public BasicMaskPart {
public:
    // A part of the mask's own symbols.
    explicit NoSetsMaskPart(std::u16string_view stretch) noexcept : stretch_(stretch) {}

    const char16_t* find(const char16_t* begin, const char16_t* end) override;
    std::size_t length() const noexcept override { return stretch_.size(); }

private:
    std::u16string_view stretch_;
};

// A stretch with sets. Each character of the text has one bit for each position that it fits,
// worked out when it is first met. The search carries the bits of all prefixes of the stretch that
// end at the character before, so it never looks back, whatever fits where.
//
// This one is for stretches whose bits are a word with one to spare.
class SetsMaskPart final : public BasicMaskPart {
public:
    static constexpr std::size_t kLongest = 63;

    SetsMaskPart(const MaskPositions& mask, std::size_t begin, std::size_t end) noexcept
        : mask_(mask), begin_(begin), length_(end - begin) {}

    const char16_t* find(const char16_t* begin, const char16_t* end) override;
    std::size_t length() const noexcept override { return length_; }

private:
    using Bits = std::uint64_t;
    static constexpr Bits kKnown = Bits{1} << kLongest;

    Bits learn(char16_t c) const;

    const MaskPositions& mask_;
    std::size_t begin_; // in the mask
    std::size_t length_;
    CharacterTable<Bits> fits_; // with kKnown, or 0 for a character that was not met yet
};

// The same for stretches of any length.
class LongSetsMaskPart final : public BasicMaskPart {
public:
    LongSetsMaskPart(const MaskPositions& mask, std::size_t begin, std::size_t end);

    const char16_t* find(const char16_t* begin, const char16_t* end) override;
    std::size_t length() const noexcept override { return length_; }

private:
    using Bits = std::uint64_t;
    static constexpr std::size_t kBits = 64;

    // `words_` words, valid until the next call.
    const Bits* fits(char16_t c);

    const MaskPositions& mask_;
    std::size_t begin_; // in the mask
    std::size_t length_;
    std::size_t words_;                   // for one bit a position
    Bits lastBit_;                        // of the last position, in the last word
    CharacterTable<std::uint32_t> known_; // number from 1 of the character's bits in `fits_`, or 0
    std::vector<Bits> fits_;
    std::vector<Bits> prefixes_;
};

} // namespace core
