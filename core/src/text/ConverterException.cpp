#include <core/text/ConverterException.h>

#include <core/component/ExceptionObject.h>
#include <core/component/Messages.h>

namespace core {
namespace {

stdx::ustring message_of(ConverterException::Error error, const stdx::ustring& encoding) {
    using Error = ConverterException::Error;
    if (error == Error::None) return {};
    stdx::ustring text = load_core_wstring(error == Error::BadName ? "IDS_CNVERROR_BADNAME"
                                                                   : "IDS_CNVERROR_BADDATA");
    text += u" '";
    text += encoding;
    text += u'\'';
    return text;
}

} // namespace

ConverterException::ConverterException(IExceptionObject* inner)
    : ConverterException(Error::None, stdx::ustring(), inner) {}

ConverterException::ConverterException(Error error, const stdx::ustring& encoding,
                                       IExceptionObject* inner)
    : Exception(CLSID_ConverterExceptionObject, message_of(error, encoding), inner),
      error_(error),
      encoding_(encoding) {}

} // namespace core

ORBCORE_EXCEPTION_OBJECT(ConverterException);
