#include "fluency/Mastery.h"
#include "fluency/Trend.h"

#include <gtest/gtest.h>

namespace {

// answers answers at the level, the first rights of them right, each taking ms.
std::vector<FactAnswer> answers(int count, int rights, int ms, int level = 5)
{
    std::vector<FactAnswer> list;
    for (int i = 0; i < count; ++i)
        list.push_back({i < rights, ms, level, false});
    return list;
}

TEST(Mastery, EachStateAtTheEdgesOfItsRules)
{
    struct Case {
        const char *what;
        std::vector<FactAnswer> answers;
        Mastery expected;
    };
    const std::vector<Case> cases = {
        {"never answered", {}, Mastery::Untried},
        {"all right, quick", answers(5, 5, 1000), Mastery::Known},
        {"exactly 90 % right", answers(10, 9, 1000), Mastery::Known},
        {"just under 90 % right", answers(9, 8, 1000), Mastery::Learning},
        {"one slip in five", answers(5, 4, 1000), Mastery::Learning},
        {"exactly 25 % wrong", answers(4, 3, 1000), Mastery::Learning},
        {"two wrong in five", answers(5, 3, 1000), Mastery::NotYet},
        {"wrong and quick is still not yet", answers(2, 0, 200), Mastery::NotYet},
        {"exactly 3 s on average", answers(5, 5, 3000), Mastery::Known},
        {"a little over 3 s", answers(5, 5, 3001), Mastery::Learning},
        {"6 s at level 2", answers(5, 5, 6000, 2), Mastery::Known},
        {"6 s at level K", answers(5, 5, 6000, 0), Mastery::Known},
        {"over 6 s at level 2", answers(5, 5, 6001, 2), Mastery::Learning},
        {"6 s at level 3", answers(5, 5, 6000, 3), Mastery::Learning},
    };
    for (const Case &c : cases)
        EXPECT_EQ(masteryOf(tallyAnswers(c.answers)), c.expected) << c.what;
}

TEST(Mastery, AnswersAtDifferentLevelsShareTheirAllowances)
{
    // 5 s at level 1 (allowed 6) and 3.5 s at level 4 (allowed 3): 8.5 s of 9.
    const std::vector<FactAnswer> mixed = {{true, 5000, 1, false}, {true, 3500, 4, true}};
    EXPECT_EQ(masteryOf(tallyAnswers(mixed)), Mastery::Known);
    const std::vector<FactAnswer> slower = {{true, 5000, 1, false}, {true, 4500, 4, true}};
    EXPECT_EQ(masteryOf(tallyAnswers(slower)), Mastery::Learning);
}

TEST(Mastery, DescribesAFactInWords)
{
    const std::vector<FactAnswer> recent = {{true, 2000, 4, false},
                                            {true, 2000, 4, false},
                                            {false, 2500, 4, false},
                                            {true, 1500, 4, true},
                                            {true, 2500, 4, false}};
    EXPECT_EQ(factDescription(2, 7, 8, tallyAnswers(recent)),
              "7 \u00D7 8: 4 of 5 right, 2.1 s on average");
    EXPECT_EQ(factDescription(1, 12, 5, tallyAnswers({{true, 949, 4, false}})),
              "12 \u2212 5: 1 of 1 right, 0.9 s on average");
    EXPECT_EQ(factDescription(3, 56, 7, {}), "56 \u00F7 7: not tried yet");
}

TEST(Trend, ComparesTheLatestFiveTestsWithTheFiveBefore)
{
    struct Case {
        std::vector<int> scores;
        TrendDirection direction;
        double earlier;
        double recent;
    };
    const std::vector<Case> cases = {
        {{10, 10, 10, 10, 10}, TrendDirection::TooFewTests, 0, 0},
        // Only the ten latest count; one earlier test is enough to compare with.
        {{10, 12, 14, 14, 14, 14}, TrendDirection::Up, 10, 13.6},
        {{30, 30, 30, 30, 30, 20, 20, 20, 20, 20}, TrendDirection::Down, 30, 20},
        // 5 % of 40 is 2: a change of 2 is level, more is not.
        {{40, 40, 40, 40, 40, 42, 42, 42, 42, 42}, TrendDirection::Level, 40, 42},
        {{40, 40, 40, 40, 40, 42, 42, 42, 42, 43}, TrendDirection::Up, 40, 42.2},
        // Small scores: within one point is level.
        {{2, 2, 2, 2, 2, 3, 3, 3, 3, 3}, TrendDirection::Level, 2, 3},
        {{4, 4, 4, 4, 4, 2, 2, 2, 2, 2}, TrendDirection::Down, 4, 2},
        // Negative scores (more wrong than right) compare like any others.
        {{-5, -5, -5, -5, -5, 3, 3, 3, 3, 3}, TrendDirection::Up, -5, 3},
    };
    for (const Case &c : cases) {
        const Trend trend = trendOf(c.scores);
        EXPECT_EQ(trend.direction, c.direction) << testing::PrintToString(c.scores);
        EXPECT_DOUBLE_EQ(trend.earlier, c.earlier) << testing::PrintToString(c.scores);
        EXPECT_DOUBLE_EQ(trend.recent, c.recent) << testing::PrintToString(c.scores);
    }
    EXPECT_EQ(trendText(trendOf({10, 12, 14, 14, 14, 14})), "up: 13.6 from 10.0");
    EXPECT_EQ(trendText(trendOf({-5, -5, -5, -5, -5, 3, 3, 3, 3, 3})), "up: 3.0 from -5.0");
    EXPECT_EQ(trendText(trendOf({1})), "too few tests");
}

} // namespace
