// Which stored questions a child could not answer fairly: empty parts, blanks
// that look empty, and answers that read the same on two buttons.
#include "QuestionProblems.h"

#include <gtest/gtest.h>

namespace {

constexpr int Geography = 2;

TEST(QuestionProblems, EmptyPartsAndTwinAnswersAreFoundAsTheButtonsWouldShowThem)
{
    using Empty = std::array<bool, 4>;
    using Repeats = std::array<int, 4>;
    const struct {
        Question question;
        int subject;
        bool emptyText;
        Empty emptyAnswers;
        Repeats repeats;
    } cases[] = {
        // Complete, with answers that differ only in case or inner blanks.
        {{"Capital of Peru", "Lima", "lima", "Li ma", "Cusco"},
         Geography,
         false,
         {},
         {-1, -1, -1, -1}},
        // A question left as Add Question makes it; Spelling may go without a clue.
        {{"", "", "", "", ""}, Geography, true, {true, true, true, true}, {-1, -1, -1, -1}},
        {{"", "said", "sed", "siad", "sayd"}, SpellingSubject, false, {}, {-1, -1, -1, -1}},
        {{"", "said", "sed", "siad", "sayd"}, Geography, true, {}, {-1, -1, -1, -1}},
        // Blanks, tabs, line breaks and no-break spaces show as nothing.
        {{" \t", "Lima", "\r\n", "\xC2\xA0", "Quito"},
         Geography,
         true,
         {false, true, true, false},
         {-1, -1, -1, -1}},
        // A wrong answer like the right one, and two wrong answers alike; blanks
        // at the ends do not tell them apart.
        {{"Capital of Peru", "Lima", "Lima ", "Quito", "\xC2\xA0Quito"},
         Geography,
         false,
         {},
         {-1, 0, -1, 2}},
        {{"q", "a", "b", "b", "b"}, Geography, false, {}, {-1, -1, 1, 1}},
        // An empty answer is empty, not a twin of another empty one.
        {{"q", "a", "", "", "a"}, Geography, false, {false, true, true, false}, {-1, -1, -1, 0}},
    };
    constexpr Repeats noRepeats = {-1, -1, -1, -1};
    for (std::size_t c = 0; c < std::size(cases); ++c) {
        const QuestionProblems found = findProblems(cases[c].question, cases[c].subject);
        EXPECT_EQ(found.emptyText, cases[c].emptyText) << c;
        EXPECT_EQ(found.emptyAnswers, cases[c].emptyAnswers) << c;
        EXPECT_EQ(found.repeats, cases[c].repeats) << c;
        EXPECT_EQ(found.incomplete(), cases[c].emptyText || cases[c].emptyAnswers != Empty{}) << c;
        EXPECT_EQ(found.repeated(), cases[c].repeats != noRepeats) << c;
    }
}

} // namespace
