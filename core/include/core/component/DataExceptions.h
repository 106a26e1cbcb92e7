// What goes wrong with sources of data. They are thrown by components that bring such sources; the
// classes stand here so that every process can keep them and throw them again.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_ComparatorExceptionObject =
    "8d646c12-77fc-444f-9a9b-44b8173a4543"_guid;
inline constexpr _GUID CLSID_DataSourceExceptionObject =
    "22e53a93-e610-4a13-bea0-317b603e377b"_guid;
inline constexpr _GUID CLSID_EDBExceptionObject = "81c55d45-b7fe-4ff0-948d-d06779929127"_guid;
inline constexpr _GUID CLSID_ProfileSrcExceptionObject =
    "b213f0b5-6856-480e-8fcc-2017eac30783"_guid;
inline constexpr _GUID CLSID_PivotSourceExceptionObject =
    "8ae4e0fa-639e-4090-9f3f-320edc43a600"_guid;

// Two values cannot be compared.
class ORBCORE_API ComparatorException : public Exception {
public:
    explicit ComparatorException(IExceptionObject* inner = nullptr);
    explicit ComparatorException(const stdx::ustring& description,
                                 IExceptionObject* inner = nullptr);
};

// A source of data for lists and reports fails.
class ORBCORE_API DataSourceException : public Exception {
public:
    explicit DataSourceException(IExceptionObject* inner = nullptr);
    explicit DataSourceException(const stdx::ustring& description,
                                 IExceptionObject* inner = nullptr);
};

// An external database fails.
class ORBCORE_API EDBException : public Exception {
public:
    explicit EDBException(IExceptionObject* inner = nullptr);
    explicit EDBException(const stdx::ustring& description, IExceptionObject* inner = nullptr);
};

// A source of settings cannot be read or written.
class ORBCORE_API ProfileSrcException : public Exception {
public:
    explicit ProfileSrcException(IExceptionObject* inner = nullptr);
    explicit ProfileSrcException(const stdx::ustring& description,
                                 IExceptionObject* inner = nullptr);
};

// The source of a pivot report fails.
class ORBCORE_API PivotSourceException : public Exception {
public:
    enum class Error : std::int32_t {
        None = 0,
        DataSource = 1, // the source of its data failed; the cause tells how
    };

    explicit PivotSourceException(IExceptionObject* inner = nullptr);
    explicit PivotSourceException(Error error, IExceptionObject* inner = nullptr);

    Error error() const noexcept { return error_; }

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

private:
    Error error_ = Error::None;
};

} // namespace core
