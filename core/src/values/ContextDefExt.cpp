#include <core/values/ContextDefExt.h>

namespace core {

namespace {

// What the extended description answers; without one, nothing.
template <class Answer, class... Parameters, class... Arguments>
Answer ask(IContextDefBase* definition, Answer (IContextDefExt::*question)(Parameters...),
           Arguments&&... arguments) {
    const InterfacePtr<IContextDefExt> extended{static_cast<IUnknown*>(definition)};
    return extended ? (extended.get()->*question)(arguments...) : Answer();
}

} // namespace

bool ContextDefExtForwarder::isCollection() {
    return ask(describing(), &IContextDefExt::isCollection);
}

bool ContextDefExtForwarder::getCollectionItemInfo(ContextValueInfo& info) {
    return ask(describing(), &IContextDefExt::getCollectionItemInfo, info);
}

bool ContextDefExtForwarder::propIndexAccessDisabled(int property) {
    return ask(describing(), &IContextDefExt::propIndexAccessDisabled, property);
}

bool ContextDefExtForwarder::getPropInfo(int property, ContextValueInfo& info) {
    return ask(describing(), &IContextDefExt::getPropInfo, property, info);
}

bool ContextDefExtForwarder::getMethodReturnInfo(int method, ContextValueInfo& info) {
    return ask(describing(), &IContextDefExt::getMethodReturnInfo, method, info);
}

int ContextDefExtForwarder::getCtrParamInfos(int constructor, ContextVariantInfo* infos) {
    return ask(describing(), &IContextDefExt::getCtrParamInfos, constructor, infos);
}

int ContextDefExtForwarder::getMethodParamInfos(int method, int parameter,
                                                ContextVariantInfo* infos) {
    return ask(describing(), &IContextDefExt::getMethodParamInfos, method, parameter, infos);
}

int ContextDefExtForwarder::getEventParamInfos(int event, ContextVariantInfo* infos) {
    return ask(describing(), &IContextDefExt::getEventParamInfos, event, infos);
}

IContextDefBase* ContextDefExtForwarder::getPropContextDefBase(int property) {
    return ask(describing(), &IContextDefExt::getPropContextDefBase, property);
}

IContextDefBase* ContextDefExtForwarder::getMethodReturnContextDefBase(int method) {
    return ask(describing(), &IContextDefExt::getMethodReturnContextDefBase, method);
}

bool ContextDefExtForwarder::isPropDefaultTypeProvider(int property, TypeDomainPattern& types) {
    return ask(describing(), &IContextDefExt::isPropDefaultTypeProvider, property, types);
}

bool ContextDefExtForwarder::isMethodDefaultTypeProvider(int method, TypeDomainPattern& types) {
    return ask(describing(), &IContextDefExt::isMethodDefaultTypeProvider, method, types);
}

bool ContextDefExtForwarder::getPropCatagory(int property, Category category) {
    return ask(describing(), &IContextDefExt::getPropCatagory, property, category);
}

bool ContextDefExtForwarder::getMethodCatagory(int method, Category category) {
    return ask(describing(), &IContextDefExt::getMethodCatagory, method, category);
}

} // namespace core
