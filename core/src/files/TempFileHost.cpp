#include <core/files/TempFileHost.h>

#include <core/component/ClassDescriptor.h>
#include <core/component/EventService.h>
#include <core/component/IllegalStateException.h>
#include <core/component/Object.h>
#include <core/component/SCOM_Process.h>

#include "SystemPath.h"
#include "TempDirectory.h"

#include <cstdlib>
#include <filesystem>
#include <mutex>

namespace core {
namespace {

stdx::ustring system_directory() {
    const char* const directory = ::secure_getenv("TMPDIR");
    return from_system_path(directory && *directory == '/' ? directory : "/tmp");
}

// The operations of a host over its directory, for the interface of that host. The thread that cleans
// must be gone before the services are: the host stops it at the death of the process. Not at the
// beginning of its end, as threads that still run then may make hosts and release files.
template <class Self, class Interface>
class HostImpl
    : public ObjectRoot
    , public SCOM_InternalClass<Self>
    , public Interface
    , public IEventRecipientImpl<Self> {
public:
    explicit HostImpl(const stdx::ustring& directory)
        : files_(std::make_shared<TempDirectory>(directory)) {
        this->subscribe(kProcessDeathEvent);
        files_->start_cleaning();
    }
    ~HostImpl() { files_->stop_cleaning(); }

    stdx::ustring create() override { return files_->create(kTempFileExtension); }
    stdx::ustring create(const stdx::ustring& extension) override {
        return files_->create(extension);
    }
    stdx::ustring directory() override { return files_->path(); }
    void release(const stdx::ustring& name) override { files_->release(name); }

    // On the thread that ends the process.
    void onEvent(const _GUID&, void*, void*) override { files_->stop_cleaning(); }

protected:
    TempDirectory& files() noexcept { return *files_; }

private:
    std::shared_ptr<TempDirectory> files_;
};

class TempFileHost : public HostImpl<TempFileHost, ITempFileHost> {
public:
    using HostImpl::HostImpl;
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<TempFileHost, ITempFileHost, IEventRecipient>();
    }
};

class TempFileHostAuto : public HostImpl<TempFileHostAuto, ITempFileHostAuto> {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<TempFileHostAuto, ITempFileHostAuto, ITempFileHost, IEventRecipient>();
    }

    TempFileHostAuto(const stdx::ustring& directory, bool removeDirectory)
        : HostImpl(directory), removeDirectory_(removeDirectory) {}
    ~TempFileHostAuto() {
        files().stop_cleaning();
        clear();
        stdx::string path;
        if (removeDirectory_ && to_system_path(directory(), path)) ::rmdir(path.c_str());
    }

    void clear() override { files().clear(); }

private:
    const bool removeDirectory_;
};

class LazyTempFileHost
    : public ObjectRoot
    , public SCOM_InternalClass<LazyTempFileHost>
    , public ITempFileHost {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<LazyTempFileHost, ITempFileHost>();
    }

    explicit LazyTempFileHost(const stdx::ustring& directory) : directory_(directory) {}

    stdx::ustring create() override { return host()->create(); }
    stdx::ustring create(const stdx::ustring& extension) override {
        return host()->create(extension);
    }
    stdx::ustring directory() override { return directory_; }
    void release(const stdx::ustring& name) override {
        const std::lock_guard lock(mutex_);
        if (host_) host_->release(name);
    }

private:
    InterfacePtr<ITempFileHost> host() {
        const std::lock_guard lock(mutex_);
        if (!host_) {
            stdx::string path;
            std::error_code ignored; // `create` tells what is wrong with the directory
            if (to_system_path(directory_, path))
                std::filesystem::create_directories(path.c_str(), ignored);
            host_ = create_temp_file_host(directory_);
        }
        return host_;
    }

    const stdx::ustring directory_;
    std::mutex mutex_;
    InterfacePtr<ITempFileHost> host_; // under mutex_; null until a file is asked for
};

} // namespace

InterfacePtr<ITempFileHost> create_temp_file_host(const stdx::ustring& directory) {
    return make_object<TempFileHost>(directory);
}
InterfacePtr<ITempFileHostAuto> create_temp_file_host_auto(const stdx::ustring& directory,
                                                           bool removeDirectory) {
    return make_object<TempFileHostAuto>(directory, removeDirectory);
}
InterfacePtr<ITempFileHost> create_lazy_temp_file_host(const stdx::ustring& directory) {
    return make_object<LazyTempFileHost>(directory);
}

// ---- The service.

class TempFileService
    : public ObjectRoot
    , public SCOM_Service<TempFileService, &CLSID_TempFileService, &IID_ITempFileService>
    , public ITempFileService
    , public ITempFileServiceTable {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<TempFileService, ITempFileService, ITempFileHost,
                             ITempFileServiceTable>();
    }

    TempFileService() : slot_(Thread::allocTLS()) {}
    ~TempFileService() { Thread::freeTLS(slot_); }

    stdx::ustring create() override { return host()->create(); }
    stdx::ustring create(const stdx::ustring& extension) override {
        return host()->create(extension);
    }
    stdx::ustring directory() override { return host()->directory(); }
    void release(const stdx::ustring& name) override { host()->release(name); }

    InterfacePtr<ITempFileHost> setThreadHost(ITempFileHost* host) override;
    InterfacePtr<ITempFileHost> threadHost() override;

    InterfacePtr<ITempFileHost> defaultHost() override;
    void setDefaultHost(ITempFileHost* host) override;

private:
    struct HostTLSData : Thread::TLSData {
        explicit HostTLSData(ITempFileHost* own) : host(own, true) {}
        InterfacePtr<ITempFileHost> host;
    };

    InterfacePtr<ITempFileHost> host() {
        auto own = threadHost();
        return own ? own : defaultHost();
    }

    const Thread::TLSIndex slot_;
    std::mutex mutex_;
    InterfacePtr<ITempFileHost> default_; // under mutex_; null until it is asked for
};

InterfacePtr<ITempFileHost> TempFileService::setThreadHost(ITempFileHost* host) {
    Thread* const thread = current_thread();
    if (!thread) throw IllegalStateException(ORB_HERE);
    auto former = threadHost();
    thread->setTLSValue(slot_, host ? new HostTLSData(host) : nullptr);
    return former;
}

InterfacePtr<ITempFileHost> TempFileService::threadHost() {
    Thread* const thread = current_thread();
    const auto* const data =
        thread ? static_cast<HostTLSData*>(thread->getTLSValue(slot_)) : nullptr;
    return data ? data->host : nullptr;
}

InterfacePtr<ITempFileHost> TempFileService::defaultHost() {
    const std::lock_guard lock(mutex_);
    if (!default_) default_ = create_lazy_temp_file_host(system_directory());
    return default_;
}

void TempFileService::setDefaultHost(ITempFileHost* host) {
    InterfacePtr<ITempFileHost> former(host, true); // ends outside of the lock
    const std::lock_guard lock(mutex_);
    default_.swap(former);
}

stdx::ustring create_temp_file_name() {
    if (ITempFileService* const service = get_service<ITempFileService>()) return service->create();
    return TempDirectory::make_file(system_directory(), kTempFileExtension);
}

} // namespace core

ORBCORE_REGISTER(core::TempFileService);
