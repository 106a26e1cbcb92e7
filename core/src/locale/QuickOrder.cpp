#include "QuickOrder.h"

#include <unicode/uchar.h>
#include <unicode/ucoleitr.h>
#include <unicode/uset.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>

namespace core {
namespace {

constexpr char16_t kGreek = 0x370; // and Cyrillic behind it

int order_of(const UCollator* collator, char16_t a, char16_t b) noexcept {
    return ucol_strcoll(collator, &a, 1, &b, 1);
}

// A letter or digit, or what else ASCII prints, that sorts by one element and is not ignored. The
// scripts are those of which ICU's common order has no letter that goes on from another one.
bool may_be_plain(const UCollator* collator, UCollationElements* elements, char16_t c) noexcept {
    const bool isAscii = c >= u' ' && c <= u'~';
    if (!isAscii && !(c >= kGreek && u_isalpha(c))) return false;
    if (ucol_strcoll(collator, &c, 1, u"", 0) == 0) return false; // ignored in this locale
    UErrorCode status = U_ZERO_ERROR;
    ucol_setText(elements, &c, 1, &status);
    const std::int32_t element = ucol_next(elements, &status);
    return ucol_primaryOrder(element) != 0 && element != UCOL_NULLORDER &&
           ucol_next(elements, &status) == UCOL_NULLORDER && U_SUCCESS(status);
}

// The letters that in this locale go on from another one, as the "h" of "ch".
std::u16string continuing(const UCollator* collator) {
    std::u16string all;
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<USet, void (*)(USet*)> tailored(ucol_getTailoredSet(collator, &status),
                                                          uset_close);
    for (int i = 0; U_SUCCESS(status) && i != uset_getItemCount(tailored.get()); ++i) {
        UChar32 first, last;
        char16_t text[64];
        const int length =
            uset_getItem(tailored.get(), i, &first, &last, text, std::size(text), &status);
        if (U_SUCCESS(status) && length >= 2) all.append(text + 1, text + length); // 0: a range
    }
    // Nothing is plain where ICU does not tell.
    if (U_FAILURE(status))
        for (char16_t c = 0; c != QuickOrder::kUnits; ++c) all += c;
    return all;
}

std::u16string letters_of(const UCollator* collator) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UCollationElements, void (*)(UCollationElements*)> elements(
        ucol_openElements(collator, u"", 0, &status), ucol_closeElements);
    const std::u16string excluded = continuing(collator);
    std::u16string letters;
    for (char16_t c = 0; U_SUCCESS(status) && c != QuickOrder::kUnits; ++c)
        if (may_be_plain(collator, elements.get(), c) && excluded.find(c) == excluded.npos)
            letters += c;
    return letters;
}

} // namespace

QuickOrder::QuickOrder(const UCollator* primary, const UCollator* secondary,
                       const UCollator* tertiary) {
    std::u16string letters = letters_of(tertiary);
    const auto by = [](const UCollator* collator) {
        return [collator](char16_t a, char16_t b) { return order_of(collator, a, b) < 0; };
    };
    std::sort(letters.begin(), letters.end(), by(primary));
    Place base = 0;
    for (auto begin = letters.begin(); begin != letters.end();) {
        const auto end = std::upper_bound(begin, letters.end(), *begin, by(primary));
        std::sort(begin, end, by(tertiary)); // and so by accents, the plainest first
        const auto plainEnd = std::upper_bound(begin, end, *begin, by(secondary));
        ++base;
        int number = 0;
        for (auto letter = begin; letter != plainEnd; ++letter) {
            if (letter != begin && order_of(tertiary, *std::prev(letter), *letter) != 0) ++number;
            if (number < 1 << kCaseBits)
                places_[*letter] = static_cast<Place>(base << kCaseBits | number);
        }
        begin = end;
    }
}

} // namespace core
