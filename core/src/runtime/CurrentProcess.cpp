// The free functions on the logical process of the calling thread.

#include "ProcessImpl.h"

#include <core/component/Utf8.h>

namespace core {
namespace {

// Every process of this library is one of ours.
SCOM_ProcessImpl* current() noexcept {
    return static_cast<SCOM_ProcessImpl*>(current_process());
}

} // namespace

SCOM_ProcessData* current_process_data() noexcept {
    SCOM_ProcessImpl* const process = current();
    return process ? &process->owner() : nullptr;
}

void revoke_SCOM_class(const _GUID& clsid) {
    if (SCOM_ProcessImpl* const process = current()) process->revokeClass(clsid);
}

void rewrite_SCOM_class_factory(const _GUID& clsid, IClassFactory* factory) {
    if (SCOM_ProcessImpl* const process = current()) process->rewrite_factory(clsid, factory);
}

std::vector<RegisteredClass> registered_classes() {
    SCOM_ProcessImpl* const process = current();
    return process ? process->registered_classes() : std::vector<RegisteredClass>();
}

stdx::ustring get_lib_file_name(const char* name) {
    return from_utf8(name ? name : "") + u".so";
}

} // namespace core
