// What a host of temporary files knows and does about its directory. It is shared with the thread
// that cleans up.
#pragma once

#include <core/component/InterfacePtr.h>
#include <core/concurrency/RWMutex.h>
#include <core/concurrency/Thread.h>
#include <elm/string>

#include <condition_variable>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace core {

// Safe on any thread.
class TempDirectory : public std::enable_shared_from_this<TempDirectory> {
public:
    explicit TempDirectory(const stdx::ustring& path) : path_(path) {}

    // Looks through the directory for what dead processes left there, on a thread of its own; for
    // this and for files that are still in use, a process must be entered.
    void start_cleaning();
    // Ends that thread. What is released from now on is removed at once or not at all.
    void stop_cleaning();

    stdx::ustring create(const stdx::ustring& extension);
    stdx::ustring path() const;
    void release(const stdx::ustring& name);
    // Removes every file that `create` made, in use or not.
    void clear();

    // A new empty file. Throws `FileException`, code `GetTmpFileName`.
    static stdx::ustring make_file(const stdx::ustring& directory, const stdx::ustring& extension);

private:
    void start_thread();
    void clean();
    void remove_leftovers();
    bool remove_released();

    mutable RWMutex mutex_; // path_ and files_
    const stdx::ustring path_;
    // By name the entries of a file, each with the time when it was released, in milliseconds; 0:
    // in use.
    std::map<stdx::ustring, std::vector<std::uint32_t>> files_;

    std::mutex cleaning_; // all below; may be held while `mutex_` is taken
    std::condition_variable wake_;
    InterfacePtr<Thread> thread_;
    bool running_ = false; // the thread has not come to its end
    bool stopped_ = false;
    bool leftovers_ = false; // the directory is still to be looked through
};

} // namespace core
