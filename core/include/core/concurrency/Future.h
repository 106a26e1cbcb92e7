// Futures: results that another thread will deliver, with listeners, cancellation and groups.
//
//   core::InterfacePtr<core::IPromise> promise = core::create_promise();
//   promise->getFuture()->addListener(listener);
//   …                                                     // on the thread that works
//   if (promise->setRunning()) promise->setResult(object);
//   …                                                     // on the thread that needs the result
//   IUnknown* result = promise->getFuture()->getResult(); // waits; throws what went wrong
//
// Listeners run on the thread that finishes the future, or on the one that adds them to a finished
// future, without any lock of the future. For a callable on the pool with a typed result see
// core/concurrency/async.h.
//
// All operations may be called from any thread; those that wait report to the suspend monitor.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/platform/api.h>

#include <vector>

namespace core {

class IExceptionObject;
class IFuture;

inline constexpr _GUID IID_IFutureListener = "fa8277a0-be0e-4bf0-b850-6049c88766e1"_guid;
inline constexpr _GUID IID_IFuture = "08602462-d7b2-4bc1-b00d-47bfb7aad88b"_guid;
inline constexpr _GUID IID_IPromise = "54b73808-0392-42bc-adac-2b73d93ddc8e"_guid;
inline constexpr _GUID IID_IGroupFuture = "32b69aa2-3ffa-4fda-9680-9fef16822d21"_guid;

// Called once, when the future has finished in any way.
class IFutureListener : public IUnknown {
public:
    ORB_INTERFACE(IFutureListener, IID_IFutureListener)

    // On whichever thread finished `future`. A `core::Exception` thrown here goes no further; any
    // other exception reaches that thread once the other listeners have been called.
    virtual void onComplete(IFuture* future) = 0;
};

class IFuture : public IUnknown {
public:
    ORB_INTERFACE(IFuture, IID_IFuture)

    // True if this call cancelled it. Work under way is not interrupted: its result is refused.
    virtual bool cancel() = 0;
    virtual bool isCancelled() = 0;
    // Finished in any way; but a future of `create_cancelled_future` says false.
    virtual bool isDone() = 0;
    virtual bool isSucceeded() = 0;
    // The failure, lent; null if there is none.
    virtual IExceptionObject* getException() = 0;

    // Wait for the end, the second at most so long, and lend the result. Throw
    // `core::ThreadException`: Cancelled, Execution with the failure as its cause, or Timeout.
    virtual IUnknown* getResult() = 0;
    virtual IUnknown* getResultTimed(unsigned int milliseconds) = 0;

    // The future holds a reference to the listener until it has been called or removed.
    virtual void addListener(IFutureListener* listener) = 0;
    // Nothing on a finished future: a call on another thread may still be under way.
    virtual void removeListener(IFutureListener* listener) = 0;
};

// The side that delivers. Every operation says whether it had effect: a future finishes once.
class IPromise : public IUnknown {
public:
    ORB_INTERFACE(IPromise, IID_IPromise)

    virtual IFuture* getFuture() = 0; // lent
    // From pending to running, which is the only state that takes a result.
    virtual bool setRunning() = 0;
    virtual bool setResult(IUnknown* result) = 0;
    // Also before `setRunning`.
    virtual bool setException(IExceptionObject* exception) = 0;
};

// A future over others, its members. The member that decides gives the group its outcome.
class IGroupFuture : public IFuture {
public:
    ORB_INTERFACE(IGroupFuture, IID_IGroupFuture)

    virtual const std::vector<InterfacePtr<IFuture>>& getFutures() = 0;
};

// Futures that are finished from the start.
ORBCORE_API InterfacePtr<IFuture> create_succeeded_future(IUnknown* result);
ORBCORE_API InterfacePtr<IFuture> create_failed_future(IExceptionObject* exception);
ORBCORE_API InterfacePtr<IFuture> create_cancelled_future();

ORBCORE_API InterfacePtr<IPromise> create_promise();

// The member that finishes first decides, or the one that finishes last. A member that was
// cancelled makes the group cancel its members; the group itself is cancelled by the call that
// brings the count of members it cancelled to exactly 1, or to all of them. `cancel` of a group
// goes by the same rule, so a group of the first kind with several running members cancels them
// all and stays pending.
// Null among the members throws `core::IllegalArgumentException`.
ORBCORE_API InterfacePtr<IGroupFuture>
create_any_complete_group_future(const std::vector<InterfacePtr<IFuture>>& members);
ORBCORE_API InterfacePtr<IGroupFuture>
create_all_complete_group_future(const std::vector<InterfacePtr<IFuture>>& members);

} // namespace core
