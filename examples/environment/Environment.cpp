// A component that brings a scheme: "env://NAME" is a file that holds the variable of the
// environment of that name.
//
//   orb --component environment cat env://HOME

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/component/SCOM_Process.h>
#include <core/component/Utf8.h>
#include <core/files/FileException.h>
#include <core/files/IFileSystem.h>
#include <core/files/MemoryFile.h>
#include <core/files/SchemeBase.h>

#include <cstdlib>
#include <cstring>

ORBCORE_COMPONENT("environment", "1.0.0.0");

namespace example {

using core::operator""_guid;

inline constexpr _GUID CLSID_Environment = "951ae8e0-51e3-4084-869d-c5b3cdfe9f67"_guid;
inline constexpr _GUID IID_IEnvironment = "46f8b7ae-ab31-4f5f-b958-c48be73d7800"_guid;

// The rules of names are the common ones; of the operations it has reading alone.
class EnvironmentScheme
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<EnvironmentScheme>
    , public core::SchemeBase
    , public core::ISchemeImpl<EnvironmentScheme> {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<EnvironmentScheme, core::IScheme>();
    }
    EnvironmentScheme() : SchemeBase(u"env") {}

    core::InterfacePtr<core::IFile> IScheme_openURL(const core::URL& url, int) override {
        const stdx::string name = core::to_utf8(url.part(core::URL::kHostText, 1));
        const char* const value = std::getenv(name.c_str());
        if (!value)
            throw core::FileException(ORB_FILE_HERE, core::FileException::Error::FileNotFound, url);
        auto file = core::create_memory_file(0);
        file->setURL(url);
        file->write(value, static_cast<unsigned>(std::strlen(value)));
        file->seek(0, core::kSeekFromStart);
        return file;
    }
};

class IEnvironment : public IUnknown {
public:
    ORB_INTERFACE(IEnvironment, IID_IEnvironment)
};

// A service lives from the loading of its component to its end, and so does the scheme.
class Environment
    : public core::ObjectRoot
    , public core::SCOM_Service<Environment, &CLSID_Environment, &IID_IEnvironment>
    , public IEnvironment {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Environment, IEnvironment>();
    }
    Environment() {
        if (auto* const files = core::get_service<core::IFileSystem>())
            files->registerScheme(core::make_object<EnvironmentScheme>());
    }
    ~Environment() {
        if (auto* const files = core::get_service<core::IFileSystem>()) files->revokeScheme(u"env");
    }
};

} // namespace example

ORBCORE_REGISTER(example::Environment);
