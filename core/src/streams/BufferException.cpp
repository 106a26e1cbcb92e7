#include <core/streams/BufferException.h>

#include <core/component/ExceptionObject.h>
#include <core/component/Messages.h>

namespace core {
namespace {

stdx::ustring message_of(BufferException::Error error) {
    static constexpr const char* kKeys[] = {
        nullptr,
        "IDS_EXCP_BUFFER_OUTOFBOUNDS",
        "IDS_EXCP_BUFFER_ILLEGALMARK",
        "IDS_EXCP_BUFFER_READONLY",
        "IDS_EXCP_BUFFER_OVERFLOW",
        "IDS_EXCP_BUFFER_UNDERFLOW",
    };
    const auto code = static_cast<std::size_t>(error);
    return load_core_wstring(code < std::size(kKeys) ? kKeys[code] : nullptr);
}

} // namespace

BufferException::BufferException(IExceptionObject* inner)
    : Exception(CLSID_BufferExceptionObject, stdx::ustring(), inner) {}

BufferException::BufferException(Error error, const stdx::ustring& description,
                                 IExceptionObject* inner)
    : Exception(CLSID_BufferExceptionObject, format_exception_descr(message_of(error), description),
                inner),
      error_(error) {}

} // namespace core

ORBCORE_EXCEPTION_OBJECT(BufferException);
