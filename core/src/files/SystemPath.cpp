#include "SystemPath.h"

#include <core/component/Utf8.h>
#include <core/text/Converter.h>

#include <algorithm>
#include <utility>

namespace core {

bool to_system_path(const stdx::ustring& path, stdx::string& bytes) {
    if (path.find(u'\0') != path.npos) return false;
    bytes = narrow(path);
    // What the encoding lacks has become a question mark, which would name another file.
    return std::ranges::count(std::as_const(path), u'?') ==
           std::ranges::count(std::as_const(bytes), '?');
}

stdx::ustring from_system_path(std::string_view bytes) {
    try {
        return Converter::system().widen(bytes.data(), static_cast<unsigned>(bytes.size()));
    } catch (const ConverterException&) {
        return from_utf8(bytes);
    }
}

} // namespace core
