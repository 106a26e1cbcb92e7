// The wrappers that turn a class of the component model into a living object. They are the most
// derived classes, and only they are ever instantiated:
//
//   auto list = core::make_object<ListImpl>(arguments…);   // InterfacePtr<SCOM_Object<ListImpl>>
//   core::StaticObject<Host> host;                         // a member, a variable, a static
//
// | wrapper               | references                        | ends by                          |
// |-----------------------|-----------------------------------|----------------------------------|
// | SCOM_Object           | counted                           | Release to 0                     |
// | CComAggObject         | counted; the inner unknown        | Release to 0                     |
// | CComContainedObject   | counted by the outer object       | its aggregate                    |
// | SingletonObject       | not counted, always 1             | destroySingleton                 |
// | StaticObject          | not counted, always 1             | whoever owns the storage         |
#pragma once

#include <core/component/InterfaceMap.h>
#include <core/component/InterfacePtr.h>
#include <core/component/Module.h>
#include <core/component/ObjectRoot.h>

#include <kiln/memory.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <utility>

namespace core {

// Memory of objects comes from the memory layer; the first word is marked before it goes back.
class ObjectMemory {
public:
    static void* operator new(std::size_t size) { return kiln_new(size); }
    static void operator delete(void* memory) noexcept {
        std::memcpy(memory, &kFreedMemory, sizeof kFreedMemory);
        kiln_delete(memory);
    }
};

template <class X>
class SCOM_Object final
    : public X
    , public ObjectMemory {
    static_assert(alignof(X) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__,
                  "the memory of objects is aligned for ordinary types alone");

public:
    using X::X;
    using ObjectMemory::operator new;
    using ObjectMemory::operator delete;

    HRESULT QueryInterface(const _GUID& iid, void** out) noexcept override {
        return InternalQueryInterface(static_cast<X*>(this), X::_GetEntries(), iid, out);
    }
    std::uint32_t AddRef() noexcept override { return this->increment_references(); }
    std::uint32_t Release() noexcept override {
        const std::uint32_t left = this->decrement_references();
        if (left == 0) delete this;
        return left;
    }
};

// Makes an object in code; the result holds its only reference.
template <class X, class... Arguments>
InterfacePtr<SCOM_Object<X>> make_object(Arguments&&... arguments) {
    return {new SCOM_Object<X>(std::forward<Arguments>(arguments)...), true};
}

template <class X> class StaticObject final : public X {
public:
    using X::X;

    HRESULT QueryInterface(const _GUID& iid, void** out) noexcept override {
        return InternalQueryInterface(static_cast<X*>(this), X::_GetEntries(), iid, out);
    }
    std::uint32_t AddRef() noexcept override { return 1; }
    std::uint32_t Release() noexcept override { return 1; }
};

template <class X>
class SingletonObject final
    : public X
    , public ISCOMSingleton
    , public ObjectMemory {
public:
    using ObjectMemory::operator new;
    using ObjectMemory::operator delete;

    HRESULT QueryInterface(const _GUID& iid, void** out) noexcept override {
        const HRESULT result =
            InternalQueryInterface(static_cast<X*>(this), X::_GetEntries(), iid, out);
        if (result != E_NOINTERFACE || iid != IID_ISCOMSingleton) return result;
        *out = static_cast<ISCOMSingleton*>(this);
        return S_OK;
    }
    std::uint32_t AddRef() noexcept override { return 1; }
    std::uint32_t Release() noexcept override { return 1; }
    void destroySingleton() noexcept override { delete this; }
};

} // namespace core

namespace ATL {

// An object that lives inside an aggregate and goes by the references of the outer object.
template <class X> class CComContainedObject final : public X {
public:
    explicit CComContainedObject(IUnknown* outer) { this->set_outer(outer); }
    // The root requires an empty word at its end; here the word was never a count.
    ~CComContainedObject() { this->set_outer(nullptr); }

    // The outer object answers first. When it cannot, the own map does, so that a service whose
    // outer object is the process is reached through itself.
    HRESULT QueryInterface(const _GUID& iid, void** out) noexcept override {
        const HRESULT result = this->outer()->QueryInterface(iid, out);
        if (core::succeeded(result) || is_outer_this()) return result;
        return core::InternalQueryInterface(static_cast<X*>(this), X::_GetEntries(), iid, out);
    }
    std::uint32_t AddRef() noexcept override { return this->outer()->AddRef(); }
    std::uint32_t Release() noexcept override { return this->outer()->Release(); }

private:
    bool is_outer_this() noexcept {
        return static_cast<void*>(this->outer()) ==
               static_cast<std::byte*>(static_cast<void*>(static_cast<X*>(this))) +
                   X::_GetEntries()->offset;
    }
};

// The inner unknown of an aggregated object: `IUnknown` is itself, every other interface belongs
// to the contained object.
template <class X>
class CComAggObject final
    : public IUnknown
    , public CComObjectRootEx<core::SCOM_MultiThreadModel>
    , public core::ObjectMemory {
public:
    explicit CComAggObject(IUnknown* outer) : contained_(outer) { core::this_module().lock(); }
    // The count stands at 1 while the contained object ends, so that references which its
    // destructor takes and drops do not end this object again.
    ~CComAggObject() {
        set_references(1);
        core::this_module().unlock();
        std::destroy_at(&contained_);
        set_references(0);
    }

    HRESULT QueryInterface(const _GUID& iid, void** out) noexcept override {
        if (!out) return E_POINTER;
        if (iid != core::IID_IUnknown)
            return core::InternalQueryInterface(static_cast<X*>(&contained_), X::_GetEntries(), iid,
                                                out);
        *out = static_cast<IUnknown*>(this);
        AddRef();
        return S_OK;
    }
    std::uint32_t AddRef() noexcept override { return increment_references(); }
    std::uint32_t Release() noexcept override {
        const std::uint32_t left = decrement_references();
        if (left == 0) delete this;
        return left;
    }

private:
    union { // ended by hand, before the count of the root is cleared
        CComContainedObject<X> contained_;
    };
};

} // namespace ATL
