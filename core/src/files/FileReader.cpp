#include <core/files/IFileReader.h>

#include "ProcessFileSystem.h"
#include "TextFaults.h"
#include "streams/StringBuffer.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Messages.h>
#include <core/component/Object.h>
#include <core/text/Converter.h>
#include <core/text/StreamConverter.h>

#include <kiln/buffer_pools.h>

#include <exception>
#include <optional>
#include <utility>

namespace core {

class FileReader
    : public ObjectRoot
    , public SCOM_Class<FileReader, &CLSID_FileReader>
    , public WindowReader<FileReader, IFileReader> {
    using Error = IOException::Error;

public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<FileReader, IFileReader, Via<IReader, IFileReader>, ITextWindow>();
    }

    void open(const URL& url, const stdx::ustring& encoding, bool followSignature) final;
    void open(IFile* file, const stdx::ustring& encoding, bool followSignature) final;
    void close() final;
    stdx::ustring encoding() final { return converter_ ? converter_->name() : stdx::ustring(); }
    bool signatureFound() final { return signatureFound_; }

    unsigned read(char16_t* to, unsigned n) final;
    bool eof() final { return !file_ || units().empty(); }

    std::u16string_view units() {
        const std::u16string_view here = cursor_.units();
        return here.empty() ? refill() : here;
    }
    void pass(unsigned n) noexcept { cursor_.pass(n); }

private:
    std::u16string_view refill();
    unsigned decode(char16_t* to, unsigned room);
    bool decode_some(char16_t*& out, unsigned room);
    void read_bytes();
    void take_signature();

    InterfacePtr<IFile> file_;
    std::optional<StreamConverterToUnicode> converter_; // set while open
    bool followSignature_ = false;
    bool signatureFound_ = false;
    bool isAtStart_ = true;
    bool isAtEnd_ = false;       // of the file
    bool isDone_ = false;        // nothing more is decoded
    std::exception_ptr failure_; // what is to be thrown behind the text that was good
    kiln::PooledBuffer raw_;     // bytes as they are in the file; of them,
    unsigned rawAt_ = 0;         // those from here on
    unsigned rawEnd_ = 0;        // to here are not decoded
    StaticObject<StringBuffer> text_;
    StringBufferCursor cursor_{text_};
};

void FileReader::open(const URL& url, const stdx::ustring& encoding, bool followSignature) {
    const auto file = as_io_exception(
        Error::SourceFault, [&] { return process_file_system().open(url, kFileOpenForRead); });
    open(file.get(), encoding, followSignature);
}

void FileReader::open(IFile* file, const stdx::ustring& encoding, bool followSignature) {
    if (!file) throw IOException(Error::NoSource);
    auto converter =
        as_io_exception(Error::SourceFault, [&] { return StreamConverterToUnicode(encoding); });
    const InterfacePtr<IFile> source(file, true);
    if (!raw_) raw_ = kiln::PooledBuffer(kiln::buffer_pools().kib8);
    close();
    converter_ = std::move(converter);
    followSignature_ = followSignature;
    isAtStart_ = true;
    isAtEnd_ = isDone_ = false;
    file_ = source;
}

void FileReader::close() {
    text_.clear();
    cursor_.move(0);
    rawAt_ = rawEnd_ = 0;
    failure_ = nullptr;
    signatureFound_ = false;
    converter_.reset();
    file_.reset();
}

std::u16string_view FileReader::refill() {
    if (!file_) throw IOException(Error::NoSource);
    text_.clear();
    cursor_.move(0);
    const std::span<char16_t> room = text_.room(1);
    text_.added(decode(room.data(), static_cast<unsigned>(room.size())));
    return cursor_.units();
}

// What is not in the block yet is decoded where it is wanted.
unsigned FileReader::read(char16_t* to, unsigned n) {
    if (n == 0) return 0;
    unsigned taken = 0;
    for (auto here = cursor_.units(); !here.empty() && taken < n; here = cursor_.units()) {
        const auto size = static_cast<unsigned>(here.copy(to + taken, n - taken));
        pass(size);
        taken += size;
    }
    if (!file_) throw IOException(Error::NoSource);
    return taken + (taken < n ? decode(to + taken, n - taken) : 0);
}

// Fills the room with text; less only at the end, or in front of what cannot be decoded. That is
// thrown when there is no text before it, and ends the text.
unsigned FileReader::decode(char16_t* to, unsigned room) {
    char16_t* out = to;
    try {
        if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
        while (out != to + room && !isDone_)
            isDone_ = !decode_some(out, static_cast<unsigned>(to + room - out));
    } catch (...) {
        isDone_ = true;
        if (out == to) throw;
        failure_ = std::current_exception();
    }
    return static_cast<unsigned>(out - to);
}

// False at the end of the text.
bool FileReader::decode_some(char16_t*& out, unsigned room) {
    if (rawAt_ == rawEnd_ && !isAtEnd_) read_bytes();
    const bool isEnd = rawAt_ == rawEnd_;
    const char* const bytes = reinterpret_cast<const char*>(raw_.data());
    const char* in = bytes + rawAt_;
    const bool isCutOff = isEnd && converter_->pending() != 0;
    try {
        const bool more = converter_->widen(isEnd ? nullptr : &in, rawEnd_ - rawAt_, &out, room);
        rawAt_ = static_cast<unsigned>(in - bytes);
        return more || !isEnd;
    } catch (const ConverterException& exception) {
        throw IOException(Error::CharConversion,
                          isCutOff ? load_core_wstring("IDS_IO_ERR_UNDECODED_BYTES")
                                   : stdx::ustring(),
                          exception.object().get());
    }
}

// Fills the buffer; less only at the end of the file, whatever pieces it comes in.
void FileReader::read_bytes() {
    rawAt_ = rawEnd_ = 0;
    const auto size = static_cast<unsigned>(raw_.size());
    as_io_exception(Error::SourceFault, [&] {
        while (rawEnd_ < size) {
            const unsigned n = file_->read(raw_.data() + rawEnd_, size - rawEnd_);
            if (n == 0) break;
            rawEnd_ += n;
        }
    });
    isAtEnd_ = rawEnd_ < size;
    if (std::exchange(isAtStart_, false)) take_signature();
}

// Passes the mark at the file's start, if it is not text.
void FileReader::take_signature() {
    stdx::ustring found;
    const unsigned length = Converter::detectUnicodeSignature(
        reinterpret_cast<const char*>(raw_.data()), rawEnd_, found);
    if (length == 0) return;
    signatureFound_ = true;
    if (Converter::compareEncodingNames(found, converter_->name()) != 0) {
        if (!followSignature_) return;
        converter_ =
            as_io_exception(Error::SourceFault, [&] { return StreamConverterToUnicode(found); });
    }
    rawAt_ = length;
}

InterfacePtr<IFileReader> create_file_reader() {
    return make_object<FileReader>();
}

} // namespace core

ORBCORE_REGISTER(core::FileReader);
