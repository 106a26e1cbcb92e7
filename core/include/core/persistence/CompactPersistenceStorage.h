// Storages in one file of sections: the list as text, then every attachment as it is, all of it
// through a filter if the caller has one, to compress or to encrypt it.
//
//   auto storage = core::create_object<core::ICompactOutPersistenceStorage>(
//       core::CLSID_CompactOutPersistenceStorage);
//   storage->open(url, transform.get());
//   object->serialize(storage.get());
//   storage->close();                    // writes the file
//
// docs/formats/storages.md describes the format. Both classes can be part of an outer object.
//
// The sections collect in temporary files. An attachment can be read and positioned while it is
// written, also after later items of the list. Attachments must be read in the order in which they
// were written; one that is passed over cannot be had later.
#pragma once

#include <core/streams/PersistenceStorage.h>

namespace core {

class IFileExFactory;

inline constexpr _GUID CLSID_CompactOutPersistenceStorage =
    "903da480-45f6-401b-b5ba-721c912a7176"_guid;
inline constexpr _GUID CLSID_CompactInPersistenceStorage =
    "c4913c9c-ab36-4266-826a-0ade42c7c48a"_guid;

inline constexpr _GUID IID_ICompactStreamTransform = "c220d141-ed3a-424f-955d-d69e25ba93cd"_guid;
inline constexpr _GUID IID_ICompactOutPersistenceStorage =
    "3b4c11b8-6293-40c3-a9ce-92c429ad52f3"_guid;
inline constexpr _GUID IID_ICompactInPersistenceStorage =
    "4dc3b506-7d1f-4c5b-8506-8cbaf065e5fa"_guid;

// A filter. It is given by who writes; reading makes it again by its class, which must be registered
// in the process. The library has none of its own.
class ICompactStreamTransform : public IUnknown {
public:
    ORB_INTERFACE(ICompactStreamTransform, IID_ICompactStreamTransform)

    virtual const _GUID& getClsid() = 0;
    // The file to write through. Its `flush` is the last call on it and completes what is written.
    virtual InterfacePtr<IFile> wrapOutput(IFile* target) = 0;
    // The file to read through. One that is an `IFileEx` is positioned instead of read where
    // sections are passed over.
    virtual InterfacePtr<IFile> wrapInput(IFile* source) = 0;
};

class ICompactOutPersistenceStorage : public IOutPersistenceStorage {
public:
    ORB_INTERFACE(ICompactOutPersistenceStorage, IID_ICompactOutPersistenceStorage)

    // Closes, then keeps both for `close`, which writes where the file stands then; a null file only
    // closes. The transform may be null.
    virtual void attach(IFile* file, ICompactStreamTransform* transform) = 0;
    // The same with a file of the file system, which is emptied at once.
    virtual void open(const URL& url, ICompactStreamTransform* transform) = 0;
    // Writes the file. Throws what could not be written; the storage is closed all the same.
    virtual void close() = 0;
};

class ICompactInPersistenceStorage : public IInPersistenceStorage {
public:
    ORB_INTERFACE(ICompactInPersistenceStorage, IID_ICompactInPersistenceStorage)

    // Closes, then reads the file from where it stands and keeps it; a null file only closes.
    // Sections are copied to files of `tempFiles`, temporary files if it is null. The result is the
    // transform of the file, if it has one. A file that is none of this format, or whose transform
    // nobody knows, leaves the storage closed; `listStream` throws then. Throws
    // `ListStreamException` for a file that ends in its first section.
    virtual InterfacePtr<ICompactStreamTransform> attach(IFile* file,
                                                         IFileExFactory* tempFiles) = 0;
    // The same with a file of the file system and temporary files.
    virtual void open(const URL& url) = 0;
    virtual void close() = 0;
};

} // namespace core
