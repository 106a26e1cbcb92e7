// The owning pointer of the component model: null, or one reference.
//
//   InterfacePtr<ICounter> counter = core::create_object<ICounter>(CLSID_Counter);
//   InterfacePtr<IPersistable> store(counter);        // another interface of the same object
//   if (store) store->save();                         // null when there is no such interface
//
// It works for whatever counts by `AddRef` and `Release`, `core::Refcountable` included. It is as
// safe as a raw pointer: one instance is not to be written by two threads at once.
#pragma once

#include <core/component/IUnknown.h>

#include <compare>
#include <concepts>
#include <cstddef>
#include <functional>
#include <utility>

namespace core {

template <class T> class InterfacePtr {
public:
    using element_type = T;

    constexpr InterfacePtr() noexcept = default;
    constexpr InterfacePtr(std::nullptr_t) noexcept {}

    // `addRef` false takes over a reference that the caller already holds.
    InterfacePtr(T* pointer, bool addRef) noexcept : pointer_(pointer) {
        if (addRef && pointer_) pointer_->AddRef();
    }

    InterfacePtr(const InterfacePtr& other) noexcept : InterfacePtr(other.pointer_, true) {}
    InterfacePtr(InterfacePtr&& other) noexcept : pointer_(other.detach()) {}

    template <class U>
    requires(!std::same_as<U, T> && std::convertible_to<U*, T*>)
        InterfacePtr(const InterfacePtr<U>& other)
    noexcept : InterfacePtr(other.get(), true) {}

    template <class U>
    requires(!std::same_as<U, T> && std::convertible_to<U*, T*>)
        InterfacePtr(InterfacePtr<U>&& other)
    noexcept : pointer_(other.detach()) {}

    // Asks the object by `QueryInterface`; null when it has no such interface.
    explicit InterfacePtr(IUnknown* object) noexcept : pointer_(query(object)) {}

    template <class U>
    requires(!std::convertible_to<U*, T*>) explicit InterfacePtr(
        const InterfacePtr<U>& other) noexcept
        : pointer_(query(other.get())) {}

    ~InterfacePtr() { reset(); }

    // Adds the new reference before the old one is dropped.
    InterfacePtr& operator=(const InterfacePtr& other) noexcept {
        InterfacePtr(other).swap(*this);
        return *this;
    }
    InterfacePtr& operator=(InterfacePtr&& other) noexcept {
        InterfacePtr(std::move(other)).swap(*this);
        return *this;
    }
    InterfacePtr& operator=(std::nullptr_t) noexcept {
        reset();
        return *this;
    }

    T* get() const noexcept { return pointer_; }
    T* operator->() const noexcept { return pointer_; }
    T& operator*() const noexcept { return *pointer_; }
    explicit operator bool() const noexcept { return pointer_ != nullptr; }

    // The member is null before `Release` runs, so that re-entry through it sees an empty pointer.
    void reset() noexcept {
        if (T* const old = detach()) old->Release();
    }

    // Gives the reference away: the caller releases it.
    [[nodiscard]] T* detach() noexcept { return std::exchange(pointer_, nullptr); }

    void swap(InterfacePtr& other) noexcept { std::swap(pointer_, other.pointer_); }
    friend void swap(InterfacePtr& a, InterfacePtr& b) noexcept { a.swap(b); }

    friend bool operator==(const InterfacePtr& a, const InterfacePtr& b) noexcept {
        return a.pointer_ == b.pointer_;
    }
    friend bool operator==(const InterfacePtr& a, const T* b) noexcept { return a.pointer_ == b; }
    friend bool operator==(const InterfacePtr& a, std::nullptr_t) noexcept { return !a.pointer_; }
    friend std::strong_ordering operator<=>(const InterfacePtr& a, const InterfacePtr& b) noexcept {
        return std::compare_three_way()(a.pointer_, b.pointer_);
    }

private:
    template <class Object> static T* query(Object* object) noexcept {
        void* found = nullptr;
        if (object) object->QueryInterface(interface_id_of<T>(), &found);
        return static_cast<T*>(found);
    }

    T* pointer_ = nullptr;
};

} // namespace core

template <class T> struct std::hash<core::InterfacePtr<T>> {
    std::size_t operator()(const core::InterfacePtr<T>& pointer) const noexcept {
        return std::hash<T*>()(pointer.get());
    }
};
