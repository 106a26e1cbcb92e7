// Files in blocks that are as full as the file allows.
#pragma once

#include <core/files/IFile.h>

#include <kiln/buffer_pools.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace core {

// Reads until there are `n` bytes or the file ends.
inline unsigned read_fully(IFile& file, std::byte* dst, unsigned n) {
    unsigned done = 0;
    while (done != n) {
        const unsigned got = file.read(dst + done, n - done);
        if (got == 0) break;
        done += got;
    }
    return done;
}

// Compares at most `n` bytes from the positions on, as `compare_files_ex` does.
inline int compare_blocks(IFile& a, IFile& b, unsigned long long n) {
    const kiln::PooledBuffer blockA(kiln::buffer_pools().kib16);
    const kiln::PooledBuffer blockB(kiln::buffer_pools().kib16);
    for (unsigned long long left = n; left != 0;) {
        const auto wanted =
            static_cast<unsigned>(std::min<unsigned long long>(left, blockA.size()));
        const unsigned sizeA = read_fully(a, blockA.data(), wanted);
        const unsigned sizeB = read_fully(b, blockB.data(), wanted);
        if (const int order = std::memcmp(blockA.data(), blockB.data(), std::min(sizeA, sizeB)))
            return order;
        if (sizeA != sizeB) return sizeA < sizeB ? -1 : 1;
        if (sizeA != wanted) return 0;
        left -= wanted;
    }
    return 0;
}

} // namespace core
