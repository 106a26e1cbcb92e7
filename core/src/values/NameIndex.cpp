#include "NameIndex.h"

#include "text/CaseBlock.h"

#include <bit>
#include <cstring>
#include <utility>

namespace core {

namespace {

using Block = NameIndex::Block;

constexpr std::size_t kUnits = 8; // of a block

Block without_case_as_words(__m128i units) noexcept {
    const __m128i folded = without_case<char16_t>(units);
    return {static_cast<std::uint64_t>(_mm_cvtsi128_si64(folded)),
            static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(folded, folded)))};
}

std::int64_t four_units(const char16_t* text) noexcept {
    std::int64_t word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

// A text shorter than a block: its ends, which meet or overlap. With the length that is all of it.
__m128i short_block(std::u16string_view text) noexcept {
    const std::size_t n = text.size();
    if (n >= 4) return _mm_set_epi64x(four_units(&text[n - 4]), four_units(&text[0]));
    if (n == 0) return _mm_setzero_si128();
    const auto at = [&](std::size_t i) { return static_cast<short>(text[i]); };
    return _mm_set_epi16(0, 0, 0, 0, 0, at(n - 1), at(n / 2), at(0));
}

// Calls `use` for block after block until it answers false; the last one overlaps the one before.
template <class Use> void for_blocks(std::u16string_view text, Use use) {
    const std::size_t n = text.size();
    if (n < kUnits) {
        use(without_case_as_words(short_block(text)));
        return;
    }
    std::size_t i = 0;
    for (; i + kUnits <= n; i += kUnits)
        if (!use(without_case_as_words(load_block(&text[i])))) return;
    if (i != n) use(without_case_as_words(load_block(&text[n - kUnits])));
}

std::uint32_t hash_of(std::u16string_view name) noexcept {
    std::uint64_t hash = name.size();
    for_blocks(name, [&](const Block& block) {
        hash = (std::rotl(hash, 25) ^ block.low) * 0x9e3779b97f4a7c15;
        hash = (std::rotl(hash, 25) ^ block.high) * 0xc2b2ae3d27d4eb4f;
        return true;
    });
    return static_cast<std::uint32_t>(hash >> 32);
}

constexpr std::size_t slots_for(std::size_t names) noexcept {
    return std::bit_ceil(names * 2 + 2);
}

} // namespace

NameIndex::NameIndex(std::size_t names) : slots_(slots_for(names)) {}

std::size_t NameIndex::slot_of(std::u16string_view name, std::uint32_t hash) const noexcept {
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t place = hash & mask;; place = (place + 1) & mask) {
        const Slot& slot = slots_[place];
        if (slot.member < 0) return place;
        if (slot.hash != hash || slot.length != name.size()) continue;
        const Block* stored = &blocks_[slot.begin];
        bool equal = true;
        for_blocks(name, [&](const Block& block) { return equal = block == *stored++; });
        if (equal) return place;
    }
}

void NameIndex::add(std::u16string_view name, int member) {
    if ((used_ + 1) * 3 > slots_.size() * 2) grow();
    const std::uint32_t hash = hash_of(name);
    Slot& slot = slots_[slot_of(name, hash)];
    if (slot.member >= 0) return;
    slot = {hash, static_cast<std::uint32_t>(name.size()),
            static_cast<std::uint32_t>(blocks_.size()), member};
    ++used_;
    for_blocks(name, [&](const Block& block) {
        blocks_.push_back(block);
        return true;
    });
}

int NameIndex::find(std::u16string_view name) const noexcept {
    return slots_[slot_of(name, hash_of(name))].member;
}

void NameIndex::grow() {
    const std::vector<Slot> former = std::exchange(slots_, std::vector<Slot>(slots_.size() * 2));
    for (const Slot& slot : former) {
        if (slot.member < 0) continue;
        std::size_t place = slot.hash & (slots_.size() - 1); // all names differ
        while (slots_[place].member >= 0) place = (place + 1) & (slots_.size() - 1);
        slots_[place] = slot;
    }
}

} // namespace core
