// Per-thread storage. A global table gives out slots; each thread keeps its values in a vector of
// its own. Freeing a slot visits no thread: a new generation makes the old values stale, and each
// thread destroys its own at the next access.

#include <core/concurrency/Thread.h>

#include <mutex>
#include <utility>

namespace core {
namespace {

class SlotTable {
public:
    Thread::TLSIndex take() {
        const std::lock_guard guard(mutex_);
        std::uint32_t slot;
        if (freed_.empty()) {
            slot = static_cast<std::uint32_t>(generations_.size());
            generations_.push_back(0);
        } else {
            slot = freed_.back();
            freed_.pop_back();
        }
        // Generation 0 marks a slot that nobody has.
        if (++nextGeneration_ == 0) ++nextGeneration_;
        generations_[slot] = nextGeneration_;
        return {nextGeneration_, slot};
    }

    // An index that is not in use any more is ignored: its slot may be another's by now.
    void give_back(const Thread::TLSIndex& index) {
        const std::lock_guard guard(mutex_);
        if (index.generation == 0 || index.slot >= generations_.size() ||
            generations_[index.slot] != index.generation)
            return;
        if (index.slot + 1 == generations_.size()) {
            generations_.pop_back();
        } else {
            generations_[index.slot] = 0;
            freed_.push_back(index.slot);
        }
    }

private:
    std::mutex mutex_;
    std::uint32_t nextGeneration_ = 0;
    std::vector<std::uint32_t> generations_; // of each slot below the next unused one
    std::vector<std::uint32_t> freed_;
};

SlotTable& slots() {
    static auto& table = *new SlotTable; // others may free their indexes at exit
    return table;
}

} // namespace

Thread::TLSIndex Thread::allocTLS() {
    return slots().take();
}

void Thread::freeTLS(const TLSIndex& index) {
    slots().give_back(index);
}

void Thread::checkTLSIndex(const TLSIndex& index) {
    if (index.slot >= storage_.size()) storage_.resize(std::size_t{index.slot} + 1);
}

Thread::TLSData* Thread::getTLSValue(const TLSIndex& index) {
    checkTLSIndex(index);
    TLSValue& value = storage_[index.slot];
    if (value.generation == index.generation) return value.data;
    delete std::exchange(value, TLSValue{}).data;
    return nullptr;
}

void Thread::setTLSValue(const TLSIndex& index, TLSData* data) {
    checkTLSIndex(index);
    TLSData* const former =
        std::exchange(storage_[index.slot], TLSValue{index.generation, data}).data;
    if (former != data) delete former;
}

void Thread::clearTLSData() noexcept {
    // By index: a destructor may reach into the storage again.
    for (std::size_t slot = 0; slot != storage_.size(); ++slot)
        delete std::exchange(storage_[slot].data, nullptr);
}

void Thread::destroyThreadState() noexcept {
    clearTLSData();
    securityContext_.reset();
}

} // namespace core
