#include <core/component/ClassDescriptor.h>
#include <core/component/Messages.h>
#include <core/component/Module.h>
#include <core/component/SCOM_Exception.h>
#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>
#include <core/platform/version.h>

#include "MessageFormat.h"

#include <string_view>
#include <vector>

ORBCORE_MODULE("orbcore", ORBCORE_VERSION ".0");

namespace core {

// The classes of the module with the factory that registration made for each; it is this factory
// that `cleanup` releases.
struct ObjectMap {
    struct Entry {
        const ClassDescriptor* descriptor;
        InterfacePtr<IUnknown> factory;
    };
    std::vector<Entry> entries;
};

namespace {

// The text by which versions are compared: anything that is no version at all counts as empty.
std::string_view comparable(const char* version) noexcept {
    constexpr std::string_view kAllowed =
        "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_-.";
    if (!version) return {};
    const std::string_view text = version;
    return text.find_first_not_of(kAllowed) == text.npos ? text : std::string_view();
}

void register_class(SCOM_ClassRegistrar& registrar, const ClassDescriptor& descriptor,
                    IUnknown* cachedFactory) {
    if (const InterfacePtr<IClassFactory> factory(cachedFactory); factory)
        registrar.registerClass(*descriptor.clsid, factory.get(), descriptor.type,
                                descriptor.component);
    for (const CategoryEntry* row = descriptor.categories(); row->kind != CategoryEntry::kEnd;
         ++row)
        if (row->kind == CategoryEntry::kImplements)
            registrar.addClassCategory(*descriptor.clsid, *row->category);
    for (const char16_t* const* alias = descriptor.aliases(); *alias; ++alias)
        registrar.addClassAlias(*descriptor.clsid, *alias);
}

} // namespace

void SCOM_Module::link(ClassDescriptor& descriptor) noexcept {
    descriptor.next = classes_;
    classes_ = &descriptor;
}

void SCOM_Module::initialize() {
    const std::lock_guard guard(mutex_);
    if (objectMap_) return;
    auto map = std::make_unique<ObjectMap>();
    for (const ClassDescriptor* class_ = classes_; class_; class_ = class_->next)
        map->entries.push_back({class_, nullptr});
    objectMap_ = map.release();
    for (const ObjectMap::Entry& entry : objectMap_->entries) entry.descriptor->classMain(true);
}

void SCOM_Module::cleanup() noexcept {
    const std::lock_guard guard(mutex_);
    delete std::exchange(objectMap_, nullptr);
}

void SCOM_Module::check_version(SCOM_Process& process) const {
    const stdx::string expected = process.getVersion();
    if (expected.empty()) {
        process.setVersion(version_, name_);
        return;
    }
    const std::string_view version = comparable(version_);
    if (std::string_view(expected) == version) return;
    const char* const name = version_ && version.data() ? name_ : "%s";
    throw VersionException(format_message(load_core_wstring("IDS_ERROR_BADVER"), from_utf8(name),
                                          from_utf8(version), from_utf8(process.getVersionOwner()),
                                          from_utf8(expected)),
                           name, from_utf8(version));
}

void SCOM_Module::registerAll(SCOM_Process* process, SCOM_ClassRegistrar* registrar) {
    check_version(*process);
    process->addResourceBundle(resourceBundle_);
    initialize();
    for (ObjectMap::Entry& entry : objectMap_->entries) {
        {
            const std::lock_guard guard(mutex_);
            void* made = nullptr;
            if (entry.descriptor->makeFactory && !entry.factory &&
                entry.descriptor->makeFactory(entry.descriptor->creator, IID_IUnknown, &made) ==
                    S_OK)
                entry.factory = InterfacePtr<IUnknown>(static_cast<IUnknown*>(made), false);
        }
        register_class(*registrar, *entry.descriptor, entry.factory.get());
    }
    // Only now: a service may use every class of its module in its constructor.
    for (const ClassDescriptor* class_ = classes_; class_; class_ = class_->next)
        if (class_->type == RegisterService && class_->serviceInterface)
            process->bindService(*class_->clsid, *class_->serviceInterface);
}

void SCOM_Module::unbindAll(SCOM_Process* process) {
    for (const ClassDescriptor* class_ = classes_; class_; class_ = class_->next)
        if (class_->type == RegisterService) process->unbindService(*class_->clsid);
}

void SCOM_Module::revokeAll(SCOM_Process* process, SCOM_ClassRegistrar* registrar) {
    if (process) process->removeResourceBundle(resourceBundle_);
    for (const ClassDescriptor* class_ = classes_; class_; class_ = class_->next)
        registrar->revokeClass(*class_->clsid);
}

} // namespace core
