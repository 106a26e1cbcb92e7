// Lines of tests/cases/masks.cases: family, escape character or "none", mask, text, answer, with a
// tab between them. Masks and texts stand in double quotes; lines that begin with "#" are remarks.
#pragma once

#include <core/component/Utf8.h>

#include <optional>
#include <string_view>
#include <vector>

namespace test {

struct MaskCase {
    bool noCase;
    char16_t escape; // 0: none
    stdx::ustring mask, text;
    bool answer;
};

inline std::optional<MaskCase> parse_mask_case(std::string_view line) {
    std::vector<std::string_view> fields;
    for (std::size_t tab; (tab = line.find('\t')) != line.npos; line.remove_prefix(tab + 1))
        fields.push_back(line.substr(0, tab));
    fields.push_back(line);
    if (fields.size() != 5 || fields[0].starts_with('#')) return {};

    const auto quoted = [](std::string_view field) {
        return core::from_utf8(field.size() < 2 ? field : field.substr(1, field.size() - 2));
    };
    const stdx::ustring escape = core::from_utf8(fields[1]);
    return MaskCase{fields[0] == "nocase", escape.size() == 1 ? escape.at(0) : u'\0',
                    quoted(fields[2]), quoted(fields[3]), fields[4] == "yes"};
}

} // namespace test
