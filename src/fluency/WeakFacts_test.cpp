#include "fluency/WeakFacts.h"

#include "review/PracticeRound.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

// Level 6 asks × of 2..4 by 2..4.
TestBank timesBank(bool switchBlanks = false)
{
    TestBank bank;
    bank.arithOps[6] = "x";
    bank.arithLow1[6][2] = 2;
    bank.arithHigh1[6][2] = 4;
    bank.arithLow2[6][2] = 2;
    bank.arithHigh2[6][2] = 4;
    bank.arithSwitch[6][SwitchBlanks] = switchBlanks;
    return bank;
}

// A fact answered with rights of five right, each taking ms.
ArithmeticFact fact(int operation, std::int64_t a, std::int64_t b, int rights, int ms = 1000)
{
    ArithmeticFact f{operation, a, b, {}};
    for (int i = 0; i < 5; ++i)
        f.recent.push_back({i < rights, ms, 6, false});
    return f;
}

std::string text(const ArithmeticProblem &p)
{
    return std::to_string(p.number1) + p.symbol + std::to_string(p.number2) + "=" +
           std::to_string(p.answer);
}

TEST(WeakFacts, NotYetFirstThenLearningThenUntriedAndNeverKnown)
{
    const std::vector<ArithmeticFact> facts = {
        fact(2, 2, 2, 5),       // known
        fact(2, 2, 3, 4),       // learning: one slip
        fact(2, 2, 4, 5, 4000), // learning: right but slow
        fact(2, 3, 2, 3),       // not yet
        fact(2, 3, 3, 0),       // not yet, and the weakest
        fact(0, 1, 1, 0),       // not yet, but the level asks no addition
    };
    RandomSource random(7);
    const std::vector<ArithmeticProblem> round = weakFactsProblems(timesBank(), 6, facts, random);
    ASSERT_EQ(round.size(), 8u); // nine facts at the level, one known
    EXPECT_EQ(text(round[0]), "3x3=9");
    EXPECT_EQ(text(round[1]), "3x2=6");
    // Among those being learnt, fewer right comes before slower.
    EXPECT_EQ(text(round[2]), "2x3=6");
    EXPECT_EQ(text(round[3]), "2x4=8");
    std::set<std::string> untried;
    for (std::size_t i = 4; i < round.size(); ++i) {
        untried.insert(text(round[i]));
        EXPECT_EQ(round[i].blank, MathBox::Answer);
    }
    EXPECT_EQ(untried, (std::set<std::string>{"3x4=12", "4x2=8", "4x3=12", "4x4=16"}));

    RandomSource again(7);
    EXPECT_EQ(weakFactsProblems(timesBank(), 6, {}, again, 3).size(), 3u);
}

TEST(WeakFacts, TheBlankMovesAsTheLevelMovesIt)
{
    RandomSource random(1);
    const std::vector<ArithmeticProblem> round = weakFactsProblems(timesBank(true), 6, {}, random);
    ASSERT_EQ(round.size(), 9u);
    for (std::size_t i = 0; i < round.size(); ++i) {
        EXPECT_TRUE(round[i].switchBlanks);
        EXPECT_EQ(round[i].blank, static_cast<MathBox>((i + 1) % 3)) << i;
    }
}

TEST(WeakFacts, SubtractionAndDivisionAreAskedAsTheLevelBuildsThem)
{
    TestBank bank;
    bank.arithOps[3] = "-/";
    for (std::size_t op : {1u, 3u}) {
        bank.arithLow1[3][op] = 0;
        bank.arithHigh1[3][op] = 1;
        bank.arithLow2[3][op] = 2;
        bank.arithHigh2[3][op] = 2;
    }
    RandomSource random(3);
    std::set<std::string> asked;
    for (const ArithmeticProblem &problem : weakFactsProblems(bank, 3, {}, random))
        asked.insert(text(problem));
    // 0 ÷ 0 has no one answer and is never asked.
    EXPECT_EQ(asked, (std::set<std::string>{"2-0=2", "3-1=2", "2/1=2"}));
}

TEST(WeakFacts, AWrongAnswerBringsTheFactBackLaterInTheRound)
{
    const std::vector<ArithmeticFact> facts = {fact(2, 2, 2, 0), fact(2, 2, 3, 0), fact(2, 2, 4, 0),
                                               fact(2, 3, 2, 0)};
    RandomSource random(5);
    std::vector<AskedQuestion> questions;
    for (const ArithmeticProblem &problem : weakFactsProblems(timesBank(), 6, facts, random, 4))
        questions.emplace_back(problem);
    PracticeRound round(questions);
    std::vector<std::string> order;
    bool first = true;
    while (!round.isOver()) {
        order.push_back(text(std::get<ArithmeticProblem>(round.current())));
        round.answer(!first);
        first = false;
    }
    EXPECT_EQ(order, (std::vector<std::string>{"2x2=4", "2x3=6", "2x4=8", "2x2=4", "3x2=6"}));
}

} // namespace
