// What the tests of storages share: the three pairs as a table, storages over bytes in memory, and
// programs of reads, an operation a letter, whose results are written down.
#pragma once

#include "../lists/ListSources.h"

#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>
#include <core/files/MemoryFile.h>
#include <core/persistence/CompactPersistenceStorage.h>
#include <core/persistence/ForwardOnlyBinFileHolder.h>
#include <core/persistence/StreamPersistenceStorage.h>
#include <core/streams/IOException.h>

namespace test {

struct StorageKind {
    const char* name;
    _GUID out, in;
};
inline constexpr StorageKind kStream = {"stream", core::CLSID_StreamOutPersistenceStorage,
                                        core::CLSID_StreamInPersistenceStorage};
inline constexpr StorageKind kBinary = {"binary", core::CLSID_BinaryStreamOutPersistenceStorage,
                                        core::CLSID_BinaryStreamInPersistenceStorage};
inline constexpr StorageKind kCompact = {"compact", core::CLSID_CompactOutPersistenceStorage,
                                         core::CLSID_CompactInPersistenceStorage};
inline constexpr StorageKind kKinds[] = {kStream, kBinary, kCompact};

// `attach` of whichever interface the storage has; null closes.
template <class Storage> void attach(Storage& storage, core::IFile* file) {
    if (const core::InterfacePtr<core::IStreamPersistenceStorage> stream(&storage); stream)
        stream->attach(file);
    else if (const core::InterfacePtr<core::ICompactOutPersistenceStorage> out(&storage); out)
        out->attach(file, nullptr);
    else
        core::InterfacePtr<core::ICompactInPersistenceStorage>(&storage)->attach(file, nullptr);
}

inline core::InterfacePtr<core::IOutPersistenceStorage> open_out(const StorageKind& kind,
                                                                 core::IFile* file) {
    auto storage = core::create_object<core::IOutPersistenceStorage>(kind.out);
    attach(*storage, file);
    return storage;
}
inline core::InterfacePtr<core::IInPersistenceStorage> open_in(const StorageKind& kind,
                                                               core::IFile* file) {
    auto storage = core::create_object<core::IInPersistenceStorage>(kind.in);
    attach(*storage, file);
    return storage;
}

// The bytes of a storage to which `put` writes.
template <class Put> std::string stored(const StorageKind& kind, Put put) {
    const auto file = core::make_object<ByteFile>();
    const auto storage = open_out(kind, file.get());
    put(*storage);
    attach(*storage, nullptr);
    return file->bytes;
}

inline void put_attachment(core::IOutPersistenceStorage& storage, std::string_view bytes) {
    const auto file = storage.binFile();
    if (!bytes.empty()) file->write(bytes.data(), static_cast<unsigned>(bytes.size()));
}

inline std::string read_all(core::IFile& file) {
    std::string bytes;
    char piece[1000];
    while (const unsigned n = file.read(piece, sizeof piece)) bytes.append(piece, n);
    return bytes;
}

// Bytes as a file that can be positioned, or one that can only be read in sequence.
inline core::InterfacePtr<core::IFile> source_of(std::string_view bytes, bool seekable) {
    if (!seekable) return core::make_object<ByteFile>(std::string(bytes));
    auto file = core::create_memory_file(0);
    file->write(bytes.data(), static_cast<unsigned>(bytes.size()));
    file->seek(0, core::kSeekFromStart);
    return file;
}

inline std::string read_item(core::IInPersistenceStorage& storage, char operation) {
    core::ListInStream& list = *storage.listStream();
    switch (operation) {
    case '{':
        list->beginList();
        return {};
    case '}':
        list->endList();
        return {};
    case '~':
        list->skipList();
        return {};
    case 'i': {
        std::int32_t value = 0;
        list->getInt32(value);
        return std::to_string(value) + ';';
    }
    case 's': {
        stdx::ustring value;
        list->getString(value);
        return std::string(core::to_utf8(value).view()) + ';';
    }
    case 'f': // an attachment
        return read_all(*storage.binFile()) + ';';
    case 'o': // an attachment in sequence
        return read_all(*storage.forwardOnlyBinFile()) + ';';
    case 'p': { // the first byte of one, the rest passed
        core::ForwardOnlyBinFileHolder holder(&storage);
        char byte = 0;
        const unsigned n = holder.file()->read(&byte, 1);
        holder.closeForwardOnlyBinFile();
        return std::string(&byte, n) + ';';
    }
    case 'n': // one passed unread
        storage.forwardOnlyBinFile();
        return {};
    default:
        return {};
    }
}

inline constexpr std::string_view kRefused = " refused", kNoUtf8 = " no UTF-8";

// The results of the operations up to the one that is refused; other exceptions pass.
inline std::string run(const StorageKind& kind, std::string_view operations, core::IFile* file) {
    std::string out;
    try {
        const auto storage = open_in(kind, file);
        for (const char operation : operations) out += read_item(*storage, operation);
    } catch (const core::ListStreamException&) {
        out += kRefused;
    } catch (const core::IOException& exception) {
        if (exception.error() != core::IOException::Error::CharConversion) throw;
        out += kNoUtf8;
    }
    return out;
}
inline std::string run(const StorageKind& kind, std::string_view operations, std::string_view bytes,
                       bool seekable = true) {
    return run(kind, operations, source_of(bytes, seekable).get());
}

} // namespace test
