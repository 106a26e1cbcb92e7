// A line that the tokenizer cannot take apart.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_StringTokenizerExceptionObject =
    "f530c739-a40b-4528-9468-af294ea491a6"_guid;

class ORBCORE_API StringTokenizerException : public Exception {
public:
    enum class Error : std::int32_t {
        None = 0,                // without a message
        MissedDelimiter = 1,     // text behind a closing quote
        MissedCloseQuote = 2,    // the line ends inside a quotation
        UnexpectedQuotation = 3, // a quote inside a token
    };

    explicit StringTokenizerException(IExceptionObject* inner = nullptr);
    // `position` counts the units of the line from 0, and stands behind the message.
    StringTokenizerException(Error error, unsigned int position, IExceptionObject* inner = nullptr);

    Error error() const noexcept { return error_; }
    unsigned int position() const noexcept { return position_; }

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

private:
    Error error_ = Error::None;
    unsigned int position_ = 0;
};

} // namespace core
