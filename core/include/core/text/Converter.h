// Text between UTF-16, which the library works in, and a named encoding, whole strings at a time.
//
//   const core::Converter cyrillic(u"windows-1251");
//   const stdx::ustring text = cyrillic.widen(bytes, size);
//   const stdx::string back = cyrillic.narrow(text.c_str());
//   const stdx::string path = core::narrow(url);              // in the encoding of the system
//
// Any name is good that ICU knows, in any case and with any separators; a list of options may stand
// behind it ("ISO-2022-JP,version=1"). `StreamConverter.h` converts what arrives in pieces,
// `EncodingTester.h` asks whether a text fits an encoding.
//
// To bytes, a conversion does not fail on text: a character that the encoding lacks, and half of a
// surrogate pair, becomes "?" (U+FFFD in UTF-16 and UTF-32, which have no single byte for it). To
// text it does: bytes that are none in the encoding throw ConverterException. A byte-order mark is
// a character like any other in the encodings that name their byte order and in UTF-8.
//
// A converter may be used by many threads at a time and is cheap to copy. UTF-8, UTF-16 of a named
// byte order and all encodings of one byte a character go by vector or table and need no state. The
// others use a converter of ICU's that the calling `core::Thread` opens once and keeps to its end;
// on a foreign thread it is opened for each call.
#pragma once

#include <core/platform/api.h>
#include <core/text/ConverterException.h>
#include <elm/string>

#include <memory>

namespace core {

struct Encoding;

class ORBCORE_API Converter {
public:
    // Whose names `standardName` gives.
    enum class Standard : unsigned {
        UTR22 = 0,
        IBM = 1,
        Windows = 2,
        Java = 3,
        IANA = 4,
        MIME = 5,
        None = 6, // names that no standard has
    };

    // Throws ConverterException with Error::BadName for null and for a name that is not known. A
    // name that was used before costs a search under a reader lock.
    explicit Converter(const char16_t* name);
    explicit Converter(const stdx::ustring& name);

    // ICU's own name of the encoding.
    const stdx::ustring& name() const noexcept;

    // To the encoding. Throws std::bad_alloc, also where the result would pass 2^31 - 1 bytes.
    stdx::string narrow(const char16_t* text) const;
    stdx::string narrow(const char16_t* text, unsigned length) const;

    // From the encoding. Throws ConverterException with Error::BadData for bytes that are no text
    // in it, a character that the end cuts off included, and std::bad_alloc.
    stdx::ustring widen(const char* bytes) const;
    stdx::ustring widen(const char* bytes, unsigned length) const;

    // The encoding of the system's locale: of the program's `LC_CTYPE` as it is at the first call,
    // of the environment's if the program has set none; UTF-8 where both are the "C" locale.
    static const Converter& system();
    static const Converter& utf8();
    static const Converter& ascii();

    // The length of the Unicode signature that the bytes begin with, and the name of its encoding;
    // 0 and the empty name if there is none. The second form takes bytes up to a zero.
    static unsigned detectUnicodeSignature(const char* bytes, unsigned length, stdx::ustring& name);
    static unsigned detectUnicodeSignature(const char* bytes, stdx::ustring& name);

    // The name of an encoding in a standard; empty if either is not known, or the standard has none.
    static stdx::ustring standardName(const stdx::ustring& name, Standard standard);

    // 0 if the names are equal but for case, separators and zeros in front of a number; otherwise
    // their order.
    static int compareEncodingNames(const stdx::ustring& a, const stdx::ustring& b);

private:
    static const Converter& s_utf8Converter;

    explicit Converter(std::shared_ptr<const Encoding> encoding) noexcept;

    std::shared_ptr<const Encoding> encoding_; // the row of the table of names
    stdx::ustring name_;                       // as it was given
};

// To the encoding of the system.
ORBCORE_API stdx::string narrow(const stdx::ustring& text);

} // namespace core
