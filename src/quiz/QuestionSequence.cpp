#include "QuestionSequence.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

void checkLevel(int level)
{
    if (level < 0 || level >= LevelCount) {
        throw std::out_of_range("level " + std::to_string(level) + " is outside 0..12");
    }
}

// The fraction drawn times count, rounded down: worked out in double and kept
// below count, so that no rounding of a draw just under 1 can give count itself.
int scaledDraw(float fraction, int count)
{
    const int index = static_cast<int>(static_cast<double>(fraction) * count);
    return std::min(index, count - 1);
}

// The next operation of the level's text, read cyclically from the 1-based
// position. A character that is not an operation symbol (only a damaged file
// holds one) is passed over; a text without any symbol asks addition.
int readOperation(const std::string &ops, std::int32_t &position)
{
    const auto length = static_cast<std::int32_t>(ops.size());
    for (std::int32_t tries = 0; tries < length; ++tries) {
        if (position < 1 || position > length) {
            position = 1;
        }
        const int operation = operationIndex(ops[static_cast<std::size_t>(position - 1)]);
        ++position;
        if (position > length) {
            position = 1;
        }
        if (operation >= 0) {
            return operation;
        }
    }
    return 0;
}

// The level the question comes from: with adjacent levels on, the level below,
// the level itself or the level above, as long as that one has questions.
int chooseLevel(const TestBank &bank, int subject, int level, RandomSource &random)
{
    if (!bank.subjects[static_cast<std::size_t>(subject)].adjacentLevels) {
        return level;
    }
    const int span = (level == 0 || level == LevelCount - 1) ? 2 : 3;
    int offset = scaledDraw(random.fraction(), span);
    if (level > 0) {
        --offset;
    }
    const int chosen = level + offset;
    const bool empty = bank.limits[static_cast<std::size_t>(subject)].lastQuestion[chosen] < 0;
    return empty ? level : chosen;
}

// Slots 0..lastQuestion are drawn. A level without questions still offers slot 0,
// whose texts are empty, so a test started there has something to show; slots
// beyond those the bank holds are never drawn, whatever lastQuestion says.
int questionCount(std::int32_t lastQuestion, std::size_t slots)
{
    const std::int64_t inUse = std::int64_t{std::max(lastQuestion, 0)} + 1;
    const std::int64_t held = std::max<std::int64_t>(static_cast<std::int64_t>(slots), 1);
    return static_cast<int>(std::min(inUse, held));
}

std::string questionLabel(const std::string &text, int subject)
{
    // Spelling shows a clue, or nothing at all when the four spellings speak for themselves.
    if (subject == SpellingSubject) {
        return text.empty() ? text : text + ":";
    }
    return text + "?";
}

} // namespace

void QuestionSequence::startArithmetic(const TestBank &bank, int level)
{
    checkLevel(level);
    m_switchNumbers = bank.arithSwitch[level][SwitchNumbers];
    m_switchBlanks = bank.arithSwitch[level][SwitchBlanks];
    m_opsPosition = 1;
    m_number1Used = {};
    m_number2Used = {};
}

void QuestionSequence::startMultipleChoice(const TestBank &bank)
{
    const auto slots = static_cast<std::size_t>(std::max(bank.questionMax, 0) + 1);
    std::array<std::vector<bool>, LevelCount> levels;
    levels.fill(std::vector<bool>(slots, false));
    m_questionUsed.assign(bank.questionBank.size(), levels);
}

std::int32_t QuestionSequence::drawOperand(OperandFlags &used, int operation, std::int32_t low,
                                           std::int32_t high, RandomSource &random)
{
    // The flags cover 0..30 only, so a range from a damaged file is clamped into
    // them rather than read past the table, and an inverted one (the settings
    // screen never stores high below low) stands for its low end alone.
    low = std::clamp(low, std::int32_t{0}, HighestOperand);
    high = std::max(low, std::clamp(high, std::int32_t{0}, HighestOperand));

    bool allUsed = true;
    for (std::int32_t value = low; value <= high; ++value) {
        allUsed = allUsed && used[value][operation];
    }
    if (allUsed) {
        for (std::int32_t value = low; value <= high; ++value) {
            used[value][operation] = false;
        }
    }
    std::int32_t value = random.between(low, high);
    while (used[value][operation]) {
        value = value == high ? low : value + 1;
    }
    used[value][operation] = true;
    return value;
}

ArithmeticProblem QuestionSequence::nextArithmetic(const TestBank &bank, int level,
                                                   RandomSource &random)
{
    checkLevel(level);
    const int operation = readOperation(bank.arithOps[level], m_opsPosition);
    std::int32_t a = drawOperand(m_number1Used, operation, bank.arithLow1[level][operation],
                                 bank.arithHigh1[level][operation], random);
    std::int32_t b = drawOperand(m_number2Used, operation, bank.arithLow2[level][operation],
                                 bank.arithHigh2[level][operation], random);
    if (m_switchNumbers) {
        m_numbersSwapped = !m_numbersSwapped;
        if (m_numbersSwapped) {
            std::swap(a, b);
        }
    }

    ArithmeticProblem problem;
    problem.operation = operation;
    problem.symbol = OpSymbols[operation];
    // Subtraction and division are built backwards from an addition and a
    // multiplication, so every answer is whole and never negative.
    switch (operation) {
    case 0:
        problem.number1 = a;
        problem.number2 = b;
        problem.answer = a + b;
        break;
    case 1:
        problem.number1 = a + b;
        problem.number2 = a;
        problem.answer = b;
        break;
    case 2:
        problem.number1 = a;
        problem.number2 = b;
        problem.answer = a * b;
        break;
    default:
        problem.number1 = a * b;
        problem.number2 = a;
        problem.answer = b;
        break;
    }

    problem.switchBlanks = m_switchBlanks;
    if (m_switchBlanks) {
        ++m_blankCounter;
        if (m_blankCounter >= 3) {
            m_blankCounter = 0;
        }
        problem.blank = static_cast<MathBox>(m_blankCounter);
    }
    return problem;
}

std::vector<bool> &QuestionSequence::questionFlags(int subject, int level, int count)
{
    // A subject added after the flags were made, or a draw without a start, gets
    // its flags here instead of indexing past the table.
    const auto index = static_cast<std::size_t>(subject);
    if (index >= m_questionUsed.size()) {
        m_questionUsed.resize(index + 1);
    }
    std::vector<bool> &used = m_questionUsed[index][static_cast<std::size_t>(level)];
    if (used.size() < static_cast<std::size_t>(count)) {
        used.resize(static_cast<std::size_t>(count), false);
    }
    return used;
}

MultipleChoiceProblem QuestionSequence::nextMultipleChoice(const TestBank &bank, int subject,
                                                           int level, RandomSource &random,
                                                           const AnswerPositionTable &positions)
{
    checkLevel(level);
    const auto s = static_cast<std::size_t>(subject);
    if (subject < 0 || s >= bank.subjects.size() || s >= bank.questionBank.size() ||
        s >= bank.limits.size()) {
        throw std::out_of_range("subject " + std::to_string(subject) + " is not in the bank");
    }

    const int questionLevel = chooseLevel(bank, subject, level, random);
    const LevelSlots &slots = bank.questionBank[s].items()[questionLevel];
    const int count = questionCount(bank.limits[s].lastQuestion[questionLevel], slots.size());
    std::vector<bool> &used = questionFlags(subject, questionLevel, count);

    int q = scaledDraw(random.fraction(), count);
    const auto end = used.begin() + count;
    if (std::all_of(used.begin(), end, [](bool flag) { return flag; })) {
        std::fill(used.begin(), end, false);
        // A new round never opens with the question that closed the last one.
        if (q == m_previousQuestion) {
            q = (q + 1) % count;
        }
    }
    while (used[static_cast<std::size_t>(q)]) {
        q = (q + 1) % count;
    }
    m_previousQuestion = q;
    used[static_cast<std::size_t>(q)] = true;

    static const Question emptySlot;
    const auto slot = static_cast<std::size_t>(q);
    const Question &question = slot < slots.size() ? slots[slot] : emptySlot;

    MultipleChoiceProblem problem;
    problem.level = questionLevel;
    problem.question = q;
    problem.text = question.text;
    problem.label = questionLabel(question.text, subject);
    problem.rightAnswer = question.answer;
    const std::array<const std::string *, 4> texts = {&question.answer, &question.wrong1,
                                                      &question.wrong2, &question.wrong3};
    const auto &row =
        positions[static_cast<std::size_t>(scaledDraw(random.fraction(), AnswerPositionRows))];
    for (std::size_t button = 0; button < row.size(); ++button) {
        // at() refuses a table entry outside 0..3 instead of reading past the texts.
        problem.choices[button] = *texts.at(static_cast<std::size_t>(row[button]));
        if (row[button] == 0) {
            problem.answerPosition = static_cast<int>(button);
        }
    }
    return problem;
}
