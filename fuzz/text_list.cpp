// The text form of lists: the first line is a program of calls, the rest is the text, a byte a unit;
// and each line that is a row of tests/cases/lists.cases is run as one. What reader a text comes from
// makes no difference, and nothing is thrown but the list's own exception.
#include "ListFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view all(reinterpret_cast<const char*>(data), size);
    test::run_list_cases(all, "text");
    const std::size_t end = all.find('\n');
    if (end == all.npos) return 0;
    const std::string_view operations = all.substr(0, end);
    std::u16string text;
    for (std::size_t i = end + 1; i != size; ++i)
        text +=
            static_cast<char16_t>(data[i] < 0x80 ? data[i] : data[i] * 0x0101); // surrogates, too
    test::expect_one_result(
        [&](unsigned window) { return test::run_text(operations, text, window); });
    return 0;
}
