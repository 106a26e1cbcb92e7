// What goes wrong while classes, components and processes are set up.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_SCOM_ExceptionObject = "54cb3e9a-8138-4154-8f9b-dd29f7daa0a9"_guid;
inline constexpr _GUID CLSID_VersionExceptionObject = "152ad784-c5e0-4dc7-9cce-cba66977499a"_guid;
inline constexpr _GUID CLSID_LibraryLoadExceptionObject =
    "54afb586-16de-47d3-a102-4d9d71efadb5"_guid;

class ORBCORE_API SCOM_Exception : public Exception {
public:
    enum class Reason : std::int32_t {
        Unspecified = 0,
        ComponentLoad = 1, // a component library could not be opened or started
    };

    explicit SCOM_Exception(IExceptionObject* inner = nullptr);
    SCOM_Exception(Reason reason, const stdx::ustring& description,
                   IExceptionObject* inner = nullptr);

    Reason reason() const noexcept { return reason_; }

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

private:
    Reason reason_ = Reason::Unspecified;
};

// A module does not fit the process: it has another version than the first module.
class ORBCORE_API VersionException : public Exception {
public:
    explicit VersionException(IExceptionObject* inner = nullptr);
    VersionException(const stdx::ustring& description, IExceptionObject* inner);
    VersionException(const stdx::ustring& description, const stdx::string& module,
                     const stdx::ustring& version, IExceptionObject* inner = nullptr);

    // The module and its version; empty where they were not told.
    const stdx::string& module() const noexcept { return module_; }
    const stdx::ustring& version() const noexcept { return version_; }

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

private:
    stdx::string module_;
    stdx::ustring version_;
};

// A shared library other than a component could not be opened.
class ORBCORE_API LibraryLoadException : public Exception {
public:
    explicit LibraryLoadException(IExceptionObject* inner = nullptr);
    // `library` was not found.
    explicit LibraryLoadException(const stdx::ustring& library, IExceptionObject* inner = nullptr);
    // `library` was found and could not be opened; `detail` is the loader's own text.
    LibraryLoadException(const stdx::ustring& library, const stdx::ustring& detail,
                         IExceptionObject* inner = nullptr);
};

// A process object that is in one logical process was told to enter another. No part of the family:
// it is neither stored nor kept.
class ORBCORE_API ProcessInitException {};

} // namespace core
