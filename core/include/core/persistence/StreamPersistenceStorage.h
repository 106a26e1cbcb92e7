// Storages in one stream, attachments among the items of the list: as text that people can read, or
// as bytes, which are smaller and faster.
//
//   auto storage = core::create_object<core::IOutPersistenceStorage>(
//       core::CLSID_StreamOutPersistenceStorage);
//   core::InterfacePtr<core::IStreamPersistenceStorage> stream(storage);
//   stream->open(url);
//   object->serialize(storage.get());
//   stream->close();                     // the release of a storage closes it, too, but tells nothing
//
// | class                              | list          | attachment                               |
// |------------------------------------|---------------|------------------------------------------|
// | Stream{Out,In}PersistenceStorage   | text in UTF-8 | an item {#base64:…}                      |
// | BinaryStream{Out,In}…              | bytes         | an item, the list of a 0 and the writes  |
//
// docs/formats/storages.md describes the formats. All four can be part of an outer object.
//
// Attachments of text storages pass through temporary files: a written one stands in the list in
// front of what is written to the list after its release, and one that is still held when the
// storage closes is not written. An attachment that is written as bytes goes to the stream as it is
// written, can neither be read nor positioned, and must be released before the storage closes.
#pragma once

#include <core/streams/PersistenceStorage.h>

namespace core {

inline constexpr _GUID CLSID_StreamOutPersistenceStorage =
    "7dcc2742-039d-4409-bd19-27b85e01b509"_guid;
inline constexpr _GUID CLSID_StreamInPersistenceStorage =
    "ec0eba19-ea0d-40e9-87de-b476783dcd16"_guid;
inline constexpr _GUID CLSID_BinaryStreamOutPersistenceStorage =
    "0c0cb10d-54f0-421d-bb10-5cc245d2eabd"_guid;
inline constexpr _GUID CLSID_BinaryStreamInPersistenceStorage =
    "7b51d02d-bdbe-406f-a6db-24c27f417e14"_guid;

inline constexpr _GUID IID_IStreamPersistenceStorage = "dd667985-7338-4828-b2d1-943e345241af"_guid;

// The second interface of these storages.
class IStreamPersistenceStorage : public IUnknown {
public:
    ORB_INTERFACE(IStreamPersistenceStorage, IID_IStreamPersistenceStorage)

    // Closes, then begins to write or read where the file stands and keeps it; null only closes.
    virtual void attach(IFile* file) = 0;
    // The same with a file of the file system, which is emptied for writing.
    virtual void open(const URL& url) = 0;
    // Throws what could not be written; the storage is closed all the same.
    virtual void close() = 0;
};

} // namespace core
