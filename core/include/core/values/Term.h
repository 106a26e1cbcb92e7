// Everything that a script sees has a name in English and one in Russian; a term is the pair.
//
//   constexpr core::Term kCount = {u"Count", u"Количество"};
//   core::term_string(kCount, 1);                 // u"Количество"
#pragma once

#include <core/text/Compare.h>

namespace core {

inline constexpr int kLanguages = 2; // of names: 0 English, 1 Russian

// The name in a language; the English one serves both where there is no Russian one. Null for any
// other language, which is what ends the enumeration of the names of a member.
constexpr const char16_t* term_string(const Term& term, int language) noexcept {
    if (language == 0) return term.first;
    if (language == 1) return term.second ? term.second : term.first;
    return nullptr;
}

} // namespace core
