// What scripts see of a class, as one table: rows of names and handlers, checked at compile time.
//
//   constexpr core::ScriptProperty kProperties[] = {
//       {{u"Number", u"Номер"}, core::reads<&Invoice::number>, core::writes<&Invoice::setNumber>},
//       {{u"Total", u"Итог"}, core::reads<&Invoice::total>},
//   };
//   constexpr core::ScriptMethod kMethods[] = {
//       {{u"Add", u"Добавить"}, core::runs<&Invoice::add>,
//        {{{u"Price", u"Цена"}}, {{u"Count", u"Количество"}, 1}}},
//   };
//   constexpr core::ScriptTable Invoice::members = core::script_table<Invoice>(kProperties, kMethods);
//
// A handler is a member function, a data member (of properties), or a function that takes the object
// as its first parameter, a reference. Parameters and results are the native types of
// core/values/ScriptNative.h, besides
//
//   const GenericValue&             any value
//   GenericValue&                   any value, and what the handler assigns goes back to the script
//   I*                              an object that has the interface, lent for the call
//   X&                              a value of the class X, a ScriptValue
//   std::vector<GenericValue*>&     alone: all arguments as they come, one for each row
//
// The handler owns the other arguments, so they outlive whatever it does to the script's variables.
// A handler of a base class names the class of the table, too: `reads<&Base::count, Invoice>`.
#pragma once

#include <core/values/ScriptHandlers.h>

namespace core {

// Refuses to compile lists with a name twice, with what is no name, with as many parameters as the
// handler has not got, with a default of another type, or with a handler of another class.
template <class X, class... Lists> consteval ScriptTable script_table(const Lists&... lists);

// ---- inline

namespace detail {

consteval void check_names(const Term& names) {
    if (!is_name_of_scripts(names.first) || (names.second && !is_name_of_scripts(names.second)))
        throw "a name is of Latin or Russian letters, digits and \"_\", and begins with no digit";
}

template <class X> consteval void check_owner(const ScriptSignature* signature) {
    if (signature && signature->owner && signature->owner != &kOwner<X>)
        throw "a handler of another class than the table: name the class as its second argument";
}

consteval void check_parameters(std::initializer_list<ScriptParameter> rows,
                                const ScriptSignature& signature) {
    const bool any = signature.count == ScriptSignature::kAny;
    if (!any && rows.size() != signature.count)
        throw "the handler has another number of parameters than the row";
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const ScriptParameter& row = rows.begin()[i];
        check_names(row.names);
        if (!any &&
            !row.defaultValue.fits(signature.parameters[i].type, signature.parameters[i].optional))
            throw "the default value is not of the type of the parameter";
    }
}

template <class Row, std::size_t count> consteval void check_list(const Row (&rows)[count]) {
    if (!names_are_distinct(rows)) throw "two rows have a name in common";
    for (const Row& row : rows) check_names(row.names);
}

template <class X, std::size_t count>
consteval void add_list(ScriptTable& table, const ScriptProperty (&rows)[count]) {
    check_list(rows);
    for (const ScriptProperty& row : rows) {
        if (!row.getter.invoke && !row.setter.invoke) throw "a property is read or written";
        check_owner<X>(row.getter.signature);
        check_owner<X>(row.setter.signature);
    }
    table.properties = rows;
}

template <class X, std::size_t count>
consteval void add_list(ScriptTable& table, const ScriptMethod (&rows)[count]) {
    check_list(rows);
    for (const ScriptMethod& row : rows) {
        check_owner<X>(row.action.signature);
        check_parameters(row.parameters, *row.action.signature);
    }
    table.methods = rows;
}

template <class X>
consteval void add_list(ScriptTable& table, std::span<const ScriptConstructor> rows) {
    for (const ScriptConstructor& row : rows) {
        check_owner<X>(row.maker.signature);
        check_parameters(row.parameters, *row.maker.signature);
    }
    table.constructors = rows;
    table.madeByDefault = false;
}

} // namespace detail

template <class X, class... Lists> consteval ScriptTable script_table(const Lists&... lists) {
    ScriptTable table;
    (detail::add_list<X>(table, lists), ...);
    return table;
}

} // namespace core
