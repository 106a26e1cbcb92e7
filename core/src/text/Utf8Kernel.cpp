// UTF-8 (RFC 3629): stretches by vector, what is left one by one.
#include "ConverterKernel.h"
#include "Utf8Blocks.h"

namespace core {
namespace {

// ---- From UTF-8.

using Byte = std::uint8_t;

constexpr bool is_continuation(Byte byte) noexcept {
    return (byte & 0xC0) == 0x80;
}

// What the second byte may be decides on overlong forms, surrogates and the end of Unicode.
constexpr bool fits_three(Byte lead, Byte second) noexcept {
    if (lead == 0xE0) return second >= 0xA0 && second <= 0xBF;
    if (lead == 0xED) return second >= 0x80 && second <= 0x9F;
    return is_continuation(second);
}
constexpr bool fits_four(Byte lead, Byte second) noexcept {
    if (lead == 0xF0) return second >= 0x90 && second <= 0xBF;
    if (lead == 0xF4) return second >= 0x80 && second <= 0x8F;
    return lead < 0xF4 && is_continuation(second);
}

// One character; false where there is no whole good one, or no room.
bool widen_one(Widening& text) noexcept {
    const auto* const in = reinterpret_cast<const Byte*>(text.in);
    const std::ptrdiff_t size = text.inEnd - text.in, room = text.outEnd - text.out;
    if (size < 1 || room < 1) return false;
    const Byte lead = in[0];
    if (lead < 0x80) {
        *text.out++ = lead;
        text.in += 1;
    } else if (lead < 0xE0) {
        if (lead < 0xC2 || size < 2 || !is_continuation(in[1])) return false;
        *text.out++ = static_cast<char16_t>((lead & 0x1F) << 6 | (in[1] & 0x3F));
        text.in += 2;
    } else if (lead < 0xF0) {
        if (size < 3 || !fits_three(lead, in[1]) || !is_continuation(in[2])) return false;
        *text.out++ =
            static_cast<char16_t>((lead & 0xF) << 12 | (in[1] & 0x3F) << 6 | (in[2] & 0x3F));
        text.in += 3;
    } else {
        if (size < 4 || room < 2 || !fits_four(lead, in[1]) || !is_continuation(in[2]) ||
            !is_continuation(in[3]))
            return false;
        const int code =
            (lead & 7) << 18 | (in[1] & 0x3F) << 12 | (in[2] & 0x3F) << 6 | (in[3] & 0x3F);
        *text.out++ = static_cast<char16_t>(0xD7C0 + (code >> 10));
        *text.out++ = static_cast<char16_t>(0xDC00 | (code & 0x3FF));
        text.in += 4;
    }
    return true;
}

// Eight characters of ASCII; false, and nothing taken, where there are none.
bool widen_eight(Widening& text) noexcept {
    if (common_size(text) < 8) return false;
    const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(text.in));
    if (_mm_movemask_epi8(bytes) != 0) return false;
    store_block(text.out, _mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
    text.in += 8;
    text.out += 8;
    return true;
}

// ---- To UTF-8.

// One character; false in front of half of a pair, or where there is no room.
bool narrow_one(Narrowing& text) noexcept {
    const std::ptrdiff_t room = text.outEnd - text.out;
    if (text.in == text.inEnd || room < 1) return false;
    const char16_t unit = *text.in;
    const auto put = [&](int byte) { *text.out++ = static_cast<char>(byte); };
    if (unit < 0x80) {
        put(unit);
    } else if (unit < 0x800) {
        if (room < 2) return false;
        put(0xC0 | unit >> 6);
        put(0x80 | (unit & 0x3F));
    } else if (!is_surrogate(unit)) {
        if (room < 3) return false;
        put(0xE0 | unit >> 12);
        put(0x80 | (unit >> 6 & 0x3F));
        put(0x80 | (unit & 0x3F));
    } else {
        if (room < 4 || !is_pair(text.in, text.inEnd)) return false;
        const int code = ((unit - 0xD7C0) << 10) | (text.in[1] & 0x3FF);
        put(0xF0 | code >> 18);
        put(0x80 | (code >> 12 & 0x3F));
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
        ++text.in;
    }
    ++text.in;
    return true;
}

bool narrow_eight(Narrowing& text) noexcept {
    if (common_size(text) < 8) return false;
    const __m128i units = load_block(text.in);
    if (_mm_movemask_epi8(ascii_lanes(units)) != 0xFFFF) return false;
    _mm_storel_epi64(reinterpret_cast<__m128i*>(text.out), _mm_packus_epi16(units, units));
    text.in += 8;
    text.out += 8;
    return true;
}

class Utf8Kernel final : public ConverterKernel {
public:
    constexpr explicit Utf8Kernel(const Utf8Blocks& blocks) noexcept : blocks_(blocks) {}

    void widen(Widening& text) const noexcept override {
        do {
            blocks_.widen(text);
        } while (widen_some(text));
    }
    void narrow(Narrowing& text) const noexcept override {
        do {
            blocks_.narrow(text);
        } while (narrow_some(text));
    }
    std::string_view substitute() const noexcept override { return "?"; }

private:
    // Past what stopped the vectors, and on where they would hardly get far: false where no more
    // can be taken.
    static bool widen_some(Widening& text) noexcept {
        if (widen_eight(text)) return true;
        for (int i = 0; i < kSome; ++i)
            if (!widen_one(text)) return false;
        return true;
    }
    static bool narrow_some(Narrowing& text) noexcept {
        if (narrow_eight(text)) return true;
        for (int i = 0; i < kSome; ++i)
            if (!narrow_one(text)) return false;
        return true;
    }
    static constexpr int kSome = 8;

    const Utf8Blocks& blocks_;
};

} // namespace

const ConverterKernel& utf8_kernel() noexcept {
    static const Utf8Kernel kernel(utf8_blocks());
    return kernel;
}

} // namespace core
