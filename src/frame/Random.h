// Rnd: Basic's 24-bit linear congruential generator.
//
//   x' = (x * 1140671485 + 12820163) mod 2^24,   Rnd = x' / 2^24
//
// The state starts at 327680 when the library loads, so the sequence is the
// same on every run until something reseeds it. The state is global to the
// library instance (one thread, as everywhere in the library).
#pragma once
#include <cstdint>

namespace qvt {

namespace detail {
inline uint32_t& rndStateRef() noexcept {
    static uint32_t state = 327680u;
    return state;
}
}  // namespace detail

// The next value in [0, 1).
inline float Rnd() noexcept {
    uint32_t& x = detail::rndStateRef();
    x = (x * 1140671485u + 12820163u) & 0xFFFFFFu;
    return float(x) / 16777216.0f;
}

}  // namespace qvt
