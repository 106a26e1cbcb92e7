// A stream converter driven with pieces and rooms of given sizes.
#pragma once

#include <core/text/StreamConverter.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace test {

inline bool step(core::StreamConverterToUnicode& converter, const char** in, unsigned size,
                 char16_t** out, unsigned room) {
    return converter.widen(in, size, out, room);
}
inline bool step(core::StreamConverterFromUnicode& converter, const char16_t** in, unsigned size,
                 char** out, unsigned room) {
    return converter.narrow(in, size, out, room);
}

// `sizes()` gives the size of the next piece, or room for output, from 1 to 64. Nothing for input
// that is refused; aborts where the converter breaks its own promises.
template <class To, class Converter, class From, class Sizes>
std::optional<std::basic_string<To>> in_pieces(Converter& converter,
                                               std::basic_string_view<From> input, Sizes sizes) {
    std::basic_string<To> result;
    const From* in = input.data();
    const From* const end = in + input.size();
    const auto step_once = [&](const From** from, unsigned size) {
        // A block of its own, so that a sanitizer sees what is written behind the room.
        const unsigned room = sizes();
        const auto block = std::make_unique<To[]>(room);
        To* out = block.get();
        const bool more = step(converter, from, size, &out, room);
        result.append(block.get(), out);
        return more;
    };
    try {
        while (in != end) {
            const From* const cut = in + std::min<std::ptrdiff_t>(sizes(), end - in);
            while (step_once(&in, static_cast<unsigned>(cut - in))) {}
            if (in != cut) std::abort(); // no more room was asked for, but input was left
        }
        while (step_once(nullptr, 0)) {}
    } catch (const core::ConverterException& exception) {
        if (exception.error() != core::ConverterException::Error::BadData) std::abort();
        return {};
    }
    if (converter.pending() != 0) std::abort();
    return result;
}

} // namespace test
