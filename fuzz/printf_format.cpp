// A format from outside, with typed arguments: a text or a refusal, never more memory than the
// widths allow.
#include <core/component/IllegalArgumentException.h>
#include <core/text/Format.h>

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size > 200) return 0;
    const std::string_view format(reinterpret_cast<const char*>(bytes), size);
    const std::u16string wide(bytes, bytes + size);
    const auto attempt = [&](const auto&... arguments) {
        try {
            core::format_string(format, arguments...);
            core::format_string(wide, arguments...);
        } catch (const core::IllegalArgumentException&) {
            // The format does not fit.
        }
    };
    attempt();
    attempt(-7);
    attempt(1e300);
    attempt(0.1L);
    attempt("text");
    attempt(u"wide", 3, 2.5);
    attempt(5, -3, 'c');
    attempt(-9, 3, 1.0);
    return 0;
}
