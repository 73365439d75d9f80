#include "core/DefaultBank.h"

#include "core/DefaultQuestions.h"

namespace {

// One operation's ranges at one level: first number low..high, second number low..high.
struct Range {
    int32_t low1, high1, low2, high2;
};

struct ArithmeticLevel {
    const char *ops;
    Range ranges[OperationCount]; // "+", "-", "x", "/"; {0,0,0,0} is a cell left unset
    bool switchNumbers;
    bool switchBlanks;
};

constexpr Range Unset{0, 0, 0, 0};
constexpr Range One{1, 1, 1, 1};

// Levels 6..12 are the multiplication tables of the level, second number 2..12.
constexpr ArithmeticLevel TimesTable(int32_t n)
{
    return {"x", {Unset, Unset, {n, n, 2, 12}, One}, false, false};
}

constexpr ArithmeticLevel DefaultArithmeticLevels[LevelCount] = {
    {"+", {{0, 1, 0, 4}, Unset, Unset, One}, false, false},
    {"+-x", {{1, 5, 1, 5}, {1, 5, 1, 5}, {0, 2, 0, 2}, One}, true, true},
    {"+-x/", {{6, 12, 6, 12}, {6, 12, 6, 12}, {0, 5, 0, 5}, {1, 3, 1, 3}}, true, true},
    {"x/", {Unset, Unset, {5, 10, 5, 10}, {5, 10, 5, 10}}, true, true},
    {"x/", {Unset, Unset, {6, 12, 6, 12}, {6, 12, 6, 12}}, true, true},
    {"+-x/", {{15, 30, 15, 30}, {15, 30, 15, 30}, {6, 12, 6, 12}, {6, 12, 6, 12}}, true, true},
    TimesTable(6),
    TimesTable(7),
    TimesTable(8),
    TimesTable(9),
    TimesTable(10),
    TimesTable(11),
    TimesTable(12),
};

// The slots every built-in multiple-choice subject fills, 0..count-1 at every level.
constexpr int SpellingSlots = 12;
constexpr int OtherSubjectSlots = 6;

const char *OrEmpty(const char *text)
{
    return text != nullptr ? text : "";
}

void DefaultSubject(TestBank &bank, int subject, int slotsPerLevel)
{
    // A bank read from a file may have fewer slots than the defaults need.
    if (bank.QuestionMax < slotsPerLevel - 1) {
        ResizeQuestionSlots(bank, slotsPerLevel - 1);
    }
    SubjectLimits &limits = bank.Limits.at(subject);
    limits.Seconds = DefaultSeconds;
    limits.LastQuestion.fill(slotsPerLevel - 1);
    for (const DefaultQuestionRow &row : DefaultQuestions) {
        if (row.subject == subject) {
            AddQuestion(bank, row.subject, row.level, row.slot, OrEmpty(row.text),
                        OrEmpty(row.answer), OrEmpty(row.wrong1), OrEmpty(row.wrong2),
                        OrEmpty(row.wrong3));
        }
    }
}

} // namespace

void BuildDefaultTests(TestBank &bank)
{
    static const char *const names[] = {"Arithmetic", "Spelling", "Geography",
                                        "History",    "Music",    "Science"};
    constexpr int32_t subjectMax = 5;
    constexpr int32_t questionMax = 11;

    bank.SubjectMax = subjectMax;
    bank.QuestionMax = questionMax;

    bank.Subjects.assign(subjectMax + 1, Subject{});
    for (int s = 0; s <= subjectMax; ++s) {
        bank.Subjects[s].Name = names[s];
        bank.Subjects[s].AdjacentLevels = s != ArithmeticSubject;
    }

    bank.QuestionBank.assign(subjectMax + 1, SubjectQuestions{});
    for (SubjectQuestions &subject : bank.QuestionBank) {
        subject.ResizeSlots(questionMax + 1);
    }

    bank.Limits.assign(subjectMax + 1, SubjectLimits{});
    bank.Limits[ArithmeticSubject].LastQuestion.fill(-1);

    DefaultArithmetic(bank);
    DefaultSpelling(bank);
    DefaultGeography(bank);
    DefaultHistory(bank);
    DefaultMusic(bank);
    DefaultScience(bank);
}

void DefaultArithmetic(TestBank &bank)
{
    bank.Limits.at(ArithmeticSubject).Seconds = DefaultSeconds;

    bank.ArithLow1 = RangeTable{};
    bank.ArithHigh1 = RangeTable{};
    bank.ArithLow2 = RangeTable{};
    bank.ArithHigh2 = RangeTable{};
    for (int level = 0; level < LevelCount; ++level) {
        const ArithmeticLevel &defaults = DefaultArithmeticLevels[level];
        for (int op = 0; op < OperationCount; ++op) {
            const Range &range = defaults.ranges[op];
            bank.ArithLow1[level][op] = range.low1;
            bank.ArithHigh1[level][op] = range.high1;
            bank.ArithLow2[level][op] = range.low2;
            bank.ArithHigh2[level][op] = range.high2;
        }
        bank.ArithOps[level] = defaults.ops;
        bank.ArithSwitch[level][SwitchNumbers] = defaults.switchNumbers;
        bank.ArithSwitch[level][SwitchBlanks] = defaults.switchBlanks;
    }
}

void DefaultSpelling(TestBank &bank)
{
    DefaultSubject(bank, 1, SpellingSlots);
}

void DefaultGeography(TestBank &bank)
{
    DefaultSubject(bank, 2, OtherSubjectSlots);
}

void DefaultHistory(TestBank &bank)
{
    DefaultSubject(bank, 3, OtherSubjectSlots);
}

void DefaultMusic(TestBank &bank)
{
    DefaultSubject(bank, 4, OtherSubjectSlots);
}

void DefaultScience(TestBank &bank)
{
    DefaultSubject(bank, 5, OtherSubjectSlots);
}

void AddQuestion(TestBank &bank, int subject, int level, int slot, const std::string &text,
                 const std::string &answer, const std::string &wrong1, const std::string &wrong2,
                 const std::string &wrong3)
{
    // at() turns a row outside the bank into an exception instead of a stray write.
    Question &question = bank.QuestionBank.at(subject).Items().at(level).at(slot);
    question.Text = text;
    question.Answer = answer;
    question.Wrong1 = wrong1;
    question.Wrong2 = wrong2;
    question.Wrong3 = wrong3;
}
