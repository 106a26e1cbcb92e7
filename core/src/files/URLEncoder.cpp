#include <core/files/URLEncoder.h>

#include <core/files/URLParse.h>
#include <core/text/Converter.h>

#include "files/PercentCode.h"

#include <unicode/uidna.h>

#include <algorithm>
#include <new>

namespace core {
namespace {

constexpr std::u16string_view kPlainUnits =
    u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz-._~!#$%&'()*+,/:;=?@[]";
constexpr UnitSet kUnreserved(kPlainUnits.substr(0, kPlainUnits.find(u'!')));
constexpr UnitSet kUnreservedInURL(kPlainUnits);

stdx::ustring encode_except(const stdx::ustring& text, const Converter& converter,
                            const UnitSet& plainUnits) {
    static constexpr char16_t kDigits[] = u"0123456789ABCDEF";
    const auto plain = [&](char16_t c) { return plainUnits.contains(c); };
    stdx::ustring encoded;
    for (const char16_t *at = text.cbegin(), *const end = text.cend(); at != end;) {
        const char16_t* const special = std::find_if_not(at, end, plain);
        encoded.append(at, special);
        // Runs go through the converter whole: a character may take two units.
        at = std::find_if(special, end, plain);
        if (special == at) continue;
        const stdx::string bytes = converter.narrow(special, static_cast<unsigned>(at - special));
        const unsigned former = encoded.size();
        const std::uint64_t size = former + std::uint64_t{3} * bytes.size();
        if (size > encoded.max_size()) throw std::bad_alloc();
        encoded.resize(static_cast<unsigned>(size));
        char16_t* to = encoded.data() + former;
        for (const char byte : bytes.view()) {
            const auto code = static_cast<unsigned char>(byte);
            *to++ = u'%';
            *to++ = kDigits[code >> 4];
            *to++ = kDigits[code & 15];
        }
    }
    return encoded;
}

using IdnaConversion = std::int32_t (*)(const char16_t*, std::int32_t, char16_t*, std::int32_t,
                                        std::int32_t, UParseError*, UErrorCode*);

bool convert_host(IdnaConversion convert, const stdx::ustring& in, stdx::ustring& out) {
    const auto run = [&](char16_t* to, std::int32_t capacity, UErrorCode& status) {
        return convert(in.c_str(), static_cast<std::int32_t>(in.size()), to, capacity,
                       UIDNA_ALLOW_UNASSIGNED, nullptr, &status);
    };
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length = run(nullptr, 0, status);
    if (U_FAILURE(status) && status != U_BUFFER_OVERFLOW_ERROR) return false;
    stdx::ustring converted;
    converted.resize(static_cast<unsigned>(length));
    status = U_ZERO_ERROR;
    if (length != 0) run(converted.data(), length, status);
    if (U_FAILURE(status)) return false;
    out = std::move(converted);
    return true;
}

} // namespace

stdx::ustring URLEncoder::encode(const stdx::ustring& text, const Converter& converter) {
    return encode_except(text, converter, kUnreserved);
}

stdx::ustring URLEncoder::encodeURL(const stdx::ustring& text, const Converter& converter) {
    return encode_except(text, converter, kUnreservedInURL);
}

stdx::ustring URLEncoder::decode(const stdx::ustring& text, const Converter& converter) {
    const std::u16string_view from = text;
    stdx::ustring decoded;
    stdx::string bytes;
    for (std::size_t position = 0; position != from.size();) {
        bytes.clear();
        for (int code; position != from.size() && from[position] == u'%' &&
                       (code = percent_code(from, position)) >= 0;
             position += 3)
            bytes += static_cast<char>(code);
        if (!bytes.empty()) decoded += converter.widen(bytes.c_str(), bytes.size());
        if (position == from.size()) break;
        const std::size_t end = std::min(from.find(u'%', position + 1), from.size());
        decoded += from.substr(position, end - position);
        position = end;
    }
    return decoded;
}

// The rules of 2003, which names were registered by, live in the older functions alone.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

bool idna_to_ASCII(const stdx::ustring& in, stdx::ustring& out) {
    return convert_host(uidna_IDNToASCII, in, out);
}

bool idna_to_Unicode(const stdx::ustring& in, stdx::ustring& out) {
    return convert_host(uidna_IDNToUnicode, in, out);
}

#pragma GCC diagnostic pop

bool looksLikeIPv6(const stdx::ustring& text) noexcept {
    return text.view().find(u':') != std::u16string_view::npos;
}

} // namespace core
