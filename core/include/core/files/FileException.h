// What goes wrong with files: a code, the file's URL, for copy and move both URLs.
//
//   catch (const core::FileException& exception) {
//       if (exception.error() == core::FileException::Error::FileNotFound) …
//   }
//
// The description says what happened and to which file, then the system's own words, then the place
// in the source. It shows no password of a URL.
#pragma once

#include <core/component/Exception.h>
#include <core/files/URL.h>

#include <string_view>

// The place of a fault, as the functions below take it:
//   core::throw_file_exception(ORB_FILE_HERE, url, errno);
#define ORB_FILE_HERE u"" __FILE__, __LINE__

namespace core {

inline constexpr _GUID CLSID_FileExceptionObject = "dbd0ef55-18b4-410b-aade-8446580dc7bc"_guid;

class ORBCORE_API FileException : public Exception {
public:
    enum class Error : std::int32_t {
        None = 0,
        FileNotFound = 1,
        DirNotFound = 2,
        BadPath = 3,
        Access = 4,
        Sharing = 5, // somebody has the file open in a way that forbids this one
        Lock = 6,    // a region is locked
        DeviceFull = 7,
        Failure = 8,
        GetTmpFileName = 9,
    };
    // What two URLs were to undergo.
    enum class Transfer { Copy, Move, CopyMove };

    explicit FileException(IExceptionObject* inner = nullptr);
    // `extra` follows the text of the error in a line of its own.
    FileException(const char16_t* file, unsigned line, Error error, const URL& url,
                  const stdx::ustring& extra = {}, IExceptionObject* inner = nullptr);
    FileException(const char16_t* file, unsigned line, Error error, Transfer transfer,
                  const URL& from, const URL& to, const stdx::ustring& extra = {},
                  IExceptionObject* inner = nullptr);

    Error error() const noexcept { return error_; }
    const URL& url() const noexcept { return url_; }             // of a transfer: from where
    const URL& secondURL() const noexcept { return secondURL_; } // where to; else empty
    // What the description says besides: the system's own words, an operation.
    const stdx::ustring& extra() const noexcept { return extra_; }

    // The text of the code alone.
    stdx::ustring errorDescription() const { return errorDescription(error_); }
    static stdx::ustring errorDescription(Error error);
    // The code that stands for an `errno`.
    static Error errorOf(int err) noexcept;

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

private:
    Error error_ = Error::None;
    URL url_;
    URL secondURL_;
    stdx::ustring extra_;
};

// ---- Throwing. `file` and `line` are the place of the thrower.

// By an `errno`, with the system's text for it and then `extra`.
ORBCORE_API FileException create_file_exception(const char16_t* file, unsigned line, const URL& url,
                                                int err, const stdx::ustring& extra = {});
[[noreturn]] ORBCORE_API void throw_file_exception(const char16_t* file, unsigned line,
                                                   const URL& url, int err,
                                                   const stdx::ustring& extra = {});
// The error and the further text of `inner` with other URLs. The URL of `inner` is gone: what is
// thrown may be shown to those who must not know it.
[[noreturn]] ORBCORE_API void rethrow_file_exception(const char16_t* file, unsigned line,
                                                     const FileException& inner, const URL& url);
[[noreturn]] ORBCORE_API void rethrow_file_exception(const char16_t* file, unsigned line,
                                                     const FileException& inner,
                                                     FileException::Transfer transfer,
                                                     const URL& from, const URL& to);

// The file cannot do `operation` in the state or the mode that it is in.
[[noreturn]] ORBCORE_API void throw_unexpected_call(const char16_t* file, unsigned line,
                                                    const URL& url, const stdx::ustring& operation);
[[noreturn]] ORBCORE_API void throw_wrong_parameter(const char16_t* file, unsigned line,
                                                    const URL& url, const stdx::ustring& operation,
                                                    const stdx::ustring& parameter);
// A path of the system, in UTF-8 or UTF-16.
[[noreturn]] ORBCORE_API void throw_not_a_directory(const char16_t* file, unsigned line,
                                                    std::string_view path);
[[noreturn]] ORBCORE_API void throw_not_a_directory(const char16_t* file, unsigned line,
                                                    const stdx::ustring& path);
[[noreturn]] ORBCORE_API void throw_bad_scheme(const char16_t* file, unsigned line, const URL& url);
// `count` files answer to what should name one.
[[noreturn]] ORBCORE_API void throw_file_ambiguous(const char16_t* file, unsigned line,
                                                   const URL& url, unsigned count);
[[noreturn]] ORBCORE_API void throw_file_toolong(const char16_t* file, unsigned line,
                                                 const URL& url);
[[noreturn]] ORBCORE_API void throw_secprofile_access_denied(const char16_t* file, unsigned line,
                                                             const URL& url);
[[noreturn]] ORBCORE_API void throw_secprofile_file_read_denied(const char16_t* file, unsigned line,
                                                                const URL& url);
[[noreturn]] ORBCORE_API void throw_secprofile_file_write_denied(const char16_t* file,
                                                                 unsigned line, const URL& url);
[[noreturn]] ORBCORE_API void throw_secprofile_url_parse_error(const char16_t* file, unsigned line,
                                                               const URL& url);

} // namespace core
