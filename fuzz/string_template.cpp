// Templates: the first byte is the number of parameters, the rest the format. A format is refused
// with a place in it, or its result is as long as its literals and parameters.
#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>
#include <core/runtime/Process.h>
#include <core/text/StringTemplate.h>
#include <core/text/StringTemplateException.h>

#include <cstdint>
#include <cstdlib>

namespace {

void expect(bool holds) {
    if (!holds) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static core::Process& host = *[] {
        auto* const made = new core::Process;
        made->construct(nullptr);
        made->init(nullptr);
        return made;
    }();
    static const auto parsed =
        (static_cast<void>(host),
         core::create_object<core::IStringTemplate>(core::CLSID_StringTemplate));
    if (size == 0) return 0;
    const int count = data[0] % 32;
    const stdx::ustring format =
        core::from_utf8({reinterpret_cast<const char*>(data) + 1, size - 1});
    using Error = core::StringTemplateException::Error;
    try {
        parsed->parse(format, count);
    } catch (const core::StringTemplateException& exception) {
        expect(exception.position() <= format.size());
        return 0;
    }
    // Each parameter occurs: one unit more in it makes the result longer, by once per occurrence.
    std::vector<stdx::ustring> params(static_cast<std::size_t>(count));
    const unsigned literals = parsed->apply(params).size();
    expect(literals <= format.size());
    for (stdx::ustring& param : params) {
        param = u"x";
        expect(parsed->apply(params).size() > literals);
        param = u"";
    }
    try {
        params.emplace_back();
        parsed->apply(params);
        expect(false);
    } catch (const core::StringTemplateException& exception) {
        expect(exception.error() == Error::TooMany);
    }
    return 0;
}
