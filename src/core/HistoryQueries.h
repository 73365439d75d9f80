// What the screens read from the history: a student's tests over time, the
// latest answers to each Arithmetic fact, the questions missed most, and the
// latest scores in each subject. Students and subjects are roster and bank
// positions; a position with no history gives an empty result.
#pragma once

#include "core/HistoryTypes.h"

#include <optional>
#include <vector>

class HistoryRoster;
class HistoryStore;
class HistorySubjects;

class HistoryQueries {
public:
    HistoryQueries(HistoryStore &store, HistoryRoster &roster, HistorySubjects &subjects);

    // The student's finished tests and practice rounds in a subject and level,
    // oldest first.
    std::vector<TestSummary> tests(int student, int subject, int level,
                                   const DateRange &range = {});

    // Every fact the student has answered, in tests and practice, with its latest
    // answers; ordered by operation, then number1, then number2.
    std::vector<ArithmeticFact> facts(int student);

    // The multiple-choice questions the student got wrong, in tests and practice,
    // most often missed first (then the fewest times asked); all levels when no
    // level is given.
    std::vector<MissedQuestion> missedQuestions(int student, int subject, std::optional<int> level,
                                                int limit);
    // The same for every student of the roster together.
    std::vector<MissedQuestion> classMissedQuestions(int subject, int level, int limit);

    // For each subject in the bank the student took a test in (practice and
    // interrupted tests aside), the latest scores and the date of the last test.
    std::vector<SubjectScores> recentScores(int student);

private:
    HistoryStore &m_store;
    HistoryRoster &m_roster;
    HistorySubjects &m_subjects;
};
