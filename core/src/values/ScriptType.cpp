#include <core/values/ScriptType.h>

#include <algorithm>

namespace core {

namespace {

using detail::row_of;

const ScriptParameter* parameter_of(const ScriptMethod* method, int number) noexcept {
    if (!method) return nullptr;
    return row_of(std::span(method->parameters.begin(), method->parameters.size()), number);
}

// Of the parameter at a place that the row has.
ScriptParameterType type_of(const ScriptSignature& signature, std::size_t position) {
    if (signature.count == ScriptSignature::kAny) return {nullptr, true, false};
    return signature.parameters[position];
}

// Whether it may be left out; what stands for it then, where `out` is given.
bool default_of(const ScriptParameter& row, const ScriptParameterType& type, GenericValue* out) {
    if (!row.defaultValue && !type.optional) return false;
    if (out) row.defaultValue.writeTo(*out);
    return true;
}

// Whether the constructor takes so many arguments, the rest having defaults.
bool takes(const ScriptConstructor& row, std::size_t count) {
    if (count > row.parameters.size()) return false;
    for (std::size_t i = count; i < row.parameters.size(); ++i)
        if (!default_of(row.parameters.begin()[i], type_of(*row.maker.signature, i), nullptr))
            return false;
    return true;
}

void fill_info(ContextValueInfo& info, const Term& names, const _GUID* type) {
    info.name = term_string(names, 0);
    info.russianName = term_string(names, 1);
    info.types = type ? TypeDomainPattern(*type) : TypeDomainPattern();
    info.typesUnknown = !type;
}

} // namespace

void ScriptDefault::writeTo(GenericValue& to) const {
    switch (kind_) {
    case Kind::None:
    case Kind::Undefined:
        return to.clear();
    case Kind::Boolean:
        return to.assign(integer_ != 0);
    case Kind::Integer:
        return to.assign(integer_);
    case Kind::Real:
        return to.assign(real_);
    case Kind::String:
        return to.assign(text_);
    }
}

// ---- Types

ScriptTypeCore::ScriptTypeCore(const Term& name, const ScriptTable& table)
    : name_(name), table_(table) {
    fillCaches();
}

bool ScriptTypeCore::hasCtor(unsigned count) {
    if (table_.madeByDefault) return count == 0;
    return std::any_of(table_.constructors.begin(), table_.constructors.end(),
                       [count](const ScriptConstructor& row) { return takes(row, count); });
}

InterfacePtr<IValue> ScriptTypeCore::ctor(const std::vector<GenericValue*>& arguments) {
    if (table_.madeByDefault) return arguments.empty() ? createIValue() : nullptr;
    for (const ScriptConstructor& row : table_.constructors) {
        if (!takes(row, arguments.size())) continue;
        std::vector<GenericValue*> all(arguments);
        std::vector<Value> defaults(row.parameters.size() - arguments.size());
        for (std::size_t i = 0; i < defaults.size(); ++i) {
            row.parameters.begin()[arguments.size() + i].defaultValue.writeTo(defaults[i]);
            all.push_back(&defaults[i]);
        }
        return row.maker.invoke(all);
    }
    return nullptr;
}

const char16_t* ScriptTypeCore::getPropName(int property, int language) {
    const ScriptProperty* const row = row_of(table_.properties, property);
    return row ? term_string(row->names, language) : nullptr;
}

bool ScriptTypeCore::isPropReadable(int property) {
    const ScriptProperty* const row = row_of(table_.properties, property);
    return row && row->getter.invoke;
}

bool ScriptTypeCore::isPropWritable(int property) {
    const ScriptProperty* const row = row_of(table_.properties, property);
    return row && row->setter.invoke;
}

const char16_t* ScriptTypeCore::getMethodName(int method, int language) {
    const ScriptMethod* const row = row_of(table_.methods, method);
    return row ? term_string(row->names, language) : nullptr;
}

int ScriptTypeCore::getNParams(int method) {
    const ScriptMethod* const row = row_of(table_.methods, method);
    return row ? static_cast<int>(row->parameters.size()) : 0;
}

bool ScriptTypeCore::isParamIn(int method, int parameter) {
    return parameter_of(row_of(table_.methods, method), parameter) != nullptr;
}

bool ScriptTypeCore::isParamOut(int method, int parameter) {
    const ScriptMethod* const row = row_of(table_.methods, method);
    return parameter_of(row, parameter) &&
           type_of(*row->action.signature, static_cast<std::size_t>(parameter)).out;
}

bool ScriptTypeCore::getParamDefValue(int method, int parameter, GenericValue* out) {
    const ScriptMethod* const row = row_of(table_.methods, method);
    const ScriptParameter* const column = parameter_of(row, parameter);
    return column &&
           default_of(*column, type_of(*row->action.signature, static_cast<std::size_t>(parameter)),
                      out);
}

bool ScriptTypeCore::hasRetVal(int method) {
    const ScriptMethod* const row = row_of(table_.methods, method);
    return row && row->action.signature->hasResult;
}

bool ScriptTypeCore::getPropInfo(int property, ContextValueInfo& info) {
    const ScriptProperty* const row = row_of(table_.properties, property);
    if (!row) return false;
    fill_info(info, row->names,
              row->getter.signature ? row->getter.signature->result
                                    : row->setter.signature->parameters[0].type);
    return true;
}

bool ScriptTypeCore::getMethodReturnInfo(int method, ContextValueInfo& info) {
    const ScriptMethod* const row = row_of(table_.methods, method);
    if (!row || !row->action.signature->hasResult) return false;
    fill_info(info, row->names, row->action.signature->result);
    return true;
}

int ScriptTypeCore::getCtrParamInfos(int constructor, ContextVariantInfo* infos) {
    const ScriptConstructor* const row = row_of(table_.constructors, constructor);
    if (!row) return 0;
    for (std::size_t i = 0; infos && i < row->parameters.size(); ++i)
        fill_info(infos[i], row->parameters.begin()[i].names,
                  type_of(*row->maker.signature, i).type);
    return static_cast<int>(row->parameters.size());
}

int ScriptTypeCore::getMethodParamInfos(int method, int parameter, ContextVariantInfo* infos) {
    const ScriptMethod* const row = row_of(table_.methods, method);
    const ScriptParameter* const column = parameter_of(row, parameter);
    if (!column) return 0;
    if (infos)
        fill_info(*infos, column->names,
                  type_of(*row->action.signature, static_cast<std::size_t>(parameter)).type);
    return 1;
}

} // namespace core
