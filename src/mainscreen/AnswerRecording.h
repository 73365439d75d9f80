// What the main screen tells the answer history: each test and practice round
// as it starts and ends, and every question as it is shown and answered, in the
// form the history keeps. Does nothing while the session has no history.
#pragma once

#include "review/TestRecord.h"

struct Session;

class AnswerRecording {
public:
    explicit AnswerRecording(Session &session) : m_session(session) {}
    // A round still being recorded when the screen goes is closed as stopped.
    ~AnswerRecording();
    AnswerRecording(const AnswerRecording &) = delete;
    AnswerRecording &operator=(const AnswerRecording &) = delete;

    // For the current student, subject and level; seconds is the test's length
    // (0 for practice, which has no clock).
    void begin(int seconds, bool practice);
    void questionShown();
    void answered(const ArithmeticProblem &problem, const GivenAnswer &answer);
    void answered(const MultipleChoiceProblem &question, const GivenAnswer &answer);
    // The score is rights less wrongs, as the screen counts it.
    void end(bool stopped);

private:
    Session &m_session;
    int m_rights = 0;
    int m_wrongs = 0;
};
