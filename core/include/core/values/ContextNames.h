// Names of members: what may be one, and the way between a name and a text for people.
//
//   core::is_valid_name(u"НомерСчёта");                 // true
//   core::synonym_to_name(u" номер счёта ");            // u"НомерСчёта"
//   core::name_to_synonym(u"НомерСчёта");               // u"Номер счёта"
//
// Letters and digits are those of Unicode, unit by unit. All functions are safe on any thread.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

namespace core {

// A letter or "_", then letters, digits and "_".
ORBCORE_API bool is_valid_name(const char16_t* begin, const char16_t* end) noexcept;
inline bool is_valid_name(const stdx::ustring& name) noexcept {
    return is_valid_name(name.data(), name.data() + name.size());
}
// Names with dots between them.
ORBCORE_API bool is_valid_path(const char16_t* begin, const char16_t* end) noexcept;

// Cuts white space off, drops what is inside and makes a capital of what follows it, and of the
// beginning; what cannot stand in a name becomes "_". Gives a valid name, or "" for "".
ORBCORE_API stdx::ustring synonym_to_name(const stdx::ustring& synonym);

// Words begin at capitals and behind "_". Those after the first begin small, but for words in
// capitals: "КодИНН" is "Код ИНН", "HTTPServer2" is "HTTP server2".
ORBCORE_API stdx::ustring name_to_synonym(const stdx::ustring& name);

} // namespace core
