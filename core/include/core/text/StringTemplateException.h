// A template that cannot be read, or that does not get the parameters it was read for.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_StringTemplateExceptionObject =
    "cd8fda72-550c-4d48-9cca-77729edb1931"_guid;

class ORBCORE_API StringTemplateException : public Exception {
public:
    enum class Error : std::int32_t {
        None = 0,       // without a message
        WrongParam = 1, // what follows a `%` is no parameter
        NotEnough = 2,  // fewer parameters than the template asks for
        TooMany = 3,    // more parameters than the template asks for
    };

    explicit StringTemplateException(IExceptionObject* inner = nullptr);
    // `position` counts the units of the template from 0. It stands behind the message of
    // `WrongParam`; the others have none.
    explicit StringTemplateException(Error error, unsigned int position = 0,
                                     IExceptionObject* inner = nullptr);

    Error error() const noexcept { return error_; }
    unsigned int position() const noexcept { return position_; }

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

private:
    Error error_ = Error::None;
    unsigned int position_ = 0;
};

} // namespace core
