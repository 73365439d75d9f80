#include "core/TestBank.h"

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
