// What a promise and a group have in common: the state of a future, its outcome, who waits and who
// listens.
//
//   class Promise : public FutureBase<Promise>, public IFutureImpl<Promise, IFuture>, … {
//
// `FutureState` does the work and knows no type, `FutureBase` adds the object root and which
// `IFuture` the listeners are told of, `IFutureImpl` puts the operations of the interface on it.
#pragma once

#include <core/component/Exception.h>
#include <core/component/ObjectRoot.h>
#include <core/concurrency/Future.h>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>
#include <vector>

namespace core {

class FutureState {
public:
    // From `Succeeded` on a state is final: it does not change again, nor does the outcome.
    enum class State { Pending = 0, Running = 1, Succeeded = 2, Cancelled = 3, Failed = 4 };

    // The state that a future ends in and what it then holds.
    struct Outcome {
        State state;
        InterfacePtr<IUnknown> result = nullptr;
        InterfacePtr<IExceptionObject> exception = nullptr;
    };

    State state() const;
    IExceptionObject* exception() const;

    // Wait for a final state; see IFuture::getResult.
    IUnknown* wait_for_result();
    IUnknown* wait_for_result(unsigned int milliseconds);

    void add(IFuture& self, IFutureListener* listener);
    void remove(IFutureListener* listener);

    // From pending to running.
    bool start();
    // From any state in the range to a final one, which wakes the waiters and calls the listeners.
    // True if this call did it.
    bool finish(IFuture& self, State firstFrom, State lastFrom, Outcome outcome);

private:
    using Deadline = std::chrono::system_clock::time_point;

    // The first one has a slot of its own, since most futures have no other.
    struct Listeners {
        InterfacePtr<IFutureListener> first;
        std::vector<InterfacePtr<IFutureListener>> others; // empty while there is no first
    };

    static bool is_final(State state) noexcept { return state >= State::Succeeded; }

    std::unique_lock<std::mutex> lock() const;
    void wait(std::unique_lock<std::mutex>& guard, const Deadline* deadline);
    IUnknown* take_result(std::unique_lock<std::mutex> guard);
    static void notify(IFuture& self, const Listeners& listeners);

    mutable std::mutex mutex_; // guards everything below
    std::condition_variable finished_;
    State state_ = State::Pending;
    InterfacePtr<IUnknown> result_;
    InterfacePtr<IExceptionObject> exception_;
    Listeners listeners_; // none in a final state
};

// Calls a listener; a `core::Exception` out of it goes no further.
void call_listener(IFutureListener& listener, IFuture& future);

// The errors of futures that did not succeed.
[[noreturn]] void throw_cancelled();
[[noreturn]] void throw_failed(IExceptionObject* cause);

template <class X>
class FutureBase
    : public ObjectRoot
    , public FutureState {
protected:
    bool finish(State firstFrom, State lastFrom, Outcome outcome) {
        return FutureState::finish(static_cast<X&>(*this), firstFrom, lastFrom, std::move(outcome));
    }
};

// `cancel` is left to X.
template <class X, class Interface> class IFutureImpl : public Interface {
public:
    bool isCancelled() override { return future().state() == FutureState::State::Cancelled; }
    bool isDone() override { return future().state() >= FutureState::State::Succeeded; }
    bool isSucceeded() override { return future().state() == FutureState::State::Succeeded; }
    IExceptionObject* getException() override { return future().exception(); }
    IUnknown* getResult() override { return future().wait_for_result(); }
    IUnknown* getResultTimed(unsigned int milliseconds) override {
        return future().wait_for_result(milliseconds);
    }
    void addListener(IFutureListener* listener) override { future().add(*this, listener); }
    void removeListener(IFutureListener* listener) override { future().remove(listener); }

private:
    FutureState& future() { return static_cast<X&>(*this); }
};

} // namespace core
