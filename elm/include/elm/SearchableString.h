// The questions a string answers about its text: equality and search. Part of <elm/string>.
#pragma once

#include "elm/StringSearch.h"
#include "elm/StringStorage.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace elm {

// Equality and search over a StringStorage. Nothing here throws or changes the string. Places are
// counted in units; what is not found is at `npos`.
template <class T, unsigned E, template <class> class Alloc>
class ORB_ELM_API SearchableString : public StringStorage<T, E, Alloc> {
    using Storage = StringStorage<T, E, Alloc>;

public:
    using size_type = unsigned int;
    // How units of any origin are handed in: strings of this family and of the standard library,
    // C strings and views all convert to it.
    using view_type = std::basic_string_view<T>;

    static constexpr size_type npos = static_cast<size_type>(-1);

    using Storage::size;
    using Storage::Storage;

    // The units, valid while the string is neither changed nor destroyed.
    constexpr view_type view() const noexcept { return {Storage::data(), size()}; }
    constexpr operator view_type() const noexcept { return view(); }

    // True if length and all units agree.
    constexpr bool equal(const T* p, size_type n) const noexcept {
        return detail::equal(view(), view_type(p, n));
    }
    constexpr bool equal(const T* s) const noexcept { return detail::equal(view(), view_type(s)); }
    constexpr bool equal(const SearchableString& s) const noexcept {
        return detail::equal(view(), s.view());
    }
    constexpr bool not_equal(const T* p, size_type n) const noexcept { return !equal(p, n); }
    constexpr bool not_equal(const T* s) const noexcept { return !equal(s); }
    constexpr bool not_equal(const SearchableString& s) const noexcept { return !equal(s); }

    constexpr bool starts_with(view_type s) const noexcept {
        return s.size() <= size() && detail::equal(view().substr(0, s.size()), s);
    }
    constexpr bool starts_with(T c) const noexcept { return starts_with(view_type(&c, 1)); }
    constexpr bool ends_with(view_type s) const noexcept {
        return s.size() <= size() && detail::equal(view().substr(size() - s.size()), s);
    }
    constexpr bool ends_with(T c) const noexcept { return ends_with(view_type(&c, 1)); }
    bool contains(view_type s) const noexcept { return find(s) != npos; }
    bool contains(T c) const noexcept { return find(c) != npos; }

    // The first place at `pos` or behind. An empty needle is found at `pos` up to the size.
    size_type find(view_type s, size_type pos = 0) const noexcept {
        if (pos > size()) return npos;
        const view_type in = from(pos);
        return place(findstr<T, std::char_traits>(in.data(), in.size(), s.data(), s.size()));
    }
    size_type find(const T* p, size_type pos, size_type n) const noexcept {
        return find(view_type(p, n), pos);
    }
    size_type find(T c, size_type pos = 0) const noexcept {
        const view_type in = from(pos);
        return place(detail::find_unit(in.data(), in.size(), c));
    }

    // The last place that begins at `pos` or before.
    size_type rfind(view_type s, size_type pos = npos) const noexcept {
        if (s.size() > size()) return npos;
        const std::size_t last = std::min<std::size_t>(pos, size() - s.size());
        const view_type in = view().substr(0, last + s.size());
        return place(rfindstr<T, std::char_traits>(in.data(), in.size(), s.data(), s.size()));
    }
    size_type rfind(const T* p, size_type pos, size_type n) const noexcept {
        return rfind(view_type(p, n), pos);
    }
    size_type rfind(T c, size_type pos = npos) const noexcept {
        const view_type in = up_to(pos);
        return place(detail::rfind_unit(in.data(), in.size(), c));
    }

    // The first unit at `pos` or behind that is one of the set.
    size_type find_first_of(view_type set, size_type pos = 0) const noexcept {
        return first_of(set, pos, detail::Membership::In);
    }
    size_type find_first_of(const T* p, size_type pos, size_type n) const noexcept {
        return find_first_of(view_type(p, n), pos);
    }
    size_type find_first_of(T c, size_type pos = 0) const noexcept { return find(c, pos); }

    // The first unit at `pos` or behind that is none of the set.
    size_type find_first_not_of(view_type set, size_type pos = 0) const noexcept {
        return first_of(set, pos, detail::Membership::NotIn);
    }
    size_type find_first_not_of(const T* p, size_type pos, size_type n) const noexcept {
        return find_first_not_of(view_type(p, n), pos);
    }
    size_type find_first_not_of(T c, size_type pos = 0) const noexcept {
        return find_first_not_of(view_type(&c, 1), pos);
    }

    // The last unit at `pos` or before that is one of the set.
    size_type find_last_of(view_type set, size_type pos = npos) const noexcept {
        return last_of(set, pos, detail::Membership::In);
    }
    size_type find_last_of(const T* p, size_type pos, size_type n) const noexcept {
        return find_last_of(view_type(p, n), pos);
    }
    size_type find_last_of(T c, size_type pos = npos) const noexcept { return rfind(c, pos); }

    // The last unit at `pos` or before that is none of the set.
    size_type find_last_not_of(view_type set, size_type pos = npos) const noexcept {
        return last_of(set, pos, detail::Membership::NotIn);
    }
    size_type find_last_not_of(const T* p, size_type pos, size_type n) const noexcept {
        return find_last_not_of(view_type(p, n), pos);
    }
    size_type find_last_not_of(T c, size_type pos = npos) const noexcept {
        return find_last_not_of(view_type(&c, 1), pos);
    }

private:
    constexpr view_type from(size_type pos) const noexcept {
        return view().substr(std::min(pos, size()));
    }
    constexpr view_type up_to(size_type pos) const noexcept {
        return view().substr(0, std::size_t{pos} + 1);
    }
    constexpr size_type place(const T* hit) const noexcept {
        return hit ? static_cast<size_type>(hit - Storage::data()) : npos;
    }

    size_type first_of(view_type set, size_type pos, detail::Membership wanted) const noexcept {
        const view_type in = from(pos);
        return place(detail::find_of(in.data(), in.size(), set.data(), set.size(), wanted));
    }
    size_type last_of(view_type set, size_type pos, detail::Membership wanted) const noexcept {
        const view_type in = up_to(pos);
        return place(detail::rfind_of(in.data(), in.size(), set.data(), set.size(), wanted));
    }
};

} // namespace elm
