// Questions about files by URL, asked through the file system of the process. Without a process
// there are no files. All functions may be called from any thread.
#pragma once

#include <core/files/IFileSystem.h>
#include <core/numbers/Date.h>

#include <vector>

namespace core {

// The entry, or null where it cannot be found, for whatever reason.
ORBCORE_API InterfacePtr<IFileStat> get_file_stat(const URL& url);
// Whether there is such an entry, or with a mask one of that directory that fits it.
ORBCORE_API bool file_exists(const URL& url, const char16_t* mask = nullptr);
// Appends the URLs of the entries of a directory that fit the mask, directories left out.
ORBCORE_API void find_files_by_mask(const URL& url, const char16_t* mask, std::vector<URL>& files);

// These throw `core::FileException` for a file that does not exist.
ORBCORE_API std::uint64_t get_file_size(const URL& url); // in bytes
ORBCORE_API Date get_file_date(const URL& url);          // of its modification
// The sizes of what `find_files_by_mask` finds, in bytes.
ORBCORE_API std::uint64_t get_total_files_size(const URL& url, const char16_t* mask);

// The real name of a file of the scheme "sfile", see `ISecurityProfileService`; any other URL as it
// is. Throws `core::FileException` of code `Access` where the right is missing, and as the scheme
// does for a name that is covered by no alias.
ORBCORE_API URL url_from_alias(const URL& url, bool forRead, bool forWrite);

// Between a URL of the scheme "file" and a path of the system. Escapes are taken off and put on, so
// each path has a URL.
ORBCORE_API stdx::ustring file_path(const URL& url);
ORBCORE_API URL file_url(const stdx::ustring& path);

} // namespace core
