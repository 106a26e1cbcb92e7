#include "Description.h"

#include <algorithm>

namespace orb {
namespace {

constexpr unsigned kMostArguments = 16; // that a constructor is asked for

stdx::ustring text_or_empty(const char16_t* text) {
    return text ? stdx::ustring(text) : stdx::ustring();
}

template <class Name> Names names_by(Name&& name) {
    return {{text_or_empty(name(0)), text_or_empty(name(1))}};
}

// The description of an object, and its extension for tools, which may be absent.
struct Definition {
    core::InterfacePtr<core::IContextDefBase> base;
    core::InterfacePtr<core::IContextDefExt> tools;
};

PropertyInfo property_of(const Definition& definition, int index) {
    PropertyInfo property;
    property.names =
        names_by([&](int language) { return definition.base->getPropName(index, language); });
    property.readable = definition.base->isPropReadable(index);
    property.writable = definition.base->isPropWritable(index);
    core::ContextValueInfo info;
    if (definition.tools && definition.tools->getPropInfo(index, info)) property.types = info.types;
    return property;
}

ParameterInfo parameter_of(const Definition& definition, int method, int index) {
    ParameterInfo parameter;
    parameter.in = definition.base->isParamIn(method, index);
    parameter.out = definition.base->isParamOut(method, index);
    core::Value value;
    if (definition.base->getParamDefValue(method, index, &value)) parameter.defaultValue = value;
    if (!definition.tools) return parameter;

    const int count = definition.tools->getMethodParamInfos(method, index, nullptr);
    std::vector<core::ContextVariantInfo> variants(static_cast<std::size_t>(std::max(count, 0)));
    if (variants.empty()) return parameter;
    definition.tools->getMethodParamInfos(method, index, variants.data());
    parameter.names = {{variants[0].name, variants[0].russianName}};
    for (const core::ContextVariantInfo& variant : variants) parameter.types.merge(variant.types);
    return parameter;
}

MethodInfo method_of(const Definition& definition, int index) {
    MethodInfo method;
    method.names =
        names_by([&](int language) { return definition.base->getMethodName(index, language); });
    for (int i = 0; i != definition.base->getNParams(index); ++i)
        method.parameters.push_back(parameter_of(definition, index, i));
    method.hasResult = definition.base->hasRetVal(index);
    core::ContextValueInfo info;
    if (definition.tools && definition.tools->getMethodReturnInfo(index, info))
        method.result = info.types;
    return method;
}

} // namespace

std::optional<ClassInfo> describe(IUnknown* object) {
    const core::InterfacePtr<core::IContext_> context(object);
    const core::InterfacePtr<core::IValue> value(object);
    core::InterfacePtr<core::IType> type(object);
    if (!type && value) type = {value->getIType(), true};
    if (!type && !context) return std::nullopt;

    Definition definition;
    definition.base = core::InterfacePtr<core::IContextDefBase>(object);
    // What a script sees of an enumeration is the object that hands out its values.
    if (const core::InterfacePtr<core::IEnumValType> enumeration(type); enumeration)
        definition.base = core::InterfacePtr<core::IContextDefBase>(enumeration->enumValFactory());
    if (context && context->getIContextDef()) definition.base = {context->getIContextDef(), true};
    if (!definition.base && type) definition.base = core::InterfacePtr<core::IContextDefBase>(type);
    definition.tools = core::InterfacePtr<core::IContextDefExt>(definition.base);

    ClassInfo info;
    if (type) {
        info.names = names_by([&](int language) { return type->getTypeString(language); });
        info.clsid = *type->getTypeClsid();
        for (unsigned count = 0; count <= kMostArguments; ++count)
            if (type->hasCtor(count)) info.constructors.push_back(count);
    }
    if (!definition.base) return info;
    for (int i = 0; i != definition.base->getNProps(); ++i)
        info.properties.push_back(property_of(definition, i));
    for (int i = 0; i != definition.base->getNMethods(); ++i)
        info.methods.push_back(method_of(definition, i));
    return info;
}

stdx::ustring type_names(const core::TypeDomainPattern& types, int language) {
    stdx::ustring all;
    types.forEach([&](const _GUID& clsid) {
        if (!all.empty()) all += u", ";
        try {
            all += core::Type(clsid)->getTypeString(language);
        } catch (const core::TypeException&) {
            all += core::to_string(clsid);
        }
    });
    return all;
}

} // namespace orb
