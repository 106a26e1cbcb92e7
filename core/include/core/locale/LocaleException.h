// A name that names no locale.
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_LocaleExceptionObject = "62deb773-8a06-4d54-8f8d-7124888ff142"_guid;

class ORBCORE_API LocaleException : public Exception {
public:
    explicit LocaleException(IExceptionObject* inner = nullptr);
    // The description is the message of the class and the name between apostrophes.
    explicit LocaleException(const stdx::ustring& localeName);

    const stdx::ustring& localeName() const noexcept { return localeName_; }

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

private:
    stdx::ustring localeName_;
};

} // namespace core
