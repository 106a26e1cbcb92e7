// Exceptions on their way to another process: with all causes, and thrown there with their true
// class.
//
//   catch (const core::Exception& exception) {
//       core::write_exception_object(storage, exception.object().get());
//   }
//
//   if (const auto failure = core::read_exception_object(storage)) {      // in the other process
//       failure->setOnClientFromServer();
//       failure->rethrow();
//   }
//
// docs/formats/exceptions.md describes the list. It carries the exception as it is, the passwords in
// the URLs of `FileException` and `StorageException` included.
#pragma once

#include <core/component/IExceptionObject.h>
#include <core/streams/PersistenceStorage.h>

namespace core {

// A chain that is stored has no more objects than this. Every cause is read inside the exception that
// it caused, and a damaged stream must not exhaust the stack.
inline constexpr unsigned kMaxStoredExceptions = 500;

// One item of a list: the class and what the object writes of itself. A null object is told as such,
// and so is the cause that goes beyond `kMaxStoredExceptions`. Nothing at all is written for an
// object that cannot persist, which no twin is: what stands there instead is not for
// `read_exception_object`.
ORBCORE_API void write_exception_object(IOutPersistenceStorage* storage, IExceptionObject* object);

// Null where null was written, and for a class that the current process does not know, which is
// passed over. Throws `ListStreamException` for what is no such item and for a chain of more than
// `kMaxStoredExceptions`, `std::invalid_argument` as `Exception::deserialize` does.
ORBCORE_API InterfacePtr<IExceptionObject> read_exception_object(IInPersistenceStorage* storage);

} // namespace core
