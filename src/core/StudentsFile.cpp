#include "core/StudentsFile.h"

#include "core/AtomicFile.h"
#include "core/ByteIO.h"
#include "core/ReadFile.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr std::size_t ResultsBytes = 2 * 2 * LevelCount;
// An entry with an empty name and no results at all: name count, level,
// descriptor, current.
constexpr std::size_t MinEntryBytes = 2 + 2 + (2 + 4 + 4) + 2;

// --- Writing ---

std::optional<std::string> inconsistencyIn(const StudentRecords &records)
{
    if (records.students.empty()) {
        return std::string("the roster is empty");
    }
    const std::size_t subjects = records.students.front().results.size();
    if (subjects == 0) {
        return std::string("the students have no results");
    }
    for (const Student &student : records.students) {
        if (student.results.size() != subjects) {
            return "the results of \"" + student.name + "\" do not match the other students'";
        }
        if (student.level < 0 || student.level >= LevelCount) {
            return "\"" + student.name + "\" has level " + std::to_string(student.level);
        }
    }
    if (records.currentSubject < 0 ||
        static_cast<std::size_t>(records.currentSubject) >= subjects) {
        return "the current subject " + std::to_string(records.currentSubject) + " has no results";
    }
    return std::nullopt;
}

void encodeStudents(const StudentRecords &records, ByteWriter &out)
{
    out.bool16(records.showByStudent);
    out.int32(records.currentSubject);
    out.int32(records.studentMax());
    // A student's scores, Last then High for each subject in turn, gathered in
    // one row and written at once: a large class has a hundred thousand tables.
    std::vector<int16_t> scores;
    for (std::size_t i = 0; i < records.students.size(); ++i) {
        const Student &student = records.students[i];
        out.text(student.name, [i] { return "the name of student " + std::to_string(i + 1); });
        out.int16(student.level);
        out.int16(1);
        const std::size_t entries = student.results.size() + student.extraResults.size();
        out.int32(static_cast<int32_t>(entries));
        out.int32(0);
        scores.resize(entries * 2 * LevelCount);
        int16_t *to = scores.data();
        for (const std::vector<SubjectResults> *table : {&student.results, &student.extraResults}) {
            for (const SubjectResults &results : *table) {
                to = std::copy(results.last.begin(), results.last.end(), to);
                to = std::copy(results.high.begin(), results.high.end(), to);
            }
        }
        out.int16s(scores.data(), scores.size());
        out.bool16(student.current);
    }
}

// --- Reading ---

void expectValue(ByteReader &in, const char *what, int32_t expected, int32_t actual, std::size_t at)
{
    if (actual != expected) {
        in.failAt(at, std::string("the results' ") + what + " is " + std::to_string(actual) +
                          " instead of " + std::to_string(expected));
    }
}

void readResults(ByteReader &in, std::vector<SubjectResults> &table, std::size_t count)
{
    table.resize(count);
    for (SubjectResults &results : table) {
        in.int16s(results.last.data(), results.last.size());
        in.int16s(results.high.data(), results.high.size());
    }
}

// Each record holds as many results as the bank it was saved with had subjects.
// They are read at that size: the first ones, up to the bank's subjects, are the
// student's results, widened with zeros when the record is narrower; the rest are
// kept aside to be written back.
Student readStudent(ByteReader &in, std::size_t subjects)
{
    Student student;
    student.name = in.text();

    std::size_t at = in.offset();
    student.level = in.int16();
    if (student.level < 0 || student.level >= LevelCount) {
        in.failAt(at, "the level of student \"" + student.name + "\" is " +
                          std::to_string(student.level));
    }

    at = in.offset();
    expectValue(in, "number of dimensions", 1, in.int16(), at);
    const std::size_t countAt = in.offset();
    const int32_t count = in.int32();
    at = in.offset();
    expectValue(in, "lowest subject", 0, in.int32(), at);
    // The results, and the current flag after them, must fit what is left.
    const std::size_t room = in.remaining() < 2 ? 0 : (in.remaining() - 2) / ResultsBytes;
    if (count < 0 || static_cast<std::size_t>(count) > room) {
        in.failAt(countAt, "the number of results of student \"" + student.name + "\", " +
                               std::to_string(count) + ", does not fit the file");
    }

    const auto recorded = static_cast<std::size_t>(count);
    readResults(in, student.results, std::min(recorded, subjects));
    student.results.resize(subjects);
    readResults(in, student.extraResults, recorded - std::min(recorded, subjects));
    student.current = in.bool16();
    return student;
}

// The counts in the file say how much it holds; bytes after that are not read.
StudentRecords decodeStudents(ByteReader &in, const TestBank &bank)
{
    const int32_t subjectMax = bank.subjectMax;
    if (subjectMax < 0 || bank.subjects.size() != static_cast<std::size_t>(subjectMax) + 1) {
        in.failAt(0, "there is no test bank to check the results against");
    }
    const std::size_t subjects = bank.subjects.size();
    StudentRecords records;
    records.showByStudent = in.bool16();

    const std::size_t currentAt = in.offset();
    records.currentSubject = in.int32();
    if (records.currentSubject < 0) {
        in.failAt(currentAt, "the current subject is " + std::to_string(records.currentSubject));
    }

    std::size_t at = in.offset();
    const int32_t studentMax = in.int32();
    if (studentMax < 0 || static_cast<std::size_t>(studentMax) >= in.remaining() / MinEntryBytes) {
        in.failAt(at, "the number of students, " + std::to_string(int64_t{studentMax} + 1) +
                          ", does not fit the file");
    }

    // Room for as many students as records of this bank's width would fill the
    // file with; narrower records are rare enough to grow the roster as it goes.
    records.students.reserve(
        std::min(static_cast<std::size_t>(studentMax) + 1,
                 in.remaining() / (MinEntryBytes + subjects * ResultsBytes) + 1));
    std::size_t widest = subjects;
    for (int32_t i = 0; i <= studentMax; ++i) {
        records.students.push_back(readStudent(in, subjects));
        widest = std::max(widest, subjects + records.students.back().extraResults.size());
    }

    // A subject of a larger bank, whose results some record keeps, may have been
    // the current one; this bank starts from Arithmetic instead.
    if (static_cast<std::size_t>(records.currentSubject) >= widest) {
        in.failAt(currentAt, "the current subject is " + std::to_string(records.currentSubject) +
                                 ", outside 0.." + std::to_string(widest - 1));
    }
    if (records.currentSubject > subjectMax) {
        records.currentSubject = ArithmeticSubject;
    }
    records.currentSubjectName = bank.subjects[records.currentSubject].name;
    return records;
}

std::optional<FileError> refusal(const StudentRecords &records, const std::filesystem::path &path)
{
    if (const std::optional<std::string> problem = inconsistencyIn(records)) {
        return refusedSave(path, "the student records", *problem);
    }
    return std::nullopt;
}

} // namespace

std::optional<FileError> encodeStudentsFile(const StudentRecords &records,
                                            const std::filesystem::path &path, std::string &bytes)
{
    if (std::optional<FileError> refused = refusal(records, path)) {
        return refused;
    }
    try {
        ByteWriter out;
        encodeStudents(records, out);
        bytes = out.bytes();
    } catch (const TextTooLong &tooLong) {
        return tooLongText(path, tooLong.what());
    }
    return std::nullopt;
}

namespace {

LoadResult decodeFrom(ByteReader &in, StudentRecords &records, const TestBank &bank,
                      const std::filesystem::path &path)
{
    try {
        StudentRecords loaded = decodeStudents(in, bank);
        records.students = std::move(loaded.students);
        records.showByStudent = loaded.showByStudent;
        records.currentSubject = loaded.currentSubject;
        records.currentSubjectName = std::move(loaded.currentSubjectName);
    } catch (const ReadError &damage) {
        return {LoadResult::Status::Failed, FileError{FileError::Kind::Damaged, path.u8string(),
                                                      damage.what(), damage.offset()}};
    }
    return {LoadResult::Status::Loaded, std::nullopt};
}

} // namespace

LoadResult decodeStudentsFile(StudentRecords &records, const TestBank &bank, std::string_view bytes,
                              const std::filesystem::path &path)
{
    ByteReader in(bytes);
    return decodeFrom(in, records, bank, path);
}

std::optional<FileError> saveStudents(const StudentRecords &records,
                                      const std::filesystem::path &path)
{
    if (std::optional<FileError> refused = refusal(records, path)) {
        return refused;
    }
    // Written as it is encoded, through one small buffer, as the Tests file is.
    try {
        return writeFileAtomically(path, [&records](const ByteSink &write) {
            ByteWriter out(write, SavePieceBytes);
            encodeStudents(records, out);
            out.finish();
        });
    } catch (const TextTooLong &tooLong) {
        return tooLongText(path, tooLong.what());
    }
}

LoadResult loadStudents(StudentRecords &records, const TestBank &bank,
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
        records.currentSubject = ArithmeticSubject;
        records.showByStudent = true;
        records.currentSubjectName =
            bank.subjects.empty() ? std::string("Arithmetic") : bank.subjects.front().name;
        records.students.assign(1, newStudent(bank.subjectMax));
        records.students.front().current = true;
        if (std::optional<FileError> error = saveStudents(records, path)) {
            return {LoadResult::Status::Failed, std::move(error)};
        }
        return {LoadResult::Status::Missing, std::nullopt};
    }
    try {
        ByteReader in(file.size(), [&file](char *into, std::size_t capacity) {
            return file.read(into, capacity);
        });
        return decodeFrom(in, records, bank, path);
    } catch (const FileReadFailed &failure) {
        return {LoadResult::Status::Failed,
                FileError{FileError::Kind::Unreadable, path.u8string(), failure.what(), {}}};
    }
}
