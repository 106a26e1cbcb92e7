#include <core/persistence/StreamPersistenceStorage.h>

#include "AttachmentItem.h"
#include "StorageParts.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/files/TempFile.h>

namespace core {
namespace {

constexpr unsigned kAttachmentInMemory = 0x40000;
constexpr unsigned kBuffer = 0x2000; // a line of base64 is 48 bytes

} // namespace

class StreamInPersistenceStorage
    : public ObjectRoot
    , public SCOM_Class<StreamInPersistenceStorage, &CLSID_StreamInPersistenceStorage>
    , public IInPersistenceStorage
    , public StreamStorage<kFileOpenForRead> {
public:
    static constexpr bool kAggregatable = true;
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<StreamInPersistenceStorage, IInPersistenceStorage,
                             IStreamPersistenceStorage>();
    }

    void attach(IFile* file) override;
    ListInStream* listStream() override { return opened(list_); }
    InterfacePtr<IFileEx> binFile() override;
    InterfacePtr<IFile> forwardOnlyBinFile() override { return binFile(); }

private:
    InputFileStream text_;
    std::optional<ListInStream> list_;
};

void StreamInPersistenceStorage::attach(IFile* file) {
    list_.reset();
    text_.close();
    if (!file) return;
    open_text(text_, file);
    list_.emplace(text_.reader());
}

InterfacePtr<IFileEx> StreamInPersistenceStorage::binFile() {
    ListInStream& list = *opened(list_);
    auto file = create_buffered_temp_file(kAttachmentInMemory, kBuffer);
    AttachmentItem item(*file);
    list->beginList();
    list->getObject(item);
    list->endList();
    file->seek(0, kSeekFromStart);
    return file;
}

} // namespace core

ORBCORE_REGISTER(core::StreamInPersistenceStorage);
