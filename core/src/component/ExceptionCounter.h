// The word in which a thread counts its exceptions: the references to it, the thread's own
// included. It is freed with the last of them, which may be an exception that outlives its thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <new>

namespace core {

class ExceptionCounter {
public:
    // With one reference; null without memory.
    static ExceptionCounter* create() noexcept { return new (std::nothrow) ExceptionCounter; }

    void AddRef() noexcept { word_.fetch_add(1, std::memory_order_relaxed); }
    void Release() noexcept {
        if (word_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
    }
    const std::atomic<std::uint32_t>& word() const noexcept { return word_; }

private:
    ExceptionCounter() = default;
    ~ExceptionCounter() = default;

    std::atomic<std::uint32_t> word_ = 1;
};

} // namespace core
