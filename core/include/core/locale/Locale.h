// One of a closed list of 273 locales, with the code pages that go with it.
//
//   core::Locale russian(u"ru_RU");                    // in any case of letters
//   russian.displayName(core::Locale::invariant());    // "Russian (Russia)"
//   core::Locale current;                              // that of the process
//
// A pointer to a row of a constant table: copied for nothing, the same when the pointers are.
// Immutable, and safe on any thread. A name is language, "_", script if it needs one, "_", country,
// as ICU spells it.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

#include <concepts>
#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace core {

// A row of the table; all texts live for ever.
struct LocaleRow {
    const char16_t* name;
    const char* key; // the same name, as ICU takes it
    const char16_t* winANSIEncoding;
    const char16_t* winOEMEncoding; // null, both: the language has no code page
};

class ORBCORE_API Locale {
public:
    // The locale of the current process; without a process, the system's.
    Locale();
    // The system's locale, whatever the argument says.
    explicit Locale(std::same_as<bool> auto) noexcept : Locale(system()) {}
    // The row of the name, in any case of letters, or the row that an old name stands for. Throws
    // `LocaleException`. Two searches in tables at worst.
    explicit Locale(const char16_t* name);
    explicit Locale(const stdx::ustring& name);

    // The locale of the machine as ICU tells it, found once: its whole name or, where the table has
    // not got that, the longest beginning that the table has; else "en".
    static Locale system() noexcept;
    static Locale invariant() noexcept; // "en"

    static constexpr std::size_t kCount = 273;
    // All locales, by name.
    static std::vector<Locale> all();

    const char16_t* name() const noexcept { return row_->name; }
    const char* key() const noexcept { return row_->key; }
    // Names of encodings such as "cp-1251"; null for a language without one.
    const char16_t* winANSIEncoding() const noexcept { return row_->winANSIEncoding; }
    const char16_t* winOEMEncoding() const noexcept { return row_->winOEMEncoding; }
    // The place of the row in the table, from 0.
    std::size_t index() const noexcept;

    // The name for people who speak the language of `in`; 256 units at most.
    stdx::ustring displayName(const Locale& in) const;

    // Whether the language of a locale, which the table need not have, is written from right to
    // left.
    static bool isRTL(std::u16string_view name);

    friend bool operator==(const Locale&, const Locale&) noexcept = default;

private:
    explicit Locale(const LocaleRow& row) noexcept : row_(&row) {}

    const LocaleRow* row_;
};

// The locale that the calling thread reads texts in: its resource locale, or that of its process;
// outside threads of the library, the system's.
ORBCORE_API Locale resource_locale();

} // namespace core

template <> struct std::hash<core::Locale> {
    std::size_t operator()(const core::Locale& locale) const noexcept { return locale.index(); }
};
