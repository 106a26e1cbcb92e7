// What an object stores itself to, and reads itself from: a stream of lists for its structure, and
// files beside it, the attachments, for binary data of any length. The object sees no more of a
// storage than this; core/persistence has the storages.
//
//   void Picture::serialize(core::IOutPersistenceStorage* storage) {
//       core::ListOutStream& list = *storage->listStream();
//       list->beginList();
//       list->putString(name_);
//       core::copy_file(storage->binFile().get(), pixels_.get(), size);   // written, released
//       list->endList();
//   }
//
//   void Picture::deserialize(core::IInPersistenceStorage* storage) {
//       core::ListInStream& list = *storage->listStream();
//       list->beginList();
//       list->getString(name_);
//       pixels_ = storage->binFile();
//       list->endList();
//   }
//
// Attachments are items of the list, so both sides come to them in one order. Objects are written
// where they stand: what is reached twice is written twice and read back as two objects.
//
// Reading throws `ListStreamException` for what is not there as it was written, and so does a closed
// storage; faults of files pass as they are, text that is no UTF-8 as `IOException`. The place in the
// list is undefined then. A storage is for one thread at a time.
#pragma once

#include <core/component/IPersistableObject.h>
#include <core/component/InterfacePtr.h>
#include <core/streams/IFile.h>
#include <core/streams/ListStream.h>

namespace core {

inline constexpr _GUID IID_IOutPersistenceStorage = "12e9d561-2f1a-4dea-9424-751110f400c0"_guid;
inline constexpr _GUID IID_IInPersistenceStorage = "dc272bc6-4401-49e1-95bc-1600b480ea61"_guid;
inline constexpr _GUID IID_IIndirectSerializable = "94f50ae8-0daa-4268-b018-88f120f7a443"_guid;

class IOutPersistenceStorage : public IUnknown {
public:
    ORB_INTERFACE(IOutPersistenceStorage, IID_IOutPersistenceStorage)

    // Lent until the storage is closed.
    virtual ListOutStream* listStream() = 0;
    // The next attachment, to be written. Release it before the next call for the list: a storage
    // may put it there only then. What fails in a release is thrown by the next call that can.
    virtual InterfacePtr<IFileEx> binFile() = 0;

    // Whether objects that are `IIndirectSerializable` are to be written in that form; at first not.
    virtual void setIndirect(bool indirect) = 0;
    virtual bool isIndirect() = 0;
};

class IInPersistenceStorage : public IUnknown {
public:
    ORB_INTERFACE(IInPersistenceStorage, IID_IInPersistenceStorage)

    // Lent until the storage is closed.
    virtual ListInStream* listStream() = 0;
    // The next attachment as a file of its own, at position 0.
    virtual InterfacePtr<IFileEx> binFile() = 0;
    // The same to be read in sequence, which some storages do without a copy. What is left of it is
    // passed by its release, which must come before the next call for the list;
    // `ForwardOnlyBinFileHolder` also tells what fails there.
    virtual InterfacePtr<IFile> forwardOnlyBinFile() = 0;
};

// An object with a second, shorter form, for storages whose `isIndirect` is set.
class IIndirectSerializable : public IUnknown {
public:
    ORB_INTERFACE(IIndirectSerializable, IID_IIndirectSerializable)

    // `flag` is for the object's own use; who stores it as a value passes 0.
    virtual void serialize(IOutPersistenceStorage* storage, int flag) = 0;
    virtual void deserialize(IInPersistenceStorage* storage, int flag) = 0;
};

} // namespace core
