// Which log records pass, by component and class. A sink keeps a policy; whoever configures it has
// the factory:
//
//   auto factory = core::create_object<core::ISCOM_LoggerPolicyFactory>(
//       core::CLSID_SCOM_LoggerPolicyFactory);
//   factory->setLevel(core::SCOM_LogLevel::Error, nullptr, nullptr);
//   factory->setLevel(core::SCOM_LogLevel::Trace, "orbcore", nullptr);
//   auto policy = factory->createPolicy();
//
// A policy never changes: what is set later goes into policies that are made later. So a policy is
// safe on any thread; a factory is for one thread at a time.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/component/LogLevel.h>

#include <string>
#include <utility>
#include <vector>

namespace core {

inline constexpr _GUID CLSID_SCOM_LoggerPolicyFactory = "6606e6eb-6451-4b03-80c9-2cd4892fab0f"_guid;
inline constexpr _GUID IID_ISCOM_LoggerPolicyFactory = "4e8d7e38-f7bf-45dc-8c8a-c83af600350a"_guid;
inline constexpr _GUID IID_ISCOM_LoggerPolicy = "83d414a4-c254-470c-8a7d-a861a9408825"_guid;

// What is set for one component.
struct SCOM_LoggerComponentLevels {
    std::string component;
    SCOM_LogLevel level = SCOM_LogLevel::None; // `None` also where it has no level of its own
    std::vector<std::pair<std::string, SCOM_LogLevel>> classes; // by name
};

class ISCOM_LoggerPolicy : public IUnknown {
public:
    ORB_INTERFACE(ISCOM_LoggerPolicy, IID_ISCOM_LoggerPolicy)

    // The level of the pair decides, else that of the class, else that of the component, else the
    // default. Names may be null.
    virtual bool isEnabled(SCOM_LogLevel level, const char* component, const char* className) = 0;
    virtual SCOM_LoggerComponentLevels getComponentLevels(const char* component) = 0;
};

class ISCOM_LoggerPolicyFactory : public IUnknown {
public:
    ORB_INTERFACE(ISCOM_LoggerPolicyFactory, IID_ISCOM_LoggerPolicyFactory)

    // For a pair, or for one name where the other is null, or as the default where both are. At
    // first the default is `None`, and nothing else is set.
    virtual void setLevel(SCOM_LogLevel level, const char* component, const char* className) = 0;
    virtual InterfacePtr<ISCOM_LoggerPolicy> createPolicy() = 0;
};

} // namespace core
