// The pairs of storages as a table.
#pragma once

#include <core/persistence/CompactPersistenceStorage.h>
#include <core/persistence/StreamPersistenceStorage.h>

namespace bench {

struct Pair {
    const _GUID& out;
    const _GUID& in;
};
inline constexpr Pair kStream = {core::CLSID_StreamOutPersistenceStorage,
                                 core::CLSID_StreamInPersistenceStorage};
inline constexpr Pair kBinary = {core::CLSID_BinaryStreamOutPersistenceStorage,
                                 core::CLSID_BinaryStreamInPersistenceStorage};
inline constexpr Pair kCompact = {core::CLSID_CompactOutPersistenceStorage,
                                  core::CLSID_CompactInPersistenceStorage};

template <class Storage>
void attach(const core::InterfacePtr<Storage>& storage, core::IFile* file) {
    if (const core::InterfacePtr<core::IStreamPersistenceStorage> stream(storage); stream)
        stream->attach(file);
    else if (const core::InterfacePtr<core::ICompactOutPersistenceStorage> out(storage); out)
        out->attach(file, nullptr);
    else
        core::InterfacePtr<core::ICompactInPersistenceStorage>(storage)->attach(file, nullptr);
}

} // namespace bench
