// Rnd and Randomize: Basic's 24-bit linear congruential generator.
//
//   x' = (x * 1140671485 + 12820163) mod 2^24,   Rnd = x' / 2^24
//
// (the multiplier is 16598013 modulo 2^24). The state starts at 327680 each
// time the library loads, so without Randomize the sequence is always the
// same. Rnd(n) with n < 0 first sets the state from the bits of n as a
// Single ((bits + bits >> 24) mod 2^24); Rnd(0) repeats the last value;
// Randomize n replaces the middle 16 bits of the state with a hash of the
// high 32 bits of n as a Double, and Randomize alone does the same with the
// bits of Timer as a Single. The state is global to the library instance.
#pragma once
#include <cstdint>

namespace qvt {

float Rnd();
float Rnd(float number);
void Randomize();
void Randomize(double number);

// The generator state (24 bits), for tests and for saving a sequence.
uint32_t rndState() noexcept;
void setRndState(uint32_t state) noexcept;

}  // namespace qvt
