#include "frame/Random.h"

#include <cstring>

#include "frame/DateMath.h"

namespace qvt {

namespace {

constexpr uint32_t kInitialState = 327680;
constexpr uint32_t kMask = 0xFFFFFF;
uint32_t gState = kInitialState;

uint32_t step(uint32_t x) noexcept { return (x * 1140671485u + 12820163u) & kMask; }

float toUnit(uint32_t x) noexcept { return static_cast<float>(x) * (1.0f / 16777216.0f); }

// The 16-bit hash Randomize mixes into bits 8..23 of the state.
void mixSeed(uint32_t bits) noexcept {
    const uint32_t middle = ((bits & 0xFFFF) << 8) ^ ((bits >> 8) & 0xFFFF00);
    gState = (middle | (gState & 0xFF0000FF)) & kMask;
}

}  // namespace

float Rnd() { return Rnd(1.0f); }

float Rnd(float number) {
    if (number != 0.0f) {
        if (number < 0.0f) {
            uint32_t bits;
            std::memcpy(&bits, &number, sizeof bits);
            gState = (bits + (bits >> 24)) & kMask;
        }
        gState = step(gState);
    }
    return toUnit(gState);
}

void Randomize() {
    const float t = timerSeconds();
    uint32_t bits;
    std::memcpy(&bits, &t, sizeof bits);
    mixSeed(bits);
}

void Randomize(double number) {
    uint64_t bits;
    std::memcpy(&bits, &number, sizeof bits);
    mixSeed(static_cast<uint32_t>(bits >> 32));
}

uint32_t rndState() noexcept { return gState; }
void setRndState(uint32_t state) noexcept { gState = state & kMask; }

}  // namespace qvt
