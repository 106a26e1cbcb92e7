// What the targets of lists share.
#pragma once

#include "../tests/lists/ListCases.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace test {

// `run` by windows of all sizes gives the same.
template <class Run> void expect_one_result(Run run) {
    const std::string result = run(100'000'000);
    for (const unsigned window : {0u, 1u, 3u})
        if (run(window) != result) std::abort();
}

inline void run_list_cases(std::string_view lines, std::string_view kind) {
    while (!lines.empty()) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        if (const auto row = line.starts_with(kind) ? parse_list_case(line) : std::nullopt)
            expect_one_result([&](unsigned window) { return run_case(*row, window); });
        lines.remove_prefix(std::min(line.size() + 1, lines.size()));
    }
}

} // namespace test
