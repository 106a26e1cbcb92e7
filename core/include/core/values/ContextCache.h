// How a description finds members by name: caches that are filled from the description itself, and
// ways to go without one. All answer -1 for a name that no member has; of two members with one name
// the earlier keeps it. Case is no matter.
//
// | class                | holds                                | for                                 |
// |----------------------|--------------------------------------|-------------------------------------|
// | ContextDefCached     | sorted names                         | nearly everything                   |
// | ContextDefHashCached | hashed names                         | descriptions with very many members |
// | ContextDefNoncached  | nothing                              | members that come and go            |
// | ContextDefExternBase | the description of a type            | objects described elsewhere         |
// | ContextDefExternLazed| the same, looked up at the first use |                                     |
//
// A filled cache is only read and so for any number of threads. Filling takes no lock: a type fills
// its cache while it is created, which the registry guards; a cache that is filled at the first
// lookup belongs to an object of one thread at a time.
#pragma once

#include <core/values/IContext.h>

#include <atomic>
#include <memory>

namespace core {

// When a cache is filled.
enum class ContextDefCachedRules : int {
    Eager = 0, // by the constructor of the description; a lookup before that stops the process
    Lazy = 1,  // at the first lookup, for names that depend on the instance
};

// Whether the members of a class are the same for its whole life.
enum class ContextStability : int { Changing = 0, Stable = 1 };

// ---- Sorted names

class NameIndex; // the names of the properties, or of the methods

class ORBCORE_API _ContextDefCached {
public:
    explicit _ContextDefCached(ContextDefCachedRules rule);
    ~_ContextDefCached();
    _ContextDefCached(const _ContextDefCached&) = delete;
    _ContextDefCached& operator=(const _ContextDefCached&) = delete;

    int findProp(IContextDefBase* definition, const stdx::ustring& name);
    int findMethod(IContextDefBase* definition, const stdx::ustring& name);
    // Nothing happens when the cache is filled.
    void initPropsCache(IContextDefBase* definition);
    void initMethodsCache(IContextDefBase* definition);
    void resetPropsCache() noexcept;
    void resetMethodsCache() noexcept;

private:
    std::unique_ptr<NameIndex> properties_; // null until filled
    std::unique_ptr<NameIndex> methods_;
    ContextDefCachedRules rule_;
};

template <class T, ContextDefCachedRules rule> class ContextDefCached : public _ContextDefCached {
public:
    ContextDefCached() : _ContextDefCached(rule) {}
};

// ---- Hashed names, filled at the first lookup

class NameHash;

class ORBCORE_API ContextDefHashCached {
public:
    ContextDefHashCached();
    ~ContextDefHashCached();
    ContextDefHashCached(const ContextDefHashCached&) = delete;
    ContextDefHashCached& operator=(const ContextDefHashCached&) = delete;

    int findProp(IContextDefBase* definition, const stdx::ustring& name);
    int findMethod(IContextDefBase* definition, const stdx::ustring& name);
    void initPropsCache(IContextDefBase* definition);
    void initMethodsCache(IContextDefBase* definition);
    void resetPropsCache() noexcept;
    void resetMethodsCache() noexcept;

private:
    std::unique_ptr<NameHash> properties_;
    std::unique_ptr<NameHash> methods_;
};

// ---- Without a cache: every lookup asks for all names in all languages

class ORBCORE_API ContextDefNoncached {
public:
    int findProp(IContextDefBase* definition, const stdx::ustring& name);
    int findMethod(IContextDefBase* definition, const stdx::ustring& name);
    void initPropsCache(IContextDefBase*) noexcept {}
    void initMethodsCache(IContextDefBase*) noexcept {}
    void resetPropsCache() noexcept {}
    void resetMethodsCache() noexcept {}
};

// ---- The description of the type with a class GUID

class ORBCORE_API ContextDefExternBase {
public:
    explicit ContextDefExternBase(const _GUID& type); // looks it up at once
    int findProp(IContextDefBase* definition, const stdx::ustring& name);
    int findMethod(IContextDefBase* definition, const stdx::ustring& name);
    void initPropsCache(IContextDefBase*) noexcept {}
    void initMethodsCache(IContextDefBase*) noexcept {}

private:
    InterfacePtr<IContextDef> definition_; // null when there is no such type
};

class ORBCORE_API ContextDefExternLazed {
public:
    explicit ContextDefExternLazed(const _GUID& type) noexcept : type_(type) {}
    ~ContextDefExternLazed();
    ContextDefExternLazed(const ContextDefExternLazed&) = delete;
    ContextDefExternLazed& operator=(const ContextDefExternLazed&) = delete;

    int findProp(IContextDefBase* definition, const stdx::ustring& name);
    int findMethod(IContextDefBase* definition, const stdx::ustring& name);
    void initPropsCache(IContextDefBase*) noexcept {}
    void initMethodsCache(IContextDefBase*) noexcept {}

private:
    IContextDef* definition();

    _GUID type_;
    // Published by compare-and-swap; the loser of a race drops its reference.
    std::atomic<IContextDef*> definition_ = nullptr;
};

} // namespace core
