// Values as lists: {"N",12}, {"S","Riga"}, {"#",class of the type,...}. docs/values.md describes the
// form.
#include <core/values/GenericValue.h>

#include "BaseTypeTable.h"
#include "TypeLookup.h"
#include "ValuePayload.h"

#include <core/component/CompatibilityMode.h>
#include <core/component/EventService.h>
#include <core/component/IllegalStateException.h>
#include <core/component/Module.h>
#include <core/files/MemoryFile.h>
#include <core/files/TextFiles.h>
#include <core/persistence/SerializeGuard.h>
#include <core/persistence/StreamPersistenceStorage.h>
#include <core/streams/ListRecord.h>

namespace core {
namespace {

constexpr char16_t kObjectTag = u'#';
constexpr char16_t kIndirectTag = u'@';
constexpr int kIndirectFlag = 0; // is for the object's own use

// Of a process of this compatibility or an older one, values that cannot be stored are not reported.
constexpr int kLastSilentCompatibility = 80304;

void put_tag(ListOutStream& list, char16_t tag) {
    list->putChars(&tag, 1);
}

char16_t get_tag(ListInStream& list) {
    stdx::ustring tag;
    list->getString(tag);
    return tag.size() == 1 ? tag.view().front() : char16_t();
}

const BaseTypeRow* row_of(TypeCode code) noexcept {
    for (const BaseTypeRow& row : base_type_rows)
        if (row.code == code) return &row;
    return nullptr;
}

void report_not_stored(IValue* value) {
    if (compatibility_mode() <= kLastSilentCompatibility) return;
    if (auto* const events = get_service<IEventService>())
        events->fireEvent(SerializeFailureEvent, nullptr, static_cast<IUnknown*>(value));
}

// The class of the type and what the value writes of itself.
void put_object(IOutPersistenceStorage* storage, IValue* value) {
    ListOutStream& list = *storage->listStream();
    IUnknown* const object = value;
    InterfacePtr<IIndirectSerializable> indirect;
    if (storage->isIndirect()) indirect = InterfacePtr<IIndirectSerializable>(object);
    IType* const type = value->getIType();
    put_tag(list, indirect ? kIndirectTag : kObjectTag);
    list->putGuid(type ? *type->getTypeClsid() : kUUIDNull);

    if (const InterfacePtr<IPersistableValue> persistable(object); persistable)
        persistable->serialize(storage);
    else if (indirect)
        indirect->serialize(storage, kIndirectFlag);
    else if (const InterfacePtr<IPersistableObject> stored(object); stored)
        stored->serialize(storage);
    else
        report_not_stored(value);
}

// Null where the value cannot be had: of a type that is not known or does not read its values.
InterfacePtr<IValue> get_object(IInPersistenceStorage* storage, bool isIndirect) {
    ListInStream& list = *storage->listStream();
    _GUID clsid;
    list->getGuid(clsid);
    const InterfacePtr<IType> type = find_type(clsid);
    if (!type) return nullptr;
    if (const InterfacePtr<IPersistableType> reader(type); reader)
        return reader->deserialize(storage);

    InterfacePtr<IValue> value = type->createIValue();
    if (isIndirect) {
        const InterfacePtr<IIndirectSerializable> indirect(value);
        if (!indirect) return nullptr;
        indirect->deserialize(storage, kIndirectFlag);
    } else {
        const InterfacePtr<IPersistableObject> stored(value);
        if (!stored) return nullptr;
        stored->deserialize(storage);
    }
    return value;
}

// A storage of this kind that is put on `file`.
template <class Storage> InterfacePtr<Storage> open_storage(const _GUID& clsid, IFile* file) {
    InterfacePtr<Storage> storage = create_object<Storage>(clsid);
    if (!storage) throw IllegalStateException(ORB_HERE);
    InterfacePtr<IStreamPersistenceStorage>(storage)->attach(file);
    return storage;
}

} // namespace

void put_payload(ListOutStream& list, TypeCode code, const void* payload) {
    switch (code) {
    case TypeCode::Boolean:
        return list->putBool(*static_cast<const bool*>(payload));
    case TypeCode::Numeric:
        return list->putNumeric(*static_cast<const Numeric*>(payload));
    case TypeCode::String:
        return list->putString(*static_cast<const stdx::ustring*>(payload));
    case TypeCode::Date:
        return put_item(list, *static_cast<const Date*>(payload));
    case TypeCode::Type:
        return list->putGuid(*static_cast<const _GUID*>(payload));
    case TypeCode::Undefined:
    case TypeCode::Null:
    case TypeCode::Object:
        break;
    }
}

void GenericValue::serialize(IOutPersistenceStorage* storage) const {
    IValue* const value = lentIValue();
    ListOutStream& list = *storage->listStream();
    list->beginList();
    const TypeCode code = type_code(value);
    if (const BaseTypeRow* const row = row_of(code)) {
        put_tag(list, row->letter);
        put_payload(list, code, value->getDataPtr());
    } else {
        put_object(storage, value);
    }
    list->endList();
}

void GenericValue::deserialize(IInPersistenceStorage* storage, GenericValue& to) {
    ListInStream& list = *storage->listStream();
    list->beginList();
    const char16_t tag = get_tag(list);
    if (const BaseTypeRow* const row = find_base_type_row(tag)) {
        to.setIValue(row->read(list));
    } else if (tag == kObjectTag || tag == kIndirectTag) {
        const InterfacePtr<IValue> value = get_object(storage, tag == kIndirectTag);
        to.setIValue(value.get());
        if (!value) list->skipList();
    } else {
        list->skipList();
    }
    list->endList();
}

void GenericValue::toString(stdx::ustring& out) const {
    const InterfacePtr<IMemoryFile> file = create_memory_file(0);
    const auto storage =
        open_storage<IOutPersistenceStorage>(CLSID_StreamOutPersistenceStorage, file.get());
    serialize(storage.get());
    InterfacePtr<IStreamPersistenceStorage>(storage)->close();
    file->seek(0, kSeekFromStart);
    load_utf8(file.get(), out);
}

void GenericValue::fromString(const stdx::ustring& text, GenericValue& to) {
    const InterfacePtr<IMemoryFile> file = create_memory_file(0);
    save_utf8(file.get(), text);
    file->seek(0, kSeekFromStart);
    const auto storage =
        open_storage<IInPersistenceStorage>(CLSID_StreamInPersistenceStorage, file.get());
    deserialize(storage.get(), to);
}

} // namespace core
