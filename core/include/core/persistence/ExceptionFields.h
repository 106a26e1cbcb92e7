// How an exception class that adds fields stores them: one line in its source, beside the one that
// makes its twin.
//
//   class TableException : public core::Exception {
//   public:
//       …
//       void serialize(core::IOutPersistenceStorage* storage) const;
//       void deserialize(core::IInPersistenceStorage* storage);
//   private:
//       std::int32_t row_ = 0;
//       stdx::ustring column_;
//   };
//
//   ORBCORE_EXCEPTION_FIELDS(TableException, row_, column_);
//   ORBCORE_EXCEPTION_OBJECT(TableException);
//
// Fields stand in the list behind those of the base, in the order of that line. They may be of any
// type that core/streams/ListRecord.h names. New ones go to the end: older programs pass over them,
// and where an older program's list ends, the further fields stay as they are.
#pragma once

#include <core/component/Exception.h>
#include <core/streams/ListRecord.h>
#include <core/streams/PersistenceStorage.h>

namespace core {

template <class... Fields>
void Exception::serializeWith(IOutPersistenceStorage* storage, const Fields&... fields) const {
    ListOutStream& list = *storage->listStream();
    list->beginList();
    putItems(storage);
    (put_item(list, fields), ...);
    list->endList();
}

template <class... Fields>
void Exception::deserializeWith(IInPersistenceStorage* storage, Fields&... fields) {
    ListInStream& list = *storage->listStream();
    list->beginList();
    getItems(storage);
    (void)(... && (list->nextInList() ? (get_item(list, fields), true) : false));
    list->skipList();
    list->endList();
}

} // namespace core

// Outside any namespace, for a class in `core`.
#define ORBCORE_EXCEPTION_FIELDS(E, ...)                                                           \
    void core::E::serialize(IOutPersistenceStorage* storage) const {                               \
        serializeWith(storage, __VA_ARGS__);                                                       \
    }                                                                                              \
    void core::E::deserialize(IInPersistenceStorage* storage) {                                    \
        deserializeWith(storage, __VA_ARGS__);                                                     \
    }                                                                                              \
    static_assert(true, "a semicolon follows")
