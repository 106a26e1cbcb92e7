// An attachment that is read in sequence, for the span of a block.
//
//   core::ForwardOnlyBinFileHolder holder(storage);
//   core::copy_file(target, holder.file(), size);
//   holder.closeForwardOnlyBinFile();            // tells what fails in passing the rest
#pragma once

#include <core/platform/api.h>
#include <core/streams/PersistenceStorage.h>

namespace core {

class ORBCORE_API ForwardOnlyBinFileHolder {
public:
    // Fetches nothing yet. The storage must live as long.
    explicit ForwardOnlyBinFileHolder(IInPersistenceStorage* storage) noexcept
        : storage_(storage) {}
    // Closes; a `core::Exception` out of that goes to the technical log.
    ~ForwardOnlyBinFileHolder();
    ForwardOnlyBinFileHolder(const ForwardOnlyBinFileHolder&) = delete;
    ForwardOnlyBinFileHolder& operator=(const ForwardOnlyBinFileHolder&) = delete;

    // The next attachment of the storage, fetched by the first call; lent. Null once closed.
    IFile* file();
    // Passes the rest of the attachment and releases it; nothing happens without one.
    void closeForwardOnlyBinFile();

private:
    IInPersistenceStorage* storage_;
    InterfacePtr<IFile> file_;
    bool closed_ = false;
};

} // namespace core
