// Thrown for a text that is no hexadecimal number. No part of the exception family: it is neither
// stored nor kept.
#pragma once

#include <core/platform/api.h>

namespace core {

class ORBCORE_API HexConvExc {};

} // namespace core
