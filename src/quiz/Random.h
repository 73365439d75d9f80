// The one random source of a running program: seeded once at start-up, and
// seeded with a fixed value by tests that need repeatable draws.
#pragma once

#include <cstdint>
#include <random>

class RandomSource {
public:
    RandomSource(); // seeded from the system's entropy source
    explicit RandomSource(std::uint32_t seed);

    // A single-precision value in [0, 1).
    float fraction();

    // A uniform whole number in low..high. Throws std::overflow_error when the
    // range cannot be formed in 32 bits, std::invalid_argument when high < low.
    std::int32_t between(std::int32_t low, std::int32_t high);

private:
    std::mt19937 m_engine;
};
