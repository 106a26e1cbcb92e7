#include <core/values/IValue.h>

#include "TypeLookup.h"

namespace core {

bool ObjectValueCore::getBoolean(bool& out) {
    out = false;
    return false;
}

bool ObjectValueCore::getNumeric(Numeric& out) {
    out = 0;
    return false;
}

bool ObjectValueCore::getString(stdx::ustring& out) {
    out.clear();
    return true;
}

bool ObjectValueCore::getDate(Date& out) {
    out = Date();
    return false;
}

std::uint32_t ObjectValueCore::hashCode() {
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(this));
}

ValueImplBase::ValueImplBase(const ValueImplBase& other) noexcept
    : ObjectValueCore(other), type_(other.type_.load(std::memory_order_acquire)) {
    if (IType* const type = type_.load(std::memory_order_relaxed)) type->AddRef();
}

ValueImplBase::~ValueImplBase() {
    if (IType* const type = type_.load(std::memory_order_acquire)) type->Release();
}

// The first to publish gives its reference to the field; a loser drops its own.
IType* ValueImplBase::getIType() {
    if (IType* const known = type_.load(std::memory_order_acquire)) return known;
    const _GUID& clsid = getTypeClsid();
    if (clsid == kUUIDNull) return nullptr;
    InterfacePtr<IType> found = find_type(clsid);
    IType* published = nullptr;
    if (!found || !type_.compare_exchange_strong(published, found.get(), std::memory_order_acq_rel))
        return published;
    return found.detach();
}

bool ValueImplBase::getString(stdx::ustring& out) {
    out = type_name(getIType(), term_language());
    return true;
}

} // namespace core
