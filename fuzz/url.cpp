// URLs over two lines, a text and a reference in it: what tests/url/UrlProperties.h lists holds for
// both, with fragments and without.
#include "../tests/url/UrlProperties.h"

#include <core/component/Utf8.h>
#include <core/runtime/Process.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    [[maybe_unused]] static core::Process& host = *[] {
        auto* const made = new core::Process;
        made->construct(nullptr);
        made->init(nullptr);
        return made;
    }();
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(input.find('\n'), input.size());
    const stdx::ustring text = core::from_utf8(input.substr(0, end));
    const stdx::ustring reference = core::from_utf8(input.substr(std::min(end + 1, input.size())));
    for (const bool withFragment : {false, true}) {
        if (const char* const broken = test::broken_url_property(text, reference, withFragment)) {
            std::fprintf(stderr, "does not hold: %s\n", broken);
            std::abort();
        }
        core::URL(text, withFragment).securePresentation();
        core::URL(text, withFragment).toIDNA().fromIDNA();
        core::URL::prepareURL(text, withFragment);
    }
    return 0;
}
