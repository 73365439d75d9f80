// The questions of one test as the child met them: what was asked, exactly as
// it was shown, what the child answered and whether that was right. The review
// after the test and the practice round are made from it.
#pragma once

#include "quiz/QuestionSequence.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

// A question as it was shown: an Arithmetic problem with its blank, or a
// multiple-choice question with its four answers in the order of the buttons.
using AskedQuestion = std::variant<ArithmeticProblem, MultipleChoiceProblem>;

// What the child gave for a question.
struct GivenAnswer {
    std::string typed; // Arithmetic: the text typed into the blank box
    int chosen = 0;    // multiple choice: the button chosen, 0..3
    bool right = false;
};

struct RecordedQuestion {
    AskedQuestion asked;
    // Empty for the question that was still on the screen when the test ended.
    std::optional<GivenAnswer> answer;

    bool isMissed() const { return answer && !answer->right; }
};

class TestRecord {
public:
    // A test of this subject begins: the last test's questions are forgotten.
    void start(int subject);
    void clear();

    void questionShown(const AskedQuestion &asked);
    // The answer to the question shown last. Ignored when no question is waiting
    // for one.
    void questionAnswered(const GivenAnswer &answer);

    int subject() const { return m_subject; }
    const std::vector<RecordedQuestion> &questions() const { return m_questions; }
    int answeredCount() const;
    int missedCount() const;

private:
    int m_subject = 0;
    std::vector<RecordedQuestion> m_questions;
};
