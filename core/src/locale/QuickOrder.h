// Compares texts of plain letters and digits without ICU, and gives what ICU gives.
//
//   const int order = quick.compare(a, lengthA, b, lengthB, true);
//   if (order == QuickOrder::kUnknown) ...            // ask ICU
//
// A unit is plain in a locale when it sorts by one weight of each level whatever stands before it,
// and when its accents are those of all plain units of the same base letter. Texts of plain units
// differ first by the base letter, then by the length, then by the first difference in case; the
// level between, accents, cannot differ. What follows a difference is looked at too: "и" and a
// breve behind it are another letter.
#pragma once

#include <unicode/ucol.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace core {

class QuickOrder {
public:
    static constexpr int kUnknown = 2;
    static constexpr std::size_t kUnits = 0x460; // up to the letters of Cyrillic that are in use

    // The collators order by base letters, by accents too, and by case too. They are asked here
    // and not kept.
    QuickOrder(const UCollator* primary, const UCollator* secondary, const UCollator* tertiary);

    int compare(const char16_t* a, std::size_t lengthA, const char16_t* b, std::size_t lengthB,
                bool byCase) const noexcept {
        int inCase = 0;
        for (std::size_t i = 0;; ++i) {
            const Place placeA = place(a, lengthA, i), placeB = place(b, lengthB, i);
            if (placeA == kNotPlain || placeB == kNotPlain) return kUnknown;
            if (placeA == placeB) {
                if (placeA == kEnd) return byCase ? inCase : 0;
                continue;
            }
            const int order = placeA < placeB ? -1 : 1;
            if (placeA >> kCaseBits != placeB >> kCaseBits) {
                const bool known = place(a, lengthA, i + 1) && place(b, lengthB, i + 1);
                return known ? order : kUnknown;
            }
            if (inCase == 0) inCase = order;
        }
    }

private:
    // The number of the base letter, from 1, and that of the case in the low bits.
    using Place = std::uint16_t;
    static constexpr int kCaseBits = 4;
    static constexpr Place kNotPlain = 0;
    static constexpr Place kEnd = 1; // of the text, before all letters

    Place place(const char16_t* text, std::size_t length, std::size_t i) const noexcept {
        if (i >= length) return kEnd;
        return text[i] < kUnits ? places_[text[i]] : kNotPlain;
    }

    std::array<Place, kUnits> places_ = {};
};

} // namespace core
