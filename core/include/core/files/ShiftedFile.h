// A file whose first bytes are a fixed preamble, shown without it: position 0 is the first byte
// behind the preamble.
#pragma once

#include <core/files/IFile.h>

namespace core {

inline constexpr _GUID IID_IShiftedFile = "8da95303-72d1-42e5-9dd9-427e1fb638cf"_guid;
inline constexpr _GUID CLSID_ShiftedFile = "2afea510-32f3-4174-97a6-435925d81256"_guid;

class IShiftedFile : public IFileShared {
public:
    ORB_INTERFACE(IShiftedFile, IID_IShiftedFile)

    // Shows `file` behind its first `shift` bytes. An empty file gets the first `shift` bytes of
    // `preamble`; any other must begin with them, or `StorageException` (bad format) is thrown and
    // the object stays without a file. Throws `IllegalStateException` for null, and when the file
    // cannot be positioned.
    virtual void attach(IFileEx* file, IFile* preamble, unsigned long long shift) = 0;
    virtual InterfacePtr<IFileEx> file() = 0; // the file behind, null before `attach`
    virtual bool isShifted() = 0;             // true for a shift that is not 0
};

} // namespace core
