#include "AnswerPositions.h"

#include <algorithm>
#include <stdexcept>
#include <string>

void fillSequence(AnswerPositionTable &table, int row, std::int16_t a, std::int16_t b,
                  std::int16_t c, std::int16_t d)
{
    if (row < 0 || row >= AnswerPositionRows) {
        throw std::out_of_range("fillSequence: row " + std::to_string(row) + " is outside 0..23");
    }
    table[static_cast<std::size_t>(row)] = {a, b, c, d};
}

AnswerPositionTable makeAnswerPositionTable()
{
    AnswerPositionTable table{};
    std::array<std::int16_t, 4> order = {0, 1, 2, 3};
    // The permutations in lexicographic order; the row drawn is uniform, so the order of
    // the rows does not matter, only that each permutation is there once.
    for (int row = 0; row < AnswerPositionRows; ++row) {
        fillSequence(table, row, order[0], order[1], order[2], order[3]);
        std::next_permutation(order.begin(), order.end());
    }
    return table;
}
