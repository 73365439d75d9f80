// The built-in test bank: its subjects, the question table it is built from,
// the Arithmetic ranges, and reverting parts of it.
#include "core/DefaultBank.h"

#include "core/CoreTesting.h"
#include "core/DefaultQuestions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace {

using Ranges = std::array<int32_t, 4>; // low1, high1, low2, high2

Ranges RangesOf(const TestBank &bank, int row, char symbol)
{
    const int op = OperationIndex(symbol);
    return {bank.ArithLow1[row][op], bank.ArithHigh1[row][op], bank.ArithLow2[row][op],
            bank.ArithHigh2[row][op]};
}

std::vector<std::string> Texts(const Question &q)
{
    return {q.Text, q.Answer, q.Wrong1, q.Wrong2, q.Wrong3};
}

// Rows that must stand at their place letter for letter (misspellings included).
// clang-format off
const DefaultQuestionRow FixedRows[] = {
    {1, 0, 0, "An animal that meows", "cat", "cet", "kat", "catt"},
    {1, 0, 6, "Not hot, but", "cool", "kool", "cole", "kol"},
    {1, 1, 0, "When you say something", "talk", "tak", "tok", "tahk"},
    {1, 2, 0, "", "surprise", "suprise", "surprice", "surpris"},
    {1, 8, 0, "", "perseverance", "perserverance", "perseverence", "perserverence"},
    {1, 12, 11, "", "mediocre", "midiocre", "mediocer", "mediocar"},
    {2, 0, 0, "Which ocean is next to Los Angeles", "Pacific", "Atlantic", "Carribean", "Indian"},
    {2, 0, 4, "How many States are in the U.S.", "50", "48", "52", "7"},
    {2, 1, 3, "What city has the most people", "New York", "Miami", "Kansas City", "Washington D.C."},
    {3, 0, 0, "How many States are in our Country", "50", "48", "52", "32"},
    {3, 0, 5, "What was Dorothy's dog's name", "Toto", "Spot", "Rover", "Fido"},
    {3, 1, 4, "Where did Plaibiob live", "France", "Germany", "United States", "England"},
    {3, 12, 5, "Who painted the Sistine Chapel", "Griogaibrioz", "Pliflap", "Van Gogh", "da Vinci"},
    {4, 0, 0, "How many instruments play in a Quartet", "4", "3", "6", "100"},
    {4, 1, 5, "Who sings Country Western", "Fidrotar", "Greikla", "Glevaigi", "Krokla"},
    {4, 12, 5, "Which key has no sharps or flats", "C", "D", "E", "F"},
    {5, 0, 0, "Who discovered electricity", "Braiti", "Grubra", "Klareisi", "Pruglu"},
    {5, 1, 1, "What do we call a group of buffalo", "Herd", "School", "Pack", "Flock"},
    {5, 12, 5, "What secretes Bile", "Liver", "Gall Bladder", "Stomach", "Lungs"},
};
// clang-format on

} // namespace

TEST(DefaultBank, HoldsTheBuiltInSubjectsQuestionsAndRanges)
{
    const TestBank bank = DefaultTestBank();
    EXPECT_EQ(bank.SubjectMax, 5);
    EXPECT_EQ(bank.QuestionMax, 11);
    const char *const names[] = {"Arithmetic", "Spelling", "Geography",
                                 "History",    "Music",    "Science"};
    ASSERT_EQ(bank.Subjects.size(), 6u);
    ASSERT_EQ(bank.QuestionBank.size(), 6u);
    ASSERT_EQ(bank.Limits.size(), 6u);
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
    // Each row of the question table fills one of them, the fixed rows among them.
    EXPECT_EQ(inUse, DefaultQuestions.size());
    std::vector<DefaultQuestionRow> rows(DefaultQuestions.begin(), DefaultQuestions.end());
    rows.insert(rows.end(), std::begin(FixedRows), std::end(FixedRows));
    for (const DefaultQuestionRow &row : rows) {
        EXPECT_EQ(Texts(bank.QuestionBank[row.subject].Items()[row.level][row.slot]),
                  Texts({row.text, row.answer, row.wrong1, row.wrong2, row.wrong3}));
    }

    const std::array<std::string, LevelCount> ops = {"+", "+-x", "+-x/", "x/", "x/", "+-x/", "x",
                                                     "x", "x",   "x",    "x",  "x",  "x"};
    EXPECT_EQ(bank.ArithOps, ops);
    // Division ranges stay set where a level asks no divisions.
    const struct {
        int row;
        char symbol;
        Ranges ranges;
    } cells[] = {
        {0, '+', {0, 1, 0, 4}},   {0, '/', {1, 1, 1, 1}},     {1, '/', {1, 1, 1, 1}},
        {1, 'x', {0, 2, 0, 2}},   {2, '/', {1, 3, 1, 3}},     {3, '+', {0, 0, 0, 0}},
        {3, '/', {5, 10, 5, 10}}, {5, '+', {15, 30, 15, 30}},
    };
    for (const auto &cell : cells) {
        EXPECT_EQ(RangesOf(bank, cell.row, cell.symbol), cell.ranges)
            << "row " << cell.row << " " << cell.symbol;
    }
    for (int level = 6; level <= 12; ++level) {
        EXPECT_EQ(RangesOf(bank, level, 'x'), (Ranges{level, level, 2, 12}));
        EXPECT_EQ(RangesOf(bank, level, '/'), (Ranges{1, 1, 1, 1}));
    }
    for (int row = LevelCount; row < RangeRowCount; ++row) {
        for (const char symbol : OpSymbols) {
            EXPECT_EQ(RangesOf(bank, row, symbol), (Ranges{0, 0, 0, 0})) << row;
        }
    }
}

// Printable ASCII without blanks around, no "?" at the end, four different
// choices, no question twice within a subject and level.
TEST(DefaultBank, QuestionTableFollowsItsRules)
{
    std::map<std::pair<int, int>, std::set<std::string>> seen;
    for (const DefaultQuestionRow &row : DefaultQuestions) {
        const std::vector<std::string> texts =
            Texts({row.text, row.answer, row.wrong1, row.wrong2, row.wrong3});
        SCOPED_TRACE(texts[0] + " " + texts[1]);
        for (const std::string &text : texts) {
            EXPECT_TRUE(std::all_of(text.begin(), text.end(),
                                    [](char c) { return c >= 0x20 && c <= 0x7E; }));
            EXPECT_TRUE(text.empty() || (text.front() != ' ' && text.back() != ' ')) << text;
        }
        EXPECT_TRUE(texts[0].empty() || texts[0].back() != '?');
        // Spelling from level 2 on gives no clue, only the words to choose from.
        const bool wordsOnly = row.subject == SpellingSubject && row.level >= 2;
        EXPECT_EQ(texts[0].empty(), wordsOnly);
        const std::set<std::string> choices(texts.begin() + 1, texts.end());
        EXPECT_EQ(choices.size(), 4u);
        EXPECT_EQ(choices.count(""), 0u);
        const std::pair<int, int> key(row.subject, row.level);
        EXPECT_TRUE(seen[key].insert(wordsOnly ? texts[1] : texts[0]).second)
            << "repeated within its subject and level";
    }
}

TEST(DefaultBank, RevertingRestoresOnlyWhatItNames)
{
    const TestBank fresh = DefaultTestBank();
    TestBank bank = DefaultTestBank();
    constexpr int history = 3;
    LevelSlots &level3 = bank.QuestionBank[history].Items()[3];
    for (int slot = 6; slot <= 9; ++slot) {
        level3[slot] = {"q" + std::to_string(slot), "a", "b", "c", "d"};
    }
    level3[0] = {"changed by the user", "a", "b", "c", "d"};
    bank.Limits[history].LastQuestion[3] = 9;
    bank.Limits[history].Seconds = 45;
    bank.Subjects[history].AdjacentLevels = false;
    bank.QuestionBank[2].Items()[3][0].Text = "Geography stays";
    bank.Limits[2].Seconds = 60;
    bank.ArithOps[3] = "+";
    bank.ArithLow1[6][2] = 3;
    bank.ArithHigh2[20][1] = 99;
    bank.ArithSwitch[0][SwitchBlanks] = true;
    bank.Limits[0].Seconds = 120;
    bank.Subjects[0].AdjacentLevels = true;

    // A subject's revert keeps the user's slots beyond the defaults and AdjacentLevels.
    DefaultHistory(bank);
    EXPECT_EQ(bank.Limits[history].LastQuestion[3], 5);
    EXPECT_EQ(bank.Limits[history].Seconds, 30);
    for (int slot = 0; slot <= 5; ++slot) {
        EXPECT_EQ(level3[slot].Text, fresh.QuestionBank[history].Items()[3][slot].Text);
    }
    EXPECT_EQ(level3[0].Wrong3, fresh.QuestionBank[history].Items()[3][0].Wrong3);
    EXPECT_EQ(level3[9].Text, "q9");
    EXPECT_FALSE(bank.Subjects[history].AdjacentLevels);
    EXPECT_EQ(bank.ArithOps[3], "+");

    DefaultArithmetic(bank);
    EXPECT_EQ(bank.ArithOps, fresh.ArithOps);
    EXPECT_EQ(bank.ArithLow1, fresh.ArithLow1);
    EXPECT_EQ(bank.ArithHigh2, fresh.ArithHigh2);
    EXPECT_EQ(bank.ArithSwitch, fresh.ArithSwitch);
    EXPECT_EQ(bank.Limits[0].Seconds, 30);
    EXPECT_TRUE(bank.Subjects[0].AdjacentLevels);
    EXPECT_EQ(bank.QuestionBank[2].Items()[3][0].Text, "Geography stays");
    EXPECT_EQ(bank.Limits[2].Seconds, 60);

    // Spelling fills all twelve slots; a bank read with fewer slots grows to hold them.
    ResizeQuestionSlots(bank, 3);
    DefaultSpelling(bank);
    EXPECT_EQ(bank.QuestionMax, 11);
    EXPECT_EQ(bank.Limits[1].LastQuestion[12], 11);
    EXPECT_EQ(bank.QuestionBank[1].Items()[12][11].Answer,
              fresh.QuestionBank[1].Items()[12][11].Answer);
    EXPECT_EQ(bank.QuestionBank[history].Items()[3][6].Text, "");

    // Reverting all drops added subjects and grown slots.
    AddSubject(bank, "Latin");
    ResizeQuestionSlots(bank, 20);
    BuildDefaultTests(bank);
    ExpectSameBank(bank, fresh);
}

TEST(TestBank, LevelsOperationsAndAddedSubjects)
{
    EXPECT_EQ(LevelText(0), "K");
    EXPECT_EQ(LevelText(12), "12");
    EXPECT_EQ(OperationIndex('+'), 0);
    EXPECT_EQ(OperationIndex('x'), 2);
    EXPECT_EQ(OperationIndex('/'), 3);
    EXPECT_EQ(OperationIndex('*'), -1);
    EXPECT_EQ(OperationIndex('X'), -1);

    // An added subject: no adjacent levels, 30 seconds, one empty question at level K.
    TestBank bank = DefaultTestBank();
    AddSubject(bank, "Latin");
    EXPECT_EQ(bank.SubjectMax, 6);
    ASSERT_EQ(bank.Subjects.size(), 7u);
    ASSERT_EQ(bank.Limits.size(), 7u);
    ASSERT_EQ(bank.QuestionBank.size(), 7u);
    EXPECT_EQ(bank.Subjects[6].Name, "Latin");
    EXPECT_FALSE(bank.Subjects[6].AdjacentLevels);
    EXPECT_EQ(bank.Limits[6].Seconds, 30);
    EXPECT_EQ(bank.QuestionBank[6].Items()[12].size(), 12u);
    EXPECT_TRUE(LevelHasQuestions(bank, 6, 0));
    EXPECT_FALSE(LevelHasQuestions(bank, 6, 1));
    EXPECT_FALSE(LevelHasQuestions(bank, 7, 0));

    EXPECT_TRUE(LevelHasQuestions(bank, 0, 6));
    bank.ArithOps[6].clear();
    EXPECT_FALSE(LevelHasQuestions(bank, 0, 6));
    bank.Limits[2].LastQuestion[0] = -1;
    EXPECT_FALSE(LevelHasQuestions(bank, 2, 0));
    EXPECT_TRUE(LevelHasQuestions(bank, 2, 1));
    EXPECT_FALSE(LevelHasQuestions(bank, 1, 13));
    EXPECT_FALSE(LevelHasQuestions(bank, 1, -1));
}
