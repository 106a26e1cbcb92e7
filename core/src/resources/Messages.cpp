#include <core/component/Messages.h>

#include <core/component/Module.h>
#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>
#include <core/locale/Locale.h>
#include <core/resources/ResourceBundle.h>

#include <algorithm>
#include <string_view>

namespace core {
namespace {

constexpr char kCoreModule[] = "core";

struct KeyName {
    std::u16string_view mark;
    std::u16string_view name;
};
constexpr KeyName kKeyNames[] = {
    {u"%ALT%", u"Alt"},
    {u"%CTRL%", u"Ctrl"},
    {u"%SHIFT%", u"Shift"},
};

void expand_key_names(stdx::ustring& text) {
    for (const KeyName& row : kKeyNames)
        for (unsigned at = 0; (at = text.find(row.mark, at)) != text.npos;
             at += static_cast<unsigned>(row.name.size()))
            text.replace(at, static_cast<unsigned>(row.mark.size()), row.name);
}

// Separators in a row count as one, and at the ends they count for nothing.
std::u16string_view part_of(std::u16string_view text, int number, char16_t separator) {
    for (std::size_t begin = 0; number >= 0; --number) {
        begin = text.find_first_not_of(separator, begin);
        if (begin == text.npos) break;
        const std::size_t end = std::min(text.find(separator, begin), text.size());
        if (number == 0) return text.substr(begin, end - begin);
        begin = end;
    }
    return {};
}

} // namespace

stdx::ustring load_wstring(SCOM_ResourceBundle* bundle, const char* key, bool expand) {
    if (!key) return {};
    const Locale locale = resource_locale();
    if (!bundle || !bundle->exists(locale.key())) return from_utf8(key);
    unsigned length = 0;
    const char16_t* const found = bundle->getString(key, locale, length);
    stdx::ustring text = found ? stdx::ustring(found, length) : stdx::ustring();
    if (expand) expand_key_names(text);
    return text;
}

stdx::ustring load_core_wstring(const char* key, bool expand) {
    return load_wstring(this_module().resourceBundle(), key, expand);
}

stdx::ustring load_module_wstring(const char* module, const char* key, bool expand) {
    if (module && std::string_view(module) == kCoreModule) return load_core_wstring(key, expand);
    SCOM_Process* const process = current_process();
    return load_wstring(process && module ? process->findResourceBundle(module) : nullptr, key,
                        expand);
}

stdx::ustring load_module_part_wstring(const char* module, const char* key, int part, bool expand) {
    const stdx::ustring text = load_module_wstring(module, key, expand);
    return stdx::ustring(part_of(text, part, u'\n'));
}

} // namespace core
