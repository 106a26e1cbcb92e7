// Directories for temporary files. A host names new files, knows which are in use, and removes them
// when they are released; what dead processes left in its directory goes when a host starts.
//
//   const auto host = core::create_temp_file_host(u"/var/tmp/reports");
//   const stdx::ustring path = host->create();
//   …
//   host->release(path);
//
// The service of the process has a host for the system's temporary directory; a thread may put its
// own in front of it. Hosts and the service may be used from any thread.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/platform/api.h>

#include <elm/string>

namespace core {

inline constexpr _GUID IID_ITempFileHost = "7d9424b7-120f-425d-8f41-277ea2aaa1a4"_guid;
inline constexpr _GUID IID_ITempFileHostAuto = "60b07c83-2b82-489c-a252-caa8b891495b"_guid;
inline constexpr _GUID IID_ITempFileService = "88164cb8-7e5f-4030-9544-7475a725f6e3"_guid;
inline constexpr _GUID IID_ITempFileServiceTable = "6d97f362-881a-45e7-82ec-bab66cc7e927"_guid;
inline constexpr _GUID CLSID_TempFileService = "e6b6c4bf-9054-4a17-b20b-0ea6c0af3719"_guid;

inline constexpr char16_t kTempFileExtension[] = u".tmp";

class ITempFileHost : public IUnknown {
public:
    ORB_INTERFACE(ITempFileHost, IID_ITempFileHost)

    // Makes an empty file of a new name in the directory and gives its path; it counts as in use
    // until it is released. Throws `FileException`, code `GetTmpFileName`, when that fails.
    virtual stdx::ustring create() = 0; // extension ".tmp"
    virtual stdx::ustring create(const stdx::ustring& extension) = 0;
    virtual stdx::ustring directory() = 0;
    // The file, a path that `create` gave, is not needed any more: it is removed as soon as nobody
    // has it open. A name of other origin is ignored.
    virtual void release(const stdx::ustring& name) = 0;
};

class ITempFileHostAuto : public ITempFileHost {
public:
    ORB_INTERFACE(ITempFileHostAuto, IID_ITempFileHostAuto)

    // Removes every file that the host made, in use or not. The end of the host does the same.
    virtual void clear() = 0;
};

// Its operations as a host go to the host of the calling thread, or else to the default one.
class ITempFileService : public ITempFileHost {
public:
    ORB_INTERFACE(ITempFileService, IID_ITempFileService)

    // The host of the calling thread; null takes it away. Gives the former. Throws
    // `IllegalStateException` on a thread that is no `core::Thread`.
    virtual InterfacePtr<ITempFileHost> setThreadHost(ITempFileHost* host) = 0;
    virtual InterfacePtr<ITempFileHost> threadHost() = 0; // null where none is set
};

// The service's own table: for who sets the process up.
class ITempFileServiceTable : public IUnknown {
public:
    ORB_INTERFACE(ITempFileServiceTable, IID_ITempFileServiceTable)

    virtual InterfacePtr<ITempFileHost> defaultHost() = 0;
    virtual void setDefaultHost(ITempFileHost* host) = 0; // null: the system's directory again
};

// A host for a directory that exists.
ORBCORE_API InterfacePtr<ITempFileHost> create_temp_file_host(const stdx::ustring& directory);
// A host that takes its files along when it ends and, with `removeDirectory`, then the directory too
// if that is empty.
ORBCORE_API InterfacePtr<ITempFileHostAuto>
create_temp_file_host_auto(const stdx::ustring& directory, bool removeDirectory);
// A host that makes its directory, and looks for what was left there, at the first `create`.
ORBCORE_API InterfacePtr<ITempFileHost> create_lazy_temp_file_host(const stdx::ustring& directory);

// A new empty file, by the service of the process; without one, in the system's temporary directory,
// the `TMPDIR` of the environment or "/tmp".
ORBCORE_API stdx::ustring create_temp_file_name();

} // namespace core
