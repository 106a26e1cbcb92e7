// The verbs that use scriptable objects: what a class offers, and the properties and methods of an
// object that a file holds.

#include "Command.h"
#include "Description.h"
#include "Json.h"
#include "Words.h"

#include <core/persistence/ObjectFile.h>
#include <core/values/Call.h>

#include <iomanip>
#include <iostream>
#include <sstream>

namespace orb {
namespace {

std::string text_of(const stdx::ustring& text) {
    return core::to_utf8(text).c_str();
}

// ---- Values as JSON: what JSON has a form for, and a text of all else.

// As in ISO 8601.
std::string iso_text(const core::Date& date) {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    date.split(year, month, day, hour, minute, second);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", year, month, day, hour,
                  minute, second);
    return text;
}

std::string json_of(const core::Value& value) {
    std::ostringstream out;
    if (core::is_null_or_undefined_value(value))
        out << "null";
    else if (const bool* const flag = value.data<bool>())
        out << (*flag ? "true" : "false");
    else if (const core::Numeric* const number = value.data<core::Numeric>())
        out << text_of(number->toString());
    else if (const core::Date* const date = value.data<core::Date>())
        out << Quoted{iso_text(*date)};
    else
        out << Quoted{text_of(core::to_string(value))};
    return out.str();
}

// As a script would write it, for default values.
std::string literal_of(const core::Value& value, int language) {
    if (core::is_null_or_undefined_value(value))
        return text_of(value.type()->getTypeString(language));
    if (!value.data<stdx::ustring>()) return text_of(core::to_string(value));
    std::ostringstream out;
    out << Quoted{text_of(core::to_string(value))};
    return out.str();
}

// ---- Describing

std::string signature(const MethodInfo& method, int language) {
    std::string text = text_of(method.names.name[language]) + '(';
    for (const ParameterInfo& parameter : method.parameters) {
        if (&parameter != method.parameters.data()) text += ", ";
        const std::string name = text_of(parameter.names.name[language]);
        const std::string types = text_of(type_names(parameter.types, language));
        if (parameter.out) text += "&";
        text += name.empty() ? "?" : name;
        if (!types.empty()) text += ": " + types;
        if (parameter.defaultValue) text += " = " + literal_of(*parameter.defaultValue, language);
    }
    text += ')';
    if (!method.hasResult) return text;
    const std::string result = text_of(type_names(method.result, language));
    return text + " -> " + (result.empty() ? "?" : result);
}

std::string both(const Names& names) {
    const std::string english = text_of(names.name[0]), russian = text_of(names.name[1]);
    return russian.empty() || russian == english ? english : english + " / " + russian;
}

// Columns are counted in characters, not in bytes.
std::string padded(std::string text, std::size_t width) {
    std::size_t characters = 0;
    for (const char c : text) characters += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    if (characters < width) text.append(width - characters, ' ');
    return text;
}

void print_text(const ClassInfo& info, int language) {
    std::cout << both(info.names) << "  " << core::to_cstring(info.clsid) << '\n';
    if (!info.constructors.empty()) {
        std::cout << "\nconstructors\n ";
        for (const unsigned count : info.constructors)
            std::cout << ' ' << text_of(info.names.name[language]) << '(' << count << ')';
        std::cout << '\n';
    }
    if (!info.properties.empty()) std::cout << "\nproperties\n";
    for (const PropertyInfo& property : info.properties) {
        std::string types = text_of(type_names(property.types, language));
        if (!property.writable) types += types.empty() ? "read only" : ", read only";
        if (!property.readable) types += types.empty() ? "write only" : ", write only";
        std::cout << "  " << padded(both(property.names), types.empty() ? 0 : 40) << types << '\n';
    }
    if (!info.methods.empty()) std::cout << "\nmethods\n";
    for (const MethodInfo& method : info.methods)
        std::cout << "  " << signature(method, 0) << "\n  " << signature(method, 1) << '\n';
}

class Json {
public:
    explicit Json(std::ostream& out) : out_(out) {}

    void describe(const ClassInfo& info) {
        out_ << '{';
        names(info.names);
        out_ << ",\"guid\":" << Quoted{core::to_cstring(info.clsid).c_str()}
             << ",\"constructors\":[";
        for (const unsigned& count : info.constructors)
            out_ << (&count == info.constructors.data() ? "" : ",") << count;
        out_ << ']';
        list("properties", info.properties, [&](const PropertyInfo& property) {
            names(property.names);
            types("types", property.types);
            flag("readable", property.readable);
            flag("writable", property.writable);
        });
        list("methods", info.methods, [&](const MethodInfo& method) {
            names(method.names);
            list("parameters", method.parameters, [&](const ParameterInfo& parameter) {
                names(parameter.names);
                types("types", parameter.types);
                flag("in", parameter.in);
                flag("out", parameter.out);
                if (parameter.defaultValue)
                    out_ << ",\"default\":" << json_of(*parameter.defaultValue);
            });
            flag("hasResult", method.hasResult);
            if (method.hasResult) types("result", method.result);
        });
        out_ << "}\n";
    }

private:
    void names(const Names& names) {
        out_ << "\"en\":" << Quoted{text_of(names.name[0])}
             << ",\"ru\":" << Quoted{text_of(names.name[1])};
    }
    void flag(const char* name, bool set) {
        out_ << ",\"" << name << "\":" << (set ? "true" : "false");
    }
    void types(const char* name, const core::TypeDomainPattern& pattern) {
        out_ << ",\"" << name << "\":[";
        const char* separator = "";
        for (const _GUID& type : pattern.types()) {
            out_ << separator << Quoted{text_of(type_names(core::TypeDomainPattern(type), 0))};
            separator = ",";
        }
        out_ << ']';
    }
    template <class Rows, class Row> void list(const char* name, const Rows& rows, Row&& print) {
        out_ << ",\"" << name << "\":[";
        for (const auto& row : rows) {
            out_ << (&row == rows.data() ? "\n{" : ",\n{");
            print(row);
            out_ << '}';
        }
        out_ << ']';
    }

    std::ostream& out_;
};

// ---- Arguments from words

template <class T>
bool converted(const core::Value& text, core::Value& to,
               bool (core::GenericValue::*get)(T&) const) {
    T native{};
    if (!(text.*get)(native)) return false;
    to = core::Value(native);
    return true;
}

// A word as a value of the first type that takes it; a number or a string where nothing is known.
core::Value value_of(const char* word, const core::TypeDomainPattern& types,
                     const std::string& parameter) {
    const core::Value text(core::from_utf8(word));
    core::Value value = text;
    if (types.empty()) {
        converted<core::Numeric>(text, value, &core::GenericValue::getNumeric);
        return value;
    }
    if (types.contains(core::CLSID_StringType)) return text;
    if (types.contains(core::CLSID_NumericType) &&
        converted<core::Numeric>(text, value, &core::GenericValue::getNumeric))
        return value;
    if (types.contains(core::CLSID_DateType) &&
        converted<core::Date>(text, value, &core::GenericValue::getDate))
        return value;
    if (types.contains(core::CLSID_BooleanType) &&
        converted<bool>(text, value, &core::GenericValue::getBoolean))
        return value;
    throw Failure("'" + std::string(word) + "' is no " + text_of(type_names(types, 0)) + ", as " +
                  parameter + " must be");
}

core::InterfacePtr<core::IContext_> open_context(const char* name) {
    core::InterfacePtr<core::IContext_> context(core::load_object(url_of(name)));
    if (!context)
        throw Failure("the object in '" + std::string(name) + "' has no properties and methods");
    return context;
}

void print_value(const core::Value& value, bool json) {
    std::cout << (json ? json_of(value) : text_of(core::to_string(value)));
}

} // namespace

int describe_class(const Arguments& arguments) {
    if (arguments.values.size() != 1)
        throw UsageError("expected one argument, the name or the GUID of a class");
    const char* const name = arguments.values[0];
    const core::InterfacePtr<IUnknown> object = object_named(name);
    if (!object) throw Failure("no object can be made of a class '" + std::string(name) + "'");
    const std::optional<ClassInfo> info = describe(object.get());
    if (!info) throw Failure("the class '" + std::string(name) + "' is not for scripts");
    if (arguments.json)
        Json(std::cout).describe(*info);
    else
        print_text(*info, core::current_process()->getTermLanguage());
    return kSuccess;
}

int get_properties(const Arguments& arguments) {
    if (arguments.values.size() < 2)
        throw UsageError("expected the URL of an object and the names of properties");
    const auto context = open_context(arguments.values[0]);
    const auto names = arguments.values.subspan(1);
    std::vector<core::Value> values; // all of them, before anything is printed
    for (const char* const name : names)
        values.push_back(core::get_property(context, core::from_utf8(name)));
    if (arguments.json) std::cout << '{';
    for (std::size_t i = 0; i != values.size(); ++i) {
        if (arguments.json) std::cout << (i == 0 ? "" : ",") << Quoted{names[i]} << ':';
        print_value(values[i], arguments.json);
        if (!arguments.json) std::cout << '\n';
    }
    if (arguments.json) std::cout << "}\n";
    return kSuccess;
}

int call_method(const Arguments& arguments) {
    if (arguments.values.size() < 2)
        throw UsageError("expected the URL of an object, the name of a method and its arguments");
    const auto context = open_context(arguments.values[0]);
    const stdx::ustring name = core::from_utf8(arguments.values[1]);
    const auto words = arguments.values.subspan(2);

    const int method = context->findMethod(name);
    std::vector<MethodInfo> methods = describe(context.get())->methods;
    std::vector<core::Value> values;
    for (std::size_t i = 0; i != words.size(); ++i) {
        core::TypeDomainPattern types;
        if (method >= 0 && i < methods[static_cast<std::size_t>(method)].parameters.size())
            types = methods[static_cast<std::size_t>(method)].parameters[i].types;
        values.push_back(value_of(words[i], types, "argument " + std::to_string(i + 1)));
    }
    std::vector<core::GenericValue*> pointers;
    for (core::Value& value : values) pointers.push_back(&value);
    const core::Value result = core::call_method(context, name, pointers);
    if (method >= 0 && !context->hasRetVal(method)) return kSuccess;
    print_value(result, arguments.json);
    std::cout << '\n';
    return kSuccess;
}

} // namespace orb
