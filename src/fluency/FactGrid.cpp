#include "fluency/FactGrid.h"

#include <algorithm>
#include <map>
#include <utility>

namespace {

// The generator keeps operands within 0..30.
constexpr std::int64_t HighestOperand = 30;

struct Span {
    std::int64_t low = 0;
    std::int64_t high = -1; // empty while high < low

    bool empty() const { return high < low; }
    void take(std::int64_t from, std::int64_t to)
    {
        from = std::clamp<std::int64_t>(from, 0, HighestOperand);
        to = std::max(from, std::clamp<std::int64_t>(to, 0, HighestOperand));
        if (empty()) {
            low = from;
            high = to;
        } else {
            low = std::min(low, from);
            high = std::max(high, to);
        }
    }
    std::vector<std::int64_t> numbers() const
    {
        std::vector<std::int64_t> values;
        for (std::int64_t value = low; value <= high; ++value)
            values.push_back(value);
        return values;
    }
};

// The numbers the levels that ask the operation draw for its rows and columns.
// A level that switches the numbers round draws each from both ranges.
std::pair<Span, Span> levelSpans(const TestBank &bank, int operation)
{
    Span rows;
    Span columns;
    const auto o = static_cast<std::size_t>(operation);
    for (std::size_t level = 0; level < std::size_t(LevelCount); ++level) {
        if (bank.arithOps[level].find(OpSymbols[o]) == std::string::npos)
            continue;
        const std::int64_t low1 = bank.arithLow1[level][o];
        const std::int64_t high1 = bank.arithHigh1[level][o];
        const std::int64_t low2 = bank.arithLow2[level][o];
        const std::int64_t high2 = bank.arithHigh2[level][o];
        rows.take(low1, high1);
        columns.take(low2, high2);
        if (bank.arithSwitch[level][SwitchNumbers]) {
            rows.take(low2, high2);
            columns.take(low1, high1);
        }
    }
    // Dividing by zero gives no fact a child can learn.
    if (operation == 3 && !rows.empty() && rows.low == 0)
        rows.low = 1;
    return {rows, columns};
}

FactCell cellOf(const ArithmeticFact &fact)
{
    FactCell cell{fact.number1, fact.number2, tallyAnswers(fact.recent), Mastery::Untried};
    cell.mastery = masteryOf(cell.tally);
    return cell;
}

void count(FactGrid &grid, const FactCell &cell)
{
    ++grid.facts;
    grid.known += cell.mastery == Mastery::Known ? 1 : 0;
}

FactGrid makeTable(int operation, Span rows, Span columns, const std::vector<ArithmeticFact> &facts)
{
    std::map<std::pair<std::int64_t, std::int64_t>, const ArithmeticFact *> placed;
    for (const ArithmeticFact &fact : facts) {
        std::int64_t row = 0;
        std::int64_t column = 0;
        if (!tablePlace(operation, fact.number1, fact.number2, row, column))
            continue;
        placed[{row, column}] = &fact;
        rows.take(row, row);
        columns.take(column, column);
    }

    FactGrid grid;
    grid.operation = operation;
    grid.rowNumbers = rows.numbers();
    grid.columnNumbers = columns.numbers();
    for (const std::int64_t row : grid.rowNumbers) {
        std::vector<FactCell> &cells = grid.rows.emplace_back();
        for (const std::int64_t column : grid.columnNumbers) {
            const auto found = placed.find({row, column});
            FactCell cell;
            if (found != placed.end()) {
                cell = cellOf(*found->second);
            } else {
                factAt(operation, row, column, cell.number1, cell.number2);
            }
            count(grid, cell);
            cells.push_back(cell);
        }
    }
    return grid;
}

FactGrid makeGroups(int operation, const std::vector<ArithmeticFact> &facts)
{
    FactGrid grid;
    grid.operation = operation;
    grid.table = false;
    for (const ArithmeticFact &fact : facts) {
        if (grid.rowNumbers.empty() || grid.rowNumbers.back() != fact.number1) {
            grid.rowNumbers.push_back(fact.number1);
            grid.rows.emplace_back();
        }
        const FactCell cell = cellOf(fact);
        count(grid, cell);
        grid.rows.back().push_back(cell);
    }
    return grid;
}

} // namespace

bool tablePlace(int operation, std::int64_t number1, std::int64_t number2, std::int64_t &row,
                std::int64_t &column)
{
    switch (operation) {
    case 0:
    case 2:
        row = number1;
        column = number2;
        return number1 >= 0 && number2 >= 0;
    case 1:
        row = number2;
        column = number1 - number2;
        return number2 >= 0 && column >= 0;
    default:
        if (number2 <= 0 || number1 < 0 || number1 % number2 != 0)
            return false;
        row = number2;
        column = number1 / number2;
        return true;
    }
}

void factAt(int operation, std::int64_t row, std::int64_t column, std::int64_t &number1,
            std::int64_t &number2)
{
    switch (operation) {
    case 0:
    case 2:
        number1 = row;
        number2 = column;
        break;
    case 1:
        number1 = row + column;
        number2 = row;
        break;
    default:
        number1 = row * column;
        number2 = row;
        break;
    }
}

std::string FactGrid::summary() const
{
    const std::string name = operationName(operation);
    if (table)
        return std::to_string(known) + " of " + std::to_string(facts) + " " + name + " facts known";
    return std::to_string(known) + " of the " + std::to_string(facts) + " " + name +
           " facts tried known";
}

std::vector<FactGrid> makeFactGrids(const TestBank &bank, const std::vector<ArithmeticFact> &facts)
{
    std::vector<FactGrid> grids;
    // The facts come ordered by operation, then by their numbers.
    auto begin = facts.begin();
    while (begin != facts.end()) {
        const int operation = begin->operation;
        const auto end = std::find_if(begin, facts.end(), [operation](const ArithmeticFact &fact) {
            return fact.operation != operation;
        });
        const std::vector<ArithmeticFact> ofOperation(begin, end);
        begin = end;
        if (operation < 0 || operation >= OperationCount)
            continue;

        auto [rows, columns] = levelSpans(bank, operation);
        bool fits = true;
        for (const ArithmeticFact &fact : ofOperation) {
            std::int64_t row = 0;
            std::int64_t column = 0;
            if (tablePlace(operation, fact.number1, fact.number2, row, column))
                fits = fits && row <= LargestTableNumber && column <= LargestTableNumber;
        }
        fits = fits && (rows.empty() || rows.high <= LargestTableNumber) &&
               (columns.empty() || columns.high <= LargestTableNumber);
        grids.push_back(fits ? makeTable(operation, rows, columns, ofOperation)
                             : makeGroups(operation, ofOperation));
    }
    return grids;
}
