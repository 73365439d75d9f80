#include "fluency/Mastery.h"

int quickMilliseconds(int level)
{
    return level <= MasteryRules::LastYoungLevel ? MasteryRules::YoungQuickMilliseconds
                                                 : MasteryRules::QuickMilliseconds;
}

FactTally tallyAnswers(const std::vector<FactAnswer> &answers)
{
    FactTally tally;
    for (const FactAnswer &answer : answers) {
        ++tally.answers;
        tally.rights += answer.right ? 1 : 0;
        tally.milliseconds += answer.milliseconds;
        tally.allowance += quickMilliseconds(answer.level);
    }
    return tally;
}

Mastery masteryOf(const FactTally &tally)
{
    if (tally.answers == 0)
        return Mastery::Untried;
    // Whole numbers throughout, so that exactly 90 % and exactly 25 % fall on
    // the side the rules say.
    const std::int64_t answers = tally.answers;
    const std::int64_t wrongs = answers - tally.rights;
    if (wrongs * 100 > MasteryRules::NotYetWrongPercent * answers)
        return Mastery::NotYet;
    const bool rightEnough =
        tally.rights * std::int64_t{100} >= MasteryRules::KnownRightPercent * answers;
    // The average within the average allowance, compared as totals.
    const bool quickEnough = tally.milliseconds <= tally.allowance;
    return rightEnough && quickEnough ? Mastery::Known : Mastery::Learning;
}

Mastery masteryOf(const ArithmeticFact &fact)
{
    return masteryOf(tallyAnswers(fact.recent));
}

std::string operationSign(int operation)
{
    switch (operation) {
    case 0:
        return "+";
    case 1:
        return "\u2212";
    case 2:
        return "\u00D7";
    default:
        return "\u00F7";
    }
}

std::string operationName(int operation)
{
    switch (operation) {
    case 0:
        return "addition";
    case 1:
        return "subtraction";
    case 2:
        return "multiplication";
    default:
        return "division";
    }
}

std::string factText(int operation, std::int64_t number1, std::int64_t number2)
{
    return std::to_string(number1) + " " + operationSign(operation) + " " + std::to_string(number2);
}

std::string factDescription(int operation, std::int64_t number1, std::int64_t number2,
                            const FactTally &tally)
{
    const std::string fact = factText(operation, number1, number2);
    if (tally.answers == 0)
        return fact + ": not tried yet";
    // Tenths of a second, rounded, in whole numbers: no locale turns the point into a comma.
    const std::int64_t tenths = (tally.milliseconds + 50 * tally.answers) / (100 * tally.answers);
    const std::string seconds = std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
    return fact + ": " + std::to_string(tally.rights) + " of " + std::to_string(tally.answers) +
           " right, " + seconds + " s on average";
}

std::string masteryName(Mastery mastery)
{
    switch (mastery) {
    case Mastery::Known:
        return "known";
    case Mastery::Learning:
        return "learning";
    case Mastery::NotYet:
        return "not yet";
    case Mastery::Untried:
        break;
    }
    return "not tried";
}
