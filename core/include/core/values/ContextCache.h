// How a description finds members by name: caches that are filled from the description itself, and
// ways to go without one. All answer -1 for a name that no member has; of two members with one name
// the earlier keeps it. Case is no matter.
//
// | class                 | finds by                                  | for                           |
// |-----------------------|-------------------------------------------|-------------------------------|
// | ContextDefCached      | a table of its own                        | nearly everything             |
// | ContextDefHashCached  | the same, filled at the first lookup      | objects that rename members   |
// | ContextDefNoncached   | asking for all names                      | members that come and go      |
// | ContextDefExternBase  | the description of a type                 | objects described elsewhere   |
// | ContextDefExternLazed | the same, looked up at the first question |                               |
//
// A lookup in a table is one hash and one comparison, and allocates nothing.
//
// A filled cache is only read and so for any number of threads. Filling takes no lock: a type fills
// its cache while it is created, which the registry guards; a cache that is filled at the first
// lookup belongs to an object of one thread at a time.
#pragma once

#include <core/values/FoundOnce.h>
#include <core/values/IContext.h>

#include <memory>

namespace core {

// When a cache is filled.
enum class ContextDefCachedRules : int {
    Eager = 0, // by the constructor of the description; a lookup before that stops the process
    Lazy = 1,  // at the first lookup, for names that depend on the instance
};

// Whether the members of a class are the same for its whole life.
enum class ContextStability : int { Changing = 0, Stable = 1 };

// ---- Tables of names

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
    // For constructors, where nobody can ask the object for its interfaces yet: `names` is the one
    // of the description, or null.
    void initPropsCache(IContextDefBase* definition, IContextNames* names);
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

class ContextDefHashCached : public _ContextDefCached {
public:
    ContextDefHashCached() : _ContextDefCached(ContextDefCachedRules::Lazy) {}
};

// ---- Without a cache: every lookup asks for all names in all languages

class ORBCORE_API ContextDefNoncached {
public:
    int findProp(IContextDefBase* definition, const stdx::ustring& name);
    int findMethod(IContextDefBase* definition, const stdx::ustring& name);
    void initPropsCache(IContextDefBase*, IContextNames* = nullptr) noexcept {}
    void initMethodsCache(IContextDefBase*) noexcept {}
    void resetPropsCache() noexcept {}
    void resetMethodsCache() noexcept {}
};

// ---- The description of the type with a class GUID

// The description, looked up at the first question in the process of the caller. While there is no such
// type every question looks again.
class ORBCORE_API LazyContextDef {
public:
    IContextDef* get(const _GUID& type) { // lent, or null
        IContextDef* const known = definition_.get();
        return known ? known : find(type);
    }

private:
    IContextDef* find(const _GUID& type);

    FoundOnce<IContextDef> definition_;
};

class ORBCORE_API ContextDefExternBase {
public:
    explicit ContextDefExternBase(const _GUID& type); // looks it up at once
    int findProp(IContextDefBase* definition, const stdx::ustring& name);
    int findMethod(IContextDefBase* definition, const stdx::ustring& name);
    void initPropsCache(IContextDefBase*, IContextNames* = nullptr) noexcept {}
    void initMethodsCache(IContextDefBase*) noexcept {}

private:
    FoundOnce<IContextDef> definition_; // null when there is no such type
};

class ORBCORE_API ContextDefExternLazed {
public:
    explicit ContextDefExternLazed(const _GUID& type) noexcept : type_(type) {}
    int findProp(IContextDefBase* definition, const stdx::ustring& name);
    int findMethod(IContextDefBase* definition, const stdx::ustring& name);
    void initPropsCache(IContextDefBase*, IContextNames* = nullptr) noexcept {}
    void initMethodsCache(IContextDefBase*) noexcept {}

private:
    _GUID type_;
    LazyContextDef definition_;
};

} // namespace core
