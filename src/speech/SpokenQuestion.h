// What is said aloud for each question of a test: the sentences a teacher
// would read to a child who cannot read the screen yet.
#pragma once

#include "quiz/QuestionSequence.h"

#include <cstdint>
#include <string>

// A whole number in English words: "twenty-one", "negative seven",
// "three hundred twelve".
std::string numberInWords(std::int64_t number);

// An operation sign as it is said: "plus", "minus", "times", "divided by".
std::string operationInWords(char symbol);

// The problem with its blank as "what": "seven plus what equals twelve?".
std::string spokenArithmetic(const ArithmeticProblem &problem);

// The word to spell, after the clue where the question has one:
// "An animal that meows. Spell: cat." The four spellings are not read; they
// would all sound alike.
std::string spokenSpelling(const MultipleChoiceProblem &problem);

// The question, then the four answers in the order of their buttons, the last
// after "or": "Which is the largest ocean? Pacific. Atlantic. Indian. Or Arctic."
std::string spokenChoices(const MultipleChoiceProblem &problem);
