#include "worksheets/Worksheet.h"

#include "quiz/AnswerPositions.h"
#include "quiz/Random.h"

#include <algorithm>
#include <random>
#include <stdexcept>

namespace {

// Signs as printed in a child's book: the true minus, times and division signs
// (UTF-8), where the keyboard's test shows "-", "x" and "/".
constexpr std::array<std::string_view, OperationCount> PaperSigns = {"+", "\xE2\x88\x92",
                                                                     "\xC3\x97", "\xC3\xB7"};

void checkRequest(const TestBank &bank, int subject, int level, int count)
{
    if (subject < 0 || static_cast<std::size_t>(subject) >= bank.subjects.size())
        throw std::out_of_range("subject " + std::to_string(subject) + " is not in the bank");
    if (level < 0 || level >= LevelCount)
        throw std::out_of_range("level " + std::to_string(level) + " is outside 0..12");
    if (!levelHasQuestions(bank, subject, level))
        throw std::invalid_argument("level " + levelText(level) + " has no questions");
    if (count < MinWorksheetCount || count > MaxWorksheetCount)
        throw std::invalid_argument("a worksheet holds 1..200 problems, not " +
                                    std::to_string(count));
}

// A question shown on the screen without text (the four spellings speak for
// themselves) needs words on paper, where the answer is circled, not clicked.
std::string circlePrompt(int subject)
{
    return subject == SpellingSubject ? "Circle the correct spelling:"
                                      : "Circle the correct answer:";
}

} // namespace

int Worksheet::count() const
{
    return static_cast<int>(isArithmetic() ? sums.size() : questions.size());
}

Worksheet makeWorksheet(const TestBank &bank, int subject, int level,
                        const WorksheetSettings &settings)
{
    checkRequest(bank, subject, level, settings.count);
    Worksheet sheet;
    sheet.subjectName = bank.subjects[static_cast<std::size_t>(subject)].name;
    sheet.subject = subject;
    sheet.level = level;
    sheet.seed = settings.seed.value_or(freshWorksheetSeed());
    sheet.answerKey = settings.answerKey;

    // A sequence of its own, started as a test starts: the sheet follows the
    // same rules without touching a test in progress.
    RandomSource random(sheet.seed);
    QuestionSequence sequence;
    if (sheet.isArithmetic()) {
        sequence.startArithmetic(bank, level);
        for (int i = 0; i < settings.count; ++i)
            sheet.sums.push_back(sequence.nextArithmetic(bank, level, random));
        return sheet;
    }
    const AnswerPositionTable positions = makeAnswerPositionTable();
    sequence.startMultipleChoice(bank);
    for (int i = 0; i < settings.count; ++i) {
        MultipleChoiceProblem problem =
            sequence.nextMultipleChoice(bank, subject, level, random, positions);
        if (problem.text.empty())
            problem.label = circlePrompt(subject);
        sheet.questions.push_back(std::move(problem));
    }
    return sheet;
}

std::uint32_t freshWorksheetSeed()
{
    return std::random_device{}();
}

int distinctQuestions(const TestBank &bank, int subject, int level)
{
    const auto s = static_cast<std::size_t>(subject);
    const LevelQuestions &items = bank.questionBank.at(s).items();
    const bool adjacent = bank.subjects.at(s).adjacentLevels;
    int count = 0;
    for (int drawn = std::max(level - 1, 0); drawn <= std::min(level + 1, LevelCount - 1);
         ++drawn) {
        const std::int32_t last = bank.limits.at(s).lastQuestion[drawn];
        if ((drawn == level || adjacent) && last >= 0)
            count += static_cast<int>(
                std::min<std::size_t>(static_cast<std::size_t>(last) + 1, items[drawn].size()));
    }
    return count;
}

std::string worksheetHeading(const std::string &subjectName, int level)
{
    return subjectName + ", Level " + levelText(level);
}

std::string worksheetHeading(const Worksheet &sheet)
{
    return worksheetHeading(sheet.subjectName, sheet.level);
}

std::string worksheetInstruction(const Worksheet &sheet)
{
    return sheet.isArithmetic() ? "Write the missing number on each line."
                                : "Circle the right answer to each question.";
}

std::string sheetProblemText(const ArithmeticProblem &problem)
{
    const auto shown = [&problem](MathBox box, std::int32_t value) {
        return problem.blank == box ? std::string(WritingLine) : std::to_string(value);
    };
    const auto sign = static_cast<std::size_t>(problem.operation);
    return shown(MathBox::Number1, problem.number1) + " " +
           std::string(sign < PaperSigns.size() ? PaperSigns[sign] : "?") + " " +
           shown(MathBox::Number2, problem.number2) + " = " +
           shown(MathBox::Answer, problem.answer);
}

std::string choiceLetter(int position)
{
    return std::string(1, static_cast<char>('A' + position));
}

std::vector<std::string> answerKey(const Worksheet &sheet)
{
    std::vector<std::string> key;
    for (const ArithmeticProblem &problem : sheet.sums) {
        switch (problem.blank) {
        case MathBox::Number1:
            key.push_back(std::to_string(problem.number1));
            break;
        case MathBox::Number2:
            key.push_back(std::to_string(problem.number2));
            break;
        case MathBox::Answer:
            key.push_back(std::to_string(problem.answer));
            break;
        }
    }
    for (const MultipleChoiceProblem &problem : sheet.questions)
        key.push_back(choiceLetter(problem.answerPosition));
    return key;
}
