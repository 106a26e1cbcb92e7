// Everything that a script sees has a name in English and one in Russian; a term is the pair.
//
//   constexpr core::Term kCount = {u"Count", u"Количество"};
//   core::term_string(kCount, 1);                 // u"Количество"
#pragma once

#include <core/text/Compare.h>

#include <algorithm>
#include <array>
#include <compare>

namespace core {

inline constexpr int kLanguages = 2; // of names: 0 English, 1 Russian

// The name in a language; the English one serves both where there is no Russian one. Null for any
// other language, which is what ends the enumeration of the names of a member.
constexpr const char16_t* term_string(const Term& term, int language) noexcept {
    if (language == 0) return term.first;
    if (language == 1) return term.second ? term.second : term.first;
    return nullptr;
}

// ---- Checks of tables at compile time. Names are of Latin and Russian letters, digits and "_".

namespace detail {

constexpr char16_t small_letter(char16_t c) noexcept {
    if ((c >= u'A' && c <= u'Z') || (c >= 0x410 && c <= 0x42F))
        return static_cast<char16_t>(c + 32);
    return c == 0x401 ? char16_t{0x451} : c;
}

constexpr bool is_letter_of_names(char16_t c) noexcept {
    c = small_letter(c);
    return (c >= u'a' && c <= u'z') || (c >= 0x430 && c <= 0x44F) || c == 0x451 || c == u'_';
}

constexpr std::uint64_t hash_of_name(const char16_t* name) noexcept {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (; *name; ++name) hash = (hash ^ small_letter(*name)) * 0x100000001b3;
    return hash;
}

} // namespace detail

constexpr bool is_name_of_scripts(const char16_t* name) noexcept {
    if (!name || !detail::is_letter_of_names(*name)) return false;
    while (*++name)
        if (!detail::is_letter_of_names(*name) && (*name < u'0' || *name > u'9')) return false;
    return true;
}

// Whether no two rows have a name in common, in whichever language and case. A row has its term in
// `names`.
//
//   static_assert(core::names_are_distinct(kVerticalAlign));
template <class Row, std::size_t count>
constexpr bool names_are_distinct(const Row (&rows)[count]) {
    struct Claim {
        std::uint64_t hash;
        std::size_t row;
        constexpr auto operator<=>(const Claim&) const noexcept = default;
    };
    // 64 bits tell the names of any table apart: a false alarm is out of reach.
    std::array<Claim, kLanguages * count> claims{};
    for (std::size_t i = 0; i < claims.size(); ++i) {
        const std::size_t row = i / kLanguages;
        const int language = static_cast<int>(i % kLanguages);
        claims[i] = {detail::hash_of_name(term_string(rows[row].names, language)), row};
    }
    std::sort(claims.begin(), claims.end());
    return std::adjacent_find(claims.begin(), claims.end(), [](const Claim& a, const Claim& b) {
               return a.hash == b.hash && a.row != b.row;
           }) == claims.end();
}

} // namespace core
