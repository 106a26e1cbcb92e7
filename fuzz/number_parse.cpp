// A text as a number in locales that write numbers differently, in whose symbols the corpus is: a
// number that was read is written and read back as the same.
#include <core/component/Utf8.h>
#include <core/locale/NumericFormat.h>
#include <core/numbers/Numeric.h>

#include <cstdint>
#include <cstdlib>

namespace {

core::NumericFormat own_format() {
    core::NumericFormat format{core::Locale(u"en")};
    format.setWin32Grouping(u"3;2;0");
    format.setWin32NegativeOrder(0);
    return format;
}

void check(const core::NumericFormat& format, std::u16string_view text) {
    core::Numeric value(-42), back;
    if (!format.parse(text, value)) {
        if (value != -42) std::abort();
        return;
    }
    const stdx::ustring written = format.format(value);
    // An exponent may make more digits than can be read.
    if (written.size() < 1'000 && !(format.parse(written, back) && back == value)) std::abort();
    format.format(value, 5, 2, 3, 1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using core::Locale;
    using core::NumericFormat;
    static const NumericFormat formats[] = {
        NumericFormat(Locale(u"en")), NumericFormat(Locale(u"ru")), NumericFormat(Locale(u"ar_EG")),
        NumericFormat(Locale(u"hi")), own_format()};
    const stdx::ustring text =
        core::from_utf8(std::string_view(reinterpret_cast<const char*>(data), size));
    for (const NumericFormat& format : formats) check(format, text);
    return 0;
}
