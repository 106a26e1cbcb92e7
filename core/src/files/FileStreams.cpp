#include <core/files/FileStreams.h>

#include <core/component/DestructorException.h>

namespace core {

// ---- Input.

void InputFileStream::open(const URL& url, const stdx::ustring& encoding, bool followSignature,
                           const char16_t* lineSeparator) {
    auto fileReader = create_file_reader();
    fileReader->open(url, encoding, followSignature);
    attach(std::move(fileReader), lineSeparator);
}

void InputFileStream::open(IFile* file, const stdx::ustring& encoding, bool followSignature,
                           const char16_t* lineSeparator) {
    auto fileReader = create_file_reader();
    fileReader->open(file, encoding, followSignature);
    attach(std::move(fileReader), lineSeparator);
}

void InputFileStream::attach(InterfacePtr<IFileReader> fileReader, const char16_t* lineSeparator) {
    auto reader = create_buffered_reader();
    reader->open(fileReader.get(), lineSeparator);
    reader_ = std::move(reader);
    fileReader_ = std::move(fileReader);
}

void InputFileStream::close() {
    if (reader_) reader_->close();
    if (fileReader_) fileReader_->close();
    reader_.reset();
    fileReader_.reset();
}

// ---- Output.

OutputFileStream::~OutputFileStream() {
    try {
        close();
    } catch (const Exception& exception) {
        if (const auto handler = get_destructor_exception_handler())
            handler->handleException(exception);
    }
}

void OutputFileStream::open(const URL& url, const stdx::ustring& encoding, bool writeSignature,
                            const char16_t* lineSeparator) {
    close();
    auto fileWriter = create_file_writer();
    fileWriter->open(url, encoding, writeSignature);
    attach(std::move(fileWriter), lineSeparator);
}

void OutputFileStream::open(IFile* file, const stdx::ustring& encoding, bool writeSignature,
                            const char16_t* lineSeparator) {
    close();
    auto fileWriter = create_file_writer();
    fileWriter->open(file, encoding, writeSignature);
    attach(std::move(fileWriter), lineSeparator);
}

void OutputFileStream::attach(InterfacePtr<IFileWriter> fileWriter, const char16_t* lineSeparator) {
    auto writer = create_buffered_writer();
    writer->open(fileWriter.get(), lineSeparator);
    bufferedWriter_ = std::move(writer);
    fileWriter_ = std::move(fileWriter);
    setWriter(bufferedWriter_.get());
}

// Both are released also where one of them fails.
void OutputFileStream::close() {
    setWriter(nullptr);
    const auto buffered = std::move(bufferedWriter_);
    const auto file = std::move(fileWriter_);
    if (buffered) buffered->close();
    if (file) file->close();
}

} // namespace core
