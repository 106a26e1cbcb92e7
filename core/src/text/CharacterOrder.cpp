#include <core/text/CharacterOrder.h>

#include <unicode/ucol.h>

namespace core {
namespace {

// ICU's collators compare safely on several threads as long as nobody changes their settings.
class IcuOrder final : public CharacterOrder {
public:
    // Without locale data there is no collator.
    explicit IcuOrder(const char* locale) {
        UErrorCode error = U_ZERO_ERROR;
        collator_.reset(ucol_open(locale, &error));
        if (collator_) ucol_setStrength(collator_.get(), UCOL_TERTIARY);
    }

    int compare(char16_t a, char16_t b) const noexcept override {
        if (!collator_) return int{a} - int{b};
        return ucol_strcoll(collator_.get(), &a, 1, &b, 1);
    }

private:
    struct Close {
        void operator()(UCollator* collator) const noexcept { ucol_close(collator); }
    };
    std::unique_ptr<UCollator, Close> collator_;
};

} // namespace

CharacterOrder::~CharacterOrder() = default;

CharacterOrderPtr open_character_order(const char* locale) {
    return std::make_shared<IcuOrder>(locale);
}

} // namespace core
