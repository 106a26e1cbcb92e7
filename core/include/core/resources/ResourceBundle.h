// The texts and binaries of one module, in all languages that there are.
//
//   core::SCOM_ResourceBundle bundle("counter");
//   unsigned length = 0;
//   const char16_t* text = bundle.getString(key, "ru_RU", length);
//
// A bundle is a folder of compiled files, one a locale: "root.res", which everything falls back to,
// "ru.res" and so on. It lies in `resource_directory()` under the name of the bundle. What a locale
// does not hold is looked for in the language alone and then in the root.
//
// All functions are safe on any thread; files are opened at the first question in their locale and
// stay mapped until `cleanup`.
#pragma once

#include <core/locale/Locale.h>
#include <core/platform/api.h>
#include <elm/string>

#include <cstddef>
#include <functional>
#include <map>
#include <mutex>
#include <string>

struct UResourceBundle;

namespace core {

class ORBCORE_API SCOM_ResourceBundle {
public:
    explicit SCOM_ResourceBundle(const char* name);
    // In another directory than that of this library; `directory` ends with a slash.
    SCOM_ResourceBundle(const char* name, const std::string& directory);
    ~SCOM_ResourceBundle();
    SCOM_ResourceBundle(const SCOM_ResourceBundle&) = delete;
    SCOM_ResourceBundle& operator=(const SCOM_ResourceBundle&) = delete;

    const char* name() const noexcept { return name_.c_str(); }

    // UTF-16 text or bytes in the bundle, valid until `cleanup`; null when the key is missing,
    // which leaves `length` 0. `locale` is a locale id such as "ru_RU"; "", "root" and what is no
    // locale id mean the root.
    const char16_t* getString(const char* key, const char* locale, unsigned& length);
    const std::byte* getBinary(const char* key, const char* locale, unsigned& length);
    const char16_t* getString(const char* key, const Locale& locale, unsigned& length) {
        return getString(key, locale.key(), length);
    }
    const std::byte* getBinary(const char* key, const Locale& locale, unsigned& length) {
        return getBinary(key, locale.key(), length);
    }

    // Whether there is any file of the bundle for the locale or what it falls back to.
    bool exists(const char* locale);

    // Closes the files: all that was given out becomes invalid.
    void cleanup() noexcept;

private:
    // Calls `visit` with the open file of the locale, then with those of what it falls back to,
    // until one answers true. The caller holds the mutex.
    template <class Visit> bool search(const char* locale, Visit&& visit);
    UResourceBundle* open(const std::string& locale);

    const std::string name_;
    const std::string path_;
    std::mutex mutex_;
    std::map<std::string, UResourceBundle*, std::less<>> files_; // null: no such file
};

// Where the bundles of this library and of its components lie; ends with a slash.
ORBCORE_API const std::string& resource_directory();

} // namespace core
