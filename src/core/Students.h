// Student records: the roster, every student's Last and High per subject and
// level, the current selections, and keeping results in step with the subjects.
#pragma once

#include "TestBank.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

struct SubjectResults {
    std::array<int16_t, LevelCount> Last{};
    std::array<int16_t, LevelCount> High{};
};

struct Student {
    std::string Name; // as typed; shown trimmed
    int16_t Level = 0;
    std::vector<SubjectResults> Results; // one element per subject
    bool Current = false;
};

// The roster and the selections that are shared by every screen.
struct StudentRecords {
    std::vector<Student> Students;
    bool ShowByStudent = true;
    int32_t CurrentSubject = 0;
    std::string CurrentSubjectName;
    int32_t CurrentStudent = 0;
    std::string CurrentStudentName;
    int32_t CurrentLevel = 0;

    int32_t StudentMax() const { return static_cast<int32_t>(Students.size()) - 1; }
};

// A student with an empty name, level K and zeroed results for subjects 0..subjectMax.
Student NewStudent(int32_t subjectMax);

// Leading and trailing blanks removed, as names are shown.
std::string TrimName(const std::string &name);

// A subject was appended at index subjectMax: every student gets a zeroed entry.
void AddSubjectResults(StudentRecords &records, int32_t subjectMax);
// The subject at index k was deleted: later entries move down one place.
void DeleteSubjectResults(StudentRecords &records, int32_t k);
// The default bank was restored: results are cut (or grown) to 0..subjectMax.
void ResizeResults(StudentRecords &records, int32_t subjectMax);

// Records a finished test of the current student, subject and level: Last always,
// High only when the score is strictly greater. Returns whether it was a new high.
bool RecordScore(StudentRecords &records, int32_t score);

// A score as a 16-bit value, clamped rather than wrapped.
int16_t ClampScore(int64_t score);
