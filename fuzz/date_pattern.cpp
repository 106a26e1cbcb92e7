// A text as a pattern of the platform and as one of ICU. What the first gives has letters of its own
// outside quotes only, and every quote has its end; any date can be written by it. The second may be
// anything.
#include <core/component/Utf8.h>
#include <core/locale/DateFormat.h>
#include <core/numbers/Date.h>

#include <cstdint>
#include <cstdlib>

namespace {

void expect(bool holds) {
    if (!holds) std::abort();
}

void check_pattern(std::u16string_view pattern) {
    constexpr std::u16string_view kFields = u"dELMyhHmsaq";
    bool quoted = false;
    for (const char16_t c : pattern) {
        const bool isLetter = (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
        if (c == u'\'')
            quoted = !quoted;
        else
            expect(quoted || (isLetter && kFields.find(c) != kFields.npos));
    }
    expect(!quoted);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const core::DateFormat formats[] = {core::DateFormat(core::Locale(u"ru")),
                                               core::DateFormat(core::Locale(u"en"))};
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const stdx::ustring text = core::from_utf8(bytes);
    const stdx::ustring pattern = core::DateFormat::parseOrbPattern(text);
    check_pattern(pattern);
    for (const core::DateFormat& format : formats) {
        const core::Date date(2009, 3, 5, 6, 7, 8);
        expect(pattern.empty() || !format.format(date, pattern).empty());
        format.format(date, text);
    }
    return 0;
}
