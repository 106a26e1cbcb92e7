// The front of the log: code writes records here, and a sink, which is the class of another
// component, stores or sends them. Without that class every call does nothing.
//
//   static constinit const core::SCOM_StaticLogger logger("orbcore", "SCOM_ProcessImpl");
//
//   if (logger.isEnabled(core::SCOM_LogLevel::Debug))
//       logger.logDebug(0, u"the table was rebuilt", u"rows", text_of(rows).c_str(), nullptr);
//
// A call makes the sink anew through the registry of the process; ask `isEnabled` first where a
// record is expensive to build. No operation reports a failure, exceptions of the sink included.
// Loggers are constant after they are made and safe on any thread.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/component/LogLevel.h>
#include <core/platform/api.h>

#include <utility>

namespace core {

class IExceptionObject;

// The class that other components register as the sink, and the interface that it has.
inline constexpr _GUID CLSID_SCOM_LoggerSink = "bd26cec4-a8f1-4722-aba1-d95d2d1c67b6"_guid;
inline constexpr _GUID IID_ISCOM_LoggerSink = "4e458b68-7872-400b-93a9-aaa89dc476f1"_guid;

// A further property of a record: key and value.
using SCOM_LogProperty = std::pair<const char16_t*, stdx::ustring>;

class ISCOM_LoggerSink : public IUnknown {
public:
    ORB_INTERFACE(ISCOM_LoggerSink, IID_ISCOM_LoggerSink)

    virtual void log(SCOM_LogLevel level, const char* component, const char* className, unsigned id,
                     const char16_t* text, const SCOM_LogProperty* properties, unsigned count,
                     IExceptionObject* exception) = 0;
    virtual InterfacePtr<IUnknown>
    logDelayed(SCOM_LogLevel level, const char* component, const char* className, unsigned id,
               const char16_t* text, const SCOM_LogProperty* properties, unsigned count) = 0;
    virtual bool isEnabled(SCOM_LogLevel level, const char* component, const char* className) = 0;
};

// The source of records: a component and a class in it. Where the records go is the business of a
// derived class.
class ORBCORE_API SCOM_LoggerBase {
public:
    bool isEnabled(SCOM_LogLevel level) const noexcept;
    // `id` numbers the record for the sink; `exception` may be null.
    void log(SCOM_LogLevel level, unsigned id, const char16_t* text,
             const SCOM_LogProperty* properties, unsigned count,
             IExceptionObject* exception) const noexcept;
    // Gives the sink's handle of the record; null without a sink.
    InterfacePtr<IUnknown> logDelayed(SCOM_LogLevel level, unsigned id, const char16_t* text,
                                      const SCOM_LogProperty* properties,
                                      unsigned count) const noexcept;

    // Records of the level of the name, with one property.
    void logTrace(unsigned id, const char16_t* text, const char16_t* key, const char16_t* value,
                  IExceptionObject* exception) const noexcept;
    void logDebug(unsigned id, const char16_t* text, const char16_t* key, const char16_t* value,
                  IExceptionObject* exception) const noexcept;
    void logInfo(unsigned id, const char16_t* text, const char16_t* key, const char16_t* value,
                 IExceptionObject* exception) const noexcept;
    void logWarning(unsigned id, const char16_t* text, const char16_t* key, const char16_t* value,
                    IExceptionObject* exception) const noexcept;
    void logError(unsigned id, const char16_t* text, const char16_t* key, const char16_t* value,
                  IExceptionObject* exception) const noexcept;

protected:
    // Both names have static storage.
    constexpr SCOM_LoggerBase(const char* component, const char* className) noexcept
        : component_(component), class_(className) {}
    ~SCOM_LoggerBase() = default;

private:
    virtual InterfacePtr<ISCOM_LoggerSink> sink() const = 0; // or null

    template <class Call> void with_sink(Call&& call) const noexcept;
    void log_one(SCOM_LogLevel level, unsigned id, const char16_t* text, const char16_t* key,
                 const char16_t* value, IExceptionObject* exception) const noexcept;

    const char* component_;
    const char* class_;
};

// The logger of a source file; a constant of the file.
class ORBCORE_API SCOM_StaticLogger final : public SCOM_LoggerBase {
public:
    constexpr SCOM_StaticLogger(const char* component, const char* className,
                                const _GUID* sinkClass = &CLSID_SCOM_LoggerSink) noexcept
        : SCOM_LoggerBase(component, className), sinkClass_(sinkClass) {}

private:
    InterfacePtr<ISCOM_LoggerSink> sink() const override;

    const _GUID* sinkClass_;
};

// The address in hexadecimal digits, upper case, at least eight.
ORBCORE_API stdx::ustring pointer_to_string(const void* pointer);

} // namespace core
