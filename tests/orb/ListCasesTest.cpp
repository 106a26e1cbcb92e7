// The rows of tests/cases/lists.cases through the tool: the canonical text, or the place of the first
// fault.
#include "lists/ListCases.h"
#include "OrbCall.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

test::OrbResult to_text(std::string_view list, bool isText) {
    const test::ScratchFile file(list);
    return test::call_orb({"list", "to-text", isText ? "--text" : "--binary", file.path});
}

TEST(OrbListCases, AreShownAsTheirRowsTell) {
    std::ifstream file(CASES "lists.cases");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) continue;
        SCOPED_TRACE(line);
        const auto row = test::parse_list_case(line);
        ASSERT_TRUE(row);
        const test::OrbResult result = to_text(row->list, row->isText);
        if (row->is_faulty()) {
            EXPECT_EQ(result.exit, 1);
            EXPECT_THAT(result.complaint, HasSubstr("', " + row->canonical + ": "));
        } else {
            EXPECT_EQ(result.complaint, "");
            EXPECT_EQ(result.out, row->canonical);
            EXPECT_EQ(to_text(result.out, true).out, row->canonical);
        }
    }
}

} // namespace
