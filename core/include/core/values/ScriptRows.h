// The rows of a table of what scripts see of a class; core/values/ScriptTable.h tells how one is made.
#pragma once

#include <core/values/BaseTypes.h>
#include <core/values/Value.h>

#include <concepts>
#include <initializer_list>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace core {

// What stands for an argument that a script leaves out: nothing, or a constant. `std::nullopt` is the
// undefined value.
class ScriptDefault {
public:
    constexpr ScriptDefault() noexcept : kind_(Kind::None), integer_(0) {}
    constexpr ScriptDefault(std::nullopt_t) noexcept : kind_(Kind::Undefined), integer_(0) {}
    constexpr ScriptDefault(std::same_as<bool> auto value) noexcept
        : kind_(Kind::Boolean), integer_(value) {}
    template <NativeInteger T>
    constexpr ScriptDefault(T value)
        : kind_(Kind::Integer), integer_(static_cast<long long>(value)) {
        if (!std::in_range<long long>(value)) throw "a default value is a number of 64 bits";
    }
    constexpr ScriptDefault(double value) noexcept : kind_(Kind::Real), real_(value) {}
    constexpr ScriptDefault(const char16_t* value) noexcept : kind_(Kind::String), text_(value) {}

    constexpr explicit operator bool() const noexcept { return kind_ != Kind::None; }
    // Whether it suits a parameter of the type, null being any.
    constexpr bool fits(const _GUID* type, bool optional) const noexcept {
        switch (kind_) {
        case Kind::None:
            return true;
        case Kind::Undefined:
            return optional || !type;
        case Kind::Boolean:
            return !type || *type == CLSID_BooleanType;
        case Kind::Integer:
        case Kind::Real:
            return !type || *type == CLSID_NumericType;
        case Kind::String:
            return !type || *type == CLSID_StringType;
        }
        return false;
    }
    ORBCORE_API void writeTo(GenericValue& to) const;

private:
    enum class Kind : unsigned char { None, Undefined, Boolean, Integer, Real, String };

    Kind kind_;
    union {
        long long integer_;
        double real_;
        const char16_t* text_;
    };
};

// What follows from the C++ types of a handler.
struct ScriptParameterType {
    const _GUID* type; // null is any
    bool out;
    bool optional;
};
struct ScriptSignature {
    static constexpr unsigned kAny = ~0u; // parameters are as the row says

    const void* owner; // names the class of the objects; null for none
    const ScriptParameterType* parameters;
    unsigned count;
    bool hasResult;
    const _GUID* result; // null is any
};

// Objects are those of the class of the table.
struct ScriptGetter {
    void (*invoke)(void* object, GenericValue& out) = nullptr;
    const ScriptSignature* signature = nullptr;
};
struct ScriptSetter {
    void (*invoke)(void* object, const GenericValue& value) = nullptr;
    const ScriptSignature* signature = nullptr;
};
struct ScriptAction {
    void (*invoke)(void* object, GenericValue* result,
                   std::vector<GenericValue*>& arguments) = nullptr;
    const ScriptSignature* signature = nullptr;
};
struct ScriptMaker {
    InterfacePtr<IValue> (*invoke)(std::vector<GenericValue*>& arguments) = nullptr;
    const ScriptSignature* signature = nullptr;
};

struct ScriptParameter {
    Term names;
    ScriptDefault defaultValue{};
};
struct ScriptProperty {
    Term names;
    ScriptGetter getter{};
    ScriptSetter setter{};
};
struct ScriptMethod {
    Term names;
    ScriptAction action;
    std::initializer_list<ScriptParameter> parameters{};
};
struct ScriptConstructor {
    ScriptMaker maker;
    std::initializer_list<ScriptParameter> parameters{};
};

// The lists of a class, all constants that live for ever. Without a list of constructors a script
// makes objects without arguments; with an empty one it makes none.
struct ScriptTable {
    std::span<const ScriptProperty> properties{};
    std::span<const ScriptMethod> methods{};
    std::span<const ScriptConstructor> constructors{};
    bool madeByDefault = true;
};

inline constexpr std::span<const ScriptConstructor> kNoConstructors{};

namespace detail {

// The row of a number, or null.
template <class Row> const Row* row_of(std::span<const Row> rows, int number) noexcept {
    const auto index = static_cast<std::size_t>(static_cast<unsigned>(number));
    return index < rows.size() ? &rows[index] : nullptr;
}

} // namespace detail

} // namespace core
