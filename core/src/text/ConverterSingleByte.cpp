#include "ConverterKernel.h"
#include "UtfRuns.h"

namespace core {

SingleByteKernel::SingleByteKernel() {
    characters_.fill(kNoCharacter);
    bytes_.fill(kSubstitute);
}

void SingleByteKernel::finish() {
    holdsAscii_ = true;
    for (char16_t code = 0; code < 0x80; ++code)
        holdsAscii_ &= characters_[code] == code && bytes_[code] == static_cast<char>(code);
    if (holdsAscii_) stretch_ = longest_stretch();
}

SingleByteKernel::Stretch SingleByteKernel::longest_stretch() const noexcept {
    Stretch longest, present;
    for (int byte = 0x80; byte < 0x100; ++byte) {
        const char16_t unit = characters_[static_cast<std::size_t>(byte)];
        if (unit == kNoCharacter) {
            present.size = 0;
            continue;
        }
        if (present.size == 0 || unit - byte != present.distance) present = {byte, 0, unit - byte};
        if (++present.size > longest.size) longest = present;
    }
    return longest;
}

// Whole blocks, up to the first that holds a byte that is no text: ASCII and the stretch by vector,
// a few others one by one, many by table alone.
std::size_t SingleByteKernel::widen_blocks(const char* in, std::size_t n,
                                           char16_t* out) const noexcept {
    constexpr std::size_t kBlock = 16, kFew = 4;
    const __m128i zero = _mm_setzero_si128();
    const __m128i first = _mm_set1_epi8(static_cast<char>(stretch_.first));
    const __m128i size = _mm_set1_epi8(static_cast<char>(stretch_.size));
    const __m128i distance = _mm_set1_epi16(static_cast<short>(stretch_.distance));
    for (std::size_t done = 0;; done += kBlock, in += kBlock, out += kBlock) {
        if (n - done < kBlock) return done;
        const auto at = [&](std::size_t i) {
            return characters_[static_cast<std::uint8_t>(in[i])];
        };
        const __m128i bytes = load_block(in);
        const __m128i place = _mm_sub_epi8(bytes, first);
        const __m128i outside = _mm_cmpeq_epi8(_mm_max_epu8(place, size), place);
        const auto put = [&](char16_t* to, __m128i units, __m128i mask) {
            store_block(to, _mm_add_epi16(units, _mm_andnot_si128(mask, distance)));
        };
        put(out, _mm_unpacklo_epi8(bytes, zero), _mm_unpacklo_epi8(outside, outside));
        put(out + 8, _mm_unpackhi_epi8(bytes, zero), _mm_unpackhi_epi8(outside, outside));
        unsigned others = lane_bits<char>(_mm_and_si128(outside, bytes));
        bool good = true;
        for (std::size_t few = 0; others != 0 && few < kFew; ++few) {
            const std::size_t i = take_lane<char>(others);
            out[i] = at(i);
            good &= out[i] != kNoCharacter;
        }
        for (std::size_t i = 0; others != 0 && i < kBlock; ++i) {
            out[i] = at(i);
            good &= out[i] != kNoCharacter;
        }
        if (!good) return done;
    }
}

void SingleByteKernel::widen(Widening& text) const noexcept {
    std::size_t left = common_size(text);
    if (holdsAscii_) {
        const std::size_t size = widen_blocks(text.in, left, text.out);
        text.in += size;
        text.out += size;
        left -= size;
    }
    for (; left > 0; --left) {
        const char16_t unit = characters_[static_cast<std::uint8_t>(*text.in)];
        if (unit == kNoCharacter) return;
        *text.out++ = unit;
        ++text.in;
    }
}

void SingleByteKernel::narrow(Narrowing& text) const noexcept {
    std::size_t left = common_size(text);
    const char16_t* in = text.in;
    char* out = text.out;
    const auto advance = [&](std::size_t n) {
        in += n;
        out += n;
        left -= n;
    };
    for (constexpr std::size_t kBlock = 8; left >= kBlock; advance(kBlock)) {
        if (holdsAscii_) advance(narrow_ascii_blocks(in, left, out));
        if (left < kBlock || has_surrogates(load_block(in))) break;
        for (std::size_t i = 0; i < kBlock; ++i) out[i] = bytes_[in[i]];
    }
    for (; left > 0 && !is_surrogate(*in); advance(1)) *out = bytes_[*in];
    text.in = in;
    text.out = out;
}

} // namespace core
