// A span of time between two dates.
//
//   core::DateSpan shift = core::DateSpan::fromHours(8);
//   date += 2 * shift;
#pragma once

#include <core/platform/api.h>

#include <chrono>
#include <compare>
#include <concepts>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <limits>
#include <ratio>

namespace core {

// The unit in which dates count: 1/10,000 of a second.
using DateTicks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000>>;

inline constexpr std::uint64_t kTicksPerSecond = 10'000;
inline constexpr std::uint64_t kTicksPerMinute = 60 * kTicksPerSecond;
inline constexpr std::uint64_t kTicksPerHour = 60 * kTicksPerMinute;
inline constexpr std::uint64_t kTicksPerDay = 24 * kTicksPerHour;

// A signed number of ticks. Sums and products that do not fit stay at the limit of the range.
class DateSpan {
public:
    constexpr DateSpan() noexcept = default;
    constexpr explicit DateSpan(std::int64_t ticks) noexcept : ticks_(ticks) {}
    // From whatever converts to ticks without loss, as std::chrono::hours does.
    template <std::convertible_to<DateTicks> Duration>
    constexpr DateSpan(const Duration& duration) noexcept : ticks_(DateTicks(duration).count()) {}

    static constexpr DateSpan fromSeconds(std::int64_t n) noexcept {
        return n * unit(kTicksPerSecond);
    }
    static constexpr DateSpan fromMinutes(std::int64_t n) noexcept {
        return n * unit(kTicksPerMinute);
    }
    static constexpr DateSpan fromHours(std::int64_t n) noexcept { return n * unit(kTicksPerHour); }
    static constexpr DateSpan fromDays(std::int64_t n) noexcept { return n * unit(kTicksPerDay); }

    constexpr std::int64_t ticks() const noexcept { return ticks_; }
    constexpr explicit operator DateTicks() const noexcept { return DateTicks(ticks_); }

    // The absolute value, which for the lowest span does not fit into a span.
    constexpr std::uint64_t magnitude() const noexcept {
        const auto bits = static_cast<std::uint64_t>(ticks_);
        return ticks_ < 0 ? 0 - bits : bits;
    }

    constexpr DateSpan& operator+=(const DateSpan& other) noexcept { return *this = *this + other; }
    constexpr DateSpan& operator-=(const DateSpan& other) noexcept { return *this = *this - other; }

    friend constexpr DateSpan operator+(const DateSpan& a, const DateSpan& b) noexcept {
        std::int64_t sum = 0;
        return __builtin_add_overflow(a.ticks_, b.ticks_, &sum) ? limit(b.ticks_ < 0)
                                                                : DateSpan(sum);
    }
    friend constexpr DateSpan operator-(const DateSpan& a, const DateSpan& b) noexcept {
        std::int64_t difference = 0;
        return __builtin_sub_overflow(a.ticks_, b.ticks_, &difference) ? limit(b.ticks_ > 0)
                                                                       : DateSpan(difference);
    }
    friend constexpr DateSpan operator-(const DateSpan& a) noexcept { return DateSpan() - a; }
    friend constexpr DateSpan operator*(std::int64_t n, const DateSpan& a) noexcept {
        std::int64_t product = 0;
        return __builtin_mul_overflow(n, a.ticks_, &product) ? limit((n < 0) != (a.ticks_ < 0))
                                                             : DateSpan(product);
    }
    friend constexpr DateSpan operator*(const DateSpan& a, std::int64_t n) noexcept {
        return n * a;
    }

    friend constexpr bool operator==(const DateSpan&, const DateSpan&) noexcept = default;
    friend constexpr auto operator<=>(const DateSpan&, const DateSpan&) noexcept = default;

private:
    static constexpr DateSpan unit(std::uint64_t ticks) noexcept {
        return DateSpan(static_cast<std::int64_t>(ticks));
    }
    static constexpr DateSpan limit(bool negative) noexcept {
        return DateSpan(negative ? std::numeric_limits<std::int64_t>::min()
                                 : std::numeric_limits<std::int64_t>::max());
    }

    std::int64_t ticks_ = 0;
};

// The ticks, for logs and tests.
ORBCORE_API std::ostream& operator<<(std::ostream& out, const DateSpan& span);

} // namespace core

template <> struct std::hash<core::DateSpan> {
    std::size_t operator()(const core::DateSpan& span) const noexcept {
        return std::hash<std::int64_t>()(span.ticks());
    }
};
