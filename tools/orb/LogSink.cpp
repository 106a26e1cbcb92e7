#include "LogSink.h"

#include "Command.h"
#include "Json.h"

#include <core/core.h>

#include <algorithm>
#include <iterator>
#include <sstream>

#include <unistd.h>

namespace orb {
namespace {

struct LevelName {
    core::SCOM_LogLevel level;
    const char16_t* text;
};
constexpr LevelName kLevels[] = {
    {core::SCOM_LogLevel::Trace, core::kSCOM_LoggerLevel_TRACE},
    {core::SCOM_LogLevel::Debug, core::kSCOM_LoggerLevel_DEBUG},
    {core::SCOM_LogLevel::Info, core::kSCOM_LoggerLevel_INFO},
    {core::SCOM_LogLevel::Warning, core::kSCOM_LoggerLevel_WARNING},
    {core::SCOM_LogLevel::Error, core::kSCOM_LoggerLevel_ERROR},
    {core::SCOM_LogLevel::None, core::kSCOM_LoggerLevel_NONE},
};

// What all sinks share; written before the tool starts anything else.
struct Settings {
    core::InterfacePtr<core::ISCOM_LoggerPolicy> policy;
    bool json = false;
};
Settings settings;

using Fields = std::vector<std::pair<std::string, std::string>>;

std::string utf8(std::u16string_view text) {
    return std::string(std::string_view(core::to_utf8(text)));
}

// A record: what every record has, then what its caller added.
struct Record {
    Fields fields;
    Fields properties;
};

void write_text(std::ostream& out, const Record& record) {
    const char* separator = "";
    for (const Fields* const part : {&record.fields, &record.properties})
        for (const auto& [key, value] : *part) {
            out << separator << key << '=' << value;
            separator = " ";
        }
}

void write_json(std::ostream& out, const Fields& fields) {
    const char* separator = "";
    for (const auto& [key, value] : fields) {
        out << separator << Quoted{key} << ':' << Quoted{value};
        separator = ",";
    }
}

// The properties in an object of their own, since their keys may be those of the record.
void write_json(std::ostream& out, const Record& record) {
    out << '{';
    write_json(out, record.fields);
    out << ",\"properties\":{";
    write_json(out, record.properties);
    out << "}}";
}

// Made anew for each record, as loggers do it.
class LogSink
    : public core::ObjectRoot
    , public core::SCOM_Class<LogSink, &core::CLSID_SCOM_LoggerSink>
    , public core::ISCOM_LoggerSink {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<LogSink, core::ISCOM_LoggerSink>();
    }

    bool isEnabled(core::SCOM_LogLevel level, const char* component,
                   const char* className) override {
        return settings.policy && settings.policy->isEnabled(level, component, className);
    }

    void log(core::SCOM_LogLevel level, const char* component, const char* className, unsigned,
             const char16_t* text, const core::SCOM_LogProperty* properties, unsigned count,
             core::IExceptionObject* exception) override {
        if (!isEnabled(level, component, className)) return;
        const auto* const row = std::find_if(std::begin(kLevels), std::end(kLevels),
                                             [&](const LevelName& r) { return r.level == level; });
        Record record = {.fields = {{utf8(core::kSCOM_LoggerLevelProp), utf8(row->text)},
                                    {utf8(core::kSCOM_LoggerThreadIdProp),
                                     std::to_string(core::Thread::getOSId())},
                                    {utf8(core::kSCOM_LoggerComponentProp), component},
                                    {utf8(core::kSCOM_LoggerClassProp), className}},
                         .properties = {}};
        if (text && *text) record.fields.emplace_back("text", utf8(text));
        if (exception)
            record.fields.emplace_back("exception", utf8(exception->exception()->description()));
        for (unsigned i = 0; i != count; ++i)
            record.properties.emplace_back(utf8(properties[i].first), utf8(properties[i].second));
        write(record);
    }

    // Nothing waits here, so there is nothing to hold on to.
    core::InterfacePtr<IUnknown> logDelayed(core::SCOM_LogLevel level, const char* component,
                                            const char* className, unsigned id,
                                            const char16_t* text,
                                            const core::SCOM_LogProperty* properties,
                                            unsigned count) override {
        log(level, component, className, id, text, properties, count, nullptr);
        return nullptr;
    }

private:
    // In one call, so that records of several threads do not mix.
    static void write(const Record& record) {
        std::ostringstream line;
        if (settings.json)
            write_json(line, record);
        else
            write_text(line, record);
        line << '\n';
        const std::string bytes = line.str();
        [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, bytes.data(), bytes.size());
    }
};

} // namespace

core::SCOM_LogLevel log_level_of(std::string_view name) {
    for (const LevelName& row : kLevels) {
        const std::string text = utf8(row.text);
        if (std::equal(name.begin(), name.end(), text.begin(), text.end(),
                       [](char a, char b) { return a == b || (a >= 'a' && a - 32 == b); }))
            return row.level;
    }
    throw UsageError("there is no log level '" + std::string(name) + "'");
}

void start_log(core::SCOM_LogLevel level, bool json) {
    const auto factory =
        core::create_object<core::ISCOM_LoggerPolicyFactory>(core::CLSID_SCOM_LoggerPolicyFactory);
    factory->setLevel(level, nullptr, nullptr);
    settings = {factory->createPolicy(), json};
}

} // namespace orb

ORBCORE_MODULE("orb", ORBCORE_VERSION ".0");
ORBCORE_REGISTER(orb::LogSink);
