// The verbs of `orb`. A verb is one row of the table in main.cpp and one function in a source of
// its own, which runs inside the tool's process.
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace orb {

// Exit codes, as Unix tools use them.
inline constexpr int kSuccess = 0;
inline constexpr int kFailure = 1;
inline constexpr int kUsage = 2;

struct Arguments {
    std::span<char* const> values;  // behind the verb, options of the tool taken out
    bool json = false;              // machine-readable output was asked for
    std::span<char* const> plain{}; // the end of `values` that stood behind "--": no options
};

// The command line says something that the verb does not understand.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The request cannot be met; the text is the one line that the user reads.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Command {
    std::string_view verb;
    std::string_view arguments;
    std::string_view help;
    int (*run)(const Arguments& arguments);
    bool ownOptions = false; // takes words with "--" that are no options of the tool
};

int list_classes(const Arguments& arguments);
int create_new(const Arguments& arguments);
int inspect_component(const Arguments& arguments);
int describe_class(const Arguments& arguments);
int get_properties(const Arguments& arguments);
int call_method(const Arguments& arguments);
int text_command(const Arguments& arguments);
int convert_command(const Arguments& arguments);
int locale_command(const Arguments& arguments);
int date_command(const Arguments& arguments);
int color_command(const Arguments& arguments);
int calculate(const Arguments& arguments);
int list_command(const Arguments& arguments);
int cat_files(const Arguments& arguments);
int list_files(const Arguments& arguments);
int stat_file(const Arguments& arguments);
int copy_file(const Arguments& arguments);
int move_file(const Arguments& arguments);
int remove_files(const Arguments& arguments);

} // namespace orb
