// The mask language in its plainest form, to compare with: the mask is read anew for every position
// of the text, and every choice of `%` is tried.
#pragma once

#include <core/text/CharacterOrder.h>
#include <core/text/Characters.h>

#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace test {

class NaiveLike {
public:
    NaiveLike(std::u16string_view mask, char16_t escape, bool noCase,
              const core::CharacterOrder& order)
        : escape_(escape), noCase_(noCase), order_(order) {
        while (!mask.empty()) mask.remove_prefix(readElement(mask));
    }

    bool match(std::u16string_view text) const {
        // reach[j]: the elements so far cover the first j characters.
        std::vector<bool> reach(text.size() + 1);
        reach[0] = true;
        for (const Element& element : elements_) {
            std::vector<bool> next(text.size() + 1);
            for (std::size_t j = 0; j <= text.size(); ++j) {
                if (element.anyText)
                    next[j] = reach[j] || (j > 0 && next[j - 1]);
                else
                    next[j] = j > 0 && reach[j - 1] && element.accepts(folded(text[j - 1]));
            }
            reach = std::move(next);
        }
        return reach[text.size()];
    }

private:
    struct Element {
        bool anyText = false;
        std::function<bool(char16_t)> accepts;
    };

    char16_t folded(char16_t c) const { return noCase_ ? core::to_lower(core::to_upper(c)) : c; }

    bool is_between(char16_t c, char16_t a, char16_t b) const {
        const int low = order_.compare(c, a);
        const int high = order_.compare(c, b);
        return (low >= 0 && high <= 0) || (low <= 0 && high >= 0);
    }

    std::size_t readElement(std::u16string_view mask) {
        const char16_t c = mask[0];
        if (c == u'[' && mask.size() > 1) return readSet(mask);
        if (c == u'%') {
            elements_.push_back({true, {}});
            return 1;
        }
        if (c == u'_') {
            elements_.push_back({false, [](char16_t) { return true; }});
            return 1;
        }
        const bool escaped = escape_ != 0 && c == escape_ && mask.size() > 1;
        const char16_t literal = folded(mask[escaped ? 1 : 0]);
        elements_.push_back({false, [literal](char16_t x) { return x == literal; }});
        return escaped ? 2 : 1;
    }

    std::size_t readSet(std::u16string_view mask) {
        std::size_t close = 1;
        while (close < mask.size() &&
               !(mask[close] == u']' && (escape_ == 0 || mask[close - 1] != escape_)))
            ++close;
        std::u16string_view inside = mask.substr(1, close - 1);
        const bool negated = inside.starts_with(u'^');
        if (negated) inside.remove_prefix(1);

        const auto plain = [&] {
            if (escape_ != 0 && inside[0] == escape_ && inside.size() > 1) inside.remove_prefix(1);
            const char16_t c = inside[0];
            inside.remove_prefix(1);
            return c;
        };
        std::u16string singles;
        std::vector<std::pair<char16_t, char16_t>> ranges;
        while (!inside.empty()) {
            const char16_t low = plain();
            singles += folded(low);
            if (inside.size() < 2 || inside[0] != u'-') continue;
            inside.remove_prefix(1);
            const char16_t high = plain();
            singles += folded(high);
            ranges.emplace_back(low, high);
        }
        elements_.push_back({false, [=, this](char16_t c) {
                                 bool in = singles.find(c) != singles.npos;
                                 const char16_t capital = noCase_ ? core::to_upper(c) : c;
                                 for (const auto& [a, b] : ranges)
                                     in = in || is_between(c, a, b) || is_between(capital, a, b);
                                 return in != negated;
                             }});
        return std::min(close + 1, mask.size());
    }

    char16_t escape_;
    bool noCase_;
    const core::CharacterOrder& order_;
    std::vector<Element> elements_;
};

} // namespace test
