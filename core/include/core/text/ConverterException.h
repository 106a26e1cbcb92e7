// An encoding that is not known, or text that cannot be converted.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_ConverterExceptionObject = "5090da76-1e43-45e6-a9a3-fe8cb62a4c48"_guid;

class ORBCORE_API ConverterException : public Exception {
public:
    enum class Error : std::int32_t {
        None = 0,    // without a message
        BadName = 1, // the name of the encoding is empty or not known
        BadData = 2, // the text is none in the encoding
    };

    explicit ConverterException(IExceptionObject* inner = nullptr);
    // The description is the message of the error, then " 'encoding'".
    ConverterException(Error error, const stdx::ustring& encoding,
                       IExceptionObject* inner = nullptr);

    Error error() const noexcept { return error_; }
    const stdx::ustring& encoding() const noexcept { return encoding_; } // as it was asked for

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

private:
    Error error_ = Error::None;
    stdx::ustring encoding_;
};

} // namespace core
