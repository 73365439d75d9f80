// A worksheet's problems: drawn by the test's own sequence from the sheet's
// seed, so they obey the level's settings, and a key that answers each one.
#include "worksheets/Worksheet.h"

#include "core/DefaultBank.h"
#include "quiz/AnswerPositions.h"
#include "quiz/Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

TestBank defaultBank()
{
    TestBank bank;
    buildDefaultTests(bank);
    return bank;
}

WorksheetSettings withSeed(std::uint32_t seed, int count = MaxWorksheetCount)
{
    WorksheetSettings settings;
    settings.count = count;
    settings.seed = seed;
    return settings;
}

std::vector<std::string> words(const std::string &line)
{
    std::istringstream in(line);
    std::vector<std::string> split;
    for (std::string word; in >> word;)
        split.push_back(word);
    return split;
}

} // namespace

TEST(Worksheet, ArithmeticFollowsTheLevelsSettingsAndTheKeyFillsTheBlank)
{
    const TestBank bank = defaultBank();
    const std::map<char, std::string> paperSign = {
        {'+', "+"}, {'-', "\xE2\x88\x92"}, {'x', "\xC3\x97"}, {'/', "\xC3\xB7"}};
    // K: addition alone, no switches; 2: all four with switched numbers and a
    // moving blank; 12: the twelve times table.
    for (const int level : {0, 2, 12}) {
        SCOPED_TRACE("level " + levelText(level));
        const Worksheet sheet = makeWorksheet(bank, ArithmeticSubject, level, withSeed(7));
        ASSERT_EQ(sheet.count(), MaxWorksheetCount);
        EXPECT_TRUE(sheet.questions.empty());
        const std::vector<std::string> key = answerKey(sheet);
        ASSERT_EQ(key.size(), sheet.sums.size());

        const std::string &ops = bank.arithOps[level];
        const bool switchNumbers = bank.arithSwitch[level][SwitchNumbers];
        const bool switchBlanks = bank.arithSwitch[level][SwitchBlanks];
        std::set<MathBox> blanks;
        for (std::size_t i = 0; i < sheet.sums.size(); ++i) {
            const ArithmeticProblem &p = sheet.sums[i];
            SCOPED_TRACE("problem " + std::to_string(i + 1) + ": " + sheetProblemText(p));
            // The operations in the level's order, over and over.
            ASSERT_EQ(p.symbol, ops[i % ops.size()]);
            const int op = p.operation;
            // Subtraction and division are an addition and a multiplication read backwards.
            std::pair<int, int> drawn = {p.number1, p.number2};
            switch (p.operation) {
            case 0:
                EXPECT_EQ(p.answer, p.number1 + p.number2);
                break;
            case 1:
                EXPECT_EQ(p.number1, p.number2 + p.answer);
                drawn = {p.number2, p.answer};
                break;
            case 2:
                EXPECT_EQ(p.answer, p.number1 * p.number2);
                break;
            default:
                EXPECT_EQ(p.number1, p.number2 * p.answer);
                drawn = {p.number2, p.answer};
                break;
            }
            EXPECT_GE(p.answer, 0);
            // With switched numbers every other problem has them the other way round.
            if (switchNumbers && i % 2 == 0)
                std::swap(drawn.first, drawn.second);
            EXPECT_GE(drawn.first, bank.arithLow1[level][op]);
            EXPECT_LE(drawn.first, bank.arithHigh1[level][op]);
            EXPECT_GE(drawn.second, bank.arithLow2[level][op]);
            EXPECT_LE(drawn.second, bank.arithHigh2[level][op]);

            // The blank moves 2nd, 3rd, 1st box... where the level says so, else it is the answer.
            const MathBox blank =
                switchBlanks ? static_cast<MathBox>((i + 1) % 3) : MathBox::Answer;
            EXPECT_EQ(p.blank, blank);
            blanks.insert(p.blank);

            // On paper: the writing line where the blank is, the key its number.
            const std::vector<std::string> shown = words(sheetProblemText(p));
            ASSERT_EQ(shown.size(), 5u);
            EXPECT_EQ(shown[1], paperSign.at(p.symbol));
            EXPECT_EQ(shown[3], "=");
            const std::array<std::int32_t, 3> values = {p.number1, p.number2, p.answer};
            for (int box = 0; box < 3; ++box) {
                const std::string &word = shown[box == 0 ? 0 : box * 2];
                if (static_cast<MathBox>(box) == p.blank) {
                    EXPECT_EQ(word, std::string(WritingLine));
                    EXPECT_EQ(key[i], std::to_string(values[box]));
                } else {
                    EXPECT_EQ(word, std::to_string(values[box]));
                }
            }
        }
        EXPECT_EQ(blanks.size(), switchBlanks ? 3u : 1u);
    }
}

TEST(Worksheet,
     MultipleChoiceDrawsFromTheLevelAndItsNeighboursWithoutRepeatsAndTheKeyNamesTheAnswer)
{
    const TestBank bank = defaultBank();
    ASSERT_TRUE(bank.subjects[SpellingSubject].adjacentLevels);
    for (const auto &[subject, level] :
         {std::pair{SpellingSubject, 4}, std::pair{2, 0}, std::pair{2, 12}}) {
        SCOPED_TRACE(bank.subjects[subject].name + " level " + levelText(level));
        const Worksheet sheet = makeWorksheet(bank, subject, level, withSeed(11));
        ASSERT_EQ(sheet.count(), MaxWorksheetCount);
        const std::vector<std::string> key = answerKey(sheet);
        std::map<int, std::vector<int>> drawnAt; // level -> questions in the order drawn
        for (std::size_t i = 0; i < sheet.questions.size(); ++i) {
            const MultipleChoiceProblem &p = sheet.questions[i];
            EXPECT_LE(std::abs(p.level - level), 1);
            drawnAt[p.level].push_back(p.question);
            const Question &stored = bank.questionBank[subject].items()[p.level][p.question];
            // The four answers, each once, the key's letter on the right one.
            std::multiset<std::string> choices(p.choices.begin(), p.choices.end());
            EXPECT_EQ(choices, (std::multiset<std::string>{stored.answer, stored.wrong1,
                                                           stored.wrong2, stored.wrong3}));
            ASSERT_EQ(key[i].size(), 1u);
            EXPECT_EQ(p.choices[key[i][0] - 'A'], stored.answer);
            // A question without text asks to circle the answer instead.
            const bool spelling = subject == SpellingSubject;
            const std::string asked =
                !stored.text.empty()
                    ? stored.text + (spelling ? ":" : "?")
                    : (spelling ? "Circle the correct spelling:" : "Circle the correct answer:");
            EXPECT_EQ(p.label, asked);
        }
        // Both neighbours inside K..12 are used, and at each level no question
        // comes again before every one of the level's has come once.
        EXPECT_EQ(drawnAt.size(), level == 4 ? 3u : 2u);
        for (const auto &[drawnLevel, questions] : drawnAt) {
            const auto inUse =
                static_cast<std::size_t>(bank.limits[subject].lastQuestion[drawnLevel] + 1);
            for (std::size_t start = 0; start + inUse <= questions.size(); start += inUse) {
                const std::set<int> round(questions.begin() + start,
                                          questions.begin() + start + inUse);
                EXPECT_EQ(round.size(), inUse) << "level " << drawnLevel << " from " << start;
            }
        }
    }
}

TEST(Worksheet, TheSeedDecidesTheSheetAsItWouldATest)
{
    const TestBank bank = defaultBank();
    const Worksheet first = makeWorksheet(bank, ArithmeticSubject, 2, withSeed(2024, 40));
    const Worksheet again = makeWorksheet(bank, ArithmeticSubject, 2, withSeed(2024, 40));
    const Worksheet other = makeWorksheet(bank, ArithmeticSubject, 2, withSeed(2025, 40));
    EXPECT_EQ(first.seed, 2024u);
    auto texts = [](const Worksheet &sheet) {
        std::vector<std::string> all = answerKey(sheet);
        for (const ArithmeticProblem &p : sheet.sums)
            all.push_back(sheetProblemText(p));
        return all;
    };
    EXPECT_EQ(texts(first), texts(again));
    EXPECT_NE(texts(first), texts(other));

    // The same draws as a test's sequence from that seed: one set of rules.
    RandomSource random(2024);
    QuestionSequence sequence;
    sequence.startMultipleChoice(bank);
    const AnswerPositionTable positions = makeAnswerPositionTable();
    const Worksheet spelling = makeWorksheet(bank, SpellingSubject, 6, withSeed(2024, 40));
    for (const MultipleChoiceProblem &p : spelling.questions) {
        const MultipleChoiceProblem test =
            sequence.nextMultipleChoice(bank, SpellingSubject, 6, random, positions);
        EXPECT_EQ(std::tie(p.level, p.question, p.choices),
                  std::tie(test.level, test.question, test.choices));
    }

    // Without a seed each sheet draws a fresh one, which it keeps.
    WorksheetSettings fresh;
    const Worksheet a = makeWorksheet(bank, ArithmeticSubject, 2, fresh);
    const Worksheet b = makeWorksheet(bank, ArithmeticSubject, 2, fresh);
    EXPECT_EQ(a.count(), DefaultWorksheetCount);
    EXPECT_NE(a.seed, b.seed);
    EXPECT_EQ(texts(makeWorksheet(bank, ArithmeticSubject, 2, withSeed(a.seed, 30))), texts(a));
}

TEST(Worksheet, ARequestTheBankCannotMeetIsRefused)
{
    TestBank bank = defaultBank();
    bank.arithOps[5].clear();
    bank.limits[3].lastQuestion[7] = -1;
    EXPECT_THROW(makeWorksheet(bank, ArithmeticSubject, 5, withSeed(1, 10)), std::invalid_argument);
    EXPECT_THROW(makeWorksheet(bank, 3, 7, withSeed(1, 10)), std::invalid_argument);
    EXPECT_THROW(makeWorksheet(bank, 1, 3, withSeed(1, 0)), std::invalid_argument);
    EXPECT_THROW(makeWorksheet(bank, 1, 3, withSeed(1, 201)), std::invalid_argument);
    EXPECT_THROW(makeWorksheet(bank, 1, 13, withSeed(1, 10)), std::out_of_range);
    EXPECT_THROW(makeWorksheet(bank, 6, 3, withSeed(1, 10)), std::out_of_range);
    EXPECT_EQ(makeWorksheet(bank, 1, 3, withSeed(1, 1)).count(), 1);
}

TEST(Worksheet, TheQuestionsToDrawFromCountTheNeighboursWhereTheSubjectUsesThem)
{
    TestBank bank = defaultBank();
    // Spelling: 12 a level; Geography 6; History without its neighbours.
    bank.subjects[3].adjacentLevels = false;
    bank.limits[2].lastQuestion[5] = -1;
    const std::vector<std::tuple<int, int, int>> cases = {
        {SpellingSubject, 4, 36},
        {SpellingSubject, 0, 24},
        {SpellingSubject, 12, 24},
        {3, 4, 6},
        {2, 4, 12},
        {2, 6, 12},
    };
    for (const auto &[subject, level, expected] : cases)
        EXPECT_EQ(distinctQuestions(bank, subject, level), expected)
            << bank.subjects[subject].name << " " << level;
}
