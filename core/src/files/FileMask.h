// Masks of file names: "*" is any text, "?" any unit, everything else stands for itself.
#pragma once

#include <string_view>

namespace core {

// Takes time name times mask at worst, and no memory.
inline bool matches_file_mask(std::u16string_view name, std::u16string_view mask) noexcept {
    std::size_t at = 0, inMask = 0;
    std::size_t star = mask.npos, covered = 0; // the last "*", and what it covers up to
    while (at != name.size()) {
        if (inMask != mask.size() && mask[inMask] == u'*') {
            star = inMask++;
            covered = at;
        } else if (inMask != mask.size() && (mask[inMask] == u'?' || mask[inMask] == name[at])) {
            ++inMask;
            ++at;
        } else if (star != mask.npos) {
            inMask = star + 1;
            at = ++covered;
        } else {
            return false;
        }
    }
    return mask.find_first_not_of(u'*', inMask) == mask.npos;
}

} // namespace core
