// Threads that a test tells what to do, step by step, and a monitor that counts waits.
#pragma once

#include <kiln/suspend_monitor.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

namespace test {

// A thread of its own that performs one order after the other.
class Actor {
public:
    Actor() : thread_([this] { perform(); }) {}
    ~Actor() {
        give({});
        thread_.join();
    }

    // Performs `action` there and gives its result.
    template <class Action> auto does(Action action) { return starts(std::move(action)).get(); }

    // The same without waiting.
    template <class Action> auto starts(Action action) {
        auto task = std::make_shared<std::packaged_task<decltype(action())()>>(std::move(action));
        auto result = task->get_future();
        give([task] { (*task)(); });
        return result;
    }

private:
    void give(std::function<void()> order) {
        {
            const std::lock_guard lock(mutex_);
            orders_.push_back(std::move(order));
        }
        given_.notify_one();
    }

    void perform() {
        while (true) {
            std::unique_lock lock(mutex_);
            given_.wait(lock, [this] { return !orders_.empty(); });
            const std::function<void()> order = std::move(orders_.front());
            orders_.pop_front();
            lock.unlock();
            if (!order) return;
            order();
        }
    }

    std::mutex mutex_;
    std::condition_variable given_;
    std::deque<std::function<void()>> orders_;
    std::thread thread_;
};

// Whether the order behind `result` stands still, as far as a short look can tell.
template <class T> bool waits(const std::future<T>& result) {
    return result.wait_for(std::chrono::milliseconds(40)) == std::future_status::timeout;
}

struct CountingMonitor final : kiln::IThreadSuspendMonitor {
    void enterWait() noexcept override { ++entered; }
    void leaveWait() noexcept override { ++left; }
    std::atomic<int> entered = 0, left = 0;
};

} // namespace test
