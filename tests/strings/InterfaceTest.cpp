// What surrounds the text: refusals, comparison with foreign strings, constants, output, hashing,
// and use by the algorithms of the standard library.
#include "strings/Family.h"

#include <algorithm>
#include <functional>
#include <iomanip>
#include <list>
#include <map>
#include <ranges>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <unordered_map>

using namespace stdx::literals;

namespace {

template <class S> class Interface : public testing::Test {};
TYPED_TEST_SUITE(Interface, Family);

TYPED_TEST(Interface, RefusesPositionsBehindTheEnd) {
    using S = TypeParam;
    using T = typename S::value_type;
    T buffer[4];
    const struct {
        const char* message;
        std::function<void(S&, unsigned int)> call;
    } rows[] = {
        {"Bad substring index", [](S& s, unsigned int at) { S(s, at, 1); }},
        {"Bad substring index", [](S& s, unsigned int at) { s._check_substr(at, 1); }},
        {"Bad index for assign()", [](S& s, unsigned int at) { S().assign(s, at, 1); }},
        {"Bad index for insert()", [](S& s, unsigned int at) { s.insert(at, s); }},
        {"Bad index for insert()", [](S& s, unsigned int at) { s.insert(at, s, 0, 1); }},
        {"Bad index for insert()", [](S& s, unsigned int at) { s.insert(0, s, at, 1); }},
        {"Bad index for insert()", [](S& s, unsigned int at) { s.insert(at, 1, T('x')); }},
        {"Bad index for erase()", [](S& s, unsigned int at) { s.erase(at); }},
        {"Bad index for append()", [](S& s, unsigned int at) { S().append(s, at, 1); }},
        {"Bad substring for compare()", [](S& s, unsigned int at) { s.compare(at, 1, s); }},
        {"Bad substring for compare()", [](S& s, unsigned int at) { s.compare(0, 1, s, at); }},
        {"Bad position for replace()", [](S& s, unsigned int at) { s.replace(at, 1, s); }},
        {"Bad position for replace()", [](S& s, unsigned int at) { s.replace(at, 1, 1, T('x')); }},
        {"Bad substring for replace()", [](S& s, unsigned int at) { s.replace(0, 1, s, at, 1); }},
        {"Bad position for substr()", [](S& s, unsigned int at) { s.substr(at, 1); }},
        {"Bad position for copy()", [&](S& s, unsigned int at) { s.copy(buffer, 1, at); }},
    };
    const auto expect_refusal = [](const auto& call, const std::string& message) {
        try {
            call();
            ADD_FAILURE() << "nothing thrown: " << message;
        } catch (const std::out_of_range& e) {
            const std::string what = e.what();
            EXPECT_TRUE(std::regex_match(what.substr(0, what.find(' ')),
                                         std::regex(R"(\[elm/string:[1-9][0-9]*\]:)")))
                << what;
            EXPECT_EQ(what.substr(what.find(' ') + 1), message);
        }
    };
    for (const unsigned int size : {2u, 20u}) {
        const S model = letters<S>(size);
        for (const auto& row : rows) {
            SCOPED_TRACE(row.message);
            S s = model;
            expect_refusal([&] { row.call(s, size + 1); }, row.message);
            expect_refusal([&] { row.call(s, S::npos); }, row.message);
            EXPECT_EQ(s, model);
            EXPECT_NO_THROW(row.call(s, size));
        }
        S s = model;
        expect_refusal([&] { s.at(size); }, "String character position out of range");
        expect_refusal([&] { std::as_const(s).at(size); },
                       "String character position out of range");
        EXPECT_EQ(s.at(size - 1), model.back());
    }
}

TYPED_TEST(Interface, IsMadeFromEverySource) {
    using S = TypeParam;
    using T = typename S::value_type;
    const S abc = text<S>("abc");
    const std::basic_string<T> standard(abc);
    const T array[] = {T('a'), T('b'), T('c'), T()};
    const std::allocator<T> alloc;
    std::istringstream stream("abc");
    using Input = std::istream_iterator<char>;

    const S made[] = {
        S(array),
        S(array, 3),
        S(array, alloc),
        S{T('a'), T('b'), T('c')},
        S(standard),
        S(abc, alloc),
        S(S(abc), alloc),
        S(array, array + 3),
        S(standard.begin(), standard.end()),
        S(Input(stream), Input()),
        S(text<S>("xabcx"), 1, 3),
        S(standard, 0),
        S().assign(array),
        S().assign(standard.rbegin(), standard.rend()).assign({T('a'), T('b'), T('c')}),
        S(2, T('b')).replace(0, 1, 1, T('a')) + T('c'),
        (S() = array),
        (S() = standard),
        (S() = {T('a'), T('b'), T('c')})};
    for (const S& s : made) EXPECT_EQ(s, abc) << &s - made;

    S s = abc;
    EXPECT_EQ(s = T('x'), text<S>("x"));
    EXPECT_EQ(s = {}, S(alloc));
    const S with_zero(array, 4);
    EXPECT_NE(with_zero, abc);
    EXPECT_EQ(with_zero.size(), 4u);
}

// The source of a change is a list of another type, a constant list, or the string itself.
TYPED_TEST(Interface, TakesPartsByIterators) {
    using S = TypeParam;
    using T = typename S::value_type;
    const std::list<char> list{'-', '+'};
    const std::initializer_list<T> constant = {T('x'), T('y')};
    S s = text<S>("abcdef");
    EXPECT_EQ(s.insert(s.cbegin() + 1, list.begin(), list.end()) - s.cbegin(), 1);
    EXPECT_EQ(s.insert(s.end(), constant) - s.cbegin(), 8);
    EXPECT_EQ(s, text<S>("a-+bcdefxy"));
    EXPECT_EQ(s.insert(s.begin(), T('!')) - s.cbegin(), 0);
    EXPECT_EQ(s.erase(s.begin()) - s.cbegin(), 0);
    EXPECT_EQ(s.erase(s.begin() + 1, s.cend() - 3) - s.cbegin(), 1);
    EXPECT_EQ(s, text<S>("afxy"));
    s.replace(s.begin(), s.begin() + 1, list.begin(), list.end());
    s.replace(s.cbegin() + 2, s.cend(), constant);
    s.replace(s.cend(), s.cend(), s.crbegin(), s.crend());
    EXPECT_EQ(s, text<S>("-+xyyx+-"));
    s.append(s.crbegin(), s.crbegin() + 2) += constant;
    EXPECT_EQ(s, text<S>("-+xyyx+--+xy"));
    EXPECT_TRUE(s.contains(text<S>("yyx+")) && s.contains(T('+')) && !s.contains(T('a')));
    EXPECT_EQ(s.erase().insert(0, 0, T('x')).append(0, T('x')).replace(0, 0, 0, T('x')), S());
}

TYPED_TEST(Interface, ComparesByUnitsThenByLength) {
    using S = TypeParam;
    using T = typename S::value_type;
    const S abc = text<S>("abc");
    const S abcd = text<S>("abcd");
    EXPECT_LT(abc.compare(abcd), 0);
    EXPECT_GT(abcd.compare(abc), 0);
    EXPECT_TRUE(abc < abcd && abcd > abc.c_str() && abc <= abc.view());
    EXPECT_TRUE(abc.c_str() == abc && abc == std::basic_string<T>(abc) && abc.view() == abc);
    EXPECT_TRUE(abc.equal(abcd.c_str(), 3) && abc.equal(abc.c_str()) && abc.not_equal(abcd));
    EXPECT_TRUE(abc.not_equal(abcd.c_str()) && abcd.not_equal(abcd.c_str(), 3));

    const T left[] = {T('a'), T(), T('b')};
    const T right[] = {T('a'), T(), T('c')};
    EXPECT_FALSE(S(left, 3) == S(right, 3));
    EXPECT_LT(S(left, 3), S(right, 3));

    // A difference in any place of a long text, either way round, as the traits order it.
    for (unsigned int at = 0; at < 70; ++at) {
        S a(70, T('m'));
        S b = a;
        b[at] = static_cast<T>(0xF0E1);
        const bool before = std::char_traits<T>::lt(T('m'), b.at(at));
        EXPECT_EQ(a < b, before);
        EXPECT_EQ(b < a, !before);
        EXPECT_FALSE(a == b);
    }
}

TYPED_TEST(Interface, FindsAnEmptyNeedleUpToTheEnd) {
    using S = TypeParam;
    const S s = text<S>("abc");
    EXPECT_EQ(s.find(S(), 2), 2u);
    EXPECT_EQ(s.find(S(), 3), 3u);
    EXPECT_EQ(s.find(S(), 4), S::npos);
    EXPECT_EQ(s.rfind(S()), 3u);
    EXPECT_EQ(S().find(s), S::npos);
    EXPECT_EQ(S::npos, 0xFFFFFFFFu);
    EXPECT_EQ(S::max_size(), 0xFFFFFFFFu);
}

TYPED_TEST(Interface, ServesTheAlgorithmsOfTheStandardLibrary) {
    using S = TypeParam;
    using T = typename S::value_type;
    static_assert(std::ranges::contiguous_range<S> && std::ranges::sized_range<const S>);
    static_assert(std::is_nothrow_move_constructible_v<S> && std::is_nothrow_swappable_v<S>);

    S s = text<S>("the quick brown fox");
    std::ranges::sort(s);
    EXPECT_TRUE(std::is_sorted(s.cbegin(), s.cend()));
    EXPECT_EQ(std::ranges::count(s, T(' ')), 3);
    EXPECT_EQ(erase_if(s, [](T c) { return c == T(' '); }), 3u);
    std::reverse(s.begin(), s.end());
    EXPECT_EQ(s, text<S>("xwutrqoonkihfecb"));
    EXPECT_EQ(S(s.crbegin(), s.crend()).substr(0, 3), text<S>("bce"));
    S collected;
    std::copy(s.begin(), s.begin() + 3, std::back_inserter(collected));
    EXPECT_EQ(collected, text<S>("xwu"));
#ifndef __clang__ // Clang 14 cannot compile the views of this standard library
    EXPECT_EQ(std::ranges::distance(s | std::views::filter([](T c) { return c == T('o'); })), 2);
#endif
    std::map<S, int, std::less<>> ordered{{collected, 1}};
    EXPECT_EQ(ordered.count(collected.view()), 1u);
    std::unordered_map<S, int> hashed{{collected, 1}};
    EXPECT_EQ(hashed.count(text<S>("xwu")), 1u);
    EXPECT_EQ(std::hash<S>()(collected), std::hash<std::basic_string_view<T>>()(collected));
}

TEST(Literals, MakeConstantsOfShortText) {
    static constinit stdx::ustring text = u"abcde"_us;
    static constinit stdx::string none;
    static constexpr stdx::string kName = "hello world"_s;
    static_assert(kName.size() == 11 && kName == "hello world" && kName > "hello"_s);
    EXPECT_EQ(text += u'f', u"abcdef");
    EXPECT_EQ(none += "x", "x");
    EXPECT_EQ("a\0b"_s.size(), 3u);
    EXPECT_EQ(u"a longer text"_us, std::u16string(u"a longer text"));
}

TEST(Output, FollowsTheStream) {
    std::ostringstream out;
    out << std::setw(5) << std::left << "ab"_s << std::setfill('.') << std::setw(4) << std::right
        << Eager<char>("cd") << "a longer text"_s;
    EXPECT_EQ(out.str(), "ab   ..cda longer text");
}

TEST(Concatenation, ContinuesAStringThatIsAboutToEnd) {
    stdx::string s = "a long left side"_s;
    s.reserve(100);
    const char* const units = s.c_str();
    const stdx::string joined = std::move(s) + "/" + 'x' + std::string("y") + "z"_s;
    EXPECT_EQ(joined, "a long left side/xyz");
    EXPECT_EQ(joined.c_str(), units);
    EXPECT_EQ("ab" + stdx::string("cd"), "abcd");
    EXPECT_EQ('a' + joined, "aa long left side/xyz");
}

} // namespace
