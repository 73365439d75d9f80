#include "core/StudentsFile.h"

#include "core/AtomicFile.h"
#include "core/CoreTesting.h"
#include "core/DefaultBank.h"

#include <gtest/gtest.h>

namespace {

// The offset of the 52-byte results of a subject in a file whose first student has
// a name of nameBytes bytes.
std::size_t ResultsOffset(std::size_t nameBytes, int subject)
{
    return 10 + 2 + nameBytes + 2 + 10 + 52 * static_cast<std::size_t>(subject);
}

StudentRecords ThreeStudents(int32_t subjectMax)
{
    StudentRecords records;
    records.ShowByStudent = false;
    records.CurrentSubject = 4;
    for (const char *name : {"Zo\u00EB", " \u00C5ngstr\u00F6m ", "\u20AC"}) {
        Student student = NewStudent(subjectMax);
        student.Name = name;
        records.Students.push_back(student);
    }
    records.Students[1].Level = 12;
    records.Students[1].Current = true;
    records.Students[2].Results[subjectMax].High[12] = 32767;
    records.Students[2].Results[0].Last[0] = -32768;
    records.Students[0].Results[3].Last[7] = -3;
    return records;
}

void ExpectSameStudents(const StudentRecords &a, const StudentRecords &b)
{
    EXPECT_EQ(a.ShowByStudent, b.ShowByStudent);
    EXPECT_EQ(a.CurrentSubject, b.CurrentSubject);
    ASSERT_EQ(a.Students.size(), b.Students.size());
    for (std::size_t i = 0; i < a.Students.size(); ++i) {
        const Student &x = a.Students[i];
        const Student &y = b.Students[i];
        EXPECT_EQ(x.Name, y.Name);
        EXPECT_EQ(x.Level, y.Level);
        EXPECT_EQ(x.Current, y.Current);
        ASSERT_EQ(x.Results.size(), y.Results.size());
        for (std::size_t s = 0; s < x.Results.size(); ++s) {
            EXPECT_EQ(x.Results[s].Last, y.Results[s].Last) << i << " " << s;
            EXPECT_EQ(x.Results[s].High, y.Results[s].High) << i << " " << s;
        }
    }
}

// Records that a failed load must leave exactly as they were.
StudentRecords Sentinel()
{
    StudentRecords records;
    records.Students.push_back(NewStudent(5));
    records.Students[0].Name = "untouched";
    records.CurrentSubject = 3;
    records.CurrentSubjectName = "History";
    records.ShowByStudent = false;
    return records;
}

void ExpectDamagedAt(const std::filesystem::path &path, const TestBank &bank, std::size_t offset)
{
    StudentRecords records = Sentinel();
    const LoadResult result = LoadStudents(records, bank, path);
    ASSERT_EQ(result.status, LoadResult::Status::Failed);
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->kind, FileError::Kind::Damaged);
    EXPECT_EQ(result.error->offset, offset) << result.error->message();
    EXPECT_EQ(result.error->path, path.string());
    ExpectSameStudents(records, Sentinel());
    EXPECT_EQ(records.CurrentSubjectName, "History");
}

void Patch(std::string &bytes, std::size_t offset, const std::string &hex)
{
    const std::string patch = FromHex(hex);
    bytes.replace(offset, patch.size(), patch);
}

} // namespace

TEST(StudentsFile, FirstRunWritesOneNamelessStudent)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Students.dat";
    const TestBank bank = DefaultTestBank();
    StudentRecords records;
    records.CurrentSubject = 3;
    records.ShowByStudent = false;

    const LoadResult result = LoadStudents(records, bank, path);
    EXPECT_EQ(result.status, LoadResult::Status::Missing);
    EXPECT_FALSE(result.error);
    EXPECT_EQ(records.CurrentSubject, 0);
    EXPECT_TRUE(records.ShowByStudent);
    EXPECT_EQ(records.CurrentSubjectName, "Arithmetic");
    ASSERT_EQ(records.Students.size(), 1u);
    EXPECT_TRUE(records.Students[0].Current);

    const std::string expected =
        FromHex("FF FF  00 00 00 00  00 00 00 00"    // ShowByStudent, CurrentSubject, StudentMax
                "00 00  00 00"                       // empty name, level K
                "01 00  06 00 00 00  00 00 00 00") + // one dimension, 6 subjects from 0
        std::string(6 * 52, '\0') +
        FromHex("FF FF"); // zeroed results, current
    EXPECT_EQ(Hex(ReadBytes(path)), Hex(expected));

    // The next start finds the file and reads the same roster back.
    StudentRecords again;
    EXPECT_EQ(LoadStudents(again, bank, path).status, LoadResult::Status::Loaded);
    ExpectSameStudents(again, records);
}

TEST(StudentsFile, AnnAloneIs341BytesAndScoresAreTwosComplement)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Students.dat";
    StudentRecords records;
    records.Students.push_back(NewStudent(5));
    records.Students[0].Name = "Ann";
    records.Students[0].Level = 3;
    records.Students[0].Current = true;
    records.Students[0].Results[1].Last[2] = -3;
    records.Students[0].Results[1].High[2] = 300;
    ASSERT_FALSE(SaveStudents(records, path));

    const std::string bytes = ReadBytes(path);
    ASSERT_EQ(bytes.size(), 341u);
    EXPECT_EQ(Hex(bytes.substr(10, 7)), "03 00 41 6E 6E 03 00");
    EXPECT_EQ(Hex(bytes.substr(ResultsOffset(3, 1) + 2 * 2, 2)), "FD FF");
    EXPECT_EQ(Hex(bytes.substr(ResultsOffset(3, 1) + 26 + 2 * 2, 2)), "2C 01");
    EXPECT_EQ(Hex(bytes.substr(339)), "FF FF");

    // Saving over a longer file leaves exactly the new length.
    StudentRecords more = records;
    more.Students.resize(4, NewStudent(5));
    ASSERT_FALSE(SaveStudents(more, path));
    ASSERT_FALSE(SaveStudents(records, path));
    EXPECT_EQ(ReadBytes(path), bytes);
}

TEST(StudentsFile, NamesAndResultsRoundTripThroughWindows1252)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Students.dat";
    TestBank bank = DefaultTestBank();
    StudentRecords records = ThreeStudents(5);
    records.Students.push_back(NewStudent(5));
    records.Students.back().Name = "Kim \U0001F600";
    ASSERT_FALSE(SaveStudents(records, path));

    const std::string bytes = ReadBytes(path);
    EXPECT_EQ(Hex(bytes.substr(10, 5)), "03 00 5A 6F EB");

    StudentRecords loaded;
    EXPECT_EQ(LoadStudents(loaded, bank, path).status, LoadResult::Status::Loaded);
    EXPECT_EQ(loaded.CurrentSubjectName, "Music");
    EXPECT_EQ(loaded.Students[3].Name, "Kim ?");
    records.Students[3].Name = "Kim ?";
    ExpectSameStudents(loaded, records);
    // Blanks around a name are kept; only the screens trim.
    EXPECT_EQ(loaded.Students[1].Name, " \u00C5ngstr\u00F6m ");

    // A nonzero boolean other than -1 still reads as true.
    std::string patched = bytes;
    Patch(patched, 0, "01 00");
    WriteBytes(path, patched);
    loaded.ShowByStudent = false;
    ASSERT_EQ(LoadStudents(loaded, bank, path).status, LoadResult::Status::Loaded);
    EXPECT_TRUE(loaded.ShowByStudent);
}

TEST(StudentsFile, EveryTruncationAndTrailingByteIsRejected)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Students.dat";
    const TestBank bank = DefaultTestBank();
    ASSERT_FALSE(SaveStudents(ThreeStudents(5), path));
    const std::string bytes = ReadBytes(path);

    // Cut one byte at a time from the end, the cheapest way to get every prefix on disk.
    for (std::size_t length = bytes.size(); length-- > 0;) {
        SCOPED_TRACE(length);
        std::filesystem::resize_file(path, length);
        StudentRecords records = Sentinel();
        const LoadResult result = LoadStudents(records, bank, path);
        ASSERT_EQ(result.status, LoadResult::Status::Failed);
        ASSERT_EQ(result.error->kind, FileError::Kind::Damaged);
        ASSERT_LE(*result.error->offset, length);
        ASSERT_EQ(records.Students[0].Name, "untouched");
    }
    WriteBytes(path, bytes + '\0');
    ExpectDamagedAt(path, bank, bytes.size());
}

TEST(StudentsFile, CountsThatDisagreeWithTheBankAreRejected)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Students.dat";
    const TestBank bank = DefaultTestBank();
    ASSERT_FALSE(SaveStudents(ThreeStudents(5), path));
    const std::string good = ReadBytes(path);
    const std::size_t entry = 10 + 2 + 3; // first entry, after its name "Zoë"

    const struct {
        std::size_t offset;
        const char *hex;
    } damages[] = {
        {2, "06 00 00 00"},         // current subject beyond SubjectMax
        {2, "FF FF FF FF"},         // negative current subject
        {6, "FF FF FF FF"},         // no students at all
        {6, "FF FF FF 7F"},         // far more students than the file holds
        {6, "03 00 00 00"},         // one student more than the file holds
        {10, "FF FF"},              // a name longer than what is left
        {entry, "0D 00"},           // level 13
        {entry, "FF FF"},           // level -1
        {entry + 2, "02 00"},       // two-dimensional results
        {entry + 4, "07 00 00 00"}, // results for seven subjects
        {entry + 4, "FF FF FF 7F"}, // absurd results count
        {entry + 8, "01 00 00 00"}, // results not starting at subject 0
    };
    for (const auto &damage : damages) {
        SCOPED_TRACE(damage.hex);
        std::string bytes = good;
        Patch(bytes, damage.offset, damage.hex);
        WriteBytes(path, bytes);
        // A name that overruns is noticed where its bytes should start.
        ExpectDamagedAt(path, bank, damage.offset == 10 ? 12 : damage.offset);
    }

    // Results saved with seven subjects do not fit a bank of six.
    ASSERT_FALSE(SaveStudents(ThreeStudents(6), path));
    ExpectDamagedAt(path, bank, entry + 4);
}

TEST(StudentsFile, FailedSavesLeaveTheOldFile)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Students.dat";
    const TestBank bank = DefaultTestBank();
    const StudentRecords records = ThreeStudents(5);
    ASSERT_FALSE(SaveStudents(records, path));
    const std::string old = ReadBytes(path);

    StudentRecords changed = records;
    changed.Students[0].Name = "Changed";
    {
        const InjectedSaveFault fault({SaveStep::Rename, EIO, 0});
        const std::optional<FileError> error = SaveStudents(changed, path);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->kind, FileError::Kind::Unwritable);
    }
    EXPECT_EQ(ReadBytes(path), old);

    // A name too long for its byte count is refused before anything is written;
    // the limit counts Windows-1252 bytes, not UTF-8 bytes.
    changed.Students[0].Name = std::string(65535, 'a');
    changed.Students[1].Name = std::string(65535 / 3 * 3, '\0');
    for (std::size_t i = 0; i < changed.Students[1].Name.size(); i += 3) {
        changed.Students[1].Name.replace(i, 3, "\u20AC");
    }
    ASSERT_FALSE(SaveStudents(changed, path));
    changed.Students[2].Name = std::string(65536, 'b');
    const std::optional<FileError> tooLong = SaveStudents(changed, path);
    ASSERT_TRUE(tooLong);
    EXPECT_EQ(tooLong->kind, FileError::Kind::TooLong);
    EXPECT_NE(tooLong->message().find("student 3"), std::string::npos) << tooLong->message();
    EXPECT_EQ(ReadBytes(path).size(), old.size() + 65535 + 21845 - 3 - 10);

    // A first run whose save fails reports it.
    const auto unsaved = dir / "Other.dat";
    const InjectedSaveFault fault({SaveStep::Create, EACCES, 0});
    StudentRecords fresh;
    const LoadResult result = LoadStudents(fresh, bank, unsaved);
    EXPECT_EQ(result.status, LoadResult::Status::Failed);
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->kind, FileError::Kind::Unwritable);
    EXPECT_FALSE(std::filesystem::exists(unsaved));
}
