// The operations of a reader over text that lies in memory piece by piece. A class says where its
// text is; the template reads it:
//
//   class X : public ..., public WindowReader<X, IReader> {
//       std::u16string_view units();     // the units that come next; empty only at the end
//       void pass(unsigned n);           // passes n of them
#pragma once

#include "UnitScan.h"

#include <core/streams/IStringBuffer.h>

#include <cstring>

namespace core {

template <class Self, class Interface>
class WindowReader
    : public Interface
    , public ITextWindow {
public:
    char16_t get() override {
        const auto units = self().units();
        if (units.empty()) return kEndOfText;
        const char16_t unit = units.front();
        self().pass(1);
        return unit;
    }
    char16_t peek() override {
        const auto units = self().units();
        return units.empty() ? kEndOfText : units.front();
    }

    unsigned read(char16_t* to, unsigned n) override { return take(n, Whole(), CopyTo(to)); }
    unsigned readUntil(char16_t stop, char16_t* to, unsigned n) override {
        return take(n, Before{stop}, CopyTo(to));
    }
    unsigned readTo(IStringBuffer* to, unsigned n) override { return take(n, Whole(), append(to)); }
    unsigned readToUntil(char16_t stop, IStringBuffer* to, unsigned n) override {
        return take(n, Before{stop}, append(to));
    }
    unsigned skip(unsigned n) override {
        return take(n, Whole(), [](std::u16string_view) {});
    }
    bool eof() override { return self().units().empty(); }

    const char16_t* window(unsigned& size) override {
        const auto units = self().units();
        size = static_cast<unsigned>(units.size());
        return units.data();
    }
    void advance(unsigned n) override { self().pass(n); }

protected:
    WindowReader() = default;
    ~WindowReader() = default;

private:
    // How much of a run is taken.
    struct Whole {
        std::size_t operator()(std::u16string_view run) const noexcept { return run.size(); }
    };
    struct Before {
        char16_t stop;
        std::size_t operator()(std::u16string_view run) const noexcept {
            return find_unit(run, stop);
        }
    };

    // Where it goes.
    struct CopyTo {
        explicit CopyTo(char16_t* memory) : to(memory) {}
        void operator()(std::u16string_view run) {
            std::memcpy(to, run.data(), run.size() * sizeof(char16_t));
            to += run.size();
        }
        char16_t* to;
    };
    static auto append(IStringBuffer* to) {
        return [to](std::u16string_view run) {
            to->append(run.data(), static_cast<unsigned>(run.size()));
        };
    }

    template <class Extent, class Sink> unsigned take(unsigned n, Extent extent, Sink sink) {
        if constexpr (requires { self().cut(n); }) n = self().cut(n);
        unsigned taken = 0;
        while (n == kAllUnits || taken < n) {
            std::u16string_view run = self().units();
            if (run.empty()) break;
            if (n != kAllUnits) run = run.substr(0, n - taken);
            const std::size_t size = extent(run);
            if (size != 0) sink(run.substr(0, size));
            self().pass(static_cast<unsigned>(size));
            taken += static_cast<unsigned>(size);
            if (size < run.size()) break;
        }
        return taken;
    }

    Self& self() noexcept { return static_cast<Self&>(*this); }
};

} // namespace core
