// The order of texts in the language of a locale.
//
//   const core::Collator collator(core::Locale(u"ru"));
//   if (collator.compareNocase(a, b) == 0) ...                    // "Ёлка" and "ёлка"
//   const stdx::string key = collator.transform(name);            // for many comparisons
//   core::create_like_mask(u"[а-я]%", 0, collator);               // it is a character order too
//
// A handle, copied for nothing, on a record that is made once a locale and kept for ever; making
// the first of a locale opens ICU's collators, some 100 microseconds. All operations are safe on
// any thread and take no lock. Lengths are in units, at most 0x7FFFFFFF.
#pragma once

#include <core/locale/Locale.h>
#include <core/text/CharacterOrder.h>

namespace core {

class ORBCORE_API Collator {
public:
    // Throws `std::runtime_error` where ICU has no data at all.
    explicit Collator(const Locale& locale);

    // -1, 0 or 1. Accents and case count.
    int compare(const char16_t* a, std::size_t lengthA, const char16_t* b,
                std::size_t lengthB) const noexcept;
    int compare(std::u16string_view a, std::u16string_view b) const noexcept {
        return compare(a.data(), a.size(), b.data(), b.size());
    }

    // The same but for case, which does not count.
    int compareNocase(const char16_t* a, std::size_t lengthA, const char16_t* b,
                      std::size_t lengthB) const noexcept;
    int compareNocase(std::u16string_view a, std::u16string_view b) const noexcept {
        return compareNocase(a.data(), a.size(), b.data(), b.size());
    }

    // The sort key: keys compare by bytes as their texts do by `compare` and `compareNocase`. Keys
    // of different collators, or of different versions of ICU, do not fit together.
    stdx::string transform(std::u16string_view text) const;
    stdx::string transformNocase(std::u16string_view text) const;

    // The order of single characters, by `compare`; lives for ever.
    operator const CharacterOrderPtr&() const noexcept;

    // Whether both order all texts alike, as far as ICU can tell.
    friend ORBCORE_API bool operator==(const Collator& a, const Collator& b) noexcept;

private:
    class Record;

    const Record* record_;
};

} // namespace core
