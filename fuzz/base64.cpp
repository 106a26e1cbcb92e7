// Any text is decoded the same at once and in parts, as 8-bit text and as UTF-16; any bytes come back
// from their text, which is the same at once and in parts.
#include <core/text/Base64.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

void check(bool holds) {
    if (!holds) std::abort();
}

// In two parts, each into memory of exactly the promised size.
bool decode_in_parts(std::u16string_view text, std::size_t cut, bool url, std::string& data) {
    core::Base64Decoder decoder(url);
    std::vector<std::uint8_t> head(core::Base64Decoder::max_size(cut));
    data.assign(head.data(), decoder.decode(text.data(), cut, head.data()));
    std::vector<std::uint8_t> tail(core::Base64Decoder::max_size(text.size() - cut));
    std::uint8_t* end = decoder.decode(text.data() + cut, text.size() - cut, tail.data());
    const bool isGood = decoder.finish(end);
    data.append(tail.data(), end);
    return isGood;
}

// In two parts, each into memory of exactly the promised size.
std::string encode_in_parts(std::string_view data, std::size_t cut, unsigned lineLength, bool url) {
    core::Base64Encoder encoder(lineLength, url);
    std::vector<char> head(encoder.max_size(cut));
    std::string text(head.data(), encoder.encode(data.data(), cut, head.data()));
    std::vector<char> tail(encoder.max_size(data.size() - cut));
    char* const end = encoder.encode(data.data() + cut, data.size() - cut, tail.data());
    text.append(tail.data(), encoder.finish(end));
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size < 2) return 0;
    const bool url = bytes[0] & 1;
    const std::size_t cutByte = bytes[1];
    const std::string_view data(reinterpret_cast<const char*>(bytes) + 2, size - 2);

    const unsigned lineLength = bytes[0];
    const std::size_t cut = std::min(cutByte, data.size());
    const stdx::ustring encoded = core::encode_base64(data, lineLength, url);
    const std::string inParts = encode_in_parts(data, cut, lineLength, url);
    check(std::equal(encoded.begin(), encoded.end(), inParts.begin(), inParts.end()));
    stdx::string back;
    check(core::decode_base64(encoded, back, url));
    check(back == data);

    // A high bit makes a unit that is no byte.
    std::u16string text;
    for (const char c : data) text.push_back(static_cast<char16_t>(c));
    stdx::string whole;
    std::string parts;
    const bool isGood = core::decode_base64(text, whole, url);
    check(decode_in_parts(text, cut, url, parts) == isGood);
    if (isGood) check(whole == parts);

    // Bytes from 0x80 on end a text, as the units do that they are read as above.
    stdx::string narrow;
    check(core::decode_base64(data, narrow, url) == isGood);
    if (isGood) check(narrow == whole);
    core::decode_base64url(text, static_cast<unsigned>(cutByte), whole);
    return 0;
}
