// Text files by lines, for the span of an open and a close.
//
//   core::InputFileStream in;
//   in.open(url, core::kUTF8Encoding, true, core::kWindowsLineSeparator);
//   while (!in->eof()) use(in->readLine());
//
//   core::OutputFileStream out;
//   out.open(url, core::kUTF8Encoding, true, core::kWindowsLineSeparator);
//   out.printf(u"%d items\n", count);
//   out.close();
#pragma once

#include <core/files/IFileReader.h>
#include <core/files/IFileWriter.h>
#include <core/streams/IBufferedReader.h>
#include <core/streams/IBufferedWriter.h>
#include <core/streams/StringStreams.h>

namespace core {

// See IFileReader and IBufferedReader for the parameters.
class ORBCORE_API InputFileStream {
public:
    void open(const URL& url, const stdx::ustring& encoding, bool followSignature,
              const char16_t* lineSeparator = nullptr);
    void open(IFile* file, const stdx::ustring& encoding, bool followSignature,
              const char16_t* lineSeparator = nullptr);
    void close();

    IBufferedReader* reader() const noexcept { return reader_.get(); } // lent; null if closed
    IBufferedReader* operator->() const noexcept { return reader_.get(); }
    IFileReader* fileReader() const noexcept { return fileReader_.get(); } // the same

private:
    void attach(InterfacePtr<IFileReader> fileReader, const char16_t* lineSeparator);

    InterfacePtr<IFileReader> fileReader_;
    InterfacePtr<IBufferedReader> reader_;
};

// See IFileWriter and IBufferedWriter.
class ORBCORE_API OutputFileStream : public FormattedOutputStream {
public:
    // Closes. What fails then goes to the handler of exceptions in destructors, if there is one:
    // call close() to know.
    ~OutputFileStream() override;

    void open(const URL& url, const stdx::ustring& encoding, bool writeSignature,
              const char16_t* lineSeparator = nullptr);
    void open(IFile* file, const stdx::ustring& encoding, bool writeSignature,
              const char16_t* lineSeparator = nullptr);
    void close();

private:
    void attach(InterfacePtr<IFileWriter> fileWriter, const char16_t* lineSeparator);

    InterfacePtr<IFileWriter> fileWriter_;
    InterfacePtr<IBufferedWriter> bufferedWriter_;
};

} // namespace core
