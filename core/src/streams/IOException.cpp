#include <core/streams/IOException.h>

#include <core/component/ExceptionObject.h>
#include <core/component/Messages.h>

namespace core {
namespace {

stdx::ustring message_of(IOException::Error error) {
    static constexpr const char* kKeys[] = {
        nullptr,
        "IDS_IO_ERR_OUTOFBOUNDS",
        "IDS_IO_ERR_NOSOURCE",
        "IDS_IO_ERR_NOTARGET",
        "IDS_IO_ERR_CHARCONVERSION",
        "IDS_IO_ERR_SOURCEFAULT",
        "IDS_IO_ERR_TARGETFAULT",
    };
    const auto code = static_cast<std::size_t>(error);
    return load_core_wstring(code < std::size(kKeys) ? kKeys[code] : nullptr);
}

} // namespace

IOException::IOException(IExceptionObject* inner)
    : Exception(CLSID_IOExceptionObject, stdx::ustring(), inner) {}

IOException::IOException(Error error, const stdx::ustring& description, IExceptionObject* inner)
    : Exception(CLSID_IOExceptionObject, format_exception_descr(message_of(error), description),
                inner),
      error_(error) {}

} // namespace core

ORBCORE_EXCEPTION_OBJECT(IOException);
