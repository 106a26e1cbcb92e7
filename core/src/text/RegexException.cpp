#include <core/text/RegexException.h>

#include <core/component/ExceptionObject.h>
#include <core/component/Messages.h>
#include <core/component/Utf8.h>

#include "component/MessageFormat.h"

#include <unicode/utypes.h>

#include <cstdio>

namespace core {
namespace {

stdx::ustring hexadecimal(int number) {
    char digits[9];
    std::snprintf(digits, sizeof digits, "%x", static_cast<unsigned>(number));
    return from_utf8(digits);
}

stdx::ustring error_text(int status, const stdx::ustring& pattern) {
    return format_message(load_core_wstring("IDS_REGEX_ERROR"),
                          from_utf8(u_errorName(static_cast<UErrorCode>(status))),
                          hexadecimal(status), pattern);
}

} // namespace

RegexException::RegexException(IExceptionObject* inner)
    : Exception(CLSID_RegexExceptionObject, stdx::ustring(), inner) {}

RegexException::RegexException(int status, const stdx::ustring& pattern)
    : Exception(CLSID_RegexExceptionObject, error_text(status, pattern), nullptr),
      status_(status),
      pattern_(pattern) {}

} // namespace core

ORBCORE_EXCEPTION_OBJECT(RegexException);
