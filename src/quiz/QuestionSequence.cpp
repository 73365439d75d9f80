#include "QuestionSequence.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

void CheckLevel(int level)
{
    if (level < 0 || level >= LevelCount) {
        throw std::out_of_range("level " + std::to_string(level) + " is outside 0..12");
    }
}

// Int(Rnd x count), worked out in double and kept below count, so that no
// rounding of a draw just under 1 can give count itself.
int ScaledDraw(float rnd, int count)
{
    const int index = static_cast<int>(static_cast<double>(rnd) * count);
    return std::min(index, count - 1);
}

// The next operation of the level's text, read cyclically from the 1-based
// position. A character that is not an operation symbol (only a damaged file
// holds one) is passed over; a text without any symbol asks addition.
int ReadOperation(const std::string &ops, std::int32_t &position)
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
int ChooseLevel(const TestBank &bank, int subject, int level, RandomSource &random)
{
    if (!bank.subjects[static_cast<std::size_t>(subject)].adjacentLevels) {
        return level;
    }
    const int span = (level == 0 || level == LevelCount - 1) ? 2 : 3;
    int offset = ScaledDraw(random.Rnd(), span);
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
int QuestionCount(std::int32_t lastQuestion, std::size_t slots)
{
    const std::int64_t inUse = std::int64_t{std::max(lastQuestion, 0)} + 1;
    const std::int64_t held = std::max<std::int64_t>(static_cast<std::int64_t>(slots), 1);
    return static_cast<int>(std::min(inUse, held));
}

std::string QuestionLabel(const std::string &text, int subject)
{
    // Spelling shows a clue, or nothing at all when the four spellings speak for themselves.
    if (subject == SpellingSubject) {
        return text.empty() ? text : text + ":";
    }
    return text + "?";
}

} // namespace

void QuestionSequence::StartArithmetic(const TestBank &bank, int level)
{
    CheckLevel(level);
    m_switchNumbers = bank.arithSwitch[level][SwitchNumbers];
    m_switchBlanks = bank.arithSwitch[level][SwitchBlanks];
    m_opsPosition = 1;
    m_number1Used = {};
    m_number2Used = {};
}

void QuestionSequence::StartMultipleChoice(const TestBank &bank)
{
    const auto slots = static_cast<std::size_t>(std::max(bank.questionMax, 0) + 1);
    std::array<std::vector<bool>, LevelCount> levels;
    levels.fill(std::vector<bool>(slots, false));
    m_questionUsed.assign(bank.questionBank.size(), levels);
}

std::int32_t QuestionSequence::DrawOperand(OperandFlags &used, int operation, std::int32_t low,
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
    std::int32_t value = random.GetRandom(low, high);
    while (used[value][operation]) {
        value = value == high ? low : value + 1;
    }
    used[value][operation] = true;
    return value;
}

ArithmeticProblem QuestionSequence::NextArithmetic(const TestBank &bank, int level,
                                                   RandomSource &random)
{
    CheckLevel(level);
    const int operation = ReadOperation(bank.arithOps[level], m_opsPosition);
    std::int32_t a = DrawOperand(m_number1Used, operation, bank.arithLow1[level][operation],
                                 bank.arithHigh1[level][operation], random);
    std::int32_t b = DrawOperand(m_number2Used, operation, bank.arithLow2[level][operation],
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
        problem.Number1 = a;
        problem.Number2 = b;
        problem.Answer = a + b;
        break;
    case 1:
        problem.Number1 = a + b;
        problem.Number2 = a;
        problem.Answer = b;
        break;
    case 2:
        problem.Number1 = a;
        problem.Number2 = b;
        problem.Answer = a * b;
        break;
    default:
        problem.Number1 = a * b;
        problem.Number2 = a;
        problem.Answer = b;
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

std::vector<bool> &QuestionSequence::QuestionFlags(int subject, int level, int count)
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

MultipleChoiceProblem QuestionSequence::NextMultipleChoice(const TestBank &bank, int subject,
                                                           int level, RandomSource &random,
                                                           const AnswerPositionTable &positions)
{
    CheckLevel(level);
    const auto s = static_cast<std::size_t>(subject);
    if (subject < 0 || s >= bank.subjects.size() || s >= bank.questionBank.size() ||
        s >= bank.limits.size()) {
        throw std::out_of_range("subject " + std::to_string(subject) + " is not in the bank");
    }

    const int questionLevel = ChooseLevel(bank, subject, level, random);
    const LevelSlots &slots = bank.questionBank[s].items()[questionLevel];
    const int count = QuestionCount(bank.limits[s].lastQuestion[questionLevel], slots.size());
    std::vector<bool> &used = QuestionFlags(subject, questionLevel, count);

    int q = ScaledDraw(random.Rnd(), count);
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
    problem.label = QuestionLabel(question.text, subject);
    problem.rightAnswer = question.answer;
    const std::array<const std::string *, 4> texts = {&question.answer, &question.wrong1,
                                                      &question.wrong2, &question.wrong3};
    const auto &row =
        positions[static_cast<std::size_t>(ScaledDraw(random.Rnd(), AnswerPositionRows))];
    for (std::size_t button = 0; button < row.size(); ++button) {
        // at() refuses a table entry outside 0..3 instead of reading past the texts.
        problem.choices[button] = *texts.at(static_cast<std::size_t>(row[button]));
        if (row[button] == 0) {
            problem.answerPosition = static_cast<int>(button);
        }
    }
    return problem;
}
