#include "core/Students.h"

#include <limits>

Student NewStudent(int32_t subjectMax)
{
    Student student;
    student.Results.resize(static_cast<std::size_t>(subjectMax < 0 ? 0 : subjectMax + 1));
    return student;
}

std::string TrimName(const std::string &name)
{
    constexpr const char *blanks = " \t";
    const std::size_t first = name.find_first_not_of(blanks);
    if (first == std::string::npos) {
        return {};
    }
    const std::size_t last = name.find_last_not_of(blanks);
    return name.substr(first, last - first + 1);
}

void AddSubjectResults(StudentRecords &records, int32_t subjectMax)
{
    ResizeResults(records, subjectMax);
}

void DeleteSubjectResults(StudentRecords &records, int32_t k)
{
    for (Student &student : records.Students) {
        if (k >= 0 && static_cast<std::size_t>(k) < student.Results.size()) {
            student.Results.erase(student.Results.begin() + k);
        }
    }
}

void ResizeResults(StudentRecords &records, int32_t subjectMax)
{
    const auto count = static_cast<std::size_t>(subjectMax < 0 ? 0 : subjectMax + 1);
    for (Student &student : records.Students) {
        student.Results.resize(count);
    }
}

bool RecordScore(StudentRecords &records, int32_t score)
{
    const int32_t student = records.CurrentStudent;
    const int32_t subject = records.CurrentSubject;
    const int32_t level = records.CurrentLevel;
    if (student < 0 || static_cast<std::size_t>(student) >= records.Students.size() || level < 0 ||
        level >= LevelCount) {
        return false;
    }
    std::vector<SubjectResults> &results = records.Students[student].Results;
    if (subject < 0 || static_cast<std::size_t>(subject) >= results.size()) {
        return false;
    }
    SubjectResults &entry = results[subject];
    const int16_t value = ClampScore(score);
    entry.Last[level] = value;
    if (value > entry.High[level]) {
        entry.High[level] = value;
        return true;
    }
    return false;
}

int16_t ClampScore(int64_t score)
{
    constexpr int64_t lowest = std::numeric_limits<int16_t>::min();
    constexpr int64_t highest = std::numeric_limits<int16_t>::max();
    return static_cast<int16_t>(score < lowest ? lowest : (score > highest ? highest : score));
}
