// The order of characters that ranges such as [a-z] follow: an interface, so that masks stand below
// the locales. A `core::Collator` converts to a `CharacterOrderPtr`.
#pragma once

#include <core/platform/api.h>

#include <memory>

namespace core {

// Immutable, and safe on any thread.
class ORBCORE_API CharacterOrder {
public:
    virtual ~CharacterOrder();

    // Negative, 0 or positive, as `a` stands before, beside or behind `b`.
    virtual int compare(char16_t a, char16_t b) const noexcept = 0;
};

using CharacterOrderPtr = std::shared_ptr<const CharacterOrder>;

// The order of the current process's locale, without a process that of the system, with case and
// accents told apart. Opened once a locale; defined in `locale`.
ORBCORE_API const CharacterOrderPtr& system_character_order();

// The order of a locale by its id ("ru", "sv_SE"); an unknown one gets the root order. Opening
// costs some microseconds: keep it.
ORBCORE_API CharacterOrderPtr open_character_order(const char* locale);

} // namespace core
