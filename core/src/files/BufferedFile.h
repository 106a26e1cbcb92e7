// The file behind `IBufferedFile`.
#pragma once

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/files/BufferedFile.h>

#include "FileBuffer.h"

namespace core {

// Invariants:
//  - reading: ahead_ is what was read and not asked for, within the buffer; the inner file stands at
//    its end; room_ is 0;
//  - writing: the bytes from the buffer's begin to ahead_.cursor wait to be written at the inner
//    file's position; room_ bytes of the buffer follow them; ahead_.left is 0;
//  - innerPosition_ is where the inner file stands; negative: that is not known.
class BufferedFile
    : public ObjectRoot
    , public SCOM_Class<BufferedFile, &CLSID_BufferedFile>
    , public IFileEx
    , public IBufferedFile
    , public IByteWindow {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<BufferedFile, IFileEx, IFile, IBufferedFile, IByteWindow>();
    }

    ~BufferedFile();

    URL url() override;
    unsigned read(void* dst, unsigned n) override;
    void write(const void* src, unsigned n) override;
    void flush() override;
    long long seek(long long offset, int origin) override;
    long long setEOF() override;
    void attach(IFile* file, unsigned bufferSize) override;
    const std::uint8_t* window(unsigned& size) override;
    void advance(unsigned n) override { ahead_.pass(n); }

private:
    IFile& inner() const;
    IFileEx& inner_ex(const char16_t* operation) const;

    unsigned pending() const noexcept;
    void clear_buffer() noexcept;
    void begin_reading();
    void begin_writing();
    void write_pending();
    void write_inner(const void* src, unsigned n);
    void give_back_unread(const char16_t* operation);
    void add_inner_position(unsigned n) noexcept;
    long long inner_position(const char16_t* operation);
    long long seek_inner(long long offset, int origin, const char16_t* operation);
    void try_seek_inner(long long offset, int origin) noexcept;
    void put(const void* src, unsigned n) noexcept;
    void write_large(const std::byte* from, unsigned n);

    InterfacePtr<IFile> inner_;
    InterfacePtr<IFileEx> innerEx_; // the same file, or null
    FileBuffer buffer_;
    ReadAhead ahead_;
    unsigned room_ = 0;
    bool writeMode_ = false;
    bool dirtyOnDestroy_ = true; // the destructor writes what is pending
    long long innerPosition_ = -1;
};

} // namespace core
