#include <core/persistence/ObjectFile.h>

#include "StorageParts.h"

#include "component/MessageFormat.h"

#include <core/component/IllegalArgumentException.h>
#include <core/component/Messages.h>
#include <core/component/SCOM_Process.h>
#include <core/component/UnsupportedOperationException.h>
#include <core/files/FileException.h>
#include <core/persistence/CompactPersistenceStorage.h>

#include <stdexcept>

namespace core {
namespace {

Exception stored_data_error(const stdx::ustring& description, IExceptionObject* cause) {
    Exception exception(description, cause);
    exception.categories().set(static_cast<std::size_t>(ValuesExceptionCategory::StoredDataError));
    return exception;
}

// What begins a file in a form, see docs/formats/storages.md.
StorageForm form_of(IFileEx& file) {
    const long long start = file.seek(0, kSeekFromCurrent);
    unsigned char bytes[2] = {};
    const unsigned first = file.read(bytes, 1);
    if (first == 1) file.read(bytes + 1, 1);
    file.seek(start, kSeekFromStart);
    if ((bytes[0] == 1 || bytes[0] == 2) && bytes[1] == 1) return StorageForm::Compact;
    return bytes[0] >= 0x40 && bytes[0] <= 0x5F ? StorageForm::Binary : StorageForm::Text;
}

template <class Storage> InterfacePtr<Storage> make_storage(const _GUID& clsid) {
    auto storage = create_object<Storage>(clsid);
    ORB_ASSERT(storage); // the storages are this library's
    return storage;
}

void write_file(IPersistableObject* object, IFile* file, StorageForm form) {
    if (form == StorageForm::Compact) {
        const auto storage =
            make_storage<ICompactOutPersistenceStorage>(CLSID_CompactOutPersistenceStorage);
        storage->attach(file, nullptr);
        write_object(storage.get(), object);
        storage->close();
        return;
    }
    const auto storage = make_storage<IOutPersistenceStorage>(
        form == StorageForm::Binary ? CLSID_BinaryStreamOutPersistenceStorage
                                    : CLSID_StreamOutPersistenceStorage);
    const InterfacePtr<IStreamPersistenceStorage> stream(storage);
    stream->attach(file);
    write_object(storage.get(), object);
    stream->close();
}

} // namespace

void write_object(IOutPersistenceStorage* storage, IPersistableObject* object) {
    ORB_ASSERT(object);
    ListOutStream& list = *storage->listStream();
    list->beginList();
    list->putGuid(object->getClsid());
    object->serialize(storage);
    list->endList();
}

InterfacePtr<IPersistableObject> read_object(IInPersistenceStorage* storage) {
    ListInStream& list = *storage->listStream();
    _GUID clsid;
    list->beginList();
    list->getGuid(clsid);
    const auto object = create_object<IPersistableObject>(clsid);
    if (!object)
        throw stored_data_error(
            format_message(load_core_wstring("IDS_ERR_STORED_CLASS_UNKNOWN"), to_string(clsid)),
            nullptr);
    object->deserialize(storage);
    list->skipList();
    list->endList();
    return object;
}

InterfacePtr<IInPersistenceStorage> open_in_storage(IFileEx* file) {
    const StorageForm form = form_of(*file);
    if (form == StorageForm::Compact) {
        const auto storage =
            make_storage<ICompactInPersistenceStorage>(CLSID_CompactInPersistenceStorage);
        storage->attach(file, nullptr);
        return storage;
    }
    auto storage = make_storage<IInPersistenceStorage>(form == StorageForm::Binary
                                                           ? CLSID_BinaryStreamInPersistenceStorage
                                                           : CLSID_StreamInPersistenceStorage);
    InterfacePtr<IStreamPersistenceStorage>(storage)->attach(file);
    return storage;
}

InterfacePtr<IPersistableObject> load_object(const URL& url) {
    const InterfacePtr<IFile> file = process_file_system().open(url, kFileOpenForRead);
    const auto unreadable = [&url](IExceptionObject* cause) {
        return stored_data_error(
            format_message(load_core_wstring("IDS_ERR_OBJECT_FILE"), url.presentation()), cause);
    };
    const InterfacePtr<IFileEx> random(file);
    if (!random) throw unreadable(UnsupportedOperationException(ORB_HERE, nullptr).object().get());
    try {
        return read_object(open_in_storage(random.get()).get());
    } catch (const FileException&) {
        throw;
    } catch (const Exception& fault) {
        throw unreadable(fault.object().get());
    } catch (const std::invalid_argument&) { // of stored exceptions, see `Exception::deserialize`
        throw unreadable(ListStreamException().object().get());
    }
}

void save_object(IPersistableObject* object, const URL& url, StorageForm form) {
    IFileSystem& files = process_file_system();
    const URL fresh(url.text() + u".new", url.withFragment());
    // Until it is open the file may be that of another one who saves.
    InterfacePtr<IFile> file = files.open(fresh, kFileOpenForWrite);
    try {
        write_file(object, file.get(), form);
        file->flush();
        file.reset();
        files.move(fresh, url);
    } catch (...) {
        file.reset();
        try {
            files.remove(fresh, nullptr);
        } catch (const Exception&) { // what is told is why it could not be saved
        }
        throw;
    }
}

} // namespace core
