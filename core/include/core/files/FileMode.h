// How a file is opened: what the caller does with it, and what others may do meanwhile.
#pragma once

namespace core {

// Flags of the `mode` with which files are opened. A mode has at least one of the accesses.
enum FileMode : int {
    kFileKeep = 0x1,         // keep the contents of a file that is opened for writing alone
    kFileTruncate = 0x2,     // create the file where it is missing, and empty it
    kFileRead = 0x8,         // read
    kFileWrite = 0x10,       // write; alone, it creates and, without `kFileKeep`, empties the file
    kFileShareRead = 0x100,  // others may read
    kFileShareWrite = 0x200, // others may write

    kFileOpenForRead = kFileRead | kFileShareRead,  // 0x108
    kFileOpenForWrite = kFileWrite | kFileTruncate, // 0x12
    kFileAccess = kFileRead | kFileWrite,           // the bits of access
    kFileShare = kFileShareRead | kFileShareWrite,  // the bits of sharing
};

// The extended modes, in which callers of the file system speak; `FileObject::getModeByExMode`
// turns them into flags.
enum FileExMode : int {
    kFileExRead = 0x10000,
    kFileExWrite = 0x20000,
    kFileExReadWrite = 0x30000,
    kFileExReadShared = 0x40000,      // others may read
    kFileExReadWriteShared = 0x50000, // others may read and write
};

} // namespace core
