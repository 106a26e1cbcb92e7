// Files that hold one object: its class, and what the object wrote of itself. This is the way of an
// object from a URL into the process and back.
//
//   auto invoice = core::load_object(core::URL(u"file:///srv/invoices/17", false));
//   core::InterfacePtr<core::IContext_> context(invoice);       // to be used by scripts
//
//   core::save_object(invoice.get(), url, core::StorageForm::Binary);
//
// The storage may be any of docs/formats/storages.md, its list is {class, what the object writes}.
#pragma once

#include <core/component/IPersistableObject.h>
#include <core/streams/PersistenceStorage.h>

namespace core {

class URL;

enum class StorageForm { Text, Binary, Compact };

// One item of the storage's list. Nobody else reads what a null object would be: it is a fault.
ORBCORE_API void write_object(IOutPersistenceStorage* storage, IPersistableObject* object);

// Makes the object and lets it read itself. Throws `Exception` with the category `StoredDataError`
// for a class that the process does not know or that does not persist, before anything is read of
// it, and `ListStreamException` for what is no such item; what the object throws passes.
ORBCORE_API InterfacePtr<IPersistableObject> read_object(IInPersistenceStorage* storage);

// Reads from the position of the file, which tells the form of its storage by the first bytes.
ORBCORE_API InterfacePtr<IInPersistenceStorage> open_in_storage(IFileEx* file);

// Both go through the file system of the process and throw `FileException`. What else goes wrong in
// reading is an `Exception` that names the file, with the fault as its cause.
ORBCORE_API InterfacePtr<IPersistableObject> load_object(const URL& url);
// The file is replaced as a whole: it is written beside its place and moved there when it is
// complete, so that a fault leaves what was there.
ORBCORE_API void save_object(IPersistableObject* object, const URL& url,
                             StorageForm form = StorageForm::Text);

} // namespace core
