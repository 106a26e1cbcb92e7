// The service behind core/files/IFileSystem.h.
#pragma once

#include <core/component/EventService.h>
#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/concurrency/RWMutex.h>
#include <core/concurrency/Thread.h>
#include <core/files/IFileSystem.h>
#include <core/text/Compare.h>

#include "files/LockFiles.h"

#include <atomic>
#include <map>

namespace core {

class FileSystem
    : public ObjectRoot
    , public SCOM_Service<FileSystem, &CLSID_FileSystem, &IID_IFileSystem>
    , public IFileSystem
    , public IEventRecipientImpl<FileSystem> {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<FileSystem, IFileSystem, IEventRecipient>();
    }

    FileSystem();
    ~FileSystem();

    bool registerScheme(InterfacePtr<IScheme> handler) override;
    bool revokeScheme(std::u16string_view name) override;
    bool mountScheme(IScheme* scheme) override;
    bool unmountScheme(std::u16string_view name) override;
    InterfacePtr<IScheme> getScheme(std::u16string_view name) override;

    InterfacePtr<IFile> open(const URL& url, int mode) override;
    InterfacePtr<IFile> openWithLockFile(const URL& url, int exMode) override;
    bool exists(const URL& url) override;
    InterfacePtr<IFileStat> find(const URL& url, const char16_t* mask) override;
    void createDirectory(const URL& url) override;
    void remove(const URL& url, const char16_t* mask) override;
    bool removeWithLockFile(const URL& url) override;
    void copy(const URL& from, const URL& to) override;
    void move(const URL& from, const URL& to) override;
    bool lockFilesPossible(const URL& url) override;
    stdx::ustring lockFileName(const stdx::ustring& path) override;
    void closeWithLockFile(IFile* file) override;

    void onEvent(const _GUID& event, void* param, void* source) override;

private:
    class MountsTLSData;
    struct LessNoCase {
        using is_transparent = void;
        bool operator()(std::u16string_view a, std::u16string_view b) const noexcept {
            return compare_nocase(a, b) < 0;
        }
    };
    using Schemes = std::map<stdx::ustring, InterfacePtr<IScheme>, LessNoCase>;

    // The scheme of a URL, and the URL as the scheme wants it.
    struct Target {
        InterfacePtr<IScheme> scheme; // null for an unknown one
        URL url;
    };
    Target target_of(const URL& url);
    Target known_target_of(const URL& url);

    bool transfer(const URL& from, const URL& to,
                  void (ISchemeEx::*operation)(const URL&, const URL&));
    void copy_contents(const URL& from, const URL& to, int sourceMode);

    MountsTLSData* mounts() const;
    void listen_for_end();
    void let_go();

    RWMutex mutex_;
    Schemes schemes_;     // guarded by `mutex_`
    bool closed_ = false; // guarded by `mutex_`
    std::atomic<bool> listening_ = false;
    const Thread::TLSIndex mountsIndex_;
    LockFiles lockFiles_{*this};
};

} // namespace core
