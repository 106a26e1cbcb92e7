// Every operation, in random order, beside std::basic_string. Strings are copied to and fro among
// a few, so that most operations meet shared blocks, and sources lie inside the string as often as
// outside.
#include "strings/Family.h"

#include <array>
#include <list>

namespace {

template <class S> class Differential : public testing::Test {
protected:
    using T = typename S::value_type;
    using M = Model<S>;
    struct Pair {
        S ours;
        M model;
    };
    using Operation = void (*)(Pair&, const Pair&, Numbers&);

    static unsigned int place(const M& s, Numbers& any) { return any.upto(s.size()); }
    static unsigned int length(Numbers& any) {
        return any.upto(19) == 0 ? S::npos : any.upto(any.upto(3) == 0 ? 40 : 4);
    }
    static T unit(Numbers& any) {
        constexpr std::array kUnits = {T('a'), T('b'), T('c'), T(0), static_cast<T>(0xF0E1)};
        return kUnits[any.upto(kUnits.size() - 1)];
    }
    static M some_text(Numbers& any) {
        M made;
        for (unsigned int n = any.upto(any.upto(4) == 0 ? 30 : 6); n > 0; --n)
            made.push_back(unit(any));
        return made;
    }
    static std::size_t wide(unsigned int n) { return n == S::npos ? M::npos : n; }
    // Positions of the model in our size type.
    static unsigned int narrow(std::size_t n) { return static_cast<unsigned int>(n); }

    static const std::initializer_list<Operation> kChanges;
    static void compare_searches(const Pair& p, Numbers& any);

    static void check(const Pair& p) {
        const S& ours = p.ours;
        ASSERT_EQ(ours.view(), std::basic_string_view<T>(p.model));
        ASSERT_EQ(ours.c_str()[ours.size()], T());
        ASSERT_LE(ours.size(), ours.capacity());
        ASSERT_EQ(ours.capacity() == S::kInPlace, ours._get_refs() == 0);
    }
};

template <class S>
const std::initializer_list<typename Differential<S>::Operation> Differential<S>::kChanges = {
    [](Pair& p, const Pair& q, Numbers&) { p = q; },
    [](Pair& p, const Pair& q, Numbers&) { p = Pair(q); },
    [](Pair& p, const Pair& q, Numbers& any) {
        const auto at = place(q.model, any);
        const auto n = length(any);
        p = {S(q.ours, at, n), M(q.model, at, wide(n))};
    },
    [](Pair& p, const Pair& q, Numbers& any) {
        const auto at = place(q.model, any);
        const auto n = length(any);
        p.ours.assign(q.ours, at, n);
        p.model.assign(q.model, at, wide(n));
    },
    [](Pair& p, const Pair&, Numbers& any) {
        const M source = some_text(any);
        p.ours.assign(source.data(), narrow(source.size()));
        p.model = source;
    },
    [](Pair& p, const Pair&, Numbers& any) {
        const unsigned int n = any.upto(14);
        const T c = unit(any);
        p.ours.assign(n, c);
        p.model.assign(n, c);
    },
    [](Pair& p, const Pair&, Numbers& any) {
        const T c = unit(any);
        p.ours.push_back(c);
        p.model.push_back(c);
    },
    [](Pair& p, const Pair&, Numbers&) {
        if (p.model.empty()) return;
        p.ours.pop_back();
        p.model.pop_back();
    },
    [](Pair& p, const Pair&, Numbers& any) {
        const unsigned int n = any.upto(30);
        const T c = unit(any);
        p.ours.resize(n, c);
        p.model.resize(n, c);
    },
    [](Pair& p, const Pair&, Numbers& any) { p.ours.reserve(any.upto(60)); },
    [](Pair& p, const Pair&, Numbers& any) {
        if (any.upto(5) != 0) return;
        p.ours.clear();
        p.model.clear();
    },
    [](Pair& p, const Pair& q, Numbers&) {
        p.ours.append(q.ours);
        p.model.append(q.model);
    },
    [](Pair& p, const Pair& q, Numbers& any) {
        const auto at = place(q.model, any);
        const auto n = length(any);
        p.ours.append(q.ours, at, n);
        p.model.append(q.model, at, wide(n));
    },
    [](Pair& p, const Pair&, Numbers& any) { // of the string itself, terminator included
        const auto at = place(p.model, any);
        const auto n = any.upto(p.model.size() - at + 1);
        const M source(p.model.c_str() + at, n);
        p.ours.append(p.ours.c_str() + at, n);
        p.model.append(source);
    },
    [](Pair& p, const Pair&, Numbers& any) {
        const M source = some_text(any);
        const std::list<T> list(source.begin(), source.end());
        p.ours.append(list.begin(), list.end());
        p.model += source;
    },
    [](Pair& p, const Pair& q, Numbers& any) {
        const auto to = place(p.model, any);
        const auto at = place(q.model, any);
        const auto n = length(any);
        p.ours.insert(to, q.ours, at, n);
        p.model.insert(to, q.model, at, wide(n));
    },
    [](Pair& p, const Pair&, Numbers& any) {
        const auto to = place(p.model, any);
        const auto n = any.upto(9);
        const T c = unit(any);
        const auto* at = p.ours.insert(p.ours.cbegin() + to, n, c);
        p.model.insert(to, n, c);
        EXPECT_EQ(at - p.ours.cbegin(), to);
    },
    [](Pair& p, const Pair&, Numbers& any) {
        const auto to = place(p.model, any);
        const auto at = place(p.model, any);
        const auto n = any.upto(p.model.size() - at);
        p.ours.insert(to, p.ours.c_str() + at, n);
        p.model.insert(to, M(p.model, at, n));
    },
    [](Pair& p, const Pair&, Numbers& any) {
        const auto at = place(p.model, any);
        const auto n = length(any);
        p.ours.erase(at, n);
        p.model.erase(at, wide(n));
    },
    [](Pair& p, const Pair&, Numbers& any) {
        const auto at = place(p.model, any);
        const auto n = any.upto(p.model.size() - at);
        const auto* next = p.ours.erase(p.ours.cbegin() + at, p.ours.cbegin() + at + n);
        p.model.erase(at, n);
        EXPECT_EQ(next - p.ours.cbegin(), at);
    },
    [](Pair& p, const Pair& q, Numbers& any) {
        const auto to = place(p.model, any);
        const auto cut = length(any);
        const auto at = place(q.model, any);
        const auto n = length(any);
        p.ours.replace(to, cut, q.ours, at, n);
        p.model.replace(to, wide(cut), q.model, at, wide(n));
    },
    [](Pair& p, const Pair&, Numbers& any) {
        const auto to = place(p.model, any);
        const auto cut = any.upto(p.model.size() - to);
        const auto at = place(p.model, any);
        const auto n = any.upto(p.model.size() - at);
        p.ours.replace(p.ours.cbegin() + to, p.ours.cbegin() + to + cut, p.ours.c_str() + at, n);
        p.model.replace(to, cut, M(p.model, at, n));
    },
    [](Pair& p, const Pair&, Numbers& any) {
        const auto to = place(p.model, any);
        const auto cut = length(any);
        const auto n = any.upto(9);
        const T c = unit(any);
        p.ours.replace(to, cut, n, c);
        p.model.replace(to, wide(cut), n, c);
    },
    [](Pair& p, const Pair& q, Numbers& any) {
        const T c = unit(any);
        p = {p.ours + q.ours + c, p.model + q.model + c};
    },
    [](Pair& p, const Pair& q, Numbers& any) {
        const T c = unit(any);
        p = {c + (p.model.c_str() + S(q.ours)), c + (p.model.c_str() + M(q.model))};
    },
    [](Pair& p, const Pair&, Numbers& any) { // what writes through a reference
        if (p.model.empty()) return;
        const auto at = any.upto(p.model.size() - 1);
        const T c = unit(any);
        p.ours[at] = p.ours.front() = p.ours.at(at / 2) = *p.ours.rbegin() = p.ours.begin()[at] = c;
        p.model[at] = p.model.front() = p.model.at(at / 2) = *p.model.rbegin() = c;
    },
    [](Pair& p, const Pair&, Numbers& any) {
        const T c = unit(any);
        EXPECT_EQ(erase(p.ours, c), std::erase(p.model, c));
    },
};

template <class S> void Differential<S>::compare_searches(const Pair& p, Numbers& any) {
    M sought = some_text(any).substr(0, any.upto(4));
    if (any.upto(1) == 0 && !p.model.empty())
        sought = p.model.substr(place(p.model, any), any.upto(5));
    const S needle(sought);
    const unsigned int at = any.upto(3) == 0 ? S::npos : any.upto(p.model.size() + 2);
    const std::size_t wide_at = wide(at);
    const T c = unit(any);

#define EXPECT_SAME(SEARCH)                                                                        \
    EXPECT_EQ(p.ours.SEARCH(needle, at), narrow(p.model.SEARCH(sought, wide_at)));                 \
    EXPECT_EQ(p.ours.SEARCH(c, at), narrow(p.model.SEARCH(c, wide_at)))
    EXPECT_SAME(find);
    EXPECT_SAME(rfind);
    EXPECT_SAME(find_first_of);
    EXPECT_SAME(find_first_not_of);
    EXPECT_SAME(find_last_of);
    EXPECT_SAME(find_last_not_of);
#undef EXPECT_SAME

    EXPECT_EQ(p.ours.starts_with(needle), p.model.starts_with(sought));
    EXPECT_EQ(p.ours.ends_with(needle), p.model.ends_with(sought));
    EXPECT_EQ(p.ours <=> needle, p.model <=> sought);
    EXPECT_EQ(p.ours == needle, p.model == sought);
    const unsigned int from = place(p.model, any);
    const unsigned int n = length(any);
    EXPECT_EQ(p.ours.compare(from, n, needle) <=> 0, p.model.compare(from, wide(n), sought) <=> 0);
    EXPECT_EQ(p.ours.substr(from, n), p.model.substr(from, wide(n)));
}

TYPED_TEST_SUITE(Differential, Family);

TYPED_TEST(Differential, AgreesWithTheStandardString) {
    using Fixture = Differential<TypeParam>;
    for (unsigned int seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        Numbers any(seed);
        std::array<typename Fixture::Pair, 4> pairs;
        for (int step = 0; step < 500; ++step) {
            auto& changed = pairs[any.upto(3)];
            const auto& source = pairs[any.upto(3)]; // may be the same
            const auto operation = any.upto(Fixture::kChanges.size() - 1);
            SCOPED_TRACE(operation);
            Fixture::kChanges.begin()[operation](changed, source, any);
            for (const auto& pair : pairs) ASSERT_NO_FATAL_FAILURE(Fixture::check(pair));
            Fixture::compare_searches(changed, any);
            if (changed.model.size() > 300) changed = {};
            if (testing::Test::HasFailure()) return;
        }
    }
}

} // namespace
