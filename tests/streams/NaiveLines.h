// A whole text split into lines the plain way, for comparison.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace test {

struct SplitText {
    std::vector<std::u16string> lines; // as readLine gives them
    std::u16string text;               // as all other reading gives it
};

inline SplitText split_at_any_line_end(std::u16string_view text) {
    SplitText result{{}, std::u16string(text)};
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(u"\r\n"), text.size());
        result.lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end);
        const bool isPair = text.starts_with(u"\r\n");
        text.remove_prefix(std::min<std::size_t>(isPair ? 2 : 1, text.size()));
    }
    return result;
}

// What begins like the separator and goes on otherwise is text, and the search goes on behind it.
inline SplitText split_at(std::u16string_view text, std::u16string_view separator) {
    SplitText result;
    std::u16string line;
    bool isOpen = false; // a line that has begun
    for (std::size_t at = 0; at != text.size();) {
        std::size_t equal = 0;
        while (equal < separator.size() && at + equal < text.size() &&
               text[at + equal] == separator[equal])
            ++equal;
        isOpen = true;
        if (equal == separator.size() || at + equal == text.size()) {
            // The beginning of a separator at the end of the text counts as one, but stands there.
            result.text += equal == separator.size() ? u"\n" : text.substr(at);
            result.lines.push_back(std::exchange(line, {}));
            isOpen = false;
            at += equal;
        } else {
            const std::size_t n = std::max<std::size_t>(equal, 1);
            line += text.substr(at, n);
            result.text += text.substr(at, n);
            at += n;
        }
    }
    if (isOpen) result.lines.push_back(line);
    return result;
}

inline SplitText split(std::u16string_view text, std::u16string_view separator) {
    return separator.empty() ? split_at_any_line_end(text) : split_at(text, separator);
}

} // namespace test
