// The 96-bit Decimal of the value model: an unsigned 96-bit integer, a sign
// and a power-of-ten scale 0..28. Value = (-1)^negative * (hi:lo) / 10^scale.
#pragma once
#include <cstdint>

namespace qvt {

struct Decimal {
    uint64_t lo = 0;
    uint32_t hi = 0;
    uint8_t scale = 0;
    bool negative = false;
};

}  // namespace qvt
