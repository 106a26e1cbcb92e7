// The percent escapes of URLs (RFC 3986, 2.1).
#pragma once

#include <core/text/Characters.h>

#include <string_view>

namespace core {

// The value of the two digits behind the "%" at `sign`, 0 to 255; -1 where there are none.
inline int percent_code(std::u16string_view text, std::size_t sign) noexcept {
    if (text.size() - sign < 3 || text[sign + 1] > 127 || text[sign + 2] > 127) return -1;
    const int high = xdigit(text[sign + 1]), low = xdigit(text[sign + 2]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

} // namespace core
