// Attachments that must be positioned are copied behind each other into one temporary file, and each
// is a window on it.
#include <core/persistence/StreamPersistenceStorage.h>

#include "BinaryStreamInFile.h"
#include "FileSegmentFile.h"
#include "StorageParts.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/files/BufferedFile.h>
#include <core/files/TempFile.h>

namespace core {
namespace {

constexpr unsigned kBufferSize = 8192;
constexpr unsigned kAttachmentsInMemory = 0x100000;

} // namespace

class BinaryStreamInPersistenceStorage
    : public ObjectRoot
    , public SCOM_Class<BinaryStreamInPersistenceStorage, &CLSID_BinaryStreamInPersistenceStorage>
    , public IInPersistenceStorage
    , public StreamStorage<kFileOpenForRead> {
public:
    static constexpr bool kAggregatable = true;
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<BinaryStreamInPersistenceStorage, IInPersistenceStorage,
                             IStreamPersistenceStorage>();
    }

    void attach(IFile* file) override;
    ListInStream* listStream() override { return opened(list_); }
    InterfacePtr<IFileEx> binFile() override;
    InterfacePtr<IFile> forwardOnlyBinFile() override {
        return make_object<BinaryStreamInFile>(opened(list_)->get());
    }

private:
    std::optional<ListInStream> list_;
    InterfacePtr<IFileEx> copies_; // of attachments; null before the first
    std::uint64_t copied_ = 0;     // bytes of whole attachments in there
};

void BinaryStreamInPersistenceStorage::attach(IFile* file) {
    list_.reset();
    copies_.reset();
    copied_ = 0;
    if (file) list_.emplace(create_buffered_file(file, kBufferSize).get());
}

InterfacePtr<IFileEx> BinaryStreamInPersistenceStorage::binFile() {
    const auto attachment = make_object<BinaryStreamInFile>(opened(list_)->get());
    if (!copies_) copies_ = create_buffered_temp_file(kAttachmentsInMemory, kBufferSize);
    const std::uint64_t start = copied_;
    std::uint64_t end = start;
    copies_->seek(static_cast<long long>(start), kSeekFromStart);
    for (auto bytes = attachment->ahead(); !bytes.empty(); bytes = attachment->ahead()) {
        copies_->write(bytes.data(), static_cast<unsigned>(bytes.size()));
        attachment->pass(bytes.size());
        end += bytes.size();
    }
    attachment->finish();
    copied_ = end;
    return make_file_segment(copies_.get(), start, end - start);
}

} // namespace core

ORBCORE_REGISTER(core::BinaryStreamInPersistenceStorage);
