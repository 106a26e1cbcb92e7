// A text stream that cannot be read or written.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_IOExceptionObject = "44f9624f-d3e3-4712-ac7a-62018615e5dd"_guid;

class ORBCORE_API IOException : public Exception {
public:
    enum class Error : std::int32_t {
        None = 0,           // without a message of its own
        OutOfBounds = 1,    // a place outside the buffer
        NoSource = 2,       // a reader that is not open, or was to be opened on nothing
        NoTarget = 3,       // a writer that is not open
        CharConversion = 4, // bytes that are no text in the encoding; the cause tells which
        SourceFault = 5,    // the file under a reader failed
        TargetFault = 6,    // the file under a writer failed
    };

    explicit IOException(IExceptionObject* inner = nullptr);
    // The description is the message of `error`, with a given one behind it after a line feed.
    explicit IOException(Error error, const stdx::ustring& description = {},
                         IExceptionObject* inner = nullptr);

    Error error() const noexcept { return error_; }

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

private:
    Error error_ = Error::None;
};

} // namespace core
