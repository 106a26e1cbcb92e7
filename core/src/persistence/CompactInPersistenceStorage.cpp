#include <core/persistence/CompactPersistenceStorage.h>

#include "CompactFormat.h"
#include "StorageParts.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/IllegalArgumentException.h>
#include <core/component/Object.h>
#include <core/files/FileFunctions.h>
#include <core/files/TempFile.h>

#include <algorithm>

namespace core {
namespace {

constexpr unsigned kSectionInMemory = 0x1000000;

// The sections behind the signature, from the first to the last. A length that says more than there
// is costs no more than what there is.
class CompactSections {
public:
    CompactSections(InterfacePtr<IFile> file, IFileExFactory* tempFiles)
        : file_(std::move(file)), random_(file_), tempFiles_(tempFiles, true) {}

    // The text, which is to be fetched first.
    InterfacePtr<IFileEx> text() {
        CompactTextLength length;
        check(read_record(*file_, length));
        return copy(length);
    }
    // The attachment of that number. Those in front of it are passed.
    InterfacePtr<IFileEx> attachment(std::uint32_t index) {
        for (;;) {
            CompactAttachment header;
            check(read_record(*file_, header) && header.index <= index);
            if (header.index == index) return copy(header.length);
            pass(header.length);
        }
    }

private:
    InterfacePtr<IFileEx> copy(std::uint64_t length);
    void pass(std::uint64_t length);

    InterfacePtr<IFile> file_;
    InterfacePtr<IFileEx> random_; // the same file, or null
    InterfacePtr<IFileExFactory> tempFiles_;
};

InterfacePtr<IFileEx> CompactSections::copy(std::uint64_t length) {
    auto section = tempFiles_ ? tempFiles_->createFile() : create_temp_file(kSectionInMemory);
    ORB_ASSERT(section);
    check(copy_file(section.get(), file_.get(), length) == length);
    section->seek(0, kSeekFromStart);
    return section;
}

void CompactSections::pass(std::uint64_t length) {
    if (random_) {
        const long long here = random_->seek(0, kSeekFromCurrent);
        const long long end = random_->seek(0, kSeekFromEnd);
        check(here <= end && length <= static_cast<std::uint64_t>(end - here));
        random_->seek(here + static_cast<long long>(length), kSeekFromStart);
        return;
    }
    std::byte piece[8192];
    while (length != 0) {
        const auto n = static_cast<unsigned>(std::min<std::uint64_t>(length, sizeof piece));
        check(read_fully(*file_, piece, n) == n);
        length -= n;
    }
}

} // namespace

class CompactInPersistenceStorage
    : public ObjectRoot
    , public SCOM_Class<CompactInPersistenceStorage, &CLSID_CompactInPersistenceStorage>
    , public ICompactInPersistenceStorage {
public:
    static constexpr bool kAggregatable = true;
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<CompactInPersistenceStorage, ICompactInPersistenceStorage,
                             IInPersistenceStorage>();
    }

    ListInStream* listStream() override { return opened(list_); }
    InterfacePtr<IFileEx> binFile() override;
    InterfacePtr<IFile> forwardOnlyBinFile() override { return binFile(); }

    InterfacePtr<ICompactStreamTransform> attach(IFile* file, IFileExFactory* tempFiles) override;
    void open(const URL& url) override {
        close();
        attach(process_file_system().open(url, kFileOpenForRead).get(), nullptr);
    }
    void close() override { attach(nullptr, nullptr); }

private:
    void start(InterfacePtr<IFile> sections, IFileExFactory* tempFiles);

    std::optional<CompactSections> sections_;
    InputFileStream text_;
    std::optional<ListInStream> list_;
};

InterfacePtr<ICompactStreamTransform>
CompactInPersistenceStorage::attach(IFile* file, IFileExFactory* tempFiles) {
    list_.reset();
    text_.close();
    sections_.reset();

    CompactSignature signature;
    if (!file || !read_record(*file, signature)) return {};
    if (signature == kCompactPlain) {
        start({file, true}, tempFiles);
        return {};
    }
    if (signature != kCompactTransformed) return {};
    CompactTransformClass clsid;
    check(read_record(*file, clsid));
    auto transform = create_object<ICompactStreamTransform>(clsid);
    if (transform) start(transform->wrapInput(file), tempFiles);
    return transform;
}

void CompactInPersistenceStorage::start(InterfacePtr<IFile> sections, IFileExFactory* tempFiles) {
    ORB_ASSERT(sections);
    sections_.emplace(std::move(sections), tempFiles);
    open_text(text_, sections_->text().get());
    list_.emplace(text_.reader());
}

InterfacePtr<IFileEx> CompactInPersistenceStorage::binFile() {
    ListInStream& list = *opened(list_);
    std::uint32_t index = 0;
    list->beginList();
    list->getUInt32(index);
    list->endList();
    return sections_->attachment(index);
}

} // namespace core

ORBCORE_REGISTER(core::CompactInPersistenceStorage);
