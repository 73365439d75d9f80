// What a child would meet in a stored question that cannot be answered fairly:
// no question to read, an empty answer button, or the same answer on two
// buttons. The Tests screen marks such questions; the file keeps them as typed.
#pragma once

#include "core/TestBank.h"

#include <array>

struct QuestionProblems {
    // The four answers in the order the question holds them: the right one,
    // then wrong answers 1 to 3.
    static constexpr int AnswerCount = 4;

    // Only "?" would be shown (a Spelling question may go without a clue).
    bool emptyText = false;
    // Per answer: it would be an empty button.
    std::array<bool, AnswerCount> emptyAnswers{};
    // Per answer: the earlier answer it repeats, or -1.
    std::array<int, AnswerCount> repeats{-1, -1, -1, -1};

    // Something is missing: an empty question or an empty answer.
    bool incomplete() const;
    // Two buttons would read the same.
    bool repeated() const;
    bool any() const { return incomplete() || repeated(); }
};

// Texts count as empty when they hold nothing but blanks, and as the same when
// they differ only in blanks at their ends, as the answer buttons show them.
QuestionProblems findProblems(const Question &question, int subject);
