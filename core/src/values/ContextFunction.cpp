#include <core/values/ContextFunction.h>

#include <core/component/IllegalArgumentException.h>
#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/component/SCOM_Process.h>
#include <core/component/UnsupportedOperationException.h>
#include <core/values/Value.h>

namespace core {

namespace {

// A context that is held, or that somebody else keeps alive.
class ContextHold {
public:
    ContextHold(IContext_* context, bool weak) noexcept
        : context_(context), held_(weak ? nullptr : context, true) {}

    IContext_* operator->() const noexcept { return context_; }

private:
    IContext_* context_;
    InterfacePtr<IContext_> held_;
};

class ContextMethodParameter
    : public ObjectRoot
    , public SCOM_InternalClass<ContextMethodParameter>
    , public IParameter {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<ContextMethodParameter, IParameter>();
    }

    ContextMethodParameter(const ContextHold& context, int method, int parameter)
        : context_(context), method_(method), parameter_(parameter) {}

    bool isIn() override { return context_->isParamIn(method_, parameter_); }
    bool isOut() override { return context_->isParamOut(method_, parameter_); }
    bool getDefValue(GenericValue* out) override {
        return context_->getParamDefValue(method_, parameter_, out);
    }

private:
    ContextHold context_;
    int method_;
    int parameter_;
};

class ContextMethodFunction
    : public ObjectRoot
    , public SCOM_InternalClass<ContextMethodFunction>
    , public IFunction {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<ContextMethodFunction, IFunction>();
    }

    ContextMethodFunction(IContext_* context, int method, bool weak)
        : context_(context, weak), method_(method) {}

    bool hasRetVal() override { return context_->hasRetVal(method_); }
    int getNParams() override { return context_->getNParams(method_); }
    IParameter* getParameter(int parameter) override {
        if (parameters_.empty()) makeParameters();
        const auto index = static_cast<std::size_t>(static_cast<unsigned>(parameter));
        return index < parameters_.size() ? parameters_[index].get() : nullptr;
    }
    bool call(GenericValue* result, std::vector<GenericValue*>& arguments) override {
        return context_->call(method_, result, arguments);
    }

private:
    void makeParameters() {
        std::vector<InterfacePtr<IParameter>> made;
        const int count = getNParams();
        for (int i = 0; i < count; ++i)
            made.push_back(make_object<ContextMethodParameter>(context_, method_, i));
        parameters_ = std::move(made); // all or none
    }

    ContextHold context_;
    int method_;
    std::vector<InterfacePtr<IParameter>> parameters_; // made at the first question
};

} // namespace

InterfacePtr<IFunction> context_method_to_function(IContext_* context, int method, bool weak) {
    ORB_ASSERT(context && method >= 0 && method < context->getNMethods());
    return make_object<ContextMethodFunction>(context, method, weak);
}

InterfacePtr<IFunction> context_method_to_function(IContext_* context, const stdx::ustring& name,
                                                   bool weak) {
    ORB_ASSERT(context);
    return context_method_to_function(context, context->findMethod(name), weak);
}

bool call_old_async_as_new(IContext_* context, int method, GenericValue* result,
                           std::vector<GenericValue*>& arguments, bool flag) {
    ORB_ASSERT(context);
    const auto promise = create_object<IMethodPromise>(CLSID_MethodPromise);
    if (!promise)
        throw UnsupportedOperationException(ORB_HERE, u"CLSID_MethodPromise " +
                                                          to_string(CLSID_MethodPromise));
    Value callback;
    promise->getCallback(flag, callback);
    std::vector<GenericValue*> all{&callback};
    all.insert(all.end(), arguments.begin(), arguments.end());
    if (!context->call(method, nullptr, all)) return false;
    if (result) result->assign(promise.get());
    return true;
}

} // namespace core
