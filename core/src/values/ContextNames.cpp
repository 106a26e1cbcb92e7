#include <core/values/ContextNames.h>

#include <core/text/Characters.h>

#include <algorithm>
#include <string_view>

namespace core {

namespace {

bool may_begin_name(char16_t c) noexcept {
    return c == u'_' || is_alpha(c);
}

bool may_stand_in_name(char16_t c) noexcept {
    return may_begin_name(c) || is_digit(c);
}

std::u16string_view trimmed(std::u16string_view text) noexcept {
    while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
    while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
    return text;
}

// The end of the word that begins `text`, which does not begin with "_": a capital ends a word, but
// in a run of capitals only the one that a small letter follows.
std::size_t word_end(std::u16string_view text) noexcept {
    std::size_t end = 1;
    for (; end < text.size() && text[end] != u'_'; ++end) {
        if (!is_upper(text[end])) continue;
        const bool inRun = is_upper(text[end - 1]);
        const bool beginsWord = end + 1 < text.size() && is_lower(text[end + 1]);
        if (!inRun || beginsWord) break;
    }
    return end;
}

} // namespace

bool is_valid_name(const char16_t* begin, const char16_t* end) noexcept {
    return begin != end && may_begin_name(*begin) && std::all_of(begin, end, may_stand_in_name);
}

bool is_valid_path(const char16_t* begin, const char16_t* end) noexcept {
    for (;; ++begin) {
        const char16_t* const dot = std::find(begin, end, u'.');
        if (!is_valid_name(begin, dot)) return false;
        if (dot == end) return true;
        begin = dot;
    }
}

stdx::ustring synonym_to_name(const stdx::ustring& synonym) {
    stdx::ustring name;
    bool capital = true;
    for (const char16_t c : trimmed(synonym)) {
        if (is_space(c)) {
            capital = true;
            continue;
        }
        const bool fits = name.empty() ? may_begin_name(c) : may_stand_in_name(c);
        name += !fits ? u'_' : capital ? to_upper(c) : c;
        capital = false;
    }
    return name;
}

stdx::ustring name_to_synonym(const stdx::ustring& name) {
    stdx::ustring synonym;
    std::u16string_view rest = name;
    while (!rest.empty()) {
        if (rest.front() == u'_') {
            rest.remove_prefix(1);
            continue;
        }
        const std::u16string_view word = rest.substr(0, word_end(rest));
        rest.remove_prefix(word.size());
        if (synonym.empty()) {
            synonym = stdx::ustring(word);
            continue;
        }
        const bool inCapitals = word.size() > 1 && is_upper(word[1]);
        synonym += u' ';
        synonym += inCapitals ? word.front() : to_lower(word.front());
        synonym += word.substr(1);
    }
    return synonym;
}

} // namespace core
