// The kinds of files that the platform reads and writes, and their extensions.
#pragma once

#include <core/platform/api.h>
#include <elm/string>

namespace core {

struct FileTypes {
    enum type : int {
        None = -1,
        Text = 0,
        XML,
        Binary,
        HTML,
        PNG,
        JPEG,
        Icon,
        Cursor,
        GIF,
        BMP,
        TIFF,
        EMF,
        WMF,
        ZIP,
        SVG,
        Package,       // a component with its resources
        PackageUpdate, // what turns one package into the next
        PackageReport, // a report with its data
        Storage,       // a compound storage
    };
};

// Without a dot; empty for `None`. Throws `core::IllegalArgumentException` for any other number that
// is no type.
ORBCORE_API stdx::ustring file_extension(FileTypes::type type);

} // namespace core
