// What goes wrong on threads, in pools and with futures.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_ThreadExceptionObject = "8db25187-6fab-4a56-99ad-498e3316f31b"_guid;
inline constexpr _GUID CLSID_StackOverflowExceptionObject =
    "a2a7a72a-1202-4c0b-bf50-6865716bea6e"_guid;

class ORBCORE_API ThreadException : public Exception {
public:
    enum class Error : std::int32_t {
        None = 0, // without a message of its own
        Interrupted = 1,
        Cancelled = 2,
        Execution = 3,
        RejectedExecution = 4,
        Timeout = 5,
    };

    explicit ThreadException(IExceptionObject* inner = nullptr);
    // The description is the message of `error`, with a given one behind it after a line feed.
    explicit ThreadException(Error error, IExceptionObject* inner = nullptr);
    ThreadException(Error error, const stdx::ustring& description,
                    IExceptionObject* inner = nullptr);

    Error error() const noexcept { return error_; }

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

private:
    Error error_ = Error::None;
};

// The calling thread has used up its stack budget, see `check_stack_overflow`.
class ORBCORE_API StackOverflowException : public Exception {
public:
    explicit StackOverflowException(IExceptionObject* inner = nullptr);
};

} // namespace core
