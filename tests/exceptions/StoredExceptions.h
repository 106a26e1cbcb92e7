// Exception objects to and from lists, in both forms, without files.
#pragma once

#include "../lists/ListSources.h"

#include <core/component/UnsupportedOperationException.h>
#include <core/persistence/ExceptionStore.h>

namespace test {

// Storages of the list alone.
class ListOutStorage
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<ListOutStorage>
    , public core::IOutPersistenceStorage {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<ListOutStorage, core::IOutPersistenceStorage>();
    }
    explicit ListOutStorage(core::IListOutStream& list) : list_(&list) {}

    core::ListOutStream* listStream() override { return &list_; }
    core::InterfacePtr<core::IFileEx> binFile() override {
        throw core::UnsupportedOperationException();
    }
    void setIndirect(bool indirect) override { indirect_ = indirect; }
    bool isIndirect() override { return indirect_; }

private:
    core::ListOutStream list_;
    bool indirect_ = false;
};

class ListInStorage
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<ListInStorage>
    , public core::IInPersistenceStorage {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<ListInStorage, core::IInPersistenceStorage>();
    }
    explicit ListInStorage(core::IReader* text) : list_(text) {}
    explicit ListInStorage(core::IFile* bytes) : list_(bytes) {}

    core::ListInStream* listStream() override { return &list_; }
    core::InterfacePtr<core::IFileEx> binFile() override {
        throw core::UnsupportedOperationException();
    }
    core::InterfacePtr<core::IFile> forwardOnlyBinFile() override {
        throw core::UnsupportedOperationException();
    }

private:
    core::ListInStream list_;
};

inline std::u16string to_text(core::IExceptionObject* object) {
    return text_of([&](core::IListOutStream& list) {
        core::write_exception_object(core::make_object<ListOutStorage>(list).get(), object);
    });
}
inline std::string to_bytes(core::IExceptionObject* object) {
    return bytes_of([&](core::IListOutStream& list) {
        core::write_exception_object(core::make_object<ListOutStorage>(list).get(), object);
    });
}

inline core::InterfacePtr<core::IExceptionObject> from_text(std::u16string text) {
    const auto reader = make_reader(std::move(text), kWindows[3]);
    return core::read_exception_object(core::make_object<ListInStorage>(reader.get()).get());
}
inline core::InterfacePtr<core::IExceptionObject> from_bytes(std::string bytes) {
    const auto file = make_file(std::move(bytes), kWindows[3]);
    return core::read_exception_object(core::make_object<ListInStorage>(file.get()).get());
}

} // namespace test
