// A component with a filter of compact storages, which inverts every bit.
#include "Invert.h"

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/files/URL.h>
#include <core/persistence/CompactPersistenceStorage.h>

ORBCORE_COMPONENT("invert", "1.0.0.0");

namespace test {

class InvertedFile
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<InvertedFile>
    , public core::IFile {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<InvertedFile, core::IFile>();
    }
    explicit InvertedFile(core::IFile* file) : file_(file, true) {}

    core::URL url() override { return file_->url(); }
    unsigned read(void* to, unsigned n) override {
        n = file_->read(to, n);
        for (unsigned i = 0; i != n; ++i) static_cast<unsigned char*>(to)[i] ^= 0xFF;
        return n;
    }
    void write(const void*, unsigned) override {}
    void flush() override {}

private:
    core::InterfacePtr<core::IFile> file_;
};

class Invert
    : public core::ObjectRoot
    , public core::SCOM_Class<Invert, &CLSID_Invert>
    , public core::ICompactStreamTransform {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Invert, core::ICompactStreamTransform>();
    }
    const _GUID& getClsid() override { return CLSID_Invert; }
    core::InterfacePtr<core::IFile> wrapOutput(core::IFile*) override { return {}; } // only read
    core::InterfacePtr<core::IFile> wrapInput(core::IFile* source) override {
        return core::make_object<InvertedFile>(source);
    }
};

} // namespace test

ORBCORE_REGISTER(test::Invert);
