// Masks over lines as in tests/cases/masks.cases: whatever stands in a line, the compiled mask
// answers like the plain matcher.
#include "../tests/masks/MaskCases.h"
#include "../tests/masks/NaiveLike.h"

#include <core/text/LikeMask.h>

#include <cstdint>
#include <cstdlib>

namespace {

// The plain matcher takes mask times text.
constexpr unsigned kLongest = 300;

void compare(const test::MaskCase& row) {
    const core::CharacterOrderPtr& order = core::system_character_order();
    const auto mask = row.noCase ? core::create_like_mask_nocase(row.mask, row.escape, order)
                                 : core::create_like_mask(row.mask, row.escape, order);
    const bool answer = mask->match(row.text);
    if (mask->match(row.text) != answer) std::abort(); // what it learned does not matter
    if (row.mask.size() > kLongest || row.text.size() > kLongest) return;
    if (test::NaiveLike(row.mask, row.escape, row.noCase, *order).match(row.text) != answer)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        if (const auto row = test::parse_mask_case(rest.substr(0, end))) compare(*row);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return 0;
}
