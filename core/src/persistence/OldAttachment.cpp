#include "OldAttachment.h"

#include <core/streams/IFile.h>

#include "streams/TextCursor.h"
#include "text/Base64Alphabet.h"

namespace core {
namespace {

constexpr unsigned kGroup = 3; // bytes

// The bytes of the next group: fewer than three end the text.
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

} // namespace

void decode_old_attachment(IReader& from, IFile& to) {
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

} // namespace core
