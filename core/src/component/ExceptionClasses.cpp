// The constructors of the exception classes: each names its twin and its message.
#include <core/component/ApplicationException.h>
#include <core/component/CancelOperationException.h>
#include <core/component/CommandLineException.h>
#include <core/component/IllegalArgumentException.h>
#include <core/component/IllegalStateException.h>
#include <core/component/InteractiveSecurityException.h>
#include <core/component/Messages.h>
#include <core/component/RemotingException.h>
#include <core/component/SCOM_Exception.h>
#include <core/component/ThreadException.h>
#include <core/component/UnsupportedOperationException.h>

#include "MessageFormat.h"

namespace core {
namespace {

constexpr char kIllegalArgument[] = "IDS_ERR_ILLEGAL_ARGUMENT";
constexpr char kIllegalState[] = "IDS_ERR_ILLEGAL_STATE";
constexpr char kUnsupportedOperation[] = "IDS_ERR_UNSUPPORTED_OPERATION";

stdx::ustring fault_text(const char* key, const char* component, unsigned line,
                         const char16_t* file, const stdx::ustring& description) {
    return format_exception_descr(component, line, file, load_core_wstring(key), description);
}

stdx::ustring message_of(ThreadException::Error error) {
    static constexpr const char* kKeys[] = {
        nullptr,
        "IDS_ERR_THREAD_INTERRUPTED",
        "IDS_ERR_THREAD_CANCELLED",
        "IDS_ERR_THREAD_EXECUTION",
        "IDS_ERR_THREAD_REJECTEDEXECUTION",
        "IDS_ERR_THREAD_TIMEOUT",
    };
    const auto code = static_cast<std::size_t>(error);
    return load_core_wstring(code < std::size(kKeys) ? kKeys[code] : nullptr);
}

} // namespace

// ---- Faults of the program.

#define ORB_DEFINE_FAULT(Class, key)                                                               \
    Class::Class(IExceptionObject* inner)                                                          \
        : Exception(CLSID_##Class##Object, load_core_wstring(key), inner) {}                       \
    Class::Class(const char* component, unsigned int line, const char16_t* file,                   \
                 IExceptionObject* inner)                                                          \
        : Class(component, line, file, stdx::ustring(), inner) {}                                  \
    Class::Class(const char* component, unsigned int line, const char16_t* file,                   \
                 const stdx::ustring& description, IExceptionObject* inner)                        \
        : Exception(CLSID_##Class##Object, fault_text(key, component, line, file, description),    \
                    inner) {}

ORB_DEFINE_FAULT(IllegalArgumentException, kIllegalArgument)
ORB_DEFINE_FAULT(IllegalStateException, kIllegalState)
ORB_DEFINE_FAULT(UnsupportedOperationException, kUnsupportedOperation)

#undef ORB_DEFINE_FAULT

void fail_assertion(const char* component, unsigned int line, const char16_t* file,
                    const char16_t* expression) {
    throw IllegalArgumentException(component, line, file, expression);
}

// ---- Applications and their users.

CancelOperationException::CancelOperationException(IExceptionObject* inner)
    : Exception(CLSID_CancelOperationExceptionObject, stdx::ustring(), inner) {}

ApplicationException::ApplicationException(IExceptionObject* inner)
    : ApplicationException(load_core_wstring("IDS_ERR_APPLICATION_EXCEPTION"), inner) {}

ApplicationException::ApplicationException(const stdx::ustring& description,
                                           IExceptionObject* inner)
    : Exception(CLSID_ApplicationExceptionObject, description, inner) {}

InteractiveSecurityException::InteractiveSecurityException(IExceptionObject* inner)
    : InteractiveSecurityException(stdx::ustring(), inner) {}

InteractiveSecurityException::InteractiveSecurityException(const stdx::ustring& description,
                                                           IExceptionObject* inner)
    : Exception(CLSID_InteractiveSecurityExceptionObject, description, inner) {}

stdx::ustring cli_error_descr(const char16_t* option) {
    return format_message(load_core_wstring("IDS_ERR_CLI_OPTION"),
                          stdx::ustring(option ? option : u""));
}

CommandLineException::CommandLineException(IExceptionObject* inner)
    : CommandLineException(nullptr, inner) {}

CommandLineException::CommandLineException(const char16_t* option, IExceptionObject* inner)
    : Exception(CLSID_CommandLineExceptionObject, cli_error_descr(option), inner) {}

// ---- Components, libraries, machines.

SCOM_Exception::SCOM_Exception(IExceptionObject* inner)
    : SCOM_Exception(Reason::Unspecified, stdx::ustring(), inner) {}

SCOM_Exception::SCOM_Exception(Reason reason, const stdx::ustring& description,
                               IExceptionObject* inner)
    : Exception(CLSID_SCOM_ExceptionObject, description, inner), reason_(reason) {}

VersionException::VersionException(IExceptionObject* inner)
    : VersionException(stdx::ustring(), inner) {}

VersionException::VersionException(const stdx::ustring& description, IExceptionObject* inner)
    : VersionException(description, {}, {}, inner) {}

VersionException::VersionException(const stdx::ustring& description, const stdx::string& module,
                                   const stdx::ustring& version, IExceptionObject* inner)
    : Exception(CLSID_VersionExceptionObject, description, inner),
      module_(module),
      version_(version) {}

LibraryLoadException::LibraryLoadException(IExceptionObject* inner)
    : Exception(CLSID_LibraryLoadExceptionObject, stdx::ustring(), inner) {}

LibraryLoadException::LibraryLoadException(const stdx::ustring& library, IExceptionObject* inner)
    : Exception(CLSID_LibraryLoadExceptionObject,
                format_message(load_core_wstring("IDS_LIBRARY_LOAD_ERROR_NOT_FOUND"), library),
                inner) {}

LibraryLoadException::LibraryLoadException(const stdx::ustring& library,
                                           const stdx::ustring& detail, IExceptionObject* inner)
    : Exception(CLSID_LibraryLoadExceptionObject,
                format_message(load_core_wstring("IDS_LIBRARY_LOAD_ERROR"), library, detail),
                inner) {}

RemotingException::RemotingException(IExceptionObject* inner)
    : RemotingException(stdx::ustring(), inner) {}

RemotingException::RemotingException(const stdx::ustring& description, IExceptionObject* inner)
    : Exception(CLSID_RemotingExceptionObject, description, inner) {}

// ---- Threads.

ThreadException::ThreadException(IExceptionObject* inner) : ThreadException(Error::None, inner) {}

ThreadException::ThreadException(Error error, IExceptionObject* inner)
    : ThreadException(error, stdx::ustring(), inner) {}

ThreadException::ThreadException(Error error, const stdx::ustring& description,
                                 IExceptionObject* inner)
    : Exception(CLSID_ThreadExceptionObject,
                error == Error::None ? description
                                     : format_exception_descr(message_of(error), description),
                inner),
      error_(error) {}

StackOverflowException::StackOverflowException(IExceptionObject* inner)
    : Exception(CLSID_StackOverflowExceptionObject, stdx::ustring(), inner) {}

} // namespace core
