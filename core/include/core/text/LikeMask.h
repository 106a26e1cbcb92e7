// The pattern language of the operator LIKE; docs/masks.md tells it by example.
//
//   const auto order = core::system_character_order();
//   auto mask = core::create_like_mask_nocase(u"%[0-9]_-ноябр%", 0, order);
//   for (const stdx::ustring& name : names)
//       if (mask->match(name)) …
//
//   core::compare_like(u"100%", u"%\\%", u'\\');     // once, without keeping the mask
//
// `%` is any text, `_` any character, `[a-z_]` one of a set, `[^a-z]` one not of it; everything
// else stands for itself, and so does what follows `escape` (0: there is none). No mask fails to
// compile: what is not well-formed stands for itself too. Characters are UTF-16 units.
//
// The functions with `nocase` take two characters for equal when they are after upper and then
// lower case.
//
// A match takes time linear in the text, for masks with stretches of up to 64 characters beside
// sets, and is at worst text times the longest stretch / 64.
#pragma once

#include <core/text/CharacterOrder.h>

#include <memory>
#include <string_view>

namespace core {

// A compiled mask learns about characters while it matches: one thread at a time.
class ORBCORE_API ILikeMask {
public:
    virtual ~ILikeMask();

    // Whether the mask covers the whole text. May throw `std::bad_alloc`.
    virtual bool match(std::basic_string_view<char16_t> text) = 0;
};

// `order` decides what lies in a range, see core/text/CharacterOrder.h; it must not be null.
ORBCORE_API std::shared_ptr<ILikeMask>
create_like_mask(const std::basic_string_view<char16_t>& mask, char16_t escape,
                 const CharacterOrderPtr& order);
ORBCORE_API std::shared_ptr<ILikeMask>
create_like_mask_nocase(const std::basic_string_view<char16_t>& mask, char16_t escape,
                        const CharacterOrderPtr& order);

// Compile the mask, match once, and forget it.
ORBCORE_API bool compare_like(std::basic_string_view<char16_t> text,
                              std::basic_string_view<char16_t> mask, char16_t escape,
                              const CharacterOrderPtr& order);
ORBCORE_API bool compare_nocase_like(std::basic_string_view<char16_t> text,
                                     std::basic_string_view<char16_t> mask, char16_t escape,
                                     const CharacterOrderPtr& order);

// The same in the order of the process's locale, for texts that end with a 0 or have a length.
ORBCORE_API bool compare_like(const char16_t* text, const char16_t* mask, char16_t escape);
ORBCORE_API bool compare_like(const char16_t* text, unsigned int textLength, const char16_t* mask,
                              char16_t escape);
ORBCORE_API bool compare_like(const char16_t* text, const char16_t* mask, unsigned int maskLength,
                              char16_t escape);
ORBCORE_API bool compare_like(const char16_t* text, unsigned int textLength, const char16_t* mask,
                              unsigned int maskLength, char16_t escape);
ORBCORE_API bool compare_nocase_like(const char16_t* text, const char16_t* mask, char16_t escape);
ORBCORE_API bool compare_nocase_like(const char16_t* text, unsigned int textLength,
                                     const char16_t* mask, char16_t escape);
ORBCORE_API bool compare_nocase_like(const char16_t* text, const char16_t* mask,
                                     unsigned int maskLength, char16_t escape);
ORBCORE_API bool compare_nocase_like(const char16_t* text, unsigned int textLength,
                                     const char16_t* mask, unsigned int maskLength,
                                     char16_t escape);

} // namespace core
