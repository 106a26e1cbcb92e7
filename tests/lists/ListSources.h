// Where the lists of the tests come from and go to.
#pragma once

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/files/URL.h>
#include <core/streams/IFile.h>
#include <core/streams/IReader.h>
#include <core/streams/IStringBuffer.h>
#include <core/streams/ListStream.h>
#include <core/streams/ListStreamException.h>
#include <core/streams/StringStreams.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

namespace test {

// ---- Files over a string of bytes, read from one position and written at the end.

class BytesIO : public core::IFile {
public:
    explicit BytesIO(std::string data) : bytes(std::move(data)) {}

    core::URL url() override { return {}; }
    unsigned read(void* to, unsigned n) override {
        n = std::min(n, left());
        std::memcpy(to, bytes.data() + at, n);
        at += n;
        return n;
    }
    void write(const void* from, unsigned n) override {
        bytes.append(static_cast<const char*>(from), n);
    }
    void flush() override { ++flushes; }

    unsigned left() const noexcept { return static_cast<unsigned>(bytes.size() - at); }

    std::string bytes;
    std::size_t at = 0;
    int flushes = 0;
};

class ByteFile
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<ByteFile>
    , public BytesIO {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<ByteFile, core::IFile>();
    }
    explicit ByteFile(std::string data = {}) : BytesIO(std::move(data)) {}
};

// With windows of at most `most` bytes.
class WindowFile
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<WindowFile>
    , public BytesIO
    , public core::IByteWindow {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<WindowFile, core::IFile, core::IByteWindow>();
    }
    WindowFile(std::string data, unsigned most) : BytesIO(std::move(data)), most_(most) {}

    const std::uint8_t* window(unsigned& size) override {
        size = std::min(left(), most_);
        return reinterpret_cast<const std::uint8_t*>(bytes.data() + at);
    }
    void advance(unsigned n) override { at += n; }

private:
    unsigned most_;
};

// ---- Readers over a text.

class TextIO : public core::IReader {
public:
    explicit TextIO(std::u16string data) : text(std::move(data)) {}

    char16_t get() override { return eof() ? core::kEndOfText : text[at++]; }
    char16_t peek() override { return eof() ? core::kEndOfText : text[at]; }
    unsigned read(char16_t* to, unsigned n) override {
        n = std::min(n, left());
        std::copy_n(text.data() + at, n, to);
        at += n;
        return n;
    }
    unsigned readUntil(char16_t stop, char16_t* to, unsigned n) override {
        const auto end = std::min(text.find(stop, at), text.size());
        return read(to, std::min(n, static_cast<unsigned>(end - at)));
    }
    unsigned readTo(core::IStringBuffer*, unsigned) override { return 0; }
    unsigned readToUntil(char16_t, core::IStringBuffer*, unsigned) override { return 0; }
    unsigned skip(unsigned n) override {
        n = std::min(n, left());
        at += n;
        return n;
    }
    bool eof() override { return at == text.size(); }

    unsigned left() const noexcept { return static_cast<unsigned>(text.size() - at); }
    std::u16string rest() const { return text.substr(at); }

    std::u16string text;
    std::size_t at = 0;
};

class PlainReader
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<PlainReader>
    , public TextIO {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<PlainReader, core::IReader>();
    }
    explicit PlainReader(std::u16string data) : TextIO(std::move(data)) {}
};

// With windows of at most `most` units.
class WindowReader
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<WindowReader>
    , public TextIO
    , public core::ITextWindow {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<WindowReader, core::IReader, core::ITextWindow>();
    }
    WindowReader(std::u16string data, unsigned most) : TextIO(std::move(data)), most_(most) {}

    const char16_t* window(unsigned& size) override {
        size = std::min(left(), most_);
        return text.data() + at;
    }
    void advance(unsigned n) override { at += n; }

private:
    unsigned most_;
};

// Windows of every kind: none, one unit or byte, few, all.
inline constexpr unsigned kWindows[] = {0, 1, 3, 100'000'000};

inline core::InterfacePtr<core::IReader> make_reader(std::u16string text, unsigned window) {
    if (window == 0) return core::make_object<PlainReader>(std::move(text));
    return core::make_object<WindowReader>(std::move(text), window);
}
inline core::InterfacePtr<core::IFile> make_file(std::string bytes, unsigned window) {
    if (window == 0) return core::make_object<ByteFile>(std::move(bytes));
    return core::make_object<WindowFile>(std::move(bytes), window);
}

// ---- Both forms.

inline std::string hex(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        text += kDigits[static_cast<unsigned char>(c) >> 4];
        text += kDigits[static_cast<unsigned char>(c) & 15];
    }
    return text;
}

template <class Put> std::u16string text_of(Put put) {
    core::StringOutputStream to;
    to.open();
    core::ListOutStream out(to.writer());
    put(*out.get());
    out.close();
    return std::u16string(std::u16string_view(to.close()->toString()));
}

template <class Put> std::string bytes_of(Put put) {
    const auto file = core::make_object<ByteFile>();
    core::ListOutStream out(static_cast<core::IFile*>(file.get()));
    put(*out.get());
    out.close();
    return file->bytes;
}

} // namespace test
