// Sources and targets for tests of streams.
#pragma once

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/streams/IOException.h>
#include <core/streams/IStringReader.h>
#include <core/streams/IWriter.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace test {

// Gives its text in pieces of the sizes told, over and over.
class PiecewiseReader
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<PiecewiseReader>
    , public core::IReader {
public:
    PiecewiseReader(std::u16string text, std::vector<unsigned> pieces)
        : text_(std::move(text)), pieces_(std::move(pieces)) {}

    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<PiecewiseReader, core::IReader>();
    }

    char16_t peek() override { return eof() ? core::kEndOfText : text_[at_]; }
    char16_t get() override { return eof() ? core::kEndOfText : text_[at_++]; }
    unsigned read(char16_t* to, unsigned n) override {
        const unsigned piece = pieces_[next_++ % pieces_.size()];
        const std::size_t size = std::min<std::size_t>({n, piece, text_.size() - at_});
        std::copy_n(text_.data() + at_, size, to);
        at_ += size;
        return static_cast<unsigned>(size);
    }
    unsigned readUntil(char16_t, char16_t*, unsigned) override { return 0; }
    unsigned readTo(core::IStringBuffer*, unsigned) override { return 0; }
    unsigned readToUntil(char16_t, core::IStringBuffer*, unsigned) override { return 0; }
    unsigned skip(unsigned) override { return 0; }
    bool eof() override { return at_ == text_.size(); }

private:
    std::u16string text_;
    std::vector<unsigned> pieces_;
    std::size_t at_ = 0;
    std::size_t next_ = 0;
};

inline core::InterfacePtr<core::IReader> reader_of(std::u16string text,
                                                   std::vector<unsigned> pieces = {8192}) {
    return core::make_object<PiecewiseReader>(std::move(text), std::move(pieces));
}

inline std::u16string text_of(core::IStringBuffer& buffer) {
    return std::u16string(buffer.toString().view());
}

// What the stream threw.
template <class Exception> typename Exception::Error error_of(const std::function<void()>& call) {
    try {
        call();
    } catch (const Exception& exception) {
        return exception.error();
    }
    return Exception::Error::None;
}
inline core::IOException::Error io_error_of(const std::function<void()>& call) {
    return error_of<core::IOException>(call);
}

} // namespace test
