// The vector forms under the readers and buffers against plain loops.
#include "streams/UnitCopy.h"
#include "streams/UnitScan.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

TEST(LineBreaks, AreFoundByEveryInstructionSet) {
    std::mt19937 random(3);
    // What narrows to the two, or is one of them in the other byte.
    const std::u16string_view units = u"\n\rab\x0A0D\x0D0A\x0100\x8A0A\xFFFF\x000B\x000C";
    std::u16string text(8 * 64, u'\0');
    for (int round = 0; round < 200; ++round) {
        for (char16_t& unit : text) unit = units[random() % units.size()];
        std::uint64_t sse2[8], best[8], one[8], oneSse2[8];
        core::find_line_breaks_sse2(text.data(), 8, sse2);
        core::find_line_breaks(text.data(), 8, best);
        core::find_units(text.data(), 8, u'\x0A0D', one);
        core::find_units_sse2(text.data(), 8, u'\x0A0D', oneSse2);
        for (std::size_t i = 0; i < text.size(); ++i) {
            const auto bit = [i](const std::uint64_t* bits) {
                return (bits[i / 64] >> i % 64 & 1) != 0;
            };
            const bool isBreak = text[i] == u'\n' || text[i] == u'\r';
            ASSERT_EQ(bit(sse2), isBreak) << i;
            ASSERT_EQ(bit(best), isBreak) << i;
            ASSERT_EQ(bit(one), text[i] == u'\x0A0D') << i;
            ASSERT_EQ(bit(oneSse2), text[i] == u'\x0A0D') << i;
        }
    }
}

TEST(UnitCopies, CopyThatManyUnitsAndNoMore) {
    std::u16string source(400, u'\0');
    for (std::size_t i = 0; i < source.size(); ++i) source[i] = static_cast<char16_t>(i + 1);
    for (unsigned n = 0; n <= 300; ++n) {
        std::u16string target(n + 2, u'#');
        core::copy_units(target.data() + 1, source.data() + 5, n);
        ASSERT_EQ(target, u"#" + source.substr(5, n) + u"#");
    }
}

} // namespace
