// What makes an object scriptable: a numbered list of properties and a numbered list of methods, each
// with a name in English and one in Russian. A script resolves a name to its number once and works by
// number from then on.
//
//   int price = context->findProp(u"Цена");
//   core::Value value;
//   if (price >= 0 && context->isPropReadable(price)) context->getPropVal(price, value);
//
// Numbers run from 0. One that names no member gives null, false or 0. Languages are 0 English and 1
// Russian. core/values/Call.h does in a line what the example does; core/values/ScriptType.h is how
// a type declares its members.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/platform/api.h>
#include <core/values/TypeDomain.h>

#include <vector>

namespace core {

class GenericValue;

inline constexpr _GUID IID_IContextDefBase = "aa6a1d7f-1270-40ef-8988-0175ea2797c3"_guid;
inline constexpr _GUID IID_IContext = "ca2fadb3-9308-4fab-a5ed-44e1df01d26c"_guid;
inline constexpr _GUID IID_IContextDef = "9dd93def-c19e-4599-9530-7a48f5457042"_guid;
inline constexpr _GUID IID_IContextDefExt = "7809a658-7b83-49bd-a897-cf6abc100846"_guid;
inline constexpr _GUID IID_IContextNames = "ae29fc40-54c7-42c0-9fb1-c8211f2bed34"_guid;

// The description of the members.
class IContextDefBase : public IUnknown {
public:
    ORB_INTERFACE(IContextDefBase, IID_IContextDefBase)

    virtual int getNProps() = 0;
    // A constant. Null ends the names of a member, of which there may be more than the two languages.
    virtual const char16_t* getPropName(int property, int language) = 0;
    virtual bool isPropReadable(int property) = 0;
    virtual bool isPropWritable(int property) = 0;
    // By a name in any language, in any case of letters; -1 when no property has it.
    virtual int findProp(const stdx::ustring& name) = 0;

    virtual int getNMethods() = 0;
    virtual const char16_t* getMethodName(int method, int language) = 0;
    virtual int getNParams(int method) = 0;
    virtual bool isParamIn(int method, int parameter) = 0;
    virtual bool isParamOut(int method, int parameter) = 0;
    // Whether the parameter may be left out; its default value then, where `out` is given.
    virtual bool getParamDefValue(int method, int parameter, GenericValue* out) = 0;
    virtual bool hasRetVal(int method) = 0;
    virtual int findMethod(const stdx::ustring& name) = 0;
};

// The object itself. What an implementation throws passes, `ContextException` above all.
class IContext_ : public IContextDefBase {
public:
    ORB_INTERFACE(IContext_, IID_IContext)

    // Lent; null when the object describes itself.
    virtual IContextDefBase* getIContextDef() = 0;
    virtual bool getPropVal(int property, GenericValue& out) = 0;
    virtual bool setPropVal(int property, const GenericValue& value) = 0;
    // One argument for each parameter; what the method writes goes to the argument. `result` is null
    // when the caller takes none.
    virtual bool call(int method, GenericValue* result, std::vector<GenericValue*>& arguments) = 0;
};

// The description that a type gives to the contexts of its values.
class IContextDef : public IContextDefBase {
public:
    ORB_INTERFACE(IContextDef, IID_IContextDef)
};

// The names of properties as string objects, for descriptions in which they are no constants.
class IContextNames : public IUnknown {
public:
    ORB_INTERFACE(IContextNames, IID_IContextNames)

    // Null ends the names of a member. Lent until the description changes.
    virtual const stdx::ustring* getName(int property, int language) = 0;
};

// A property, a result or a parameter for people and design tools.
struct ContextValueInfo {
    stdx::ustring name;        // English
    stdx::ustring russianName; // Russian
    TypeDomainPattern types;   // that it can have
    bool typesUnknown = true;
};

// A parameter, and one variant of it where a method or constructor has several.
using ContextVariantInfo = ContextValueInfo;

// The extended description, for design tools and completion of code; every answer may be "nothing".
class IContextDefExt : public IUnknown {
public:
    ORB_INTERFACE(IContextDefExt, IID_IContextDefExt)

    enum class Category : int {};

    virtual bool isCollection() = 0;
    virtual bool getCollectionItemInfo(ContextValueInfo& info) = 0;
    virtual bool propIndexAccessDisabled(int property) = 0;
    virtual bool getPropInfo(int property, ContextValueInfo& info) = 0;
    virtual bool getMethodReturnInfo(int method, ContextValueInfo& info) = 0;
    // The number of parameters of a constructor, the variants of a parameter, those of an event;
    // with `infos` they are written there, in their order.
    virtual int getCtrParamInfos(int constructor, ContextVariantInfo* infos) = 0;
    virtual int getMethodParamInfos(int method, int parameter, ContextVariantInfo* infos) = 0;
    virtual int getEventParamInfos(int event, ContextVariantInfo* infos) = 0;
    virtual IContextDefBase* getPropContextDefBase(int property) = 0;       // lent, or null
    virtual IContextDefBase* getMethodReturnContextDefBase(int method) = 0; // lent, or null
    virtual bool isPropDefaultTypeProvider(int property, TypeDomainPattern& types) = 0;
    virtual bool isMethodDefaultTypeProvider(int method, TypeDomainPattern& types) = 0;
    virtual bool getPropCatagory(int property, Category category) = 0;
    virtual bool getMethodCatagory(int method, Category category) = 0;
};

} // namespace core
