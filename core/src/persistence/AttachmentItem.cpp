#include "AttachmentItem.h"

#include <core/component/UnsupportedOperationException.h>
#include <core/files/TextFiles.h>
#include <core/streams/IWriter.h>

#include "streams/TextCursor.h"
#include "text/Base64Alphabet.h"

#include <string_view>

namespace core {
namespace {

constexpr std::u16string_view kBase64 = u"#base64:";
constexpr std::u16string_view kOldCode = u"#data:";
constexpr unsigned kLine = 64;       // characters of base64
constexpr std::size_t kLongest = 10; // units of a word in front of its colon

// The word with its colon; empty if there is none.
std::u16string_view read_word(IReader& reader, char16_t (&units)[kLongest + 1]) {
    for (std::size_t n = 0; n != std::size(units) && !reader.eof();) {
        units[n++] = reader.get();
        if (units[n - 1] == u':') return {units, n};
    }
    return {};
}

constexpr unsigned kGroup = 3; // bytes

// The bytes of the next group of the old code: fewer than three end the text.
unsigned decode_group(TextCursor& in, std::uint8_t* bytes) {
    std::uint32_t group = 0;
    unsigned missing = 0;
    for (unsigned i = 0; i != 4; ++i) {
        if (!in.more()) return 0;
        if (in.unit() == u'=') {
            if (++missing > 2) return 0;
        } else {
            const int value = kBase64Alphabets[0].value(in.unit());
            if (value < 0 || missing != 0) return 0;
            group |= static_cast<std::uint32_t>(value) << 6 * i;
        }
        in.pass();
    }
    for (unsigned i = 0; i != kGroup; ++i) bytes[i] = static_cast<std::uint8_t>(group >> 8 * i);
    return kGroup - missing;
}

// Ends in front of the first character that does not belong there, and drops the group that this
// one breaks: whether the text may end there is for the list to say.
void decode_old_code(IReader& from, IFile& to) {
    const InterfacePtr<ITextWindow> window(&from);
    TextCursor in(&from, window.get());
    std::uint8_t bytes[256 * kGroup];
    unsigned size = 0, decoded = kGroup;
    while (decoded == kGroup) {
        decoded = decode_group(in, bytes + size);
        size += decoded;
        if (size == sizeof bytes || decoded != kGroup) {
            to.write(bytes, size);
            size = 0;
        }
    }
    in.sync();
}

} // namespace

void AttachmentItem::toStream(IWriter* writer) {
    writer->write(kBase64.data(), kBase64.size());
    encode_base64(&file_, writer, kLine);
}

bool AttachmentItem::fromStream(IReader* reader) {
    char16_t units[kLongest + 1];
    const std::u16string_view word = read_word(*reader, units);
    if (word == kBase64) return decode_base64(reader, &file_);
    if (word == kOldCode) decode_old_code(*reader, file_);
    return word == kOldCode;
}

void AttachmentItem::toBinary(IListOutStream*) {
    throw UnsupportedOperationException();
}
void AttachmentItem::fromBinary(IListInStream*) {
    throw UnsupportedOperationException();
}

} // namespace core
