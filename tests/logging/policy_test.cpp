#include <core/component/LoggerPolicy.h>

#include <core/component/SCOM_Process.h>

#include "support/ProcessTest.h"

#include <string>
#include <utility>
#include <vector>

namespace {

using namespace core;
using enum SCOM_LogLevel;

class LoggerPolicy : public test::ProcessTest {
protected:
    void set(SCOM_LogLevel level, const char* component, const char* className) {
        factory_->setLevel(level, component, className);
    }
    // The lowest level that passes now; `None` when there is none.
    SCOM_LogLevel passing(const char* component, const char* className) {
        return passing(*factory_->createPolicy(), component, className);
    }
    static SCOM_LogLevel passing(ISCOM_LoggerPolicy& policy, const char* component,
                                 const char* className) {
        SCOM_LogLevel lowest = None;
        for (const SCOM_LogLevel level : {Error, Warning, Info, Debug, Trace})
            if (policy.isEnabled(level, component, className)) lowest = level;
        EXPECT_FALSE(policy.isEnabled(None, component, className));
        return lowest;
    }

    InterfacePtr<ISCOM_LoggerPolicyFactory> factory_ =
        create_object<ISCOM_LoggerPolicyFactory>(CLSID_SCOM_LoggerPolicyFactory);
};

TEST_F(LoggerPolicy, LetsNothingPassAtFirst) {
    EXPECT_EQ(passing("a", "X"), None);
    EXPECT_EQ(passing(nullptr, nullptr), None);
}

TEST_F(LoggerPolicy, TheNearestLevelDecides) {
    set(Warning, nullptr, nullptr);
    set(Trace, "a", nullptr);
    set(Error, nullptr, "X");
    set(Info, "a", "X");
    set(None, "a", "Silent");
    const struct {
        const char *component, *className;
        SCOM_LogLevel lowest;
    } rows[] = {
        {"a", "X", Info},  // the pair
        {"b", "X", Error}, // the class
        {nullptr, "X", Error},
        {"a", "Y", Trace}, // the component
        {"a", nullptr, Trace},
        {"b", "Y", Warning}, // the default
        {nullptr, nullptr, Warning},
        {"a", "Silent", None},
        {"A", "x", Warning}, // names are taken exactly
    };
    for (const auto& row : rows)
        EXPECT_EQ(passing(row.component, row.className), row.lowest)
            << (row.component ? row.component : "-") << ' '
            << (row.className ? row.className : "-");
}

TEST_F(LoggerPolicy, ALaterLevelReplacesTheFormer) {
    set(Trace, "a", "X");
    set(Error, "a", "X");
    EXPECT_EQ(passing("a", "X"), Error);
    EXPECT_EQ(factory_->createPolicy()->getComponentLevels("a").classes.size(), 1u);
}

TEST_F(LoggerPolicy, DoesNotChange) {
    set(Info, "a", nullptr);
    const auto before = factory_->createPolicy();
    set(Error, "a", nullptr);
    set(Trace, nullptr, nullptr);
    set(Trace, "a", "X");
    EXPECT_EQ(passing(*before, "a", "X"), Info);
    EXPECT_EQ(passing(*before, "b", nullptr), None);
    EXPECT_EQ(passing("a", nullptr), Error);
    factory_.reset();
    EXPECT_EQ(passing(*before, "a", nullptr), Info); // without its factory
}

TEST_F(LoggerPolicy, ListsTheLevelsOfAComponent) {
    set(Warning, nullptr, nullptr);
    set(Debug, "b", nullptr);
    for (const auto& [component, className] : std::vector<std::pair<const char*, const char*>>{
             {"b", "Y"}, {"a", "Z"}, {"b", "X"}, {"ba", "W"}, {"b", "\xd0\x96"}})
        set(Info, component, className);
    const auto policy = factory_->createPolicy();
    const auto names = [&](const char* component) {
        std::string joined;
        for (const auto& [name, level] : policy->getComponentLevels(component).classes) {
            EXPECT_EQ(level, Info);
            joined += name + ' ';
        }
        return joined;
    };
    EXPECT_EQ(names("b"), "X Y \xd0\x96 ");
    EXPECT_EQ(names("c"), "");
    EXPECT_EQ(names(nullptr), "");
    EXPECT_EQ(policy->getComponentLevels("b").level, Debug);
    EXPECT_EQ(policy->getComponentLevels("a").level, None);
    EXPECT_EQ(policy->getComponentLevels("a").component, "a");
    EXPECT_EQ(policy->getComponentLevels(nullptr).component, "");
}

TEST_F(LoggerPolicy, TheFactoryCanBePartOfAnotherObject) {
    IUnknown* inner = nullptr;
    ASSERT_TRUE(process().createAggregated(CLSID_SCOM_LoggerPolicyFactory, &process(), &inner));
    EXPECT_TRUE(InterfacePtr<ISCOM_LoggerPolicyFactory>(inner));
    inner->Release();
}

} // namespace
