#include "fluency/WeakFacts.h"

#include "fluency/FactGrid.h"
#include "fluency/Mastery.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace {

struct Candidate {
    int operation = 0;
    std::int64_t number1 = 0;
    std::int64_t number2 = 0;
    FactTally tally;
};

// Fewer right (as a share of the answers) first, then slower on average.
bool weaker(const Candidate &a, const Candidate &b)
{
    const std::int64_t rightsA = std::int64_t{a.tally.rights} * b.tally.answers;
    const std::int64_t rightsB = std::int64_t{b.tally.rights} * a.tally.answers;
    if (rightsA != rightsB)
        return rightsA < rightsB;
    return a.tally.milliseconds * b.tally.answers > b.tally.milliseconds * a.tally.answers;
}

ArithmeticProblem problemOf(const Candidate &fact)
{
    ArithmeticProblem problem;
    problem.operation = fact.operation;
    problem.symbol = OpSymbols[std::size_t(fact.operation)];
    problem.number1 = static_cast<std::int32_t>(fact.number1);
    problem.number2 = static_cast<std::int32_t>(fact.number2);
    switch (fact.operation) {
    case 0:
        problem.answer = problem.number1 + problem.number2;
        break;
    case 1:
        problem.answer = problem.number1 - problem.number2;
        break;
    case 2:
        problem.answer = problem.number1 * problem.number2;
        break;
    default:
        problem.answer = problem.number2 == 0 ? 0 : problem.number1 / problem.number2;
        break;
    }
    return problem;
}

using FactKey = std::tuple<int, std::int64_t, std::int64_t>;

// The facts the level draws for an operation that the child has never answered.
std::vector<Candidate> untriedFacts(const TestBank &bank, int level, int operation,
                                    std::set<FactKey> &seen)
{
    const auto l = std::size_t(level);
    const auto o = std::size_t(operation);
    auto span = [](std::int32_t low, std::int32_t high) {
        low = std::clamp(low, 0, 30);
        return std::pair{low, std::max(low, std::clamp(high, 0, 30))};
    };
    const auto [low1, high1] = span(bank.arithLow1[l][o], bank.arithHigh1[l][o]);
    const auto [low2, high2] = span(bank.arithLow2[l][o], bank.arithHigh2[l][o]);
    std::vector<Candidate> facts;
    auto add = [&](std::int64_t a, std::int64_t b) {
        if (operation == 3 && a == 0)
            return; // no division by zero
        Candidate fact{operation, 0, 0, {}};
        factAt(operation, a, b, fact.number1, fact.number2);
        if (seen.insert({operation, fact.number1, fact.number2}).second)
            facts.push_back(fact);
    };
    for (std::int64_t a = low1; a <= high1; ++a) {
        for (std::int64_t b = low2; b <= high2; ++b) {
            add(a, b);
            // A level that switches the numbers round draws them the other way too.
            if (bank.arithSwitch[l][SwitchNumbers])
                add(b, a);
        }
    }
    return facts;
}

} // namespace

std::vector<ArithmeticProblem> weakFactsProblems(const TestBank &bank, int level,
                                                 const std::vector<ArithmeticFact> &facts,
                                                 RandomSource &random, int count)
{
    const std::string &ops = bank.arithOps[std::size_t(level)];
    auto asked = [&ops](int operation) {
        return operation >= 0 && operation < OperationCount &&
               ops.find(OpSymbols[std::size_t(operation)]) != std::string::npos;
    };

    std::vector<Candidate> notYet;
    std::vector<Candidate> learning;
    std::set<FactKey> seen;
    for (const ArithmeticFact &fact : facts) {
        seen.insert({fact.operation, fact.number1, fact.number2});
        if (!asked(fact.operation))
            continue;
        const Candidate candidate{fact.operation, fact.number1, fact.number2,
                                  tallyAnswers(fact.recent)};
        const Mastery mastery = masteryOf(candidate.tally);
        if (mastery == Mastery::NotYet)
            notYet.push_back(candidate);
        else if (mastery == Mastery::Learning)
            learning.push_back(candidate);
    }
    std::stable_sort(notYet.begin(), notYet.end(), weaker);
    std::stable_sort(learning.begin(), learning.end(), weaker);

    std::vector<Candidate> untried;
    for (int operation = 0; operation < OperationCount; ++operation) {
        if (asked(operation)) {
            const std::vector<Candidate> more = untriedFacts(bank, level, operation, seen);
            untried.insert(untried.end(), more.begin(), more.end());
        }
    }
    // Shuffled with the program's one random source, so that tests can repeat a round.
    for (std::size_t i = untried.size(); i > 1; --i) {
        const auto j =
            static_cast<std::size_t>(random.between(0, static_cast<std::int32_t>(i - 1)));
        std::swap(untried[i - 1], untried[j]);
    }

    std::vector<ArithmeticProblem> problems;
    const bool switchBlanks = bank.arithSwitch[std::size_t(level)][SwitchBlanks];
    int blankCounter = 0;
    for (const std::vector<Candidate> *kind : {&notYet, &learning, &untried}) {
        for (const Candidate &fact : *kind) {
            if (static_cast<int>(problems.size()) >= count)
                return problems;
            ArithmeticProblem problem = problemOf(fact);
            problem.switchBlanks = switchBlanks;
            if (switchBlanks) {
                blankCounter = (blankCounter + 1) % 3;
                problem.blank = static_cast<MathBox>(blankCounter);
            }
            problems.push_back(problem);
        }
    }
    return problems;
}
