#include "core/DataFileBackups.h"

#include "core/FileSystem.h"
#include "core/ReadFile.h"
#include "core/StudentsFile.h"
#include "core/TestsFile.h"

#include <algorithm>
#include <cerrno>

namespace fs = std::filesystem;

namespace {

std::string counted(std::size_t count, const std::string &one, const std::string &many)
{
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

BackupSummary unreadable(const LoadResult &result, const fs::path &copy)
{
    return {false, result.error ? result.error->message()
                                : "The file \"" + copy.u8string() + "\" could not be read."};
}

// Just enough of a bank to read a roster with: its records keep all their
// results, the first one as results and the rest kept aside.
TestBank oneSubjectBank()
{
    TestBank bank;
    bank.subjectMax = 0;
    bank.subjects = {Subject{"Arithmetic", false}};
    return bank;
}

} // namespace

void addDataFileSources(Backups &backups, const DataPaths &paths, std::uint64_t testsMaxBytes)
{
    BackupSource students;
    students.file = DataFile::Students;
    students.label = "Students";
    students.path = paths.studentsPath;
    students.summarise = summariseStudentsCopy;
    backups.addSource(std::move(students));

    BackupSource tests;
    tests.file = DataFile::Tests;
    tests.label = "Tests";
    tests.path = paths.testsPath;
    tests.maxBytes = testsMaxBytes;
    tests.summarise = summariseTestsCopy;
    backups.addSource(std::move(tests));
}

LoadResult readStudentsCopy(const fs::path &copy, const TestBank &bank, StudentRecords &into)
{
    FileReader file(copy);
    if (file.missing()) {
        return {
            LoadResult::Status::Failed,
            FileError{FileError::Kind::Unreadable, copy.u8string(), systemErrorText(ENOENT), {}}};
    }
    if (file.error()) {
        return {LoadResult::Status::Failed, file.error()};
    }
    try {
        const FileBytes bytes(file);
        return decodeStudentsFile(into, bank, bytes.view(), copy);
    } catch (const FileReadFailed &failure) {
        return {LoadResult::Status::Failed,
                FileError{FileError::Kind::Unreadable, copy.u8string(), failure.what(), {}}};
    }
}

LoadResult readTestsCopy(const fs::path &copy, TestBank &into)
{
    TestBank bank;
    LoadResult result = loadTests(bank, copy);
    if (result.status == LoadResult::Status::Missing) {
        return {
            LoadResult::Status::Failed,
            FileError{FileError::Kind::Unreadable, copy.u8string(), systemErrorText(ENOENT), {}}};
    }
    if (result.ok()) {
        into = std::move(bank);
    }
    return result;
}

BackupSummary summariseStudentsCopy(const fs::path &copy)
{
    StudentRecords records;
    const LoadResult result = readStudentsCopy(copy, oneSubjectBank(), records);
    if (!result.ok()) {
        return unreadable(result, copy);
    }
    std::size_t subjects = 0;
    for (const Student &student : records.students) {
        subjects = std::max(subjects, student.results.size() + student.extraResults.size());
    }
    return {true, counted(records.students.size(), "student", "students") + ", " +
                      counted(subjects, "subject", "subjects")};
}

BackupSummary summariseTestsCopy(const fs::path &copy)
{
    // The questions stay undecoded: their number comes from the limits.
    TestBank bank;
    const LoadResult result = readTestsCopy(copy, bank);
    if (!result.ok()) {
        return unreadable(result, copy);
    }
    std::size_t questions = 0;
    for (std::size_t s = ArithmeticSubject + 1; s < bank.limits.size(); ++s) {
        for (const int32_t last : bank.limits[s].lastQuestion) {
            questions += static_cast<std::size_t>(last + 1);
        }
    }
    return {true, counted(bank.subjects.size(), "subject", "subjects") + ", " +
                      counted(questions, "question", "questions")};
}

void adoptRoster(StudentRecords &records, StudentRecords restored)
{
    records.students = std::move(restored.students);
    const auto count = static_cast<int32_t>(records.students.size());
    if (records.currentStudent < 0 || records.currentStudent >= count) {
        const auto marked = std::find_if(records.students.begin(), records.students.end(),
                                         [](const Student &student) { return student.current; });
        records.currentStudent = marked == records.students.end()
                                     ? 0
                                     : static_cast<int32_t>(marked - records.students.begin());
    }
    for (int32_t i = 0; i < count; ++i) {
        records.students[i].current = i == records.currentStudent;
    }
    records.currentStudentName =
        count > 0 ? trimName(records.students[records.currentStudent].name) : std::string();
}

void adoptBank(TestBank &bank, TestBank restored, StudentRecords &records)
{
    bank = std::move(restored);
    const auto subjects = static_cast<std::size_t>(bank.subjectMax) + 1;
    for (Student &student : records.students) {
        std::vector<SubjectResults> &results = student.results;
        results.insert(results.end(), student.extraResults.begin(), student.extraResults.end());
        student.extraResults.clear();
        if (results.size() > subjects) {
            student.extraResults.assign(results.begin() + static_cast<std::ptrdiff_t>(subjects),
                                        results.end());
        }
        results.resize(subjects);
    }
    if (records.currentSubject < 0 || records.currentSubject > bank.subjectMax) {
        records.currentSubject = ArithmeticSubject;
    }
    records.currentSubjectName = bank.subjects[records.currentSubject].name;
}
