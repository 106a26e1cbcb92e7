// Guards for the two sides of a reader-writer lock.
//
//   const core::ReaderLock lock(mutex_);   // any number of these at a time
//   const core::WriterLock lock(mutex_);   // or one of these
//
// They fit all locks of the library and of the standard one. Where a lock is to be tried, moved or
// let go early, take std::shared_lock and std::unique_lock.
#pragma once

namespace core {

template <class Lockable> class [[nodiscard]] ReaderLock {
public:
    explicit ReaderLock(Lockable& mutex) : mutex_(mutex) { mutex_.lock_shared(); }
    ~ReaderLock() { mutex_.unlock_shared(); }
    ReaderLock(const ReaderLock&) = delete;
    ReaderLock& operator=(const ReaderLock&) = delete;

private:
    Lockable& mutex_;
};

template <class Lockable> class [[nodiscard]] WriterLock {
public:
    explicit WriterLock(Lockable& mutex) : mutex_(mutex) { mutex_.lock(); }
    ~WriterLock() { mutex_.unlock(); }
    WriterLock(const WriterLock&) = delete;
    WriterLock& operator=(const WriterLock&) = delete;

private:
    Lockable& mutex_;
};

} // namespace core
