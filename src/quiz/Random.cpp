#include "Random.h"

#include <limits>
#include <stdexcept>

RandomSource::RandomSource() : m_engine(std::random_device{}())
{
}

RandomSource::RandomSource(std::uint32_t seed) : m_engine(seed)
{
}

float RandomSource::fraction()
{
    // The top 24 bits of one draw give every float of the form k / 2^24 exactly, so the
    // value can never round up to 1.0f (std::generate_canonical<float> may).
    constexpr float step = 1.0f / 16777216.0f;
    return static_cast<float>(m_engine() >> 8) * step;
}

std::int32_t RandomSource::between(std::int32_t low, std::int32_t high)
{
    if (high < low) {
        throw std::invalid_argument("RandomSource::between: high is below low");
    }
    const std::int64_t count = std::int64_t{high} - low + 1;
    if (count > std::numeric_limits<std::int32_t>::max()) {
        throw std::overflow_error("RandomSource::between: the range does not fit in 32 bits");
    }
    std::uniform_int_distribution<std::int64_t> distribution(low, high);
    return static_cast<std::int32_t>(distribution(m_engine));
}
