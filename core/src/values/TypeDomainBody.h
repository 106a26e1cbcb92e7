// What the handles of core/values/TypeDomain.h share.
//
// A body that two handles have is not written any more but for the cached domain of a pattern: the
// first thread that makes one publishes it by compare-and-swap, and only a writer that has the one
// reference clears it. It sees the end of all other uses, as counts are dropped with release and
// looked at with acquire.
#pragma once

#include "TypeSet.h"

#include <core/component/InterfacePtr.h>
#include <core/component/ObjectRoot.h>
#include <core/component/Refcountable.h>
#include <core/values/TypeDomain.h>

#include <atomic>

namespace core {

struct QualifiedTypes {
    TypeSet types;
    NumericQualifiers numeric;
    StringQualifiers string;
    DateQualifiers date;
    BinaryQualifiers binary;

    // Takes over what `from` says of `type`, which is about to be added. Where the type is here
    // already, the values of both fit afterwards.
    void widen(const _GUID& type, const QualifiedTypes& from) noexcept;
    void merge(const QualifiedTypes& from);
    bool hasEqualQualifier(const QualifiedTypes& other, const _GUID& type) const noexcept;
    // Of the types that are here, without a look at those of `other`.
    bool qualifiersFit(const QualifiedTypes& other) const noexcept;
};

template <class Body>
struct SharedTypes
    : QualifiedTypes
    , Refcountable<Body, AtomicCounter> {
    SharedTypes() = default;
    SharedTypes(const SharedTypes&) = default;
    ~SharedTypes() {
        if (this->references() != 0)
            stop_process("a set of types was destroyed while references to it were held");
    }
};

struct TypeDomainBody : SharedTypes<TypeDomainBody> {
    // None has no default, one is its own, and more have that of the undefined type.
    const _GUID& defaultType() const noexcept {
        return types.size() > 1 ? CLSID_UndefinedType : types.front();
    }
};

struct TypeDomainPatternBody : SharedTypes<TypeDomainPatternBody> {
    TypeDomainPatternBody() = default;
    // A copy is there to be changed and has no cached domain.
    TypeDomainPatternBody(const TypeDomainPatternBody& other) : SharedTypes(other) {}
    ~TypeDomainPatternBody() { dropDomain(); }

    InterfacePtr<TypeDomainBody> domain() const;
    void dropDomain() noexcept {
        if (TypeDomainBody* const domain = domain_.exchange(nullptr)) domain->Release();
    }

private:
    mutable std::atomic<TypeDomainBody*> domain_ = nullptr; // with a reference
};

// Whether a domain takes this type: undefined it never does, and else what is known as a class.
bool is_domain_type(const _GUID& type);

} // namespace core
