// The exceptions of the tokenizer and the template: their messages and their twins.
#include <core/component/ExceptionObject.h>
#include <core/component/Messages.h>
#include <core/text/StringTemplateException.h>
#include <core/text/StringTokenizerException.h>

#include <string>

namespace core {
namespace {

stdx::ustring with_position(const char* key, unsigned int position) {
    stdx::ustring text = load_core_wstring(key);
    text += u' ';
    for (const char c : std::to_string(position)) text += static_cast<char16_t>(c);
    return text;
}

stdx::ustring message_of(StringTokenizerException::Error error, unsigned int position) {
    using Error = StringTokenizerException::Error;
    switch (error) {
    case Error::MissedDelimiter:
        return with_position("IDS_ERR_STRING_UTILS_MISSED_DELIM", position);
    case Error::MissedCloseQuote:
        return with_position("IDS_ERR_STRING_UTILS_MISSED_CLOSE_QUOTATION", position);
    case Error::UnexpectedQuotation:
        return with_position("IDS_ERR_STRING_UTILS_UNEXPECTED_QUOTATION", position);
    case Error::None:
        break;
    }
    return {};
}

stdx::ustring message_of(StringTemplateException::Error error, unsigned int position) {
    using Error = StringTemplateException::Error;
    switch (error) {
    case Error::WrongParam:
        return with_position("IDS_TEMPLATE_PARAM_WRONG", position);
    case Error::NotEnough:
        return load_core_wstring("IDS_TEMPLATE_PARAMS_NOTENOUGH");
    case Error::TooMany:
        return load_core_wstring("IDS_TEMPLATE_PARAMS_TOOMANY");
    case Error::None:
        break;
    }
    return {};
}

} // namespace

StringTokenizerException::StringTokenizerException(IExceptionObject* inner)
    : StringTokenizerException(Error::None, 0, inner) {}

StringTokenizerException::StringTokenizerException(Error error, unsigned int position,
                                                   IExceptionObject* inner)
    : Exception(CLSID_StringTokenizerExceptionObject, message_of(error, position), inner),
      error_(error),
      position_(position) {}

StringTemplateException::StringTemplateException(IExceptionObject* inner)
    : StringTemplateException(Error::None, 0, inner) {}

StringTemplateException::StringTemplateException(Error error, unsigned int position,
                                                 IExceptionObject* inner)
    : Exception(CLSID_StringTemplateExceptionObject, message_of(error, position), inner),
      error_(error),
      position_(position) {}

} // namespace core

ORBCORE_EXCEPTION_OBJECT(StringTokenizerException);
ORBCORE_EXCEPTION_OBJECT(StringTemplateException);
