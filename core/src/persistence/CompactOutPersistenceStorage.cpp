#include <core/persistence/CompactPersistenceStorage.h>

#include "CompactFormat.h"
#include "FirstFault.h"
#include "StorageParts.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/IllegalArgumentException.h>
#include <core/component/Object.h>
#include <core/files/BufferedFile.h>
#include <core/files/FileFunctions.h>
#include <core/files/TempFile.h>

#include <utility>
#include <vector>

namespace core {
namespace {

constexpr unsigned kSectionInMemory = 0x1000000;
constexpr unsigned kBufferSize = 32768;

std::uint64_t size_of(IFileEx& file) {
    return static_cast<std::uint64_t>(file.seek(0, kSeekFromEnd));
}

void copy_section(IFile& to, IFileEx& section, std::uint64_t length) {
    section.seek(0, kSeekFromStart);
    copy_file(&to, &section, length);
}

} // namespace

class CompactOutPersistenceStorage
    : public ObjectRoot
    , public SCOM_Class<CompactOutPersistenceStorage, &CLSID_CompactOutPersistenceStorage>
    , public OutStorage<ICompactOutPersistenceStorage> {
public:
    static constexpr bool kAggregatable = true;
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<CompactOutPersistenceStorage, ICompactOutPersistenceStorage,
                             IOutPersistenceStorage>();
    }
    ~CompactOutPersistenceStorage() {
        close_quietly([this] { attach(nullptr, nullptr); });
    }

    ListOutStream* listStream() override { return opened(list_); }
    InterfacePtr<IFileEx> binFile() override;

    void attach(IFile* file, ICompactStreamTransform* transform) override;
    void open(const URL& url, ICompactStreamTransform* transform) override {
        close();
        attach(process_file_system().open(url, kFileOpenForWrite).get(), transform);
    }
    void close() override { attach(nullptr, nullptr); }

private:
    using Attachments = std::vector<InterfacePtr<IFileEx>>;

    // What `close` writes, and where.
    struct Contents {
        InterfacePtr<IFile> target;
        InterfacePtr<ICompactStreamTransform> transform;
        InterfacePtr<IFileEx> text;
        Attachments attachments;

        void write();
        void write_sections(IFile& to);
    };

    void end();

    Contents contents_;
    OutputFileStream text_;
    std::optional<ListOutStream> list_;
};

void CompactOutPersistenceStorage::attach(IFile* file, ICompactStreamTransform* transform) {
    end();
    if (!file) return;
    auto section = create_temp_file(kSectionInMemory);
    open_text(text_, section.get());
    contents_ = {{file, true}, {transform, true}, std::move(section), {}};
    list_.emplace(text_.writer());
}

InterfacePtr<IFileEx> CompactOutPersistenceStorage::binFile() {
    ListOutStream& list = *opened(list_);
    list->beginList();
    list->putUInt32(static_cast<std::uint32_t>(contents_.attachments.size()));
    list->endList();
    return contents_.attachments.emplace_back(create_temp_file(kSectionInMemory));
}

// Whatever fails, nothing stays open.
void CompactOutPersistenceStorage::end() {
    if (!list_) return;
    Contents contents = std::exchange(contents_, {});
    FirstFault fault;
    fault.attempt([this] { list_->close(); });
    list_.reset();
    fault.attempt([this] { text_.close(); });
    fault.raise();
    contents.write();
}

// Small records collect in a buffer in front of the target.
void CompactOutPersistenceStorage::Contents::write() {
    const auto buffered = create_buffered_file(target.get(), kBufferSize);
    if (!transform) {
        write_record(*buffered, CompactSignature(kCompactPlain));
        write_sections(*buffered);
    } else {
        write_record(*buffered, CompactSignature(kCompactTransformed));
        write_record(*buffered, CompactTransformClass(transform->getClsid()));
        const auto wrapped = transform->wrapOutput(buffered.get());
        ORB_ASSERT(wrapped);
        write_sections(*wrapped);
        wrapped->flush();
    }
    buffered->flush();
}

// Each temporary file goes as soon as it is copied.
void CompactOutPersistenceStorage::Contents::write_sections(IFile& to) {
    const std::uint64_t textLength = size_of(*text);
    write_record(to, CompactTextLength(textLength));
    copy_section(to, *text, textLength);
    text.reset();
    std::uint32_t index = 0;
    for (InterfacePtr<IFileEx>& attachment : attachments) {
        const std::uint64_t length = size_of(*attachment);
        write_record(to, CompactAttachment{index++, length});
        copy_section(to, *attachment, length);
        attachment.reset();
    }
}

} // namespace core

ORBCORE_REGISTER(core::CompactOutPersistenceStorage);
