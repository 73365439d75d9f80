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
constexpr ArithmeticLevel timesTable(int32_t n)
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
    timesTable(6),
    timesTable(7),
    timesTable(8),
    timesTable(9),
    timesTable(10),
    timesTable(11),
    timesTable(12),
};

// The slots every built-in multiple-choice subject fills, 0..count-1 at every level.
constexpr int SpellingSlots = 12;
constexpr int OtherSubjectSlots = 6;

const char *orEmpty(const char *text)
{
    return text != nullptr ? text : "";
}

void defaultSubject(TestBank &bank, int subject, int slotsPerLevel)
{
    // A bank read from a file may have fewer slots than the defaults need.
    if (bank.questionMax < slotsPerLevel - 1) {
        resizeQuestionSlots(bank, slotsPerLevel - 1);
    }
    SubjectLimits &limits = bank.limits.at(subject);
    limits.seconds = DefaultSeconds;
    limits.lastQuestion.fill(slotsPerLevel - 1);
    for (const DefaultQuestionRow &row : DefaultQuestions) {
        if (row.subject == subject) {
            addQuestion(bank, row.subject, row.level, row.slot, orEmpty(row.text),
                        orEmpty(row.answer), orEmpty(row.wrong1), orEmpty(row.wrong2),
                        orEmpty(row.wrong3));
        }
    }
}

} // namespace

void buildDefaultTests(TestBank &bank)
{
    static const char *const names[] = {"Arithmetic", "Spelling", "Geography",
                                        "History",    "Music",    "Science"};
    constexpr int32_t subjectMax = 5;
    constexpr int32_t questionMax = 11;

    bank.subjectMax = subjectMax;
    bank.questionMax = questionMax;

    bank.subjects.assign(subjectMax + 1, Subject{});
    for (int s = 0; s <= subjectMax; ++s) {
        bank.subjects[s].name = names[s];
        bank.subjects[s].adjacentLevels = s != ArithmeticSubject;
    }

    bank.questionBank.assign(subjectMax + 1, SubjectQuestions{});
    for (SubjectQuestions &subject : bank.questionBank) {
        subject.resizeSlots(questionMax + 1);
    }

    bank.limits.assign(subjectMax + 1, SubjectLimits{});
    bank.limits[ArithmeticSubject].lastQuestion.fill(-1);

    defaultArithmetic(bank);
    defaultSpelling(bank);
    defaultGeography(bank);
    defaultHistory(bank);
    defaultMusic(bank);
    defaultScience(bank);
}

void defaultArithmetic(TestBank &bank)
{
    bank.limits.at(ArithmeticSubject).seconds = DefaultSeconds;

    bank.arithLow1 = RangeTable{};
    bank.arithHigh1 = RangeTable{};
    bank.arithLow2 = RangeTable{};
    bank.arithHigh2 = RangeTable{};
    for (int level = 0; level < LevelCount; ++level) {
        const ArithmeticLevel &defaults = DefaultArithmeticLevels[level];
        for (int op = 0; op < OperationCount; ++op) {
            const Range &range = defaults.ranges[op];
            bank.arithLow1[level][op] = range.low1;
            bank.arithHigh1[level][op] = range.high1;
            bank.arithLow2[level][op] = range.low2;
            bank.arithHigh2[level][op] = range.high2;
        }
        bank.arithOps[level] = defaults.ops;
        bank.arithSwitch[level][SwitchNumbers] = defaults.switchNumbers;
        bank.arithSwitch[level][SwitchBlanks] = defaults.switchBlanks;
    }
}

void defaultSpelling(TestBank &bank)
{
    defaultSubject(bank, 1, SpellingSlots);
}

void defaultGeography(TestBank &bank)
{
    defaultSubject(bank, 2, OtherSubjectSlots);
}

void defaultHistory(TestBank &bank)
{
    defaultSubject(bank, 3, OtherSubjectSlots);
}

void defaultMusic(TestBank &bank)
{
    defaultSubject(bank, 4, OtherSubjectSlots);
}

void defaultScience(TestBank &bank)
{
    defaultSubject(bank, 5, OtherSubjectSlots);
}

void addQuestion(TestBank &bank, int subject, int level, int slot, const std::string &text,
                 const std::string &answer, const std::string &wrong1, const std::string &wrong2,
                 const std::string &wrong3)
{
    // at() turns a row outside the bank into an exception instead of a stray write.
    Question &question = bank.questionBank.at(subject).items().at(level).at(slot);
    question.text = text;
    question.answer = answer;
    question.wrong1 = wrong1;
    question.wrong2 = wrong2;
    question.wrong3 = wrong3;
}
