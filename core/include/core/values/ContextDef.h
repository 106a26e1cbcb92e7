// The bases of scriptable classes. Two shapes are in use:
//
//   - The type describes, its values share the description. The type has `IContextDefImpl` among its
//     bases, the value `IContextExtImpl` with the class GUID of the type. core/values/ScriptType.h
//     makes both from one table and is what new types use.
//   - The object describes itself: `IContextImpl<ContextDefIntern<X, cache, stability>>`.
//
// A class overrides what it has: `getNProps`, `getPropName`, `getPropVal` and so on. One with an eager
// cache calls `fillCaches()` at the end of its constructor.
#pragma once

#include <core/values/ContextCache.h>

#include <concepts>

namespace core {

namespace detail {

// No properties and no methods; parameters go in and out.
template <class Interface> class NoMembers : public Interface {
public:
    int getNProps() override { return 0; }
    const char16_t* getPropName(int, int) override { return nullptr; }
    bool isPropReadable(int) override { return true; }
    bool isPropWritable(int) override { return true; }
    int findProp(const stdx::ustring&) override { return -1; }
    int getNMethods() override { return 0; }
    const char16_t* getMethodName(int, int) override { return nullptr; }
    int getNParams(int) override { return 0; }
    bool isParamIn(int, int) override { return true; }
    bool isParamOut(int, int) override { return true; }
    bool getParamDefValue(int, int, GenericValue*) override { return false; }
    bool hasRetVal(int) override { return false; }
    int findMethod(const stdx::ustring&) override { return -1; }
};

} // namespace detail

using ContextDefCore = detail::NoMembers<IContextDef>;

class ContextCore : public detail::NoMembers<IContext_> {
public:
    IContextDefBase* getIContextDef() override { return nullptr; }
    bool getPropVal(int, GenericValue&) override { return false; }
    bool setPropVal(int, const GenericValue&) override { return false; }
    bool call(int, GenericValue*, std::vector<GenericValue*>&) override { return false; }
};

// The lookup by name of `T`, which is a description and has this among its bases.
template <class T, class Cache, ContextStability stability> class ContextDefIntern {
public:
    static constexpr ContextStability kStability = stability;

    ContextDefIntern() = default;
    // For the caches that go by the description of a type.
    explicit ContextDefIntern(const _GUID& type) : cache_(type) {}

    void initPropsCache(IContextDefBase* definition) { cache_.initPropsCache(definition); }
    void initMethodsCache(IContextDefBase* definition) { cache_.initMethodsCache(definition); }

protected:
    // For the constructor of `T`.
    void fillCaches(IContextDefBase* definition) {
        IContextNames* names = nullptr;
        if constexpr (std::derived_from<T, IContextNames>) names = static_cast<T*>(this);
        cache_.initPropsCache(definition, names);
        cache_.initMethodsCache(definition);
    }
    int findPropIntern(IContextDefBase* definition, const stdx::ustring& name) {
        return cache_.findProp(definition, name);
    }
    int findMethodIntern(IContextDefBase* definition, const stdx::ustring& name) {
        return cache_.findMethod(definition, name);
    }
    Cache& cache() noexcept { return cache_; }

private:
    Cache cache_;
};

// The description on a type.
template <class T, ContextDefCachedRules rule = ContextDefCachedRules::Eager>
class IContextDefImpl
    : public ContextDefCore
    , public ContextDefIntern<T, ContextDefCached<T, rule>, ContextStability::Stable> {
    using Intern = ContextDefIntern<T, ContextDefCached<T, rule>, ContextStability::Stable>;

public:
    int findProp(const stdx::ustring& name) override { return this->findPropIntern(this, name); }
    int findMethod(const stdx::ustring& name) override {
        return this->findMethodIntern(this, name);
    }

protected:
    void fillCaches() { Intern::fillCaches(this); }
};

// An object that describes itself.
template <class Intern>
class IContextImpl
    : public ContextCore
    , public Intern {
public:
    using Intern::Intern;

    int findProp(const stdx::ustring& name) override { return this->findPropIntern(this, name); }
    int findMethod(const stdx::ustring& name) override {
        return this->findMethodIntern(this, name);
    }

protected:
    void fillCaches() { Intern::fillCaches(this); }
};

// A context without values that answers as its description, `getIContextDef`, does; without one it has
// no members.
class ORBCORE_API ContextDefForwarder : public ContextCore {
public:
    int getNProps() override;
    const char16_t* getPropName(int property, int language) override;
    bool isPropReadable(int property) override;
    bool isPropWritable(int property) override;
    int findProp(const stdx::ustring& name) override;
    int getNMethods() override;
    const char16_t* getMethodName(int method, int language) override;
    int getNParams(int method) override;
    bool isParamIn(int method, int parameter) override;
    bool isParamOut(int method, int parameter) override;
    bool getParamDefValue(int method, int parameter, GenericValue* out) override;
    bool hasRetVal(int method) override;
    int findMethod(const stdx::ustring& name) override;
};

// A context whose type describes it; the description is looked up once, in the process of the caller.
class ORBCORE_API IContextExtImplBase : public ContextDefForwarder {
public:
    IContextDefBase* getIContextDef() override { return getExternalContextDef(); }

    // The class of the type that describes this object.
    virtual const _GUID& getTypeClsid() = 0;

protected:
    // Lent; null when the class is not known or describes nothing.
    IContextDef* getExternalContextDef() { return definition_.get(getTypeClsid()); }

private:
    LazyContextDef definition_;
};

template <const _GUID* clsid> class IContextExtImpl : public IContextExtImplBase {
public:
    const _GUID& getTypeClsid() override { return *clsid; }
};

} // namespace core
