// Contexts whose members are data: lists of names, of which each member has any number.
#pragma once

#include <core/component/Object.h>
#include <core/component/Registration.h>
#include <core/component/Utf8.h>
#include <core/values/ContextDef.h>
#include <core/values/Value.h>

#include <string>
#include <vector>

namespace test {

using Names = std::vector<std::vector<stdx::ustring>>; // of each member

inline const char16_t* name_in(const Names& names, int member, int language) {
    if (member < 0 || static_cast<std::size_t>(member) >= names.size()) return nullptr;
    const auto& all = names[static_cast<std::size_t>(member)];
    return static_cast<std::size_t>(language) < all.size()
               ? all[static_cast<std::size_t>(language)].c_str()
               : nullptr;
}

// Has properties and methods of the same names. A property is the text `prefix` and its number; a
// method takes one argument and gives it back behind the prefix. It finds names by `Cache`.
template <class Cache>
class Listed
    : public core::ObjectRoot
    , public core::SCOM_InternalClass<Listed<Cache>>
    , public core::IContextImpl<
          core::ContextDefIntern<Listed<Cache>, Cache, core::ContextStability::Changing>> {
public:
    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<Listed, core::IContext_>();
    }

    explicit Listed(Names names, stdx::ustring prefix = {}, bool isFilled = true)
        : names_(std::move(names)), prefix_(std::move(prefix)) {
        if (isFilled) this->fillCaches();
    }
    ~Listed() {
        if (died) *died = true;
    }

    void rename(Names names) {
        names_ = std::move(names);
        this->cache().resetPropsCache();
        this->cache().resetMethodsCache();
    }

    int getNProps() override { return static_cast<int>(names_.size()); }
    const char16_t* getPropName(int property, int language) override {
        return name_in(names_, property, language);
    }
    bool isPropWritable(int) override { return false; }
    int getNMethods() override { return getNProps(); }
    const char16_t* getMethodName(int method, int language) override {
        return name_in(names_, method, language);
    }
    int getNParams(int) override { return 1; }
    bool isParamOut(int, int) override { return false; }
    bool getParamDefValue(int, int, core::GenericValue* out) override {
        if (out) out->assign(u"nothing");
        return true;
    }
    bool hasRetVal(int) override { return true; }
    core::IContextDefBase* getIContextDef() override { return isStable ? this : nullptr; }
    bool getPropVal(int property, core::GenericValue& out) override {
        if (onRead) onRead();
        out.assign(prefix_ + core::from_utf8(std::to_string(property)));
        return true;
    }
    bool call(int, core::GenericValue* result,
              std::vector<core::GenericValue*>& arguments) override {
        if (result) result->assign(prefix_ + core::to_string(*arguments.at(0)));
        return true;
    }

    bool isStable = true;
    bool* died = nullptr;
    void (*onRead)() = nullptr;

private:
    Names names_;
    stdx::ustring prefix_;
};

using Sample = Listed<core::ContextDefNoncached>;

} // namespace test
