// The futures that are finished from the start.

#include <core/concurrency/Future.h>

#include "FutureBase.h"

#include <core/component/Object.h>

namespace core {
namespace {

// What a future without a past answers: there is nothing to cancel, and listeners are called at
// once.
class FinishedFuture
    : public ObjectRoot
    , public IFuture {
public:
    static const InterfaceEntry* _GetEntries() { return interface_map<FinishedFuture, IFuture>(); }

    bool cancel() override { return false; }
    bool isCancelled() override { return false; }
    bool isDone() override { return true; }
    bool isSucceeded() override { return false; }
    IExceptionObject* getException() override { return nullptr; }
    IUnknown* getResultTimed(unsigned int) override { return getResult(); }
    void addListener(IFutureListener* listener) override { call_listener(*listener, *this); }
    void removeListener(IFutureListener*) override {}
};

class SucceededFuture : public FinishedFuture {
public:
    explicit SucceededFuture(IUnknown* result) : result_(result, true) {}

    bool isSucceeded() override { return true; }
    IUnknown* getResult() override { return result_.get(); }

private:
    const InterfacePtr<IUnknown> result_;
};

class FailedFuture : public FinishedFuture {
public:
    explicit FailedFuture(IExceptionObject* exception) : exception_(exception, true) {}

    IExceptionObject* getException() override { return exception_.get(); }
    IUnknown* getResult() override { throw_failed(exception_.get()); }

private:
    const InterfacePtr<IExceptionObject> exception_;
};

class CancelledFuture : public FinishedFuture {
public:
    bool isCancelled() override { return true; }
    bool isDone() override { return false; }
    IUnknown* getResult() override { throw_cancelled(); }
};

} // namespace

InterfacePtr<IFuture> create_succeeded_future(IUnknown* result) {
    return make_object<SucceededFuture>(result);
}

InterfacePtr<IFuture> create_failed_future(IExceptionObject* exception) {
    return make_object<FailedFuture>(exception);
}

InterfacePtr<IFuture> create_cancelled_future() {
    return make_object<CancelledFuture>();
}

} // namespace core
