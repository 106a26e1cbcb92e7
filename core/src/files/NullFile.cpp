#include <core/files/NullFile.h>

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/component/SCOM_Process.h>
#include <core/files/URL.h>

namespace core {

class NullFile
    : public ObjectRoot
    , public SCOM_Singleton<NullFile, &CLSID_NullFile>
    , public IFileEx {
public:
    static const InterfaceEntry* _GetEntries() noexcept {
        return interface_map<NullFile, IFileEx, IFile>();
    }

    URL url() override { return {}; }
    unsigned read(void*, unsigned) override { return 0; }
    void write(const void*, unsigned) override {}
    void flush() override {}
    long long seek(long long, int) override { return 0; }
    long long setEOF() override { return 0; }
};

InterfacePtr<IFileEx> dev_null() {
    if (auto file = create_object<IFileEx>(CLSID_NullFile)) return file;
    // Outside of any process.
    static auto* const file = new SingletonObject<NullFile>;
    return {file, true};
}

} // namespace core

ORBCORE_REGISTER(core::NullFile);
