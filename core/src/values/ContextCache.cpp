#include <core/values/ContextCache.h>

#include "NameIndex.h"

#include <core/component/SCOM_Process.h>

#include <algorithm>

namespace core {

namespace {

// Calls `use(name, member)` for every name in the order of members and languages, until it answers
// true. `name_of(member, language)` gives a name or null.
template <class NameOf, class Use> void for_names(int members, NameOf name_of, Use use) {
    for (int member = 0; member < members; ++member)
        for (int language = 0;; ++language) {
            const auto* const name = name_of(member, language);
            if (!name) break;
            if (use(std::u16string_view(*name), member)) return;
        }
}

// A view of a zero-terminated constant, to look like the string objects of `IContextNames`.
template <class Get> auto constants(Get get) {
    return [get, view = std::u16string_view()](int member,
                                               int language) mutable -> const std::u16string_view* {
        const char16_t* const name = get(member, language);
        if (!name) return nullptr;
        view = name;
        return &view;
    };
}

template <class Use>
void for_property_names(IContextDefBase& definition, IContextNames* names, Use use) {
    const int members = definition.getNProps();
    if (names)
        for_names(
            members, [&](int member, int language) { return names->getName(member, language); },
            use);
    else
        for_names(members, constants([&](int member, int language) {
                      return definition.getPropName(member, language);
                  }),
                  use);
}

InterfacePtr<IContextNames> names_of(IContextDefBase& definition) {
    return InterfacePtr<IContextNames>(static_cast<IUnknown*>(&definition));
}

template <class Use> void for_method_names(IContextDefBase& definition, Use use) {
    for_names(definition.getNMethods(), constants([&](int member, int language) {
                  return definition.getMethodName(member, language);
              }),
              use);
}

std::unique_ptr<NameIndex> empty_index(int members) {
    return std::make_unique<NameIndex>(2 * static_cast<std::size_t>(std::max(members, 0)));
}

auto adding_to(NameIndex& index) {
    return [&index](std::u16string_view name, int member) {
        index.add(name, member);
        return false;
    };
}

auto searching(std::u16string_view wanted, int& found) {
    return [wanted, &found](std::u16string_view name, int member) {
        if (name.size() != wanted.size() || compare_nocase(name, wanted) != 0) return false;
        found = member;
        return true;
    };
}

void require_lazy(ContextDefCachedRules rule) {
    if (rule != ContextDefCachedRules::Lazy)
        stop_process("a member of a context was looked up by name before its cache was filled");
}

} // namespace

// ---- _ContextDefCached

_ContextDefCached::_ContextDefCached(ContextDefCachedRules rule) : rule_(rule) {}
_ContextDefCached::~_ContextDefCached() = default;

int _ContextDefCached::findProp(IContextDefBase* definition, const stdx::ustring& name) {
    if (!properties_) {
        require_lazy(rule_);
        initPropsCache(definition);
    }
    return properties_->find(name);
}

int _ContextDefCached::findMethod(IContextDefBase* definition, const stdx::ustring& name) {
    if (!methods_) {
        require_lazy(rule_);
        initMethodsCache(definition);
    }
    return methods_->find(name);
}

void _ContextDefCached::initPropsCache(IContextDefBase* definition) {
    if (!properties_) initPropsCache(definition, names_of(*definition).get());
}

void _ContextDefCached::initPropsCache(IContextDefBase* definition, IContextNames* names) {
    if (properties_) return;
    auto index = empty_index(definition->getNProps());
    for_property_names(*definition, names, adding_to(*index));
    properties_ = std::move(index);
}

void _ContextDefCached::initMethodsCache(IContextDefBase* definition) {
    if (methods_) return;
    auto index = empty_index(definition->getNMethods());
    for_method_names(*definition, adding_to(*index));
    methods_ = std::move(index);
}

void _ContextDefCached::resetPropsCache() noexcept {
    properties_.reset();
}

void _ContextDefCached::resetMethodsCache() noexcept {
    methods_.reset();
}

// ---- ContextDefNoncached

int ContextDefNoncached::findProp(IContextDefBase* definition, const stdx::ustring& name) {
    int found = -1;
    for_property_names(*definition, names_of(*definition).get(), searching(name, found));
    return found;
}

int ContextDefNoncached::findMethod(IContextDefBase* definition, const stdx::ustring& name) {
    int found = -1;
    for_method_names(*definition, searching(name, found));
    return found;
}

// ---- Descriptions of types

IContextDef* LazyContextDef::find(const _GUID& type) {
    return definition_.publish(create_object<IContextDef>(type));
}

ContextDefExternBase::ContextDefExternBase(const _GUID& type) {
    definition_.publish(create_object<IContextDef>(type));
}

int ContextDefExternBase::findProp(IContextDefBase*, const stdx::ustring& name) {
    IContextDef* const definition = definition_.get();
    return definition ? definition->findProp(name) : -1;
}

int ContextDefExternBase::findMethod(IContextDefBase*, const stdx::ustring& name) {
    IContextDef* const definition = definition_.get();
    return definition ? definition->findMethod(name) : -1;
}

int ContextDefExternLazed::findProp(IContextDefBase*, const stdx::ustring& name) {
    IContextDef* const definition = definition_.get(type_);
    return definition ? definition->findProp(name) : -1;
}

int ContextDefExternLazed::findMethod(IContextDefBase*, const stdx::ustring& name) {
    IContextDef* const definition = definition_.get(type_);
    return definition ? definition->findMethod(name) : -1;
}

} // namespace core
