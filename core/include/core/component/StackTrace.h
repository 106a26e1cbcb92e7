// The raw stack of the calling thread, and its text.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

#include <cstdint>
#include <vector>

namespace core {

// The addresses of at most `count` frames, 1024 at most, this function's own first and then those
// that it returns to, without the first `skip`. Costs some 10 ns a frame once the code on the way
// has been seen; on a thread that was there before a library was unloaded, some 400 ns.
ORBCORE_API std::vector<std::uintptr_t> get_stack_trace(unsigned int skip, unsigned int count);

// One line: for each address "module:0xoffset ", the module's file name without its extension and
// the offset from its load address. The offset is 0 for modules from other directories than this
// library's own; an address in no module gives "unknown" and the address.
ORBCORE_API stdx::ustring print_stack_trace(const std::vector<std::uintptr_t>& frames);

// While one lives, exceptions that are made on its thread capture no stack.
class ORBCORE_API StackCaptureOff {
public:
    StackCaptureOff() noexcept;
    ~StackCaptureOff();
    StackCaptureOff(const StackCaptureOff&) = delete;
    StackCaptureOff& operator=(const StackCaptureOff&) = delete;

    static bool active() noexcept;
};

} // namespace core
