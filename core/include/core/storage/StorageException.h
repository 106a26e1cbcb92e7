// A storage that cannot be read as one, or an operation on its elements that cannot be done.
#pragma once

#include <core/component/Exception.h>
#include <core/files/URL.h>

namespace core {

inline constexpr _GUID CLSID_StorageExceptionObject = "e6732525-065a-4e24-96e4-6b2aebae192a"_guid;

class ORBCORE_API StorageException : public Exception {
public:
    enum class Error : std::int32_t {
        None = 0,
        BadFormat = 1,
        IsDestination = 2, // the new name is taken
        FileNotFound = 3,  // there is no element of the old name
        Overflow = 5,      // a file too large for the 32-bit format
    };

    explicit StorageException(IExceptionObject* inner = nullptr);
    // `url` is the storage's.
    StorageException(Error error, const URL& url, IExceptionObject* inner = nullptr);

    Error error() const noexcept { return error_; }
    const URL& url() const noexcept { return url_; }

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

private:
    Error error_ = Error::None;
    URL url_;
};

} // namespace core
