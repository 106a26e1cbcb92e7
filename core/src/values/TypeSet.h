// The types of a pattern or domain: GUIDs in ascending order, a few of them in place.
//
// A lookup goes by the first words, which are random enough that hardly ever two are equal.
#pragma once

#include <core/component/Guid.h>

#include <boost/container/small_vector.hpp>

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

namespace core {

class TypeSet {
public:
    auto begin() const noexcept { return types_.begin(); }
    auto end() const noexcept { return types_.end(); }
    bool empty() const noexcept { return types_.empty(); }
    std::size_t size() const noexcept { return types_.size(); }
    const _GUID& front() const noexcept { return types_.empty() ? kUUIDNull : types_.front(); }
    std::span<const _GUID> all() const noexcept { return {types_.data(), types_.size()}; }

    bool contains(const _GUID& type) const noexcept {
        auto place = types_.begin();
        if (types_.size() > kFew)
            place = std::ranges::lower_bound(types_, type.Data1, {}, &_GUID::Data1);
        for (; place != types_.end() && place->Data1 <= type.Data1; ++place)
            if (*place == type) return true;
        return false;
    }

    void insert(const _GUID& type) {
        const auto place = std::ranges::lower_bound(types_, type);
        if (place == types_.end() || *place != type) types_.insert(place, type);
    }
    // In any order, repeated or not: for sets whose size comes from outside.
    void insert(std::vector<_GUID> types) {
        std::ranges::sort(types);
        types.erase(std::unique(types.begin(), types.end()), types.end());
        merge(types);
    }
    // Of types in ascending order, which may be this set's own.
    void merge(std::span<const _GUID> types) {
        Types both;
        both.reserve(types_.size() + types.size());
        std::ranges::set_union(types_, types, std::back_inserter(both));
        types_ = std::move(both);
    }

    bool includes(const TypeSet& other) const noexcept {
        return std::ranges::includes(types_, other.types_);
    }
    friend bool operator==(const TypeSet&, const TypeSet&) = default;

private:
    // So many are looked through one by one, which is quicker than to halve them.
    static constexpr std::size_t kFew = 8;

    using Types = boost::container::small_vector<_GUID, 4>;
    Types types_;
};

} // namespace core
