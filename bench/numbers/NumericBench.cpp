// Numbers beside other decimals, and beside binary integers as the bound of what the machine can do.
// What should hold: amounts of 18 digits are ahead of every decimal in every operation; long numbers
// are ahead of libmpdec, which is the one inside Python's decimal; reading and printing an amount takes
// at most 1.5 times what an integer and a point take.
#include <core/numbers/Numeric.h>

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <string>
#include <vector>

#ifdef ORBCORE_PEER_MULTIPRECISION
#include <boost/multiprecision/cpp_dec_float.hpp>
#include <boost/multiprecision/cpp_int.hpp>
#endif
#ifdef ORBCORE_PEER_GMP
#include <gmpxx.h>
#endif
#ifdef ORBCORE_PEER_PYTHON
#include <Python.h>
#endif

namespace {

using core::Numeric;

// A number of so many digits; `places` of them behind the point.
std::string digits(std::size_t count, std::size_t places, unsigned seed) {
    std::string text(count, '0');
    for (char& digit : text)
        digit = static_cast<char>('1' + ((seed = seed * 1664525 + 1013904223) >> 16) % 9);
    if (places != 0) text.insert(count - places, 1, '.');
    return text;
}

// "add 18" of a peer is "add/peer/18": job, who, digits of the operands.
std::string name_of(const std::string& job, const char* who) {
    const std::size_t space = job.find(' ');
    return job.substr(0, space) + '/' + who + '/' + job.substr(space + 1);
}

// Each peer makes a number of a text and has the operators; its name is the second part of a job.
struct Ours {
    using Number = Numeric;
    static constexpr const char* kName = "orbcore";
    static Number make(const std::string& text) { return Numeric::parse(text).value(); }
    static Number round(const Number& number) {
        return number.round(2, core::NumericRoundMode::HalfUp);
    }
};

#ifndef __clang__ // which has no such type in C++
struct Decimal128 {
    using Number = float __attribute__((mode(TD)));
    static constexpr const char* kName = "decimal128";
    static Number make(const std::string& text) {
        const auto number = [](int value) { return static_cast<Number>(value); };
        Number value = number(0), scale = number(1);
        bool behind = false;
        for (const char c : text) {
            behind = behind || c == '.';
            if (c == '.') continue;
            value = value * number(10) + number(c - '0');
            if (behind) scale *= number(10);
        }
        return value / scale;
    }
};
#endif

// Amounts as integers of the smallest coin: no decimal, a bound.
struct Scaled128 {
    __extension__ using Number = __int128;
    static constexpr const char* kName = "int128";
    static Number make(const std::string& text) {
        Number value = 0;
        for (const char c : text)
            if (c != '.') value = value * 10 + (c - '0');
        return value;
    }
};

#ifdef ORBCORE_PEER_MULTIPRECISION
struct DecFloat {
    using Number = boost::multiprecision::cpp_dec_float_50;
    static constexpr const char* kName = "cpp_dec_float_50";
    static Number make(const std::string& text) { return Number(text); }
    static Number round(const Number& number) {
        return boost::multiprecision::round(number * 100) / 100;
    }
};

struct BoostInteger {
    using Number = boost::multiprecision::cpp_int;
    static constexpr const char* kName = "cpp_int";
    static Number make(std::string text) {
        std::erase(text, '.');
        return Number(text);
    }
};
#endif

#ifdef ORBCORE_PEER_GMP
struct GmpInteger {
    using Number = mpz_class;
    static constexpr const char* kName = "gmp";
    static Number make(std::string text) {
        std::erase(text, '.');
        return Number(text);
    }
};
#endif

#ifdef ORBCORE_PEER_PYTHON
// libmpdec as Python's decimal has it, called without the interpreter; each result is an object.
struct Mpdec {
    class Number {
    public:
        explicit Number(PyObject* object) : object_(object) {}
        Number(const Number& other) : object_(other.object_) { Py_INCREF(object_); }
        Number(Number&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
        Number& operator=(Number other) noexcept {
            std::swap(object_, other.object_);
            return *this;
        }
        ~Number() { Py_XDECREF(object_); }
        friend Number operator+(const Number& a, const Number& b) {
            return Number(PyNumber_Add(a.object_, b.object_));
        }
        friend Number operator-(const Number& a, const Number& b) {
            return Number(PyNumber_Subtract(a.object_, b.object_));
        }
        friend Number operator*(const Number& a, const Number& b) {
            return Number(PyNumber_Multiply(a.object_, b.object_));
        }
        friend Number operator/(const Number& a, const Number& b) {
            return Number(PyNumber_TrueDivide(a.object_, b.object_));
        }
        Number& operator+=(const Number& other) { return *this = *this + other; }
        PyObject* get() const { return object_; }

    private:
        PyObject* object_;
    };
    static constexpr const char* kName = "libmpdec";

    static PyObject* module() {
        static PyObject* const decimal = [] {
            Py_Initialize();
            return PyImport_ImportModule("decimal");
        }();
        return decimal;
    }
    // The digits that results are rounded to.
    static void set_precision(long precision) {
        PyObject* const context = PyObject_CallMethod(module(), "getcontext", nullptr);
        PyObject* const digits = PyLong_FromLong(precision);
        PyObject_SetAttrString(context, "prec", digits);
        Py_DECREF(digits);
        Py_DECREF(context);
    }
    static Number make(const std::string& text) {
        static PyObject* const type = PyObject_GetAttrString(module(), "Decimal");
        return Number(PyObject_CallFunction(type, "s", text.c_str()));
    }
    static Number round(const Number& number) {
        static PyObject* const places = PyLong_FromLong(2);
        static PyObject* const name = PyUnicode_FromString("__round__");
        return Number(PyObject_CallMethodOneArg(number.get(), name, places));
    }
};
#endif

// `precision`: the digits of the result, for the peers that want to know.
template <class Peer, class Operation>
void job(const std::string& name, const std::string& a, const std::string& b, Operation operation,
         std::size_t precision = 40) {
    benchmark::RegisterBenchmark(name_of(name, Peer::kName).c_str(), [=](benchmark::State& state) {
        const auto x = Peer::make(a), y = Peer::make(b);
        if constexpr (requires { Peer::set_precision(1); })
            Peer::set_precision(static_cast<long>(precision));
        for (auto _ : state) {
            benchmark::DoNotOptimize(&x);
            benchmark::ClobberMemory();
            benchmark::DoNotOptimize(operation(x, y));
        }
    });
}

constexpr auto kAdd = [](const auto& a, const auto& b) { return std::decay_t<decltype(a)>(a + b); };
constexpr auto kSubtract = [](const auto& a, const auto& b) {
    return std::decay_t<decltype(a)>(a - b);
};
constexpr auto kMultiply = [](const auto& a, const auto& b) {
    return std::decay_t<decltype(a)>(a * b);
};
constexpr auto kDivide = [](const auto& a, const auto& b) {
    return std::decay_t<decltype(a)>(a / b);
};

template <class Peer> void sum_of_a_million() {
    benchmark::RegisterBenchmark(name_of("sum 1000000", Peer::kName).c_str(),
                                 [](benchmark::State& state) {
                                     std::vector<typename Peer::Number> amounts;
                                     for (unsigned i = 0; i != 1'000'000; ++i)
                                         amounts.push_back(Peer::make(digits(5 + i % 14, 2, i)));
                                     for (auto _ : state) {
                                         auto sum = Peer::make("0.00");
                                         for (const auto& amount : amounts) sum += amount;
                                         benchmark::DoNotOptimize(&sum);
                                     }
                                 })
        ->Unit(benchmark::kMillisecond);
}

const std::string kAmount = digits(18, 2, 1), kAmount2 = digits(18, 2, 2);

template <class Peer> void amounts() {
    job<Peer>("add 18", kAmount, kAmount2, kAdd);
    job<Peer>("subtract 18", kAmount, kAmount2, kSubtract);
    job<Peer>("multiply 18", kAmount, kAmount2, kMultiply);
    job<Peer>("multiply 9x6", digits(9, 2, 3), digits(6, 3, 4), kMultiply);
    job<Peer>("divide 18", kAmount, kAmount2, kDivide);
    sum_of_a_million<Peer>();
}

template <class Peer> void decimals() {
    job<Peer>("divide 1x1", "1", "3", kDivide);
    job<Peer>("round 18", digits(18, 6, 5), "1",
              [](const auto& a, const auto&) { return Peer::round(a); });
}

template <class Peer> void long_numbers() {
    for (const std::size_t n : {100u, 1000u, 10'000u}) {
        const std::string size = std::to_string(n);
        job<Peer>("add " + size, digits(n, 2, 6), digits(n, 2, 7), kAdd, n + 1);
        job<Peer>("multiply " + size, digits(n, 0, 6), digits(n, 0, 7), kMultiply, 2 * n);
    }
    job<Peer>("divide 100x50", digits(100, 0, 8), digits(50, 0, 9), kDivide, 130);
    job<Peer>("divide 1000x500", digits(1000, 0, 8), digits(500, 0, 9), kDivide, 1030);
}

// ---- Text.

template <class Text> void text_job(const std::string& name, Text text) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) mutable {
        for (auto _ : state) benchmark::DoNotOptimize(text());
    });
}

// An integer of cents with its point: what nobody can do without.
std::int64_t read_scaled(const std::string& text) {
    std::int64_t whole = 0, cents = 0;
    const char* const end = text.data() + text.size();
    const auto point = std::from_chars(text.data(), end, whole).ptr;
    std::from_chars(point + 1, end, cents);
    return whole * 100 + cents;
}

char* print_scaled(char* out, char* end, std::int64_t value) {
    out = std::to_chars(out, end, value / 100).ptr;
    const auto cents = static_cast<char>(value % 100);
    *out++ = '.';
    *out++ = static_cast<char>('0' + cents / 10);
    *out++ = static_cast<char>('0' + cents % 10);
    return out;
}

void texts() {
    for (const std::size_t n : {18u, 100u, 1000u}) {
        const std::string text = digits(n, 2, 1), size = std::to_string(n);
        const std::u16string wide(text.begin(), text.end());
        text_job(name_of("read " + size, "orbcore"), [=] {
            Numeric number;
            core::from_chars(text.data(), text.data() + text.size(), number);
            return number;
        });
        text_job(name_of("read_wide " + size, "orbcore"), [=] {
            Numeric number;
            number.fromString(wide.c_str());
            return number;
        });
        text_job(name_of("print " + size, "orbcore"), [number = Ours::make(text)] {
            std::array<char, 1024> out;
            core::to_chars(out.data(), out.data() + out.size(), number);
            return out[0];
        });
        text_job(name_of("to_wide_string " + size, "orbcore"),
                 [number = Ours::make(text)] { return number.toString(); });
#ifdef ORBCORE_PEER_MULTIPRECISION
        text_job(name_of("read " + size, "cpp_int"), [=] { return BoostInteger::make(text); });
        text_job(name_of("print " + size, "cpp_int"),
                 [number = BoostInteger::make(text)] { return number.str(); });
        if (n == 18) {
            text_job(name_of("read 18", "cpp_dec_float_50"), [=] { return DecFloat::make(text); });
            text_job(name_of("print 18", "cpp_dec_float_50"),
                     [number = DecFloat::make(text)] { return number.str(0, std::ios::fixed); });
        }
#endif
#ifdef ORBCORE_PEER_PYTHON
        text_job(name_of("read " + size, "libmpdec"), [=] { return Mpdec::make(text); });
        text_job(name_of("print " + size, "libmpdec"), [number = Mpdec::make(text)] {
            return Mpdec::Number(PyObject_Str(number.get()));
        });
#endif
#ifdef ORBCORE_PEER_GMP
        text_job(name_of("print " + size, "gmp"),
                 [number = GmpInteger::make(text)] { return number.get_str(); });
#endif
    }
    text_job(name_of("read 18", "scaled_int64"), [] { return read_scaled(kAmount); });
    text_job(name_of("print 18", "scaled_int64"), [value = read_scaled(kAmount)]() mutable {
        std::array<char, 32> out;
        benchmark::DoNotOptimize(&value);
        benchmark::ClobberMemory();
        print_scaled(out.data(), out.data() + out.size(), value);
        return out[0];
    });
}

[[maybe_unused]] const bool registered = [] {
    amounts<Ours>();
    amounts<Scaled128>();
    decimals<Ours>();
    long_numbers<Ours>();
#ifndef __clang__
    amounts<Decimal128>();
    job<Decimal128>("divide 1x1", "1", "3", kDivide);
#endif
#ifdef ORBCORE_PEER_MULTIPRECISION
    amounts<DecFloat>();
    decimals<DecFloat>();
    amounts<BoostInteger>();
    long_numbers<BoostInteger>();
#endif
#ifdef ORBCORE_PEER_GMP
    amounts<GmpInteger>();
    long_numbers<GmpInteger>();
#endif
#ifdef ORBCORE_PEER_PYTHON
    amounts<Mpdec>();
    decimals<Mpdec>();
    long_numbers<Mpdec>();
#endif
    texts();
    return true;
}();

} // namespace
