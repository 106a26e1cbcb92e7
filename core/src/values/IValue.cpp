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

IType* ValueImplBase::getIType() {
    if (IType* const known = type_.get()) return known;
    const _GUID& clsid = getTypeClsid();
    return clsid == kUUIDNull ? nullptr : type_.publish(find_type(clsid));
}

bool ValueImplBase::getString(stdx::ustring& out) {
    out = type_name(getIType(), term_language());
    return true;
}

} // namespace core
