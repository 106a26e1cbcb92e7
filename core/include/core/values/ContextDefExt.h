// The extended description that answers nothing, for classes to override what they know; and the one
// of a value that asks its type.
#pragma once

#include <core/values/IContext.h>

namespace core {

class ORBCORE_API ContextDefExtCore : public IContextDefExt {
public:
    bool isCollection() override { return false; }
    bool getCollectionItemInfo(ContextValueInfo&) override { return false; }
    bool propIndexAccessDisabled(int) override { return false; }
    bool getPropInfo(int, ContextValueInfo&) override { return false; }
    bool getMethodReturnInfo(int, ContextValueInfo&) override { return false; }
    int getCtrParamInfos(int, ContextVariantInfo*) override { return 0; }
    int getMethodParamInfos(int, int, ContextVariantInfo*) override { return 0; }
    int getEventParamInfos(int, ContextVariantInfo*) override { return 0; }
    IContextDefBase* getPropContextDefBase(int) override { return nullptr; }
    IContextDefBase* getMethodReturnContextDefBase(int) override { return nullptr; }
    bool isPropDefaultTypeProvider(int, TypeDomainPattern&) override { return false; }
    bool isMethodDefaultTypeProvider(int, TypeDomainPattern&) override { return false; }
    bool getPropCatagory(int, Category) override { return false; }
    bool getMethodCatagory(int, Category) override { return false; }
};

// Asks another object, which may have no extended description.
class ORBCORE_API ContextDefExtForwarder : public IContextDefExt {
public:
    bool isCollection() override;
    bool getCollectionItemInfo(ContextValueInfo& info) override;
    bool propIndexAccessDisabled(int property) override;
    bool getPropInfo(int property, ContextValueInfo& info) override;
    bool getMethodReturnInfo(int method, ContextValueInfo& info) override;
    int getCtrParamInfos(int constructor, ContextVariantInfo* infos) override;
    int getMethodParamInfos(int method, int parameter, ContextVariantInfo* infos) override;
    int getEventParamInfos(int event, ContextVariantInfo* infos) override;
    IContextDefBase* getPropContextDefBase(int property) override;
    IContextDefBase* getMethodReturnContextDefBase(int method) override;
    bool isPropDefaultTypeProvider(int property, TypeDomainPattern& types) override;
    bool isMethodDefaultTypeProvider(int method, TypeDomainPattern& types) override;
    bool getPropCatagory(int property, Category category) override;
    bool getMethodCatagory(int method, Category category) override;

protected:
    virtual IContextDefBase* describing() = 0; // lent, or null
};

// Adds the extended description to `T`. `onValue`: `T` is a context, and its type answers.
// `collection` is the answer of one that answers itself.
template <class T, bool onValue = false, bool collection = false>
class ContextDefExtImpl : public ContextDefExtCore {
public:
    bool isCollection() override { return collection; }
};
template <class T, bool collection>
class ContextDefExtImpl<T, true, collection> : public ContextDefExtForwarder {
    IContextDefBase* describing() override { return static_cast<T*>(this)->getIContextDef(); }
};

} // namespace core
