// `orb`: a host program that lets a person do from a shell what the library can do.

#include "Command.h"
#include "LogSink.h"

#include <core/core.h>

#include <unicode/ucal.h>
#include <unicode/uversion.h>

#include <algorithm>
#include <cstring>
#include <iomanip>
#include <iostream>
#include <vector>

namespace orb {
namespace {

constexpr Command kCommands[] = {
    {"classes", "", "list the registered classes", list_classes},
    {"new", "NAME|GUID", "create an object and tell what it answers to", create_new},
    {"component", "NAME", "load a component library and show what it brings", inspect_component},
    {"text", "VERB ...", "search and convert text; `orb text help` lists the verbs", text_command},
    {"color", "VERB ...", "calculate with colors; `orb color help` lists the verbs", color_command},
};

void print_help(std::ostream& out) {
    out << "orb - shows the orbcore library from a shell\n\n"
           "usage: orb [OPTION]... COMMAND [ARGUMENT]...\n\ncommands:\n";
    for (const Command& command : kCommands) {
        const std::string call = std::string(command.verb) + ' ' + std::string(command.arguments);
        out << "  " << std::left << std::setw(22) << call << command.help << '\n';
    }
    out << "\noptions:\n"
           "  --component NAME      load a component library first; may be repeated\n"
           "  --json                print JSON instead of text, the log included\n"
           "  --lang LANGUAGE       the language of messages: en or ru\n"
           "  --log LEVEL           write the log to stderr, from this level on: trace, debug, "
           "info,\n"
           "                        warning, error\n"
           "  --help                print this and end\n"
           "  --version             print the versions of the library and of ICU and end\n"
           "\nexit status: 0 done, 1 nothing found or the request failed, "
           "2 the command line is wrong\n";
}

// ICU and the rules of time zones are the system's, so they have versions of their own.
void print_version(std::ostream& out) {
    UVersionInfo version;
    char icu[U_MAX_VERSION_STRING_LENGTH];
    u_getVersion(version);
    u_versionToString(version, icu);
    UErrorCode status = U_ZERO_ERROR;
    const char* const zones = ucal_getTZDataVersion(&status);
    out << "orb, orbcore " ORBCORE_VERSION ", ICU " << icu << ", time zones "
        << (U_SUCCESS(status) ? zones : "unknown") << '\n';
}

struct CommandLine {
    const Command* command = nullptr;
    std::vector<char*> values;
    std::vector<const char*> components;
    core::SCOM_LogLevel log = core::SCOM_LogLevel::None;
    const char* language = nullptr;
    bool json = false;
    bool help = false;
    bool version = false;
};

const Command* find_command(std::string_view verb) {
    const auto found = std::find_if(std::begin(kCommands), std::end(kCommands),
                                    [&](const Command& row) { return row.verb == verb; });
    if (found == std::end(kCommands))
        throw UsageError("there is no command '" + std::string(verb) + "'");
    return found;
}

const char* locale_of(std::string_view language) {
    if (language == "en") return "root";
    if (language == "ru") return "ru";
    throw UsageError("there are no messages in the language '" + std::string(language) + "'");
}

CommandLine parse(std::span<char*> words) {
    CommandLine line;
    for (std::size_t i = 0; i != words.size(); ++i) {
        const std::string_view word = words[i];
        const bool hasValue = i + 1 != words.size();
        if (word == "--json")
            line.json = true;
        else if (word == "--help")
            line.help = true;
        else if (word == "--version")
            line.version = true;
        else if (word == "--component" && hasValue)
            line.components.push_back(words[++i]);
        else if (word == "--log" && hasValue)
            line.log = log_level_of(words[++i]);
        else if (word == "--lang" && hasValue)
            line.language = locale_of(words[++i]);
        else if (word.starts_with("--"))
            throw UsageError("there is no option '" + std::string(word) +
                             "', or it lacks its value");
        else if (!line.command)
            line.command = find_command(word);
        else
            line.values.push_back(words[i]);
    }
    if (!line.command && !line.help && !line.version) throw UsageError("no command is given");
    return line;
}

class Host final : public core::Process {
public:
    explicit Host(const CommandLine& line) : line_(line) {}
    int status() const noexcept { return status_; }

private:
    void run() override {
        if (line_.log != core::SCOM_LogLevel::None) start_log(line_.log, line_.json);
        for (const char* const component : line_.components)
            core::current_process()->loadComponentEx(component);
        status_ = line_.command->run({line_.values, line_.json});
    }

    const CommandLine& line_;
    int status_ = kFailure;
};

int run(std::span<char*> words) {
    const CommandLine line = parse(words);
    if (line.help) {
        print_help(std::cout);
        return kSuccess;
    }
    if (line.version) {
        print_version(std::cout);
        return kSuccess;
    }
    core::CoreInitManager init;
    if (line.language) core::set_message_locale(line.language);
    Host host(line);
    host.construct(&core::this_module());
    host.start();
    return host.status();
}

} // namespace
} // namespace orb

int main(int count, char** words) {
    try {
        return orb::run(
            std::span(words, static_cast<std::size_t>(count)).subspan(count > 0 ? 1 : 0));
    } catch (const orb::UsageError& error) {
        std::cerr << "orb: " << error.what() << "; `orb --help` lists all\n";
        return orb::kUsage;
    } catch (const core::Exception& exception) {
        std::cerr << "orb: " << core::to_utf8(exception.description()) << '\n';
    } catch (const std::exception& error) {
        std::cerr << "orb: " << error.what() << '\n';
    }
    return orb::kFailure;
}
