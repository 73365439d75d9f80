// The answer-position table: 24 rows, each a different order of the four answer
// buttons, from which a multiple-choice question takes a random row.
#pragma once

#include <array>
#include <cstdint>

constexpr int AnswerPositionRows = 24;
using AnswerPositionTable = std::array<std::array<std::int16_t, 4>, AnswerPositionRows>;

// Stores a, b, c, d as the given row. Throws std::out_of_range for a row outside 0..23.
void fillSequence(AnswerPositionTable &table, int row, std::int16_t a, std::int16_t b,
                  std::int16_t c, std::int16_t d);

// The table holding each of the 24 permutations of 0..3 once, filled row by row.
AnswerPositionTable makeAnswerPositionTable();
