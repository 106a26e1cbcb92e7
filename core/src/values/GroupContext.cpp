#include <core/values/GroupContext.h>

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>

#include <algorithm>

namespace core {

namespace {

using Contexts = std::vector<InterfacePtr<IContext_>>;
using Count = int (IContextDefBase::*)();
using Find = int (IContextDefBase::*)(const stdx::ustring&);

int sum_of(const Contexts& contexts, Count count) {
    int sum = 0;
    for (const auto& context : contexts) sum += (context.get()->*count)();
    return sum;
}

int find_in(const Contexts& contexts, Find find, Count count, const stdx::ustring& name) {
    int before = 0;
    for (const auto& context : contexts) {
        const int found = (context.get()->*find)(name);
        if (found >= 0) return before + found;
        before += (context.get()->*count)();
    }
    return -1;
}

IContext_* context_at(const Contexts& contexts, Count count, int& position) {
    if (position < 0) return nullptr;
    for (const auto& context : contexts) {
        const int members = (context.get()->*count)();
        if (position < members) return context.get();
        position -= members;
    }
    return nullptr;
}

// What the context answers, held meanwhile, as it may be taken out of the group by what it does.
// Without a context, nothing.
template <class Answer, class Interface, class... Parameters, class... Arguments>
Answer ask(IContext_* context, Answer (Interface::*question)(Parameters...),
           Arguments&&... arguments) {
    const InterfacePtr<IContext_> held(context, true);
    return held ? (held.get()->*question)(arguments...) : Answer();
}

} // namespace

int GroupContext::getNProps() {
    return sum_of(contexts_, &IContextDefBase::getNProps);
}

const char16_t* GroupContext::getPropName(int property, int language) {
    IContext_* const context = findContextByPropPos(property);
    return ask(context, &IContext_::getPropName, property, language);
}

bool GroupContext::isPropReadable(int property) {
    IContext_* const context = findContextByPropPos(property);
    return ask(context, &IContext_::isPropReadable, property);
}

bool GroupContext::isPropWritable(int property) {
    IContext_* const context = findContextByPropPos(property);
    return ask(context, &IContext_::isPropWritable, property);
}

int GroupContext::findProp(const stdx::ustring& name) {
    return find_in(contexts_, &IContextDefBase::findProp, &IContextDefBase::getNProps, name);
}

int GroupContext::getNMethods() {
    return sum_of(contexts_, &IContextDefBase::getNMethods);
}

const char16_t* GroupContext::getMethodName(int method, int language) {
    IContext_* const context = findContextByMethodPos(method);
    return ask(context, &IContext_::getMethodName, method, language);
}

int GroupContext::getNParams(int method) {
    IContext_* const context = findContextByMethodPos(method);
    return ask(context, &IContext_::getNParams, method);
}

bool GroupContext::isParamIn(int method, int parameter) {
    IContext_* const context = findContextByMethodPos(method);
    return ask(context, &IContext_::isParamIn, method, parameter);
}

bool GroupContext::isParamOut(int method, int parameter) {
    IContext_* const context = findContextByMethodPos(method);
    return ask(context, &IContext_::isParamOut, method, parameter);
}

bool GroupContext::getParamDefValue(int method, int parameter, GenericValue* out) {
    IContext_* const context = findContextByMethodPos(method);
    return ask(context, &IContext_::getParamDefValue, method, parameter, out);
}

bool GroupContext::hasRetVal(int method) {
    IContext_* const context = findContextByMethodPos(method);
    return ask(context, &IContext_::hasRetVal, method);
}

int GroupContext::findMethod(const stdx::ustring& name) {
    return find_in(contexts_, &IContextDefBase::findMethod, &IContextDefBase::getNMethods, name);
}

bool GroupContext::getPropVal(int property, GenericValue& out) {
    IContext_* const context = findContextByPropPos(property);
    return ask(context, &IContext_::getPropVal, property, out);
}

bool GroupContext::setPropVal(int property, const GenericValue& value) {
    IContext_* const context = findContextByPropPos(property);
    return ask(context, &IContext_::setPropVal, property, value);
}

bool GroupContext::call(int method, GenericValue* result, std::vector<GenericValue*>& arguments) {
    IContext_* const context = findContextByMethodPos(method);
    return ask(context, &IContext_::call, method, result, arguments);
}

void GroupContext::addContext(IContext_* context) {
    if (context) contexts_.emplace_back(context, true);
}

// Contexts are released when the group is whole again: their ends may come back to it.

void GroupContext::removeContext(IContext_* context) {
    const auto found = std::find(contexts_.begin(), contexts_.end(), context);
    if (found == contexts_.end()) return;
    const InterfacePtr<IContext_> removed = std::move(*found);
    contexts_.erase(found);
}

void GroupContext::changeContext(IContext_* former, IContext_* context) {
    const auto found = std::find(contexts_.begin(), contexts_.end(), former);
    if (!context || found == contexts_.end()) return;
    InterfacePtr<IContext_> other(context, true);
    found->swap(other);
}

void GroupContext::reset() {
    const Contexts removed = std::exchange(contexts_, {});
}

IContext_* GroupContext::findContextByPropPos(int& position) {
    return context_at(contexts_, &IContextDefBase::getNProps, position);
}

IContext_* GroupContext::findContextByMethodPos(int& position) {
    return context_at(contexts_, &IContextDefBase::getNMethods, position);
}

// ---- Stable groups

void StableGroupContextBase::addContext(IContext_* context) {
    if (!context || !context->getIContextDef()) return;
    GroupContext::addContext(context);
    count();
}

void StableGroupContextBase::removeContext(IContext_* context) {
    GroupContext::removeContext(context);
    count();
}

void StableGroupContextBase::changeContext(IContext_* former, IContext_* context) {
    if (!former || !context || !context->getIContextDef() ||
        former->getNProps() != context->getNProps() ||
        former->getNMethods() != context->getNMethods())
        return;
    GroupContext::changeContext(former, context);
}

void StableGroupContextBase::reset() {
    GroupContext::reset();
    count();
}

void StableGroupContextBase::count() {
    properties_ = GroupContext::getNProps();
    methods_ = GroupContext::getNMethods();
}

namespace {

// The interface of a stable group, for classes that are one.
class StableGroup
    : public StableGroupContextBase
    , public IStableGroupContext {
public:
    void addContext(IContext_* context) override { StableGroupContextBase::addContext(context); }
    void removeContext(IContext_* context) override {
        StableGroupContextBase::removeContext(context);
    }
    void changeContext(IContext_* former, IContext_* context) override {
        StableGroupContextBase::changeContext(former, context);
    }
};

class StableGroupContext
    : public ObjectRoot
    , public SCOM_Class<StableGroupContext, &CLSID_StableGroupContext>
    , public StableGroup {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<StableGroupContext, IContext_, IContextDefBase, IStableGroupContext>();
    }
};

class IntContextRedirector
    : public ObjectRoot
    , public SCOM_Class<IntContextRedirector, &CLSID_IntContextRedirector>
    , public StableGroup
    , public IIntContextRedirector {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<IntContextRedirector, IContext_, IContextDefBase, IStableGroupContext,
                             IIntContextRedirector>();
    }

    void setContext(IContext_* primary) override {
        primary_ = primary;
        properties_ = primary ? primary->getNProps() : 0;
        methods_ = primary ? primary->getNMethods() : 0;
    }

    int getNProps() override { return properties_ + StableGroup::getNProps(); }
    int getNMethods() override { return methods_ + StableGroup::getNMethods(); }
    IContextDefBase* getIContextDef() override {
        return primary_ ? primary_->getIContextDef() : nullptr;
    }
    int findProp(const stdx::ustring& name) override {
        const int own = primary_ ? primary_->findProp(name) : -1;
        if (own >= 0) return own;
        const int others = StableGroup::findProp(name);
        return others < 0 ? others : properties_ + others;
    }
    int findMethod(const stdx::ustring& name) override {
        const int own = primary_ ? primary_->findMethod(name) : -1;
        if (own >= 0) return own;
        const int others = StableGroup::findMethod(name);
        return others < 0 ? others : methods_ + others;
    }

protected:
    IContext_* findContextByPropPos(int& position) override {
        if (position < 0) return nullptr;
        if (position < properties_) return primary_;
        position -= properties_;
        return StableGroup::findContextByPropPos(position);
    }
    IContext_* findContextByMethodPos(int& position) override {
        if (position < 0) return nullptr;
        if (position < methods_) return primary_;
        position -= methods_;
        return StableGroup::findContextByMethodPos(position);
    }

private:
    IContext_* primary_ = nullptr; // not counted
    int properties_ = 0;           // of the primary
    int methods_ = 0;
};

class ContextDefToContext
    : public ObjectRoot
    , public SCOM_Class<ContextDefToContext, &CLSID_ContextDefToContext>
    , public ContextDefForwarder
    , public IContextDefToContext {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<ContextDefToContext, IContext_, IContextDefBase,
                             IContextDefToContext>();
    }

    void setContextDef(IContextDefBase* definition) override { definition_ = {definition, true}; }
    IContextDefBase* getIContextDef() override { return definition_.get(); }

private:
    InterfacePtr<IContextDefBase> definition_;
};

} // namespace

} // namespace core

ORBCORE_REGISTER(core::StableGroupContext);
ORBCORE_REGISTER(core::IntContextRedirector);
ORBCORE_REGISTER(core::ContextDefToContext);
