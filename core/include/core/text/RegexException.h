// A regular expression that cannot be read, or whose match failed or was given up.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_RegexExceptionObject = "18c11fa4-b8c9-43aa-bbc8-e75af3cb66f6"_guid;

class ORBCORE_API RegexException : public Exception {
public:
    explicit RegexException(IExceptionObject* inner = nullptr);
    // The description names the status as ICU does ("U_REGEX_MISMATCHED_PAREN"), with its number
    // in hexadecimal and the pattern.
    RegexException(int status, const stdx::ustring& pattern);

    int status() const noexcept { return status_; } // an ICU status code; 0: none is known
    const stdx::ustring& pattern() const noexcept { return pattern_; }

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

private:
    std::int32_t status_ = 0;
    stdx::ustring pattern_;
};

} // namespace core
