#include <core/persistence/StreamPersistenceStorage.h>

#include "AttachmentWords.h"
#include "OldAttachment.h"
#include "StorageParts.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/files/TempFile.h>
#include <core/files/TextFiles.h>

namespace core {
namespace {

constexpr unsigned kAttachmentInMemory = 0x40000;

// The word in front of an attachment, with its colon.
class AttachmentWord {
public:
    explicit AttachmentWord(IReader& reader) {
        do {
            check(size_ != std::size(units_) && !reader.eof());
            units_[size_++] = reader.get();
        } while (units_[size_ - 1] != u':');
    }
    friend bool operator==(const AttachmentWord& word, std::u16string_view text) noexcept {
        return std::u16string_view(word.units_, word.size_) == text;
    }

private:
    char16_t units_[10 + 1];
    std::size_t size_ = 0;
};

void read_attachment(IReader& reader, IFile& to) {
    const AttachmentWord word(reader);
    if (word == kBase64Attachment) {
        check(decode_base64(&reader, &to));
    } else {
        check(word == kOldAttachment);
        decode_old_attachment(reader, to);
    }
}

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
    auto file = create_temp_file(kAttachmentInMemory);
    list->beginList();
    read_attachment(*text_.reader(), *file);
    list->endList();
    file->seek(0, kSeekFromStart);
    return file;
}

} // namespace core

ORBCORE_REGISTER(core::StreamInPersistenceStorage);
