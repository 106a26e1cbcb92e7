// The search, beside the plain rolling-hash search that defines its results.
#include "strings/Family.h"

#include <bit>
#include <vector>

namespace {

// Rabin and Karp, with a hash of 64 bits that rolls by rotation: from the start of the text, or on
// reversed text from its end. Gives the place, or -1.
template <class T>
std::ptrdiff_t rolling_hash_search(std::basic_string_view<T> text,
                                   std::basic_string_view<T> needle) {
    const auto unit = [](T c) { return static_cast<std::uint64_t>(std::make_unsigned_t<T>(c)); };
    const std::size_t m = needle.size();
    if (m > text.size()) return -1;
    if (m == 0) return 0;
    std::uint64_t wanted = 0;
    std::uint64_t window = 0;
    for (std::size_t i = 0; i < m; ++i) {
        wanted = std::rotl(wanted, 1) ^ unit(needle[i]);
        window = std::rotl(window, 1) ^ unit(text[i]);
    }
    for (std::size_t at = 0;; ++at) {
        if (window == wanted && text.substr(at, m) == needle)
            return static_cast<std::ptrdiff_t>(at);
        if (at + m == text.size()) return -1;
        const std::uint64_t outgoing = std::rotl(unit(text[at]), static_cast<int>((m - 1) % 64));
        window = std::rotl(window ^ outgoing, 1) ^ unit(text[at + m]);
    }
}

// Both directions. The search sees exact copies, so that a memory checker sees reads beyond.
template <class T>
void expect_same_places(const std::basic_string<T>& text, const std::basic_string<T>& needle) {
    std::vector<T> in;
    in.reserve(text.size() + text.empty()); // an empty one has an address as well
    in.assign(text.begin(), text.end());
    const std::vector<T> of(needle.begin(), needle.end());
    const auto place = [&](const T* hit) { return hit ? hit - in.data() : -1; };
    EXPECT_EQ(place(elm::findstr<T, std::char_traits>(in.data(), in.size(), of.data(), of.size())),
              rolling_hash_search<T>(text, needle));

    const std::basic_string<T> text_reversed(text.rbegin(), text.rend());
    const std::basic_string<T> needle_reversed(needle.rbegin(), needle.rend());
    const std::ptrdiff_t mirrored = rolling_hash_search<T>(text_reversed, needle_reversed);
    const auto slack = static_cast<std::ptrdiff_t>(text.size() - needle.size());
    EXPECT_EQ(place(elm::rfindstr<T, std::char_traits>(in.data(), in.size(), of.data(), of.size())),
              mirrored < 0 ? -1 : slack - mirrored);
}

template <class T> class Search : public testing::Test {
protected:
    using M = std::basic_string<T>;

    // Repetitive, so that false candidates abound: a period of few different units, now and then
    // disturbed.
    static M repetitive(std::size_t n, Numbers& any) {
        const unsigned int kinds = any.upto(2);
        M period;
        for (unsigned int i = 1 + any.upto(11); i > 0; --i)
            period.push_back(static_cast<T>('a' + any.upto(kinds)));
        M made;
        while (made.size() < n) made += period;
        made.resize(n);
        for (unsigned int i = any.upto(3); i > 0 && n > 0; --i)
            made[any.upto(n - 1)] = static_cast<T>('a' + any.upto(kinds));
        return made;
    }

    // Pieces of the needle, between stretches where the first and the last unit always fit: those
    // make the filter give way, and what is tried here is the method behind it. The needle is to
    // begin and end alike.
    static M mosaic(const M& needle, Numbers& any) {
        const M stretch(500, needle.front());
        M made = stretch;
        while (made.size() < 600)
            made.append(needle, any.upto(needle.size() / 2), 1 + any.upto(needle.size()));
        return made + stretch;
    }
};
using Units = testing::Types<char, char16_t, wchar_t>;
TYPED_TEST_SUITE(Search, Units);

TYPED_TEST(Search, FindsTheSamePlacesAsTheRollingHash) {
    using Text = std::basic_string<TypeParam>;
    Numbers any(7);
    for (int round = 0; round < 3000; ++round) {
        SCOPED_TRACE(round);
        const std::size_t n = any.upto(round % 3 == 0 ? 4000 : 100);
        const Text text = this->repetitive(n, any);
        Text needle = any.upto(1) == 0 ? this->repetitive(any.upto(n / 2 + 3), any)
                                       : text.substr(any.upto(n), any.upto(n / 2));
        if (any.upto(2) == 0 && !needle.empty())
            needle[any.upto(needle.size() - 1)] = TypeParam('z');
        ASSERT_NO_FATAL_FAILURE(expect_same_places(text, needle));
        if (this->HasFailure()) return;
    }
}

TYPED_TEST(Search, FindsTheSamePlacesWhereTheFilterGivesWay) {
    Numbers any(11);
    for (int round = 0; round < 4000; ++round) {
        SCOPED_TRACE(round);
        auto needle = this->repetitive(3 + any.upto(20), any);
        needle.back() = needle.front();
        ASSERT_NO_FATAL_FAILURE(expect_same_places(this->mosaic(needle, any), needle));
        if (this->HasFailure()) return;
    }
}

TYPED_TEST(Search, FindsANeedleAtEveryPlaceOfABlock) {
    using Text = std::basic_string<TypeParam>;
    for (std::size_t m = 1; m <= 20; ++m) {
        Text needle(m, TypeParam('a'));
        needle.back() = TypeParam(-2); // all bits but one, in every width
        for (std::size_t at = 0; at + m <= 50; ++at) {
            Text text(50, TypeParam('a'));
            text.replace(at, m, needle);
            expect_same_places(text, needle);
            expect_same_places(text.substr(0, at + m), needle);
            expect_same_places(text.substr(at), needle);
        }
    }
}

// Each of these keeps a quadratic search busy for hours.
TYPED_TEST(Search, TakesLinearTimeOnHostileText) {
    using T = TypeParam;
    using Text = std::basic_string<T>;
    constexpr std::size_t kText = 1 << 21;
    constexpr std::size_t kHalf = kText / 2;
    const Text text(kText, T('a'));
    const auto b_at = [](std::size_t n, std::size_t at) {
        Text made(n, T('a'));
        made[at] = T('b');
        return made;
    };
    Text alternating;
    while (alternating.size() < kText) alternating += {T('a'), T('b')};
    const struct {
        const char* what;
        Text text, needle;
    } rows[] = {
        {"differs in the middle", text, b_at(kHalf, kHalf / 2)},
        {"differs next to the start", text, b_at(kHalf, 1)},
        {"differs next to the end", text, b_at(kHalf, kHalf - 2)},
        {"short needle", text, b_at(300, 150)},
        {"period of two", alternating, alternating.substr(0, kHalf + 1) + b_at(3, 1)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const Shared<T> s(row.text);
        const Shared<T> needle(row.needle);
        EXPECT_EQ(s.find(needle), Shared<T>::npos);
        EXPECT_EQ(s.rfind(needle), Shared<T>::npos);
        EXPECT_EQ((s + needle).find(needle), (row.text + row.needle).rfind(row.needle));
        EXPECT_EQ((needle + s).rfind(needle), (row.needle + row.text).find(row.needle));
    }
}

TEST(MemorySearch, WorksOnBytes) {
    const char memory[] = "ab\0ab\xFF";
    const auto place = [&](const void* hit) {
        return hit ? static_cast<const char*>(hit) - memory : -1;
    };
    EXPECT_EQ(place(elm::memmem(memory, 6, "ab", 2)), 0);
    EXPECT_EQ(place(elm::rmemmem(memory, 6, "ab", 2)), 3);
    EXPECT_EQ(place(elm::memmem(memory, 6, "b\0a", 3)), 1);
    EXPECT_EQ(place(elm::memmem(memory, 6, "b\0b", 3)), -1);
    EXPECT_EQ(place(elm::memmem(memory, 2, memory, 6)), -1);
    EXPECT_EQ(place(elm::memmem(memory, 6, nullptr, 0)), 0);
    EXPECT_EQ(place(elm::rmemmem(memory, 6, nullptr, 0)), 6);
    EXPECT_EQ(elm::memmem(nullptr, 0, "a", 1), nullptr);
    EXPECT_EQ(place(elm::memrchr(memory, 'a', 6)), 3);
    EXPECT_EQ(place(elm::memrchr(memory, 0xFF, 6)), 5);
    EXPECT_EQ(place(elm::memrchr(memory, 'c', 6)), -1);
    EXPECT_EQ(elm::memrchr(nullptr, 'a', 0), nullptr);
}

} // namespace
