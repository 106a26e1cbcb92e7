// What a file system knows about an entry; also the cursor of the search that found it.
//
//   for (auto stat = files->find(directory, u"*.txt"); stat; ) {
//       use(stat->url(), stat->size());
//       if (!stat->next()) break;
//   }
//
// An object serves one thread at a time. The operations on an entry tell what was found; it may
// have changed since.
#pragma once

#include <core/component/IUnknown.h>
#include <core/files/URL.h>
#include <core/numbers/Date.h>

#include <cstdint>

namespace core {

inline constexpr _GUID IID_IFileStat = "ed29298d-8266-48ca-85b3-402383c3e98b"_guid;
inline constexpr _GUID IID_IFileStatEx = "9eed1f37-546b-4798-be8c-66ce363f44e0"_guid;
inline constexpr _GUID IID_IFileStat2 = "828ef07b-9ebd-4239-bfc5-5a463ca359a4"_guid;
inline constexpr _GUID IID_IFileStat3 = "e9a2acd7-bc96-4410-821a-d637898c9a2f"_guid;

// The bits of `IFileStat::attributes`. For a real file the high word holds the bits of the kind of
// the file, as in `st_mode`.
enum FileAttributes : std::uint32_t {
    kFileReadOnly = 1, // its owner may not write
    kFileDirectory = 2,
    kFileOthersMayRead = 16,
};

class IFileStat : public IUnknown {
public:
    ORB_INTERFACE(IFileStat, IID_IFileStat)

    virtual URL url() = 0;
    virtual Date
    creationDate() = 0; // as dates of real files are known: of the last change of state
    virtual Date modificationDate() = 0;
    virtual std::uint64_t size() = 0; // in bytes
    virtual std::uint32_t attributes() = 0;
    // Change the entry itself; throw `core::FileException`.
    virtual void setCreationDate(const Date& date) = 0;
    virtual void setModificationDate(const Date& date) = 0;
    virtual void setAttributes(std::uint32_t attributes) = 0;
    // Moves to the next match; false at the end, where the object stays at the last.
    virtual bool next() = 0;
};

// The sides of a real file that other schemes' files need not have; asked for by `QueryInterface`.

class IFileStatEx : public IUnknown {
public:
    ORB_INTERFACE(IFileStatEx, IID_IFileStatEx)

    virtual Date accessDate() = 0;
    virtual std::uint32_t permissions() = 0; // the twelve low bits of `st_mode`
};

// Which file it is, whatever its name.
class IFileStat2 : public IUnknown {
public:
    ORB_INTERFACE(IFileStat2, IID_IFileStat2)

    virtual std::uint64_t device() = 0;
    virtual std::uint64_t inode() = 0;
};

class IFileStat3 : public IUnknown {
public:
    ORB_INTERFACE(IFileStat3, IID_IFileStat3)

    // The entry is a symbolic link; all else that is told here is told of its target, if it has one.
    virtual bool symbolicLink() = 0;
    virtual stdx::ustring linkTarget() = 0; // empty for anything else
};

} // namespace core
