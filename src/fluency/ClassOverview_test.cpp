#include "fluency/ClassOverview.h"

#include "core/HistoryFixture_test.h"
#include "core/TestBank.h"

#include <gtest/gtest.h>

namespace {

using ClassOverviewTest = HistoryTest;

TEST_F(ClassOverviewTest, EachStudentsSubjectsWithTrendFactsAndLastTest)
{
    open();
    // Ann: five weaker Arithmetic tests, then five better ones, each missing
    // 0 x 3 and 1 x 3.
    for (int i = 0; i < 5; ++i) {
        clock.advance(86'400'000);
        takeTest(0, ArithmeticSubject, 4, {false, false, true, true});
    }
    for (int i = 0; i < 5; ++i) {
        clock.advance(86'400'000);
        takeTest(0, ArithmeticSubject, 4, {false, false, true, true, true, true, true, true});
    }
    takeTest(0, ArithmeticSubject, 4, {false, false, false},
             true); // practice counts for facts only
    clock.setLocalTime({2027, 1, 4, 9, 0, 0});
    takeTest(1, SpellingSubject, 2, {true, true});

    const std::vector<OverviewRow> rows =
        makeClassOverview(history->queries(), {"Ann", "Bob", "Cy"}, BuiltInSubjects);
    ASSERT_EQ(rows.size(), 3u);

    EXPECT_EQ(rows[0].name, "Ann");
    EXPECT_EQ(rows[0].subjectName, "Arithmetic");
    EXPECT_EQ(rows[0].trend.direction, TrendDirection::Up);
    EXPECT_DOUBLE_EQ(rows[0].trend.earlier, 0);
    EXPECT_DOUBLE_EQ(rows[0].trend.recent, 4);
    // 0 x 3, 1 x 3 and 2 x 3 were wrong in the practice; 0 x 3 and 1 x 3 every time before.
    EXPECT_EQ(rows[0].factsNotYet, 2);
    EXPECT_LT(rows[0].lastTest, toLocalSeconds({2027, 1, 1, 0, 0, 0}));

    EXPECT_EQ(rows[1].name, "Bob");
    EXPECT_EQ(rows[1].subject, SpellingSubject);
    EXPECT_EQ(rows[1].trend.direction, TrendDirection::TooFewTests);
    EXPECT_FALSE(rows[1].factsNotYet);
    EXPECT_EQ(rows[1].lastTest, toLocalSeconds({2027, 1, 4, 9, 0, 0}));

    EXPECT_EQ(rows[2].name, "Cy");
    EXPECT_FALSE(rows[2].subject);
    EXPECT_EQ(rows[2].lastTest, 0);
}

} // namespace
