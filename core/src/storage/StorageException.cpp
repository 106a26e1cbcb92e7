#include <core/storage/StorageException.h>

#include <core/component/ExceptionObject.h>
#include <core/component/Messages.h>

#include "files/StorageFormatError.h"

namespace core {
namespace {

stdx::ustring text_of(StorageException::Error error, const URL& url) {
    static constexpr const char* kKeys[] = {
        nullptr, "IDS_STERROR_BADFORMAT", "IDS_STERROR_ISDESTINATION", "IDS_STERROR_FILENOTFOUND",
        nullptr, "IDS_STERROR_OVERFLOW",
    };
    const auto code = static_cast<std::size_t>(error);
    if (code >= std::size(kKeys) || !kKeys[code]) return {};
    const stdx::ustring text = load_core_wstring(kKeys[code]);
    return url.text().empty() ? text : text + u": \"" + url.secureContent() + u"\"";
}

} // namespace

StorageException::StorageException(IExceptionObject* inner)
    : Exception(CLSID_StorageExceptionObject, stdx::ustring(), inner) {}

StorageException::StorageException(Error error, const URL& url, IExceptionObject* inner)
    : Exception(CLSID_StorageExceptionObject, text_of(error, url), inner),
      error_(error),
      url_(url) {}

void throw_bad_storage_format(const URL& url) {
    throw StorageException(StorageException::Error::BadFormat, url);
}

} // namespace core

ORBCORE_EXCEPTION_OBJECT(StorageException);
