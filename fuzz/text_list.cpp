// The text form of lists: the first line is a program of calls, the rest is the text, a byte a unit.
// What reader it comes from makes no difference, and nothing is thrown but the list's own exception.
#include "../tests/lists/ListProgram.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view all(reinterpret_cast<const char*>(data), size);
    const std::size_t end = all.find('\n');
    if (end == all.npos) return 0;
    const std::string_view operations = all.substr(0, end);
    std::u16string text;
    for (std::size_t i = end + 1; i != size; ++i)
        text +=
            static_cast<char16_t>(data[i] < 0x80 ? data[i] : data[i] * 0x0101); // surrogates, too
    const std::string result = test::run_text(operations, text, 100'000'000);
    for (const unsigned window : {0u, 1u, 3u})
        if (test::run_text(operations, text, window) != result) std::abort();
    return 0;
}
