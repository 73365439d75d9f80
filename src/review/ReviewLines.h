// What the review after a test says: one line per question, the missed ones
// first, each with the right answer and, where it was wrong, the child's
// ("7 x 8 = 56, you wrote 54").
#pragma once

#include "TestRecord.h"

#include <string>
#include <vector>

enum class ReviewMark { Missed, Right, NotAnswered };

struct ReviewLine {
    ReviewMark mark = ReviewMark::Right;
    std::string text;   // as shown
    std::string spoken; // for a screen reader: the mark in words, then the text
};

// The questions of the test: missed, then right, then the one left unanswered
// when the test ended, each group in the order the questions were asked.
std::vector<ReviewLine> reviewLines(const TestRecord &record);

// The problem with every number filled in: "7 x 8 = 56".
std::string problemText(const ArithmeticProblem &problem);

// The caption of the button that opens the review: "Review (3 missed)", or
// "Review" when nothing was missed.
std::string reviewCaption(const TestRecord &record);

// The line over the review: how the test went.
std::string reviewHeading(const TestRecord &record);
