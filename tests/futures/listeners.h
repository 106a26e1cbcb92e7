// Listeners for tests of futures.
#pragma once

#include <core/component/Object.h>
#include <core/component/ThreadException.h>
#include <core/concurrency/Future.h>

#include <functional>
#include <utility>

namespace test {

// Calls a function with the future.
class FunctionListener
    : public core::ObjectRoot
    , public core::IFutureListener {
public:
    explicit FunctionListener(std::function<void(core::IFuture&)> function)
        : function_(std::move(function)) {}

    static const core::InterfaceEntry* _GetEntries() {
        return core::interface_map<FunctionListener, core::IFutureListener>();
    }
    void onComplete(core::IFuture* future) override { function_(*future); }

private:
    const std::function<void(core::IFuture&)> function_;
};

inline core::InterfacePtr<core::IFutureListener>
listener(std::function<void(core::IFuture&)> function) {
    return core::make_object<FunctionListener>(std::move(function));
}

// An object to be a result.
inline core::InterfacePtr<IUnknown> some_object() {
    return listener([](core::IFuture&) {});
}

// The error of the `ThreadException` that `action` throws; None if it throws nothing.
template <class Action> core::ThreadException::Error thread_error(Action action) {
    try {
        action();
    } catch (const core::ThreadException& exception) {
        return exception.error();
    }
    return core::ThreadException::Error::None;
}

} // namespace test
