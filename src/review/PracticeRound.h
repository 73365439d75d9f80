// A practice round after a test: the questions the child missed, asked again
// without a clock until each has been answered right. A question answered
// wrong comes back a little later in the round, not at once.
#pragma once

#include "TestRecord.h"

#include <deque>
#include <string>
#include <vector>

class PracticeRound {
public:
    // How many other questions come between a wrong answer and the question's
    // return, where the round still has that many.
    static constexpr int ComeBackAfter = 2;

    // The missed questions of the test, each once however often it was missed,
    // in the order they were first asked, shown as they were then.
    explicit PracticeRound(const TestRecord &record);
    // The questions given, in their order: a round chosen from the history.
    explicit PracticeRound(std::vector<AskedQuestion> questions);

    bool isOver() const { return m_waiting.empty(); }
    // The question to show. Only while the round is not over.
    const AskedQuestion &current() const { return m_waiting.front(); }
    // The child answered the current question.
    void answer(bool right);

    // Questions still to be answered right, the current one among them.
    int questionsLeft() const { return static_cast<int>(m_waiting.size()); }
    int questionCount() const { return m_questionCount; }
    // "2 questions to go".
    std::string progressText() const;
    // A short word of praise for the end of the round.
    std::string praise() const;

private:
    std::deque<AskedQuestion> m_waiting;
    int m_questionCount = 0;
    int m_wrongAnswers = 0;
};
