// Student records: the roster, every student's Last and High per subject and
// level, the current selections, and keeping results in step with the subjects.
#pragma once

#include "TestBank.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

struct SubjectResults {
    std::array<int16_t, LevelCount> last{};
    std::array<int16_t, LevelCount> high{};
};

struct Student {
    std::string name; // as typed; shown trimmed
    int16_t level = 0;
    std::vector<SubjectResults> results; // one element per subject of the bank
    // The entries of a record saved with more subjects than the bank has, from
    // index results.size() on. The screens never see them; they are written back
    // after results in their places, so that the results of a bank that went
    // missing are there again when it comes back.
    std::vector<SubjectResults> extraResults;
    bool current = false;
};

// The roster and the selections that are shared by every screen.
struct StudentRecords {
    std::vector<Student> students;
    bool showByStudent = true;
    int32_t currentSubject = 0;
    std::string currentSubjectName;
    int32_t currentStudent = 0;
    std::string currentStudentName;
    int32_t currentLevel = 0;

    int32_t studentMax() const { return static_cast<int32_t>(students.size()) - 1; }
};

// A student with an empty name, level K and zeroed results for subjects 0..subjectMax.
Student newStudent(int32_t subjectMax);

// Leading and trailing blanks removed, as names are shown.
std::string trimName(const std::string &name);

// The next three keep every student's results in step with the subjects. Kept
// extra results never move: a subject added at the index of one starts from zero
// in its place, and an index given up in front of them is filled with zeros.

// A subject was appended at index subjectMax: every student gets a zeroed entry.
void addSubjectResults(StudentRecords &records, int32_t subjectMax);
// The subject at index k was deleted: later entries of the bank move down one place.
void deleteSubjectResults(StudentRecords &records, int32_t k);
// The default bank was restored: results are cut (or grown) to 0..subjectMax.
void resizeResults(StudentRecords &records, int32_t subjectMax);

// Every score of the student zero, the kept extra results too.
void clearResults(Student &student);

// Records a finished test of the current student, subject and level: Last always,
// High only when the score is strictly greater. Returns whether it was a new high.
bool recordScore(StudentRecords &records, int32_t score);

// A score as a 16-bit value, clamped rather than wrapped.
int16_t clampScore(int64_t score);
