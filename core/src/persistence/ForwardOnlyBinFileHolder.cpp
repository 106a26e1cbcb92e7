#include <core/persistence/ForwardOnlyBinFileHolder.h>

#include "ForwardOnlyFile.h"
#include "LogInDestructor.h"

#include <utility>

namespace core {

ForwardOnlyBinFileHolder::~ForwardOnlyBinFileHolder() {
    log_in_destructor([this] { closeForwardOnlyBinFile(); });
}

IFile* ForwardOnlyBinFileHolder::file() {
    if (!file_ && !closed_) file_ = storage_->forwardOnlyBinFile();
    return file_.get();
}

void ForwardOnlyBinFileHolder::closeForwardOnlyBinFile() {
    const InterfacePtr<IFile> file = std::move(file_);
    if (!file) return;
    closed_ = true;
    if (const InterfacePtr<IForwardOnlyFile> part(file); part) part->finish();
}

} // namespace core
