// Thrown for a text that is no hexadecimal number. No part of the exception family: it is neither
// stored nor kept.
#pragma once

namespace core {

class HexConvExc {};

} // namespace core
