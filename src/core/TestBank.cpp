#include "core/TestBank.h"

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

void ResizeQuestionSlots(TestBank &bank, int32_t questionMax)
{
    const auto slots = static_cast<std::size_t>(questionMax < 0 ? 0 : questionMax + 1);
    for (SubjectQuestions &subject : bank.QuestionBank) {
        for (std::vector<Question> &level : subject.Items) {
            level.resize(slots);
        }
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
    for (std::vector<Question> &level : questions.Items) {
        level.resize(static_cast<std::size_t>(bank.QuestionMax) + 1);
    }
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
