#pragma once

#include <core/component/Guid.h>

namespace test {

using core::operator""_guid;

inline constexpr _GUID CLSID_Invert = "5d0c1e37-92ab-4f6e-8b54-c7703aa1e926"_guid;

} // namespace test
