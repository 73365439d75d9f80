// The plain values the history takes from the screens and gives back to them.
// Students and subjects are named by their position in the roster and in the
// bank, levels are 0 (K) to 12, operations 0..3 in the order "+", "-", "x", "/".
#pragma once

#include "core/LocalTime.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct TestStart {
    int student = 0;
    int subject = 0;
    int level = 0;
    int seconds = 0; // the length the test was set to run
    bool practice = false;
};

// An Arithmetic answer: the three boxes as shown (number1 <operation> number2 =
// result), the one that was blank, and what was typed into it.
struct ArithmeticAnswer {
    std::int64_t number1 = 0;
    std::int64_t number2 = 0;
    std::int64_t result = 0;
    int operation = 0;
    int blank = 2; // 0 number1, 1 number2, 2 result; its value is the right answer
    std::string typed;
    bool correct = false; // the judge's verdict
};

// A multiple-choice answer: the question's text as the bank holds it, and its
// four choices in the order they were shown.
struct ChoiceAnswer {
    std::string question;
    std::array<std::string, 4> choices;
    int right = 0;  // the position of the right answer, 0..3
    int chosen = 0; // the position chosen
};

struct TestEnd {
    int score = 0;
    int rights = 0;
    int wrongs = 0;
    bool stopped = false; // stopped by the student rather than run out
};

enum class TestEnding {
    RanOut,
    Stopped,
    Interrupted, // the program ended before the test did; rights and wrongs as recorded
};

struct TestSummary {
    LocalSeconds started = 0;
    int level = 0;
    int seconds = 0;
    int score = 0;
    int rights = 0;
    int wrongs = 0;
    TestEnding ending = TestEnding::RanOut;
    bool practice = false;
};

// Tests started at or after from and before until; either may be left open.
struct DateRange {
    std::optional<LocalSeconds> from;
    std::optional<LocalSeconds> until;
};

// One answer to an Arithmetic fact, as the fluency views need it.
struct FactAnswer {
    bool right = false;
    int milliseconds = 0; // how long the answer took
    int level = 0;        // the level of the test or practice round
    bool practice = false;
};

// A fact is the two numbers and the operation, wherever the blank was:
// 7 x 8 = _, 7 x _ = 56 and _ x 8 = 56 are all 7 x 8.
struct ArithmeticFact {
    int operation = 0;
    std::int64_t number1 = 0;
    std::int64_t number2 = 0;
    std::vector<FactAnswer> recent; // the latest first, at most RecentAnswersPerFact
};

// How many answers to each fact the history keeps at hand for the fluency views.
constexpr int RecentAnswersPerFact = 5;

struct MissedQuestion {
    std::string question;
    std::string rightAnswer;
    int asked = 0;
    int missed = 0;
};

// The scores of a student's latest tests in one subject (not practice, not interrupted).
struct SubjectScores {
    int subject = 0;
    std::vector<int> scores; // oldest first, at most RecentScoresPerSubject
    LocalSeconds lastTest = 0;
};

constexpr int RecentScoresPerSubject = 10;

// History that belongs to no student of the roster since the Students file changed
// outside the program. The key names it in calls that give it away or delete it.
struct UnmatchedStudent {
    std::int64_t key = 0;
    std::string name;
    int tests = 0;
    LocalSeconds firstTest = 0;
    LocalSeconds lastTest = 0;
};
