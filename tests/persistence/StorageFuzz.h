// One run of the fuzz targets of storages.
#pragma once

#include "../support/ProcessTest.h"
#include "StorageProgram.h"

#include <cstdint>
#include <cstdlib>

namespace test {

// Runs the program in the first line of the data on the rest, as a file that can be positioned and as
// one that cannot: nothing is thrown but what is told, and both give the same.
inline void fuzz_storage(const StorageKind& kind, const std::uint8_t* data, std::size_t size) {
    static const ManualProcess process(nullptr);
    constexpr std::size_t kLongestProgram = 64;
    const std::string_view all(reinterpret_cast<const char*>(data), size);
    const std::size_t end = all.substr(0, kLongestProgram).find('\n');
    if (end == all.npos) return;
    const std::string_view operations = all.substr(0, end), file = all.substr(end + 1);
    if (run(kind, operations, file, false) != run(kind, operations, file, true)) std::abort();
}

} // namespace test
