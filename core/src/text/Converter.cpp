// Whole texts: by kernel where the encoding has one, otherwise by the thread's converter of ICU's.
#include <core/text/Converter.h>

#include <core/component/Utf8.h>

#include "ConverterTable.h"
#include "UtfRuns.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <optional>
#include <string>

#include <langinfo.h>
#include <locale.h>

namespace core {
namespace {

// Most texts are converted on the stack and get a string of their size.
constexpr std::size_t kStackBytes = 8192;
constexpr std::size_t kLongest = 0x7FFFFFFF; // units of a string; what ICU can count

template <class T> using StringOf = elm::BasicString<T, 0u, 0u, std::allocator>;

// ---- By kernel.

void run(const ConverterKernel& kernel, Widening& text) {
    kernel.widen(text);
}

void run(const ConverterKernel& kernel, Narrowing& text) {
    const std::string_view substitute = kernel.substitute();
    for (;;) {
        kernel.narrow(text);
        if (text.in == text.inEnd || !is_surrogate(*text.in) || is_full(text)) return;
        text.in += is_pair(text.in, text.inEnd) ? 2 : 1;
        text.out = std::copy(substitute.begin(), substitute.end(), text.out);
    }
}

// Room for the rest of a text, as large as the beginning makes it likely and a little more.
std::size_t likely_size(std::size_t taken, std::size_t made, std::size_t left) {
    const std::size_t rest = left * made / taken;
    return std::min(made + rest + rest / 16 + 64, kLongest);
}

// Nothing for input that is no text.
template <class To, class From>
std::optional<StringOf<To>> convert(const ConverterKernel& kernel, const From* in,
                                    std::size_t size) {
    constexpr std::size_t kOnStack = kStackBytes / sizeof(To);
    To buffer[kOnStack];
    Conversion<From, To> text{in, in + size, buffer, buffer + kOnStack};
    run(kernel, text);
    auto made = static_cast<unsigned>(text.out - buffer);
    StringOf<To> result(buffer, made);
    while (text.in != text.inEnd) {
        if (!is_full(text)) return {};
        const auto left = static_cast<std::size_t>(text.inEnd - text.in);
        const auto room = static_cast<unsigned>(likely_size(size - left, made, left));
        if (room - made < kLongestCharacter) throw std::bad_alloc();
        result._resize_nofill(made);
        result.reserve(room);
        result._resize_nofill(room);
        text.out = result.data() + made;
        text.outEnd = result.data() + room;
        run(kernel, text);
        made = static_cast<unsigned>(text.out - result.data());
    }
    // A text may live long: it keeps no more than an eighth too much.
    if (result.size() - made > result.size() / 8) return StringOf<To>(result.data(), made);
    result._resize_nofill(made);
    return result;
}

// ---- By ICU.

// `call(out, room, status)` converts the whole text and gives its length, room or not.
template <class To, class Call> std::optional<StringOf<To>> convert_by_icu(const Call& call) {
    constexpr int kOnStack = kStackBytes / sizeof(To);
    To buffer[kOnStack];
    UErrorCode status = U_ZERO_ERROR;
    auto length = static_cast<unsigned>(call(buffer, kOnStack, &status));
    if (U_SUCCESS(status)) return StringOf<To>(buffer, length);
    if (status != U_BUFFER_OVERFLOW_ERROR) return {};
    // Past a full room, some of ICU's converters count a little too few.
    StringOf<To> result;
    for (std::size_t room = length; status == U_BUFFER_OVERFLOW_ERROR; room = length) {
        room = std::min(room + room / 128 + 64, kLongest);
        result._resize_nofill(static_cast<unsigned>(room));
        status = U_ZERO_ERROR;
        length = static_cast<unsigned>(call(result.data(), static_cast<int>(room), &status));
    }
    if (U_FAILURE(status)) return {};
    result._resize_nofill(length);
    return result;
}

// The length of a text as ICU counts it, where each unit may give as many.
int countable(std::size_t size, std::size_t each) {
    if (size > kLongest / each) throw std::bad_alloc();
    return static_cast<int>(size);
}

template <class T> unsigned length_of(const T* text) {
    const std::size_t length = text ? std::char_traits<T>::length(text) : 1; // null is no text
    if (length > kLongest) throw std::bad_alloc();
    return static_cast<unsigned>(length);
}

// ---- The encoding of the system.

// Nothing for a codeset that ICU does not know, and for that of the "C" locale: it is what a
// program has that nobody gave a locale.
std::optional<Converter> converter_of(const char* codeset) {
    try {
        Converter converter(from_utf8(codeset));
        if (converter.name() != stdx::ustring(u"US-ASCII")) return converter;
    } catch (const ConverterException&) {}
    return {};
}

Converter system_converter() {
    std::optional<Converter> converter = converter_of(nl_langinfo(CODESET));
    if (!converter) {
        if (const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr)) {
            converter = converter_of(nl_langinfo_l(CODESET, locale));
            freelocale(locale);
        }
    }
    return converter.value_or(Converter::utf8());
}

} // namespace

const Converter& Converter::s_utf8Converter = utf8();

Converter::Converter(const char16_t* name)
    : Converter(name ? stdx::ustring(name) : stdx::ustring()) {}

Converter::Converter(const stdx::ustring& name)
    : encoding_(find_encoding(name.view())), name_(name) {}

Converter::Converter(std::shared_ptr<const Encoding> encoding) noexcept
    : encoding_(std::move(encoding)), name_(encoding_->name) {}

const stdx::ustring& Converter::name() const noexcept {
    return encoding_->name;
}

stdx::string Converter::narrow(const char16_t* text) const {
    return narrow(text, length_of(text));
}

stdx::string Converter::narrow(const char16_t* text, unsigned length) const {
    if (length == 0) return {};
    std::optional<stdx::string> bytes;
    if (!text) {
        // Stays nothing.
    } else if (const ConverterKernel* const kernel = encoding_->kernel) {
        bytes = convert<char>(*kernel, text, length);
    } else {
        const int size = countable(length, encoding_->maxCharSize);
        const ThreadConverter converter(*encoding_);
        bytes = convert_by_icu<char>([&](char* out, int room, UErrorCode* status) {
            return ucnv_fromUChars(converter.get(), out, room, text, size, status);
        });
    }
    if (!bytes) throw ConverterException(ConverterException::Error::BadData, name_);
    return *std::move(bytes);
}

stdx::ustring Converter::widen(const char* bytes) const {
    return widen(bytes, length_of(bytes));
}

stdx::ustring Converter::widen(const char* bytes, unsigned length) const {
    if (length == 0) return {};
    std::optional<stdx::ustring> text;
    if (!bytes) {
        // Stays nothing.
    } else if (const ConverterKernel* const kernel = encoding_->kernel) {
        text = convert<char16_t>(*kernel, bytes, length);
    } else {
        const int size = countable(length, 2); // SCSU makes pairs of single bytes
        const ThreadConverter converter(*encoding_);
        text = convert_by_icu<char16_t>([&](char16_t* out, int room, UErrorCode* status) {
            return ucnv_toUChars(converter.get(), out, room, bytes, size, status);
        });
    }
    if (!text) throw ConverterException(ConverterException::Error::BadData, name_);
    return *std::move(text);
}

const Converter& Converter::system() {
    static const Converter& converter = *new Converter(system_converter());
    return converter;
}

const Converter& Converter::utf8() {
    static const Converter& converter = *new Converter(utf8_encoding()); // others use it at exit
    return converter;
}

const Converter& Converter::ascii() {
    static const Converter& converter = *new Converter(u"US-ASCII");
    return converter;
}

unsigned Converter::detectUnicodeSignature(const char* bytes, unsigned length,
                                           stdx::ustring& name) {
    constexpr unsigned kEnough = 16; // no signature is longer
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t size = 0;
    const char* const found =
        bytes ? ucnv_detectUnicodeSignature(bytes, static_cast<int>(std::min(length, kEnough)),
                                            &size, &status)
              : nullptr;
    name = found ? from_utf8(found) : stdx::ustring();
    return found ? static_cast<unsigned>(size) : 0;
}

unsigned Converter::detectUnicodeSignature(const char* bytes, stdx::ustring& name) {
    return detectUnicodeSignature(bytes, bytes ? static_cast<unsigned>(strnlen(bytes, 16)) : 0,
                                  name);
}

stdx::ustring Converter::standardName(const stdx::ustring& name, Standard standard) {
    static constexpr const char* kStandards[] = {"UTR22", "IBM",  "WINDOWS", "JAVA",
                                                 "IANA",  "MIME", ""};
    const auto number = static_cast<std::size_t>(standard);
    if (number >= std::size(kStandards)) return {};
    UErrorCode status = U_ZERO_ERROR;
    const char* const found =
        ucnv_getStandardName(to_utf8(name.view()).c_str(), kStandards[number], &status);
    return U_SUCCESS(status) && found ? from_utf8(found) : stdx::ustring();
}

int Converter::compareEncodingNames(const stdx::ustring& a, const stdx::ustring& b) {
    return ucnv_compareNames(to_utf8(a.view()).c_str(), to_utf8(b.view()).c_str());
}

stdx::string narrow(const stdx::ustring& text) {
    return Converter::system().narrow(text.data(), text.size());
}

} // namespace core
