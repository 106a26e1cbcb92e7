// The binary form of lists: the first line is a program of calls, the rest are the bytes. What file
// they come from makes no difference, and nothing is thrown but the list's own exception.
#include "../tests/lists/ListProgram.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view all(reinterpret_cast<const char*>(data), size);
    const std::size_t end = all.find('\n');
    if (end == all.npos) return 0;
    const std::string_view operations = all.substr(0, end);
    const std::string bytes(all.substr(end + 1));
    const std::string result = test::run_bytes(operations, bytes, 100'000'000);
    for (const unsigned window : {0u, 1u, 3u})
        if (test::run_bytes(operations, bytes, window) != result) std::abort();
    return 0;
}
