// Text between UTF-16 and a named encoding in pieces of any size: what a piece leaves unfinished is
// kept for the next.
//
//   core::StreamConverterToUnicode converter(u"UTF-8");
//   char16_t units[4096];
//   while (read_bytes(bytes, size)) {
//       const char* in = bytes;
//       for (bool more = true; more;) {
//           char16_t* out = units;
//           more = converter.widen(&in, size - (in - bytes), &out, 4096);
//           use(units, out);
//       }
//   }
//   char16_t* out = units;
//   converter.widen(nullptr, 0, &out, 4096);                  // the end of the stream
//
// An object serves one thread at a time. Encodings, bad bytes and characters that an encoding lacks
// are treated as in `Converter`; memory does not grow with the stream.
#pragma once

#include <core/platform/api.h>
#include <core/text/ConverterException.h>
#include <elm/string>

#include <memory>

namespace core {

class ORBCORE_API StreamConverterToUnicode {
public:
    // Without a name, which null and the empty one are too: the encoding of the system. Throws
    // ConverterException with Error::BadName.
    StreamConverterToUnicode();
    explicit StreamConverterToUnicode(const char16_t* name);
    explicit StreamConverterToUnicode(const stdx::ustring& name);
    StreamConverterToUnicode(StreamConverterToUnicode&&) noexcept;
    StreamConverterToUnicode& operator=(StreamConverterToUnicode&&) noexcept;
    ~StreamConverterToUnicode();

    // Converts as much as fits and advances both pointers, `*in` over bytes that are kept too.
    // True if more room is needed for the output: the rest of the input, or units that are kept,
    // follow with the next call. A null `in` ends the stream; without true, the converter is then
    // as new.
    //
    // Throws ConverterException with Error::BadData for bytes that are no text, at the end of the
    // stream for a character that was cut off. The text before them stands in the output, `*in` is
    // behind them and `refused()` counts them. Go on behind `reset()`.
    bool widen(const char** in, unsigned inLength, char16_t** out, unsigned outLength);

    // U+FEFF as text if the encoding is a form of Unicode that knows signatures, otherwise null.
    const char16_t* signature() const noexcept;
    // Bytes of an unfinished character that are kept for the next call.
    unsigned pending() const noexcept;
    // The bytes of the sequence that the last error was about, those that earlier calls kept
    // included; 0 before any error.
    unsigned refused() const noexcept;
    // Back to the beginning; what is kept is forgotten.
    void reset() noexcept;
    // The name that was given; the system's encoding has ICU's.
    const stdx::ustring& name() const noexcept;

private:
    struct State;
    std::unique_ptr<State> state_;
};

class ORBCORE_API StreamConverterFromUnicode {
public:
    // As in StreamConverterToUnicode.
    StreamConverterFromUnicode();
    explicit StreamConverterFromUnicode(const char16_t* name);
    explicit StreamConverterFromUnicode(const stdx::ustring& name);
    StreamConverterFromUnicode(StreamConverterFromUnicode&&) noexcept;
    StreamConverterFromUnicode& operator=(StreamConverterFromUnicode&&) noexcept;
    ~StreamConverterFromUnicode();

    // The mirror image of `widen`. At the end of the stream, half of a surrogate pair that is kept
    // is written as a character that the encoding lacks, and an encoding with states returns to its
    // first.
    bool narrow(const char16_t** in, unsigned inLength, char** out, unsigned outLength);

    // The most bytes that one UTF-16 unit can take.
    unsigned maxCharSize() const noexcept;
    const char16_t* signature() const noexcept;
    // Units that are kept for the next call.
    unsigned pending() const noexcept;
    void reset() noexcept;
    const stdx::ustring& name() const noexcept;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace core
