#include <core/text/InternedString.h>

#include <core/concurrency/IRWMutex.h>
#include <core/concurrency/LockGuards.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace core {

namespace {

// All texts of one kind of record. Records are never freed: strings that point to them may outlive
// everything.
template <class Data> class InternTable {
public:
    using View = typename Data::View;

    // Lives for ever, for strings that are made while the program ends.
    static InternTable& instance() {
        static InternTable& table = *new InternTable;
        return table;
    }

    const Data* empty() const noexcept { return &empty_; }

    const Data* intern(View text) {
        if (text.empty()) return &empty_;
        {
            const ReaderLock lock(mutex_);
            const auto place = place_of(text);
            if (holds(place, text)) return *place;
        }
        const WriterLock lock(mutex_);
        // Somebody else may have been faster.
        const auto place = place_of(text);
        if (holds(place, text)) return *place;
        auto record = std::unique_ptr<const Data>(new Data{typename Data::Text(text)});
        records_.insert(place, record.get());
        return record.release();
    }

private:
    using Records = std::vector<const Data*>;
    using Place = typename Records::const_iterator;

    Place place_of(View text) const noexcept {
        return std::lower_bound(
            records_.begin(), records_.end(), text,
            [](const Data* record, View t) { return Data::order(record->text, t) < 0; });
    }

    bool holds(Place place, View text) const noexcept {
        return place != records_.end() && Data::order((*place)->text, text) == 0;
    }

    SimpleRWMutex mutex_;
    const Data empty_{};
    Records records_; // ascending by Data::order; changed by writers only
};

} // namespace

template <class T, class Data> auto basic_cstring<T, Data>::intern(View text) -> basic_cstring {
    return basic_cstring(InternTable<Data>::instance().intern(text));
}

template <class T, class Data> const Data* basic_cstring<T, Data>::empty_data() noexcept {
    return InternTable<Data>::instance().empty();
}

template class basic_cstring<char>;
template class basic_cstring<char16_t>;
template class basic_cstring<char, cstring_data_nocase<char>>;
template class basic_cstring<char16_t, cstring_data_nocase<char16_t>>;

} // namespace core
