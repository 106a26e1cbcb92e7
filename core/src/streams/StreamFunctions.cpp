#include <core/streams/StreamFunctions.h>

#include "Base64Streams.h"

#include <core/component/IllegalArgumentException.h>
#include <core/streams/IOException.h>
#include <core/streams/IStringBuffer.h>
#include <core/text/Base64.h>
#include <core/text/Format.h>
#include <core/text/Numbers.h>

#include <algorithm>
#include <cstring>

namespace core {

unsigned long long copy_stream(IWriter* to, IReader* from, unsigned long long n) {
    ORB_ASSERT(to != 0 && from != 0);
    constexpr unsigned kBlock = 8192;
    char16_t block[kBlock];
    unsigned long long moved = 0;
    while (moved < n) {
        const auto wanted = static_cast<unsigned>(std::min<unsigned long long>(n - moved, kBlock));
        const unsigned size = from->read(block, wanted);
        if (size == 0) break;
        to->write(block, size);
        moved += size;
    }
    return moved;
}

stdx::ustring read_stream(IReader* from, unsigned n) {
    ORB_ASSERT(from != 0);
    const auto buffer = create_std_string_buffer();
    from->readTo(buffer.get(), n);
    return buffer->toString();
}

int writer_printf(IWriter* to, const char16_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    struct End {
        std::va_list& list;
        ~End() { va_end(list); }
    } end{arguments};
    return writer_vprintf(to, format, arguments);
}

int writer_vprintf(IWriter* to, const char16_t* format, std::va_list arguments) {
    if (!to) throw IOException(IOException::Error::NoTarget);
    stdx::ustring text;
    const int size = string_vprintf(text, format, arguments);
    to->write(text.c_str(), text.size());
    return size;
}

#define ORB_NUMBER_TO_BUFFER(NAME, VALUE)                                                          \
    void NAME(VALUE value, IStringBuffer* to, int radix) {                                         \
        ORB_ASSERT(to != 0);                                                                       \
        char16_t digits[66];                                                                       \
        const char16_t* const end = NAME(value, digits, radix);                                    \
        to->append(digits, static_cast<unsigned>(end - digits));                                   \
    }

ORB_NUMBER_TO_BUFFER(string_lto, std::int32_t)
ORB_NUMBER_TO_BUFFER(string_ulto, std::uint32_t)
ORB_NUMBER_TO_BUFFER(string_i64to, std::int64_t)
ORB_NUMBER_TO_BUFFER(string_ui64to, std::uint64_t)

void encode_base64(const void* data, std::size_t size, IWriter* to, unsigned lineLength,
                   bool urlAlphabet) {
    ORB_ASSERT(to != 0);
    Base64Writer writer(*to, lineLength, urlAlphabet);
    writer.write(data, size);
    writer.finish();
}

bool decode_base64(IReader* from, void* data, unsigned& size, bool urlAlphabet) {
    ORB_ASSERT(from != 0);
    auto* to = static_cast<std::uint8_t*>(data);
    std::size_t room = size;
    const bool isGood =
        read_base64(*from, urlAlphabet, [&](const std::uint8_t* bytes, std::size_t n) {
            if (n > room) return false;
            to = std::copy_n(bytes, n, to);
            room -= n;
            return true;
        });
    size -= static_cast<unsigned>(room);
    return isGood;
}

bool decode_base64(IReader* from, stdx::string& data, bool urlAlphabet) {
    ORB_ASSERT(from != 0);
    stdx::string decoded;
    const bool isGood =
        read_base64(*from, urlAlphabet, [&](const std::uint8_t* bytes, std::size_t n) {
            decoded.append(reinterpret_cast<const char*>(bytes), elm::checked_size(n));
            return true;
        });
    if (isGood) data.swap(decoded);
    return isGood;
}

} // namespace core
