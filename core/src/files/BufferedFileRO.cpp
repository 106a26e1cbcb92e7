// Buffered files that are read in sequence, and those that are opened by URL.
#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/component/UnsupportedOperationException.h>
#include <core/files/BufferedFile.h>
#include <core/files/URL.h>

#include "FileBuffer.h"
#include "ProcessFileSystem.h"

namespace core {
namespace {

class BufferedFileRO
    : public ObjectRoot
    , public SCOM_InternalClass<BufferedFileRO>
    , public IFile
    , public IByteWindow {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<BufferedFileRO, IFile, IByteWindow>();
    }

    BufferedFileRO(IFile& inner, unsigned bufferSize)
        : inner_(&inner, true), buffer_(bufferSize), ahead_{buffer_.begin(), 0} {}

    URL url() override { return inner_->url(); }
    unsigned read(void* dst, unsigned n) override {
        if (n - 1 < ahead_.left) [[likely]] { // 0 goes the long way
            ahead_.take(dst, n);
            return n;
        }
        return read_through(*inner_, buffer_, ahead_, dst, n, [](unsigned) {});
    }
    void write(const void*, unsigned) override { throw UnsupportedOperationException(ORB_HERE); }
    void flush() override { throw UnsupportedOperationException(ORB_HERE); }

    const std::uint8_t* window(unsigned& size) override {
        read_ahead(*inner_, buffer_, ahead_, [](unsigned) {});
        size = ahead_.left;
        return ahead_.bytes();
    }
    void advance(unsigned n) override { ahead_.pass(n); }

private:
    InterfacePtr<IFile> inner_;
    FileBuffer buffer_;
    ReadAhead ahead_;
};

} // namespace

InterfacePtr<IFile> create_buffered_file_ro(IFile* file, unsigned bufferSize) {
    if (!file) stop_process("file != nullptr");
    if (bufferSize == 0) stop_process("bufferSize != 0");
    return make_object<BufferedFileRO>(*file, bufferSize);
}

InterfacePtr<IFile> create_buffered_file_for(const URL& url, unsigned bufferSize, int mode) {
    const InterfacePtr<IFile> file = process_file_system().open(url, mode);
    if (bufferSize == 0) return file;
    return create_buffered_file(file.get(), bufferSize);
}

InterfacePtr<IFile> create_buffered_file_for_read(const URL& url, unsigned bufferSize) {
    return create_buffered_file_for(url, bufferSize, kFileOpenForRead);
}

InterfacePtr<IFile> create_buffered_file_for_write(const URL& url, unsigned bufferSize) {
    return create_buffered_file_for(url, bufferSize, kFileOpenForWrite);
}

} // namespace core
