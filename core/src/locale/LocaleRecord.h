// What handles on the settings of a locale share until one of them is changed.
#pragma once

#include <core/component/Refcountable.h>

namespace core {

// A record that is made for a locale lasts as long as the program, and nobody counts its references:
// all threads would do so in one place, for each number that they write. A copy, to be changed, is
// counted and belongs to those who have it.
template <class T> class LocaleRecord : public Refcountable<T, AtomicCounter> {
    using Counted = Refcountable<T, AtomicCounter>;

public:
    LocaleRecord() = default;
    LocaleRecord(const LocaleRecord&) noexcept : Counted(), lasts_(false) {}
    LocaleRecord& operator=(const LocaleRecord&) = delete;

    void AddRef() const noexcept {
        if (!lasts_) Counted::AddRef();
    }
    void Release() const noexcept {
        if (!lasts_) Counted::Release();
    }
    // Whether a holder must copy it before a change.
    bool shared() const noexcept { return lasts_ || Counted::references() > 1; }

protected:
    ~LocaleRecord() = default;

private:
    const bool lasts_ = true;
};

} // namespace core
