#include <core/numbers/NumericException.h>

#include <core/component/ExceptionObject.h>
#include <core/component/Messages.h>

namespace core {
namespace {

stdx::ustring message_of(NumericException::Error error) {
    static constexpr const char* kKeys[] = {
        nullptr,
        "IDS_NUMERROR_DIVIDEBYZERO",
        "IDS_NUMERROR_NEGATIVEPOW",
        "IDS_NUMERROR_OVERFLOW",
    };
    const auto code = static_cast<std::size_t>(error);
    return load_core_wstring(code < std::size(kKeys) ? kKeys[code] : nullptr);
}

} // namespace

NumericException::NumericException(IExceptionObject* inner)
    : NumericException(Error::None, inner) {}

NumericException::NumericException(Error error, IExceptionObject* inner)
    : Exception(CLSID_NumericExceptionObject, message_of(error), inner), error_(error) {}

} // namespace core

ORBCORE_EXCEPTION_OBJECT(NumericException);
