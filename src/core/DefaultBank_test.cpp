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

std::vector<std::string> textsOf(const Question &q)
{
    return {q.text, q.answer, q.wrong1, q.wrong2, q.wrong3};
}

} // namespace

TEST(DefaultBank, HoldsTheBuiltInSubjectsQuestionsAndRanges)
{
    const TestBank bank = defaultTestBank();
    ASSERT_EQ(std::make_tuple(bank.subjectMax, bank.questionMax, bank.subjects.size(),
                              bank.questionBank.size(), bank.limits.size()),
              std::make_tuple(5, 11, 6u, 6u, 6u));
    const char *const names[] = {"Arithmetic", "Spelling", "Geography",
                                 "History",    "Music",    "Science"};
    std::size_t inUse = 0;
    for (int s = 0; s <= 5; ++s) {
        EXPECT_EQ(bank.subjects[s].name, names[s]);
        EXPECT_EQ(bank.subjects[s].adjacentLevels, s != 0);
        EXPECT_EQ(bank.limits[s].seconds, 30);
        // Twelve questions a level for Spelling, six for the others, none for Arithmetic.
        const int32_t last = s == 0 ? -1 : (s == 1 ? 11 : 5);
        for (int level = 0; level < LevelCount; ++level) {
            EXPECT_EQ(bank.limits[s].lastQuestion[level], last) << names[s];
            ASSERT_EQ(bank.questionBank[s].items()[level].size(), 12u);
            for (int slot = 0; slot < 12; ++slot) {
                const bool used = slot <= last;
                EXPECT_EQ(bank.questionBank[s].items()[level][slot].answer.empty(), !used);
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
            textsOf({row.text, row.answer, row.wrong1, row.wrong2, row.wrong3});
        SCOPED_TRACE(texts[0] + " " + texts[1]);
        EXPECT_EQ(textsOf(bank.questionBank[row.subject].items()[row.level][row.slot]), texts);
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
        return std::make_tuple(bank.arithLow1[level][op], bank.arithHigh1[level][op],
                               bank.arithLow2[level][op], bank.arithHigh2[level][op]);
    };
    for (int level = 6; level <= 12; ++level) {
        EXPECT_EQ(ranges(level, 2), std::make_tuple(level, level, 2, 12));
        EXPECT_EQ(ranges(level, 3), std::make_tuple(1, 1, 1, 1)) << level;
    }
}

TEST(DefaultBank, RevertingRestoresOnlyWhatItNames)
{
    const TestBank fresh = defaultTestBank();
    // The user's changes to a subject: adjacentLevels and a slot beyond the defaults,
    // which no revert touches, and when undone is set those its own revert undoes.
    const auto edit = [](TestBank &bank, int s, bool undone) {
        bank.subjects[s].adjacentLevels = s == 0;
        bank.questionBank[s].items()[4][12].text = "beyond the defaults";
        if (undone && s == 0) {
            bank.limits[0].seconds = 45;
            bank.arithOps[3] = "+";
            bank.arithHigh2[20][1] = 99;
            bank.arithSwitch[0][SwitchBlanks] = true;
        } else if (undone) {
            bank.limits[s].seconds = 45;
            bank.questionBank[s].items()[3][0].wrong3 = "changed";
            bank.limits[s].lastQuestion[3] = 12;
        }
    };
    void (*const reverts[])(TestBank &) = {defaultArithmetic, defaultSpelling, defaultGeography,
                                           defaultHistory,    defaultMusic,    defaultScience};
    for (int subject = 0; subject <= 5; ++subject) {
        SCOPED_TRACE(fresh.subjects[subject].name);
        TestBank bank = fresh, expected = fresh;
        resizeQuestionSlots(bank, 12);
        resizeQuestionSlots(expected, 12);
        for (int s = 0; s <= 5; ++s) {
            edit(bank, s, true);
            edit(expected, s, s != subject);
        }
        reverts[subject](bank);
        expectSameBank(bank, expected);
    }

    // Spelling fills all twelve slots; a bank read with fewer slots grows to hold them.
    TestBank bank = fresh;
    bank.questionBank[3].items()[3][9].text = "dropped with its slot";
    resizeQuestionSlots(bank, 3);
    defaultSpelling(bank);
    EXPECT_EQ(bank.questionMax, 11);
    EXPECT_EQ(bank.questionBank[1].items()[12][11].answer,
              fresh.questionBank[1].items()[12][11].answer);
    EXPECT_EQ(bank.questionBank[3].items()[3][9].text, "");

    // Reverting all drops added subjects and grown slots.
    addSubject(bank, "Latin");
    resizeQuestionSlots(bank, 20);
    buildDefaultTests(bank);
    expectSameBank(bank, fresh);
}

TEST(TestBank, LevelsOperationsAndAddedSubjects)
{
    EXPECT_EQ(levelText(0), "K");
    EXPECT_EQ((std::array<int, 5>{operationIndex('+'), operationIndex('x'), operationIndex('/'),
                                  operationIndex('*'), operationIndex('X')}),
              (std::array<int, 5>{0, 2, 3, -1, -1}));

    // An added subject: 30 seconds, and one empty question at level K.
    TestBank bank = defaultTestBank();
    addSubject(bank, "Latin");
    ASSERT_EQ(std::make_tuple(bank.subjectMax, bank.subjects.size(), bank.limits.size(),
                              bank.questionBank.size()),
              std::make_tuple(6, 7u, 7u, 7u));
    EXPECT_EQ(bank.limits[6].seconds, 30);
    EXPECT_EQ(bank.questionBank[6].items()[12].size(), 12u);
    EXPECT_TRUE(levelHasQuestions(bank, 6, 0));
    EXPECT_FALSE(levelHasQuestions(bank, 6, 1));
    EXPECT_FALSE(levelHasQuestions(bank, 7, 0));

    EXPECT_TRUE(levelHasQuestions(bank, 0, 6));
    bank.arithOps[6].clear();
    EXPECT_FALSE(levelHasQuestions(bank, 0, 6));
    EXPECT_FALSE(levelHasQuestions(bank, 1, 13));
    EXPECT_FALSE(levelHasQuestions(bank, 1, -1));
}
