// The rows of tests/cases/lists.cases, read from sources of all kinds.
#include "ListCases.h"
#include "support/ProcessTest.h"

#include <fstream>

namespace {

class ListCases : public test::ProcessTest {};

TEST_F(ListCases, GiveWhatTheirRowsTell) {
    std::ifstream file(CASES "lists.cases");
    unsigned rows = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) continue;
        const auto row = test::parse_list_case(line);
        ASSERT_TRUE(row) << line;
        for (const unsigned window : {100'000'000u, 0u, 1u, 3u})
            EXPECT_EQ(test::run_case(*row, window), row->result) << line << ", window " << window;
        ++rows;
    }
    EXPECT_GT(rows, 90u);
}

} // namespace
