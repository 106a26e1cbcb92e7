// `orb`: a host program that lets a person do from a shell what the library can do.

#include "Command.h"
#include "LogSink.h"

#include <core/core.h>

#include <unicode/ucal.h>
#include <unicode/uversion.h>

#include <algorithm>
#include <cerrno>
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
    {"describe", "CLASS", "tell what a class offers to scripts, in both languages", describe_class},
    {"get", "URL PROPERTY...", "print properties of the object in a file", get_properties},
    {"call", "URL METHOD [ARG]...", "call a method of the object in a file", call_method},
    {"text", "VERB ...", "search and convert text; `orb text help` lists the verbs", text_command},
    {"convert", "[FILE]...", "change the encoding: --from ENC, --to ENC; --list shows all",
     convert_command, true},
    {"locale", "VERB ...", "look at locales; `orb locale help` lists the verbs", locale_command},
    {"date", "VERB ...", "calculate with dates; `orb date help` lists the verbs", date_command},
    {"color", "VERB ...", "calculate with colors; `orb color help` lists the verbs", color_command},
    {"calc", "EXPRESSION", "calculate exactly: + - * / % ^ ( ) round(x, places)", calculate},
    {"cat", "URL...", "print files of any scheme; a name without a scheme is a path", cat_files},
    {"list", "VERB ...", "look at brace lists, text or binary; `orb list help` lists the verbs",
     list_command, true},
    {"ls", "URL [MASK]", "list a directory; * is any text, ? any character", list_files},
    {"stat", "URL", "tell what is known of a file", stat_file},
    {"cp", "URL URL", "copy a file, from scheme to scheme as well", copy_file},
    {"mv", "URL URL", "move a file", move_file},
    {"rm", "URL [MASK]", "remove a file, or a directory with all that it holds", remove_files},
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
           "  --lang LANGUAGE       the language of messages, en or ru, if not that of the system\n"
           "  --log LEVEL           write the log to stderr, from this level on: trace, debug, "
           "info,\n"
           "                        warning, error\n"
           "  --help                print this and end\n"
           "  --version             print the versions of the library and of ICU and end\n"
           "  --                    take all words behind it as they are, not as options\n"
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
    std::size_t plain = 0; // values behind "--"
    std::vector<const char*> components;
    core::SCOM_LogLevel log = core::SCOM_LogLevel::None;
    const char16_t* language = nullptr; // of messages; null: the system's
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

const char16_t* locale_of(std::string_view language) {
    if (language == "en") return u"en";
    if (language == "ru") return u"ru";
    throw UsageError("there are no messages in the language '" + std::string(language) + "'");
}

CommandLine parse(std::span<char*> words) {
    CommandLine line;
    const auto take = [&line](char* word) {
        if (line.command)
            line.values.push_back(word);
        else
            line.command = find_command(word);
    };
    const auto mark = std::find(words.begin(), words.end(), std::string_view("--"));
    const auto count = static_cast<std::size_t>(mark - words.begin()); // that may be options
    for (std::size_t i = 0; i != count; ++i) {
        const std::string_view word = words[i];
        const bool hasValue = i + 1 != count;
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
        else if (word.starts_with("--") && !(line.command && line.command->ownOptions))
            throw UsageError("there is no option '" + std::string(word) +
                             "', or it lacks its value");
        else
            take(words[i]);
    }
    if (count != words.size()) {
        const std::size_t before = line.values.size();
        for (char* const word : words.subspan(count + 1)) take(word);
        line.plain = line.values.size() - before;
    }
    if (!line.command && !line.help && !line.version) throw UsageError("no command is given");
    return line;
}

// Calls what prints. The output goes out meanwhile and at the end, to a disk that is full, say.
template <class Print> void deliver(Print print) {
    try {
        std::cout.exceptions(std::ios::badbit);
        print();
        std::cout.flush();
    } catch (const std::ios_base::failure&) {
        const int reason = errno;
        std::cout.exceptions(std::ios::goodbit);
        throw Failure(std::string("cannot write the output: ") + std::strerror(reason));
    }
}

class Host final : public core::Process {
public:
    explicit Host(const CommandLine& line) : line_(line) {}
    int status() const noexcept { return status_; }

private:
    static void speak(core::SCOM_Process& process, const char16_t* language) {
        process.setResourceLocale(core::Locale(language));
        process.setTermLanguage(std::u16string_view(language) == u"ru" ? 1 : 0);
    }
    void run() override {
        if (line_.log != core::SCOM_LogLevel::None) start_log(line_.log, line_.json);
        core::SCOM_Process* const process = core::current_process();
        if (line_.language) speak(*process, line_.language);
        for (const char* const component : line_.components) process->loadComponentEx(component);
        const std::span<char* const> values = line_.values;
        deliver([&] {
            status_ = line_.command->run({values, line_.json, values.last(line_.plain)});
        });
    }

    const CommandLine& line_;
    int status_ = kFailure;
};

int run(std::span<char*> words) {
    const CommandLine line = parse(words);
    if (line.help || line.version) {
        deliver([&] { line.help ? print_help(std::cout) : print_version(std::cout); });
        return kSuccess;
    }
    core::CoreInitManager init;
    Host host(line);
    host.construct(&core::this_module());
    host.start();
    return host.status();
}

// "what failed: why: what was behind that", in one line.
std::string with_causes(const core::Exception& exception) {
    std::string text = core::to_utf8(exception.description()).c_str();
    core::InterfacePtr<core::IExceptionObject> cause(exception.inner(), true);
    while (cause) {
        const core::Exception& next = *cause->exception();
        text += std::string(": ") + core::to_utf8(next.description()).c_str();
        cause = {next.inner(), true};
    }
    return text;
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
        std::cerr << "orb: " << orb::with_causes(exception) << '\n';
    } catch (const std::exception& error) {
        std::cerr << "orb: " << error.what() << '\n';
    }
    return orb::kFailure;
}
