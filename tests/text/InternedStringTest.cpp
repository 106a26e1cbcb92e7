#include <core/text/InternedString.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <unordered_set>
#include <vector>

namespace {

using Name = core::basic_cstring<char16_t>;
using Key = core::basic_cstring<char16_t, core::cstring_data_nocase<char16_t>>;
using Bytes = core::basic_cstring<char>;

TEST(InternedString, IsOneRecordForOneText) {
    const Name a = Name::intern(u"interned"), b = Name::intern(std::u16string(u"interned"));
    EXPECT_EQ(a, b);
    EXPECT_EQ(a.c_str(), b.c_str());
    EXPECT_NE(a, Name::intern(u"Interned"));
    EXPECT_EQ(a.view(), u"interned");
    EXPECT_EQ(Bytes::intern("interned").str(), "interned");
    EXPECT_LT(Name::intern(u"alpha"), Name::intern(u"beta"));
}

TEST(InternedString, OfNoTextIsTheEmptyRecord) {
    EXPECT_EQ(Name(), Name::intern(u""));
    EXPECT_TRUE(Name::intern(u"").empty());
    EXPECT_EQ(&Name().str(), &Name::empty_data()->text);
    EXPECT_FALSE(Bytes::intern("x").empty());
}

TEST(InternedString, WithoutCaseKeepsTheFirstSpelling) {
    const Key first = Key::intern(u"\u0427\u0438\u0441\u043B\u043E");
    const Key second = Key::intern(u"\u0447\u0418\u0421\u041B\u041E");
    EXPECT_EQ(first, second);
    EXPECT_EQ(second.view(), u"\u0427\u0438\u0441\u043B\u043E");
    EXPECT_EQ(std::unordered_set<Key>({first, second}).size(), 1u);
}

// All threads meet on the same texts, in different orders.
TEST(InternedString, IsOneForAllThreads) {
    constexpr int kThreads = 4, kTexts = 499;
    std::vector<std::vector<Name>> found(kThreads, std::vector<Name>(kTexts));
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([&found, t] {
            for (int i = 0; i < kTexts; ++i) {
                const int text = (i * (2 * t + 1) + 100 * t) % kTexts;
                const std::string digits = "t" + std::to_string(text);
                found[static_cast<std::size_t>(t)][static_cast<std::size_t>(text)] =
                    Name::intern(std::u16string(digits.begin(), digits.end()));
            }
        });
    for (std::thread& thread : threads) thread.join();
    for (const auto& names : found) EXPECT_EQ(names, found.front());
    EXPECT_EQ(std::unordered_set<Name>(found[0].begin(), found[0].end()).size(),
              std::size_t{kTexts});
}

} // namespace
