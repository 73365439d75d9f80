#include "AnswerPositions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <stdexcept>

TEST(AnswerPositions, TableHoldsEachOfThe24OrdersOnce)
{
    const AnswerPositionTable table = MakeAnswerPositionTable();
    std::set<std::array<std::int16_t, 4>> rows;
    for (const auto &row : table) {
        EXPECT_TRUE(std::is_permutation(row.begin(), row.end(),
                                        std::array<std::int16_t, 4>{0, 1, 2, 3}.begin()));
        rows.insert(row);
    }
    EXPECT_EQ(rows.size(), 24u);
}

TEST(AnswerPositions, FillSequenceStoresOnlyRowsZeroTo23)
{
    AnswerPositionTable table{};
    FillSequence(table, 23, 3, 1, 0, 2);
    EXPECT_EQ(table[23], (std::array<std::int16_t, 4>{3, 1, 0, 2}));
    EXPECT_THROW(FillSequence(table, 24, 0, 1, 2, 3), std::out_of_range);
    EXPECT_THROW(FillSequence(table, -1, 0, 1, 2, 3), std::out_of_range);
}
