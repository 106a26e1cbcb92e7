#include <core/values/ContextDef.h>

namespace core {

int ContextDefForwarder::getNProps() {
    IContextDefBase* const definition = getIContextDef();
    return definition ? definition->getNProps() : ContextCore::getNProps();
}

const char16_t* ContextDefForwarder::getPropName(int property, int language) {
    IContextDefBase* const definition = getIContextDef();
    return definition ? definition->getPropName(property, language)
                      : ContextCore::getPropName(property, language);
}

bool ContextDefForwarder::isPropReadable(int property) {
    IContextDefBase* const definition = getIContextDef();
    return definition ? definition->isPropReadable(property)
                      : ContextCore::isPropReadable(property);
}

bool ContextDefForwarder::isPropWritable(int property) {
    IContextDefBase* const definition = getIContextDef();
    return definition ? definition->isPropWritable(property)
                      : ContextCore::isPropWritable(property);
}

int ContextDefForwarder::findProp(const stdx::ustring& name) {
    IContextDefBase* const definition = getIContextDef();
    return definition ? definition->findProp(name) : ContextCore::findProp(name);
}

int ContextDefForwarder::getNMethods() {
    IContextDefBase* const definition = getIContextDef();
    return definition ? definition->getNMethods() : ContextCore::getNMethods();
}

const char16_t* ContextDefForwarder::getMethodName(int method, int language) {
    IContextDefBase* const definition = getIContextDef();
    return definition ? definition->getMethodName(method, language)
                      : ContextCore::getMethodName(method, language);
}

int ContextDefForwarder::getNParams(int method) {
    IContextDefBase* const definition = getIContextDef();
    return definition ? definition->getNParams(method) : ContextCore::getNParams(method);
}

bool ContextDefForwarder::isParamIn(int method, int parameter) {
    IContextDefBase* const definition = getIContextDef();
    return definition ? definition->isParamIn(method, parameter)
                      : ContextCore::isParamIn(method, parameter);
}

bool ContextDefForwarder::isParamOut(int method, int parameter) {
    IContextDefBase* const definition = getIContextDef();
    return definition ? definition->isParamOut(method, parameter)
                      : ContextCore::isParamOut(method, parameter);
}

bool ContextDefForwarder::getParamDefValue(int method, int parameter, GenericValue* out) {
    IContextDefBase* const definition = getIContextDef();
    return definition ? definition->getParamDefValue(method, parameter, out)
                      : ContextCore::getParamDefValue(method, parameter, out);
}

bool ContextDefForwarder::hasRetVal(int method) {
    IContextDefBase* const definition = getIContextDef();
    return definition ? definition->hasRetVal(method) : ContextCore::hasRetVal(method);
}

int ContextDefForwarder::findMethod(const stdx::ustring& name) {
    IContextDefBase* const definition = getIContextDef();
    return definition ? definition->findMethod(name) : ContextCore::findMethod(name);
}

} // namespace core
