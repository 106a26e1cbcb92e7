// A command line that the program does not understand.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_CommandLineExceptionObject =
    "9817f83e-d822-4402-aa45-705eeba2dcd9"_guid;

// The message for a wrong option; null counts as empty.
ORBCORE_API stdx::ustring cli_error_descr(const char16_t* option);

class ORBCORE_API CommandLineException : public Exception {
public:
    explicit CommandLineException(IExceptionObject* inner = nullptr);
    explicit CommandLineException(const char16_t* option, IExceptionObject* inner = nullptr);
};

} // namespace core
