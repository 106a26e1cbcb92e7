#include "elm/string"

#include <cstring>

#include <stdexcept>
#include <string>

namespace elm {

void detail::throw_out_of_range(unsigned line, const char* message) {
    throw std::out_of_range("[elm/string:" + std::to_string(line) + "]: " + message);
}

template <class T, unsigned E, template <class> class Alloc>
auto StringStorage<T, E, Alloc>::create_block(std::size_t capacity) -> Block* {
    return Block::create(AllocWrapper<T, Alloc>(), checked_size(capacity));
}

template <class T, unsigned E, template <class> class Alloc>
void StringStorage<T, E, Alloc>::release_block() noexcept {
    block()->release(AllocWrapper<T, Alloc>());
}

// Puts a copy of the units into a new block and leaves the former one, if any, as it is.
template <class T, unsigned E, template <class> class Alloc>
void StringStorage<T, E, Alloc>::clone_block(std::size_t capacity) {
    Block* const fresh = create_block(capacity);
    const size_type n = size();
    std::memcpy(fresh->units(), data(), (std::size_t{n} + 1) * sizeof(T));
    set_block(fresh, n);
}

template <class T, unsigned E, template <class> class Alloc>
void StringStorage<T, E, Alloc>::move_to_block(std::size_t capacity) {
    Block* const former = is_long() ? block() : nullptr;
    clone_block(capacity);
    if (former) former->release(AllocWrapper<T, Alloc>());
}

template <class T, unsigned E, template <class> class Alloc>
T* StringStorage<T, E, Alloc>::open_gap(size_type pos, size_type removed, size_type added) {
    const size_type kept = size() - removed;
    const size_type total = checked_size(std::size_t{kept} + added);
    const std::size_t tail = (std::size_t{kept} - pos) * sizeof(T);

    if (total <= capacity()) {
        _make_unique();
        T* const gap = units() + pos;
        std::memmove(gap + added, gap + removed, tail);
        set_size(total);
        return gap;
    }

    // From 0x55555556 on the product wraps around and half as much again is more than can be.
    const size_type half_more = increase_capacity(total);
    Block* const fresh = create_block(half_more > total ? half_more : kMaxSize);
    T* const gap = fresh->units() + pos;
    std::memcpy(fresh->units(), data(), (std::size_t{pos} + 1) * sizeof(T));
    std::memcpy(gap + added, data() + pos + removed, tail);
    if (is_long()) release_block();
    set_block(fresh, total);
    fresh->units()[total] = T();
    return gap;
}

ORB_ELM_STRINGS()

} // namespace elm
