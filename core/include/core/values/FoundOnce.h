// An object of the process that is looked up at the first question: a type, a description.
//
//   IType* const known = type_.get();
//   return known ? known : type_.publish(find_type(clsid));
//
// Its reference is held to the end where the object counts references. A singleton counts none and ends
// with its process; such a pointer is dropped without a call, so that whoever has it may end after the
// process: a value in a static variable, one that another singleton holds. To ask for the object then is
// a fault.
//
// One word. Any number of threads may ask for the first time: the pointer is published by
// compare-and-swap, and who comes second drops what it found.
#pragma once

#include <core/component/InterfacePtr.h>

#include <atomic>
#include <cstdint>

namespace core {

template <class Interface> class FoundOnce {
public:
    FoundOnce() noexcept = default;
    FoundOnce(const FoundOnce& other) noexcept
        : word_(other.word_.load(std::memory_order_acquire)) {
        if (const auto word = word_.load(std::memory_order_relaxed); is_held(word))
            object_of(word)->AddRef();
    }
    // What was found stays.
    FoundOnce& operator=(const FoundOnce&) noexcept { return *this; }
    ~FoundOnce() {
        if (const auto word = word_.load(std::memory_order_acquire); is_held(word))
            object_of(word)->Release();
    }

    // Lent; null until it is published.
    Interface* get() const noexcept { return object_of(word_.load(std::memory_order_acquire)); }

    // What is known from now on: `found`, or what another thread has published before; null, and
    // nothing known, when nothing was found.
    Interface* publish(InterfacePtr<Interface> found) noexcept {
        if (!found) return get();
        static_assert(alignof(Interface) > kHeld);
        const bool held = counts_references(*found);
        std::uintptr_t published = 0;
        if (!word_.compare_exchange_strong(published,
                                           reinterpret_cast<std::uintptr_t>(found.get()) | held,
                                           std::memory_order_acq_rel, std::memory_order_acquire))
            return object_of(published);
        return found.detach();
    }

private:
    static constexpr std::uintptr_t kHeld = 1; // beside the address, which is even

    static bool is_held(std::uintptr_t word) noexcept { return (word & kHeld) != 0; }
    static Interface* object_of(std::uintptr_t word) noexcept {
        return reinterpret_cast<Interface*>(word & ~kHeld);
    }
    // Objects that count none always answer with 1; here one reference is held already.
    static bool counts_references(Interface& object) noexcept {
        const bool counts = object.AddRef() > 1;
        object.Release();
        return counts;
    }

    std::atomic<std::uintptr_t> word_ = 0;
};

} // namespace core
