// Text with its attachments in it. An attachment collects in a temporary file while its caller holds
// it. Its release leaves that file waiting, and whatever is to be written next writes it first: so it
// lands in front of that, wherever in the text that is.
#include <core/persistence/StreamPersistenceStorage.h>

#include "AttachmentItem.h"
#include "FirstFault.h"
#include "ListOutStreamDecorator.h"
#include "StorageParts.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/component/Refcountable.h>
#include <core/files/TempFile.h>

namespace core {
namespace {

constexpr unsigned kAttachmentInMemory = 0x10000;

// The text of one file. The storage has it as long as it is open, attachments and the decorator as
// long as somebody holds them; closed, it takes nothing more.
class TextWithAttachments final : public Refcountable<TextWithAttachments, AtomicCounter> {
public:
    explicit TextWithAttachments(IFile* file) : list_(open(file)) {}

    // The stream below, with what was waiting written to it.
    IListOutStream& ready();
    // Called by the release of an attachment.
    void leave(InterfacePtr<IFileEx> attachment) noexcept;
    void close();

private:
    IWriter* open(IFile* file) {
        open_text(text_, file);
        return text_.writer();
    }

    OutputFileStream text_;
    ListOutStream list_;            // empty once closed
    InterfacePtr<IFileEx> waiting_; // an attachment that is complete
    FirstFault fault_;              // of a release
};

IListOutStream& TextWithAttachments::ready() {
    fault_.raise();
    check(static_cast<bool>(list_));
    if (const auto attachment = std::move(waiting_)) {
        attachment->seek(0, kSeekFromStart);
        AttachmentItem item(*attachment);
        list_->beginList();
        list_->putObject(item);
        list_->endList();
    }
    return *list_.get();
}

void TextWithAttachments::leave(InterfacePtr<IFileEx> attachment) noexcept {
    if (!list_) return;
    fault_.attempt([this] { ready(); });
    waiting_ = std::move(attachment);
}

void TextWithAttachments::close() {
    FirstFault fault;
    fault.attempt([this] { ready(); });
    waiting_.reset();
    fault.attempt([this] { list_.close(); });
    fault.attempt([this] { text_.close(); });
    fault.raise();
}

// An attachment while it is written.
class FileOutBinFile
    : public ObjectRoot
    , public SCOM_InternalClass<FileOutBinFile>
    , public IFileEx {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<FileOutBinFile, IFileEx, IFile>();
    }

    explicit FileOutBinFile(InterfacePtr<TextWithAttachments> text)
        : text_(std::move(text)), file_(create_temp_file(kAttachmentInMemory)) {}
    ~FileOutBinFile() { text_->leave(std::move(file_)); }

    URL url() override { return file_->url(); }
    unsigned read(void* dst, unsigned n) override { return file_->read(dst, n); }
    void write(const void* src, unsigned n) override { file_->write(src, n); }
    void flush() override { file_->flush(); }
    long long seek(long long offset, int origin) override { return file_->seek(offset, origin); }
    long long setEOF() override { return file_->setEOF(); }

private:
    InterfacePtr<TextWithAttachments> text_;
    InterfacePtr<IFileEx> file_;
};

} // namespace

class StreamOutPersistenceStorage
    : public ObjectRoot
    , public SCOM_Class<StreamOutPersistenceStorage, &CLSID_StreamOutPersistenceStorage>
    , public OutStorage<IOutPersistenceStorage>
    , public StreamStorage<kFileOpenForWrite> {
public:
    static constexpr bool kAggregatable = true;
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<StreamOutPersistenceStorage, IOutPersistenceStorage,
                             IStreamPersistenceStorage>();
    }
    ~StreamOutPersistenceStorage() {
        close_quietly([this] { attach(nullptr); });
    }

    void attach(IFile* file) override;
    ListOutStream* listStream() override { return opened(list_); }
    InterfacePtr<IFileEx> binFile() override;

private:
    InterfacePtr<TextWithAttachments> text_;
    std::optional<ListOutStream> list_; // the decorated stream
};

void StreamOutPersistenceStorage::attach(IFile* file) {
    list_.reset();
    if (const auto text = std::move(text_)) text->close();
    if (!file) return;
    text_ = {new TextWithAttachments(file), true};
    list_.emplace(make_object<ListOutStreamDecorator<TextWithAttachments>>(text_).get());
}

InterfacePtr<IFileEx> StreamOutPersistenceStorage::binFile() {
    check(static_cast<bool>(text_));
    text_->ready();
    return make_object<FileOutBinFile>(text_);
}

} // namespace core

ORBCORE_REGISTER(core::StreamOutPersistenceStorage);
