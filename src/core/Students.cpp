#include "core/Students.h"

#include <algorithm>
#include <limits>

Student newStudent(int32_t subjectMax)
{
    Student student;
    student.results.resize(static_cast<std::size_t>(subjectMax < 0 ? 0 : subjectMax + 1));
    return student;
}

std::string trimName(const std::string &name)
{
    constexpr const char *blanks = " \t";
    const std::size_t first = name.find_first_not_of(blanks);
    if (first == std::string::npos) {
        return {};
    }
    const std::size_t last = name.find_last_not_of(blanks);
    return name.substr(first, last - first + 1);
}

// Kept extra results belong to the subjects of another bank at the same indexes;
// moving them would give each the name of its neighbour once that bank is back.
// So a subject added at the index of one starts from zero, as every new subject
// does, and that one entry is dropped: showing a child a High score never made in
// the new subject would be worse. An index given up in front of them holds zeros.
void addSubjectResults(StudentRecords &records, int32_t subjectMax)
{
    resizeResults(records, subjectMax);
}

void deleteSubjectResults(StudentRecords &records, int32_t k)
{
    for (Student &student : records.students) {
        if (k >= 0 && static_cast<std::size_t>(k) < student.results.size()) {
            student.results.erase(student.results.begin() + k);
            if (!student.extraResults.empty()) {
                student.extraResults.insert(student.extraResults.begin(), SubjectResults{});
            }
        }
    }
}

void resizeResults(StudentRecords &records, int32_t subjectMax)
{
    const auto count = static_cast<std::size_t>(subjectMax < 0 ? 0 : subjectMax + 1);
    for (Student &student : records.students) {
        std::vector<SubjectResults> &extras = student.extraResults;
        const std::size_t had = student.results.size();
        if (count > had) {
            const std::size_t taken = std::min(extras.size(), count - had);
            extras.erase(extras.begin(), extras.begin() + static_cast<std::ptrdiff_t>(taken));
        } else if (!extras.empty()) {
            extras.insert(extras.begin(), had - count, SubjectResults{});
        }
        student.results.resize(count);
    }
}

void clearResults(Student &student)
{
    for (std::vector<SubjectResults> *table : {&student.results, &student.extraResults}) {
        std::fill(table->begin(), table->end(), SubjectResults{});
    }
}

bool recordScore(StudentRecords &records, int32_t score)
{
    const int32_t student = records.currentStudent;
    const int32_t subject = records.currentSubject;
    const int32_t level = records.currentLevel;
    if (student < 0 || static_cast<std::size_t>(student) >= records.students.size() || level < 0 ||
        level >= LevelCount) {
        return false;
    }
    std::vector<SubjectResults> &results = records.students[student].results;
    if (subject < 0 || static_cast<std::size_t>(subject) >= results.size()) {
        return false;
    }
    SubjectResults &entry = results[subject];
    const int16_t value = clampScore(score);
    entry.last[level] = value;
    if (value > entry.high[level]) {
        entry.high[level] = value;
        return true;
    }
    return false;
}

int16_t clampScore(int64_t score)
{
    constexpr int64_t lowest = std::numeric_limits<int16_t>::min();
    constexpr int64_t highest = std::numeric_limits<int16_t>::max();
    return static_cast<int16_t>(score < lowest ? lowest : (score > highest ? highest : score));
}
