// What is done with whole files: copying, comparing, removing what others still hold.
#pragma once

#include <core/files/IFile.h>

#include <elm/string>

namespace core {

// Copies at most `n` bytes from one position to the other, in blocks, and gives their number. It
// ends early only at the end of `from`.
ORBCORE_API unsigned long long copy_file(IFile* to, IFile* from, unsigned long long n);

// True when what follows the positions is equal. Two nulls are equal; null and a file are not.
ORBCORE_API bool compare_files(IFile* a, IFile* b);
// Compares the whole files and leaves both at position 0.
ORBCORE_API bool compare_exfiles(IFileEx* a, IFileEx* b);
// Negative, 0 or positive by the order of the bytes; of two files of which one begins the other the
// shorter comes first, and null comes before a file.
ORBCORE_API int compare_files_ex(IFile* a, IFile* b);
ORBCORE_API int compare_exfiles_ex(IFileEx* a, IFileEx* b);

// True if the file exists or could be created, through the file system of the process.
ORBCORE_API bool create_file_if_not_exist(const URL& url);

// Tries up to 10 times, 100 milliseconds apart, while the file system throws `FileException`; false
// after that. A full device is thrown at once.
ORBCORE_API bool move_file_with_wait(const URL& from, const URL& to);
ORBCORE_API bool remove_file_with_wait(const URL& url);

// A size for people: in bytes, or in the largest unit up to gigabytes that leaves at least 1,
// rounded down.
ORBCORE_API stdx::ustring file_size_to_str(unsigned long long size);

} // namespace core
