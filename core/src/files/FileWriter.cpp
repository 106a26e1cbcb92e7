#include <core/files/IFileWriter.h>

#include "ProcessFileSystem.h"
#include "TextFaults.h"
#include "streams/StringBuffer.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/text/StreamConverter.h>

#include <kiln/buffer_pools.h>

#include <algorithm>
#include <cstring>
#include <optional>

namespace core {

namespace {

constexpr unsigned kText = 8192;   // units
constexpr unsigned kBytes = 32768; // of the largest buffer of the pools that text uses

// An encoding that begins with a mark by itself has written it twice.
unsigned without_second_mark(const char* mark, unsigned size) noexcept {
    const unsigned half = size / 2;
    const bool isTwice = size % 2 == 0 && std::memcmp(mark, mark + half, half) == 0;
    return isTwice ? half : size;
}

} // namespace

class FileWriter
    : public ObjectRoot
    , public SCOM_Class<FileWriter, &CLSID_FileWriter>
    , public IFileWriter {
    using Error = IOException::Error;

public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<FileWriter, IFileWriter, Via<IWriter, IFileWriter>>();
    }

    void open(const URL& url, const stdx::ustring& encoding, bool writeSignature) final;
    void open(IFile* file, const stdx::ustring& encoding, bool writeSignature) final;
    void close() final;
    stdx::ustring encoding() final { return converter_ ? converter_->name() : stdx::ustring(); }

    void put(char16_t unit) final { write(&unit, 1); }
    void write(const char16_t* text, unsigned n) final;
    void write(IStringBuffer* source, unsigned pos, unsigned n) final;
    void flush() final;

private:
    enum class Finish { No, Yes };

    void require_open() const {
        if (!file_) throw IOException(Error::NoTarget);
    }
    // Gives the collected text to the file, and with Finish::Yes the end of the encoding. The text
    // is gone also if that fails.
    void encode(Finish finish);
    void encode_signature();
    void encode_buffer(IStringBuffer& source, unsigned pos, unsigned n);
    void write_bytes(unsigned size);
    char* bytes() const noexcept { return reinterpret_cast<char*>(bytes_.data()); }

    InterfacePtr<IFile> file_;
    std::optional<StreamConverterFromUnicode> converter_; // set while open
    bool writeSignature_ = false;                         // still to be written
    StaticObject<StringBuffer> text_;                     // less than kText units
    kiln::PooledBuffer bytes_;
};

void FileWriter::open(const URL& url, const stdx::ustring& encoding, bool writeSignature) {
    // What can fail without harm comes before the file is emptied.
    as_io_exception(Error::TargetFault, [&] { StreamConverterFromUnicode probe(encoding); });
    const auto file = as_io_exception(
        Error::TargetFault, [&] { return process_file_system().open(url, kFileOpenForWrite); });
    open(file.get(), encoding, writeSignature);
}

void FileWriter::open(IFile* file, const stdx::ustring& encoding, bool writeSignature) {
    if (!file) throw IOException(Error::NoTarget);
    auto converter =
        as_io_exception(Error::TargetFault, [&] { return StreamConverterFromUnicode(encoding); });
    if (!bytes_) bytes_ = kiln::PooledBuffer(kiln::buffer_pools().kib32);
    if (text_.capacity() < kText) text_.reserve(kText);
    text_.clear();
    converter_ = std::move(converter);
    writeSignature_ = writeSignature;
    file_ = {file, true};
}

void FileWriter::close() {
    if (!file_) return;
    struct Release {
        FileWriter& writer;
        ~Release() {
            writer.converter_.reset();
            writer.file_.reset();
        }
    } release{*this};
    encode(Finish::Yes);
    as_io_exception(Error::TargetFault, [&] { file_->flush(); });
}

void FileWriter::flush() {
    require_open();
    encode(Finish::No);
}

void FileWriter::write(const char16_t* text, unsigned n) {
    require_open();
    std::u16string_view units = units_of(text, n);
    while (!units.empty()) {
        const auto size =
            static_cast<unsigned>(std::min<std::size_t>(units.size(), kText - text_.length()));
        text_.append(units.data(), size);
        units.remove_prefix(size);
        if (text_.length() == kText) encode(Finish::No);
    }
}

// A long text is encoded where it lies.
void FileWriter::write(IStringBuffer* source, unsigned pos, unsigned n) {
    require_open();
    const unsigned size = source->length();
    if (pos > size) throw_out_of_bounds(pos, size);
    n = std::min(n, size - pos);
    if (n >= kText) {
        encode(Finish::No);
        as_io_exception(Error::TargetFault, [&] { encode_buffer(*source, pos, n); });
        return;
    }
    char16_t block[kText];
    write(block, source->copy(pos, block, n));
}

void FileWriter::encode(Finish finish) {
    struct Clear {
        StringBuffer& text;
        ~Clear() { text.clear(); }
    } clear{text_};
    as_io_exception(Error::TargetFault, [&] {
        if (writeSignature_) encode_signature();
        encode_buffer(text_, 0, text_.length());
        for (bool more = finish == Finish::Yes; more;) {
            char* out = bytes();
            more = converter_->narrow(nullptr, 0, &out, kBytes);
            write_bytes(static_cast<unsigned>(out - bytes()));
        }
    });
}

void FileWriter::encode_buffer(IStringBuffer& source, unsigned pos, unsigned n) {
    const unsigned end = pos + n;
    for (unsigned size = 1; size != 0;) {
        size = source.encode(*converter_, pos, bytes(), kBytes, end - pos);
        write_bytes(size);
    }
}

void FileWriter::encode_signature() {
    writeSignature_ = false;
    const char16_t* mark = converter_->signature();
    if (!mark) return;
    char* out = bytes();
    converter_->narrow(&mark, 1, &out, kBytes);
    write_bytes(without_second_mark(bytes(), static_cast<unsigned>(out - bytes())));
}

void FileWriter::write_bytes(unsigned size) {
    if (size != 0) file_->write(bytes_.data(), size);
}

InterfacePtr<IFileWriter> create_file_writer() {
    return make_object<FileWriter>();
}

} // namespace core

ORBCORE_REGISTER(core::FileWriter);
