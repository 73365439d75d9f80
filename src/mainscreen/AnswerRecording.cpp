#include "AnswerRecording.h"

#include "core/History.h"
#include "ui/Session.h"

AnswerRecording::~AnswerRecording()
{
    end(true);
}

void AnswerRecording::begin(int seconds, bool practice)
{
    m_rights = 0;
    m_wrongs = 0;
    if (!m_session.history)
        return;
    const StudentRecords &records = m_session.records;
    m_session.history->recorder().beginTest(
        {records.currentStudent, records.currentSubject, records.currentLevel, seconds, practice});
}

void AnswerRecording::questionShown()
{
    if (m_session.history)
        m_session.history->recorder().questionShown();
}

void AnswerRecording::answered(const ArithmeticProblem &problem, const GivenAnswer &answer)
{
    ++(answer.right ? m_rights : m_wrongs);
    if (!m_session.history)
        return;
    ArithmeticAnswer recorded;
    recorded.number1 = problem.number1;
    recorded.number2 = problem.number2;
    recorded.result = problem.answer;
    recorded.operation = problem.operation;
    recorded.blank = static_cast<int>(problem.blank);
    recorded.typed = answer.typed;
    recorded.correct = answer.right;
    m_session.history->recorder().recordArithmetic(recorded);
}

void AnswerRecording::answered(const MultipleChoiceProblem &question, const GivenAnswer &answer)
{
    ++(answer.right ? m_rights : m_wrongs);
    if (!m_session.history)
        return;
    // The bank's text, not the label with its mark, so that the same question
    // is one question in the history whatever the subject adds to it.
    m_session.history->recorder().recordChoice(
        {question.text, question.choices, question.answerPosition, answer.chosen});
}

void AnswerRecording::end(bool stopped)
{
    if (!m_session.history || !m_session.history->recorder().isRecording())
        return;
    m_session.history->recorder().endTest({m_rights - m_wrongs, m_rights, m_wrongs, stopped});
}
