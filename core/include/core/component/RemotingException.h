// What goes wrong between processes on different machines.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_RemotingExceptionObject = "afeda586-aa2c-4974-a89f-30df67b6390e"_guid;

class ORBCORE_API RemotingException : public Exception {
public:
    explicit RemotingException(IExceptionObject* inner = nullptr);
    explicit RemotingException(const stdx::ustring& description, IExceptionObject* inner = nullptr);
};

// The data that arrived is not what was agreed. Without a twin of its own: `object()` keeps it as a
// `RemotingException`.
class ORBCORE_API NetDataExchangeException : public RemotingException {
public:
    using RemotingException::RemotingException;
};

} // namespace core
