// Lists as bytes. An attachment is written into them as it comes: a list of a 0, then a blob for each
// write of the caller.
#include <core/persistence/StreamPersistenceStorage.h>

#include "StorageParts.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/files/BufferedFile.h>

#include <utility>

namespace core {
namespace {

constexpr unsigned kBufferSize = 8192;

// An attachment while it is written; its release ends its list.
class BinaryStreamOutFile
    : public ObjectRoot
    , public SCOM_InternalClass<BinaryStreamOutFile>
    , public IFileEx {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<BinaryStreamOutFile, IFileEx, IFile>();
    }

    explicit BinaryStreamOutFile(IListOutStream* list) : list_(list, true) {
        list_->beginList();
        list_->putInt32(0);
    }
    // The list only notes its end here and writes it with what comes next: nothing can fail.
    ~BinaryStreamOutFile() {
        if (clean_) close_quietly([this] { list_->endList(); });
    }

    URL url() override { return {}; }
    unsigned read(void*, unsigned) override { return 0; }
    void write(const void* src, unsigned n) override {
        clean_ = false;
        list_->putBinary(src, n);
        clean_ = true;
    }
    void flush() override {}
    long long seek(long long, int) override { return 0; }
    long long setEOF() override { return 0; }

private:
    InterfacePtr<IListOutStream> list_;
    bool clean_ = true; // no write has failed
};

} // namespace

class BinaryStreamOutPersistenceStorage
    : public ObjectRoot
    , public SCOM_Class<BinaryStreamOutPersistenceStorage, &CLSID_BinaryStreamOutPersistenceStorage>
    , public OutStorage<IOutPersistenceStorage>
    , public StreamStorage<kFileOpenForWrite> {
public:
    static constexpr bool kAggregatable = true;
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<BinaryStreamOutPersistenceStorage, IOutPersistenceStorage,
                             IStreamPersistenceStorage>();
    }
    ~BinaryStreamOutPersistenceStorage() {
        close_quietly([this] { attach(nullptr); });
    }

    void attach(IFile* file) override;
    ListOutStream* listStream() override { return opened(list_); }
    InterfacePtr<IFileEx> binFile() override {
        return make_object<BinaryStreamOutFile>(opened(list_)->get());
    }

private:
    std::optional<ListOutStream> list_;
};

void BinaryStreamOutPersistenceStorage::attach(IFile* file) {
    if (auto list = std::exchange(list_, std::nullopt)) list->close();
    if (file) list_.emplace(create_buffered_file(file, kBufferSize).get());
}

} // namespace core

ORBCORE_REGISTER(core::BinaryStreamOutPersistenceStorage);
