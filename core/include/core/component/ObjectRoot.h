// The root of every object of the component model: the word that counts its references.
#pragma once

#include <core/component/IUnknown.h>
#include <core/platform/api.h>

#include <atomic>
#include <cstdint>
#include <mutex>

namespace core {

// What released memory is marked with, so that a use after the end shows in a debugger.
inline constexpr std::uint32_t kDestroyedCount = 0xc0000001;
inline constexpr std::uint32_t kFreedMemory = 0xfefefefe;

// Counts change atomically; a class that wants a lock declares one.
struct SCOM_MultiThreadModel {};

// Writes `condition` to stderr in one line and stops the process: for faults of the program that
// leave no way to go on.
[[noreturn]] ORBCORE_API void stop_process(const char* condition) noexcept;

} // namespace core

namespace ATL {

struct CComMultiThreadModel {};

// One word: the reference count, or, in a contained object, the pointer to the outer `IUnknown`.
// The word must be 0 when the object is destroyed; anything else stops the process.
class CComObjectRootBase {
public:
    CComObjectRootBase() noexcept = default;
    // References belong to the object, not to its value.
    CComObjectRootBase(const CComObjectRootBase&) noexcept {}
    CComObjectRootBase& operator=(const CComObjectRootBase&) noexcept { return *this; }

protected:
    ~CComObjectRootBase() {
        if (word_.load(std::memory_order_relaxed) != 0)
            core::stop_process("an object was destroyed while references to it were held");
        word_.store(core::kDestroyedCount, std::memory_order_relaxed);
    }

    std::uint32_t increment_references() noexcept {
        return static_cast<std::uint32_t>(word_.fetch_add(1, std::memory_order_relaxed) + 1);
    }
    // Whoever takes the last reference sees all that the others wrote.
    std::uint32_t decrement_references() noexcept {
        return static_cast<std::uint32_t>(word_.fetch_sub(1, std::memory_order_acq_rel) - 1);
    }
    void set_references(std::uint32_t count) noexcept {
        word_.store(count, std::memory_order_relaxed);
    }

    IUnknown* outer() const noexcept {
        return reinterpret_cast<IUnknown*>(word_.load(std::memory_order_relaxed));
    }
    void set_outer(IUnknown* outer) noexcept {
        word_.store(reinterpret_cast<std::uintptr_t>(outer), std::memory_order_relaxed);
    }

private:
    std::atomic<std::uintptr_t> word_ = 0;
};
static_assert(sizeof(CComObjectRootBase) == sizeof(void*));

template <class ThreadModel> class CComObjectRootEx;

template <> class CComObjectRootEx<core::SCOM_MultiThreadModel> : public CComObjectRootBase {};

template <> class CComObjectRootEx<CComMultiThreadModel> : public CComObjectRootBase {
protected:
    std::recursive_mutex mutex_;
};

} // namespace ATL

namespace core {
// The bases of nearly every class of the model begin with this one.
using ObjectRoot = ATL::CComObjectRootEx<SCOM_MultiThreadModel>;
} // namespace core
