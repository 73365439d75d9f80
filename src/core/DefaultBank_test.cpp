// The built-in test bank: its subjects, the question table it is built from,
// the Arithmetic ranges, and reverting parts of it.
#include "core/DefaultBank.h"

#include "core/CoreFixtures_test.h"
#include "core/DefaultQuestions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace {

std::vector<std::string> Texts(const Question &q)
{
    return {q.Text, q.Answer, q.Wrong1, q.Wrong2, q.Wrong3};
}

} // namespace

TEST(DefaultBank, HoldsTheBuiltInSubjectsQuestionsAndRanges)
{
    const TestBank bank = DefaultTestBank();
    ASSERT_EQ(std::make_tuple(bank.SubjectMax, bank.QuestionMax, bank.Subjects.size(),
                              bank.QuestionBank.size(), bank.Limits.size()),
              std::make_tuple(5, 11, 6u, 6u, 6u));
    const char *const names[] = {"Arithmetic", "Spelling", "Geography",
                                 "History",    "Music",    "Science"};
    std::size_t inUse = 0;
    for (int s = 0; s <= 5; ++s) {
        EXPECT_EQ(bank.Subjects[s].Name, names[s]);
        EXPECT_EQ(bank.Subjects[s].AdjacentLevels, s != 0);
        EXPECT_EQ(bank.Limits[s].Seconds, 30);
        // Twelve questions a level for Spelling, six for the others, none for Arithmetic.
        const int32_t last = s == 0 ? -1 : (s == 1 ? 11 : 5);
        for (int level = 0; level < LevelCount; ++level) {
            EXPECT_EQ(bank.Limits[s].LastQuestion[level], last) << names[s];
            ASSERT_EQ(bank.QuestionBank[s].Items()[level].size(), 12u);
            for (int slot = 0; slot < 12; ++slot) {
                const bool used = slot <= last;
                EXPECT_EQ(bank.QuestionBank[s].Items()[level][slot].Answer.empty(), !used);
                inUse += used ? 1 : 0;
            }
        }
    }
    EXPECT_EQ(inUse, DefaultQuestions.size());

    // Each row of the question table fills the slot it names. Its texts are printable
    // ASCII without blanks around, with no "?" at the end and four different choices,
    // and no question comes twice within a subject and level.
    std::map<std::pair<int, int>, std::set<std::string>> seen;
    std::string all;
    for (const DefaultQuestionRow &row : DefaultQuestions) {
        const std::vector<std::string> texts =
            Texts({row.text, row.answer, row.wrong1, row.wrong2, row.wrong3});
        SCOPED_TRACE(texts[0] + " " + texts[1]);
        EXPECT_EQ(Texts(bank.QuestionBank[row.subject].Items()[row.level][row.slot]), texts);
        for (const std::string &text : texts) {
            EXPECT_TRUE(std::all_of(text.begin(), text.end(),
                                    [](char c) { return c >= 0x20 && c <= 0x7E; }));
            EXPECT_TRUE(text.empty() || (text.front() != ' ' && text.back() != ' ')) << text;
            all += text + "\n";
        }
        EXPECT_TRUE(texts[0].empty() || texts[0].back() != '?');
        // Spelling from level 2 on gives no clue, only the words to choose from.
        const bool wordsOnly = row.subject == SpellingSubject && row.level >= 2;
        EXPECT_EQ(texts[0].empty(), wordsOnly);
        const std::set<std::string> choices(texts.begin() + 1, texts.end());
        EXPECT_EQ(choices.size(), 4u);
        EXPECT_EQ(choices.count(""), 0u);
        EXPECT_TRUE(
            seen[std::pair(row.subject, row.level)].insert(wordsOnly ? texts[1] : texts[0]).second)
            << "repeated within its subject and level";
    }
    // The misspellings and invented names are part of the questions.
    for (const char *kept :
         {"Carribean", "Washington D.C.", "Plaibiob", "Griogaibrioz", "Pliflap", "Fidrotar",
          "Greikla", "Glevaigi", "Krokla", "Braiti", "Grubra", "Klareisi", "Pruglu"}) {
        EXPECT_NE(all.find(kept), std::string::npos) << kept;
    }

    // Levels 6..12 are the times tables of the level; division stays set though not asked.
    const auto ranges = [&](int level, int op) {
        return std::make_tuple(bank.ArithLow1[level][op], bank.ArithHigh1[level][op],
                               bank.ArithLow2[level][op], bank.ArithHigh2[level][op]);
    };
    for (int level = 6; level <= 12; ++level) {
        EXPECT_EQ(ranges(level, 2), std::make_tuple(level, level, 2, 12));
        EXPECT_EQ(ranges(level, 3), std::make_tuple(1, 1, 1, 1)) << level;
    }
}

TEST(DefaultBank, RevertingRestoresOnlyWhatItNames)
{
    const TestBank fresh = DefaultTestBank();
    // The user's changes to a subject: AdjacentLevels and a slot beyond the defaults,
    // which no revert touches, and when undone is set those its own revert undoes.
    const auto edit = [](TestBank &bank, int s, bool undone) {
        bank.Subjects[s].AdjacentLevels = s == 0;
        bank.QuestionBank[s].Items()[4][12].Text = "beyond the defaults";
        if (undone && s == 0) {
            bank.Limits[0].Seconds = 45;
            bank.ArithOps[3] = "+";
            bank.ArithHigh2[20][1] = 99;
            bank.ArithSwitch[0][SwitchBlanks] = true;
        } else if (undone) {
            bank.Limits[s].Seconds = 45;
            bank.QuestionBank[s].Items()[3][0].Wrong3 = "changed";
            bank.Limits[s].LastQuestion[3] = 12;
        }
    };
    void (*const reverts[])(TestBank &) = {DefaultArithmetic, DefaultSpelling, DefaultGeography,
                                           DefaultHistory,    DefaultMusic,    DefaultScience};
    for (int subject = 0; subject <= 5; ++subject) {
        SCOPED_TRACE(fresh.Subjects[subject].Name);
        TestBank bank = fresh, expected = fresh;
        ResizeQuestionSlots(bank, 12);
        ResizeQuestionSlots(expected, 12);
        for (int s = 0; s <= 5; ++s) {
            edit(bank, s, true);
            edit(expected, s, s != subject);
        }
        reverts[subject](bank);
        ExpectSameBank(bank, expected);
    }

    // Spelling fills all twelve slots; a bank read with fewer slots grows to hold them.
    TestBank bank = fresh;
    bank.QuestionBank[3].Items()[3][9].Text = "dropped with its slot";
    ResizeQuestionSlots(bank, 3);
    DefaultSpelling(bank);
    EXPECT_EQ(bank.QuestionMax, 11);
    EXPECT_EQ(bank.QuestionBank[1].Items()[12][11].Answer,
              fresh.QuestionBank[1].Items()[12][11].Answer);
    EXPECT_EQ(bank.QuestionBank[3].Items()[3][9].Text, "");

    // Reverting all drops added subjects and grown slots.
    AddSubject(bank, "Latin");
    ResizeQuestionSlots(bank, 20);
    BuildDefaultTests(bank);
    ExpectSameBank(bank, fresh);
}

TEST(TestBank, LevelsOperationsAndAddedSubjects)
{
    EXPECT_EQ(LevelText(0), "K");
    EXPECT_EQ((std::array<int, 5>{OperationIndex('+'), OperationIndex('x'), OperationIndex('/'),
                                  OperationIndex('*'), OperationIndex('X')}),
              (std::array<int, 5>{0, 2, 3, -1, -1}));

    // An added subject: 30 seconds, and one empty question at level K.
    TestBank bank = DefaultTestBank();
    AddSubject(bank, "Latin");
    ASSERT_EQ(std::make_tuple(bank.SubjectMax, bank.Subjects.size(), bank.Limits.size(),
                              bank.QuestionBank.size()),
              std::make_tuple(6, 7u, 7u, 7u));
    EXPECT_EQ(bank.Limits[6].Seconds, 30);
    EXPECT_EQ(bank.QuestionBank[6].Items()[12].size(), 12u);
    EXPECT_TRUE(LevelHasQuestions(bank, 6, 0));
    EXPECT_FALSE(LevelHasQuestions(bank, 6, 1));
    EXPECT_FALSE(LevelHasQuestions(bank, 7, 0));

    EXPECT_TRUE(LevelHasQuestions(bank, 0, 6));
    bank.ArithOps[6].clear();
    EXPECT_FALSE(LevelHasQuestions(bank, 0, 6));
    EXPECT_FALSE(LevelHasQuestions(bank, 1, 13));
    EXPECT_FALSE(LevelHasQuestions(bank, 1, -1));
}
