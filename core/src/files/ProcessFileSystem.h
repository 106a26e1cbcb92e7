// The file system service, for functions that cannot do without it.
#pragma once

#include <core/component/IllegalStateException.h>
#include <core/component/SCOM_Process.h>
#include <core/files/IFileSystem.h>

namespace core {

// Throws `IllegalStateException` where no process with a file system is entered.
inline IFileSystem& process_file_system() {
    IFileSystem* const files = get_service<IFileSystem>();
    if (!files) throw IllegalStateException(ORB_HERE, u"there is no file system");
    return *files;
}

} // namespace core
