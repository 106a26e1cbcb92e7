// Any pattern on any text under limits: what is found lies inside the text and is what the text
// holds there, copies move along, and a quoted text matches itself.
#include <core/text/Matcher.h>
#include <core/text/RegexException.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

void require(bool condition) {
    if (!condition) std::abort();
}

void check_match(const core::Matcher& matcher, const stdx::ustring& text) {
    for (unsigned group = 0; group <= matcher.groupCount(); ++group) {
        const int start = matcher.start(group);
        const int end = matcher.end(group);
        require((start == -1) == (end == -1));
        if (start == -1) {
            require(matcher.group(group).empty());
            continue;
        }
        require(0 <= start && start <= end && static_cast<unsigned>(end) <= text.size());
        require(matcher.group(group) ==
                text.substr(static_cast<unsigned>(start), static_cast<unsigned>(end - start)));
    }
}

void run(const stdx::ustring& pattern, const stdx::ustring& text, unsigned flags) {
    core::Matcher matcher(pattern, text, flags);
    matcher.setStackLimit(1 << 20);
    matcher.setTimeLimit(std::chrono::milliseconds(20));
    core::Matcher copy = matcher;
    int last = 0;
    while (copy.find()) {
        check_match(matcher, text);
        require(matcher.start() >= last);
        last = matcher.end();
    }
    matcher.reset();
    if (matcher.matches()) require(matcher.end() == static_cast<int>(text.size()));
    if (text.size() < 200) matcher.replaceAll(u"<$0>");
}

// Bytes as text: each one a unit, so that patterns stay readable, but for those above 0xbf, which
// become units all over the plane.
stdx::ustring text_of(const std::uint8_t* bytes, std::size_t size) {
    stdx::ustring text;
    for (std::size_t i = 0; i != size; ++i)
        text.push_back(static_cast<char16_t>(bytes[i] < 0xc0 ? bytes[i] : bytes[i] * 0x0101u));
    return text;
}

} // namespace

// The first byte is the flags; a zero byte ends the pattern and begins the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0 || size > 4096) return 0;
    const std::uint8_t* const pattern = data + 1;
    const auto* const zero = static_cast<const std::uint8_t*>(std::memchr(pattern, 0, size - 1));
    const std::size_t patternSize = zero ? static_cast<std::size_t>(zero - pattern) : size - 1;
    const stdx::ustring text = zero ? text_of(zero + 1, size - patternSize - 2) : stdx::ustring();
    try {
        run(text_of(pattern, patternSize), text, data[0]);
    } catch (const core::RegexException&) {}
    if (text.find(u'|') == text.npos)
        require(core::matches_pattern(core::quote_pattern(text), text));
    return 0;
}
