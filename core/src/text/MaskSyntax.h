// A mask as the positions that its text is read into.
#pragma once

#include <core/text/CharacterOrder.h>

#include "SymbolsSet.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace core {

struct MaskPositions {
    std::u16string symbols; // the represented literal; 0 at a set, "%" where any text may stand
    std::vector<std::size_t> anys;                 // the positions of any text, ascending
    std::vector<std::shared_ptr<SymbolsSet>> sets; // as long as `symbols`; null where there is none

    // Whether a represented character fits a position that is a literal or a set.
    bool matches(std::size_t position, char16_t c) const {
        SymbolsSet* const set = sets[position].get();
        return set ? set->contains(c) : symbols[position] == c;
    }
    bool has_set(std::size_t begin, std::size_t end) const {
        for (std::size_t i = begin; i < end; ++i)
            if (sets[i]) return true;
        return false;
    }
};

// The sets refer to `order`.
MaskPositions parse_mask(std::u16string_view mask, char16_t escape, const CharacterOrder& order,
                         const Spelling& spelling);

} // namespace core
