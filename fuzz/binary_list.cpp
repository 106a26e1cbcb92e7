// The binary form of lists: the first line is a program of calls, the rest are the bytes; and each
// line that is a row of tests/cases/lists.cases is run as one. What file bytes come from makes no
// difference, and nothing is thrown but the list's own exception.
#include "ListFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view all(reinterpret_cast<const char*>(data), size);
    test::run_list_cases(all, "bytes");
    const std::size_t end = all.find('\n');
    if (end == all.npos) return 0;
    const std::string_view operations = all.substr(0, end);
    const std::string bytes(all.substr(end + 1));
    test::expect_one_result(
        [&](unsigned window) { return test::run_bytes(operations, bytes, window); });
    return 0;
}
