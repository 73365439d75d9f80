#include "core/StudentsFile.h"

#include "core/AtomicFile.h"
#include "core/CoreFixtures_test.h"

#include <gtest/gtest.h>

namespace {

// Records that a failed load must leave exactly as they were.
StudentRecords sentinel()
{
    StudentRecords records;
    records.students.push_back(newStudent(5));
    records.students[0].name = "untouched";
    records.currentSubject = 3;
    records.currentSubjectName = "History";
    return records;
}

// Refused as damaged at offset, or anywhere up to it when orBefore is set.
void expectDamagedAt(const std::filesystem::path &path, const TestBank &bank, std::size_t offset,
                     bool orBefore = false)
{
    StudentRecords records = sentinel();
    const LoadResult result = loadStudents(records, bank, path);
    ASSERT_EQ(result.status, LoadResult::Status::Failed);
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->kind, FileError::Kind::Damaged);
    ASSERT_TRUE(result.error->offset);
    EXPECT_TRUE(orBefore ? *result.error->offset <= offset : *result.error->offset == offset)
        << result.error->message();
    EXPECT_EQ(result.error->path, path.string());
    expectSameRecords(records, sentinel());
    EXPECT_EQ(records.currentSubjectName, "History");
}

} // namespace

TEST(StudentsFile, FirstRunWritesOneNamelessStudentInTheFilesLayout)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Students.dat";
    StudentRecords records;
    records.currentSubject = 3;
    records.showByStudent = false;
    const LoadResult result = loadStudents(records, defaultTestBank(), path);
    EXPECT_EQ(result.status, LoadResult::Status::Missing);
    EXPECT_FALSE(result.error);
    EXPECT_EQ(records.currentSubject, 0);
    EXPECT_TRUE(records.showByStudent);
    EXPECT_EQ(records.currentSubjectName, "Arithmetic");
    ASSERT_EQ(records.students.size(), 1u);
    EXPECT_TRUE(records.students[0].current);
    EXPECT_EQ(hex(readBytes(path)),
              hex(fromHex("FF FF  00 00 00 00  00 00 00 00" // showByStudent, subject, studentMax
                          "00 00  00 00"                    // empty name, level K
                          "01 00  06 00 00 00  00 00 00 00" // one dimension, 6 subjects from 0
                          ) +
                  std::string(6 * 52, '\0') + fromHex("FF FF"))); // zeroed results, current

    // Each subject's 13 Last scores, then its 13 High scores, in two's complement.
    records.students[0].name = "Ann";
    records.students[0].level = 3;
    records.students[0].results[1].last[2] = -3;
    records.students[0].results[1].high[2] = 300;
    ASSERT_FALSE(saveStudents(records, path));
    const std::string bytes = readBytes(path);
    ASSERT_EQ(bytes.size(), 341u);
    EXPECT_EQ(hex(bytes.substr(10, 7)), "03 00 41 6E 6E 03 00");
    EXPECT_EQ(hex(bytes.substr(27 + 52 + 2 * 2, 2)), "FD FF");
    EXPECT_EQ(hex(bytes.substr(27 + 52 + 26 + 2 * 2, 2)), "2C 01");

    // A first run whose save fails reports it.
    const auto unsaved = dir / "Other.dat";
    const InjectedSaveFault fault({SaveStep::Create, EACCES, 0});
    StudentRecords fresh;
    const LoadResult failed = loadStudents(fresh, defaultTestBank(), unsaved);
    EXPECT_EQ(failed.status, LoadResult::Status::Failed);
    ASSERT_TRUE(failed.error);
    EXPECT_EQ(failed.error->kind, FileError::Kind::Unwritable);
    EXPECT_FALSE(std::filesystem::exists(unsaved));
}

TEST(StudentsFile, DamagedFilesAreRefusedWhereTheDamageIs)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Students.dat";
    const TestBank bank = defaultTestBank();
    ASSERT_FALSE(saveStudents(sampleRoster(5), path));
    const std::string good = readBytes(path);

    // Cut one byte at a time from the end, the cheapest way to get every prefix on disk.
    for (std::size_t length = good.size(); length-- > 0 && !HasFailure();) {
        SCOPED_TRACE(length);
        std::filesystem::resize_file(path, length);
        expectDamagedAt(path, bank, length, true);
    }
    writeBytes(path, good + '\0');
    expectDamagedAt(path, bank, good.size());

    const std::size_t entry = 10 + 2 + 3; // first entry, after its name "Zoë"
    const struct {
        std::size_t offset;
        const char *hex;
    } damages[] = {
        {2, "06 00 00 00"},         // current subject beyond subjectMax
        {2, "FF FF FF FF"},         // negative current subject
        {6, "FF FF FF FF"},         // no students at all
        {6, "FF FF FF 7F"},         // far more students than the file holds
        {6, "05 00 00 00"},         // one student more than the file holds
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
        bytes.replace(damage.offset, fromHex(damage.hex).size(), fromHex(damage.hex));
        writeBytes(path, bytes);
        // A name that overruns is noticed where its bytes should start.
        expectDamagedAt(path, bank, damage.offset == 10 ? 12 : damage.offset);
    }

    // Results saved with seven subjects do not fit a bank of six.
    ASSERT_FALSE(saveStudents(sampleRoster(6), path));
    expectDamagedAt(path, bank, entry + 4);
}

TEST(StudentsFile, RostersRoundTripThroughWindows1252OrAreNotSaved)
{
    const ScratchDir dir;
    const auto path = dir / "Tavrino_Students.dat";
    const TestBank bank = defaultTestBank();
    StudentRecords records = sampleRoster(5);
    // The longest names: the limit counts Windows-1252 bytes, not UTF-8 bytes.
    records.students[2].name = std::string(65535, 'a');
    records.students.push_back(newStudent(5));
    for (int i = 0; i < 30000; ++i) {
        records.students.back().name += "\u20AC";
    }
    records.students.push_back(newStudent(5));
    records.students.back().name = "Kim \U0001F600";
    ASSERT_FALSE(saveStudents(records, path));
    std::string bytes = readBytes(path);
    EXPECT_EQ(hex(bytes.substr(10, 5)), "03 00 5A 6F EB");

    // Read through a window smaller than the file. Blanks around a name are kept;
    // only the screens trim.
    StudentRecords loaded;
    ASSERT_EQ(loadStudents(loaded, bank, path).status, LoadResult::Status::Loaded);
    EXPECT_EQ(loaded.currentSubjectName, "Music");
    records.students.back().name = "Kim ?";
    expectSameRecords(loaded, records);

    // A name beyond the limit is refused before anything is written.
    records.students[3].name = std::string(65536, 'b');
    const std::optional<FileError> tooLong = saveStudents(records, path);
    ASSERT_TRUE(tooLong);
    EXPECT_EQ(tooLong->kind, FileError::Kind::TooLong);
    EXPECT_NE(tooLong->message().find("student 4"), std::string::npos) << tooLong->message();
    EXPECT_EQ(readBytes(path), bytes);

    // Damage found after the first window is named by its offset in the file.
    writeBytes(path, bytes.substr(0, bytes.size() - 100));
    const LoadResult cut = loadStudents(loaded, bank, path);
    ASSERT_EQ(cut.status, LoadResult::Status::Failed);
    EXPECT_GT(*cut.error->offset, 65536u);
    EXPECT_LE(*cut.error->offset, bytes.size() - 100);

    // A nonzero boolean other than -1 still reads as true.
    bytes[0] = 1;
    bytes[1] = 0;
    writeBytes(path, bytes);
    ASSERT_EQ(loadStudents(loaded, bank, path).status, LoadResult::Status::Loaded);
    EXPECT_TRUE(loaded.showByStudent);
}
