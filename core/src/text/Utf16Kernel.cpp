// UTF-16 of a named byte order (RFC 2781): a copy that looks for halves of pairs on its way.
#include "ConverterKernel.h"
#include "UtfRuns.h"

#include <cstring>

namespace core {
namespace {

enum class Order { Little, Big };

template <Order kOrder> __m128i in_order(__m128i units) noexcept {
    if constexpr (kOrder == Order::Little) return units;
    return _mm_or_si128(_mm_slli_epi16(units, 8), _mm_srli_epi16(units, 8));
}
template <Order kOrder> char16_t in_order(char16_t unit) noexcept {
    if constexpr (kOrder == Order::Little) return unit;
    return static_cast<char16_t>(unit << 8 | unit >> 8);
}

// Units on their way from one order to the other, neither of them aligned.
template <Order kFrom, Order kTo> class UnitCopy {
public:
    UnitCopy(const void* in, void* out, std::ptrdiff_t inSize, std::ptrdiff_t outSize) noexcept
        : in_(static_cast<const char*>(in)),
          out_(static_cast<char*>(out)),
          left_(static_cast<std::size_t>(std::min(inSize, outSize)) / 2) {}

    // The number of units that were copied.
    std::size_t run() noexcept {
        const std::size_t all = left_;
        do {
            copy_blocks();
        } while (copy_character());
        return all - left_;
    }

private:
    void copy_blocks() noexcept {
        for (; left_ >= 8; advance(8)) {
            const __m128i units = in_order<kFrom>(load_block(in_));
            if (has_surrogates(units)) return;
            store_block(out_, in_order<kTo>(units));
        }
    }
    bool copy_character() noexcept {
        if (left_ == 0) return false;
        const char16_t unit = unit_at(0);
        std::size_t length = 1;
        if (is_surrogate(unit)) {
            if (left_ < 2 || !is_lead(unit) || !is_trail(unit_at(1))) return false;
            length = 2;
        }
        for (std::size_t i = 0; i < length; ++i) {
            const char16_t ordered = in_order<kTo>(unit_at(i));
            std::memcpy(out_ + 2 * i, &ordered, 2);
        }
        advance(length);
        return true;
    }
    char16_t unit_at(std::size_t i) const noexcept {
        char16_t unit;
        std::memcpy(&unit, in_ + 2 * i, 2);
        return in_order<kFrom>(unit);
    }
    void advance(std::size_t units) noexcept {
        in_ += 2 * units;
        out_ += 2 * units;
        left_ -= units;
    }

    const char* in_;
    char* out_;
    std::size_t left_; // units that are there and have room
};

template <Order kOrder> class Utf16Kernel final : public ConverterKernel {
public:
    void widen(Widening& text) const noexcept override {
        UnitCopy<kOrder, Order::Little> copy(text.in, text.out, text.inEnd - text.in,
                                             2 * (text.outEnd - text.out));
        const std::size_t units = copy.run();
        text.in += 2 * units;
        text.out += units;
    }
    void narrow(Narrowing& text) const noexcept override {
        UnitCopy<Order::Little, kOrder> copy(text.in, text.out, 2 * (text.inEnd - text.in),
                                             text.outEnd - text.out);
        const std::size_t units = copy.run();
        text.in += units;
        text.out += 2 * units;
    }
    std::string_view substitute() const noexcept override { // U+FFFD
        return kOrder == Order::Little ? "\xFD\xFF" : "\xFF\xFD";
    }
};

} // namespace

const ConverterKernel& utf16_little_kernel() noexcept {
    static constinit Utf16Kernel<Order::Little> kernel;
    return kernel;
}

const ConverterKernel& utf16_big_kernel() noexcept {
    static constinit Utf16Kernel<Order::Big> kernel;
    return kernel;
}

} // namespace core
