// The six instantiations as types of typed tests, and what makes their texts.
#pragma once

#include <elm/string>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

template <class T> using Shared = elm::BasicString<T, 0u, 0u, std::allocator>;
template <class T> using Eager = elm::BasicString<T, 0u, 4294967295u, std::allocator>;

using Family = testing::Types<Shared<char>, Shared<char16_t>, Shared<wchar_t>, Eager<char>,
                              Eager<char16_t>, Eager<wchar_t>>;
using SharedFamily = testing::Types<Shared<char>, Shared<char16_t>, Shared<wchar_t>>;
using EagerFamily = testing::Types<Eager<char>, Eager<char16_t>, Eager<wchar_t>>;

/// The standard string of the same unit, which serves as the model.
template <class S> using Model = std::basic_string<typename S::value_type>;

template <class S> S text(std::string_view ascii) {
    return S(ascii.begin(), ascii.end());
}

/// A text of `n` different letters, one after the other.
template <class S> S letters(unsigned int n) {
    S s;
    for (unsigned int i = 0; i < n; ++i)
        s.push_back(static_cast<typename S::value_type>('a' + i % 26));
    return s;
}

/// Numbers that are the same in every run.
class Numbers {
public:
    explicit Numbers(unsigned int seed) : engine_(seed) {}
    /// From 0 up to and including `last`.
    unsigned int upto(std::size_t last) {
        return static_cast<unsigned int>(
            std::uniform_int_distribution<std::size_t>(0, last)(engine_));
    }

private:
    std::mt19937 engine_;
};
