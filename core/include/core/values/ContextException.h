// What scriptable objects throw when a script uses them wrongly, and the functions that say which
// argument or property it was.
//
//   if (!argument.getNumeric(width)) core::parameter_type_mismatch(0);
#pragma once

#include <core/component/Exception.h>

namespace core {

inline constexpr _GUID CLSID_ContextExceptionObject = "52066065-1337-4ec7-b335-1072ae4bec53"_guid;
inline constexpr _GUID CLSID_CtorExceptionObject = "3cb54f88-55bb-4d2a-a77c-afc338277f9c"_guid;
inline constexpr _GUID CLSID_ValueIsFilledExceptionObject =
    "df5fb0ae-e187-4ae5-b851-7f63645d7b97"_guid;
inline constexpr _GUID CLSID_TypeDomainPatternProviderExceptionObject =
    "8b918ebb-6954-4857-895b-4b8cd16bc7ce"_guid;

// The use of an object by a script failed.
class ORBCORE_API ContextException : public Exception {
public:
    explicit ContextException(IExceptionObject* inner = nullptr);
    explicit ContextException(const stdx::ustring& description, IExceptionObject* inner = nullptr,
                              const Categories& categories = {});
};

// The construction of a value by a script failed.
class ORBCORE_API CtorException : public Exception {
public:
    explicit CtorException(IExceptionObject* inner = nullptr);
    explicit CtorException(const stdx::ustring& description, IExceptionObject* inner = nullptr,
                           const Categories& categories = {});
};

// It cannot be told whether a value is filled in.
class ORBCORE_API ValueIsFilledException : public Exception {
public:
    enum class Error : std::int32_t {
        None = 0,
        MutableType = 1, // there is no default value to compare it with
    };

    explicit ValueIsFilledException(IExceptionObject* inner = nullptr);
    explicit ValueIsFilledException(Error error, const stdx::ustring& extra = {},
                                    IExceptionObject* inner = nullptr);

    Error error() const noexcept { return error_; }

    void serialize(IOutPersistenceStorage* storage) const;
    void deserialize(IInPersistenceStorage* storage);

private:
    Error error_ = Error::None;
};

// A class that stands for a set of types failed to give it.
class ORBCORE_API TypeDomainPatternProviderException : public Exception {
public:
    explicit TypeDomainPatternProviderException(IExceptionObject* inner = nullptr);
    explicit TypeDomainPatternProviderException(const stdx::ustring& description,
                                                IExceptionObject* inner = nullptr);
};

// ---- All of these throw, with the category `ScriptUseError`, in the language of the thread's
// ---- messages. Positions count from 0, in the message from 1; `extra` follows in parentheses.

[[noreturn]] ORBCORE_API void parameter_type_mismatch(unsigned position,
                                                      const stdx::ustring& extra = {});
[[noreturn]] ORBCORE_API void parameter_value_mismatch(unsigned position,
                                                       const stdx::ustring& extra = {});
[[noreturn]] ORBCORE_API void ctor_parameter_type_mismatch(unsigned position,
                                                           const stdx::ustring& extra = {});
[[noreturn]] ORBCORE_API void ctor_parameter_value_mismatch(unsigned position,
                                                            const stdx::ustring& extra = {});
[[noreturn]] ORBCORE_API void property_type_mismatch();
[[noreturn]] ORBCORE_API void property_value_mismatch(IExceptionObject* cause);

} // namespace core
