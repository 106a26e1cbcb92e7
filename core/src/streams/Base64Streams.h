// Base64 between text streams and bytes that go on, block by block, to somewhere.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/streams/IWriter.h>
#include <core/text/Base64.h>

#include <algorithm>
#include <array>

namespace core {

// Writes bytes to a writer.
class Base64Writer {
public:
    Base64Writer(IWriter& to, unsigned lineLength, bool urlAlphabet)
        : to_(to), encoder_(lineLength, urlAlphabet) {}

    void write(const void* data, std::size_t size) {
        auto* bytes = static_cast<const char*>(data);
        while (size != 0) {
            const std::size_t n = std::min(size, kBytes);
            put(encoder_.encode(bytes, n, text_));
            bytes += n;
            size -= n;
        }
    }
    void finish() { put(encoder_.finish(text_)); }

private:
    // 768 bytes are 1024 characters; the worst line length puts a break behind each.
    static constexpr std::size_t kBytes = 768;
    static constexpr std::size_t kText = 3 * 1024 + 16;

    void put(const char16_t* end) {
        if (end != text_) to_.write(text_, static_cast<unsigned>(end - text_));
    }

    IWriter& to_;
    Base64Encoder encoder_;
    char16_t text_[kText];
};

namespace detail {

constexpr bool is_base64(char16_t c, bool urlAlphabet) noexcept {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9') ||
           c == (urlAlphabet ? u'-' : u'+') || c == (urlAlphabet ? u'_' : u'/') || c == u'\r' ||
           c == u'\n';
}

// What can stand inside of a text: the alphabet and line breaks.
inline constexpr auto kBase64Text = [] {
    std::array<std::array<bool, 128>, 2> table{};
    for (char16_t c = 0; c < 128; ++c)
        for (const bool url : {false, true}) table[url][c] = is_base64(c, url);
    return table;
}();

} // namespace detail

// Reads base64 and calls `sink(bytes, n)` for what it decodes; a sink that answers false ends it.
// The reader is left in front of the character that ends the text.
template <class Sink> bool read_base64(IReader& from, bool urlAlphabet, Sink sink) {
    constexpr std::size_t kBlock = 4096;
    const InterfacePtr<ITextWindow> windows(&from);
    const auto& allowed = detail::kBase64Text[urlAlphabet];
    Base64Decoder decoder(urlAlphabet);
    std::uint8_t bytes[Base64Decoder::max_size(kBlock)];
    for (;;) {
        unsigned size = 1;
        const char16_t next = windows ? u'\0' : from.peek();
        const char16_t* const text = windows ? windows->window(size) : &next;
        if (size == 0 || (!windows && next == kEndOfText)) break;

        const char16_t* const last = text + std::min<std::size_t>(size, kBlock);
        const char16_t* const stop = std::find_if(
            text, last, [&](char16_t c) { return c >= allowed.size() || !allowed[c]; });
        // "=" goes alone: it may end the text, and then it is not passed.
        const bool isPadding = stop == text && *text == u'=';
        if (stop == text && !isPadding) break;
        const auto n = isPadding ? 1u : static_cast<unsigned>(stop - text);
        const std::uint8_t* const end = decoder.decode(text, n, bytes);
        if (decoder.is_ended()) break;
        if (windows)
            windows->advance(n);
        else
            from.get();
        if (end != bytes && !sink(bytes, static_cast<std::size_t>(end - bytes))) return false;
    }
    std::uint8_t* end = bytes;
    const bool isGood = decoder.finish(end);
    return (end == bytes || sink(bytes, static_cast<std::size_t>(end - bytes))) && isGood;
}

} // namespace core
