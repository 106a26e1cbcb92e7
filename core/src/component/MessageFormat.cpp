#include "MessageFormat.h"

namespace core {

stdx::ustring fill_message(std::u16string_view text,
                           std::initializer_list<std::u16string_view> arguments) {
    constexpr std::u16string_view kPlaceholder = u"%s";
    stdx::ustring message;
    for (const std::u16string_view argument : arguments) {
        const std::size_t at = text.find(kPlaceholder);
        if (at == text.npos) break;
        message.append(text.substr(0, at)).append(argument);
        text.remove_prefix(at + kPlaceholder.size());
    }
    return message.append(text);
}

} // namespace core
