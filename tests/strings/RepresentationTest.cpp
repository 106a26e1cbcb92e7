// Which form a string takes, how it grows, who shares its block, and what memory that costs.
#include "strings/Family.h"

#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <vector>

// Part of the leak checker's runtime.
extern "C" __attribute__((weak)) int __lsan_do_recoverable_leak_check();

namespace {

// What this thread has asked of the memory since `watch()`.
struct Memory {
    static inline thread_local int taken = 0;
    static inline thread_local int given_back = 0;
    static inline thread_local std::size_t last_size = 0;
    static inline thread_local bool exhausted = false;

    static void watch() { taken = given_back = 0; }
};

} // namespace

// Kept out of line, or the compiler takes the `free` in them for a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++Memory::taken;
    Memory::last_size = size;
    void* const memory = Memory::exhausted ? nullptr : std::malloc(size);
    if (!memory) throw std::bad_alloc();
    return memory;
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    ++Memory::given_back;
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

namespace {

template <class S> class Representation : public testing::Test {};
TYPED_TEST_SUITE(Representation, Family);

template <class S> class Sharing : public testing::Test {};
TYPED_TEST_SUITE(Sharing, SharedFamily);

template <class S> class EagerCopies : public testing::Test {};
TYPED_TEST_SUITE(EagerCopies, EagerFamily);

TYPED_TEST(Representation, IsTwelveBytesWithUnitsOrAPointerInFront) {
    using S = TypeParam;
    using T = typename S::value_type;
    static_assert(sizeof(S) == 12 && alignof(S) == 4);
    static_assert(S::kInPlace == (sizeof(T) == 1 ? 11 : sizeof(T) == 2 ? 5 : 2));

    for (unsigned int n = 0; n <= S::kInPlace; ++n) {
        const S s = letters<S>(n);
        T units[12 / sizeof(T)];
        std::memcpy(units, static_cast<const void*>(&s), sizeof units);
        EXPECT_EQ(units[S::kInPlace], static_cast<T>(S::kInPlace - n));
        EXPECT_EQ(units[n], T());
        EXPECT_EQ(s.capacity(), S::kInPlace);
        EXPECT_EQ(s._get_refs(), 0u);
    }

    const S s = letters<S>(S::kInPlace + 1);
    std::uint32_t words[3];
    std::memcpy(words, static_cast<const void*>(&s), sizeof words);
    EXPECT_EQ(words[2], 0x80000000u | s.size());
    const char* block;
    std::memcpy(&block, words, sizeof block);
    const auto header = reinterpret_cast<const char*>(s.c_str()) - block;
    EXPECT_EQ(header, S::_long_is_eager() ? 4 : 8);
    EXPECT_EQ(s._get_refs(), 1u);
}

TYPED_TEST(Representation, GrowsAsTold) {
    using S = TypeParam;
    using T = typename S::value_type;
    constexpr unsigned int kFull = S::kInPlace;
    constexpr unsigned int kOver = kFull + 1;
    const struct {
        const char* what;
        std::function<void(S&)> change;
        unsigned int start, size, capacity;
    } rows[] = {
        {"push_back into the last place", [](S& s) { s.push_back(T('x')); }, kFull - 1, kFull,
         kFull},
        {"push_back on a full one", [](S& s) { s.push_back(T('x')); }, kFull, kOver, kOver * 3 / 2},
        {"construction is exact", [](S&) {}, kOver, kOver, kOver},
        {"append", [](S& s) { s.append(20, T('x')); }, 20, 40, 60},
        {"insert", [](S& s) { s.insert(3, 21, T('x')); }, 20, 41, 61},
        {"replace", [](S& s) { s.replace(3, 2, 22, T('x')); }, 20, 40, 60},
        {"replace by as much", [](S& s) { s.replace(3, 5, 5, T('x')); }, 20, 20, 20},
        {"_append", [](S& s) { std::char_traits<T>::assign(s._append(1), 1, T('x')); }, 20, 21, 31},
        {"_insert", [](S& s) { std::char_traits<T>::assign(s._insert(0, 1), 1, T('x')); }, 20, 21,
         31},
        {"reserve within the object", [](S& s) { s.reserve(kFull); }, 1, 1, kFull},
        {"reserve makes long", [](S& s) { s.reserve(kOver); }, 1, 1, kOver},
        {"reserve is exact", [](S& s) { s.reserve(31); }, 20, 20, 31},
        {"reserve never shrinks", [](S& s) { s.reserve(12); }, 20, 20, 20},
        {"reserve without a number", [](S& s) { s.reserve(); }, 20, 20, 20},
        {"resize is exact", [](S& s) { s.resize(31, T('x')); }, 20, 31, 31},
        {"resize within the object", [](S& s) { s.resize(kFull, T('x')); }, 0, kFull, kFull},
        {"a cut string stays long", [](S& s) { s.resize(1); }, 20, 1, 20},
        {"an emptied string stays long", [](S& s) { s.erase(); }, 20, 0, 20},
        {"pop_back", [](S& s) { s.pop_back(); }, kOver, kFull, kOver},
        {"shrink_to_fit", [](S& s) { s.erase(2).shrink_to_fit(); }, 20, 2, 20},
        {"clear", [](S& s) { s.clear(); }, 20, 0, kFull},
        {"assignment of a short text", [](S& s) { s.assign(1, T('x')); }, 20, 1, kFull},
        {"assignment never reuses a block", [](S& s) { s.assign(15, T('x')); }, 20, 15, 15},
        {"concatenation is exact", [](S& s) { s = s + s; }, 20, 40, 40},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const S before = letters<S>(row.start);
        S s(before, 0);
        row.change(s);
        EXPECT_EQ(s.size(), row.size);
        EXPECT_EQ(s.capacity(), row.capacity);
        EXPECT_EQ(s.c_str()[s.size()], T());
        EXPECT_EQ(std::char_traits<T>::length(s.c_str()), s.size());
    }
    EXPECT_EQ(S::increase_capacity(7), 10u);
    EXPECT_EQ(S::increase_capacity(0x55555556), 1u); // modulo 2^32
}

TYPED_TEST(Representation, TakesMemoryForLongStringsOnly) {
    using S = TypeParam;
    using T = typename S::value_type;
    const S full = letters<S>(S::kInPlace);
    Memory::watch();
    {
        S copy = full;
        S moved = std::move(copy);
        copy = moved;
        copy.resize(1);
        copy.append(1, T('x'));
    }
    EXPECT_EQ(Memory::taken, 0);
    {
        S s(100, T('x'));
        EXPECT_EQ(Memory::last_size, (S::_long_is_eager() ? 4u : 8u) + 101 * sizeof(T));
        const S copy = s;
        EXPECT_EQ(Memory::taken, S::_long_is_eager() ? 2 : 1);
        const S moved = std::move(s);
        swap(s, const_cast<S&>(moved));
        s.append(1, T('x'));
    }
    EXPECT_EQ(Memory::taken, Memory::given_back);
}

TYPED_TEST(Representation, RefusesWhatCannotBeAllocatedAndStaysAsItWas) {
    using S = TypeParam;
    using T = typename S::value_type;
    constexpr unsigned int kHuge = 0x80000000u;
    const std::basic_string_view<T> endless(letters<S>(1).c_str(), std::size_t{1} << 32);
    const std::function<void(S&)> rows[] = {
        [](S& s) { s.reserve(kHuge); },
        [](S& s) { s.resize(S::npos); },
        [](S& s) { s._resize_nofill(kHuge); },
        [](S& s) { s._append(0x7FFFFFFF); },
        [](S& s) { s._insert(1, S::npos); },
        [](S& s) { s.append(S::npos, T('x')); },
        [](S& s) { s.insert(0, S::npos - 1, T('x')); },
        [](S& s) { s.replace(0, 1, kHuge, T('x')); },
        [](S& s) { s.assign(kHuge, T('x')); },
        [&](S& s) { s.append(endless); },
        [&](S& s) { s.insert(0, endless); },
        [&](S& s) { s = endless; },
        [&](S& s) { s = s + endless; },
        // These fit, but there is no memory.
        [](S& s) { s.reserve(40); },
        [](S& s) { s.push_back(T('x')); },
        [](S& s) { s = S(40, T('x')); },
        [](S& s) { s.insert(1, s.c_str()); },
        [](S& s) { s.replace(1, 1, s); },
    };
    for (const unsigned int size : {S::kInPlace, 24u}) {
        for (const auto& change : rows) {
            SCOPED_TRACE(testing::Message() << size << " units, row " << &change - rows);
            S s(letters<S>(size), 0);
            Memory::exhausted = true;
            EXPECT_THROW(change(s), std::bad_alloc);
            Memory::exhausted = false;
            EXPECT_EQ(s, letters<S>(size));
            EXPECT_EQ(s.capacity(), size);
        }
    }
    EXPECT_THROW(S().pop_back(), std::bad_alloc); // not allowed, and does no harm
}

TYPED_TEST(Representation, GrowsToTheLimitWhereHalfAsMuchAgainIsTooLong) {
    using S = TypeParam;
    S s(1, typename S::value_type('x'));
    Memory::exhausted = true;
    EXPECT_THROW(s._append(0x60000000), std::bad_alloc);
    Memory::exhausted = false;
    EXPECT_GE(Memory::last_size, 0x80000000u * sizeof(typename S::value_type));
}

TYPED_TEST(Representation, LeavesAMovedFromStringEmptyAndUsable) {
    using S = TypeParam;
    for (const unsigned int n : {2u, 20u}) {
        S source = letters<S>(n);
        const S target = std::move(source);
        EXPECT_EQ(target, letters<S>(n));
        EXPECT_TRUE(source.empty());
        EXPECT_EQ(source.capacity(), S::kInPlace);
        source += target;
        EXPECT_EQ(source, target);
        S& self = source;
        source = std::move(self);
        source = self;
        EXPECT_EQ(source, target);
    }
}

TYPED_TEST(Representation, DoublesItselfInEitherForm) {
    using S = TypeParam;
    for (const unsigned int n : {1u, 2u, 5u, 11u, 12u, 30u}) {
        for (const unsigned int room : {0u, 100u}) { // the buffer moves, or it does not
            const S model = letters<S>(n);
            const S doubled = model + model;
            S appended(model, 0), inserted(model, 0), replaced(model, 0);
            for (S* s : {&appended, &inserted, &replaced}) s->reserve(room);
            EXPECT_EQ(appended.append(appended), doubled);
            EXPECT_EQ(inserted.insert(0, inserted.c_str()), doubled);
            EXPECT_EQ(replaced.replace(0, n, replaced + replaced), doubled);
        }
    }
}

// Every function that can write meets a string whose block is shared.
TYPED_TEST(Sharing, LeavesTheOtherOwnerAsItWas) {
    using S = TypeParam;
    using T = typename S::value_type;
    const std::function<void(S&)> rows[] = {
        [](S& s) { s[0] = T('!'); },
        [](S& s) { s.at(1) = T('!'); },
        [](S& s) { s.front() = T('!'); },
        [](S& s) { s.back() = T('!'); },
        [](S& s) { s.data()[1] = T('!'); },
        [](S& s) { *s.begin() = T('!'); },
        [](S& s) { s.end()[-1] = T('!'); },
        [](S& s) { *s.rbegin() = T('!'); },
        [](S& s) { s.rend()[-1] = T('!'); },
        [](S& s) { s.push_back(T('!')); },
        [](S& s) { s.pop_back(); },
        [](S& s) { s.append(3, T('!')); },
        [](S& s) { s.insert(1, 3, T('!')); },
        [](S& s) { s.erase(1, 2); },
        [](S& s) { s.replace(0, 2, 2, T('!')); },
        [](S& s) { s.resize(3); },
        [](S& s) { s.resize(25, T('!')); },
        [](S& s) { std::char_traits<T>::assign(s._append(2), 2, T('!')); },
        [](S& s) { std::char_traits<T>::assign(s._insert(0, 2), 2, T('!')); },
        [](S& s) { s._resize_nofill(2); },
        [](S& s) { s.clear(); },
        [](S& s) { s = T('!'); },
        [](S& s) { erase(s, s.c_str()[0]); },
    };
    for (const unsigned int room : {0u, 40u}) {
        for (const auto& change : rows) {
            SCOPED_TRACE(testing::Message() << "room " << room << ", row " << &change - rows);
            S first = letters<S>(20);
            first.reserve(room);
            S second = first;
            EXPECT_EQ(first._get_refs(), 2u);
            EXPECT_EQ(second._get_refs(), 2u);
            EXPECT_EQ(first.c_str(), second.c_str());
            change(second);
            EXPECT_EQ(first, letters<S>(20));
            EXPECT_EQ(first._get_refs(), 1u);
            EXPECT_NE(second, first);
            EXPECT_LE(second._get_refs(), 1u);
        }
    }
}

TYPED_TEST(Sharing, IsKeptByWhatOnlyReads) {
    using S = TypeParam;
    S s = letters<S>(20);
    s.reserve(30);
    const S other = s;
    s.reserve(25);
    s.reserve();
    s.shrink_to_fit();
    s = other;
    EXPECT_EQ(*s.cbegin(), other[0]);
    EXPECT_EQ(other.at(1), s.view()[1]);
    EXPECT_EQ(s._get_refs(), 2u);
    EXPECT_FALSE(s._is_eager());
    EXPECT_TRUE(letters<S>(2)._is_eager());

    s._make_unique();
    EXPECT_EQ(s._get_refs(), 1u);
    EXPECT_EQ(s.capacity(), 30u);
    const auto* const units = s.c_str();
    s._make_unique();
    EXPECT_EQ(s.c_str(), units);
    s = other;
    s.reserve(31);
    EXPECT_EQ(other._get_refs(), 1u);
}

TYPED_TEST(EagerCopies, HaveABlockOfTheirOwn) {
    using S = TypeParam;
    S s = letters<S>(20);
    s.reserve(33);
    S copy = s;
    EXPECT_NE(copy.c_str(), s.c_str());
    EXPECT_EQ(copy.capacity(), 33u);
    EXPECT_EQ(copy._get_refs(), 1u);
    EXPECT_TRUE(copy._is_eager() && S::_long_is_eager());
    const auto* const units = copy.c_str();
    copy[0] = typename S::value_type('!');
    EXPECT_EQ(copy.c_str(), units);
    EXPECT_EQ(s, letters<S>(20));
}

// The pointer of every second string in a vector is not aligned to eight bytes.
TEST(LeakChecking, SeesTheBlocksOfStringsInALivingVector) {
    if (!__lsan_do_recoverable_leak_check) GTEST_SKIP() << "built without a leak checker";
    static std::vector<stdx::string> living(9);
    for (auto& s : living) s = letters<stdx::string>(30);
    EXPECT_EQ(__lsan_do_recoverable_leak_check(), 0);
}

} // namespace
