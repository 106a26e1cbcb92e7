// The verbs that look at classes: what is registered, what an object answers to, what a component
// brings.

#include "Command.h"
#include "Json.h"
#include "Words.h"

#include <core/core.h>

#include <algorithm>
#include <iostream>
#include <sstream>
#include <vector>

namespace orb {
namespace {

std::string_view kind_of(core::SCOM_RegisterType type) {
    constexpr std::string_view kKinds[] = {"class", "singleton", "service"};
    return kKinds[type];
}

template <class Rows, class Text>
std::string joined(const Rows& rows, const char* separator, Text&& text) {
    std::string all;
    for (const auto& row : rows) {
        if (!all.empty()) all += separator;
        all += text(row);
    }
    return all;
}

std::string text_of(const stdx::ustring& text) {
    return core::to_utf8(text).c_str();
}

std::string text_of(const _GUID& guid) {
    return core::to_cstring(guid).c_str();
}

void print_text(const std::vector<core::RegisteredClass>& classes) {
    for (const core::RegisteredClass& row : classes) {
        std::cout << core::to_cstring(row.clsid) << "  " << kind_of(row.type) << "  "
                  << row.component;
        if (!row.aliases.empty())
            std::cout << "  "
                      << joined(row.aliases, ", ", [](auto& name) { return text_of(name); });
        if (!row.categories.empty())
            std::cout << "\n    categories: "
                      << joined(row.categories, ", ", [](auto& id) { return text_of(id); });
        std::cout << '\n';
    }
}

void print_json(const std::vector<core::RegisteredClass>& classes) {
    const auto list = [](const auto& rows) {
        std::ostringstream out;
        out << '[';
        for (const auto& row : rows)
            out << (&row == rows.data() ? "" : ",") << Quoted{text_of(row)};
        out << ']';
        return out.str();
    };
    std::cout << '[';
    for (const core::RegisteredClass& row : classes)
        std::cout << (&row == classes.data() ? "\n" : ",\n")
                  << "{\"guid\":" << Quoted{text_of(row.clsid)}
                  << ",\"kind\":" << Quoted{kind_of(row.type)}
                  << ",\"component\":" << Quoted{std::string_view(row.component)}
                  << ",\"aliases\":" << list(row.aliases)
                  << ",\"categories\":" << list(row.categories) << '}';
    std::cout << "\n]\n";
}

void print(const std::vector<core::RegisteredClass>& classes, const Arguments& arguments) {
    if (arguments.json)
        print_json(classes);
    else
        print_text(classes);
}

const char* only_value(const Arguments& arguments, const char* what) {
    if (arguments.values.size() != 1)
        throw UsageError(std::string("expected one argument, ") + what);
    return arguments.values[0];
}

} // namespace

int list_classes(const Arguments& arguments) {
    if (!arguments.values.empty()) throw UsageError("'classes' takes no argument");
    print(core::registered_classes(), arguments);
    return kSuccess;
}

int create_new(const Arguments& arguments) {
    const char* const name = only_value(arguments, "the name or the GUID of a class");
    const core::InterfacePtr<IUnknown> object = object_named(name);
    if (!object) throw Failure("no object can be made of a class '" + std::string(name) + "'");
    const std::vector<core::NamedInterface> interfaces = core::interfaces_of(object.get());
    if (arguments.json) std::cout << '[';
    for (const core::NamedInterface& row : interfaces) {
        if (arguments.json)
            std::cout << (&row == interfaces.data() ? "\n" : ",\n")
                      << "{\"iid\":" << Quoted{text_of(*row.iid)}
                      << ",\"name\":" << Quoted{row.name} << '}';
        else
            std::cout << core::to_cstring(*row.iid) << "  " << row.name << '\n';
    }
    if (arguments.json) std::cout << "\n]\n";
    return kSuccess;
}

int inspect_component(const Arguments& arguments) {
    const char* const name = only_value(arguments, "the name of a component");
    core::SCOM_Process* const process = core::current_process();
    const std::vector<core::RegisteredClass> before = core::registered_classes();
    void* const handle = process->loadComponentEx(name);
    std::vector<core::RegisteredClass> brought = core::registered_classes();
    std::erase_if(brought, [&](const core::RegisteredClass& row) {
        return std::any_of(before.begin(), before.end(),
                           [&](const auto& known) { return known.clsid == row.clsid; });
    });
    print(brought, arguments);
    process->unloadComponent(handle);
    return kSuccess;
}

} // namespace orb
