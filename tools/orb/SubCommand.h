// Commands that have verbs of their own: `orb text match …`. A verb is a row as in main.cpp.
#pragma once

#include "Command.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <iostream>

namespace orb {

inline void list_verbs(std::string_view command, std::span<const Command> verbs) {
    const auto call_of = [&](const Command& row) {
        return "orb " + std::string(command) + ' ' + std::string(row.verb) + ' ' +
               std::string(row.arguments);
    };
    std::size_t width = 0;
    for (const Command& row : verbs) width = std::max(width, call_of(row).size());
    for (const Command& row : verbs)
        std::cout << std::left << std::setw(static_cast<int>(width) + 2) << call_of(row) << row.help
                  << '\n';
}

// Runs the verb that the arguments begin with; "help" lists them.
inline int run_verb(std::string_view command, std::span<const Command> verbs,
                    const Arguments& arguments) {
    const std::string name(command);
    if (arguments.values.empty())
        throw UsageError("'" + name + "' needs a verb: `orb " + name + " help` tells which");
    const std::string_view wanted = arguments.values[0];
    if (wanted == "help") {
        list_verbs(command, verbs);
        return kSuccess;
    }
    const auto row =
        std::find_if(verbs.begin(), verbs.end(), [&](auto& known) { return known.verb == wanted; });
    if (row == verbs.end())
        throw UsageError("'" + name + "' has no verb '" + std::string(wanted) + "'");
    const std::span<char* const> values = arguments.values.subspan(1);
    const std::size_t plain = std::min(arguments.plain.size(), values.size());
    return row->run({values, arguments.json, values.last(plain)});
}

// The values of a verb that takes so many.
template <std::size_t kCount>
std::array<std::string_view, kCount> values_of(const Arguments& arguments, const char* what) {
    if (arguments.values.size() != kCount) throw UsageError(std::string("expected ") + what);
    std::array<std::string_view, kCount> values;
    std::copy(arguments.values.begin(), arguments.values.end(), values.begin());
    return values;
}

} // namespace orb
