#include "BinaryStreamInFile.h"

#include "LogInDestructor.h"
#include <core/files/FileException.h>

#include <algorithm>
#include <cstring>

namespace core {

const InterfaceEntry* BinaryStreamInFile::_GetEntries() noexcept {
    return interface_map<BinaryStreamInFile, IFile, IForwardOnlyFile>();
}

BinaryStreamInFile::BinaryStreamInFile(IListInStream* list) : list_(list, true) {
    list_->beginList();
}

BinaryStreamInFile::~BinaryStreamInFile() {
    log_in_destructor([this] { finish(); });
}

URL BinaryStreamInFile::url() {
    return {};
}

bool BinaryStreamInFile::next_blob() {
    failed_ = true;
    if (!begun_) {
        std::int32_t zero;
        list_->getInt32(zero);
        begun_ = true;
    }
    const bool more = list_->nextInList();
    if (more) list_->getBytes(blob_);
    failed_ = false;
    return more;
}

std::string_view BinaryStreamInFile::ahead() {
    if (finished_) return {};
    while (at_ == blob_.size()) {
        at_ = 0;
        blob_.clear();
        if (!next_blob()) break;
    }
    return blob_.view().substr(at_);
}

unsigned BinaryStreamInFile::read(void* dst, unsigned n) {
    if (n == 0) return 0;
    const std::string_view bytes = ahead().substr(0, n);
    std::memcpy(dst, bytes.data(), bytes.size());
    pass(bytes.size());
    return static_cast<unsigned>(bytes.size());
}

void BinaryStreamInFile::write(const void*, unsigned) {
    throw_unexpected_call(ORB_FILE_HERE, url(), u"BinaryStreamInFile::write");
}

// Behind a failed read the place is not known: the list ends there as well as it can.
void BinaryStreamInFile::finish() {
    if (finished_) return;
    finished_ = true;
    try {
        list_->skipList();
        list_->endList();
    } catch (...) {
        if (!failed_) throw;
    }
}

} // namespace core
