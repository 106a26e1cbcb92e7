// How files in memory move: positions have 32 bits and may lie behind the end.
#pragma once

#include <core/files/IFile.h>

#include <algorithm>
#include <cstdint>

namespace core {

// The new position. What would lie before the start is the start; an origin that is none moves
// nothing.
inline std::uint32_t memory_seek(std::uint32_t position, std::uint32_t size, long long offset,
                                 int origin) noexcept {
    constexpr long long kLargest = 0xFFFFFFFF;
    long long base = 0;
    switch (origin) {
    case kSeekFromStart:
        break;
    case kSeekFromCurrent:
        base = position;
        break;
    case kSeekFromEnd:
        base = size;
        break;
    default:
        return position;
    }
    const long long step = std::clamp(offset, -kLargest, kLargest);
    return static_cast<std::uint32_t>(std::clamp(base + step, 0LL, kLargest));
}

} // namespace core
