// What stands beside a URL: percent encoding of texts in any encoding, and names of hosts.
//
//   core::URLEncoder::encode(u"счёт 1", core::Converter::utf8());   // "%D1%81…%201"
//   stdx::ustring name;
//   if (core::idna_to_ASCII(u"пример.рф", name)) …                  // "xn--e1afmkfd.xn--p1ai"
//
// All functions may be called from any thread.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

namespace core {

class Converter;

// Percent encoding (RFC 3986, 2.1) of texts by the bytes of an encoding. What the converter throws
// passes: `core::ConverterException` for bytes that are no text.
class ORBCORE_API URLEncoder {
public:
    // Copies ASCII letters, digits and "-._~"; all else becomes "%" and two digits for each byte.
    static stdx::ustring encode(const stdx::ustring& text, const Converter& converter);
    // Copies "!#$%&'()*+,/:;=?@[]" too: for a text that is a URL already.
    static stdx::ustring encodeURL(const stdx::ustring& text, const Converter& converter);
    // Undoes both. A "%" without two hexadecimal digits behind it stays.
    static stdx::ustring decode(const stdx::ustring& text, const Converter& converter);
};

// A host's name between Unicode and the ASCII form of the name system (IDNA 2003, RFC 3490). False
// where the name has no such form; `out` is as it was then.
ORBCORE_API bool idna_to_ASCII(const stdx::ustring& in, stdx::ustring& out);
ORBCORE_API bool idna_to_Unicode(const stdx::ustring& in, stdx::ustring& out);

// Whether a host must stand in brackets: it contains a colon.
ORBCORE_API bool looksLikeIPv6(const stdx::ustring& text) noexcept;

} // namespace core
