// A pattern of ICU and, behind a line feed, a text in it: a date that was read by a pattern of full
// fields is written and read back as the same.
#include <core/component/Utf8.h>
#include <core/locale/DateFormat.h>
#include <core/numbers/Date.h>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const core::DateFormat formats[] = {core::DateFormat(core::Locale(u"ru")),
                                               core::DateFormat(core::Locale(u"ar_EG"))};
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(input.find('\n'), input.size());
    const stdx::ustring pattern = core::from_utf8(input.substr(0, end));
    const stdx::ustring text = core::from_utf8(input.substr(std::min(end + 1, input.size())));
    for (const core::DateFormat& format : formats) {
        core::Date date, back;
        format.parse(text, pattern, date);
        for (const auto& own : {format.getLongDateTimePattern(), format.getShortDateTimePattern()})
            if (format.parse(text, own, date) &&
                !(format.parse(format.format(date, own), own, back) && back == date))
                std::abort();
    }
    return 0;
}
