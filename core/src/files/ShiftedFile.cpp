#include <core/files/ShiftedFile.h>

#include <core/component/ClassDescriptor.h>
#include <core/component/IllegalStateException.h>
#include <core/component/Object.h>
#include <core/files/FileException.h>
#include <core/files/FileFunctions.h>

#include "FileBlocks.h"
#include "StorageFormatError.h"

namespace core {

class ShiftedFile
    : public ObjectRoot
    , public SCOM_Class<ShiftedFile, &CLSID_ShiftedFile>
    , public IShiftedFile {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<ShiftedFile, IShiftedFile, IFileShared, IFileEx, IFile>();
    }

    URL url() override { return inner().url(); }
    unsigned read(void* dst, unsigned n) override { return inner().read(dst, n); }
    void write(const void* src, unsigned n) override { inner().write(src, n); }
    void flush() override { inner().flush(); }
    long long seek(long long offset, int origin) override;
    long long setEOF() override { return behind_preamble(inner().setEOF()); }

    void lock(unsigned long long offset, unsigned length) override {
        shared()->lock(offset + shift_, length);
    }
    void unlock(unsigned long long offset, unsigned length) override {
        shared()->unlock(offset + shift_, length);
    }
    bool tryLock(unsigned long long offset, unsigned length) override {
        return shared()->tryLock(offset + shift_, length);
    }

    void attach(IFileEx* file, IFile* preamble, unsigned long long shift) override;
    InterfacePtr<IFileEx> file() override { return inner_; }
    bool isShifted() override { return shift_ != 0; }

private:
    IFileEx& inner() {
        if (!inner_) throw IllegalStateException(ORB_HERE);
        return *inner_;
    }
    InterfacePtr<IFileShared> shared() {
        InterfacePtr<IFileShared> shared(&inner());
        if (!shared) throw_unexpected_call(ORB_FILE_HERE, inner().url(), u"ShiftedFile::lock");
        return shared;
    }
    long long behind_preamble(long long position) const noexcept {
        return std::max(position - static_cast<long long>(shift_), 0LL);
    }

    InterfacePtr<IFileEx> inner_;
    std::uint64_t shift_ = 0; // the length of the preamble
};

void ShiftedFile::attach(IFileEx* file, IFile* preamble, unsigned long long shift) {
    if (!file || !preamble) throw IllegalStateException(ORB_HERE);
    const auto length = static_cast<long long>(shift);
    if (length < 0) throw IllegalStateException(ORB_HERE);
    inner_.reset();
    shift_ = 0;

    const InterfacePtr<IFileEx> source(preamble);
    if (source) source->seek(0, kSeekFromStart);
    const long long size = file->seek(0, kSeekFromEnd);
    file->seek(0, kSeekFromStart);
    if (size == 0) {
        if (copy_file(file, preamble, shift) != shift) throw_bad_storage_format(file->url());
    } else if (size < length || compare_blocks(*file, *preamble, shift) != 0) {
        throw_bad_storage_format(file->url());
    }

    if (source) source->seek(0, kSeekFromStart);
    if (file->seek(length, kSeekFromStart) != length) throw IllegalStateException(ORB_HERE);
    inner_ = {file, true};
    shift_ = shift;
}

long long ShiftedFile::seek(long long offset, int origin) {
    IFileEx& file = inner();
    const auto shift = static_cast<long long>(shift_);
    long long position = 0;
    switch (origin) {
    case kSeekFromStart:
        if (__builtin_add_overflow(offset, shift, &offset))
            throw_file_exception(ORB_FILE_HERE, url(), EOVERFLOW);
        position = file.seek(offset, origin);
        break;
    case kSeekFromCurrent:
    case kSeekFromEnd:
        position = file.seek(offset, origin);
        break;
    default:
        return 0;
    }
    // The preamble is out of reach of reads and writes.
    if (position < shift) file.seek(shift, kSeekFromStart);
    return behind_preamble(position);
}

} // namespace core

ORBCORE_REGISTER(core::ShiftedFile);
