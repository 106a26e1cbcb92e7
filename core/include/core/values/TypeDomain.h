// Sets of types: what a variable, a column or a parameter may hold.
//
//   core::TypeDomainPattern pattern(core::CLSID_NumericType);
//   pattern.setNumericQualifiers({10, 2});
//   pattern.addType(core::CLSID_StringType);
//   core::TypedValue cell{core::TypeDomain(pattern)};
//
// A pattern is a set as it was declared and stored; it may name classes that stand for patterns of
// their own (category `CATID_TypeDomainPatternProvider`) and types that this process does not know.
// A domain is the same set made ready for checking values: those classes are replaced by the types
// they stand for, one level deep, and what is not known is left out.
//
// Both are handles on a shared body that is copied before it is written through one of several
// handles. A handle is for one thread at a time, handles on one body may be used by many. The empty
// set allows every type.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/streams/ListStream.h>
#include <core/values/BaseTypes.h>
#include <core/values/Qualifiers.h>
#include <core/values/Type.h>

#include <cstdint>
#include <functional>
#include <vector>

namespace core {

inline constexpr _GUID CATID_TypeDomainPatternProvider =
    "b02d79fd-e43e-4880-917a-b9eb1392353d"_guid;
inline constexpr _GUID IID_ITypeDomainPatternProvider = "3dd8d49d-c34b-4bea-9816-a6c97cf7b66c"_guid;

class TypeDomainPattern;

// Objects of the classes that a pattern may name in place of types.
class ITypeDomainPatternProvider : public IUnknown {
public:
    ORB_INTERFACE(ITypeDomainPatternProvider, IID_ITypeDomainPatternProvider)

    // What it throws is the cause of a `TypeDomainPatternProviderException`.
    virtual TypeDomainPattern getTypeDomainPattern() = 0;
};

struct ORBCORE_API TypeDomainPatternBody;
struct ORBCORE_API TypeDomainBody;

// What patterns and domains have in common. Sets are in the order of Data1, Data2, Data3 and Data4.
template <class Body> class ORBCORE_API TypesHandle {
public:
    unsigned size() const noexcept;
    bool empty() const noexcept { return size() == 0; }
    const _GUID& front() const noexcept; // the null GUID when it is empty
    std::vector<_GUID> types() const;
    // The first type for which `matches` holds, or the null GUID.
    _GUID find(const std::function<bool(const _GUID&)>& matches) const;
    // Of the types that are there when it begins.
    void forEach(const std::function<void(const _GUID&)>& action) const;

    // What they say holds of the types in the set; of the others they say nothing.
    const NumericQualifiers& getNumericQualifiers() const noexcept;
    const StringQualifiers& getStringQualifiers() const noexcept;
    const DateQualifiers& getDateQualifiers() const noexcept;
    const BinaryQualifiers& getBinaryQualifiers() const noexcept;
    void setNumericQualifiers(const NumericQualifiers& qualifiers);
    void setStringQualifiers(const StringQualifiers& qualifiers);
    void setDateQualifiers(const DateQualifiers& qualifiers);
    void setBinaryQualifiers(const BinaryQualifiers& qualifiers);

    // The body; for an empty handle one that all share.
    const Body& reference() const noexcept;
    // A body that no other handle has, to be written.
    Body& unique();

protected:
    TypesHandle() noexcept;
    explicit TypesHandle(InterfacePtr<Body> body) noexcept;
    TypesHandle(const TypesHandle& other) noexcept;
    TypesHandle(TypesHandle&& other) noexcept; // sources of moves are empty afterwards
    TypesHandle& operator=(const TypesHandle& other) noexcept;
    TypesHandle& operator=(TypesHandle&& other) noexcept;
    ~TypesHandle();

    InterfacePtr<Body> body_; // null is the empty set
};

extern template class TypesHandle<TypeDomainPatternBody>;
extern template class TypesHandle<TypeDomainBody>;

class ORBCORE_API TypeDomainPattern : public TypesHandle<TypeDomainPatternBody> {
public:
    TypeDomainPattern() noexcept = default;
    // The null GUID and that of the undefined type are left out, here and in what adds types.
    explicit TypeDomainPattern(const _GUID& type);
    explicit TypeDomainPattern(const std::vector<_GUID>& types);

    bool contains(const _GUID& type) const noexcept;

    // ---- Comparing

    // Qualifiers take no part in equality and hash.
    bool operator==(const TypeDomainPattern& other) const noexcept;
    bool operator==(const _GUID& type) const noexcept; // it holds this type alone
    // Of the qualifiers that belong to `type`.
    bool hasEqualQualifier(const TypeDomainPattern& other, const _GUID& type) const noexcept;
    // Every value of this pattern fits `other`; a limit of 0 counts as the number 0 here.
    bool isSubset(const TypeDomainPattern& other) const noexcept;
    std::uint32_t hash() const noexcept;

    // ---- Writing

    void addType(const _GUID& type);
    void addTypes(const std::vector<_GUID>& types);
    // The types of both; the qualifiers of types that both have are widened to hold the values of
    // both.
    void merge(const TypeDomainPattern& other);

    // ---- Persistence, docs/formats/types.md

    void serialize(ListOutStream& list) const;
    // Throws `ListStreamException`; the pattern is as it was then.
    void deserialize(ListInStream& list);

private:
    friend class TypeDomain;
};

class ORBCORE_API TypeDomain : public TypesHandle<TypeDomainBody> {
public:
    TypeDomain() noexcept = default;
    // What the process does not know as a class, and the undefined type, is left out, here and in
    // what adds types.
    explicit TypeDomain(const _GUID& type);
    // Shared by all domains of one pattern body; made once. Throws
    // `TypeDomainPatternProviderException` when a provider fails.
    explicit TypeDomain(const TypeDomainPattern& pattern);

    // The undefined type is in a domain of two types or more.
    bool contains(const _GUID& type) const noexcept;

    // Of the one type, if there is one; of more than one, that of undefined; of none, the null GUID.
    const _GUID& defaultTypeId() const noexcept;
    Type defaultType() const; // of none, that of undefined

    void addType(const _GUID& type);
    void addTypes(const std::vector<_GUID>& types);
    void merge(const TypeDomain& other);
};

} // namespace core
