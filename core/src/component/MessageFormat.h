// Fills a message: each "%s" takes the next argument, in the caller's order.
//
//   format_message(load_core_wstring("IDS_ERR_LOAD_COMPONENT_1"), from_utf8(name))
//
// Placeholders without an argument stay, arguments without a placeholder are dropped, and what an
// argument brings in is text, also when it looks like a placeholder.
#pragma once

#include <elm/string>

#include <initializer_list>
#include <string_view>

namespace core {

stdx::ustring fill_message(std::u16string_view text,
                           std::initializer_list<std::u16string_view> arguments);

template <class... Texts>
stdx::ustring format_message(const stdx::ustring& text, const Texts&... arguments) {
    return fill_message(text, {std::u16string_view(arguments)...});
}

} // namespace core
