// The keys of a keyboard, as scripts name them.
#pragma once

#include <core/values/EnumValue.h>

namespace core {

// ---- Key / Клавиша

// Keys by the codes of virtual keys.
enum class EnumValuesKey : std::int32_t {
    None = 0,
    BackSpace = 8,
    Space = 32,
    _0 = 48,
    _1 = 49,
    _2 = 50,
    _3 = 51,
    _4 = 52,
    _5 = 53,
    _6 = 54,
    _7 = 55,
    _8 = 56,
    _9 = 57,
    A = 65,
    B = 66,
    C = 67,
    D = 68,
    E = 69,
    F = 70,
    G = 71,
    H = 72,
    I = 73,
    J = 74,
    K = 75,
    L = 76,
    M = 77,
    N = 78,
    O = 79,
    P = 80,
    Q = 81,
    R = 82,
    S = 83,
    T = 84,
    U = 85,
    V = 86,
    W = 87,
    X = 88,
    Y = 89,
    Z = 90,
    Num0 = 96,
    Num1 = 97,
    Num2 = 98,
    Num3 = 99,
    Num4 = 100,
    Num5 = 101,
    Num6 = 102,
    Num7 = 103,
    Num8 = 104,
    Num9 = 105,
    NumMultiply = 106,
    NumAdd = 107,
    NumSubtract = 109,
    NumDecimal = 110,
    NumDivide = 111,
    F1 = 112,
    F2 = 113,
    F3 = 114,
    F4 = 115,
    F5 = 116,
    F6 = 117,
    F7 = 118,
    F8 = 119,
    F9 = 120,
    F10 = 121,
    F11 = 122,
    F12 = 123,
    Break = 3
};

inline constexpr Term kPropEnumTermKey = {u"Key", u"Клавиша"};
inline constexpr _GUID CLSID_EnumValuesKey_Factory = "b565bccb-0e05-4632-9887-194de55a0ce2"_guid;
inline constexpr _GUID CLSID_EnumValuesKey_FactoryType =
    "4fb771a2-074e-4f07-9974-844b57a06506"_guid;
inline constexpr _GUID CLSID_EnumValuesKey_Type = "a3b91a80-7dcf-4bfc-b796-1dc379419101"_guid;

} // namespace core

ORBCORE_ENUMERATION(EnumValuesKey, EnumValuesKey, kPropEnumTermKey);
