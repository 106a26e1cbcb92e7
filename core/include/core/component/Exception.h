// Failure is a thrown `core::Exception` or a class derived from it.
//
//   throw core::Exception(u"The table is full");
//
//   catch (const core::Exception& exception) {
//       throw core::Exception(u"The report was not made", exception.object().get());
//   }
//
// Each class has a twin, an exception object (core/component/IExceptionObject.h), that keeps the
// exception after its `catch`, stores it, and throws it again with its true class, in another process
// too (core/persistence/ExceptionStore.h). The first field of every exception is the class GUID of
// that twin.
//
// An exception is a value for the thread that holds it: it is copied, kept and thrown again freely,
// and may end on another thread than the one that made it. Catch by reference: a copy that is cut
// down to its base still names the twin of the full class, which would read fields that the copy
// has not got.
//
// `as_plain()` is the safe way to keep the base alone.
//
// A throw costs the capture of raw addresses, at most 97; their text is made when somebody asks. An
// exception with a cause captures nothing: the trace of the deepest cause is the one that counts.
#pragma once

#include <core/component/ExceptionCategory.h>
#include <core/component/IExceptionObject.h>
#include <core/component/Module.h>

#include <atomic>
#include <bitset>
#include <concepts>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <vector>

// The place of a fault, as the constructors of the classes for faults of the program take it:
//   throw core::IllegalStateException(ORB_HERE, nullptr);
#define ORB_HERE core::this_module_name, __LINE__, u"" __FILE__

namespace core {

class ExceptionCounter;
class IInPersistenceStorage;
class IOutPersistenceStorage;

inline constexpr _GUID CLSID_ExceptionObject = "9bed88ff-dcab-4217-b1a4-cf9c350df979"_guid;

namespace detail {
template <class Derived, class Base>
concept StrictlyDerivedFrom = std::derived_from<Derived, Base> && !std::same_as<Derived, Base>;
} // namespace detail

class ORBCORE_API Exception {
public:
    using Categories = std::bitset<kExceptionCategories>;

    Exception() : Exception(stdx::ustring()) {}

    // `inner` is the cause or null, a reference is taken. `uiHelper` is the class GUID of an object
    // that can present this exception. A given `stackText` stands for the captured stack.
    explicit Exception(const stdx::ustring& description, IExceptionObject* inner = nullptr,
                       const _GUID& uiHelper = kUUIDNull, const Categories& categories = {},
                       const stdx::ustring& stackText = {})
        : Exception(CLSID_ExceptionObject, description, inner, uiHelper, categories, stackText) {}

    // For derived classes: `objectClass` names the twin.
    Exception(const _GUID& objectClass, const stdx::ustring& description, IExceptionObject* inner,
              const _GUID& uiHelper = kUUIDNull, const Categories& categories = {},
              const stdx::ustring& stackText = {});

    Exception(const Exception& other);
    Exception(Exception&& other) noexcept;
    Exception& operator=(const Exception& other);
    Exception& operator=(Exception&& other) noexcept;
    ~Exception();

    // A copy that cuts off the fields of a derived class.
    template <detail::StrictlyDerivedFrom<Exception> Derived>
    Exception(const Derived& derived) = delete;

    const _GUID& objectClass() const noexcept { return objectClass_; }
    const stdx::ustring& description() const noexcept { return description_; }
    void setDescription(const stdx::ustring& description) { description_ = description; }
    IExceptionObject* inner() const noexcept { return inner_.get(); } // lent, or null
    void setInner(IExceptionObject* inner) { inner_ = {inner, true}; }

    Categories& categories() noexcept { return categories_; }
    const Categories& categories() const noexcept { return categories_; }
    _GUID& uiHelperUUID() noexcept { return uiHelper_; }
    const _GUID& uiHelperUUID() const noexcept { return uiHelper_; }

    // A new exception object with a copy of this exception. Null without a process, and where the
    // class of the object is not registered. Throws `std::bad_alloc`.
    InterfacePtr<IExceptionObject> object() const;

    // Where the exception was made, see `print_stack_trace`; empty with a cause.
    stdx::ustring creationStackTrace() const;
    // The trace from the other side, see `setOnClientFromServer`.
    const stdx::ustring& serverStackTrace() const noexcept { return serverStack_; }

    // Captures the stack of the caller, without its own frame. Nothing happens when there is a
    // cause or a stack text. The constructor ends with it.
    void initStackTrace();

    // To be called where an exception arrived from a server: the trace that came with it moves to
    // the server's field, the local stack is captured, and the categories that speak of the server
    // machine's own files and printers go, unless a script raised the exception.
    void setOnClientFromServer();

    // The fields of the base as an exception of the base class, with the twin of that class.
    Exception as_plain() const;

    // One list, causes within; docs/formats/exceptions.md. What reads throws `ListStreamException`
    // for anything but the list of an exception with the twin of this one, and
    // `std::invalid_argument` for categories that are not of '0' and '1'; the fields are undefined
    // then. Fields that the list of an older program lacks stay as they are.
    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

protected:
    // For a derived class that adds fields and so has both functions of its own: the list of the base
    // with `fields` behind. core/persistence/ExceptionFields.h defines them, and makes one line of it.
    template <class... Fields>
    void serializeWith(IOutPersistenceStorage* storage, const Fields&... fields) const;
    template <class... Fields>
    void deserializeWith(IInPersistenceStorage* storage, Fields&... fields);

private:
    void putItems(IOutPersistenceStorage* storage) const;
    void getItems(IInPersistenceStorage* storage);

    _GUID objectClass_;
    stdx::ustring description_;
    InterfacePtr<IExceptionObject> inner_;
    std::optional<std::vector<std::uintptr_t>> frames_;
    stdx::ustring creationStack_;
    stdx::ustring serverStack_;
    Categories categories_;
    _GUID uiHelper_;
    InterfacePtr<ExceptionCounter> counter_; // of the thread that made it; null where none is known
};

// `a`; when neither is empty, `a`, a line feed and `b`.
ORBCORE_API stdx::ustring format_exception_descr(const stdx::ustring& a, const stdx::ustring& b);
// The same and a second line, "[component - file (line)]", with `file` as
// `skip_absolute_path` leaves it.
ORBCORE_API stdx::ustring format_exception_descr(const char* component, unsigned int line,
                                                 const char16_t* file, const stdx::ustring& a,
                                                 const stdx::ustring& b);

// What lies in the source tree: an absolute path from the folder that holds "src" or "include", or
// else the file name alone; a relative path as it is. Null gives the empty text.
ORBCORE_API const char16_t* skip_absolute_path(const char16_t* file) noexcept;

// The first object along the chain of causes, `chain` itself included, whose exception has this
// object class; null when there is none.
ORBCORE_API InterfacePtr<IExceptionObject> get_exception_object(IExceptionObject* chain,
                                                                const _GUID& objectClass);

// The number of exceptions alive that the calling thread made, copies included, plus one for the
// thread; null where the calling thread is no `core::Thread`. The word lives as long as the thread.
ORBCORE_API const std::atomic<std::uint32_t>* current_ecxeptions_count() noexcept;

// The description, in UTF-8.
ORBCORE_API std::ostream& operator<<(std::ostream& out, const Exception& exception);

// For logs, in UTF-8: a line for the exception and one for each cause, with categories, then the
// traces that there are.
ORBCORE_API void print_exception_chain(std::ostream& out, const Exception& exception);

} // namespace core
