#include "core/TestBank.h"

#include "core/QuestionRecords.h"

#include <utility>

int OperationIndex(char symbol)
{
    for (int op = 0; op < OperationCount; ++op) {
        if (OpSymbols[op] == symbol) {
            return op;
        }
    }
    return -1;
}

std::string LevelText(int level)
{
    return level == 0 ? std::string("K") : std::to_string(level);
}

SubjectQuestions::SubjectQuestions(StoredQuestions stored)
    : m_stored(std::move(stored)), m_storedSlotCount(m_stored->slotCount)
{
}

LevelQuestions &SubjectQuestions::Items()
{
    decode();
    return m_items;
}

// Decoding on first use changes nothing a caller can see, hence const; the
// program reads its bank from one thread only.
const LevelQuestions &SubjectQuestions::Items() const
{
    decode();
    return m_items;
}

std::size_t SubjectQuestions::SlotCount() const
{
    return m_stored ? m_storedSlotCount : m_items[0].size();
}

void SubjectQuestions::ResizeSlots(std::size_t count)
{
    // Growing stored questions only adds empty slots, which need no decoding:
    // a bank whose every subject grows by one slot stays quick to change.
    if (m_stored && count >= m_stored->slotCount) {
        m_storedSlotCount = count;
        return;
    }
    for (LevelSlots &level : Items()) {
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
    DecodeQuestionRecords(m_stored->records, m_stored->slotCount, m_items);
    m_stored.reset();
}

void ResizeQuestionSlots(TestBank &bank, int32_t questionMax)
{
    const auto slots = static_cast<std::size_t>(questionMax < 0 ? 0 : questionMax + 1);
    for (SubjectQuestions &subject : bank.QuestionBank) {
        subject.ResizeSlots(slots);
    }
    bank.QuestionMax = questionMax;
}

void AddSubject(TestBank &bank, const std::string &name)
{
    bank.SubjectMax += 1;
    bank.Subjects.push_back(Subject{name, false});
    SubjectLimits limits;
    limits.LastQuestion.fill(-1);
    limits.LastQuestion[0] = 0;
    limits.Seconds = DefaultSeconds;
    bank.Limits.push_back(limits);
    SubjectQuestions questions;
    questions.ResizeSlots(static_cast<std::size_t>(bank.QuestionMax) + 1);
    bank.QuestionBank.push_back(std::move(questions));
}

bool LevelHasQuestions(const TestBank &bank, int subject, int level)
{
    if (level < 0 || level >= LevelCount || subject < 0) {
        return false;
    }
    if (subject == ArithmeticSubject) {
        return !bank.ArithOps[level].empty();
    }
    if (static_cast<std::size_t>(subject) >= bank.Limits.size()) {
        return false;
    }
    return bank.Limits[subject].LastQuestion[level] != -1;
}
