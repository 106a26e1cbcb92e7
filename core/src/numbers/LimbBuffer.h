// Room for limbs while a result is made: on the stack when short, a block when long.
#pragma once

#include <kiln/memory.h>

#include <cstddef>
#include <cstdint>
#include <new>

namespace core {

using Limb = std::uint32_t;
inline constexpr std::uint64_t kLimbBase = 1'000'000'000;
inline constexpr int kLimbDigits = 9;

// The limit of limbs, and of the exponents that products and quotients may have. Sums move an exponent
// by one at most each time a number doubles, so 32 bits never overflow by them.
inline constexpr std::int64_t kMostLimbs = 0x3FFFFFFF;

template <class Word> class WordBuffer {
public:
    // Throws std::bad_alloc. The words have no values.
    explicit WordBuffer(std::size_t size)
        : words_(size <= kOnStack ? inline_ : static_cast<Word*>(kiln_new(size * sizeof(Word)))) {}
    ~WordBuffer() {
        if (words_ != inline_) kiln_delete(words_);
    }
    WordBuffer(const WordBuffer&) = delete;
    WordBuffer& operator=(const WordBuffer&) = delete;

    operator Word*() noexcept { return words_; }

private:
    static constexpr std::size_t kOnStack = 1024 / sizeof(Word);

    Word* words_;
    Word inline_[kOnStack];
};

using LimbBuffer = WordBuffer<Limb>;

} // namespace core
