// Reference counts for classes that are no objects of the component model.
//
//   class Page : public core::Refcountable<Page, core::AtomicCounter> { … };
//   core::InterfacePtr<Page> page(new Page, true);
#pragma once

#include <atomic>
#include <cstdint>

namespace core {

// A count that several threads may change.
class AtomicCounter {
public:
    std::uint32_t increment() noexcept {
        return value_.fetch_add(1, std::memory_order_relaxed) + 1;
    }
    // Whoever takes the last reference sees all that the others wrote.
    std::uint32_t decrement() noexcept {
        return value_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    }
    std::uint32_t value() const noexcept { return value_.load(std::memory_order_acquire); }

private:
    std::atomic<std::uint32_t> value_ = 0;
};

// A count for the data of one thread.
class SimpleCounter {
public:
    std::uint32_t increment() noexcept { return ++value_; }
    std::uint32_t decrement() noexcept { return --value_; }
    std::uint32_t value() const noexcept { return value_; }

private:
    std::uint32_t value_ = 0;
};

// A new object has no references; `Release` of the last one deletes it through the virtual
// destructor of `T`.
template <class T, class Counter> class Refcountable {
public:
    Refcountable() = default;
    // References belong to the object, not to its value.
    Refcountable(const Refcountable&) noexcept {}
    Refcountable& operator=(const Refcountable&) noexcept { return *this; }

    std::uint32_t AddRef() const noexcept { return counter_.increment(); }
    std::uint32_t Release() const noexcept {
        const std::uint32_t left = counter_.decrement();
        if (left == 0) delete static_cast<const T*>(this);
        return left;
    }
    std::uint32_t references() const noexcept { return counter_.value(); }

protected:
    ~Refcountable() = default;

private:
    mutable Counter counter_;
};

} // namespace core
