#include "Random.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <stdexcept>

TEST(RandomSource, DrawsAreRepeatableEvenAndInsideTheirRangeAndImpossibleRangesAreRefused)
{
    RandomSource random(7);
    RandomSource again(7);
    double sum = 0;
    constexpr int draws = 100000;
    for (int i = 0; i < draws; ++i) {
        const float value = random.fraction();
        ASSERT_EQ(value, again.fraction());
        ASSERT_TRUE(value >= 0.0f && value < 1.0f) << value;
        sum += value;
    }
    EXPECT_NEAR(sum / draws, 0.5, 0.01);

    std::array<int, 5> counts{};
    for (int i = 0; i < 10000; ++i) {
        const std::int32_t value = random.between(-1, 3);
        ASSERT_TRUE(value >= -1 && value <= 3) << value;
        ++counts[static_cast<std::size_t>(value + 1)];
    }
    for (const int count : counts)
        EXPECT_NEAR(count, 2000, 250);
    EXPECT_EQ(random.between(9, 9), 9);

    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
    EXPECT_THROW(random.between(lowest, highest), std::overflow_error);
    EXPECT_THROW(random.between(-1, highest), std::overflow_error);
    EXPECT_THROW(random.between(5, 4), std::invalid_argument);
    // The widest ranges that still fit: High - Low + 1 is exactly the largest 32-bit value.
    EXPECT_GE(random.between(1, highest), 1);
    EXPECT_LE(random.between(lowest, -2), -2);
}
