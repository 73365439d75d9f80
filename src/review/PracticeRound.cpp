#include "PracticeRound.h"

#include <algorithm>
#include <iterator>

namespace {

// The same question, whatever order its answers came in the second time: an
// Arithmetic problem by its numbers, operation and blank, a multiple-choice
// question by its place in the bank.
bool isSameQuestion(const AskedQuestion &a, const AskedQuestion &b)
{
    if (a.index() != b.index())
        return false;
    if (const auto *x = std::get_if<ArithmeticProblem>(&a)) {
        const auto &y = std::get<ArithmeticProblem>(b);
        return x->operation == y.operation && x->number1 == y.number1 && x->number2 == y.number2 &&
               x->blank == y.blank;
    }
    const auto &x = std::get<MultipleChoiceProblem>(a);
    const auto &y = std::get<MultipleChoiceProblem>(b);
    return x.level == y.level && x.question == y.question;
}

} // namespace

PracticeRound::PracticeRound(const TestRecord &record)
{
    for (const RecordedQuestion &question : record.questions()) {
        if (!question.isMissed())
            continue;
        const bool seen =
            std::any_of(m_waiting.begin(), m_waiting.end(), [&](const AskedQuestion &waiting) {
                return isSameQuestion(waiting, question.asked);
            });
        if (!seen)
            m_waiting.push_back(question.asked);
    }
    m_questionCount = static_cast<int>(m_waiting.size());
}

PracticeRound::PracticeRound(std::vector<AskedQuestion> questions)
    : m_waiting(std::make_move_iterator(questions.begin()),
                std::make_move_iterator(questions.end())),
      m_questionCount(static_cast<int>(m_waiting.size()))
{
}

void PracticeRound::answer(bool right)
{
    if (m_waiting.empty())
        return;
    AskedQuestion asked = std::move(m_waiting.front());
    m_waiting.pop_front();
    if (right)
        return;
    ++m_wrongAnswers;
    // Soon enough that the right answer just shown is still fresh, late enough
    // that it is not simply copied from the line above.
    const auto later = std::min<std::size_t>(ComeBackAfter, m_waiting.size());
    m_waiting.insert(m_waiting.begin() + static_cast<std::ptrdiff_t>(later), std::move(asked));
}

std::string PracticeRound::progressText() const
{
    const int left = questionsLeft();
    return std::to_string(left) + (left == 1 ? " question to go" : " questions to go");
}

std::string PracticeRound::praise() const
{
    const std::string all = m_questionCount == 1   ? "it"
                            : m_questionCount == 2 ? "both"
                                                   : "all " + std::to_string(m_questionCount);
    if (m_wrongAnswers == 0)
        return "Well done! You got " + all + " right the first time.";
    return "Well done! You got " + all + " right in the end.";
}
