// Runs what works on a real file, so that its errors tell of another URL.
#pragma once

#include <core/files/FileException.h>
#include <core/files/FileSystemFunctions.h>

namespace core {

// What may be shown of an error's further text: nothing where it names a real path.
inline stdx::ustring without_path(const stdx::ustring& extra, const URL& real) {
    const bool named = extra.view().find(file_path(real).view()) != std::u16string_view::npos;
    return named ? stdx::ustring() : extra;
}

template <class Body> auto with_url(const URL& shown, const URL& real, const Body& body) {
    try {
        return body();
    } catch (const FileException& exception) {
        throw FileException(ORB_FILE_HERE, exception.error(), shown,
                            without_path(exception.extra(), real));
    }
}

} // namespace core
