// A callable on the pool, and a typed future for what it returns.
//
//   core::Future<int> answer = core::async([] { return count_words(text); });
//   …
//   int words = answer.get();               // waits; throws what the callable threw
//
// Tasks run in the calling thread's logical process, in the order they came, on a few threads that
// they share: leave no per-thread settings behind. Normally as many run at a time as there are
// processors; when none of those gets on, because tasks wait for something, one more is started
// each millisecond, so tasks may wait for each other. A task costs less than a microsecond; for
// work that waits most of the time a thread of `create_thread` is the better choice.
//
// A process that ends waits for its tasks. On a thread that is in no process, and where the process
// takes no more threads, the future fails with `core::ThreadException`, RejectedExecution.
#pragma once

#include <core/component/Refcountable.h>
#include <core/concurrency/Future.h>

#include <concepts>
#include <exception>
#include <functional>
#include <optional>
#include <type_traits>
#include <utility>
#include <variant>

namespace core {

class Exception;

// What the queue of tasks and a typed future share.
class ORBCORE_API AsyncTask : public Refcountable<AsyncTask, AtomicCounter> {
public:
    AsyncTask();
    virtual ~AsyncTask();

    IFuture* future() const { return promise_->getFuture(); }

    // Runs the callable, unless that was done or the future is cancelled.
    void run() noexcept;
    // Fails the future: nobody will run the task.
    void reject();
    // Wait for the end of the future; throw as told at `Future`.
    void wait();
    bool wait_for(unsigned int milliseconds);

protected:
    virtual void invoke() = 0;

private:
    void perform();
    void fail(const Exception* exception);

    const InterfacePtr<IPromise> promise_;
    std::exception_ptr failure_; // written before the future fails, read afterwards
};

template <class T> class AsyncResult : public AsyncTask {
public:
    using Value = std::conditional_t<std::is_void_v<T>, std::monostate, T>;

    std::optional<Value> value; // written before the future succeeds, read afterwards
};

template <class T, class Function> class AsyncCall final : public AsyncResult<T> {
public:
    template <class F> explicit AsyncCall(F&& function) : function_(std::forward<F>(function)) {}

private:
    void invoke() override {
        Function function = std::move(function_);
        if constexpr (std::is_void_v<T>) {
            std::invoke(std::move(function));
            this->value.emplace();
        } else {
            this->value.emplace(std::invoke(std::move(function)));
        }
    }

    Function function_;
};

// The one handle on the result of a task. Dropping it lets the task go on. Not for several threads
// at once.
template <class T> class [[nodiscard]] Future {
public:
    Future() = default;
    explicit Future(InterfacePtr<AsyncResult<T>> task) noexcept : task_(std::move(task)) {}
    Future(Future&&) noexcept = default;
    Future& operator=(Future&&) noexcept = default;

    // False for a default-constructed future, and after `get`. The operations below need it true.
    bool valid() const noexcept { return static_cast<bool>(task_); }

    // Waits and gives the result away. Throws what the callable threw, or `core::ThreadException`:
    // Cancelled, or RejectedExecution.
    T get() {
        const InterfacePtr<AsyncResult<T>> task = std::move(task_);
        task->wait();
        if constexpr (!std::is_void_v<T>) return std::move(*task->value);
    }

    // True when the task has finished in any way within the time.
    bool wait_for(unsigned int milliseconds) { return task_->wait_for(milliseconds); }

    // True if this call cancelled it. A task that waits for its turn does not run then; one that
    // runs goes on and its result is dropped. Nothing here waits for it any more: what it refers
    // to has to outlive it, at the latest until the process has ended.
    bool cancel() { return task_->future()->cancel(); }

    // For listeners and groups, lent. Its own result is null.
    IFuture* future() const noexcept { return task_->future(); }

private:
    InterfacePtr<AsyncResult<T>> task_;
};

// Puts a task at the end of the queue of the calling thread's process.
ORBCORE_API void run_async(InterfacePtr<AsyncTask> task);

// Runs a copy of `function` (or what is moved in) on the pool; it may be move-only. References
// are returned as pointers.
template <std::invocable F> auto async(F&& function) {
    using T = std::invoke_result_t<std::decay_t<F>>;
    static_assert(!std::is_reference_v<T>, "a task returns a value or a pointer");
    InterfacePtr<AsyncResult<T>> task(new AsyncCall<T, std::decay_t<F>>(std::forward<F>(function)),
                                      true);
    run_async(task);
    return Future<T>(std::move(task));
}

} // namespace core
