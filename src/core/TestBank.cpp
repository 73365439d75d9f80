#include "core/TestBank.h"

#include "core/QuestionRecords.h"

#include <utility>

int operationIndex(char symbol)
{
    for (int op = 0; op < OperationCount; ++op) {
        if (OpSymbols[op] == symbol) {
            return op;
        }
    }
    return -1;
}

std::string levelText(int level)
{
    return level == 0 ? std::string("K") : std::to_string(level);
}

SubjectQuestions::SubjectQuestions(StoredQuestions stored)
    : m_stored(std::move(stored)), m_storedSlotCount(m_stored->slotCount)
{
}

LevelQuestions &SubjectQuestions::items()
{
    decode();
    return m_items;
}

// Decoding on first use changes nothing a caller can see, hence const; the
// program reads its bank from one thread only.
const LevelQuestions &SubjectQuestions::items() const
{
    decode();
    return m_items;
}

std::size_t SubjectQuestions::slotCount() const
{
    return m_stored ? m_storedSlotCount : m_items[0].size();
}

void SubjectQuestions::resizeSlots(std::size_t count)
{
    // Growing stored questions only adds empty slots, which need no decoding:
    // a bank whose every subject grows by one slot stays quick to change.
    if (m_stored && count >= m_stored->slotCount) {
        m_storedSlotCount = count;
        return;
    }
    for (LevelSlots &level : items()) {
        level.resize(count);
    }
}

void SubjectQuestions::decode() const
{
    if (!m_stored) {
        return;
    }
    for (LevelSlots &level : m_items) {
        level.assign(m_storedSlotCount, Question{});
    }
    decodeQuestionRecords(m_stored->records, m_stored->slotCount, m_items);
    m_stored.reset();
}

void resizeQuestionSlots(TestBank &bank, int32_t questionMax)
{
    const auto slots = static_cast<std::size_t>(questionMax < 0 ? 0 : questionMax + 1);
    for (SubjectQuestions &subject : bank.questionBank) {
        subject.resizeSlots(slots);
    }
    bank.questionMax = questionMax;
}

void addSubject(TestBank &bank, const std::string &name)
{
    bank.subjectMax += 1;
    bank.subjects.push_back(Subject{name, false});
    SubjectLimits limits;
    limits.lastQuestion.fill(-1);
    limits.lastQuestion[0] = 0;
    limits.seconds = DefaultSeconds;
    bank.limits.push_back(limits);
    SubjectQuestions questions;
    questions.resizeSlots(static_cast<std::size_t>(bank.questionMax) + 1);
    bank.questionBank.push_back(std::move(questions));
}

bool levelHasQuestions(const TestBank &bank, int subject, int level)
{
    if (level < 0 || level >= LevelCount || subject < 0) {
        return false;
    }
    if (subject == ArithmeticSubject) {
        return !bank.arithOps[level].empty();
    }
    if (static_cast<std::size_t>(subject) >= bank.limits.size()) {
        return false;
    }
    return bank.limits[subject].lastQuestion[level] != -1;
}
