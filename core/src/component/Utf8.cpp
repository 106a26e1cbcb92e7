#include <core/component/Utf8.h>

#include <unicode/ustring.h>

#include <new>

namespace core {
namespace {

constexpr UChar32 kReplacement = 0xfffd;

std::int32_t checked_length(std::size_t length) {
    if (length > 0x2aaaaaaa) throw std::bad_alloc(); // three bytes for each unit must be countable
    return static_cast<std::int32_t>(length);
}

} // namespace

stdx::ustring from_utf8(std::string_view text) {
    stdx::ustring out;
    out._resize_nofill(
        static_cast<unsigned>(checked_length(text.size()))); // never more units than bytes
    std::int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(out.data(), static_cast<std::int32_t>(out.size()), &length, text.data(),
                         static_cast<std::int32_t>(text.size()), kReplacement, nullptr, &status);
    out.resize(static_cast<unsigned>(length));
    return out;
}

stdx::string to_utf8(std::u16string_view text) {
    stdx::string out;
    out._resize_nofill(static_cast<unsigned>(checked_length(text.size())) * 3);
    std::int32_t length = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8WithSub(out.data(), static_cast<std::int32_t>(out.size()), &length, text.data(),
                       static_cast<std::int32_t>(text.size()), kReplacement, nullptr, &status);
    out.resize(static_cast<unsigned>(length));
    return out;
}

} // namespace core
