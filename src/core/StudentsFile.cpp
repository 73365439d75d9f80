#include "core/StudentsFile.h"

#include "core/AtomicFile.h"
#include "core/ByteIO.h"
#include "core/ReadFile.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr std::size_t ResultsBytes = 2 * 2 * LevelCount;
// An entry with an empty name and no results: name count, Level, descriptor, Current.
constexpr std::size_t MinEntryBytes = 2 + 2 + (2 + 4 + 4) + 2;

// --- Writing ---

std::optional<std::string> InconsistencyIn(const StudentRecords &records)
{
    if (records.Students.empty()) {
        return std::string("the roster is empty");
    }
    const std::size_t subjects = records.Students.front().Results.size();
    if (subjects == 0) {
        return std::string("the students have no results");
    }
    for (const Student &student : records.Students) {
        if (student.Results.size() != subjects) {
            return "the results of \"" + student.Name + "\" do not match the other students'";
        }
        if (student.Level < 0 || student.Level >= LevelCount) {
            return "\"" + student.Name + "\" has level " + std::to_string(student.Level);
        }
    }
    if (records.CurrentSubject < 0 ||
        static_cast<std::size_t>(records.CurrentSubject) >= subjects) {
        return "the current subject " + std::to_string(records.CurrentSubject) + " has no results";
    }
    return std::nullopt;
}

void EncodeStudents(const StudentRecords &records, ByteWriter &out)
{
    out.bool16(records.ShowByStudent);
    out.int32(records.CurrentSubject);
    out.int32(records.StudentMax());
    // A student's scores, Last then High for each subject in turn, gathered in
    // one row and written at once: a large class has a hundred thousand tables.
    std::vector<int16_t> scores;
    for (std::size_t i = 0; i < records.Students.size(); ++i) {
        const Student &student = records.Students[i];
        out.text(student.Name, [i] { return "the name of student " + std::to_string(i + 1); });
        out.int16(student.Level);
        out.int16(1);
        out.int32(static_cast<int32_t>(student.Results.size()));
        out.int32(0);
        scores.resize(student.Results.size() * 2 * LevelCount);
        int16_t *to = scores.data();
        for (const SubjectResults &results : student.Results) {
            to = std::copy(results.Last.begin(), results.Last.end(), to);
            to = std::copy(results.High.begin(), results.High.end(), to);
        }
        out.int16s(scores.data(), scores.size());
        out.bool16(student.Current);
    }
}

// --- Reading ---

void ExpectValue(ByteReader &in, const char *what, int32_t expected, int32_t actual, std::size_t at)
{
    if (actual != expected) {
        in.failAt(at, std::string("the results' ") + what + " is " + std::to_string(actual) +
                          " instead of " + std::to_string(expected));
    }
}

Student ReadStudent(ByteReader &in, int32_t subjectMax)
{
    Student student;
    student.Name = in.text();

    std::size_t at = in.offset();
    student.Level = in.int16();
    if (student.Level < 0 || student.Level >= LevelCount) {
        in.failAt(at, "the level of student \"" + student.Name + "\" is " +
                          std::to_string(student.Level));
    }

    at = in.offset();
    ExpectValue(in, "number of dimensions", 1, in.int16(), at);
    at = in.offset();
    ExpectValue(in, "number of subjects", subjectMax + 1, in.int32(), at);
    at = in.offset();
    ExpectValue(in, "lowest subject", 0, in.int32(), at);

    student.Results.resize(static_cast<std::size_t>(subjectMax) + 1);
    for (SubjectResults &results : student.Results) {
        in.int16s(results.Last.data(), results.Last.size());
        in.int16s(results.High.data(), results.High.size());
    }
    student.Current = in.bool16();
    return student;
}

StudentRecords DecodeStudents(ByteReader &in, const TestBank &bank)
{
    const int32_t subjectMax = bank.SubjectMax;
    if (subjectMax < 0 || bank.Subjects.size() != static_cast<std::size_t>(subjectMax) + 1) {
        in.failAt(0, "there is no test bank to check the results against");
    }
    StudentRecords records;
    records.ShowByStudent = in.bool16();

    std::size_t at = in.offset();
    records.CurrentSubject = in.int32();
    if (records.CurrentSubject < 0 || records.CurrentSubject > subjectMax) {
        in.failAt(at, "the current subject is " + std::to_string(records.CurrentSubject) +
                          ", outside 0.." + std::to_string(subjectMax));
    }

    at = in.offset();
    const int32_t studentMax = in.int32();
    const std::size_t entryBytes =
        MinEntryBytes + ResultsBytes * (static_cast<std::size_t>(subjectMax) + 1);
    if (studentMax < 0 || static_cast<std::size_t>(studentMax) >= in.remaining() / entryBytes) {
        in.failAt(at, "the number of students, " + std::to_string(int64_t{studentMax} + 1) +
                          ", does not fit the file");
    }

    records.Students.reserve(static_cast<std::size_t>(studentMax) + 1);
    for (int32_t i = 0; i <= studentMax; ++i) {
        records.Students.push_back(ReadStudent(in, subjectMax));
    }
    in.expectEnd();
    records.CurrentSubjectName = bank.Subjects[records.CurrentSubject].Name;
    return records;
}

std::optional<FileError> Refusal(const StudentRecords &records, const std::filesystem::path &path)
{
    if (const std::optional<std::string> problem = InconsistencyIn(records)) {
        return RefusedSave(path, "the student records", *problem);
    }
    return std::nullopt;
}

} // namespace

std::optional<FileError> EncodeStudentsFile(const StudentRecords &records,
                                            const std::filesystem::path &path, std::string &bytes)
{
    if (std::optional<FileError> refused = Refusal(records, path)) {
        return refused;
    }
    try {
        ByteWriter out;
        EncodeStudents(records, out);
        bytes = out.bytes();
    } catch (const TextTooLong &tooLong) {
        return TooLongText(path, tooLong.what());
    }
    return std::nullopt;
}

namespace {

LoadResult DecodeFrom(ByteReader &in, StudentRecords &records, const TestBank &bank,
                      const std::filesystem::path &path)
{
    try {
        StudentRecords loaded = DecodeStudents(in, bank);
        records.Students = std::move(loaded.Students);
        records.ShowByStudent = loaded.ShowByStudent;
        records.CurrentSubject = loaded.CurrentSubject;
        records.CurrentSubjectName = std::move(loaded.CurrentSubjectName);
    } catch (const ReadError &damage) {
        return {LoadResult::Status::Failed,
                FileError{FileError::Kind::Damaged, path.string(), damage.what(), damage.offset()}};
    }
    return {LoadResult::Status::Loaded, std::nullopt};
}

} // namespace

LoadResult DecodeStudentsFile(StudentRecords &records, const TestBank &bank, std::string_view bytes,
                              const std::filesystem::path &path)
{
    ByteReader in(bytes);
    return DecodeFrom(in, records, bank, path);
}

std::optional<FileError> SaveStudents(const StudentRecords &records,
                                      const std::filesystem::path &path)
{
    if (std::optional<FileError> refused = Refusal(records, path)) {
        return refused;
    }
    // Written as it is encoded, through one small buffer, as the Tests file is.
    try {
        return WriteFileAtomically(path, [&records](const ByteSink &write) {
            ByteWriter out(write, SavePieceBytes);
            EncodeStudents(records, out);
            out.finish();
        });
    } catch (const TextTooLong &tooLong) {
        return TooLongText(path, tooLong.what());
    }
}

LoadResult LoadStudents(StudentRecords &records, const TestBank &bank,
                        const std::filesystem::path &path)
{
    // Decoded as it is read, through a small window, as the Tests file is.
    FileReader file(path);
    if (file.error()) {
        return {LoadResult::Status::Failed, file.error()};
    }
    if (file.missing()) {
        // First run: one nameless student, saved at once so the file exists
        // before the first name is asked for.
        records.CurrentSubject = ArithmeticSubject;
        records.ShowByStudent = true;
        records.CurrentSubjectName =
            bank.Subjects.empty() ? std::string("Arithmetic") : bank.Subjects.front().Name;
        records.Students.assign(1, NewStudent(bank.SubjectMax));
        records.Students.front().Current = true;
        if (std::optional<FileError> error = SaveStudents(records, path)) {
            return {LoadResult::Status::Failed, std::move(error)};
        }
        return {LoadResult::Status::Missing, std::nullopt};
    }
    try {
        ByteReader in(file.size(), [&file](char *into, std::size_t capacity) {
            return file.read(into, capacity);
        });
        return DecodeFrom(in, records, bank, path);
    } catch (const FileReadFailed &failure) {
        return {LoadResult::Status::Failed,
                FileError{FileError::Kind::Unreadable, path.string(), failure.what(), {}}};
    }
}
