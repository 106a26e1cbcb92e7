// Holders of any value, each by what the jobs need: how it makes a value of a kind, compares two, and
// turns a number into text and back. What a peer cannot do it does not have.
#pragma once

#include <core/values/Value.h>
#include <core/values/ValueOrder.h>

#include <any>
#include <memory>
#include <string>
#include <variant>

#ifdef ORBCORE_PEER_QT
#include <QDateTime>
#include <QVariant>
#endif
#ifdef ORBCORE_PEER_GLIB
#include <glib.h>
#endif
#ifdef ORBCORE_PEER_POCO
#include <Poco/DateTime.h>
#include <Poco/Dynamic/Var.h>
#endif

namespace bench {

enum class Kind { Boolean, Digit, Number, Short, Long, Date };

inline constexpr std::u16string_view kLong = u"a text that takes a block of its own";

// The texts of a kind, different for different numbers.
inline std::u16string text_of(Kind kind, unsigned i) {
    const std::string digits = std::to_string(i % 1000);
    std::u16string text(digits.begin(), digits.end());
    return kind == Kind::Long ? std::u16string(kLong) + text : text;
}

struct Ours {
    using Value = core::Value;
    static constexpr const char* kName = "orbcore";
    static Value make(Kind kind, unsigned i) {
        switch (kind) {
        case Kind::Boolean:
            return i % 2 == 0;
        case Kind::Digit:
            return i % 10;
        case Kind::Number:
            return 1000 + i;
        case Kind::Date:
            return core::Date::fromTicks(1 + i * 864'000'000ull);
        default:
            return stdx::ustring(text_of(kind, i));
        }
    }
    static bool equal(const Value& a, const Value& b) { return a == b; }
    static auto less() { return core::ValueLess(); }
    static double read(const Value& value) { return value.as<double>(); }
    static Value to_text(const Value& value) { return core::to_string(value); }
    static Value to_number(const Value& value) {
        core::Numeric number;
        value.getNumeric(number);
        return number;
    }
};

// The standard library's, with the kinds known to the compiler: the bound of what a machine can do.
struct Variant {
    using Value = std::variant<std::monostate, bool, double, std::u16string, core::Date>;
    static constexpr const char* kName = "variant";
    static Value make(Kind kind, unsigned i) {
        switch (kind) {
        case Kind::Boolean:
            return i % 2 == 0;
        case Kind::Digit:
            return double(i % 10);
        case Kind::Number:
            return double(1000 + i);
        case Kind::Date:
            return core::Date::fromTicks(1 + i * 864'000'000ull);
        default:
            return text_of(kind, i);
        }
    }
    static bool equal(const Value& a, const Value& b) { return a == b; }
    static auto less() { return std::less<Value>(); }
    static double read(const Value& value) { return std::get<double>(value); }
};

struct Any {
    using Value = std::any;
    static constexpr const char* kName = "any";
    static Value make(Kind kind, unsigned i) {
        return std::visit([](const auto& value) { return Value(value); }, Variant::make(kind, i));
    }
    static double read(const Value& value) { return std::any_cast<double>(value); }
};

struct Shared {
    using Value = std::shared_ptr<const Variant::Value>;
    static constexpr const char* kName = "shared_ptr";
    static Value make(Kind kind, unsigned i) {
        return std::make_shared<const Variant::Value>(Variant::make(kind, i));
    }
    static bool equal(const Value& a, const Value& b) { return *a == *b; }
    static double read(const Value& value) { return std::get<double>(*value); }
};

#ifdef ORBCORE_PEER_QT
struct Qt {
    using Value = QVariant;
    static constexpr const char* kName = "qt";
    static Value make(Kind kind, unsigned i) {
        switch (kind) {
        case Kind::Boolean:
            return i % 2 == 0;
        case Kind::Digit:
            return double(i % 10);
        case Kind::Number:
            return double(1000 + i);
        case Kind::Date:
            return QDateTime::fromMSecsSinceEpoch(i * 86'400'000ll, ::Qt::UTC);
        default:
            return QString::fromStdU16String(text_of(kind, i));
        }
    }
    static bool equal(const Value& a, const Value& b) { return a == b; }
    // Its own order is deprecated, since it is none where types differ: types first, as ours.
    static auto less() {
        return [](const Value& a, const Value& b) {
            if (a.userType() != b.userType()) return a.userType() < b.userType();
            switch (a.userType()) {
            case QMetaType::QString:
                return a.toString().localeAwareCompare(b.toString()) < 0;
            case QMetaType::QDateTime:
                return a.toDateTime() < b.toDateTime();
            case QMetaType::Bool:
                return a.toBool() < b.toBool();
            default:
                return a.toDouble() < b.toDouble();
            }
        };
    }
    static double read(const Value& value) { return value.toDouble(); }
    static Value to_text(const Value& value) { return value.toString(); }
    static Value to_number(const Value& value) { return value.toDouble(); }
};
#endif

#ifdef ORBCORE_PEER_GLIB
struct GLib {
    struct Value {
        explicit Value(GVariant* made) : value(g_variant_ref_sink(made)) {}
        Value(const Value& other) : value(g_variant_ref(other.value)) {}
        Value& operator=(const Value& other) {
            g_variant_ref(other.value);
            g_variant_unref(std::exchange(value, other.value));
            return *this;
        }
        ~Value() { g_variant_unref(value); }
        GVariant* value;
    };
    static constexpr const char* kName = "glib";
    static Value make(Kind kind, unsigned i) {
        switch (kind) {
        case Kind::Boolean:
            return Value(g_variant_new_boolean(i % 2 == 0));
        case Kind::Digit:
            return Value(g_variant_new_double(i % 10));
        case Kind::Number:
            return Value(g_variant_new_double(1000 + i));
        case Kind::Date:
            return Value(g_variant_new_int64(i * 864'000'000ll));
        default: {
            const std::u16string text = text_of(kind, i);
            return Value(g_variant_new_string(std::string(text.begin(), text.end()).c_str()));
        }
        }
    }
    static bool equal(const Value& a, const Value& b) { return g_variant_equal(a.value, b.value); }
    static auto less() {
        return [](const Value& a, const Value& b) {
            const GVariantType* const type = g_variant_get_type(a.value);
            const GVariantType* const other = g_variant_get_type(b.value);
            if (!g_variant_type_equal(type, other))
                return *g_variant_get_type_string(a.value) < *g_variant_get_type_string(b.value);
            return g_variant_compare(a.value, b.value) < 0;
        };
    }
    static double read(const Value& value) { return g_variant_get_double(value.value); }
};
#endif

#ifdef ORBCORE_PEER_POCO
struct Poco {
    using Value = ::Poco::Dynamic::Var;
    static constexpr const char* kName = "poco";
    static Value make(Kind kind, unsigned i) {
        switch (kind) {
        case Kind::Boolean:
            return i % 2 == 0;
        case Kind::Digit:
            return double(i % 10);
        case Kind::Number:
            return double(1000 + i);
        case Kind::Date:
            return ::Poco::DateTime(::Poco::Timestamp(i * 86'400'000'000ll));
        default: {
            const std::u16string text = text_of(kind, i);
            return std::string(text.begin(), text.end());
        }
        }
    }
    static bool equal(const Value& a, const Value& b) { return a == b; }
    static double read(const Value& value) { return value.convert<double>(); }
    static Value to_text(const Value& value) { return value.convert<std::string>(); }
    static Value to_number(const Value& value) { return value.convert<double>(); }
};
#endif

} // namespace bench
