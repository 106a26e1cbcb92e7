#include "FutureBase.h"

#include <core/component/Object.h>

namespace core {
namespace {

class Promise
    : public FutureBase<Promise>
    , public IFutureImpl<Promise, IFuture>
    , public IPromise {
public:
    static const InterfaceEntry* _GetEntries() {
        return interface_map<Promise, IFuture, IPromise>();
    }

    bool cancel() override {
        return finish(State::Pending, State::Running, {.state = State::Cancelled});
    }

    IFuture* getFuture() override { return this; }
    bool setRunning() override { return start(); }
    bool setResult(IUnknown* result) override {
        return finish(State::Running, State::Running,
                      {.state = State::Succeeded, .result = {result, true}});
    }
    bool setException(IExceptionObject* exception) override {
        return finish(State::Pending, State::Running,
                      {.state = State::Failed, .exception = {exception, true}});
    }
};

} // namespace

InterfacePtr<IPromise> create_promise() {
    return make_object<Promise>();
}

} // namespace core
