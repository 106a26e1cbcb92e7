#include <core/component/LoggerPolicy.h>

#include <core/component/ClassDescriptor.h>
#include <core/component/Object.h>
#include <core/component/Refcountable.h>

#include <map>
#include <optional>
#include <string_view>

namespace core {
namespace {

using ClassOfComponent = std::pair<std::string, std::string>; // component, class

struct ByNames {
    using is_transparent = void;
    using View = std::pair<std::string_view, std::string_view>;
    static View view(const ClassOfComponent& pair) noexcept { return {pair.first, pair.second}; }
    static View view(const View& pair) noexcept { return pair; }
    bool operator()(const auto& a, const auto& b) const noexcept { return view(a) < view(b); }
};

// What a factory and the policies that it made share. It is changed by a factory that is its only
// owner, so a policy sees data that no longer changes.
class Levels : public Refcountable<Levels, AtomicCounter> {
public:
    SCOM_LogLevel default_ = SCOM_LogLevel::None;
    std::map<std::string, SCOM_LogLevel, std::less<>> components;
    std::map<std::string, SCOM_LogLevel, std::less<>> classes;
    std::map<ClassOfComponent, SCOM_LogLevel, ByNames> pairs;

    SCOM_LogLevel level_of(const char* component, const char* className) const {
        const auto in = [](const auto& map, const auto& key) -> std::optional<SCOM_LogLevel> {
            const auto found = map.find(key);
            return found == map.end() ? std::nullopt : std::optional(found->second);
        };
        std::optional<SCOM_LogLevel> level;
        if (className && component) level = in(pairs, ByNames::View(component, className));
        if (!level && className) level = in(classes, std::string_view(className));
        if (!level && component) level = in(components, std::string_view(component));
        return level.value_or(default_);
    }
};

class SCOM_LoggerPolicy
    : public ObjectRoot
    , public SCOM_InternalClass<SCOM_LoggerPolicy>
    , public ISCOM_LoggerPolicy {
public:
    explicit SCOM_LoggerPolicy(InterfacePtr<Levels> levels) : levels_(std::move(levels)) {}

    static const InterfaceEntry* _GetEntries() {
        return interface_map<SCOM_LoggerPolicy, ISCOM_LoggerPolicy>();
    }

    bool isEnabled(SCOM_LogLevel level, const char* component, const char* className) override {
        return level != SCOM_LogLevel::None && levels_->level_of(component, className) <= level;
    }

    SCOM_LoggerComponentLevels getComponentLevels(const char* component) override {
        SCOM_LoggerComponentLevels result;
        if (!component) return result;
        result.component = component;
        if (const auto own = levels_->components.find(result.component);
            own != levels_->components.end())
            result.level = own->second;
        for (auto pair = levels_->pairs.lower_bound(ByNames::View(component, ""));
             pair != levels_->pairs.end() && pair->first.first == result.component; ++pair)
            result.classes.emplace_back(pair->first.second, pair->second);
        return result;
    }

private:
    const InterfacePtr<Levels> levels_;
};

class SCOM_LoggerPolicyFactory
    : public ObjectRoot
    , public SCOM_Class<SCOM_LoggerPolicyFactory, &CLSID_SCOM_LoggerPolicyFactory>
    , public ISCOM_LoggerPolicyFactory {
public:
    static constexpr bool kAggregatable = true;
    static const InterfaceEntry* _GetEntries() {
        return interface_map<SCOM_LoggerPolicyFactory, ISCOM_LoggerPolicyFactory>();
    }

    void setLevel(SCOM_LogLevel level, const char* component, const char* className) override {
        Levels& levels = own_levels();
        if (component && className)
            levels.pairs[{component, className}] = level;
        else if (className)
            levels.classes[className] = level;
        else if (component)
            levels.components[component] = level;
        else
            levels.default_ = level;
    }

    InterfacePtr<ISCOM_LoggerPolicy> createPolicy() override {
        return make_object<SCOM_LoggerPolicy>(levels_);
    }

private:
    // A policy that ends on another thread lowers the count with release, and the count is read
    // with acquire: who finds itself the only owner comes after all reads of the others.
    Levels& own_levels() {
        if (levels_->references() != 1) levels_ = {new Levels(*levels_), true};
        return *levels_;
    }

    InterfacePtr<Levels> levels_{new Levels, true};
};

} // namespace
} // namespace core

ORBCORE_REGISTER(core::SCOM_LoggerPolicyFactory);
