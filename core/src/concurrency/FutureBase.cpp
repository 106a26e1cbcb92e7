#include "FutureBase.h"

#include <core/component/ThreadException.h>

#include <kiln/suspend_monitor.h>

#include <algorithm>
#include <exception>
#include <utility>

namespace core {

void throw_cancelled() {
    throw ThreadException(ThreadException::Error::Cancelled);
}

void throw_failed(IExceptionObject* cause) {
    throw ThreadException(ThreadException::Error::Execution, cause);
}

void call_listener(IFutureListener& listener, IFuture& future) {
    try {
        listener.onComplete(&future);
    } catch (const Exception&) {
        // The listener's failure is none of the thread that finished the future.
    }
}

std::unique_lock<std::mutex> FutureState::lock() const {
    const kiln::ReportedWait report(kiln::get_thread_suspend_monitor());
    return std::unique_lock(mutex_);
}

FutureState::State FutureState::state() const {
    const auto guard = lock();
    return state_;
}

IExceptionObject* FutureState::exception() const {
    const auto guard = lock();
    return exception_.get();
}

// ---- Waiting

// By the system clock, in which deadlines are told.
void FutureState::wait(std::unique_lock<std::mutex>& guard, const Deadline* deadline) {
    if (is_final(state_)) return;
    const kiln::ReportedWait report(kiln::get_thread_suspend_monitor());
    const auto finished = [this] { return is_final(state_); };
    if (deadline)
        finished_.wait_until(guard, *deadline, finished);
    else
        finished_.wait(guard, finished);
}

// The outcome is constant from here on, so it is lent without the lock.
IUnknown* FutureState::take_result(std::unique_lock<std::mutex> guard) {
    const State state = state_;
    guard.unlock();
    switch (state) {
    case State::Succeeded:
        return result_.get();
    case State::Cancelled:
        throw_cancelled();
    case State::Failed:
        throw_failed(exception_.get());
    case State::Pending:
    case State::Running:
        break;
    }
    throw ThreadException(ThreadException::Error::Timeout);
}

IUnknown* FutureState::wait_for_result() {
    auto guard = lock();
    wait(guard, nullptr);
    return take_result(std::move(guard));
}

IUnknown* FutureState::wait_for_result(unsigned int milliseconds) {
    const Deadline deadline =
        std::chrono::system_clock::now() + std::chrono::milliseconds(milliseconds);
    auto guard = lock();
    wait(guard, &deadline);
    return take_result(std::move(guard));
}

// ---- Transitions

bool FutureState::start() {
    const auto guard = lock();
    if (state_ != State::Pending) return false;
    state_ = State::Running;
    return true;
}

bool FutureState::finish(IFuture& self, State firstFrom, State lastFrom, Outcome outcome) {
    Listeners listeners;
    {
        const auto guard = lock();
        if (state_ < firstFrom || state_ > lastFrom) return false;
        state_ = outcome.state;
        result_ = std::move(outcome.result);
        exception_ = std::move(outcome.exception);
        listeners = std::exchange(listeners_, {});
        finished_.notify_all();
    }
    if (listeners.first) notify(self, listeners);
    return true;
}

// Every listener is called, whatever the others throw: groups rely on it.
void FutureState::notify(IFuture& self, const Listeners& listeners) {
    const InterfacePtr<IFuture> alive(&self, true); // a listener may drop the last reference
    std::exception_ptr foreign;
    const auto call = [&](IFutureListener& listener) {
        try {
            call_listener(listener, self);
        } catch (...) {
            if (!foreign) foreign = std::current_exception();
        }
    };
    call(*listeners.first);
    for (const auto& listener : listeners.others) call(*listener);
    if (foreign) std::rethrow_exception(foreign);
}

// ---- Listeners

void FutureState::add(IFuture& self, IFutureListener* listener) {
    {
        const auto guard = lock();
        if (!is_final(state_)) {
            InterfacePtr<IFutureListener> added(listener, true);
            if (listeners_.first)
                listeners_.others.push_back(std::move(added));
            else
                listeners_.first = std::move(added);
            return;
        }
    }
    call_listener(*listener, self);
}

void FutureState::remove(IFutureListener* listener) {
    // What is removed is released after the lock: its destructor may come back here.
    Listeners removed;
    const auto guard = lock();
    auto& [first, others] = listeners_;
    if (first == listener) {
        removed.first.swap(first);
        if (others.empty()) return;
        first = std::move(others.front());
        others.erase(others.begin());
    } else {
        const auto kept = std::stable_partition(
            others.begin(), others.end(), [&](const auto& other) { return other != listener; });
        removed.others.assign(std::move_iterator(kept), std::move_iterator(others.end()));
        others.erase(kept, others.end());
    }
}

} // namespace core
