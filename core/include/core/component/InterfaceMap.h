// Interface maps: which interfaces an object answers to, made from one line of the class.
//
//   static const InterfaceEntry* _GetEntries() {
//       return interface_map<Counter, ICounter, INamed>();
//   }
//
// The first interface is the object's `IUnknown`. Besides plain interfaces a line may hold
//   Via<ICommon, IMiddle>           an interface that the class has by more than one base
//   FunctionEntry<&IID_X, function> asks `function` for the interface
//   BlindEntry<function>            asks `function` for every interface not found before it
#pragma once

#include <core/component/IUnknown.h>

#include <cstddef>
#include <cstdint>

namespace core {

// Answers for an entry. `object` is the start of the implementation object; a result of `S_OK` has
// a referenced interface in `*out`.
using InterfaceFunction = HRESULT (*)(void* object, const _GUID& iid, void** out,
                                      std::intptr_t offset) noexcept;

// Three words. The last is 0 at the end of a map, 1 for an interface that lies `offset` bytes into
// the object, and otherwise a function to ask. A null `iid` matches every request.
struct InterfaceEntry {
    const _GUID* iid;
    std::intptr_t offset;
    union Function {
        constexpr Function(std::uintptr_t word) noexcept : mark(word) {}
        constexpr Function(InterfaceFunction function) noexcept : call(function) {}
        std::uintptr_t mark;
        InterfaceFunction call;
    } function;

    static constexpr std::uintptr_t kEnd = 0;
    static constexpr std::uintptr_t kPlain = 1;
};
static_assert(sizeof(InterfaceEntry) == 3 * sizeof(void*));

template <class Interface, class Base> struct Via {};

template <const _GUID* iid, InterfaceFunction function, std::intptr_t offset = 0>
struct FunctionEntry {};

template <InterfaceFunction function, std::intptr_t offset = 0> struct BlindEntry {};

namespace detail {

// Where `Base` lies in `X`: the compiler's own conversion, measured on an address that is never
// read. Both compilers fold it into the table, also without optimisation.
template <class X, class Base, class Middle = Base> inline std::intptr_t offset_of_base() noexcept {
    constexpr std::uintptr_t kSomewhere = 0x10000;
    return reinterpret_cast<std::intptr_t>(
               static_cast<Base*>(static_cast<Middle*>(reinterpret_cast<X*>(kSomewhere)))) -
           static_cast<std::intptr_t>(kSomewhere);
}

template <class X, class Interface> struct EntryOf {
    static InterfaceEntry make() noexcept {
        return {&interface_id_of<Interface>(), offset_of_base<X, Interface>(),
                InterfaceEntry::kPlain};
    }
};
template <class X, class Interface, class Base> struct EntryOf<X, Via<Interface, Base>> {
    static InterfaceEntry make() noexcept {
        return {&interface_id_of<Interface>(), offset_of_base<X, Interface, Base>(),
                InterfaceEntry::kPlain};
    }
};
template <class X, const _GUID* iid, InterfaceFunction function, std::intptr_t offset>
struct EntryOf<X, FunctionEntry<iid, function, offset>> {
    static InterfaceEntry make() noexcept { return {iid, offset, function}; }
};
template <class X, InterfaceFunction function, std::intptr_t offset>
struct EntryOf<X, BlindEntry<function, offset>> {
    static InterfaceEntry make() noexcept { return {nullptr, offset, function}; }
};

} // namespace detail

template <class X, class First, class... Others> const InterfaceEntry* interface_map() noexcept {
    static const InterfaceEntry entries[] = {detail::EntryOf<X, First>::make(),
                                             detail::EntryOf<X, Others>::make()...,
                                             {nullptr, 0, InterfaceEntry::kEnd}};
    return entries;
}

// Finds `iid` in a map and gives the interface with a reference, see `IUnknown::QueryInterface`.
// A linear walk: no lock, no allocation. A failing function ends the walk with its result when its
// entry names the GUID; a blind one lets it go on.
inline HRESULT InternalQueryInterface(void* object, const InterfaceEntry* entries, const _GUID& iid,
                                      void** out) noexcept {
    if (!out) return E_POINTER;
    *out = nullptr;

    const auto give = [&](const InterfaceEntry& entry) {
        auto* const found =
            reinterpret_cast<IUnknown*>(static_cast<std::byte*>(object) + entry.offset);
        *out = found;
        found->AddRef();
        return S_OK;
    };
    if (iid == IID_IUnknown) return give(entries[0]);

    for (const InterfaceEntry* entry = entries; entry->function.mark != InterfaceEntry::kEnd;
         ++entry) {
        if (entry->iid && *entry->iid != iid) continue;
        if (entry->function.mark == InterfaceEntry::kPlain) return give(*entry);
        const HRESULT result = entry->function.call(object, iid, out, entry->offset);
        if (result == S_OK || (failed(result) && entry->iid)) return result;
    }
    *out = nullptr;
    return E_NOINTERFACE;
}

} // namespace core
