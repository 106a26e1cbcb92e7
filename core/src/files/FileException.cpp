#include <core/files/FileException.h>

#include <core/component/ExceptionObject.h>
#include <core/component/Messages.h>
#include <core/component/Utf8.h>
#include <core/files/FileSystemFunctions.h>

#include "component/MessageFormat.h"

#include <cerrno>
#include <cstring>

namespace core {
namespace {

using Error = FileException::Error;
using Transfer = FileException::Transfer;

constexpr const char* kErrorKeys[] = {
    nullptr,
    "IDS_FERROR_FILENOTFOUND",
    "IDS_FERROR_DIRNOTFOUND",
    "IDS_FERROR_BADPATH",
    "IDS_FERROR_ACCESS",
    "IDS_FERROR_SHARING",
    "IDS_FERROR_LOCK",
    "IDS_FERROR_DEVICEFULL",
    "IDS_FERROR_FAILURE",
    "IDS_FERROR_GETTMPFILENAME",
};
constexpr const char* kTransferKeys[] = {
    "IDS_FERROR_COPY",
    "IDS_FERROR_MOVE",
    "IDS_FERROR_COPY_MOVE",
};

constexpr struct {
    int err;
    Error error;
} kSystemErrors[] = {
    {ENOENT, Error::FileNotFound}, {EBADF, Error::FileNotFound},

    {ENOTDIR, Error::DirNotFound},

    {EXDEV, Error::BadPath},       {ENODEV, Error::BadPath},      {ENAMETOOLONG, Error::BadPath},
    {ENOTUNIQ, Error::BadPath},    {ENETUNREACH, Error::BadPath}, {ENOBUFS, Error::BadPath},

    {EPERM, Error::Access},        {EACCES, Error::Access},       {EEXIST, Error::Access},
    {EISDIR, Error::Access},       {ETXTBSY, Error::Access},      {EFBIG, Error::Access},
    {EROFS, Error::Access},        {ECOMM, Error::Access},        {ENETDOWN, Error::Access},

    {ENOLCK, Error::Lock},         {EINPROGRESS, Error::Lock},

    {ENOSPC, Error::DeviceFull},
};

stdx::ustring quoted(const URL& url) {
    return u"\"" + url.secureContent() + u"\"";
}

stdx::ustring text_of(Error error, const URL& url) {
    const stdx::ustring text = FileException::errorDescription(error);
    return url.text().empty() ? text : text + u": " + quoted(url);
}

stdx::ustring text_of(Error error, Transfer transfer, const URL& from, const URL& to) {
    const char* const key = kTransferKeys[static_cast<std::size_t>(transfer)];
    return format_exception_descr(
        format_message(load_core_wstring(key), from.secureContent(), to.secureContent()),
        FileException::errorDescription(error));
}

stdx::ustring described(const char16_t* file, unsigned line, const stdx::ustring& text,
                        const stdx::ustring& extra) {
    return format_exception_descr(this_module_name, line, file, text, extra);
}

stdx::ustring system_text(int err) {
    char buffer[256];
    return from_utf8(strerror_r(err, buffer, sizeof buffer));
}

} // namespace

FileException::FileException(IExceptionObject* inner)
    : Exception(CLSID_FileExceptionObject, stdx::ustring(), inner) {}

FileException::FileException(const char16_t* file, unsigned line, Error error, const URL& url,
                             const stdx::ustring& extra, IExceptionObject* inner)
    : Exception(CLSID_FileExceptionObject, described(file, line, text_of(error, url), extra),
                inner),
      error_(error),
      url_(url),
      extra_(extra) {}

FileException::FileException(const char16_t* file, unsigned line, Error error, Transfer transfer,
                             const URL& from, const URL& to, const stdx::ustring& extra,
                             IExceptionObject* inner)
    : Exception(CLSID_FileExceptionObject,
                described(file, line, text_of(error, transfer, from, to), extra), inner),
      error_(error),
      url_(from),
      secondURL_(to),
      extra_(extra) {}

stdx::ustring FileException::errorDescription(Error error) {
    const auto code = static_cast<std::size_t>(error);
    const bool known = error != Error::None && code < std::size(kErrorKeys);
    return known ? load_core_wstring(kErrorKeys[code]) : stdx::ustring();
}

FileException::Error FileException::errorOf(int err) noexcept {
    for (const auto& row : kSystemErrors)
        if (row.err == err) return row.error;
    return Error::Failure;
}

FileException create_file_exception(const char16_t* file, unsigned line, const URL& url, int err,
                                    const stdx::ustring& extra) {
    return FileException(file, line, FileException::errorOf(err), url,
                         format_exception_descr(system_text(err), extra));
}

void throw_file_exception(const char16_t* file, unsigned line, const URL& url, int err,
                          const stdx::ustring& extra) {
    throw create_file_exception(file, line, url, err, extra);
}

void rethrow_file_exception(const char16_t* file, unsigned line, const FileException& inner,
                            const URL& url) {
    throw FileException(file, line, inner.error(), url, inner.extra());
}

void rethrow_file_exception(const char16_t* file, unsigned line, const FileException& inner,
                            Transfer transfer, const URL& from, const URL& to) {
    throw FileException(file, line, inner.error(), transfer, from, to, inner.extra());
}

void throw_unexpected_call(const char16_t* file, unsigned line, const URL& url,
                           const stdx::ustring& operation) {
    throw FileException(file, line, Error::Failure, url,
                        format_message(load_core_wstring("IDS_FERROR_UNEXPECTED"), operation));
}

void throw_wrong_parameter(const char16_t* file, unsigned line, const URL& url,
                           const stdx::ustring& operation, const stdx::ustring& parameter) {
    throw FileException(
        file, line, Error::Failure, url,
        format_message(load_core_wstring("IDS_FERR_BADMODE"), operation, parameter));
}

void throw_not_a_directory(const char16_t* file, unsigned line, std::string_view path) {
    throw_not_a_directory(file, line, from_utf8(path));
}

void throw_not_a_directory(const char16_t* file, unsigned line, const stdx::ustring& path) {
    throw FileException(file, line, Error::Failure, file_url(path),
                        format_message(load_core_wstring("IDS_FERR_NOTADIR"), path));
}

void throw_file_ambiguous(const char16_t* file, unsigned line, const URL& url, unsigned count) {
    throw FileException(file, line, Error::FileNotFound, url,
                        format_message(load_core_wstring("IDS_FERR_FILEAMBIGUOUS"),
                                       from_utf8(std::to_string(count))));
}

#define ORB_DEFINE_THROWER(function, error, key)                                                   \
    void function(const char16_t* file, unsigned line, const URL& url) {                           \
        throw FileException(file, line, error, url, load_core_wstring(key));                       \
    }

ORB_DEFINE_THROWER(throw_bad_scheme, Error::BadPath, "IDS_FERR_BADSCHEME")
ORB_DEFINE_THROWER(throw_file_toolong, Error::Failure, "IDS_FERR_TOOLONGFILE")
ORB_DEFINE_THROWER(throw_secprofile_access_denied, Error::Failure,
                   "IDS_FERR_SECPROFILE_ACCESS_DENIED")
ORB_DEFINE_THROWER(throw_secprofile_file_read_denied, Error::Failure,
                   "IDS_FERR_SECPROFILE_FILE_READ_DENIED")
ORB_DEFINE_THROWER(throw_secprofile_file_write_denied, Error::Failure,
                   "IDS_FERR_SECPROFILE_FILE_WRITE_DENIED")
ORB_DEFINE_THROWER(throw_secprofile_url_parse_error, Error::Failure,
                   "IDS_FERR_SECPROFILE_URL_PARSE_ERROR")

#undef ORB_DEFINE_THROWER

} // namespace core

ORBCORE_EXCEPTION_OBJECT(FileException);
