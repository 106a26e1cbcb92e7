// Arithmetic that has no result.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_NumericExceptionObject = "7a82ca5b-4258-4c6f-be11-a5d0e5ac0b2d"_guid;

class ORBCORE_API NumericException : public Exception {
public:
    enum class Error : std::int32_t {
        None = 0,         // without a message
        DivideByZero = 1, // a division, a remainder, zero to a negative power
        NegativePow = 2,  // a negative base to a power that is no integer of at most nine digits
        Overflow = 3,     // the value does not fit what was asked for
    };

    explicit NumericException(IExceptionObject* inner = nullptr);
    // The description is the message of `error`.
    explicit NumericException(Error error, IExceptionObject* inner = nullptr);

    Error error() const noexcept { return error_; }

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

private:
    Error error_ = Error::None;
};

} // namespace core
