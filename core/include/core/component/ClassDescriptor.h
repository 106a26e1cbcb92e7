// A class as a static record, and the line that links it into its module:
//
//   ORBCORE_REGISTER(Counter);      // once, in the source of the class, outside any namespace
//
// The record is complete at compile time but for its link; the static initialiser behind the line
// pushes it onto the module's list and calls nothing else.
#pragma once

#include <core/component/ClassFactory.h>
#include <core/component/Module.h>

#include <array>

namespace core {

// One row of a category table; the table ends with kind 0.
struct CategoryEntry {
    static constexpr std::uint32_t kEnd = 0;
    static constexpr std::uint32_t kImplements = 1;
    static constexpr std::uint32_t kRequires = 2; // not taken up by the registry

    std::uint32_t kind;
    const _GUID* category;
};

struct ClassDescriptor {
    const _GUID* clsid;
    HRESULT (*makeFactory)(Creator creator, const _GUID& iid, void** out) noexcept;
    Creator creator;
    const CategoryEntry* (*categories)() noexcept;
    void (*classMain)(bool start);
    SCOM_RegisterType type;
    const char16_t* const* (*aliases)() noexcept; // ends with a null pointer
    const _GUID* serviceInterface;                // of a service, else null
    const char* component;
    ClassDescriptor* next;
};

// The aliases and the categories of a class, for its members of these names.
template <class... Names> constexpr auto aliases(const Names*... names) {
    return std::array<const char16_t*, sizeof...(Names) + 1>{names..., nullptr};
}
template <class... Categories> constexpr auto categories(const Categories*... ids) {
    return std::array<CategoryEntry, sizeof...(Categories) + 1>{
        CategoryEntry{CategoryEntry::kImplements, ids}...,
        CategoryEntry{CategoryEntry::kEnd, nullptr}};
}

namespace detail {

template <class X> const char16_t* const* aliases_of() noexcept {
    if constexpr (requires { X::aliases; })
        return X::aliases.data();
    else {
        static constexpr const char16_t* kNone[] = {nullptr};
        return kNone;
    }
}

template <class X> const CategoryEntry* categories_of() noexcept {
    if constexpr (requires { X::categories; })
        return X::categories.data();
    else {
        static constexpr CategoryEntry kNone[] = {{CategoryEntry::kEnd, nullptr}};
        return kNone;
    }
}

template <class X> void class_main([[maybe_unused]] bool start) {
    if constexpr (requires { X::_ClassMain(start); }) X::_ClassMain(start);
}

template <class X> constexpr const _GUID* service_interface_of() noexcept {
    if constexpr (X::kRegisterType == RegisterService) return X::kServiceInterface;
    return nullptr;
}

} // namespace detail

template <class X> constexpr ClassDescriptor describe_class() noexcept {
    return {&X::class_id(),         &create_class_factory,
            creator_of<X>(),        &detail::categories_of<X>,
            &detail::class_main<X>, X::kRegisterType,
            &detail::aliases_of<X>, detail::service_interface_of<X>(),
            this_module_name,       nullptr};
}

// Links a descriptor at construction.
class ClassLink {
public:
    explicit ClassLink(ClassDescriptor& descriptor) noexcept { this_module().link(descriptor); }
};

} // namespace core

#define ORB_JOIN_(a, b) a##b
#define ORB_JOIN(a, b)  ORB_JOIN_(a, b)

#define ORBCORE_REGISTER(X)                                                                        \
    static constinit core::ClassDescriptor ORB_JOIN(orb_class_, __LINE__) =                        \
        core::describe_class<X>();                                                                 \
    static const core::ClassLink ORB_JOIN(orb_class_link_, __LINE__)(ORB_JOIN(orb_class_, __LINE__))
