// A type that scripts can use, from one table: the class of the values is written out, the type
// follows from it.
//
//   class Invoice
//       : public core::ObjectRoot
//       , public core::SCOM_Class<Invoice, &CLSID_Invoice>
//       , public core::ScriptValue<Invoice, &CLSID_InvoiceType> {
//   public:
//       static constexpr core::Term name = {u"Invoice", u"Накладная"};
//       static const core::ScriptTable members; // see core/values/ScriptTable.h
//       static const core::InterfaceEntry* _GetEntries() {
//           return core::script_interface_map<Invoice>();
//       }
//       …
//   };
//
//   ORBCORE_REGISTER(Invoice);                      // both in the source
//   ORBCORE_REGISTER(core::ScriptType<Invoice>);
//
// docs/scriptable-types.md goes through a whole one. Costs: a value has two words of its own besides
// those of its interfaces; the names are found by a table that each process makes once; a property or
// a method by number is one call through the table more than a virtual call.
#pragma once

#include <core/component/ClassDescriptor.h>
#include <core/component/Messages.h>
#include <core/component/ObjectRoot.h>
#include <core/component/Registration.h>
#include <core/values/ContextDef.h>
#include <core/values/ContextDefExt.h>
#include <core/values/IValue.h>
#include <core/values/ScriptTable.h>

namespace core {

// The bases of a value `X` of the type with this class GUID. `X` has `name` and `members`.
template <class X, const _GUID* typeClsid>
class ScriptValue
    : public ValueImplBase
    , public IContextExtImplBase {
public:
    static constexpr const _GUID* kTypeClsid = typeClsid;

    const _GUID& getTypeClsid() override { return *typeClsid; }
    // False for a number that names no member, for one that cannot be read or written, and for
    // another number of arguments than the table has.
    bool getPropVal(int property, GenericValue& out) override {
        const ScriptProperty* const row = detail::row_of(X::members.properties, property);
        if (!row || !row->getter.invoke) return false;
        row->getter.invoke(static_cast<X*>(this), out);
        return true;
    }
    bool setPropVal(int property, const GenericValue& value) override {
        const ScriptProperty* const row = detail::row_of(X::members.properties, property);
        if (!row || !row->setter.invoke) return false;
        row->setter.invoke(static_cast<X*>(this), value);
        return true;
    }
    bool call(int method, GenericValue* result, std::vector<GenericValue*>& arguments) override {
        const ScriptMethod* const row = detail::row_of(X::members.methods, method);
        if (!row || arguments.size() != row->parameters.size()) return false;
        row->action.invoke(static_cast<X*>(this), result, arguments);
        return true;
    }
};

// The interface map of a value, with the interfaces that it has besides.
template <class X, class... Others> const InterfaceEntry* script_interface_map() noexcept {
    return interface_map<X, IValue, IContext_, IContextDefBase, Others...>();
}

// What the types of tables have in common. The table and the texts are constants.
class ORBCORE_API ScriptTypeCore
    : public ObjectTypeCore
    , public IContextDefImpl<ScriptTypeCore>
    , public ContextDefExtCore {
public:
    const char16_t* getTypeString(int language) override { return term_string(name_, language); }
    bool hasCtor(unsigned count) override;
    InterfacePtr<IValue> ctor(const std::vector<GenericValue*>& arguments) override;

    int getNProps() override { return static_cast<int>(table_.properties.size()); }
    const char16_t* getPropName(int property, int language) override;
    bool isPropReadable(int property) override;
    bool isPropWritable(int property) override;
    int getNMethods() override { return static_cast<int>(table_.methods.size()); }
    const char16_t* getMethodName(int method, int language) override;
    int getNParams(int method) override;
    bool isParamIn(int method, int parameter) override;
    bool isParamOut(int method, int parameter) override;
    bool getParamDefValue(int method, int parameter, GenericValue* out) override;
    bool hasRetVal(int method) override;

    bool getPropInfo(int property, ContextValueInfo& info) override;
    bool getMethodReturnInfo(int method, ContextValueInfo& info) override;
    int getCtrParamInfos(int constructor, ContextVariantInfo* infos) override;
    int getMethodParamInfos(int method, int parameter, ContextVariantInfo* infos) override;

protected:
    ScriptTypeCore(const Term& name, const ScriptTable& table);

private:
    const Term& name_;
    const ScriptTable& table_;
};

// The bases of the type `X` of the value `V`, for types that add something of their own.
template <class X, class V> class ScriptTypeImpl : public ScriptTypeCore {
public:
    static constexpr auto aliases = core::aliases(V::name.first, V::name.second);
    static constexpr auto categories = core::categories(&CATID_Type);
    static const InterfaceEntry* _GetEntries() {
        return interface_map<X, IType, IContextDef, IContextDefBase, IContextDefExt>();
    }

    const _GUID* getTypeClsid() override { return V::kTypeClsid; }
    // By the message of `V::presentation`, if there is one, in the bundle of the module.
    void getString(stdx::ustring& out) override {
        if constexpr (requires { V::presentation; })
            out = load_wstring(this_module().resourceBundle(), V::presentation);
        else
            out.clear();
    }
    InterfacePtr<IValue> createIValue() override { return make_object<V>(); }

protected:
    ScriptTypeImpl() : ScriptTypeCore(V::name, V::members) {}
};

// The type of the value `V`, complete.
template <class V>
class ScriptType
    : public ObjectRoot
    , public SCOM_Singleton<ScriptType<V>, V::kTypeClsid>
    , public ScriptTypeImpl<ScriptType<V>, V> {};

} // namespace core
