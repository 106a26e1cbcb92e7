// The file system of a process: every operation on a URL goes through this service, which hands it
// to the scheme that the URL names.
//
//   core::IFileSystem* const files = core::get_service<core::IFileSystem>();
//   auto file = files->open(core::URL(u"file:///tmp/a.txt", false), core::kFileOpenForRead);
//   files->copy(from, to);
//
// The library brings the schemes "file" and "sfile"; components register their own. All operations
// may be called from any thread. They throw `core::FileException`; code `BadPath` for a URL of no
// known scheme.
//
// Where locks of the system do not tell who has a file open, programs share it through a lock file
// beside it; docs/files.md tells that protocol.
#pragma once

#include <core/files/FileMode.h>
#include <core/files/IScheme.h>

#include <string_view>

namespace core {

inline constexpr _GUID CLSID_FileSystem = "b9ddf02b-9b3d-4d30-8265-7e68d5360a90"_guid;
inline constexpr _GUID IID_IFileSystem = "997f5345-b862-40f7-a7ea-66c14e2b40da"_guid;

// What the name of a lock file adds to that of its file.
inline constexpr char16_t kLockFileExtension[] = u".cfl";

// In an extended mode (`FileExMode`): empty the file.
inline constexpr int kFileExTruncate = 0x800000;

class IFileSystem : public IUnknown {
public:
    ORB_INTERFACE(IFileSystem, IID_IFileSystem)

    // ---- Schemes. Names are compared without regard to case. A null scheme is a fault of the
    // program and stops it.

    // Enters the scheme for all threads, in place of one of the same name. False once the process
    // is about to end.
    virtual bool registerScheme(InterfacePtr<IScheme> scheme) = 0;
    // True if there was one.
    virtual bool revokeScheme(std::u16string_view name) = 0;
    // Enters the scheme for the calling thread, until that thread ends; there it hides one that is
    // registered. False if the thread has one of that name already, and on a thread that is none of
    // this library's.
    virtual bool mountScheme(IScheme* scheme) = 0;
    virtual bool unmountScheme(std::u16string_view name) = 0;
    // Null for an unknown name.
    virtual InterfacePtr<IScheme> getScheme(std::u16string_view name) = 0;

    // ---- Files and directories.

    virtual InterfacePtr<IFile> open(const URL& url, int mode) = 0; // flags of `FileMode`
    // Opens in an extended mode (`FileExMode`), agreed on with other programs by the lock file.
    // Throws code `Access` where lock files are not possible, `Sharing` where somebody has the file
    // open in a way that does not go with this one, and when 1024 have it open.
    virtual InterfacePtr<IFile> openWithLockFile(const URL& url, int exMode) = 0;
    virtual bool exists(const URL& url) = 0;
    // What the URL names, or with a mask ("*" is any text, "?" any character) the first entry of
    // that directory that fits; null when there is none, and for an unknown scheme.
    virtual InterfacePtr<IFileStat> find(const URL& url, const char16_t* mask) = 0;
    virtual void createDirectory(const URL& url) = 0;
    // Removes what the URL names, or with a mask the entries of that directory that fit. A directory
    // goes with all that it holds.
    virtual void remove(const URL& url, const char16_t* mask) = 0;
    // Removes the file if nobody has it open through its lock file; true if so.
    virtual bool removeWithLockFile(const URL& url) = 0;
    // Contents, attributes and dates. An existing target is overwritten.
    virtual void copy(const URL& from, const URL& to) = 0;
    virtual void move(const URL& from, const URL& to) = 0;

    // True for URLs of any other scheme than "file"; for that one what the path service of the
    // process says, true without one.
    virtual bool lockFilesPossible(const URL& url) = 0;
    virtual stdx::ustring lockFileName(const stdx::ustring& path) = 0;
    // Ends what `openWithLockFile` began; nothing happens for another file. The file itself closes
    // with its last reference.
    virtual void closeWithLockFile(IFile* file) = 0;
};

} // namespace core
