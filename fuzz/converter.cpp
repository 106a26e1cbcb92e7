// Converters and stream converters beside ICU on whole texts: the first byte picks the encoding,
// the second the sizes of pieces and rooms, the rest is text in it, and UTF-16 as well.
#include "../tests/encodings/IcuOracle.h"
#include "../tests/encodings/Pieces.h"

#include <core/component/Utf8.h>
#include <core/text/Converter.h>
#include <core/text/EncodingTester.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <random>

namespace {

// Without SCSU, whose writer looks ahead as far as a piece reaches: other cuts, other bytes.
constexpr const char* kEncodings[] = {
    "UTF-8",     "UTF-16LE", "UTF-16BE",    "US-ASCII", "windows-1251", "KOI8-R", "ibm-37",
    "Shift_JIS", "gb18030",  "ISO-2022-JP", "UTF-7",    "UTF-16",       "UTF-32",
};

void expect(bool holds) {
    if (!holds) std::abort();
}

void check_widening(const char* name, std::string_view bytes, std::mt19937& sizes) {
    const auto expected = test::IcuOracle(name).widen(bytes);
    const stdx::ustring encoding = core::from_utf8(name);
    std::optional<std::u16string> whole;
    try {
        const stdx::ustring text =
            core::Converter(encoding).widen(bytes.data(), static_cast<unsigned>(bytes.size()));
        whole.emplace(text.data(), text.size());
    } catch (const core::ConverterException&) {}
    expect(whole == expected);
    core::StreamConverterToUnicode stream(encoding);
    const unsigned most = 1 + static_cast<unsigned>(sizes()) % 64;
    expect(test::in_pieces<char16_t>(stream, bytes, [&] {
               return 1 + static_cast<unsigned>(sizes()) % most;
           }) == expected);
}

void check_narrowing(const char* name, std::u16string_view text, std::mt19937& sizes) {
    const std::string expected = test::IcuOracle(name).narrow(text);
    const stdx::ustring encoding = core::from_utf8(name);
    const stdx::string whole =
        core::Converter(encoding).narrow(text.data(), static_cast<unsigned>(text.size()));
    expect(whole.view() == expected);
    core::StreamConverterFromUnicode stream(encoding);
    const unsigned most = 1 + static_cast<unsigned>(sizes()) % 64;
    expect(test::in_pieces<char>(stream, text, [&] {
               return 1 + static_cast<unsigned>(sizes()) % most;
           }) == expected);
    (void)core::EncodingTester(encoding).performTest(stdx::ustring(text));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const char* const name = kEncodings[data[0] % std::size(kEncodings)];
    std::mt19937 sizes(data[1]);
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 2, size - 2);
    std::u16string text(bytes.size() / 2, u'\0');
    std::memcpy(text.data(), bytes.data(), 2 * text.size());
    check_widening(name, bytes, sizes);
    check_narrowing(name, text, sizes);
    return 0;
}
