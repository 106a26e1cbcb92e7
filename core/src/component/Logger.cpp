#include <core/component/Logger.h>

#include <core/component/SCOM_Process.h>

#include <cinttypes>
#include <cstdio>

namespace core {

// Calls with the sink, where there is one. Who writes a record can do nothing about a sink that
// fails, so failures end here.
template <class Call> void SCOM_LoggerBase::with_sink(Call&& call) const noexcept {
    try {
        if (const InterfacePtr<ISCOM_LoggerSink> target = sink()) call(*target);
    } catch (...) {}
}

bool SCOM_LoggerBase::isEnabled(SCOM_LogLevel level) const noexcept {
    bool enabled = false;
    with_sink(
        [&](ISCOM_LoggerSink& target) { enabled = target.isEnabled(level, component_, class_); });
    return enabled;
}

void SCOM_LoggerBase::log(SCOM_LogLevel level, unsigned id, const char16_t* text,
                          const SCOM_LogProperty* properties, unsigned count,
                          IExceptionObject* exception) const noexcept {
    with_sink([&](ISCOM_LoggerSink& target) {
        target.log(level, component_, class_, id, text, properties, count, exception);
    });
}

InterfacePtr<IUnknown> SCOM_LoggerBase::logDelayed(SCOM_LogLevel level, unsigned id,
                                                   const char16_t* text,
                                                   const SCOM_LogProperty* properties,
                                                   unsigned count) const noexcept {
    InterfacePtr<IUnknown> handle;
    with_sink([&](ISCOM_LoggerSink& target) {
        handle = target.logDelayed(level, component_, class_, id, text, properties, count);
    });
    return handle;
}

void SCOM_LoggerBase::log_one(SCOM_LogLevel level, unsigned id, const char16_t* text,
                              const char16_t* key, const char16_t* value,
                              IExceptionObject* exception) const noexcept {
    with_sink([&](ISCOM_LoggerSink& target) {
        const SCOM_LogProperty property(key, value ? value : u"");
        target.log(level, component_, class_, id, text, &property, 1, exception);
    });
}

void SCOM_LoggerBase::logTrace(unsigned id, const char16_t* text, const char16_t* key,
                               const char16_t* value, IExceptionObject* exception) const noexcept {
    log_one(SCOM_LogLevel::Trace, id, text, key, value, exception);
}

void SCOM_LoggerBase::logDebug(unsigned id, const char16_t* text, const char16_t* key,
                               const char16_t* value, IExceptionObject* exception) const noexcept {
    log_one(SCOM_LogLevel::Debug, id, text, key, value, exception);
}

void SCOM_LoggerBase::logInfo(unsigned id, const char16_t* text, const char16_t* key,
                              const char16_t* value, IExceptionObject* exception) const noexcept {
    log_one(SCOM_LogLevel::Info, id, text, key, value, exception);
}

void SCOM_LoggerBase::logWarning(unsigned id, const char16_t* text, const char16_t* key,
                                 const char16_t* value,
                                 IExceptionObject* exception) const noexcept {
    log_one(SCOM_LogLevel::Warning, id, text, key, value, exception);
}

void SCOM_LoggerBase::logError(unsigned id, const char16_t* text, const char16_t* key,
                               const char16_t* value, IExceptionObject* exception) const noexcept {
    log_one(SCOM_LogLevel::Error, id, text, key, value, exception);
}

InterfacePtr<ISCOM_LoggerSink> SCOM_StaticLogger::sink() const {
    return create_object<ISCOM_LoggerSink>(*sinkClass_);
}

stdx::ustring pointer_to_string(const void* pointer) {
    char digits[2 * sizeof pointer + 1];
    const int length = std::snprintf(digits, sizeof digits, "%08" PRIXPTR,
                                     reinterpret_cast<std::uintptr_t>(pointer));
    return {digits, digits + length};
}

} // namespace core
