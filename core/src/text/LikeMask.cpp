#include <core/text/LikeMask.h>

#include <core/component/IllegalArgumentException.h>

#include "ProcessedMask.h"

namespace core {
namespace {

using View = std::basic_string_view<char16_t>;
using CaseMask = ProcessedMask<CaseRepresentor>;
using NoCaseMask = ProcessedMask<NoCaseRepresentor>;

template <class Mask>
std::shared_ptr<ILikeMask> compile(View mask, char16_t escape, const CharacterOrderPtr& order) {
    ORB_ASSERT(order);
    return std::make_shared<Mask>(mask, escape, order);
}

template <class Mask>
bool compare(View text, View mask, char16_t escape, const CharacterOrderPtr& order) {
    ORB_ASSERT(order);
    return Mask(mask, escape, order).match(text);
}

} // namespace

ILikeMask::~ILikeMask() = default;

std::shared_ptr<ILikeMask> create_like_mask(const View& mask, char16_t escape,
                                            const CharacterOrderPtr& order) {
    return compile<CaseMask>(mask, escape, order);
}

std::shared_ptr<ILikeMask> create_like_mask_nocase(const View& mask, char16_t escape,
                                                   const CharacterOrderPtr& order) {
    return compile<NoCaseMask>(mask, escape, order);
}

// The five forms of a comparison.
#define ORB_DEFINE_COMPARE_LIKE(function, Mask)                                                    \
    bool function(View text, View mask, char16_t escape, const CharacterOrderPtr& order) {         \
        return compare<Mask>(text, mask, escape, order);                                           \
    }                                                                                              \
    bool function(const char16_t* text, const char16_t* mask, char16_t escape) {                   \
        return compare<Mask>(text, mask, escape, system_character_order());                        \
    }                                                                                              \
    bool function(const char16_t* text, unsigned int textLength, const char16_t* mask,             \
                  char16_t escape) {                                                               \
        return compare<Mask>({text, textLength}, mask, escape, system_character_order());          \
    }                                                                                              \
    bool function(const char16_t* text, const char16_t* mask, unsigned int maskLength,             \
                  char16_t escape) {                                                               \
        return compare<Mask>(text, {mask, maskLength}, escape, system_character_order());          \
    }                                                                                              \
    bool function(const char16_t* text, unsigned int textLength, const char16_t* mask,             \
                  unsigned int maskLength, char16_t escape) {                                      \
        return compare<Mask>({text, textLength}, {mask, maskLength}, escape,                       \
                             system_character_order());                                            \
    }

ORB_DEFINE_COMPARE_LIKE(compare_like, CaseMask)
ORB_DEFINE_COMPARE_LIKE(compare_nocase_like, NoCaseMask)

#undef ORB_DEFINE_COMPARE_LIKE

} // namespace core
