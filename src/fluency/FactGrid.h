// The fluency grid of one operation: every fact the levels ask, placed by its
// two numbers and marked with how well the child knows it.
//
// A subtraction or division fact is the problem as the child met it: 12 − 5
// and 12 − 7 are two facts, as a child who knows one may not know the other.
// They are generated backwards from an addition and a multiplication, so the
// grid places them by the numbers the level draws: the row is the number taken
// away (or divided by), the column the answer. Row 5 column 7 of the
// subtraction grid is 12 − 5, just where 5 + 7 stands in the addition grid.
#pragma once

#include "core/HistoryTypes.h"
#include "core/TestBank.h"
#include "fluency/Mastery.h"

#include <cstdint>
#include <string>
#include <vector>

struct FactCell {
    std::int64_t number1 = 0; // the fact as asked: number1 <operation> number2
    std::int64_t number2 = 0;
    FactTally tally;
    Mastery mastery = Mastery::Untried;
};

// Past this the numbers make a table too big to read at a glance; the grid then
// lists the facts tried, a row for each first number.
constexpr std::int64_t LargestTableNumber = 20;

struct FactGrid {
    int operation = 0;
    // A table of rowNumbers × columnNumbers, or the tried facts in groups, one
    // per rowNumbers entry (their first number).
    bool table = true;
    std::vector<std::int64_t> rowNumbers;
    std::vector<std::int64_t> columnNumbers; // the table's only
    std::vector<std::vector<FactCell>> rows;
    int known = 0;
    int facts = 0; // the table's cells, or the facts tried
    // "38 of 169 multiplication facts known"
    std::string summary() const;
};

// One grid for each operation the child has answered, in the order + − × ÷.
// The numbers of a table are those the bank's levels draw for the operation,
// widened to take in any fact tried outside them.
std::vector<FactGrid> makeFactGrids(const TestBank &bank, const std::vector<ArithmeticFact> &facts);

// Where a fact stands in its operation's table, as {row, column}; false for a
// fact no table holds (a division by zero).
bool tablePlace(int operation, std::int64_t number1, std::int64_t number2, std::int64_t &row,
                std::int64_t &column);
// The fact at row and column of an operation's table, as {number1, number2}.
void factAt(int operation, std::int64_t row, std::int64_t column, std::int64_t &number1,
            std::int64_t &number2);
