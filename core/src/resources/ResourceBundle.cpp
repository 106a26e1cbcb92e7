#include <core/resources/ResourceBundle.h>

#include "platform/OwnLibrary.h"

#include <unicode/uloc.h>
#include <unicode/ures.h>

#include <algorithm>

namespace core {
namespace {

constexpr char kRoot[] = "root";

// The id without keywords, in its standard form. An id goes into the name of a file: what holds
// other characters than ids do becomes the root.
std::string base_locale(const char* locale) {
    char id[ULOC_FULLNAME_CAPACITY];
    UErrorCode status = U_ZERO_ERROR;
    const int length = uloc_getBaseName(locale ? locale : "", id, sizeof id, &status);
    if (U_FAILURE(status) || status == U_STRING_NOT_TERMINATED_WARNING || length == 0) return kRoot;
    const auto belongs = [](char c) {
        return c == '_' || (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ||
               (c >= 'a' && c <= 'z');
    };
    return std::all_of(id, id + length, belongs) ? std::string(id) : std::string(kRoot);
}

std::string parent_of(const std::string& locale) {
    char id[ULOC_FULLNAME_CAPACITY];
    UErrorCode status = U_ZERO_ERROR;
    const int length = uloc_getParent(locale.c_str(), id, sizeof id, &status);
    return U_FAILURE(status) || length == 0 ? std::string(kRoot) : std::string(id);
}

} // namespace

SCOM_ResourceBundle::SCOM_ResourceBundle(const char* name)
    : SCOM_ResourceBundle(name, resource_directory()) {}

SCOM_ResourceBundle::SCOM_ResourceBundle(const char* name, const std::string& directory)
    : name_(name), path_(directory + name) {}

SCOM_ResourceBundle::~SCOM_ResourceBundle() {
    cleanup();
}

// Opened directly: the ordinary way would fall back to the locale of the machine.
UResourceBundle* SCOM_ResourceBundle::open(const std::string& locale) {
    if (const auto known = files_.find(locale); known != files_.end()) return known->second;
    const auto place = files_.emplace(locale, nullptr).first;
    UErrorCode status = U_ZERO_ERROR;
    place->second = ures_openDirect(path_.c_str(), locale.c_str(), &status);
    if (U_FAILURE(status)) place->second = nullptr; // nothing was opened
    return place->second;
}

template <class Visit> bool SCOM_ResourceBundle::search(const char* locale, Visit&& visit) {
    for (std::string id = base_locale(locale);; id = parent_of(id)) {
        UResourceBundle* const file = open(id);
        if (file && visit(file)) return true;
        if (id == kRoot) return false;
    }
}

const char16_t* SCOM_ResourceBundle::getString(const char* key, const char* locale,
                                               unsigned& length) {
    const char16_t* text = nullptr;
    length = 0;
    if (!key) return text;
    const std::lock_guard lock(mutex_);
    search(locale, [&](UResourceBundle* file) {
        std::int32_t units = 0;
        UErrorCode status = U_ZERO_ERROR;
        const char16_t* const found = ures_getStringByKey(file, key, &units, &status);
        if (U_FAILURE(status)) return false;
        text = found;
        length = static_cast<unsigned>(units);
        return true;
    });
    return text;
}

const std::byte* SCOM_ResourceBundle::getBinary(const char* key, const char* locale,
                                                unsigned& length) {
    const std::byte* bytes = nullptr;
    length = 0;
    if (!key) return bytes;
    const std::lock_guard lock(mutex_);
    search(locale, [&](UResourceBundle* file) {
        UErrorCode status = U_ZERO_ERROR;
        UResourceBundle* const item = ures_getByKey(file, key, nullptr, &status);
        std::int32_t size = 0;
        const std::uint8_t* const found = ures_getBinary(item, &size, &status);
        ures_close(item); // the bytes belong to the file
        if (U_FAILURE(status)) return false;
        bytes = reinterpret_cast<const std::byte*>(found);
        length = static_cast<unsigned>(size);
        return true;
    });
    return bytes;
}

bool SCOM_ResourceBundle::exists(const char* locale) {
    const std::lock_guard lock(mutex_);
    return search(locale, [](UResourceBundle*) { return true; });
}

void SCOM_ResourceBundle::cleanup() noexcept {
    const std::lock_guard lock(mutex_);
    for (const auto& [locale, file] : files_) ures_close(file); // which ignores null
    files_.clear();
}

const std::string& resource_directory() {
    static const auto& directory = *new std::string(own_library_directory() + "orbcore/messages/");
    return directory;
}

} // namespace core
