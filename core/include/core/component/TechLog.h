// The way of an exception into the technical log, which belongs to other components: every class of
// the category `CATID_TechLog` is one.
#pragma once

#include <core/component/Exception.h>

namespace core {

// The category, and the interface that its classes implement.
inline constexpr _GUID IID_ITechLog = "125f2cd2-f6fa-4df3-8a4e-07f72bb89900"_guid;
inline constexpr const _GUID& CATID_TechLog = IID_ITechLog;

class ITechLog : public IUnknown {
public:
    ORB_INTERFACE(ITechLog, IID_ITechLog)

    virtual void writeException(const Exception& exception, const stdx::ustring& where) = 0;
};

// Hands the exception to a new object of each such class of the current process; without a process
// or a class, nothing happens. `where` says in words what was going on.
ORBCORE_API void write_exception_to_techlog(const Exception& exception, const stdx::ustring& where);

} // namespace core
