// The levels of log records, and the keys under which a record carries its fields.
#pragma once

#include <cstdint>

namespace core {

// A stored level is the lowest that passes: `None` lets nothing pass, and a record of level `None`
// never passes.
enum class SCOM_LogLevel : std::uint32_t {
    Trace = 0,
    Debug = 1,
    Info = 2,
    Warning = 3,
    Error = 4,
    None = 255,
};

inline constexpr char16_t kSCOM_LoggerLevel_TRACE[] = u"TRACE";
inline constexpr char16_t kSCOM_LoggerLevel_DEBUG[] = u"DEBUG";
inline constexpr char16_t kSCOM_LoggerLevel_INFO[] = u"INFO";
inline constexpr char16_t kSCOM_LoggerLevel_WARNING[] = u"WARNING";
inline constexpr char16_t kSCOM_LoggerLevel_ERROR[] = u"ERROR";
inline constexpr char16_t kSCOM_LoggerLevel_NONE[] = u"NONE";

inline constexpr char16_t kSCOM_LoggerThreadIdProp[] = u"threadId";
inline constexpr char16_t kSCOM_LoggerDescrProp[] = u"descr";
inline constexpr char16_t kSCOM_LoggerFuncProp[] = u"func";
inline constexpr char16_t kSCOM_LoggerFileProp[] = u"file";
inline constexpr char16_t kSCOM_LoggerLineProp[] = u"line";
inline constexpr char16_t kSCOM_LoggerClassProp[] = u"class";
inline constexpr char16_t kSCOM_LoggerComponentProp[] = u"component";
inline constexpr char16_t kSCOM_LoggerLevelProp[] = u"level";

} // namespace core
