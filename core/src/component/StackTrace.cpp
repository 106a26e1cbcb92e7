#include <core/component/StackTrace.h>

#include <core/component/Utf8.h>

#include "platform/OwnLibrary.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <string_view>

#define UNW_LOCAL_ONLY
#include <dlfcn.h>
#include <libunwind.h>
#include <link.h>

namespace core {
namespace {

constexpr unsigned kMostFrames = 1024;
constexpr unsigned kEntryLength = 63; // an entry is written into 64 units, terminator included

using Frames = std::array<void*, kMostFrames>;

thread_local constinit unsigned capture_off = 0;

// How many libraries were unloaded since the program began.
std::uint64_t unloaded_libraries() noexcept {
    std::uint64_t count = 0;
    const auto read = [](dl_phdr_info* info, std::size_t, void* out) {
        *static_cast<std::uint64_t*>(out) = info->dlpi_subs;
        return 1; // every entry tells the same number
    };
    dl_iterate_phdr(read, &count);
    return count;
}

// `unw_backtrace` remembers, per thread and for good, how each frame unwinds. Where a library was
// unloaded, another may lie now at the same addresses with other frames, and following the old ones
// reads stray memory: from then on the thread takes the plain walk.
//
// The thread sanitizer does without: it has ended its own record of a thread when libunwind takes a
// lock to free what that thread remembered.
bool may_use_remembered_frames(std::uint64_t unloaded) noexcept {
#ifdef __SANITIZE_THREAD__
    return false;
#endif
    constexpr std::uint64_t kUnknown = ~std::uint64_t{};
    thread_local constinit std::uint64_t rememberedSince = kUnknown;
    if (rememberedSince == kUnknown) rememberedSince = unloaded;
    return rememberedSince == unloaded;
}

// The plain walk consults tables that are shared by all threads and can be emptied. Two threads
// that see a new count both empty them, which does no harm.
void forget_unloaded_libraries(std::uint64_t unloaded) noexcept {
    static std::atomic<std::uint64_t> forgotten = 0;
    if (forgotten.load(std::memory_order_acquire) == unloaded) return;
    unw_flush_cache(unw_local_addr_space, 0, 0);
    forgotten.store(unloaded, std::memory_order_release);
}

// Inline: the frame of the caller is the first.
[[gnu::always_inline]] inline unsigned walk_frames(Frames& frames, unsigned count) noexcept {
    unw_context_t context;
    unw_cursor_t cursor;
    unw_getcontext(&context);
    unw_init_local(&cursor, &context);
    unsigned walked = 0;
    while (walked != count) {
        unw_word_t address = 0;
        unw_get_reg(&cursor, UNW_REG_IP, &address);
        frames[walked++] = reinterpret_cast<void*>(address);
        if (unw_step(&cursor) <= 0) break;
    }
    return walked;
}

std::string_view stem_of(std::string_view file) noexcept {
    file.remove_prefix(file.rfind('/') + 1);         // npos + 1 is 0
    const std::size_t versioned = file.find(".so."); // as in "orbcore.so.1"
    return file.substr(0, versioned != file.npos ? versioned : file.rfind('.'));
}

bool lies_beside_this_library(std::string_view file) {
    return file.substr(0, file.rfind('/') + 1) == std::string_view(own_library_directory());
}

stdx::ustring entry_text(std::uintptr_t address) {
    std::string_view module = "unknown";
    std::uintptr_t shown = address;
    Dl_info info = {};
    if (dladdr(reinterpret_cast<const void*>(address), &info) && info.dli_fname) {
        module = stem_of(info.dli_fname);
        shown = lies_beside_this_library(info.dli_fname)
                    ? address - reinterpret_cast<std::uintptr_t>(info.dli_fbase)
                    : 0;
    }
    char digits[2 * sizeof shown];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), shown, 16).ptr;
    stdx::ustring entry = from_utf8(module);
    entry += u":0x";
    entry.append(std::begin(digits), end);
    entry += u' ';
    if (entry.size() > kEntryLength) entry.resize(kEntryLength);
    return entry;
}

} // namespace

[[gnu::noinline]] std::vector<std::uintptr_t> get_stack_trace(unsigned int skip,
                                                              unsigned int count) {
    Frames frames;
    count = std::min(count, kMostFrames);
    const std::uint64_t unloaded = unloaded_libraries();
    unsigned walked = 0;
    if (may_use_remembered_frames(unloaded)) {
        walked = static_cast<unsigned>(unw_backtrace(frames.data(), static_cast<int>(count)));
    } else {
        forget_unloaded_libraries(unloaded);
        walked = walk_frames(frames, count);
    }
    std::vector<std::uintptr_t> addresses;
    if (walked <= skip) return addresses;
    addresses.reserve(walked - skip);
    for (unsigned i = skip; i != walked; ++i)
        addresses.push_back(reinterpret_cast<std::uintptr_t>(frames[i]));
    return addresses;
}

stdx::ustring print_stack_trace(const std::vector<std::uintptr_t>& frames) {
    stdx::ustring text;
    for (const std::uintptr_t address : frames) text += entry_text(address);
    return text;
}

StackCaptureOff::StackCaptureOff() noexcept {
    ++capture_off;
}

StackCaptureOff::~StackCaptureOff() {
    --capture_off;
}

bool StackCaptureOff::active() noexcept {
    return capture_off != 0;
}

} // namespace core
