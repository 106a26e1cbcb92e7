// Texts with numbered gaps.
//
//   auto report = core::create_object<core::IStringTemplate>(core::CLSID_StringTemplate);
//   report->parse(u"%1 of %2: %(1)0 %%", 2);
//   report->apply({u"3", u"7"});             // "3 of 7: 30 %"
//
// `%` and digits is a parameter, counted from 1; `%(1)` is one that digits may follow; `%%` is a
// percent sign. A parameter may stand more than once. One object serves one thread at a time.
#pragma once

#include <core/component/IUnknown.h>
#include <elm/string>

#include <vector>

namespace core {

inline constexpr _GUID CLSID_StringTemplate = "e49321b1-70a0-4c08-a3a3-aec153aa2b83"_guid;
inline constexpr _GUID IID_IStringTemplate = "e8ac071b-60ae-412c-b52b-ab8dc0d56403"_guid;

class IStringTemplate : public IUnknown {
public:
    ORB_INTERFACE(IStringTemplate, IID_IStringTemplate)

    // Each of the `paramCount` parameters must occur. Throws `core::StringTemplateException`
    // (TooMany where one does not occur, NotEnough where one beyond them does) and keeps the
    // template that was read before.
    virtual void parse(const stdx::ustring& format, int paramCount) = 0;
    // Takes exactly the `paramCount` of `parse`; throws `core::StringTemplateException` otherwise.
    virtual stdx::ustring apply(const std::vector<stdx::ustring>& params) = 0;
};

} // namespace core
