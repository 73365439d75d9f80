// How well a child knows one Arithmetic fact, judged from its latest answers in
// tests and practice, and the words the fluency views use for a fact.
#pragma once

#include "core/HistoryTypes.h"

#include <cstdint>
#include <string>
#include <vector>

enum class Mastery { Untried, NotYet, Learning, Known };

// The rules in one place, so that the grid, the class view and the practice
// order can never disagree about what "known" means.
namespace MasteryRules {
// Known means right nearly every time: at least 90 %, which with the five
// answers kept is all five, so one slip moves a fact back to learning until it
// has been answered right five times again.
constexpr int KnownRightPercent = 90;
// Not yet means wrong more than a quarter of the time: two of five. One wrong
// answer in five is a slip, two are a pattern.
constexpr int NotYetWrongPercent = 25;
// A fact known by heart comes back in about three seconds; counting on fingers
// takes longer. Children at levels K to 2 still read and type slowly, so they
// get twice as long.
constexpr int QuickMilliseconds = 3000;
constexpr int YoungQuickMilliseconds = 6000;
constexpr int LastYoungLevel = 2;
} // namespace MasteryRules

// The average time an answer at this level may take for its fact to count as known.
int quickMilliseconds(int level);

// A fact's answers added up.
struct FactTally {
    int answers = 0;
    int rights = 0;
    std::int64_t milliseconds = 0; // all answers together
    // What the answers may take together: each one's allowance for its level.
    std::int64_t allowance = 0;
};

FactTally tallyAnswers(const std::vector<FactAnswer> &answers);
Mastery masteryOf(const FactTally &tally);
Mastery masteryOf(const ArithmeticFact &fact);

// The operation as the screens write it: + − × ÷.
std::string operationSign(int operation);
// "addition", "subtraction", "multiplication", "division".
std::string operationName(int operation);
// "7 × 8".
std::string factText(int operation, std::int64_t number1, std::int64_t number2);
// "7 × 8: 4 of 5 right, 2.1 s on average", or "7 × 8: not tried yet".
std::string factDescription(int operation, std::int64_t number1, std::int64_t number2,
                            const FactTally &tally);
// "known", "learning", "not yet", "not tried".
std::string masteryName(Mastery mastery);
