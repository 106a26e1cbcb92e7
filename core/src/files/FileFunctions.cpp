#include <core/files/FileFunctions.h>

#include <core/component/Messages.h>
#include <core/component/Utf8.h>
#include <core/concurrency/Thread.h>
#include <core/files/FileException.h>

#include "FileBlocks.h"
#include "ProcessFileSystem.h"
#include "component/MessageFormat.h"

#include <limits>
#include <string>

namespace core {
namespace {

constexpr auto kAll = std::numeric_limits<unsigned long long>::max();
constexpr unsigned kWaitTries = 10;
constexpr unsigned kWaitPauseMs = 100;

// Null comes before a file; 0 also stands for two files, which are then to be looked into.
int compare_presence(const void* a, const void* b) noexcept {
    return (a != nullptr) - (b != nullptr);
}

void rewind(IFileEx& file) {
    file.seek(0, kSeekFromStart);
}

template <class Operation> bool try_with_wait(Operation&& operation) {
    for (unsigned i = 0; i < kWaitTries; ++i) {
        if (i != 0) Thread::sleep(kWaitPauseMs);
        try {
            operation();
            return true;
        } catch (const FileException& exception) {
            if (exception.error() == FileException::Error::DeviceFull) throw;
        }
    }
    return false;
}

} // namespace

unsigned long long copy_file(IFile* to, IFile* from, unsigned long long n) {
    const kiln::PooledBuffer block(kiln::buffer_pools().kib16);
    unsigned long long copied = 0;
    while (copied != n) {
        const auto wanted = std::min<unsigned long long>(n - copied, block.size());
        const unsigned got = from->read(block.data(), static_cast<unsigned>(wanted));
        if (got == 0) break;
        to->write(block.data(), got);
        copied += got;
    }
    return copied;
}

// ---- Comparing. A file equals itself, though it has one position for both sides.

bool compare_files(IFile* a, IFile* b) {
    if (!a || !b || a == b) return a == b;
    return compare_blocks(*a, *b, kAll) == 0;
}

bool compare_exfiles(IFileEx* a, IFileEx* b) {
    if (!a || !b) return a == b;
    const bool sameSize = a->seek(0, kSeekFromEnd) == b->seek(0, kSeekFromEnd);
    rewind(*a);
    rewind(*b);
    if (!sameSize) return false;
    const bool equal = compare_files(a, b);
    rewind(*a);
    rewind(*b);
    return equal;
}

int compare_files_ex(IFile* a, IFile* b) {
    if (!a || !b || a == b) return compare_presence(a, b);
    return compare_blocks(*a, *b, kAll);
}

int compare_exfiles_ex(IFileEx* a, IFileEx* b) {
    if (!a || !b) return compare_presence(a, b);
    rewind(*a);
    rewind(*b);
    const int order = compare_files_ex(a, b);
    rewind(*a);
    rewind(*b);
    return order;
}

// ---- By URL.

bool create_file_if_not_exist(const URL& url) {
    IFileSystem& files = process_file_system();
    try {
        return files.exists(url) || files.open(url, kFileWrite | kFileKeep);
    } catch (const FileException&) {
        return false;
    }
}

bool move_file_with_wait(const URL& from, const URL& to) {
    return try_with_wait([&] { process_file_system().move(from, to); });
}

bool remove_file_with_wait(const URL& url) {
    return try_with_wait([&] { process_file_system().remove(url, nullptr); });
}

stdx::ustring file_size_to_str(unsigned long long size) {
    static constexpr const char* kKeys[] = {"IDS_SIZEFMT_B", "IDS_SIZEFMT_K", "IDS_SIZEFMT_M",
                                            "IDS_SIZEFMT_G"};
    std::size_t unit = 0;
    for (; size >= 1024 && unit + 1 < std::size(kKeys); ++unit) size /= 1024;
    return format_message(load_core_wstring(kKeys[unit]), from_utf8(std::to_string(size)));
}

} // namespace core
