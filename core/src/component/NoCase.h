// Keys that are the same in any case of letters, in every alphabet: unit by unit, to upper and then
// to lower case, without locale.
#pragma once

#include <elm/string>

#include <unicode/uchar.h>

#include <algorithm>
#include <cstdint>

namespace core {

inline char16_t without_case(char16_t unit) noexcept {
    if (unit < 0x80) return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
    return static_cast<char16_t>(u_tolower(u_toupper(unit)));
}

struct NoCaseHash {
    std::size_t operator()(const stdx::ustring& text) const noexcept {
        std::uint32_t hash = 0;
        for (const char16_t unit : text) hash = hash * 37 + without_case(unit);
        return hash;
    }
};

struct NoCaseEqual {
    bool operator()(const stdx::ustring& a, const stdx::ustring& b) const noexcept {
        return a.size() == b.size() &&
               std::equal(a.begin(), a.end(), b.begin(), [](char16_t x, char16_t y) {
                   return x == y || without_case(x) == without_case(y);
               });
    }
};

} // namespace core
