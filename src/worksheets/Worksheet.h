// A printable worksheet's content: problems for one subject and level, drawn
// by the same sequence a test uses from a seed of their own, and their answer
// key. What the sheet shows is worded here; the layout is the painter's.
#pragma once

#include "quiz/QuestionSequence.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

constexpr int MinWorksheetCount = 1;
constexpr int MaxWorksheetCount = 200;
constexpr int DefaultWorksheetCount = 30;

struct WorksheetSettings {
    int count = DefaultWorksheetCount;
    bool answerKey = true;
    // The same seed draws the same problems; without one a fresh seed is drawn.
    std::optional<std::uint32_t> seed;
};

struct Worksheet {
    std::string subjectName;
    int subject = 0;
    int level = 0;
    std::uint32_t seed = 0; // the one drawn from, printed so the sheet can be made again
    bool answerKey = true;
    // One of the two holds the problems, by the subject's kind. A multiple-choice
    // label is the sheet's wording: a question without text asks to circle.
    std::vector<ArithmeticProblem> sums;
    std::vector<MultipleChoiceProblem> questions;

    bool isArithmetic() const { return subject == ArithmeticSubject; }
    int count() const;
};

// The problems of the subject and level as a test from a fresh sequence would
// draw them. Throws std::out_of_range for a subject or level the bank does not
// have, std::invalid_argument for a level without questions or a count outside
// MinWorksheetCount..MaxWorksheetCount.
Worksheet makeWorksheet(const TestBank &bank, int subject, int level,
                        const WorksheetSettings &settings);

// How many different questions a multiple-choice sheet draws from: the level's,
// and its neighbours' where the subject uses adjacent levels. A longer sheet
// repeats them, as a long test does.
int distinctQuestions(const TestBank &bank, int subject, int level);

// A seed from the system's entropy source.
std::uint32_t freshWorksheetSeed();

// "Arithmetic, Level 2", "Spelling, Level K".
std::string worksheetHeading(const std::string &subjectName, int level);
std::string worksheetHeading(const Worksheet &sheet);
// The one line under the heading that says what to do.
std::string worksheetInstruction(const Worksheet &sheet);

// The blank as a writing line, and a problem with it in the blank's place:
// "7 + _____ = 12". The signs are those printed in books: the true minus sign,
// "×" and "÷".
constexpr std::string_view WritingLine = "_____";
std::string sheetProblemText(const ArithmeticProblem &problem);

// "A".."D", the letter of a choice.
std::string choiceLetter(int position);

// The key's answers in the problems' order: the number missing from the blank,
// or the letter of the right choice.
std::vector<std::string> answerKey(const Worksheet &sheet);
