#include <core/locale/Collator.h>

#include "PerLocale.h"
#include "QuickOrder.h"

#include <unicode/ucol.h>

#include <memory>
#include <new>
#include <stdexcept>

namespace core {
namespace {

struct Close {
    void operator()(UCollator* collator) const noexcept { ucol_close(collator); }
};
using OpenCollator = std::unique_ptr<UCollator, Close>;

// ICU falls back to its root by itself; without that it has no data. Nobody changes the settings
// after this, so all threads may use the collator.
OpenCollator open(const char* locale, UCollationStrength strength) {
    UErrorCode status = U_ZERO_ERROR;
    OpenCollator collator(ucol_open(locale, &status));
    if (!collator) throw std::runtime_error("ICU has no data to order texts by");
    ucol_setStrength(collator.get(), strength);
    return collator;
}

// ICU ends keys by a zero, which is no part of ours.
stdx::string key_by(const OpenCollator& collator, std::u16string_view text) {
    const auto units = static_cast<std::int32_t>(text.size());
    std::uint8_t bytes[256];
    const int size = ucol_getSortKey(collator.get(), text.data(), units, bytes, sizeof bytes);
    if (size <= 0) throw std::bad_alloc();
    if (static_cast<std::size_t>(size) <= sizeof bytes)
        return {reinterpret_cast<const char*>(bytes), static_cast<unsigned>(size) - 1};
    stdx::string key;
    key.resize(static_cast<unsigned>(size));
    ucol_getSortKey(collator.get(), text.data(), units, reinterpret_cast<std::uint8_t*>(key.data()),
                    size);
    key.pop_back();
    return key;
}

std::u16string_view rules_of(const OpenCollator& collator) noexcept {
    std::int32_t length = 0;
    const char16_t* const rules = ucol_getRules(collator.get(), &length);
    return {rules, static_cast<std::size_t>(length)};
}

std::string_view data_of(const OpenCollator& collator) noexcept {
    UErrorCode status = U_ZERO_ERROR;
    const char* const locale = ucol_getLocaleByType(collator.get(), ULOC_ACTUAL_LOCALE, &status);
    return locale ? locale : "";
}

// Same data, or data made from the same rules; ICU's own comparison is not open to C. Data may come
// without its rules, so that two empty texts tell nothing.
bool equals(const OpenCollator& a, const OpenCollator& b) noexcept {
    if (data_of(a) != data_of(b) && (rules_of(a).empty() || rules_of(a) != rules_of(b)))
        return false;
    const auto setting = [](const OpenCollator& collator, int attribute) {
        UErrorCode status = U_ZERO_ERROR;
        return ucol_getAttribute(collator.get(), static_cast<UColAttribute>(attribute), &status);
    };
    for (int attribute = UCOL_FRENCH_COLLATION; attribute <= UCOL_NUMERIC_COLLATION; ++attribute)
        if (setting(a, attribute) != setting(b, attribute)) return false;
    return true;
}

} // namespace

class Collator::Record final : public CharacterOrder {
public:
    explicit Record(const char* locale)
        : tertiary(open(locale, UCOL_TERTIARY)),
          secondary(open(locale, UCOL_SECONDARY)),
          quick_(open(locale, UCOL_PRIMARY).get(), secondary.get(), tertiary.get()) {}

    int compare(char16_t a, char16_t b) const noexcept override {
        return compare(&a, 1, &b, 1, true);
    }

    int compare(const char16_t* a, std::size_t lengthA, const char16_t* b, std::size_t lengthB,
                bool byCase) const noexcept {
        const int quick = quick_.compare(a, lengthA, b, lengthB, byCase);
        if (quick != QuickOrder::kUnknown) return quick;
        return ucol_strcoll((byCase ? tertiary : secondary).get(), a,
                            static_cast<std::int32_t>(lengthA), b,
                            static_cast<std::int32_t>(lengthB));
    }

    const OpenCollator tertiary;
    const OpenCollator secondary;
    // No owner: records are kept for ever.
    const CharacterOrderPtr order{std::shared_ptr<void>(), this};

private:
    const QuickOrder quick_;
};

Collator::Collator(const Locale& locale) {
    static constinit PerLocale<const Record> records;
    record_ = &records.of(locale, [&] { return new Record(locale.key()); });
}

int Collator::compare(const char16_t* a, std::size_t lengthA, const char16_t* b,
                      std::size_t lengthB) const noexcept {
    return record_->compare(a, lengthA, b, lengthB, true);
}

int Collator::compareNocase(const char16_t* a, std::size_t lengthA, const char16_t* b,
                            std::size_t lengthB) const noexcept {
    return record_->compare(a, lengthA, b, lengthB, false);
}

stdx::string Collator::transform(std::u16string_view text) const {
    return key_by(record_->tertiary, text);
}

stdx::string Collator::transformNocase(std::u16string_view text) const {
    return key_by(record_->secondary, text);
}

Collator::operator const CharacterOrderPtr&() const noexcept {
    return record_->order;
}

bool operator==(const Collator& a, const Collator& b) noexcept {
    return a.record_ == b.record_ || (equals(a.record_->tertiary, b.record_->tertiary) &&
                                      equals(a.record_->secondary, b.record_->secondary));
}

const CharacterOrderPtr& system_character_order() {
    return Collator(Locale());
}

} // namespace core
