#include "TestRecord.h"

#include <algorithm>

void TestRecord::start(int subject)
{
    m_subject = subject;
    m_questions.clear();
}

void TestRecord::clear()
{
    m_questions.clear();
}

void TestRecord::questionShown(const AskedQuestion &asked)
{
    m_questions.push_back({asked, std::nullopt});
}

void TestRecord::questionAnswered(const GivenAnswer &answer)
{
    if (m_questions.empty() || m_questions.back().answer)
        return;
    m_questions.back().answer = answer;
}

int TestRecord::answeredCount() const
{
    return static_cast<int>(
        std::count_if(m_questions.begin(), m_questions.end(),
                      [](const RecordedQuestion &q) { return q.answer.has_value(); }));
}

int TestRecord::missedCount() const
{
    return static_cast<int>(std::count_if(m_questions.begin(), m_questions.end(),
                                          [](const RecordedQuestion &q) { return q.isMissed(); }));
}
