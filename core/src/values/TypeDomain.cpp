#include <core/values/TypeDomain.h>

#include "TypeDomainBody.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace core {

// ---- Handles

namespace {

// What empty handles show. Never destroyed: handles may be read until the process ends.
template <class Body> const Body& empty_body() noexcept {
    static const union Immortal {
        Immortal() : body() {}
        ~Immortal() {}
        Body body;
    } empty;
    return empty.body;
}

std::vector<_GUID> those_that(bool (*isTaken)(const _GUID&), const std::vector<_GUID>& types) {
    std::vector<_GUID> taken;
    std::copy_if(types.begin(), types.end(), std::back_inserter(taken), isTaken);
    return taken;
}

} // namespace

template <class Body> TypesHandle<Body>::TypesHandle() noexcept = default;
template <class Body>
TypesHandle<Body>::TypesHandle(InterfacePtr<Body> body) noexcept : body_(std::move(body)) {}
template <class Body> TypesHandle<Body>::TypesHandle(const TypesHandle&) noexcept = default;
template <class Body> TypesHandle<Body>::TypesHandle(TypesHandle&&) noexcept = default;
template <class Body>
TypesHandle<Body>& TypesHandle<Body>::operator=(const TypesHandle&) noexcept = default;
template <class Body>
TypesHandle<Body>& TypesHandle<Body>::operator=(TypesHandle&&) noexcept = default;
template <class Body> TypesHandle<Body>::~TypesHandle() = default;

template <class Body> const Body& TypesHandle<Body>::reference() const noexcept {
    return body_ ? *body_ : empty_body<Body>();
}

template <class Body> Body& TypesHandle<Body>::unique() {
    if (!body_)
        body_ = {new Body, true};
    else if (body_->references() > 1)
        body_ = {new Body(*body_), true};
    if constexpr (requires { body_->dropDomain(); }) body_->dropDomain();
    return *body_;
}

template <class Body> unsigned TypesHandle<Body>::size() const noexcept {
    return static_cast<unsigned>(reference().types.size());
}
template <class Body> const _GUID& TypesHandle<Body>::front() const noexcept {
    return reference().types.front();
}
template <class Body> std::vector<_GUID> TypesHandle<Body>::types() const {
    return {reference().types.begin(), reference().types.end()};
}

template <class Body>
_GUID TypesHandle<Body>::find(const std::function<bool(const _GUID&)>& matches) const {
    const TypesHandle kept = *this; // `matches` may change this one
    const TypeSet& types = kept.reference().types;
    const auto found = std::find_if(types.begin(), types.end(), std::cref(matches));
    return found == types.end() ? kUUIDNull : *found;
}
template <class Body>
void TypesHandle<Body>::forEach(const std::function<void(const _GUID&)>& action) const {
    const TypesHandle kept = *this; // `action` may change this one
    for (const _GUID& type : kept.reference().types) action(type);
}

template <class Body>
const NumericQualifiers& TypesHandle<Body>::getNumericQualifiers() const noexcept {
    return reference().numeric;
}
template <class Body>
const StringQualifiers& TypesHandle<Body>::getStringQualifiers() const noexcept {
    return reference().string;
}
template <class Body> const DateQualifiers& TypesHandle<Body>::getDateQualifiers() const noexcept {
    return reference().date;
}
template <class Body>
const BinaryQualifiers& TypesHandle<Body>::getBinaryQualifiers() const noexcept {
    return reference().binary;
}
template <class Body>
void TypesHandle<Body>::setNumericQualifiers(const NumericQualifiers& qualifiers) {
    unique().numeric = qualifiers;
}
template <class Body>
void TypesHandle<Body>::setStringQualifiers(const StringQualifiers& qualifiers) {
    unique().string = qualifiers;
}
template <class Body> void TypesHandle<Body>::setDateQualifiers(const DateQualifiers& qualifiers) {
    unique().date = qualifiers;
}
template <class Body>
void TypesHandle<Body>::setBinaryQualifiers(const BinaryQualifiers& qualifiers) {
    unique().binary = qualifiers;
}

template class TypesHandle<TypeDomainPatternBody>;
template class TypesHandle<TypeDomainBody>;

// ---- Patterns

namespace {

bool is_pattern_type(const _GUID& type) {
    return type != CLSID_UndefinedType && type != kUUIDNull;
}

} // namespace

TypeDomainPattern::TypeDomainPattern(const _GUID& type) {
    addType(type);
}
TypeDomainPattern::TypeDomainPattern(const std::vector<_GUID>& types) {
    addTypes(types);
}

bool TypeDomainPattern::contains(const _GUID& type) const noexcept {
    return reference().types.contains(type);
}

bool TypeDomainPattern::operator==(const TypeDomainPattern& other) const noexcept {
    return reference().types == other.reference().types;
}
bool TypeDomainPattern::operator==(const _GUID& type) const noexcept {
    return size() == 1 && front() == type;
}
bool TypeDomainPattern::hasEqualQualifier(const TypeDomainPattern& other,
                                          const _GUID& type) const noexcept {
    return reference().hasEqualQualifier(other.reference(), type);
}

// An empty `other` admits all types, yet its qualifiers count.
bool TypeDomainPattern::isSubset(const TypeDomainPattern& other) const noexcept {
    if (!other.empty() && (empty() || !other.reference().types.includes(reference().types)))
        return false;
    return reference().qualifiersFit(other.reference());
}

std::uint32_t TypeDomainPattern::hash() const noexcept {
    std::uint32_t hash = 0;
    for (const _GUID& type : reference().types) hash = hash * 5 + type.Data1;
    return hash;
}

void TypeDomainPattern::addType(const _GUID& type) {
    if (is_pattern_type(type)) unique().types.insert(type);
}
void TypeDomainPattern::addTypes(const std::vector<_GUID>& types) {
    std::vector<_GUID> added = those_that(is_pattern_type, types);
    if (!added.empty()) unique().types.insert(std::move(added));
}
void TypeDomainPattern::merge(const TypeDomainPattern& other) {
    if (!other.empty()) unique().merge(other.reference());
}

// ---- Domains

TypeDomain::TypeDomain(const _GUID& type) {
    addType(type);
}
TypeDomain::TypeDomain(const TypeDomainPattern& pattern)
    : TypesHandle(pattern.body_ ? pattern.body_->domain() : InterfacePtr<TypeDomainBody>()) {}

bool TypeDomain::contains(const _GUID& type) const noexcept {
    const TypeSet& types = reference().types;
    return type == CLSID_UndefinedType ? types.size() > 1 : types.contains(type);
}

const _GUID& TypeDomain::defaultTypeId() const noexcept {
    return reference().defaultType();
}
Type TypeDomain::defaultType() const {
    return empty() ? Type() : Type(defaultTypeId());
}

void TypeDomain::addType(const _GUID& type) {
    if (is_domain_type(type)) unique().types.insert(type);
}
void TypeDomain::addTypes(const std::vector<_GUID>& types) {
    std::vector<_GUID> added = those_that(is_domain_type, types);
    if (!added.empty()) unique().types.insert(std::move(added));
}
void TypeDomain::merge(const TypeDomain& other) {
    if (!other.empty()) unique().merge(other.reference());
}

} // namespace core
