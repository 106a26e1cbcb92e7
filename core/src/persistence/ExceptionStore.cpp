#include <core/persistence/ExceptionStore.h>

#include <core/component/SCOM_Process.h>
#include <core/persistence/ExceptionFields.h>
#include <core/streams/ListStreamException.h>

namespace core {
namespace {

thread_local constinit unsigned objects = 0; // that are being stored or read, one in another

class OneObject {
public:
    OneObject() noexcept { ++objects; }
    ~OneObject() { --objects; }
    OneObject(const OneObject&) = delete;
    OneObject& operator=(const OneObject&) = delete;
};

// Bit 23 first.
stdx::ustring text_of(const Exception::Categories& categories) {
    char16_t text[kExceptionCategories];
    for (std::size_t i = 0; i < kExceptionCategories; ++i)
        text[i] = categories.test(kExceptionCategories - 1 - i) ? u'1' : u'0';
    return stdx::ustring(text, kExceptionCategories);
}

Exception::Categories categories_from(const stdx::ustring& text) {
    return Exception::Categories(text.data(), std::min(text.size(), kExceptionCategories), u'0',
                                 u'1');
}

} // namespace

void Exception::serialize(IOutPersistenceStorage* storage) const {
    serializeWith(storage);
}

void Exception::deserialize(IInPersistenceStorage* storage) {
    deserializeWith(storage);
}

void Exception::putItems(IOutPersistenceStorage* storage) const {
    ListOutStream& list = *storage->listStream();
    list->putGuid(objectClass_);
    list->putString(description_);
    write_exception_object(storage, inner_.get());
    list->putString(creationStackTrace());
    list->putString(text_of(categories_));
    list->putGuid(uiHelper_);
}

void Exception::getItems(IInPersistenceStorage* storage) {
    ListInStream& list = *storage->listStream();
    // The twin that the class names has the fields of its own class: no list may name another one.
    _GUID objectClass;
    list->getGuid(objectClass);
    if (objectClass != objectClass_) throw ListStreamException();

    list->getString(description_);
    inner_ = read_exception_object(storage);
    if (!list->nextInList()) return;

    stdx::ustring categories;
    frames_.reset();
    list->getString(creationStack_);
    list->getString(categories);
    categories_ = categories_from(categories);
    list->getGuid(uiHelper_);
}

void write_exception_object(IOutPersistenceStorage* storage, IExceptionObject* object) {
    const OneObject counted;
    if (objects > kMaxStoredExceptions) object = nullptr;
    const InterfacePtr<IPersistableObject> state(object);
    if (object && !state) return;
    ListOutStream& list = *storage->listStream();
    list->beginList();
    list->putGuid(state ? state->getClsid() : kUUIDNull);
    if (state) state->serialize(storage);
    list->endList();
}

InterfacePtr<IExceptionObject> read_exception_object(IInPersistenceStorage* storage) {
    const OneObject counted;
    ListInStream& list = *storage->listStream();
    _GUID clsid;
    list->beginList();
    list->getGuid(clsid);

    InterfacePtr<IExceptionObject> object;
    if (clsid != kUUIDNull) {
        if (objects > kMaxStoredExceptions) throw ListStreamException();
        object = create_object<IExceptionObject>(clsid);
    }
    const InterfacePtr<IPersistableObject> state(object);
    if (state) state->deserialize(storage);
    list->skipList();
    list->endList();
    return state ? object : nullptr;
}

} // namespace core
