// What the storages have in common.
#pragma once

#include <core/component/Exception.h>
#include <core/files/FileMode.h>
#include <core/files/FileStreams.h>
#include <core/persistence/StreamPersistenceStorage.h>
#include <core/streams/LineSeparator.h>
#include <core/streams/ListStreamException.h>

#include "files/ProcessFileSystem.h"

#include <exception>
#include <optional>

namespace core {

// The flag of the storages that are written; `Storage` is the interface that they have.
template <class Storage> class OutStorage : public Storage {
public:
    void setIndirect(bool indirect) override { indirect_ = indirect; }
    bool isIndirect() override { return indirect_; }

private:
    bool indirect_ = false;
};

// `open` and `close` by `attach`; `mode` is that of the files.
template <FileMode mode> class StreamStorage : public IStreamPersistenceStorage {
public:
    void open(const URL& url) override {
        close();
        attach(process_file_system().open(url, mode).get());
    }
    void close() override { attach(nullptr); }
};

inline void check(bool good) {
    if (!good) [[unlikely]]
        throw ListStreamException();
}

// The list of a storage that must be open.
template <class List> List* opened(std::optional<List>& list) {
    check(list && *list);
    return &*list;
}

// For destructors, which can tell nobody.
template <class Close> void close_quietly(Close close) noexcept {
    try {
        close();
    } catch (const Exception&) {
    } catch (const std::exception&) {}
}

// Texts of lists in files: UTF-8 with a mark, lines that end as those of other systems.
template <class TextFile> void open_text(TextFile& text, IFile* file) {
    text.open(file, kUTF8Encoding, true, kWindowsLineSeparator);
}

} // namespace core
