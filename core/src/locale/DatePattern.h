// A pattern of ICU, taken apart: runs of a letter outside apostrophes, and text.
#pragma once

#include <algorithm>
#include <string_view>

namespace core {

// Calls `field(letter, run)` for each run and `text(view)` for all between, apostrophes resolved;
// each view lies in the pattern. Stops where `field` gives false, and gives false then.
template <class Field, class Text>
bool walk_date_pattern(std::u16string_view pattern, Field&& field, Text&& text) {
    const auto isLetter = [](char16_t c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
    };
    bool quoted = false;
    for (std::size_t at = 0; at != pattern.size();) {
        const char16_t c = pattern[at];
        if (c == u'\'') {
            const bool isApostrophe = at + 1 != pattern.size() && pattern[at + 1] == c;
            if (isApostrophe)
                text(pattern.substr(at++, 1));
            else
                quoted = !quoted;
            ++at;
            continue;
        }
        const bool isField = !quoted && isLetter(c);
        const auto goesOn = [&](char16_t next) {
            return isField ? next == c : next != u'\'' && (quoted || !isLetter(next));
        };
        const auto end = std::find_if_not(pattern.begin() + static_cast<std::ptrdiff_t>(at),
                                          pattern.end(), goesOn);
        const auto run = static_cast<std::size_t>(end - pattern.begin()) - at;
        if (!isField)
            text(pattern.substr(at, run));
        else if (!field(c, run))
            return false;
        at += run;
    }
    return true;
}

} // namespace core
