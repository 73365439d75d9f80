// The facts a practice of weak facts asks, in the order it asks them: those not
// known yet first, then those being learnt, then those of the level never tried,
// each asked as the level asks its questions. Known facts are left out.
#pragma once

#include "core/HistoryTypes.h"
#include "core/TestBank.h"
#include "quiz/QuestionSequence.h"
#include "quiz/Random.h"

#include <vector>

// Enough for a few minutes' practice, short enough to finish.
constexpr int WeakFactsPerRound = 20;

// The facts of the operations the level asks, taken from the child's latest
// answers (facts) and the level's numbers. Within each kind the weakest come
// first: the fewest right, then the slowest; untried facts come in a random
// order. With switching blanks on at the level the blank moves from question to
// question as in a test; otherwise the answer is the blank.
std::vector<ArithmeticProblem> weakFactsProblems(const TestBank &bank, int level,
                                                 const std::vector<ArithmeticFact> &facts,
                                                 RandomSource &random,
                                                 int count = WeakFactsPerRound);
