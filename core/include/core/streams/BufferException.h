// A byte buffer that was asked for more than it holds.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_BufferExceptionObject = "74a22722-194a-4008-90e1-47732b90e3ff"_guid;

class ORBCORE_API BufferException : public Exception {
public:
    enum class Error : std::int32_t {
        None = 0,        // without a message of its own
        OutOfBounds = 1, // a place, a limit or a count that the buffer does not have
        IllegalMark = 2, // a return to a mark that is not set
        ReadOnly = 3,    // a change of a buffer that is read only
        Overflow = 4,    // less room than is to be written
        Underflow = 5,   // fewer bytes than are to be read
    };

    explicit BufferException(IExceptionObject* inner = nullptr);
    // The description is the message of `error`, with a given one behind it after a line feed.
    explicit BufferException(Error error, const stdx::ustring& description = {},
                             IExceptionObject* inner = nullptr);

    Error error() const noexcept { return error_; }

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

private:
    Error error_ = Error::None;
};

} // namespace core
