// The words that begin an attachment in a text.
#pragma once

#include <string_view>

namespace core {

inline constexpr std::u16string_view kBase64Attachment = u"#base64:";
inline constexpr std::u16string_view kOldAttachment = u"#data:"; // read only
inline constexpr unsigned kBase64LineLength = 64;

} // namespace core
