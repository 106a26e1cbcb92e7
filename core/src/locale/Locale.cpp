#include <core/locale/Locale.h>

#include <core/component/SCOM_Process.h>
#include <core/locale/LocaleException.h>
#include <core/text/Compare.h>

#include "LocaleTable.h"

#include <unicode/uloc.h>

#include <algorithm>
#include <iterator>
#include <span>

namespace core {
namespace {

template <class Row>
const Row* find_row(std::span<const Row> rows, std::u16string_view name) noexcept {
    const auto row = std::lower_bound(
        rows.begin(), rows.end(), name, [](const Row& known, std::u16string_view sought) noexcept {
            return compare_nocase(std::u16string_view(known.name), sought) < 0;
        });
    const bool found =
        row != rows.end() && compare_nocase(std::u16string_view(row->name), name) == 0;
    return found ? &*row : nullptr;
}

const LocaleRow* find_locale(std::u16string_view name) noexcept {
    const auto rows = std::span(kLocaleRows).first<Locale::kCount>();
    if (const LocaleRow* const row = find_row<LocaleRow>(rows, name)) return row;
    const OldLocaleName* const old = find_row<OldLocaleName>(kOldLocaleNames, name);
    return old ? find_row<LocaleRow>(rows, old->current) : nullptr;
}

const LocaleRow& row_of(std::u16string_view name) {
    if (const LocaleRow* const row = find_locale(name)) return *row;
    throw LocaleException(stdx::ustring(name));
}

// ICU's ids are ASCII.
const LocaleRow* find_locale(std::string_view id) noexcept {
    char16_t name[ULOC_FULLNAME_CAPACITY];
    std::copy(id.begin(), id.end(), name);
    return find_locale(std::u16string_view(name, id.size()));
}

const LocaleRow& system_row() noexcept {
    char id[ULOC_FULLNAME_CAPACITY] = "";
    UErrorCode status = U_ZERO_ERROR;
    int length = uloc_getBaseName(uloc_getDefault(), id, sizeof id, &status);
    while (U_SUCCESS(status) && status != U_STRING_NOT_TERMINATED_WARNING && length > 0) {
        if (const LocaleRow* const row = find_locale({id, static_cast<std::size_t>(length)}))
            return *row;
        length = uloc_getParent(id, id, sizeof id, &status);
    }
    return *find_locale(u"en");
}

} // namespace

Locale::Locale() : row_(nullptr) {
    SCOM_Process* const process = current_process();
    *this = process ? process->getLocale() : system();
}

Locale::Locale(const char16_t* name) : row_(&row_of(name ? name : u"")) {}

Locale::Locale(const stdx::ustring& name) : row_(&row_of(name)) {}

Locale Locale::system() noexcept {
    static const LocaleRow& row = system_row();
    return Locale(row);
}

Locale Locale::invariant() noexcept {
    static const LocaleRow& row = *find_locale(u"en");
    return Locale(row);
}

std::vector<Locale> Locale::all() {
    std::vector<Locale> locales;
    locales.reserve(Locale::kCount);
    for (const LocaleRow& row : std::span(kLocaleRows).first<Locale::kCount>())
        locales.push_back(Locale(row));
    return locales;
}

std::size_t Locale::index() const noexcept {
    return static_cast<std::size_t>(row_ - kLocaleRows);
}

stdx::ustring Locale::displayName(const Locale& in) const {
    char16_t name[256];
    UErrorCode status = U_ZERO_ERROR;
    const int length = uloc_getDisplayName(key(), in.key(), name, std::size(name), &status);
    return {name, static_cast<unsigned>(std::clamp<int>(length, 0, std::size(name)))};
}

bool Locale::isRTL(std::u16string_view name) {
    char id[ULOC_FULLNAME_CAPACITY];
    const bool isId = name.size() < sizeof id &&
                      std::all_of(name.begin(), name.end(), [](char16_t c) { return c < 0x80; });
    if (!isId) return false;
    *std::copy(name.begin(), name.end(), id) = '\0';
    UErrorCode status = U_ZERO_ERROR;
    return uloc_getCharacterOrientation(id, &status) == ULOC_LAYOUT_RTL;
}

} // namespace core
