// What the schemes do with entries of the system's directories. Paths are bytes, as the system
// speaks them; failures are thrown with the URL of the operation.
#pragma once

#include <core/files/URL.h>
#include <core/numbers/Date.h>

#include <memory>

#include <dirent.h>
#include <sys/stat.h>

namespace core {

struct CloseDir {
    void operator()(DIR* dir) const noexcept { ::closedir(dir); }
};
using UniqueDir = std::unique_ptr<DIR, CloseDir>;

// The path that a URL of the scheme "file" names, in bytes too. A broken URL names none: what was read
// of it would be another file. Throws for it, and where the system knows no such path.
stdx::ustring path_of(const URL& url);
stdx::string system_path(const URL& url);

// In whole seconds, in universal time.
Date date_of(const timespec& time);

// The bits of `FileAttributes`, and the permissions of a file that shall have them.
std::uint32_t attributes_of(const struct stat& info) noexcept;
mode_t permissions_with(mode_t permissions, std::uint32_t attributes) noexcept;

// Removes a file, a link or a directory with all that it holds; links are not followed. Memory and
// descriptors do not grow with the depth.
void remove_entry(const URL& url, const stdx::string& path);

} // namespace core
