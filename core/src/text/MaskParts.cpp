#include "MaskParts.h"

#include <elm/StringSearch.h>

namespace core {
namespace {

// What a part remembers about characters before it starts anew, in words: a long stretch and a text
// of many alphabets would take a gigabyte.
constexpr std::size_t kMostRemembered = 1 << 20;

} // namespace

const char16_t* NoSetsMaskPart::find(const char16_t* begin, const char16_t* end) {
    const char16_t* const found = elm::findstr<char16_t, std::char_traits>(
        begin, static_cast<std::size_t>(end - begin), stretch_.data(), stretch_.size());
    return found ? found : end;
}

SetsMaskPart::Bits SetsMaskPart::learn(char16_t c) const {
    Bits bits = kKnown;
    for (std::size_t i = 0; i < length_; ++i)
        if (mask_.matches(begin_ + i, c)) bits |= Bits{1} << i;
    return bits;
}

const char16_t* SetsMaskPart::find(const char16_t* begin, const char16_t* end) {
    const Bits last = Bits{1} << (length_ - 1);
    Bits prefixes = 0;
    for (const char16_t* at = begin; at != end; ++at) {
        Bits& fit = fits_[*at];
        if (fit == 0) fit = learn(*at);
        prefixes = (prefixes << 1 | 1) & fit;
        if (prefixes & last) return at + 1 - length_;
    }
    return end;
}

LongSetsMaskPart::LongSetsMaskPart(const MaskPositions& mask, std::size_t begin, std::size_t end)
    : mask_(mask),
      begin_(begin),
      length_(end - begin),
      words_((length_ + kBits - 1) / kBits),
      lastBit_(Bits{1} << ((length_ - 1) % kBits)) {}

const LongSetsMaskPart::Bits* LongSetsMaskPart::fits(char16_t c) {
    if (const std::uint32_t number = known_[c]) return &fits_[(number - 1) * words_];

    if (fits_.size() + words_ > kMostRemembered && !fits_.empty()) {
        known_ = {};
        fits_.clear();
    }
    const std::size_t start = fits_.size();
    fits_.resize(start + words_);
    for (std::size_t i = 0; i < length_; ++i)
        if (mask_.matches(begin_ + i, c)) fits_[start + i / kBits] |= Bits{1} << (i % kBits);
    known_[c] = static_cast<std::uint32_t>(start / words_ + 1);
    return &fits_[start];
}

const char16_t* LongSetsMaskPart::find(const char16_t* begin, const char16_t* end) {
    prefixes_.assign(words_, 0);
    for (const char16_t* at = begin; at != end; ++at) {
        const Bits* const fit = fits(*at);
        Bits carry = 1; // the empty prefix, then what leaves a word at its top
        for (std::size_t i = 0; i < words_; ++i) {
            const Bits longer = prefixes_[i] << 1 | carry;
            carry = prefixes_[i] >> (kBits - 1);
            prefixes_[i] = longer & fit[i];
        }
        if (prefixes_.back() & lastBit_) return at + 1 - length_;
    }
    return end;
}

} // namespace core
