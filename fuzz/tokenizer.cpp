// The tokenizer over three lines: delimiters, quotes, and the line to take apart. A line is refused
// with a place in it, or gives tokens that are read back the same once they are quoted.
#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>
#include <core/runtime/Process.h>
#include <core/text/StringTokenizer.h>
#include <core/text/StringTokenizerException.h>

#include <cstdint>
#include <cstdlib>

namespace {

using Texts = std::vector<stdx::ustring>;

std::string_view take_line(std::string_view& rest) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return line;
}

stdx::ustring quoted(const Texts& tokens) {
    stdx::ustring line;
    for (const stdx::ustring& token : tokens) {
        if (!line.empty()) line += u',';
        line += u'"';
        for (const char16_t c : token.view()) line.append(c == u'"' ? 2u : 1u, c);
        line += u'"';
    }
    return line;
}

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
    static const auto tokenizer =
        (static_cast<void>(host),
         core::create_object<core::IStringTokenizer>(core::CLSID_StringTokenizer));
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    const stdx::ustring delimiters = core::from_utf8(take_line(rest));
    const stdx::ustring quotes = core::from_utf8(take_line(rest));
    const stdx::ustring line = core::from_utf8(rest);
    try {
        tokenizer->tokenize(line, delimiters, quotes);
    } catch (const core::StringTokenizerException& exception) {
        expect(exception.position() < line.size() && tokenizer->getTokens().empty());
        return 0;
    }
    const Texts tokens = tokenizer->getTokens();
    expect(!tokens.empty());
    tokenizer->tokenize(quoted(tokens), u",", u"\"");
    expect(tokenizer->getTokens() == tokens);
    return 0;
}
