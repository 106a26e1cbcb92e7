// Constant strings of which each text exists once: equal strings are the same pointer.
//
//   const auto name = core::basic_cstring<char16_t>::intern(u"Count");
//   if (name == column.name) ...                     // one comparison of pointers
//
// Take them for names that are compared far more often than they are made. A text that was interned
// once stays for ever; making one costs a binary search under a reader lock, and a new text moves
// the table's tail under the writer lock. All functions may be called from any thread; the text may
// be read without a lock.
#pragma once

#include <core/platform/api.h>
#include <core/text/Compare.h>
#include <elm/string>

#include <compare>
#include <cstdint>
#include <functional>
#include <string_view>

namespace core {

// A record of the intern table: the text, and the order that makes texts equal.
template <class T> struct ORBCORE_API cstring_data {
    using Text = elm::BasicString<T, 0u, 0u, std::allocator>;
    using View = std::basic_string_view<T>;

    static int order(View a, View b) noexcept { return core::compare(a, b); }

    const Text text;
};

// The record of texts that are equal in any case of letters. The spelling that came first stands
// for all.
template <class T> struct ORBCORE_API cstring_data_nocase {
    using Text = typename cstring_data<T>::Text;
    using View = std::basic_string_view<T>;

    static int order(View a, View b) noexcept { return core::compare_nocase(a, b); }

    const Text text;
};

// An interned string, the empty one by default. Instantiated for `char` and `char16_t`, with each
// of the records.
template <class T, class Data = cstring_data<T>> class ORBCORE_API basic_cstring {
public:
    using Text = typename Data::Text;
    using View = typename Data::View;

    basic_cstring() noexcept : data_(empty_data()) {}

    // The string with this text. Throws std::bad_alloc, for a new text only.
    static basic_cstring intern(View text);

    // The record of the empty string.
    static const Data* empty_data() noexcept;

    const Text& str() const noexcept { return data_->text; }
    View view() const noexcept { return data_->text.view(); }
    const T* c_str() const noexcept { return data_->text.c_str(); }
    unsigned size() const noexcept { return data_->text.size(); }
    bool empty() const noexcept { return data_ == empty_data(); }

    friend bool operator==(basic_cstring a, basic_cstring b) noexcept { return a.data_ == b.data_; }
    // By text, not by pointer: the same in every run.
    friend std::weak_ordering operator<=>(basic_cstring a, basic_cstring b) noexcept {
        return a.data_ == b.data_ ? std::weak_ordering::equivalent
                                  : Data::order(a.view(), b.view()) <=> 0;
    }

private:
    friend std::hash<basic_cstring>;

    explicit basic_cstring(const Data* data) noexcept : data_(data) {}

    const Data* data_;
};

extern template class basic_cstring<char>;
extern template class basic_cstring<char16_t>;
extern template class basic_cstring<char, cstring_data_nocase<char>>;
extern template class basic_cstring<char16_t, cstring_data_nocase<char16_t>>;

} // namespace core

template <class T, class Data> struct std::hash<core::basic_cstring<T, Data>> {
    std::size_t operator()(core::basic_cstring<T, Data> s) const noexcept {
        return std::hash<const Data*>()(s.data_);
    }
};
